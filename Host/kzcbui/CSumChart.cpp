#include "CSumChart.h"

#include "CTextOutput.h"
#include "SCNumberText.h"

#include <algorithm>
#include <cmath>

namespace NSKZ::Host {

namespace {

constexpr std::size_t MAX_BAR_WIDTH = 40;
constexpr std::size_t MIN_BAR_WIDTH = 10;

} // namespace

void CSumChart::Add(std::string text, double value)
{
    texts.push_back(std::move(text));
    values.push_back(value);
}

void CSumChart::Write(CTextOutput& output) const
{
    if (texts.empty())
        return;
    double greatest = 0;
    double least = 0;
    for (const double value : values) {
        if (std::isfinite(value)) {
            greatest = std::max(greatest, value);
            least = std::min(least, value);
        }
    }
    // About half of the line is for the bars, in one scale for both sides.
    const std::size_t width = std::clamp(output.GetLineWidth() / 2, MIN_BAR_WIDTH, MAX_BAR_WIDTH);
    const double range = greatest - least;
    const auto barOf = [=](double length) {
        return length > 0 ? SCNumberText::BarOf(length / range, width) : std::string();
    };
    const auto negativeBarOf = [=](double length) {
        // Columns are filled from their left only, so these bars are of whole ones.
        const double columns = length > 0 ? length / range * static_cast<double>(width) : 0;
        return SCNumberText::BarOf(std::round(columns) / static_cast<double>(width), width);
    };
    const int decimals = SCNumberText::GetDecimals(values);
    std::vector<CTextOutput::SRow> rows;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const double value = values[i];
        rows.push_back(
            {{texts[i], SCNumberText::OfNumber(value, decimals), negativeBarOf(-value), barOf(value)}});
    }
    output.WriteTable(
        {{""}, {"", true}, {"", true, CTextOutput::STYLE_BAR}, {"", false, CTextOutput::STYLE_BAR}}, rows);
}

} // namespace NSKZ::Host
