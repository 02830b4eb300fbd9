#include "CCndParser.h"

#include "CContainerOfBscBtnCnd.h"
#include "ECCndError.h"
#include "SCNameWord.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <system_error>

namespace NSKZ::Host {

namespace {

using NSKZCore::CContainerOfBscBtnCnd;
using NSKZCore::CUnitCndOfBscBtnCnd;
using NSKZCore::SCKZCoreCom;

constexpr std::string_view BLANKS = " \t\r\n";
constexpr std::string_view WIDE_BLANK = "\xE3\x80\x80"; // that of Japanese input
constexpr std::string_view QUOTES = "'\"";
constexpr std::string_view COMPARISON_SIGNS = "=!<>";
constexpr std::string_view ENDS_OF_WORD = " \t\r\n'\"=!<>()";

bool IsOneOf(char character, std::string_view characters)
{
    return characters.find(character) != std::string_view::npos;
}

// False for what is no number or none that a double holds.
bool ReadNumber(std::string_view word, double& number)
{
    if (word.starts_with('+') && !word.starts_with("+-"))
        word.remove_prefix(1);
    const char* const end = word.data() + word.size();
    const auto [behind, error] = std::from_chars(word.data(), end, number);
    return error == std::errc() && behind == end && !word.empty() && std::isfinite(number);
}

} // namespace

NSKZCore::CBasicBtnCnd CCndParser::Parse(const std::string& text, const FieldFinder& findField)
{
    CCndParser parser(text, findField);
    if (parser.Look().kind == TOKEN_END)
        parser.Refuse(parser.Look(), "The condition is empty: one such as \"amount sum top 3\" is expected.");
    const ComponentPtr component = parser.ParseChain(true, false);
    if (parser.Look().kind == TOKEN_CLOSE)
        parser.Refuse(parser.Look(), "This parenthesis closes none that is open.");
    if (parser.Look().kind != TOKEN_END)
        parser.RefuseFor(parser.Look(), "and, or or the end of the condition");
    NSKZCore::CBasicBtnCnd cnd;
    cnd.SetCndComponent(*component);
    return cnd;
}

std::string CCndParser::WriteField(const std::string& name)
{
    if (!name.empty() && name.find_first_of(ENDS_OF_WORD) == std::string::npos &&
        !SCCndWords::IsKeyword(name))
        return name;
    const char quote = name.find('\'') == std::string::npos ? '\'' : '"';
    std::string written(1, quote);
    for (const char character : name)
        written.append(character == quote ? 2 : 1, character);
    return written + quote;
}

CCndParser::CCndParser(const std::string& textOfUser, const FieldFinder& findFieldOfUser)
    : text(textOfUser), findField(findFieldOfUser)
{
    ReadTokens();
}

// --- Tokens

void CCndParser::ReadTokens()
{
    for (std::size_t pos = 0; pos < text.size();) {
        const char character = text[pos];
        if (IsOneOf(character, BLANKS)) {
            ++pos;
        } else if (text.compare(pos, WIDE_BLANK.size(), WIDE_BLANK) == 0) {
            pos += WIDE_BLANK.size();
        } else if (IsOneOf(character, QUOTES)) {
            tokens.push_back(ReadQuoted(pos));
        } else if (character == '(' || character == ')') {
            tokens.push_back({character == '(' ? TOKEN_OPEN : TOKEN_CLOSE, {character}, pos});
            ++pos;
        } else {
            const bool isComparison = IsOneOf(character, COMPARISON_SIGNS);
            const std::size_t end = std::min({isComparison ? text.find_first_not_of(COMPARISON_SIGNS, pos)
                                                           : text.find_first_of(ENDS_OF_WORD, pos),
                                              text.find(WIDE_BLANK, pos), text.size()});
            tokens.push_back(
                {isComparison ? TOKEN_COMPARISON : TOKEN_WORD, text.substr(pos, end - pos), pos});
            pos = end;
        }
    }
    tokens.push_back({TOKEN_END, {}, text.size()});
}

CCndParser::SToken CCndParser::ReadQuoted(std::size_t& pos) const
{
    SToken token = {TOKEN_QUOTED, {}, pos};
    const char quote = text[pos];
    for (++pos; pos < text.size(); ++pos) {
        if (text[pos] == quote) {
            if (pos + 1 == text.size() || text[pos + 1] != quote) {
                ++pos;
                return token;
            }
            ++pos;
        }
        token.text += text[pos];
    }
    Refuse(token, std::string("The quote ") + quote + " is opened and never closed.");
}

const CCndParser::SToken& CCndParser::Look(std::size_t ahead) const
{
    return tokens[std::min(next + ahead, tokens.size() - 1)];
}

const CCndParser::SToken& CCndParser::Take()
{
    const SToken& token = Look();
    ++next;
    return token;
}

bool CCndParser::IsKeyword(std::string_view keyword, std::size_t ahead) const
{
    return Look(ahead).kind == TOKEN_WORD && SCCndWords::IsWord(Look(ahead).text, keyword);
}

bool CCndParser::TakeKeyword(std::string_view keyword)
{
    const bool isThere = IsKeyword(keyword);
    next += isThere ? 1 : 0;
    return isThere;
}

void CCndParser::Refuse(const SToken& token, const std::string& sentence) const
{
    throw ECCndError(sentence, text, token.offset);
}

void CCndParser::RefuseFor(const SToken& token, const std::string& expected) const
{
    if (token.kind == TOKEN_END)
        Refuse(token, "The condition ends where " + expected + " is expected.");
    Refuse(token, "\"" + token.text + "\" stands where " + expected + " is expected.");
}

// --- Structure

CCndParser::ComponentPtr CCndParser::ParseChain(bool byOr, bool isNegated)
{
    const auto parseLink = [&] { return byOr ? ParseChain(false, isNegated) : ParsePart(isNegated); };
    const std::string_view word = byOr ? SCCndWords::WORD_OR : SCCndWords::WORD_AND;
    ComponentPtr first = parseLink();
    if (!IsKeyword(word))
        return first;
    auto container = std::make_unique<CContainerOfBscBtnCnd>();
    container->SetBoolOperator(byOr != isNegated ? SCKZCoreCom::BOOLOPERATOR_OR
                                                 : SCKZCoreCom::BOOLOPERATOR_AND);
    container->AddCndComponent(*first);
    while (TakeKeyword(word))
        container->AddCndComponent(*parseLink());
    return container;
}

CCndParser::ComponentPtr CCndParser::ParsePart(bool isNegated)
{
    while (TakeKeyword(SCCndWords::WORD_NOT))
        isNegated = !isNegated;
    if (Look().kind != TOKEN_OPEN)
        return ParseUnit(isNegated);
    const SToken& open = Take();
    if (++depth > MAX_DEPTH)
        Refuse(open, "More than " + std::to_string(MAX_DEPTH) + " parentheses stand within each other.");
    ComponentPtr component = ParseChain(true, isNegated);
    if (Look().kind == TOKEN_END)
        Refuse(open, "This parenthesis is opened and never closed.");
    if (Look().kind != TOKEN_CLOSE)
        RefuseFor(Look(), "and, or or )");
    Take();
    --depth;
    return component;
}

// --- FIELD METHOD test

CCndParser::ComponentPtr CCndParser::ParseUnit(bool isNegated)
{
    auto unit = std::make_unique<CUnitCndOfBscBtnCnd>();
    unit->SetNumID(ParseField());
    unit->SetSumMethod(ParseMethod());
    ParseTest(isNegated, *unit);
    return unit;
}

DWORD CCndParser::ParseField()
{
    constexpr const char* EXPECTED = "a number item";
    const SToken& token = Look();
    const SToken& behind = Look(1);
    SCCndWords::ESumMethod method = SCCndWords::ESumMethod::Sum;
    const bool isBeforeMethod =
        behind.kind == TOKEN_WORD &&
        (SCCndWords::ReadMethod(behind.text, method) || SCCndWords::IsMethodWithoutNumbers(behind.text));
    if (token.kind == TOKEN_WORD && SCCndWords::IsKeyword(token.text)) {
        const bool joins = IsKeyword(SCCndWords::WORD_AND) || IsKeyword(SCCndWords::WORD_OR);
        if (joins || !isBeforeMethod) {
            Refuse(token, "\"" + token.text + "\" stands where " + EXPECTED +
                              " is expected, as \"amount\" in \"amount sum top 3\"; an item of that name "
                              "stands in quotes.");
        }
    } else if (token.kind != TOKEN_WORD && token.kind != TOKEN_QUOTED) {
        RefuseFor(token, EXPECTED);
    }
    Take();
    try {
        return findField(token.text);
    } catch (const ECCommandError& error) {
        const bool maybeCutOff = !isBeforeMethod && behind.kind == TOKEN_WORD;
        Refuse(token, error.what() + std::string(maybeCutOff ? " A name with blanks stands in quotes." : ""));
    }
}

SCCndWords::ESumMethod CCndParser::ParseMethod()
{
    const SToken& token = Look();
    SCCndWords::ESumMethod method = SCCndWords::ESumMethod::Sum;
    if (token.kind == TOKEN_WORD && SCCndWords::IsMethodWithoutNumbers(token.text)) {
        Refuse(token, "The engine's sums have no number for the method " + token.text +
                          ", so the condition would never pick a button; " +
                          std::string(SCCndWords::METHODS) + " is expected.");
    }
    if (token.kind != TOKEN_WORD || !SCCndWords::ReadMethod(token.text, method))
        RefuseFor(token, "a method (" + std::string(SCCndWords::METHODS) + ")");
    Take();
    return method;
}

void CCndParser::ParseTest(bool isNegated, CUnitCndOfBscBtnCnd& unit)
{
    const bool excepts = TakeKeyword(SCCndWords::WORD_EXCEPT);
    if (excepts || TakeKeyword(SCCndWords::WORD_NOT))
        isNegated = !isNegated;
    SCCndWords::ESelCondition condition = SCCndWords::ESelCondition::Rank_High;
    const SToken& token = Look();
    const bool isRank = token.kind == TOKEN_WORD && SCCndWords::ReadRank(token.text, condition);
    const bool isComparison =
        !excepts && token.kind == TOKEN_COMPARISON && SCCndWords::ReadComparison(token.text, condition);
    if (!isRank && !isComparison)
        RefuseFor(token, excepts ? "top or bottom" : "top, bottom or a comparison (=, !=, >, >=, <, <=)");
    Take();
    unit.SetSelCondition(isNegated ? SCCndWords::GetOpposite(condition) : condition);
    const SToken& operand = Look();
    if (isRank) {
        DWORD rankNum = 0;
        if (operand.kind != TOKEN_WORD || !SCNameWord::ReadNumber(operand.text, rankNum) ||
            !unit.SetRankNum(rankNum))
            RefuseFor(operand, "a count of buttons, from 1 on,");
    } else {
        double number = 0.0;
        if (operand.kind != TOKEN_WORD || !ReadNumber(operand.text, number))
            RefuseFor(operand, "a number without commas, such as -1250.5,");
        unit.SetCmpNum(number);
    }
    Take();
}

} // namespace NSKZ::Host
