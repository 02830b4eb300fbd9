#ifndef CLISTSOURCE_H
#define CLISTSOURCE_H

#include "VCCommandSource.h"

#include <vector>

namespace NSKZ::Host {

// Commands given with the program's call.
class CListSource : public VCCommandSource
{
public:
    explicit CListSource(std::vector<std::string> lines);
    bool ReadLine(std::string& line) override;

private:
    std::vector<std::string> lines;
    std::size_t readCount = 0;
};

} // namespace NSKZ::Host

#endif
