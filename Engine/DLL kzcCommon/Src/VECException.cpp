#include "VECException.h"

#include <string>

namespace NSKZ::NSKZCore {

struct VECException::STexts
{
    std::string kind;
    std::string message;
    std::string file;
    std::string function;
};

VECException::VECException(const char* kind, const char* message, const char* file, const char* function,
                           long lineNum)
    : texts(std::make_shared<STexts>(STexts{kind, message, file, function})), line(lineNum)
{}

VECException::VECException(const VECException& other) noexcept = default;
VECException& VECException::operator=(const VECException& other) noexcept = default;
VECException::~VECException() = default;

const char* VECException::what() const noexcept
{
    return texts->message.c_str();
}

const char* VECException::GetKind() const noexcept
{
    return texts->kind.c_str();
}

const char* VECException::GetMessageText() const noexcept
{
    return texts->message.c_str();
}

const char* VECException::GetFile() const noexcept
{
    return texts->file.c_str();
}

const char* VECException::GetFunction() const noexcept
{
    return texts->function.c_str();
}

long VECException::GetLine() const noexcept
{
    return line;
}

} // namespace NSKZ::NSKZCore
