#ifndef CSUMCHART_H
#define CSUMCHART_H

#include <string>
#include <vector>

namespace NSKZ::Host {

class CTextOutput;

// Numbers with texts beside them, drawn as bars. Where some are negative their bars go to the left.
class CSumChart
{
public:
    // NaN for what is no number: it gets no bar.
    void Add(std::string text, double value);
    void Write(CTextOutput& output) const;

private:
    std::vector<std::string> texts;
    std::vector<double> values;
};

} // namespace NSKZ::Host

#endif
