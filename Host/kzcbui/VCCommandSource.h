#ifndef VCCOMMANDSOURCE_H
#define VCCOMMANDSOURCE_H

#include <string>

namespace NSKZ::Host {

// Where command lines come from.
class VCCommandSource
{
public:
    VCCommandSource() = default;
    virtual ~VCCommandSource();
    VCCommandSource(const VCCommandSource&) = delete;
    VCCommandSource& operator=(const VCCommandSource&) = delete;

    // The next line, without its end; false when there is none.
    virtual bool ReadLine(std::string& line) = 0;
    // Where the line read last stands, for an error; empty where there is nothing to tell.
    virtual std::string GetPlace() const { return {}; }
};

} // namespace NSKZ::Host

#endif
