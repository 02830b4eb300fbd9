#ifndef CTEXTOUTPUT_H
#define CTEXTOUTPUT_H

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace NSKZ::Host {

// Where answers for people go: lines and tables, coloured on a terminal.
class CTextOutput
{
public:
    enum EStyle
    {
        STYLE_PLAIN,
        STYLE_HEAD,
        STYLE_SELECTED,
        STYLE_HIDDEN,
        STYLE_BAR,
    };
    struct SColumn
    {
        std::string title;
        bool alignsRight = false;
        EStyle style = STYLE_PLAIN; // of its cells in rows that have none
        std::size_t maxWidth = 48;  // longer cells are cut

        // A column of text whose cells stay whole, however long.
        static SColumn Uncut(std::string title);
    };
    struct SRow
    {
        std::vector<std::string> cells;
        EStyle style = STYLE_PLAIN;
    };

    // `stream` is borrowed. `lineWidth` is the columns of a line, 80 where there is no terminal to ask.
    CTextOutput(std::ostream& stream, bool isColoured, std::size_t lineWidth);

    void WriteLine(std::string_view line);
    void WriteLine(std::string_view line, EStyle style);
    // Paragraphs, each on a line of `text`, broken between words where they are longer than a line.
    void WriteText(std::string_view text);
    // Columns side by side with two blanks between them. Cells are escaped. A column without a title and with
    // nothing but empty cells is left out.
    void WriteTable(const std::vector<SColumn>& columns, const std::vector<SRow>& rows);
    // What is left of a list that was cut.
    void WriteMore(std::size_t count);

    std::size_t GetLineWidth() const noexcept { return lineWidth; }

private:
    std::string Paint(std::string_view text, EStyle style) const;

    std::ostream& stream;
    bool isColoured;
    std::size_t lineWidth;
};

} // namespace NSKZ::Host

#endif
