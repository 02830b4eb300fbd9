// Search for buttons by their shown texts.

#include "VCBtnClass.h"

#include "ECAbnormalData.h"
#include "SCBUICoreStrDef.h"
#include "SCCodePageText.h"
#include "SCKZCoreCom.h"

#include <cstring>
#include <limits>
#include <string>
#include <vector>

namespace NSKZ::NSKZCore {

namespace {

constexpr unsigned int FLAGS_THAT_COUNT = 0xFF;

// A minus sign and the long-vowel mark that it counts as.
struct SMinusAndMacron
{
    std::string minus;
    std::string macron;
};

SMinusAndMacron MakeRow(const char* minus, const char* macron, int codePage)
{
    SMinusAndMacron row{minus, macron};
    std::size_t errorPos = 0;
    if (codePage != _KANJI_CP) {
        SCCodePageText::Convert(minus, _KANJI_CP, codePage, row.minus, errorPos);
        SCCodePageText::Convert(macron, _KANJI_CP, codePage, row.macron, errorPos);
    }
    return row;
}

// Full width and half width, in the code page in force.
const SMinusAndMacron* GetMinusAndMacron()
{
    const auto makeRow = [](int codePage, bool isFullWidth) {
        return isFullWidth ? MakeRow(SCKZCoreCom::STR_EM_MINUS, SCKZCoreCom::STR_EM_MACRON, codePage)
                           : MakeRow(SCKZCoreCom::STR_EN_MINUS, SCKZCoreCom::STR_EN_MACRON, codePage);
    };
    static const SMinusAndMacron shiftJIS[] = {makeRow(_KANJI_CP, true), makeRow(_KANJI_CP, false)};
    static const SMinusAndMacron utf8[] = {makeRow(CP_UTF8, true), makeRow(CP_UTF8, false)};
    return _getmbcp() == CP_UTF8 ? utf8 : shiftJIS;
}

const char* FindText(const char* text, const std::string& searched) noexcept
{
    return reinterpret_cast<const char*>(_mbsstr(reinterpret_cast<const unsigned char*>(text),
                                                 reinterpret_cast<const unsigned char*>(searched.c_str())));
}

// Puts the long-vowel mark, which is never the shorter one, in place of each minus sign of a text of `len`
// bytes. False, with nothing changed, if the text, which may grow, does not fit `size` bytes with its NUL.
// Linear.
bool ReplaceMinus(const SMinusAndMacron& row, char* text, DWORD size, DWORD& len)
{
    const std::size_t minusLen = row.minus.size();
    const std::size_t macronLen = row.macron.size();
    std::size_t count = 0;
    for (const char* next = text; (next = FindText(next, row.minus)) != nullptr; next += minusLen)
        ++count;
    const std::size_t growth = count * (macronLen - minusLen);
    if (size - len <= growth)
        return false;
    // Moved to the end of its room the text is read in front of what is written.
    const char* next = text + growth;
    std::memmove(text + growth, text, std::size_t{len} + 1);
    len += static_cast<DWORD>(growth);
    const char* const end = text + len + 1;
    for (char* written = text; next != end;) {
        const char* const found = FindText(next, row.minus);
        const auto kept = static_cast<std::size_t>((found == nullptr ? end : found) - next);
        std::memmove(written, next, kept);
        written += kept;
        next += kept;
        if (found != nullptr) {
            std::memcpy(written, row.macron.data(), macronLen);
            written += macronLen;
            next += minusLen;
        }
    }
    return true;
}

// What a text becomes at most, in times of its length.
DWORD GetGrowth() noexcept
{
    return _getmbcp() == CP_UTF8 ? 3 : 2;
}

struct SSearchText
{
    const char* text;
    DWORD len;
};

bool Fits(const SSearchText& text, const SSearchText& word, VCBtnClass::EOptionOfSearchBtnName option)
{
    if (text.len < word.len)
        return false;
    switch (option) {
    case VCBtnClass::SRCHBTNNAME_MATCH:
        return text.len == word.len && std::memcmp(text.text, word.text, word.len) == 0;
    case VCBtnClass::SRCHBTNNAME_FRONT:
        return std::memcmp(text.text, word.text, word.len) == 0;
    case VCBtnClass::SRCHBTNNAME_REAR:
        return SCKZCoreCom::CompareStringRear(text.text, text.len, word.text, word.len);
    case VCBtnClass::SRCHBTNNAME_INCLUDE_ALL:
        return _mbsstr(reinterpret_cast<const unsigned char*>(text.text),
                       reinterpret_cast<const unsigned char*>(word.text)) != nullptr;
    }
    throw ECAbnormalData(SCBUICoreStrDef::MSG_UNKNOWN_BTNNAME_SRCHOPTION, "Src/VCBtnClass",
                         "NSKZ::NSKZCore::VCBtnClass::SearchTheBtnByAlias", 599);
}

} // namespace

bool VCBtnClass::ConvertStringForVagueSearch(const char* src, DWORD srcLen, unsigned int flags, DWORD dstSize,
                                             char* dst, DWORD& dstLen)
{
    if ((flags & FLAGS_THAT_COUNT) == 0)
        return false;
    DWORD mapFlags = 0;
    if ((flags & SRCH_VAGUE_WIDTH) != 0)
        mapFlags |= LCMAP_HALFWIDTH;
    if ((flags & SRCH_VAGUE_KANA) != 0)
        mapFlags |= LCMAP_KATAKANA;
    if ((flags & SRCH_VAGUE_CASE) != 0)
        mapFlags |= LCMAP_LOWERCASE;
    DWORD len = srcLen;
    if (mapFlags != 0) {
        if (dstSize == 0)
            return false; // it would be told the size
        const int mapped = LCMapStringA(GetUserDefaultLCID(), mapFlags, src, static_cast<int>(srcLen + 1),
                                        dst, static_cast<int>(dstSize));
        if (mapped == 0)
            return false;
        len = static_cast<DWORD>(mapped) - 1;
    } else {
        if (dstSize <= srcLen)
            return false;
        std::memcpy(dst, src, std::size_t{srcLen} + 1);
    }
    if ((flags & SRCH_VAGUE_MACRON) != 0) {
        const SMinusAndMacron* const rows = GetMinusAndMacron();
        // Half width, there is no full-width minus sign left.
        if ((flags & SRCH_VAGUE_WIDTH) == 0 && !ReplaceMinus(rows[0], dst, dstSize, len))
            return false;
        if (!ReplaceMinus(rows[1], dst, dstSize, len))
            return false;
    }
    if (mapFlags != 0)
        dstLen = len;
    return true;
}

bool VCBtnClass::SearchTheBtnByAlias(const std::vector<const VCBtn*>& searched,
                                     const std::vector<const char*>& words, EOptionOfSearchBtnName option,
                                     unsigned int flags, bool firstOnly, std::vector<DWORD>& found)
{
    if (words.empty())
        return false;
    found.clear();
    const bool isVague = (flags & FLAGS_THAT_COUNT) != 0;
    DWORD convertedLen = 0; // stays 0 where the conversion tells no length
    const auto convert = [&](const char* text, std::vector<char>& area, SSearchText& converted) {
        const auto len = static_cast<DWORD>(std::strlen(text));
        converted = {text, len};
        if (!isVague)
            return true;
        const std::size_t size = std::size_t{len} * GetGrowth() + 1;
        if (area.size() < size)
            area.resize(size * 2);
        if (size > static_cast<std::size_t>(std::numeric_limits<int>::max()) ||
            !ConvertStringForVagueSearch(text, len, flags, static_cast<DWORD>(size), area.data(),
                                         convertedLen))
            return false;
        converted = {area.data(), convertedLen};
        return true;
    };

    const std::size_t wordCount = option == SRCHBTNNAME_INCLUDE_ALL ? words.size() : 1;
    std::vector<std::vector<char>> wordAreas(words.size());
    std::vector<SSearchText> wordTexts(words.size());
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (!convert(words[i] == nullptr ? "" : words[i], wordAreas[i], wordTexts[i]))
            return false;
    }
    std::vector<char> area;
    for (std::size_t i = 0; i < searched.size(); ++i) {
        if (searched[i] == nullptr)
            continue;
        const char* const shownText = searched[i]->GetShownText();
        SSearchText text{};
        if (!convert(shownText == nullptr ? "" : shownText, area, text))
            return false;
        bool fits = true;
        for (std::size_t word = 0; fits && word < wordCount; ++word)
            fits = Fits(text, wordTexts[word], option);
        if (fits) {
            found.push_back(static_cast<DWORD>(i));
            if (firstOnly)
                break;
        }
    }
    return true;
}

bool VCBtnClass::SearchTheBtnByAlias(const std::vector<DWORD>& btnIDs, const std::vector<const char*>& words,
                                     EOptionOfSearchBtnName option, unsigned int flags, bool firstOnly,
                                     std::vector<DWORD>& found) const
{
    std::vector<const VCBtn*> searched;
    searched.reserve(btnIDs.size());
    for (const DWORD btnID : btnIDs)
        searched.push_back(FindBtn(btnID));
    return SearchTheBtnByAlias(searched, words, option, flags, firstOnly, found);
}

bool VCBtnClass::SearchTheBtnByAlias(const std::vector<const char*>& words, EOptionOfSearchBtnName option,
                                     unsigned int flags, std::vector<DWORD>& found) const
{
    std::vector<DWORD> btnIDs;
    GetAllBtnIDList(btnIDs, true);
    if (!SearchTheBtnByAlias(btnIDs, words, option, flags, false, found))
        return false;
    for (DWORD& position : found)
        position = btnIDs[position];
    return true;
}

} // namespace NSKZ::NSKZCore
