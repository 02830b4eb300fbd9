#ifndef XMLDAMAGE_H
#define XMLDAMAGE_H

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace NSKZ::Test {

// Damages a document as CXMLWriter writes it, one tag on a line: mostly so that it stays well formed and
// becomes wrong further in. `chooseBelow(n)` gives a random number below n.
template <class TChooseBelow>
class TXMLDamage
{
public:
    TXMLDamage(const std::string& text, TChooseBelow chooseNumberBelow)
        : chooseBelow(std::move(chooseNumberBelow))
    {
        for (std::size_t at = 0; at < text.size();) {
            const std::size_t end = std::min(text.find('\n', at), text.size() - 1) + 1;
            lines.push_back(text.substr(at, end - at));
            at = end;
        }
    }

    std::string Damage()
    {
        if (lines.empty())
            return "";
        switch (chooseBelow(10)) {
        case 0:
            EraseElement();
            break;
        case 1:
        case 2:
            CopyElement();
            break;
        case 3:
            lines.erase(lines.begin() + ChooseLine());
            break;
        case 4:
            EraseAttribute();
            break;
        default:
            ReplaceValue();
        }
        std::string text;
        for (const std::string& line : lines)
            text += line;
        return text;
    }

private:
    using Position = std::ptrdiff_t;
    // Where the value of an attribute is: a line, the first character of the value and the one behind it.
    struct SValue
    {
        std::string* line;
        std::size_t begin;
        std::size_t end;
        std::string Get() const { return line->substr(begin, end - begin); }
    };

    Position ChooseLine() { return static_cast<Position>(chooseBelow(lines.size())); }

    // The lines from the start tag of an element to its end tag, which stands below it.
    std::pair<Position, Position> ChooseElement()
    {
        const Position first = ChooseLine();
        const std::string& line = lines[static_cast<std::size_t>(first)];
        Position end = first + 1;
        if (line.find("/>") == std::string::npos && line.find("</") == std::string::npos) {
            const std::string endTag = line.substr(0, line.find('<')) + "</";
            while (end < static_cast<Position>(lines.size()) &&
                   !lines[static_cast<std::size_t>(end++)].starts_with(endTag)) {
            }
        }
        return {first, end};
    }

    void EraseElement()
    {
        const auto [first, end] = ChooseElement();
        lines.erase(lines.begin() + first, lines.begin() + end);
    }

    void CopyElement()
    {
        const auto [first, end] = ChooseElement();
        const std::vector<std::string> element(lines.begin() + first, lines.begin() + end);
        lines.insert(lines.begin() + ChooseLine(), element.begin(), element.end());
    }

    std::vector<SValue> FindValues()
    {
        std::vector<SValue> values;
        for (std::string& line : lines) {
            for (std::size_t at = line.find("=\""); at != std::string::npos; at = line.find("=\"", at)) {
                const std::size_t end = line.find('"', at + 2);
                if (end == std::string::npos)
                    break;
                values.push_back({&line, at + 2, end});
                at = end;
            }
        }
        return values;
    }

    void EraseAttribute()
    {
        const std::vector<SValue> values = FindValues();
        if (values.empty())
            return;
        const SValue& value = values[chooseBelow(values.size())];
        const std::size_t blank = value.line->rfind(' ', value.begin);
        if (blank != std::string::npos)
            value.line->erase(blank, value.end + 1 - blank);
    }

    // By another of the document, alone or in a list; by a number or a word that means something.
    void ReplaceValue()
    {
        static constexpr const char* TEXTS[] = {
            "",           "0",          "1",          "2",          "3",          "5",          "-1",
            "true",       "false",      "Select",     "Condition",  "None",       "And",        "Or",
            "Difference", "Narrowing",  "Inc",        "Cll",        "VirInc",     "Virtual",    "Data",
            "EmpVal",     "Normal",     "Num",        "Date",       "Time",       "999999999",  "1000000000",
            "1000000001", "1000000002", "1999999999", "2000000001", "2000000002", "2000000900", "3000000001",
            "4000000002", "4000000003", "4000000004", "4000900000", "4079999999", "4080000002", "4080000003",
            "4160000002", "4160000003", "4239999999", "4294967295", "4294967296", "1,2,3",      "2,,3",
            "1,1"};
        const std::vector<SValue> values = FindValues();
        if (values.empty())
            return;
        const SValue& value = values[chooseBelow(values.size())];
        std::string text = values[chooseBelow(values.size())].Get();
        switch (chooseBelow(4)) {
        case 0:
            text = value.Get() + ',' + text;
            break;
        case 1:
        case 2:
            text = TEXTS[chooseBelow(std::size(TEXTS))];
            break;
        default:
            break;
        }
        value.line->replace(value.begin, value.end - value.begin, text);
    }

    TChooseBelow chooseBelow;
    std::vector<std::string> lines;
};

} // namespace NSKZ::Test

#endif
