#include "SCWordSplit.h"

#include "ECCommandError.h"

namespace NSKZ::Host {

namespace {

constexpr std::string_view BLANKS = " \t";
constexpr std::string_view MEANINGFUL_OUTSIDE_QUOTES = " \t'\"\\";
constexpr std::string_view MEANINGFUL_IN_DOUBLE_QUOTES = "\"\\$`";

// Reads one word from `line` at `pos`, which becomes the position behind it.
std::string ReadWord(std::string_view line, std::size_t& pos)
{
    std::string word;
    while (pos < line.size() && BLANKS.find(line[pos]) == std::string_view::npos) {
        const char character = line[pos++];
        if (character == '\\') {
            if (pos == line.size())
                throw ECCommandError(
                    "A backslash at the end has nothing behind it; write \\\\ for a backslash.");
            word += line[pos++];
        } else if (character == '\'' || character == '"') {
            for (;; ++pos) {
                if (pos == line.size())
                    throw ECCommandError(std::string("A quote ") + character +
                                         " is opened and never closed.");
                if (line[pos] == character)
                    break;
                if (character == '"' && line[pos] == '\\' && pos + 1 < line.size() &&
                    MEANINGFUL_IN_DOUBLE_QUOTES.find(line[pos + 1]) != std::string_view::npos)
                    ++pos;
                word += line[pos];
            }
            ++pos;
        } else {
            word += character;
        }
    }
    return word;
}

} // namespace

std::vector<std::string> SCWordSplit::Split(std::string_view line)
{
    std::vector<std::string> words;
    for (std::size_t pos = 0;;) {
        pos = line.find_first_not_of(BLANKS, pos);
        if (pos == std::string_view::npos)
            return words;
        words.push_back(ReadWord(line, pos));
    }
}

std::string SCWordSplit::Quote(std::string_view text, char quote)
{
    if (quote == '\0' && text.empty())
        return "\"\"";
    std::string quoted;
    for (const char character : text) {
        if (quote == '\'') {
            if (character == quote)
                quoted += "'\\'"; // ends the quote, stands for itself and begins the next one
        } else if ((quote == '"' ? MEANINGFUL_IN_DOUBLE_QUOTES : MEANINGFUL_OUTSIDE_QUOTES).find(character) !=
                   std::string_view::npos) {
            quoted += '\\';
        }
        quoted += character;
    }
    return quote != '\0' ? quote + quoted + quote : quoted;
}

} // namespace NSKZ::Host
