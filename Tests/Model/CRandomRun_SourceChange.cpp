#include "CRandomRun.h"

#include "CModelComparison.h"

#include <algorithm>

// Changes of the table that the environment follows, and taking them back.

namespace NSKZ::Test {

using NSKZCore::CBUIDataMngr;
using NSKZCore::SCBUICoreCom;
using NSKZCore::SCDataMngrCoreDef;

namespace {

// The source buttons of a class with their records, in the order of their first appearance.
std::vector<std::pair<std::string, IDList>> ListValues(const CBUIDataMngr& env, DWORD classID)
{
    std::vector<std::pair<std::string, IDList>> values;
    IDList btnIDs;
    env.GetBtnAppOrdListOfBtnClass(classID, NSKZCore::VCBtnClass::ORDLIST_INCLUDE_NONDISPBTNS, btnIDs);
    for (const DWORD btnID : btnIDs) {
        if (SCBUICoreCom::IsSpBtn(btnID))
            continue;
        const char* name = nullptr;
        env.GetNameOfBtn(classID, btnID, name);
        IDList recs(env.GetRecCountOfSrcData());
        DWORD count = 0;
        env.GetRecListThatRelatesToBtn(classID, btnID, recs.data(), count);
        recs.resize(count);
        values.emplace_back(name == nullptr ? "" : name, recs);
    }
    return values;
}

} // namespace

bool CRandomRun::ChangeSource()
{
    bool agrees = false;
    switch (random.GetBelow(12)) {
    case 0:
    case 1:
        agrees = InsertRecs();
        break;
    case 2:
    case 3:
        agrees = DeleteRecs();
        break;
    case 4:
        agrees = InsertFlds();
        break;
    case 5:
        agrees = DeleteFlds();
        break;
    case 6:
        agrees = ChangeData();
        break;
    case 7:
        agrees = ChangeTypes();
        break;
    case 8:
        agrees = Refresh();
        break;
    case 9:
        if (random.IsOneOf(3)) {
            log.back() << "ClearUndoOfTheSrcData";
            env->ClearUndoOfTheSrcData();
            model.ClearUndoOfTheSrcData();
            formerTables.clear();
            return true;
        }
        [[fallthrough]];
    default:
        return TakeBack();
    }
    return agrees && IsAsBuiltAnew();
}

void CRandomRun::KeepTable(std::size_t entryCountBefore)
{
    formerTables.push_back({entryCountBefore, table});
}

bool CRandomRun::IsAsBuiltAnew()
{
    const CBUIDataMngr anew(2, SCBUICoreCom::LINKTBLVERTYPE_ONMEM, SCBUICoreCom::LINKTBLVERTYPE_ONMEM,
                            table.GetSource(), nullptr, nullptr);
    std::map<DWORD, DWORD> classes;
    std::map<DWORD, DWORD> classesAnew;
    env->GetBtnClassIDCnvObj(classes);
    anew.GetBtnClassIDCnvObj(classesAnew);
    bool isSame = classes.size() == classesAnew.size();
    for (const auto& [fldID, classID] : classes) {
        SCBUICoreCom::EBtnClassType type{};
        env->GetTypeOfBtnClass(classID, type);
        if (hasChangedForms && type == SCBUICoreCom::BTNCLSTYPE_DATE)
            continue; // how texts are cut to dates follows the form of the time at which they came
        isSame = isSame && ListValues(*env, classID) == ListValues(anew, classesAnew[fldID]);
    }
    if (!isSame)
        log.back() << ", not as built anew";
    return isSame;
}

bool CRandomRun::InsertRecs()
{
    if (table.GetTexts().flds.empty())
        return true;
    const DWORD recCount = table.GetTexts().recCount;
    const DWORD position = random.IsOneOf(4) ? recCount : random.GetBelow(recCount + 1);
    const DWORD count = random.GetBelow(random.IsOneOf(8) ? 60 : 6);
    const DWORD told = position == recCount && random.IsOneOf(2) ? recCount + random.GetBelow(5) : position;
    KeepTable(env->GetUndoOpeCountOfTheSrcData());
    table.InsertRecs(random, position, count);
    sumMngr.Refresh();
    log.back() << "AdjstAccordingToInsertRec " << told << ' ' << count;
    CModelEnv::SMoment moment = Begin();
    const bool envSays = env->AdjstAccordingToInsertRec(told, count);
    End(moment);
    model.InsertRec(told, count, table.GetTexts(), moment);
    return Says(envSays, true);
}

bool CRandomRun::DeleteRecs()
{
    const DWORD recCount = table.GetTexts().recCount;
    const DWORD position = random.GetBelow(recCount + 1);
    DWORD count = random.GetBelow(random.IsOneOf(8) ? 60 : 6);
    if (random.IsOneOf(20))
        count = 4294967295;
    KeepTable(env->GetUndoOpeCountOfTheSrcData());
    table.DeleteRecs(position, std::min(count, recCount - position));
    sumMngr.Refresh();
    log.back() << "AdjstAccordingToDeleteRec " << position << ' ' << count;
    CModelEnv::SMoment moment = Begin();
    const bool envSays = env->AdjstAccordingToDeleteRec(position, count);
    End(moment);
    model.DeleteRec(position, count, table.GetTexts(), moment);
    return Says(envSays, true);
}

bool CRandomRun::InsertFlds()
{
    KeepTable(env->GetUndoOpeCountOfTheSrcData());
    IDList fldIDs;
    for (DWORD left = 1 + random.GetBelow(2); left > 0; --left)
        fldIDs.push_back(table.InsertFld(random, leaning.table));
    sumMngr.Refresh();
    log.back() << "AdjstAccordingToInsertFld";
    Log(fldIDs);
    CModelEnv::SMoment moment = Begin();
    const auto result =
        env->AdjstAccordingToInsertFld(fldIDs.data(), static_cast<unsigned int>(fldIDs.size()), nullptr);
    End(moment);
    return Says(result == CBUIDataMngr::CREATESRC_OK, model.InsertFld(fldIDs, table.GetTexts(), moment));
}

bool CRandomRun::DeleteFlds()
{
    if (table.GetTexts().flds.size() < 2)
        return true;
    KeepTable(env->GetUndoOpeCountOfTheSrcData());
    IDList fldIDs;
    for (DWORD left = 1 + random.GetBelow(2); left > 0 && table.GetTexts().flds.size() > 1; --left) {
        const DWORD position = random.GetBelow(static_cast<DWORD>(table.GetTexts().flds.size()));
        fldIDs.push_back(table.GetTexts().flds[position].fldID);
        table.DeleteFld(position);
    }
    if (random.IsOneOf(10))
        fldIDs.push_back(4711);
    sumMngr.Refresh();
    log.back() << "AdjstAccordingToDeleteFld";
    Log(fldIDs);
    const bool envSays =
        env->AdjstAccordingToDeleteFld(fldIDs.data(), static_cast<unsigned int>(fldIDs.size()));
    model.DeleteFld(fldIDs, table.GetTexts());
    return Says(envSays, true);
}

bool CRandomRun::ChangeData()
{
    if (table.GetTexts().flds.empty())
        return true;
    KeepTable(env->GetUndoOpeCountOfTheSrcData());
    const DWORD position = random.GetBelow(static_cast<DWORD>(table.GetTexts().flds.size()));
    const DWORD fldID = table.GetTexts().flds[position].fldID;
    table.ChangeData(random, position);
    sumMngr.Refresh();
    log.back() << "AdjstAccordingToChangeFldData " << fldID;
    CModelEnv::SMoment moment = Begin();
    const bool envSays = env->AdjstAccordingToChangeFldData(&fldID, 1, nullptr);
    End(moment);
    model.ChangeFldData(table.GetTexts(), moment);
    return Says(envSays, true);
}

bool CRandomRun::ChangeTypes()
{
    if (table.GetTexts().flds.empty())
        return true;
    KeepTable(env->GetUndoOpeCountOfTheSrcData());
    const DWORD position = random.GetBelow(static_cast<DWORD>(table.GetTexts().flds.size()));
    const IDList fldIDs{table.GetTexts().flds[position].fldID};
    table.ChangeType(random, position);
    sumMngr.Refresh();
    log.back() << "AdjstAccordingToChangeFldDataSpec";
    Log(fldIDs);
    log.back() << " type " << table.GetTexts().flds[position].type;
    CModelEnv::SMoment moment = Begin();
    const bool envSays = env->AdjstAccordingToChangeFldDataSpec(
        fldIDs.data(), static_cast<unsigned int>(fldIDs.size()), nullptr);
    End(moment);
    return Says(envSays, model.ChangeFldDataSpec(fldIDs, table.GetTexts(), moment));
}

// Many changes in one summary. Those of the number of records are at the head.
bool CRandomRun::Refresh()
{
    if (table.GetTexts().flds.empty())
        return true;
    SCDataMngrCoreDef::SBtnRenewalInfo info;
    info.oldRecCount = table.GetTexts().recCount;
    KeepTable(env->GetUndoOpeCountOfTheSrcData());
    log.back() << "AdjstAccordingToChangeSrcDataMngr";
    if (random.IsOneOf(3)) {
        const DWORD count = random.GetBelow(5);
        log.back() << " insert " << count;
        table.InsertRecs(random, 0, count);
    } else if (random.IsOneOf(3)) {
        const DWORD count = random.GetBelow(std::min<DWORD>(5, info.oldRecCount + 1));
        log.back() << " delete " << count;
        table.DeleteRecs(0, count);
    }
    info.newRecCount = table.GetTexts().recCount;
    if (random.IsOneOf(3) && table.GetTexts().flds.size() > 1) {
        info.deletedFldIDs.push_back(table.GetTexts().flds[0].fldID);
        table.DeleteFld(0);
    }
    const DWORD position = random.GetBelow(static_cast<DWORD>(table.GetTexts().flds.size()));
    const DWORD fldID = table.GetTexts().flds[position].fldID;
    if (random.IsOneOf(3)) {
        table.ChangeData(random, position);
        info.dataChangedFldIDs.push_back(fldID);
    }
    if (random.IsOneOf(3)) {
        table.ChangeType(random, position);
        info.specChangedFldIDs.push_back(fldID);
    }
    if (random.IsOneOf(3))
        info.insertedFldIDs.push_back(table.InsertFld(random, leaning.table));
    for (const IDList& fldIDs :
         {info.deletedFldIDs, info.dataChangedFldIDs, info.specChangedFldIDs, info.insertedFldIDs})
        Log(fldIDs);
    sumMngr.Refresh();
    const SModelTable& changed = table.GetTexts();
    CModelEnv::SMoment moment = Begin();
    const auto result = env->AdjstAccordingToChangeSrcDataMngr(info, nullptr);
    End(moment);
    model.FollowSummary(info, changed, moment);
    return Says(result == CBUIDataMngr::CREATESRC_OK, true);
}

bool CRandomRun::TakeBack()
{
    log.back() << "AdjstAccordingToUndoOpeOfTheSrcData";
    if (!formerTables.empty() && env->GetUndoOpeCountOfTheSrcData() == 0)
        formerTables.clear(); // the history went with what users fixed
    if (formerTables.empty()) {
        const bool envSays = env->AdjstAccordingToUndoOpeOfTheSrcData();
        return Says(envSays, model.UndoOpeOfTheSrcData(table.GetTexts(), {}));
    }
    const SFormerTable former = std::move(formerTables.back());
    formerTables.pop_back();
    while (env->GetUndoOpeCountOfTheSrcData() > former.entryCount) {
        // The last step stands on the table of before; those between on one that has their records.
        table.PutBack(former.table);
        const DWORD needed = model.GetRecCountBehindUndo();
        if (needed > table.GetTexts().recCount)
            table.InsertRecs(random, 0, needed - table.GetTexts().recCount);
        else if (needed < table.GetTexts().recCount)
            table.DeleteRecs(0, table.GetTexts().recCount - needed);
        sumMngr.Refresh();
        CModelEnv::SMoment moment = Begin();
        const bool envSays = env->AdjstAccordingToUndoOpeOfTheSrcData();
        End(moment);
        if (!Says(envSays, model.UndoOpeOfTheSrcData(table.GetTexts(), moment)))
            return false;
    }
    return IsAsBuiltAnew();
}

} // namespace NSKZ::Test
