#include "CListSource.h"

#include <utility>

namespace NSKZ::Host {

CListSource::CListSource(std::vector<std::string> linesOfHost) : lines(std::move(linesOfHost)) {}

bool CListSource::ReadLine(std::string& line)
{
    if (readCount == lines.size())
        return false;
    line = lines[readCount++];
    return true;
}

} // namespace NSKZ::Host
