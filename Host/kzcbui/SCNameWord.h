#ifndef SCNAMEWORD_H
#define SCNAMEWORD_H

#include "KzcPlatform.h"

#include <string>
#include <string_view>
#include <vector>

namespace NSKZ::Host {

// How a word of a command names an item, a button or records.
class SCNameWord
{
public:
    SCNameWord() = delete;

    static constexpr char MARK_OF_ITEM = '@';
    static constexpr char MARK_OF_BTN = '#';

    struct SNameWord
    {
        bool isID = false;
        DWORD id = 0;     // 0, which is no identifier, also for a number that fits no identifier
        std::string text; // where it is no identifier
    };

    // The mark with digits alone behind it is an identifier. Anything else is a text, of which two marks at
    // the beginning stand for one: so "##12" with the mark "#" is the text "#12".
    static SNameWord Read(std::string_view word, char mark);

    // A word that Read takes for this text.
    static std::string Write(std::string_view text, char mark);

    // The identifier behind its mark.
    static std::string WriteID(DWORD id, char mark);

    // Reads numbers of records, below `recCount`, and stretches of them ("10-19", both ends taking part), in
    // the order of the words. Throws ECCommandError for a word that is neither and for a number that is no
    // record.
    static std::vector<DWORD> ReadRecords(const std::vector<std::string>& words, DWORD recCount);

    // The whole word as a number; false for anything else and for what does not fit.
    static bool ReadNumber(std::string_view word, DWORD& number);
};

} // namespace NSKZ::Host

#endif
