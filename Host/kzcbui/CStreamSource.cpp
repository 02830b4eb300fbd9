#include "CStreamSource.h"

#include <utility>

namespace NSKZ::Host {

CStreamSource::CStreamSource(std::istream& streamOfHost, std::string nameOfHost)
    : stream(streamOfHost), name(std::move(nameOfHost))
{}

bool CStreamSource::ReadLine(std::string& line)
{
    constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";
    if (!std::getline(stream, line))
        return false;
    if (++lineNumber == 1 && line.starts_with(BYTE_ORDER_MARK))
        line.erase(0, BYTE_ORDER_MARK.size());
    if (line.ends_with('\r'))
        line.pop_back();
    return true;
}

std::string CStreamSource::GetPlace() const
{
    return name + ":" + std::to_string(lineNumber);
}

} // namespace NSKZ::Host
