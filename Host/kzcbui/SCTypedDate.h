#ifndef SCTYPEDDATE_H
#define SCTYPEDDATE_H

#include "VCDate.h"

#include <memory>
#include <string>
#include <string_view>

namespace NSKZ::Host {

// Dates as words of a command, in the form in which the engine writes them for messages: "2024-07-15",
// "2024-07", "2024", "R6-07-15", "R6-07", "R6", "FY2024", "FY2024-H1", "FY2024-Q2", "2024-W29",
// "FY2024-W16".
class SCTypedDate
{
public:
    SCTypedDate() = delete;

    // What Read takes, for refusals and help.
    static constexpr const char* EXPECTED =
        "a date such as 2024-07-15, 2024-07, 2024, R6-07, FY2024, FY2024-H1, FY2024-Q2 or 2024-W29";

    // Null for a word that is none of these, or no real date.
    static std::unique_ptr<NSKZCore::VCDate> Read(std::string_view word);

    // A date as a word; "" for one that holds nothing.
    static std::string Write(const NSKZCore::VCDate& date);
};

} // namespace NSKZ::Host

#endif
