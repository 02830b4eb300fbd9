#ifndef CCNDPARSER_H
#define CCNDPARSER_H

#include "CBasicBtnCnd.h"
#include "SCCndWords.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace NSKZ::Host {

// Reads a condition as a person types it:
//
//     condition:  chain { "or" chain }
//     chain:      part { "and" part }
//     part:       "not" part  |  "(" condition ")"  |  FIELD METHOD test
//     test:       [ "not" | "except" ] ( "top" | "bottom" ) COUNT  |  [ "not" ] COMPARISON NUMBER
//
// FIELD names a number item and stands in quotes of either kind if it holds blanks, quotes, parentheses or
// comparison signs or is a keyword; in quotes the quote itself is written twice. A keyword that another word
// of METHOD follows is taken for a name without quotes too, unless it is "and", "or" or "not".
//
// A chain of one operator makes one container, and so do parentheses around one; around a single part they
// make nothing. The engine knows no "not": it is carried down to the tests, where it picks the opposite one,
// and turns "and" and "or" on its way. The opposite of a rank and of = and != is exact; the others differ
// from it in the last bit, since the engine takes for equal what differs by no more than that.
class CCndParser
{
public:
    // Parentheses within each other.
    static constexpr std::size_t MAX_DEPTH = 100;

    // The field that a word names; throws ECCommandError for one that names none.
    using FieldFinder = std::function<DWORD(const std::string&)>;

    // Throws ECCndError for a text, in UTF-8, that is no condition.
    static NSKZCore::CBasicBtnCnd Parse(const std::string& text, const FieldFinder& findField);

    // A name as FIELD, in quotes where it needs them.
    static std::string WriteField(const std::string& name);

private:
    enum ETokenKind
    {
        TOKEN_WORD,
        TOKEN_QUOTED,
        TOKEN_COMPARISON,
        TOKEN_OPEN,
        TOKEN_CLOSE,
        TOKEN_END,
    };
    struct SToken
    {
        ETokenKind kind;
        std::string text; // without quotes
        std::size_t offset;
    };
    using ComponentPtr = std::unique_ptr<NSKZCore::IComponentOfBscBtnCnd>;

    CCndParser(const std::string& text, const FieldFinder& findField);

    void ReadTokens();
    SToken ReadQuoted(std::size_t& pos) const;

    ComponentPtr ParseChain(bool byOr, bool isNegated);
    ComponentPtr ParsePart(bool isNegated);
    ComponentPtr ParseUnit(bool isNegated);
    DWORD ParseField();
    SCCndWords::ESumMethod ParseMethod();
    void ParseTest(bool isNegated, NSKZCore::CUnitCndOfBscBtnCnd& unit);

    const SToken& Look(std::size_t ahead = 0) const;
    const SToken& Take();
    bool IsKeyword(std::string_view keyword, std::size_t ahead = 0) const;
    bool TakeKeyword(std::string_view keyword);
    // A refusal at a token; "Expected ..., not ..." says what was found there.
    [[noreturn]] void Refuse(const SToken& token, const std::string& sentence) const;
    [[noreturn]] void RefuseFor(const SToken& token, const std::string& expected) const;

    const std::string& text;
    const FieldFinder& findField;
    std::vector<SToken> tokens;
    std::size_t next = 0;
    std::size_t depth = 0;
};

} // namespace NSKZ::Host

#endif
