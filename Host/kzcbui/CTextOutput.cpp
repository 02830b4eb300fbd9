#include "CTextOutput.h"

#include "SCNumberText.h"
#include "SCShownText.h"

#include <algorithm>

namespace NSKZ::Host {

namespace {

constexpr std::string_view GAP = "  ";

} // namespace

CTextOutput::SColumn CTextOutput::SColumn::Uncut(std::string title)
{
    return {std::move(title), false, STYLE_PLAIN, std::string::npos};
}

CTextOutput::CTextOutput(std::ostream& streamOfHost, bool isColouredOfHost, std::size_t lineWidthOfHost)
    : stream(streamOfHost), isColoured(isColouredOfHost), lineWidth(lineWidthOfHost)
{}

void CTextOutput::WriteLine(std::string_view line)
{
    stream << line << '\n';
}

void CTextOutput::WriteLine(std::string_view line, EStyle style)
{
    stream << Paint(line, style) << '\n';
}

void CTextOutput::WriteText(std::string_view text)
{
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view rest = text.substr(0, end);
        while (SCShownText::GetWidth(rest) > lineWidth) {
            std::size_t blank = rest.rfind(' ', lineWidth);
            if (blank == std::string_view::npos || blank == 0)
                blank = rest.find(' ', lineWidth);
            if (blank == std::string_view::npos)
                break;
            WriteLine(rest.substr(0, blank));
            rest.remove_prefix(blank + 1);
        }
        WriteLine(rest);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

void CTextOutput::WriteTable(const std::vector<SColumn>& columns, const std::vector<SRow>& rows)
{
    std::vector<std::vector<std::string>> cells(rows.size(), std::vector<std::string>(columns.size()));
    std::vector<std::size_t> widths(columns.size());
    bool hasTitles = false;
    for (std::size_t col = 0; col < columns.size(); ++col) {
        widths[col] = SCShownText::GetWidth(columns[col].title);
        hasTitles = hasTitles || widths[col] != 0;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            cells[i][col] = SCShownText::Cut(SCShownText::Escape(rows[i].cells[col]), columns[col].maxWidth);
            widths[col] = std::max(widths[col], SCShownText::GetWidth(cells[i][col]));
        }
    }
    const auto writeRow = [&](const std::vector<std::string>& texts, EStyle style) {
        std::string line;
        std::string pending; // blanks that only a further cell makes worth writing
        for (std::size_t col = 0; col < columns.size(); ++col) {
            if (widths[col] == 0)
                continue;
            const std::size_t taken = SCShownText::GetWidth(texts[col]);
            const std::string blanks(widths[col] - taken, ' ');
            const EStyle styleOfCell = style != STYLE_PLAIN ? style : columns[col].style;
            if (columns[col].alignsRight)
                pending += blanks;
            if (taken != 0) {
                line += pending + Paint(texts[col], styleOfCell);
                pending.clear();
            }
            if (!columns[col].alignsRight)
                pending += blanks;
            pending += GAP;
        }
        WriteLine(line);
    };
    if (hasTitles) {
        std::vector<std::string> titles;
        for (const SColumn& column : columns)
            titles.push_back(column.title);
        writeRow(titles, STYLE_HEAD);
    }
    for (std::size_t i = 0; i < rows.size(); ++i)
        writeRow(cells[i], rows[i].style);
}

void CTextOutput::WriteMore(std::size_t count)
{
    if (count != 0)
        WriteLine("... and " + SCNumberText::OfCount(count) + " more (--max N shows N, --max 0 all)",
                  STYLE_HIDDEN);
}

std::string CTextOutput::Paint(std::string_view text, EStyle style) const
{
    std::string painted(text);
    if (!isColoured || style == STYLE_PLAIN)
        return painted;
    constexpr std::string_view CODES[] = {"", "\x1B[1m", "\x1B[1;32m", "\x1B[2m", "\x1B[36m"};
    return std::string(CODES[style]) + painted + "\x1B[0m";
}

} // namespace NSKZ::Host
