#include "CDispPattern.h"

#include "SCCodePageText.h"
#include "SCDeclareConstant.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace NSKZ::NSKZCore {

namespace {

struct SPlaceholder
{
    std::string_view name;
    CDispPattern::EElement element;
    CDispPattern::EKind kind;
};
constexpr std::array<SPlaceholder, CDispPattern::ELEMENT_COUNT - 1> PLACEHOLDERS = {{
    {"yyyy", CDispPattern::ELEMENT_GRGYEAR, CDispPattern::KIND_DATE},
    {"yy", CDispPattern::ELEMENT_GRGYEAR_2, CDispPattern::KIND_DATE},
    {"ggg", CDispPattern::ELEMENT_ERA, CDispPattern::KIND_DATE},
    {"gg", CDispPattern::ELEMENT_ERA_SHORT, CDispPattern::KIND_DATE},
    {"g", CDispPattern::ELEMENT_ERA_LETTER, CDispPattern::KIND_DATE},
    {"e", CDispPattern::ELEMENT_JPNYEAR, CDispPattern::KIND_DATE},
    {"ee", CDispPattern::ELEMENT_JPNYEAR_2, CDispPattern::KIND_DATE},
    {"E", CDispPattern::ELEMENT_JPNYEAR_GAN, CDispPattern::KIND_DATE},
    {"m", CDispPattern::ELEMENT_MONTH, CDispPattern::KIND_DATE},
    {"mm", CDispPattern::ELEMENT_MONTH_2, CDispPattern::KIND_DATE},
    {"d", CDispPattern::ELEMENT_DAY, CDispPattern::KIND_DATE},
    {"dd", CDispPattern::ELEMENT_DAY_2, CDispPattern::KIND_DATE},
    {"h", CDispPattern::ELEMENT_HOUR, CDispPattern::KIND_TIME},
    {"hh", CDispPattern::ELEMENT_HOUR_2, CDispPattern::KIND_TIME},
    {"h12", CDispPattern::ELEMENT_HOUR12, CDispPattern::KIND_TIME},
    {"hh12", CDispPattern::ELEMENT_HOUR12_2, CDispPattern::KIND_TIME},
    {"AM/PM", CDispPattern::ELEMENT_AMPM, CDispPattern::KIND_TIME},
    {"ap", CDispPattern::ELEMENT_AMPM_KANJI, CDispPattern::KIND_TIME},
    {"n", CDispPattern::ELEMENT_MINUTE, CDispPattern::KIND_TIME},
    {"nn", CDispPattern::ELEMENT_MINUTE_2, CDispPattern::KIND_TIME},
    {"s", CDispPattern::ELEMENT_SECOND, CDispPattern::KIND_TIME},
    {"ss", CDispPattern::ELEMENT_SECOND_2, CDispPattern::KIND_TIME},
}};

// The bytes of the character that a text, which is one of the code page in force, begins with.
std::size_t GetCharLen(std::string_view text) noexcept
{
    const auto* const bytes = reinterpret_cast<const unsigned char*>(text.data());
    std::size_t len = 1;
    while (len < text.size() && _ismbstrail(bytes, bytes + len) != 0)
        ++len;
    return len;
}

bool IsControlChar(char c) noexcept
{
    return (c >= 0 && c < ' ') || c == '\x7F';
}

} // namespace

bool CDispPattern::Parse(std::string_view text, EKind kind, const char*& reason)
{
    std::size_t errorPos = 0;
    if (text.size() >= SCDeclareConstant::OPTIONALFORM_SIZE) {
        reason = "A pattern has 260 bytes at most.";
        return false;
    }
    if (!SCCodePageText::IsValid(text, _getmbcp(), errorPos)) {
        reason = "The pattern is no text of the code page in use.";
        return false;
    }
    if (std::any_of(text.begin(), text.end(), IsControlChar)) {
        reason = "The pattern has a control character.";
        return false;
    }

    CDispPattern parsed;
    std::string literal;
    const auto endLiteral = [&parsed, &literal] {
        if (!literal.empty())
            parsed.elements.push_back({ELEMENT_LITERAL, literal});
        literal.clear();
    };
    while (!text.empty()) {
        if (text.starts_with("{{") || text.starts_with("}}")) {
            literal += text.front();
            text.remove_prefix(2);
        } else if (text.front() == '{') {
            // Names of placeholders are ASCII: what ends behind a half character is none of them.
            const std::string_view name = text.substr(1, text.find('}') - 1);
            const auto found = std::find_if(
                PLACEHOLDERS.begin(), PLACEHOLDERS.end(),
                [name, kind](const SPlaceholder& each) { return each.name == name && each.kind == kind; });
            if (found == PLACEHOLDERS.end() || text.size() < name.size() + 2) {
                reason = "A brace opens no placeholder that there is.";
                return false;
            }
            endLiteral();
            parsed.elements.push_back({found->element, {}});
            parsed.used |= DWORD{1} << found->element;
            text.remove_prefix(name.size() + 2);
        } else if (text.front() == '}') {
            reason = "A brace closes nothing.";
            return false;
        } else {
            const std::size_t len = GetCharLen(text);
            literal.append(text.substr(0, len));
            text.remove_prefix(len);
        }
    }
    endLiteral();

    const bool hasEra =
        parsed.Has(ELEMENT_ERA) || parsed.Has(ELEMENT_ERA_SHORT) || parsed.Has(ELEMENT_ERA_LETTER);
    const bool hasYearOfEra =
        parsed.Has(ELEMENT_JPNYEAR) || parsed.Has(ELEMENT_JPNYEAR_2) || parsed.Has(ELEMENT_JPNYEAR_GAN);
    const bool has12Hours = parsed.Has(ELEMENT_HOUR12) || parsed.Has(ELEMENT_HOUR12_2);
    if (parsed.used == 0) {
        reason = "The pattern has no placeholder.";
        return false;
    }
    if (hasEra != hasYearOfEra) {
        reason = "An era and the year of an era need each other.";
        return false;
    }
    if (has12Hours && !parsed.Has(ELEMENT_AMPM) && !parsed.Has(ELEMENT_AMPM_KANJI)) {
        reason = "An hour of twelve needs morning or afternoon beside it.";
        return false;
    }
    *this = std::move(parsed);
    return true;
}

} // namespace NSKZ::NSKZCore
