#include "SCNameWord.h"

#include "ECCommandError.h"

#include <charconv>
#include <system_error>

namespace NSKZ::Host {

SCNameWord::SNameWord SCNameWord::Read(std::string_view word, char mark)
{
    SNameWord name;
    if (word.size() > 1 && word.front() == mark) {
        const std::string_view rest = word.substr(1);
        if (rest.find_first_not_of("0123456789") == std::string_view::npos) {
            name.isID = true;
            if (!ReadNumber(rest, name.id))
                name.id = 0;
            return name;
        }
        if (rest.front() == mark)
            word = rest;
    }
    name.text = word;
    return name;
}

std::string SCNameWord::Write(std::string_view text, char mark)
{
    const SNameWord read = Read(text, mark);
    return read.isID || read.text != text ? mark + std::string(text) : std::string(text);
}

std::string SCNameWord::WriteID(DWORD id, char mark)
{
    std::string word = std::to_string(id);
    word.insert(word.begin(), mark);
    return word;
}

std::vector<DWORD> SCNameWord::ReadRecords(const std::vector<std::string>& words, DWORD recCount)
{
    std::vector<DWORD> records;
    for (const std::string& word : words) {
        const std::string_view whole = word;
        const std::size_t hyphen = whole.find('-');
        const std::string_view firstWord = whole.substr(0, hyphen);
        const std::string_view lastWord =
            hyphen == std::string_view::npos ? firstWord : whole.substr(hyphen + 1);
        DWORD first = 0;
        DWORD last = 0;
        if (!ReadNumber(firstWord, first) || !ReadNumber(lastWord, last) || first > last) {
            throw ECCommandError("\"" + word +
                                 "\" is no record: a number from 0 on is expected, or a stretch as 10-19.");
        }
        if (last >= recCount) {
            throw ECCommandError(
                "There is no record " + std::to_string(last) + ": the table has " + std::to_string(recCount) +
                (recCount == 1 ? " record" : " records") +
                (recCount == 0 ? "." : ", numbered from 0 to " + std::to_string(recCount - 1) + "."));
        }
        for (DWORD record = first; record < last; ++record)
            records.push_back(record);
        records.push_back(last);
    }
    return records;
}

bool SCNameWord::ReadNumber(std::string_view word, DWORD& number)
{
    DWORD read = 0;
    const char* const end = word.data() + word.size();
    const auto [behind, error] = std::from_chars(word.data(), end, read);
    if (error != std::errc() || behind != end || word.empty())
        return false;
    number = read;
    return true;
}

} // namespace NSKZ::Host
