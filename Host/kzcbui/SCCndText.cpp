#include "SCCndText.h"

#include "CCndParser.h"
#include "CContainerOfBscBtnCnd.h"
#include "CTypedBtnCnd.h"

#include <array>
#include <charconv>
#include <cmath>

namespace NSKZ::Host {

namespace {

using NSKZCore::CContainerOfBscBtnCnd;
using NSKZCore::CUnitCndOfBscBtnCnd;
using NSKZCore::IComponentOfBscBtnCnd;

// The shortest text that reads back as the number.
std::string WriteNumber(double number)
{
    std::array<char, 32> digits;
    const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    return error == std::errc() ? std::string(digits.data(), end) : std::string();
}

std::optional<std::string> WriteUnit(const CUnitCndOfBscBtnCnd& unit, const SCCndText::FieldNamer& nameField)
{
    const std::string field = nameField(unit.GetNumID());
    const char* const method = SCCndWords::GetWord(unit.GetSumMethod());
    const char* const condition = SCCndWords::GetWord(unit.GetSelCondition());
    if (field.empty() || method == nullptr || condition == nullptr ||
        (unit.IsSelConditionByNumCmp() && !std::isfinite(unit.GetCmpNum())))
        return std::nullopt;
    return CCndParser::WriteField(field) + " " + method + " " + condition + " " +
           (unit.IsSelConditionByRank() ? std::to_string(unit.GetRankNum()) : WriteNumber(unit.GetCmpNum()));
}

std::optional<std::string> WriteContainer(const CContainerOfBscBtnCnd& container,
                                          const SCCndText::FieldNamer& nameField)
{
    const std::string_view word = container.GetBoolOperator() == NSKZCore::SCKZCoreCom::BOOLOPERATOR_AND
                                      ? SCCndWords::WORD_AND
                                      : SCCndWords::WORD_OR;
    std::string text;
    IComponentOfBscBtnCnd* child = nullptr;
    for (DWORD i = 0; container.GetCndComponentPtr(i, child); ++i) {
        const std::optional<std::string> part = SCCndText::Write(*child, nameField);
        if (!part)
            return std::nullopt;
        if (i != 0)
            text.append(" ").append(word).append(" ");
        text += dynamic_cast<const CContainerOfBscBtnCnd*>(child) != nullptr ? "(" + *part + ")" : *part;
    }
    return text.empty() ? std::nullopt : std::optional(text);
}

} // namespace

std::optional<std::string> SCCndText::Write(const NSKZCore::IBtnCnd& cnd, const FieldNamer& nameField)
{
    const auto* const typed = dynamic_cast<const CTypedBtnCnd*>(&cnd);
    if (typed != nullptr && !typed->GetText().empty())
        return typed->GetText();
    const auto* const basic =
        typed != nullptr ? &typed->GetBasicCnd() : dynamic_cast<const NSKZCore::CBasicBtnCnd*>(&cnd);
    const IComponentOfBscBtnCnd* component = nullptr;
    return basic != nullptr && basic->GetCndComponent(component) ? Write(*component, nameField)
                                                                 : std::nullopt;
}

std::optional<std::string> SCCndText::Write(const IComponentOfBscBtnCnd& component,
                                            const FieldNamer& nameField)
{
    if (const auto* const unit = dynamic_cast<const CUnitCndOfBscBtnCnd*>(&component))
        return WriteUnit(*unit, nameField);
    const auto* const container = dynamic_cast<const CContainerOfBscBtnCnd*>(&component);
    return container != nullptr ? WriteContainer(*container, nameField) : std::nullopt;
}

} // namespace NSKZ::Host
