#include "CBtnLister.h"

#include "CTextOutput.h"
#include "SCBtnReason.h"
#include "SCNameWord.h"
#include "SCNumberText.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace NSKZ::Host {

namespace {

using NSKZCore::SCBUICoreCom;

const char* GetNameOfKind(SCBUICoreCom::EBtnType type)
{
    switch (type) {
    case SCBUICoreCom::BTNTYPE_NORMAL:
        return "normal";
    case SCBUICoreCom::BTNTYPE_EMPVAL:
        return "empty";
    case SCBUICoreCom::BTNTYPE_INC:
        return "inc";
    case SCBUICoreCom::BTNTYPE_VIRINC:
        return "virinc";
    case SCBUICoreCom::BTNTYPE_CLL:
        return "cll";
    }
    return "unknown";
}

} // namespace

CBtnLister::CBtnLister(const CWorkspace& workspaceOfHost, DWORD itemIDOfHost)
    : workspace(workspaceOfHost), itemID(itemIDOfHost), isTargetRec(workspace.GetRecCount()),
      recs(workspace.GetTargetRecsOfItem(itemID))
{
    for (const DWORD rec : recs)
        isTargetRec[rec] = true;
    recs.resize(workspace.GetRecCount());
}

CAnswer CBtnLister::Describe(DWORD btnID)
{
    const NSKZCore::CBUIDataMngr& env = workspace.GetEnv();
    SCBUICoreCom::EBtnType type = SCBUICoreCom::BTNTYPE_NORMAL;
    unsigned int visibleInfo = 0;
    bool isSelected = false;
    DWORD recCount = 0;
    const bool isThere = env.GetTypeOfBtn(itemID, btnID, type);
    env.GetVisibleInfoOfBtn(itemID, btnID, visibleInfo);
    env.GetSelectionInfoOfBtn(itemID, btnID, isSelected);
    env.GetRecListThatRelatesToBtn(itemID, btnID, recs.data(), recCount);
    const auto targetRecCount =
        std::count_if(recs.begin(), recs.begin() + recCount, [this](DWORD rec) { return isTargetRec[rec]; });
    CAnswer button;
    button["id"] = btnID;
    button["text"] = workspace.GetBtnText(itemID, btnID);
    button["kind"] = isThere ? GetNameOfKind(type) : "absent";
    button["displayed"] = isThere && visibleInfo == 0;
    button["selected"] = isSelected;
    button["visible"] = visibleInfo;
    button["records"] = recCount;
    button["targetRecords"] = targetRecCount;
    return button;
}

void CBtnLister::DescribeInto(CAnswer& answer, const std::vector<DWORD>& btnIDs, std::size_t max)
{
    CAnswer buttons = CAnswer::array();
    for (std::size_t i = 0; i < btnIDs.size() && i < max; ++i)
        buttons.push_back(Describe(btnIDs[i]));
    answer["buttons"] = std::move(buttons);
    answer["count"] = btnIDs.size();
}

void CBtnLister::Show(const CAnswer& answer, CTextOutput& output, unsigned int silentReasons)
{
    const CAnswer& buttons = answer.at("buttons");
    std::vector<CTextOutput::SRow> rows;
    for (const CAnswer& button : buttons) {
        const bool isSelected = button.at("selected");
        const unsigned int visibleInfo = button.at("visible").get<unsigned int>() & ~silentReasons;
        const std::string kind = button.at("kind");
        std::string reasons;
        for (const std::string& reason : SCBtnReason::GetReasons(visibleInfo))
            reasons += (reasons.empty() ? "hidden: " : ", ") + reason;
        rows.push_back(
            {{isSelected ? "*" : "", SCNameWord::WriteID(button.at("id"), SCNameWord::MARK_OF_BTN),
              button.at("text"), kind == "normal" ? "" : kind, SCNumberText::OfCount(button.at("records")),
              SCNumberText::OfCount(button.at("targetRecords")), reasons},
             visibleInfo != 0 ? CTextOutput::STYLE_HIDDEN
             : isSelected     ? CTextOutput::STYLE_SELECTED
                              : CTextOutput::STYLE_PLAIN});
    }
    if (!rows.empty()) {
        output.WriteTable({{""},
                           {"id", true},
                           {"button"},
                           {""},
                           {"records", true},
                           {"in force", true},
                           CTextOutput::SColumn::Uncut("")},
                          rows);
    }
    output.WriteMore(answer.at("count").get<std::size_t>() - buttons.size());
}

} // namespace NSKZ::Host
