#include "SCSpBtnAnswer.h"

#include "CTextOutput.h"
#include "SCBtnReason.h"
#include "SCCndText.h"
#include "SCNameWord.h"
#include "SCNumberText.h"

#include <nlohmann/json.hpp>

namespace NSKZ::Host {

namespace {

using NSKZCore::SCBUICoreCom;
using NSKZCore::VCBtnClass;
using NSKZCore::VCSpBtn;

CAnswer DescribeCnd(const CWorkspace& workspace, DWORD itemID, DWORD btnID)
{
    const NSKZCore::IBtnCnd* cnd = nullptr;
    if (workspace.GetEnv().GetMemberBtnCndOfSpBtn(itemID, btnID, cnd) != VCBtnClass::GETMMBBTNCND_OK)
        return {};
    const std::optional<std::string> text =
        SCCndText::Write(*cnd, [&workspace](DWORD fldID) { return workspace.GetWordOfNumFld(fldID); });
    return text ? CAnswer(*text) : CAnswer();
}

std::string DescribeState(const CAnswer& spBtn)
{
    const unsigned int visibleInfo = spBtn.at("visible");
    std::string state = spBtn.at("dispMember") == true ? "its members stay displayed" : "";
    std::string reasons;
    for (const std::string& reason : SCBtnReason::GetReasons(visibleInfo))
        reasons += (reasons.empty() ? "hidden: " : ", ") + reason;
    return state + (state.empty() || reasons.empty() ? "" : "; ") + reasons;
}

} // namespace

CAnswer SCSpBtnAnswer::Describe(const CWorkspace& workspace, DWORD itemID, DWORD btnID)
{
    const NSKZCore::CBUIDataMngr& env = workspace.GetEnv();
    VCSpBtn::EMmbBtnSelMth selMth = VCSpBtn::MMBBTNSELMTH_SELECT;
    DWORD memberCount = 0;
    bool isEffective = false;
    unsigned int visibleInfo = 0;
    bool dispMember = false;
    bool isManagedByUser = false;
    env.GetMmbBtnSelMthOfSpBtn(itemID, btnID, selMth);
    env.GetMemberBtnCountOfSpBtn(itemID, btnID, memberCount);
    env.GetEffectiveInfoOfSpBtn(itemID, btnID, isEffective);
    env.GetVisibleInfoOfBtn(itemID, btnID, visibleInfo);
    env.GetBtnMngrInfoOfSpBtn(itemID, btnID, isManagedByUser);
    const bool isInc = env.GetDispMemberBtnInfoOfIncBtn(itemID, btnID, dispMember);
    CAnswer spBtn;
    spBtn["item"] = itemID;
    spBtn["id"] = btnID;
    spBtn["text"] = workspace.GetBtnText(itemID, btnID);
    spBtn["kind"] = SCBUICoreCom::IsCllBtn(btnID) ? "cll" : SCBUICoreCom::IsIncBtn(btnID) ? "inc" : "virinc";
    DWORD refItemID = 0;
    const bool hasRefItem =
        env.GetRefBtnClassIDOfVirIncBtn(itemID, btnID, refItemID) && workspace.IsItem(refItemID);
    spBtn["refItem"] = hasRefItem ? CAnswer(refItemID) : CAnswer();
    spBtn["by"] = selMth == VCSpBtn::MMBBTNSELMTH_CONDITION ? "condition" : "list";
    spBtn["members"] = memberCount;
    spBtn["effective"] = isEffective;
    spBtn["displayed"] = visibleInfo == 0;
    spBtn["visible"] = visibleInfo;
    spBtn["dispMember"] = isInc ? CAnswer(dispMember) : CAnswer();
    spBtn["managedByUser"] = isManagedByUser;
    spBtn["condition"] = DescribeCnd(workspace, itemID, btnID);
    return spBtn;
}

std::string SCSpBtnAnswer::DescribePicking(const CAnswer& spBtn)
{
    if (spBtn.at("by") != "condition")
        return "list";
    return spBtn.at("condition").is_null() ? "no condition" : spBtn.at("condition").get<std::string>();
}

void SCSpBtnAnswer::Show(const CWorkspace& workspace, const std::vector<CAnswer>& spBtns, bool withItem,
                         CTextOutput& output)
{
    std::vector<CTextOutput::SRow> rows;
    for (const CAnswer& spBtn : spBtns) {
        const bool isDisplayed = spBtn.at("displayed");
        const std::string refItem =
            spBtn.at("refItem").is_null() ? "" : "of " + workspace.GetItemName(spBtn.at("refItem"));
        rows.push_back({{withItem ? workspace.GetItemName(spBtn.at("item")) : "",
                         SCNameWord::WriteID(spBtn.at("id"), SCNameWord::MARK_OF_BTN), spBtn.at("text"),
                         spBtn.at("kind"), SCNumberText::OfCount(spBtn.at("members")), refItem,
                         DescribePicking(spBtn), DescribeState(spBtn)},
                        isDisplayed ? CTextOutput::STYLE_PLAIN : CTextOutput::STYLE_HIDDEN});
    }
    output.WriteTable({{withItem ? "item" : ""},
                       {"id", true},
                       {"button"},
                       {"kind"},
                       {"members", true},
                       {""},
                       CTextOutput::SColumn::Uncut("picked by"),
                       CTextOutput::SColumn::Uncut("")},
                      rows);
}

} // namespace NSKZ::Host
