#ifndef SCCNDTEXT_H
#define SCCNDTEXT_H

#include "IBtnCnd.h"

#include <functional>
#include <optional>
#include <string>

namespace NSKZ::NSKZCore {
class IComponentOfBscBtnCnd;
}

namespace NSKZ::Host {

// Conditions as text.
class SCCndText
{
public:
    SCCndText() = delete;

    // The word for a field, as CCndParser::FieldFinder takes it; empty for a field that cannot be named.
    using FieldNamer = std::function<std::string(DWORD)>;

    // The condition as it was typed if it is a CTypedBtnCnd, else the tree of a CBasicBtnCnd in words that
    // CCndParser reads back into the same tree. Nothing for a condition that has no words: one of another
    // class, an empty one, and one with a part that cannot be typed.
    static std::optional<std::string> Write(const NSKZCore::IBtnCnd& cnd, const FieldNamer& nameField);
    static std::optional<std::string> Write(const NSKZCore::IComponentOfBscBtnCnd& component,
                                            const FieldNamer& nameField);
};

} // namespace NSKZ::Host

#endif
