#ifndef CSTREAMSOURCE_H
#define CSTREAMSOURCE_H

#include "VCCommandSource.h"

#include <istream>

namespace NSKZ::Host {

// A script: a command a line. Lines end with LF or CRLF; a UTF-8 byte-order mark is passed over.
class CStreamSource : public VCCommandSource
{
public:
    // `stream` is borrowed; `name` names it in errors.
    CStreamSource(std::istream& stream, std::string name);
    bool ReadLine(std::string& line) override;
    std::string GetPlace() const override;

private:
    std::istream& stream;
    std::string name;
    std::size_t lineNumber = 0;
};

} // namespace NSKZ::Host

#endif
