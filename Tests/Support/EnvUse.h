#ifndef ENVUSE_H
#define ENVUSE_H

#include "CBUIDataMngr.h"
#include "CDate.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

// Use that is made of an environment whose content is not known: whatever documents it was read from, it must
// survive this, and no exception but that of exhausted memory may come out.

namespace NSKZ::Test {

class CEnvUse
{
public:
    using CBUIDataMngr = NSKZCore::CBUIDataMngr;
    using SCBUICoreCom = NSKZCore::SCBUICoreCom;
    using VCBtnClass = NSKZCore::VCBtnClass;
    using VCSpBtn = NSKZCore::VCSpBtn;
    using List = std::vector<DWORD>;

    explicit CEnvUse(CBUIDataMngr& usedEnv) : env(usedEnv) { env.GetAllBtnClassIDList(classIDs, true); }

    // Asks all that there is to be asked.
    void Ask()
    {
        recs.assign(std::size_t{env.GetRecCountOfSrcData()} + 1, 0);
        DWORD count = 0;
        env.GetTargetRecList(recs.data(), count);
        std::vector<NSKZCore::SSelectBtnIDList> selection;
        env.GetAllBtnSelectionInfo(selection);
        for (DWORD position = 0; position < env.GetHierCount(); ++position) {
            DWORD classID = 0;
            env.GetHierInfo(position, classID, count);
        }
        List ids;
        env.GetAllBtnClassSelectionInfo(ids);
        for (const DWORD classID : First(classIDs))
            AskClass(classID);
    }

    // Presses, releases and clears in the present mode and, one after the other, in some more. What users
    // have fixed but the selection stays, and so does the mode.
    void Press(const std::vector<CBUIDataMngr::ERelationMode>& modes)
    {
        const CBUIDataMngr::ERelationMode mode = env.GetRelationMode();
        const bool multi = env.GetMultiSelectionInfo();
        PressIn(mode);
        for (const CBUIDataMngr::ERelationMode other : modes) {
            env.SetRelationMode(other);
            env.SetMultiSelectionInfo(!multi);
            PressIn(other);
        }
        env.SetRelationMode(mode);
        env.SetMultiSelectionInfo(multi);
        env.ClearAllBtnSelections(true);
    }

    // Makes, changes and destroys what users fix, in the classes that the fixed form may change or, with
    // `commonToo`, in all of them, and those classes themselves.
    void Change(bool commonToo)
    {
        for (const DWORD classID : First(classIDs)) {
            const bool isKept = SCBUICoreCom::IsCommonVirBtnClass(classID) && !commonToo;
            const List btnIDs = ListFewBtns(classID);
            const DWORD inc = Create(classID, SCBUICoreCom::BTNTYPE_INC, btnIDs, 0);
            const DWORD cll = Create(classID, SCBUICoreCom::BTNTYPE_CLL, {inc}, 0);
            env.SetDispMemberBtnInfoOfIncBtn(classID, inc, true);
            List spBtnIDs;
            env.GetAllSpBtnIDListOfBtnClass(classID, spBtnIDs, true);
            for (const DWORD spBtnID : First(spBtnIDs)) {
                if (isKept && SCBUICoreCom::IsVirIncBtn(spBtnID))
                    continue;
                env.SetMemberBtnIDListOfSpBtn(classID, spBtnID, btnIDs);
                env.SetEffectiveInfoOfSpBtn(classID, spBtnID, false);
                env.SetEffectiveInfoOfSpBtn(classID, spBtnID, true);
            }
            env.SetDispEmpValBtnInfoOfBtnClass(classID, false);
            env.SetDispEmpValBtnInfoOfBtnClass(classID, true);
            ChangeDispForm(classID);
            env.DestroySpBtn(classID, inc);
            env.DestroySpBtn(classID, cll);
            if (!isKept && !classIDs.empty()) {
                const DWORD virInc = Create(classID, SCBUICoreCom::BTNTYPE_VIRINC,
                                            ListFewBtns(classIDs.front()), classIDs.front());
                env.SetEffectiveInfoOfVirBtnClass(classID, false);
                env.SetEffectiveInfoOfVirBtnClass(classID, true);
                env.DestroySpBtn(classID, virInc);
            }
            if (!isKept && !spBtnIDs.empty())
                env.DestroySpBtn(classID, spBtnIDs.front());
        }
        DWORD madeID = 0;
        if (env.CreateVirBtnClass("made", false, madeID) == CBUIDataMngr::CREATEVIR_OK) {
            for (const DWORD classID : First(classIDs))
                Create(madeID, SCBUICoreCom::BTNTYPE_VIRINC, ListFewBtns(classID), classID);
            env.DestroyVirBtnClass(madeID);
        }
        if (commonToo)
            env.CreateVirBtnClass("made too", true, madeID);
        const List limited = {0, 2, 3};
        env.SetLimitedRecList(limited.data(), static_cast<DWORD>(limited.size()));
        env.ClearLimitedRecList();
        env.AdjstAccordingToChangeDateCriterionInfo();
        for (const DWORD classID : First(classIDs)) {
            if (SCBUICoreCom::IsFixedVirBtnClass(classID) || commonToo)
                env.DestroyVirBtnClass(classID);
        }
    }

private:
    static List First(List ids)
    {
        constexpr std::size_t MAX_COUNT = 8;
        ids.resize(std::min(ids.size(), MAX_COUNT));
        return ids;
    }

    // The first of all and the last of all, which special buttons are if there are any.
    List ListFewBtns(DWORD classID) const
    {
        List all;
        env.GetAllBtnIDListOfBtnClass(classID, all, true);
        constexpr std::size_t MAX_COUNT = 4;
        if (all.size() > MAX_COUNT)
            all.erase(all.begin() + 2, all.end() - 2);
        return all;
    }

    void PressIn(CBUIDataMngr::ERelationMode mode)
    {
        for (const DWORD classID : First(classIDs)) {
            const List btnIDs = ListFewBtns(classID);
            env.SelectBtns(classID, btnIDs, true, mode == CBUIDataMngr::RELATIONMODE_OR);
            if (!btnIDs.empty())
                env.SelectTheBtn(classID, btnIDs.back(), false);
        }
        std::vector<NSKZCore::SSelectBtnIDList> selection;
        env.GetAllBtnSelectionInfo(selection);
        env.SelectBtns(selection, true);
        if (!classIDs.empty())
            env.SelectAllBtnsOfBtnClass(classIDs.front(), true);
        env.ClearAllBtnSelections(false);
    }

    DWORD Create(DWORD classID, SCBUICoreCom::EBtnType type, const List& members, DWORD refClassID)
    {
        DWORD btnID = 0;
        if (refClassID == 0)
            env.CreateSpBtn(btnID, classID, type, "made", VCSpBtn::MMBBTNSELMTH_SELECT, &members, nullptr);
        else
            env.CreateSpBtn(btnID, classID, type, "made", VCSpBtn::MMBBTNSELMTH_SELECT, &members, nullptr,
                            refClassID);
        return btnID;
    }

    // To another form and back.
    void ChangeDispForm(DWORD classID)
    {
        NSKZCore::SCDeclareConstant::SDateDispForm dateForm;
        if (env.GetDispFormOfDateBtnClass(classID, dateForm)) {
            NSKZCore::SCDeclareConstant::SDateDispForm other;
            other.kind = 2;
            other.form = 6;
            other.option = 0;
            env.SetDispFormOfDateBtnClass(classID, other);
            env.SetDispFormOfDateBtnClass(classID, dateForm);
        }
        NSKZCore::SCDeclareConstant::STimeDispForm timeForm;
        if (env.GetDispFormOfTimeBtnClass(classID, timeForm)) {
            NSKZCore::SCDeclareConstant::STimeDispForm other;
            other.kind = 1;
            other.form = 1;
            env.SetDispFormOfTimeBtnClass(classID, other);
            env.SetDispFormOfTimeBtnClass(classID, timeForm);
        }
    }

    void AskClass(DWORD classID)
    {
        List ids;
        for (const unsigned int flags :
             {DWORD{VCBtnClass::ORDLIST_NORMAL}, DWORD{VCBtnClass::ORDLIST_DESCEND},
              DWORD{VCBtnClass::ORDLIST_INCLUDE_NONDISPBTNS} | VCBtnClass::ORDLIST_TAILEND_EMPVALBTN |
                  VCBtnClass::ORDLIST_TAILEND_CNDCLLBTN,
              DWORD{VCBtnClass::ORDLIST_INCLUDE_CNDCLLMEMBERBTNS}}) {
            env.GetBtnAppOrdListOfBtnClass(classID, flags, ids);
            env.GetBtnNameOrdListOfBtnClass(classID, flags, ids);
            env.GetBtnUnknownOrdListOfBtnClass(classID, flags, List(ids), ids);
        }
        const std::vector<const char*> words = {"a"};
        env.SearchBtnsByAliasFromBtnClass(classID, words, VCBtnClass::SRCHBTNNAME_INCLUDE_ALL, 0, ids);
        env.GetDispBtnIDListOfBtnClass(classID, ids);
        env.GetDispSelBtnIDListOfBtnClass(classID, ids);
        DWORD count = 0;
        env.GetTargetRecListOfBtnClass(classID, recs.data(), count);
        double value = 0;
        env.GetSumValueCacheMngrObjRef().GetTotalValue(classID, 3, value);
        const char* text = nullptr;
        env.GetNameOfVirBtnClass(classID, text);
        NSKZCore::CDateGroupMap groups;
        env.GetGroupedBtnIDListsOfDateBtnClass(classID, NSKZCore::VCDate::DATETYPE_MONTH, groups);
        const NSKZCore::VCDate* date = nullptr;
        env.GetLatestDateOfDateBtnClass(classID, date);
        env.GetAllBtnIDListOfBtnClass(classID, ids, true);
        env.GetRecListThatRelatesToBtns(classID, ids, recs.data(), count);
        ids.resize(std::min<std::size_t>(ids.size(), 200));
        for (const DWORD btnID : ids)
            AskBtn(classID, btnID);
    }

    void AskBtn(DWORD classID, DWORD btnID)
    {
        DWORD count = 0;
        List ids;
        env.GetRecListThatRelatesToBtn(classID, btnID, recs.data(), count);
        double value = 0;
        env.GetSumValueCacheMngrObjRef().GetSumValue(classID, btnID, 3, value);
        const char* text = nullptr;
        env.GetAliasOfBtn(classID, btnID, text);
        env.GetNameOfBtn(classID, btnID, text);
        env.GetSpBtnIDListIncludingBtn(classID, btnID, ids);
        env.GetRootSpBtnIDListIncludingBtn(classID, btnID, ids, true);
        std::set<NSKZCore::SBtnClassIDAndBtnID> influenced;
        env.GetSpBtnIDListThatTheSpecifiedBtnInfluences(classID, btnID, influenced, false);
        env.GetMemberBtnIDListOfSpBtn(classID, btnID, ids);
        env.GetDisplayedMemberBtnIDListOfSpBtn(classID, btnID, ids);
    }

    CBUIDataMngr& env;
    List classIDs;
    List recs; // room for all records
};

} // namespace NSKZ::Test

#endif
