#ifndef SCNUMBERTEXT_H
#define SCNUMBERTEXT_H

#include <cstddef>
#include <string>
#include <vector>

namespace NSKZ::Host {

// Numbers as people read them.
class SCNumberText
{
public:
    SCNumberText() = delete;

    // With commas between groups of three digits.
    static std::string OfCount(unsigned long long count);

    // The number of what is counted, as "1 record", "2,000 records". `noun` has its plural by an s.
    static std::string OfThings(unsigned long long count, const std::string& noun);

    // The digits behind the point that all of the numbers can be told with: none if they are whole, else two,
    // or four where none of them reaches 100. NaN and infinities do not count.
    static int GetDecimals(const std::vector<double>& numbers);
    // With commas and so many digits behind the point; very large numbers with an exponent; "-" for NaN and
    // infinities.
    static std::string OfNumber(double number, int decimals);

    // A bar of a share of `width` columns, in eighths of a column. The share is held to 0 ... 1.
    static std::string BarOf(double share, std::size_t width);
};

} // namespace NSKZ::Host

#endif
