#include "SCCndWords.h"

#include <algorithm>
#include <iterator>

namespace NSKZ::Host {

namespace {

using ESelCondition = SCCndWords::ESelCondition;
using ESumMethod = SCCndWords::ESumMethod;

constexpr struct
{
    const char* word;
    ESumMethod method;
} METHODS_WITH_NUMBERS[] = {
    {"sum", ESumMethod::Sum},
    {"count", ESumMethod::Count},
    {"average", ESumMethod::Average},
    {"ratio", ESumMethod::Ratio},
};

constexpr std::string_view METHODS_WITHOUT_NUMBERS[] = {"weighted-average", "max",      "min",
                                                        "latest",           "absolute", "count-cell"};

constexpr struct
{
    const char* word;
    ESelCondition condition;
    ESelCondition opposite;
} CONDITIONS[] = {
    {"top", ESelCondition::Rank_High, ESelCondition::Rank_HighExcept},
    {"bottom", ESelCondition::Rank_Low, ESelCondition::Rank_LowExcept},
    {"not top", ESelCondition::Rank_HighExcept, ESelCondition::Rank_High},
    {"not bottom", ESelCondition::Rank_LowExcept, ESelCondition::Rank_Low},
    {"=", ESelCondition::NumCmp_Equal, ESelCondition::NumCmp_NotEqual},
    {"!=", ESelCondition::NumCmp_NotEqual, ESelCondition::NumCmp_Equal},
    {">", ESelCondition::NumCmp_Greater, ESelCondition::NumCmp_LessEqual},
    {">=", ESelCondition::NumCmp_GreaterEqual, ESelCondition::NumCmp_Less},
    {"<", ESelCondition::NumCmp_Less, ESelCondition::NumCmp_GreaterEqual},
    {"<=", ESelCondition::NumCmp_LessEqual, ESelCondition::NumCmp_Greater},
};

// Null if nothing fits.
template <class TTable, class TTest>
auto Find(const TTable& table, const TTest& test) noexcept
{
    const auto found = std::find_if(std::begin(table), std::end(table), test);
    return found != std::end(table) ? &*found : nullptr;
}

bool ReadCondition(std::string_view word, ESelCondition& condition) noexcept
{
    const auto* const found =
        Find(CONDITIONS, [word](const auto& entry) { return SCCndWords::IsWord(word, entry.word); });
    if (found != nullptr)
        condition = found->condition;
    return found != nullptr;
}

} // namespace

bool SCCndWords::IsWord(std::string_view word, std::string_view keyword) noexcept
{
    return std::equal(word.begin(), word.end(), keyword.begin(), keyword.end(), [](char a, char b) {
        return (a >= 'A' && a <= 'Z' ? static_cast<char>(a - 'A' + 'a') : a) == b;
    });
}

bool SCCndWords::IsKeyword(std::string_view word) noexcept
{
    ESumMethod method = ESumMethod::Sum;
    ESelCondition condition = ESelCondition::Rank_High;
    return IsWord(word, WORD_AND) || IsWord(word, WORD_OR) || IsWord(word, WORD_NOT) ||
           IsWord(word, WORD_EXCEPT) || ReadMethod(word, method) || IsMethodWithoutNumbers(word) ||
           ReadRank(word, condition);
}

bool SCCndWords::ReadMethod(std::string_view word, ESumMethod& method) noexcept
{
    const auto* const found =
        Find(METHODS_WITH_NUMBERS, [word](const auto& entry) { return IsWord(word, entry.word); });
    if (found != nullptr)
        method = found->method;
    return found != nullptr;
}

bool SCCndWords::IsMethodWithoutNumbers(std::string_view word) noexcept
{
    return Find(METHODS_WITHOUT_NUMBERS, [word](std::string_view each) { return IsWord(word, each); }) !=
           nullptr;
}

bool SCCndWords::ReadRank(std::string_view word, ESelCondition& condition) noexcept
{
    return (IsWord(word, "top") || IsWord(word, "bottom")) && ReadCondition(word, condition);
}

bool SCCndWords::ReadComparison(std::string_view sign, ESelCondition& condition) noexcept
{
    return sign.find_first_not_of("=!<>") == std::string_view::npos && ReadCondition(sign == "=="   ? "="
                                                                                     : sign == "<>" ? "!="
                                                                                                    : sign,
                                                                                     condition);
}

ESelCondition SCCndWords::GetOpposite(ESelCondition condition) noexcept
{
    const auto* const found =
        Find(CONDITIONS, [condition](const auto& entry) { return entry.condition == condition; });
    return found != nullptr ? found->opposite : condition;
}

const char* SCCndWords::GetWord(ESumMethod method) noexcept
{
    const auto* const found =
        Find(METHODS_WITH_NUMBERS, [method](const auto& entry) { return entry.method == method; });
    return found != nullptr ? found->word : nullptr;
}

const char* SCCndWords::GetWord(ESelCondition condition) noexcept
{
    const auto* const found =
        Find(CONDITIONS, [condition](const auto& entry) { return entry.condition == condition; });
    return found != nullptr ? found->word : nullptr;
}

} // namespace NSKZ::Host
