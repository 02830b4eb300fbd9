// The benchmark of name search: all buttons of an item of 1,000,000 distinct Japanese texts, searched for a
// word that stands in one of a thousand of them, exactly and with all vagueness.
//
// Beside it stands, in the same run, the bare loop that compares the word with the same texts byte by byte at
// every position. The figure to quote is the ratio of the two.
//
//     search_bench [TEXTS [REPETITIONS]]

#include "SCBenchTime.h"

#include "CBUIDataMngr.h"
#include "CFldValueList.h"
#include "CSourceDataMngr.h"
#include "SCCodePageText.h"
#include "VCBtnClass.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

using namespace NSKZ::NSKZCore;

namespace {

// A text of the kind that an item of goods has; the number makes it distinct.
std::string MakeText(std::uint32_t number)
{
    static constexpr const char8_t* MAKERS[] = {u8"やまと商店",   u8"ＡＢＣストア", u8"みどり屋",
                                                u8"Sakura Foods", u8"北海ミルク",   u8"サンライズ",
                                                u8"ふじの里",     u8"Ocean＆Co."};
    static constexpr const char8_t* KINDS[] = {u8"コーヒー",     u8"りんごジュース", u8"ﾁｮｺﾚｰﾄ",
                                               u8"みそラーメン", u8"緑茶",           u8"オレンジゼリー",
                                               u8"Tea Bag",      u8"カレーパン"};
    const std::u8string_view maker(MAKERS[number % 8]);
    const std::u8string_view kind(number % 1000 == 500 ? u8"がラス－ビン" : KINDS[number / 8 % 8]);
    const std::string utf8 = std::string(maker.begin(), maker.end()) + " " +
                             std::string(kind.begin(), kind.end()) + " " + std::to_string(number);
    std::string text;
    std::size_t errorPos = 0;
    if (SCCodePageText::Convert(utf8, CP_UTF8, _getmbcp(), text, errorPos) != SCCodePageText::CONVERT_OK)
        throw std::logic_error("a text has no place in the code page");
    return text;
}

std::string InCodePage(std::u8string_view readable)
{
    std::string text;
    std::size_t errorPos = 0;
    SCCodePageText::Convert(std::string_view(reinterpret_cast<const char*>(readable.data()), readable.size()),
                            CP_UTF8, _getmbcp(), text, errorPos);
    return text;
}

// How many of the texts hold the word, by comparing bytes and nothing else.
std::size_t CountWithBytes(const std::vector<const char*>& texts, const std::string& word)
{
    std::size_t count = 0;
    for (const char* const text : texts) {
        const std::size_t len = std::strlen(text);
        for (std::size_t i = 0; i + word.size() <= len; ++i) {
            if (text[i] == word[0] && std::memcmp(text + i, word.data(), word.size()) == 0) {
                ++count;
                break;
            }
        }
    }
    return count;
}

} // namespace

int main(int argc, char** argv)
{
    const auto count = static_cast<std::uint32_t>(argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 1000000);
    const int repetitions = argc > 2 ? std::atoi(argv[2]) : 15;
    if (count < 1000 || repetitions < 1) {
        std::fprintf(stderr, "usage: search_bench [TEXTS (at least 1000) [REPETITIONS]]\n");
        return 2;
    }
    std::printf("%u distinct texts, searched for a word that one in 1000 holds\n", count);
    std::printf("%10s %14s %14s %14s %10s %10s\n", "code page", "exact ms", "vague ms", "bare loop ms",
                "exact", "vague");
    for (const int codePage : {_KANJI_CP, CP_UTF8}) {
        _setmbcp(codePage);
        CSourceDataMngr table;
        CFldValueList values;
        for (std::uint32_t number = 0; number < count; ++number)
            values.Append(MakeText(number));
        CSourceDataMngr::SFldInfo info;
        info.name = "goods";
        DWORD fldID = 0;
        table.AddFld(info, std::move(values), fldID);
        constexpr auto ON_MEM = SCBUICoreCom::LINKTBLVERTYPE_ONMEM;
        const CBUIDataMngr env(1, ON_MEM, ON_MEM, table, nullptr, nullptr);
        std::vector<DWORD> btnClassIDs;
        env.GetAllBtnClassIDList(btnClassIDs, true);
        std::vector<DWORD> btnIDs;
        env.GetAllBtnIDListOfBtnClass(btnClassIDs.front(), btnIDs, true);
        std::vector<const char*> texts(btnIDs.size());
        for (std::size_t i = 0; i < btnIDs.size(); ++i)
            env.GetAliasOfBtn(btnClassIDs.front(), btnIDs[i], texts[i]);

        const std::string word = InCodePage(u8"がラス－ビン");
        const std::string vagueWord = InCodePage(u8"ｶﾞらスーびん");
        std::vector<double> exact;
        std::vector<double> vague;
        std::vector<double> bare;
        for (int i = 0; i < repetitions; ++i) {
            std::vector<DWORD> found;
            std::vector<DWORD> foundVaguely;
            std::size_t expected = 0;
            exact.push_back(SCBenchTime::Measure([&] {
                env.SearchBtnsByAliasFromBtnClass(btnClassIDs.front(), {word.c_str()},
                                                  VCBtnClass::SRCHBTNNAME_INCLUDE_ALL,
                                                  VCBtnClass::SRCH_NORMAL, found);
            }));
            vague.push_back(SCBenchTime::Measure([&] {
                env.SearchBtnsByAliasFromBtnClass(btnClassIDs.front(), {vagueWord.c_str()},
                                                  VCBtnClass::SRCHBTNNAME_INCLUDE_ALL,
                                                  VCBtnClass::SRCH_VAGUE_ALL, foundVaguely);
            }));
            bare.push_back(SCBenchTime::Measure([&] { expected = CountWithBytes(texts, word); }));
            if (found.size() != expected || foundVaguely != found) {
                std::fprintf(stderr, "%zu and %zu texts found, the bare loop says %zu\n", found.size(),
                             foundVaguely.size(), expected);
                return 1;
            }
        }
        const double bareMs = SCBenchTime::GetMedian(bare);
        const double exactMs = SCBenchTime::GetMedian(exact);
        const double vagueMs = SCBenchTime::GetMedian(vague);
        std::printf("%10d %14.2f %14.2f %14.2f %10.2f %10.2f\n", codePage, exactMs, vagueMs, bareMs,
                    exactMs / bareMs, vagueMs / bareMs);
    }
    return 0;
}
