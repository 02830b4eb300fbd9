#ifndef TABLESTATE_H
#define TABLESTATE_H

#include "HostState.h"
#include "VCBtn.h"

#include <algorithm>
#include <map>
#include <string>

namespace NSKZ::Test {

// Whether nothing of a button is left but itself: the engine keeps the button of a value that has gone, and
// of a group of dates without dates, hidden, for they may come back.
inline bool IsLeftOver(const Json& btn)
{
    constexpr unsigned int REASONS = NSKZCore::VISINFO_NOREC | NSKZCore::VISINFO_NOLIVEMEMBER;
    return btn.is_object() && btn.contains("visible") &&
           (btn.at("visible").get<unsigned int>() & REASONS) != 0 && !btn.value("managedByUser", false);
}

// What a session shows but for such buttons.
inline std::map<std::string, Json> AskWithoutLeftOver(CHostSession& session)
{
    std::map<std::string, Json> state = CHostState::Ask(session);
    std::erase_if(state, [](const auto& entry) { return IsLeftOver(entry.second); });
    for (auto& [question, answer] : state) {
        for (const char* list : {"buttons", "special"}) {
            if (!answer.contains(list) || !answer.at(list).is_array())
                continue;
            Json kept = Json::array();
            for (const Json& btn : answer.at(list)) {
                if (!IsLeftOver(btn))
                    kept.push_back(btn);
            }
            answer[list] = kept;
            answer.erase("count");
        }
        answer.erase("groups");
        if (question == "items") {
            for (Json& item : answer.at("items"))
                item.erase("buttons");
        }
    }
    // Those that are asked for what is left over alone.
    std::erase_if(state, [&state](const auto& entry) {
        const std::string& question = entry.first;
        const std::size_t name = question.find(" @");
        return question.starts_with("special ") && name != std::string::npos &&
               question.find('#') != std::string::npos && state.count("button" + question.substr(name)) == 0;
    });
    return state;
}

// The identifiers of the groups of dates and times, which the engine makes anew, by item.
using CGroups = std::map<DWORD, std::map<DWORD, std::string>>;

inline void NameGroups(Json& answer, DWORD item, const CGroups& groups, bool isList = false)
{
    if (answer.is_object()) {
        item =
            answer.contains("item") && answer.at("item").is_number() ? answer.at("item").get<DWORD>() : item;
        for (auto& [key, part] : answer.items()) {
            NameGroups(part, item, groups,
                       key == "id" || key == "buttons" || key == "direct" || key == "roots");
            // They stand in the order of their identifiers.
            if ((key == "buttons" || key == "special" || key == "values") && part.is_array())
                std::sort(part.begin(), part.end());
        }
    } else if (answer.is_array()) {
        for (Json& part : answer)
            NameGroups(part, item, groups, isList);
    } else if (isList && answer.is_number_unsigned() && groups.count(item) != 0 &&
               groups.at(item).count(answer.get<DWORD>()) != 0) {
        answer = groups.at(item).at(answer.get<DWORD>());
    }
}

// The same, with groups of dates and times by their texts in place of their identifiers.
inline std::map<std::string, Json> AskByGroups(CHostSession& session)
{
    CGroups groups;
    for (const Json& spBtn : Json(session.RunWell("special list").at("special"))) {
        if (spBtn.at("managedByUser") == false)
            groups[spBtn.at("item")][spBtn.at("id")] = spBtn.at("text");
    }
    std::map<std::string, Json> state;
    std::map<std::string, Json> asked = AskWithoutLeftOver(session);
    for (auto& [question, answer] : asked) {
        const std::size_t itemPos = question.find('@');
        const std::size_t btnPos = question.find(" #");
        const DWORD item =
            itemPos == std::string::npos ? 0 : static_cast<DWORD>(std::stoul(question.substr(itemPos + 1)));
        std::string name = question;
        if (btnPos != std::string::npos) {
            const DWORD btn = static_cast<DWORD>(std::stoul(question.substr(btnPos + 2)));
            if (groups.count(item) != 0 && groups.at(item).count(btn) != 0)
                name = question.substr(0, btnPos + 1) + groups.at(item).at(btn);
        }
        NameGroups(answer, item, groups);
        state[name] = answer;
    }
    return state;
}

inline void ExpectSameState(const std::map<std::string, Json>& state,
                            const std::map<std::string, Json>& expected)
{
    for (const auto& [question, answer] : expected) {
        const auto found = state.find(question);
        EXPECT_EQ(found != state.end() ? found->second : Json(), answer) << question;
    }
    EXPECT_EQ(state.size(), expected.size());
}

} // namespace NSKZ::Test

#endif
