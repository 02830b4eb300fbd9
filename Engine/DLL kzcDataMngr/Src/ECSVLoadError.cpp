#include "ECSVLoadError.h"

namespace NSKZ::NSKZCore {

namespace {

std::string Describe(const std::string& file, unsigned long long line, const std::string& reason)
{
    if (line == 0)
        return file + ": " + reason;
    return file + ", line " + std::to_string(line) + ": " + reason;
}

} // namespace

struct ECSVLoadError::STexts
{
    std::string file;
    std::string reason;
};

ECSVLoadError::ECSVLoadError(const std::string& file, unsigned long long lineNum, const std::string& reason)
    : std::runtime_error(Describe(file, lineNum, reason)),
      texts(std::make_shared<const STexts>(STexts{file, reason})), line(lineNum)
{}

ECSVLoadError::ECSVLoadError(const ECSVLoadError& other) noexcept = default;
ECSVLoadError& ECSVLoadError::operator=(const ECSVLoadError& other) noexcept = default;
ECSVLoadError::~ECSVLoadError() = default;

const char* ECSVLoadError::GetFile() const noexcept
{
    return texts->file.c_str();
}

unsigned long long ECSVLoadError::GetLine() const noexcept
{
    return line;
}

const char* ECSVLoadError::GetReason() const noexcept
{
    return texts->reason.c_str();
}

} // namespace NSKZ::NSKZCore
