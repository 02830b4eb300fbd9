#ifndef SCCNDWORDS_H
#define SCCNDWORDS_H

#include "CUnitCndOfBscBtnCnd.h"

#include <string>
#include <string_view>
#include <vector>

namespace NSKZ::Host {

// The words of a typed condition, and what they mean. Capital letters count as small ones.
class SCCndWords
{
public:
    SCCndWords() = delete;

    using ESelCondition = NSKZCore::CUnitCndOfBscBtnCnd::ESelCondition;
    using ESumMethod = NSKZCore::SCBUICoreCom::ESumMethodForCnd;

    static constexpr std::string_view WORD_AND = "and";
    static constexpr std::string_view WORD_OR = "or";
    static constexpr std::string_view WORD_NOT = "not";
    static constexpr std::string_view WORD_EXCEPT = "except";
    // The methods whose numbers the environment has, for messages.
    static constexpr std::string_view METHODS = "sum, count, average or ratio";

    // Whether `word` is `keyword` in any letters.
    static bool IsWord(std::string_view word, std::string_view keyword) noexcept;
    // Whether the word means something in a condition, so that a name like it is told apart by quotes.
    static bool IsKeyword(std::string_view word) noexcept;

    // False for a word that is no method of which the environment has numbers.
    static bool ReadMethod(std::string_view word, ESumMethod& method) noexcept;
    // Whether the word is a method that conditions know and that gets no number from the environment's sums.
    static bool IsMethodWithoutNumbers(std::string_view word) noexcept;
    // "top" and "bottom".
    static bool ReadRank(std::string_view word, ESelCondition& condition) noexcept;
    // "=", "!=", ">", ">=", "<", "<=", and "==" and "<>".
    static bool ReadComparison(std::string_view sign, ESelCondition& condition) noexcept;
    // What holds where `condition` does not.
    static ESelCondition GetOpposite(ESelCondition condition) noexcept;

    // As they are written; null for what has no word in conditions.
    static const char* GetWord(ESumMethod method) noexcept;
    static const char* GetWord(ESelCondition condition) noexcept;
};

} // namespace NSKZ::Host

#endif
