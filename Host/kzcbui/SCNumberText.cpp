#include "SCNumberText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <string_view>

namespace NSKZ::Host {

namespace {

// Commas into the digits that stand before `end`.
void GroupDigits(std::string& text, std::size_t end)
{
    const std::size_t begin = text.starts_with('-') ? 1 : 0;
    for (std::size_t pos = end; pos > begin + 3;) {
        pos -= 3;
        text.insert(pos, 1, ',');
    }
}

} // namespace

std::string SCNumberText::OfCount(unsigned long long count)
{
    std::string text = std::to_string(count);
    GroupDigits(text, text.size());
    return text;
}

std::string SCNumberText::OfThings(unsigned long long count, const std::string& noun)
{
    return OfCount(count) + " " + noun + (count == 1 ? "" : "s");
}

int SCNumberText::GetDecimals(const std::vector<double>& numbers)
{
    bool areWhole = true;
    double greatest = 0;
    for (const double number : numbers) {
        if (!std::isfinite(number))
            continue;
        areWhole = areWhole && number == std::trunc(number);
        greatest = std::max(greatest, std::fabs(number));
    }
    return areWhole ? 0 : greatest >= 100 ? 2 : 4;
}

std::string SCNumberText::OfNumber(double number, int decimals)
{
    constexpr double GREATEST_IN_FULL = 1e15;
    if (!std::isfinite(number))
        return "-";
    std::array<char, 64> digits;
    if (std::fabs(number) >= GREATEST_IN_FULL) {
        std::snprintf(digits.data(), digits.size(), "%.6e", number);
        return digits.data();
    }
    std::snprintf(digits.data(), digits.size(), "%.*f", decimals, number);
    std::string text = digits.data();
    if (text.find_first_not_of("-0.") == std::string::npos && text.starts_with('-'))
        text.erase(0, 1); // nothing is left of the sign's number
    GroupDigits(text, std::min(text.find('.'), text.size()));
    return text;
}

std::string SCNumberText::BarOf(double share, std::size_t width)
{
    constexpr std::string_view EIGHTHS[] = {"", "▏", "▎", "▍", "▌", "▋", "▊", "▉"};
    constexpr std::string_view FULL = "█";
    if (!(share > 0))
        return {};
    const auto eighths =
        static_cast<std::size_t>(std::lround(std::min(share, 1.0) * static_cast<double>(width) * 8));
    std::string bar;
    for (std::size_t i = 0; i < eighths / 8; ++i)
        bar += FULL;
    bar += EIGHTHS[eighths % 8];
    return bar;
}

} // namespace NSKZ::Host
