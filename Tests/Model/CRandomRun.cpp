#include "CRandomRun.h"

#include "CModelComparison.h"

#include "INumCnd.h"
#include "SCDispForm.h"
#include "VCSpBtn.h"

#include <algorithm>
#include <iterator>

namespace NSKZ::Test {

using NSKZCore::CBUIDataMngr;
using NSKZCore::CRandom;
using NSKZCore::INumCnd;
using NSKZCore::SCBUICoreCom;
using NSKZCore::SSelectBtnIDList;
using NSKZCore::VCBtnClass;
using NSKZCore::VCSpBtn;

namespace {

class CHostCnd : public INumCnd
{
public:
    explicit CHostCnd(int& countOfLiving) : livingCount(countOfLiving) { ++livingCount; }
    CHostCnd(const CHostCnd& other) : INumCnd(other), livingCount(other.livingCount) { ++livingCount; }
    CHostCnd& operator=(const CHostCnd&) = delete;
    ~CHostCnd() override { --livingCount; }
    bool IsEqualTo(const INumCnd&) const override { return true; }
    bool IsMetBy(double) const override { return true; }
    INumCnd* CreateClone() const override { return new CHostCnd(*this); }
    void Destroy() override { delete this; }

private:
    int& livingCount;
};

} // namespace

CRandomRun::CRandomRun(CRandom& choice, const SLeaning& leaningOfRun)
    : random(choice), leaning(leaningOfRun), table(choice, leaningOfRun.table), sumMngr(table.GetSource()),
      hasSumMngr(leaning.sumMngrMissing == 0 || !random.IsOneOf(leaning.sumMngrMissing)),
      env(std::make_unique<CBUIDataMngr>(1, leaning.linkTables, leaning.linkTables, table.GetSource(),
                                         hasSumMngr ? &sumMngr : nullptr, nullptr)),
      model(table.GetTexts(), hasSumMngr)
{}

std::string CRandomRun::Step()
{
    log.emplace_back();
    if (leaning.versionChange != 0 && random.IsOneOf(leaning.versionChange))
        ChangeVersionOfTable();
    const std::string disagreement = Operate() ? "" : "the results of the operation\n";
    return disagreement + CModelComparison(*env, model, random).Compare();
}

// Nothing else may come of it.
void CRandomRun::ChangeVersionOfTable()
{
    const auto version = static_cast<SCBUICoreCom::ELinkTableVerType>(1 + random.GetBelow(2));
    const bool isBnLink = random.IsOneOf(2);
    log.back() << (isBnLink ? "BnLink" : "RpLink") << " of version " << version << "; ";
    if (isBnLink)
        env->ChangeVersionTypeOfBnLink(version);
    else
        env->ChangeVersionTypeOfRpLink(version);
}

std::string CRandomRun::End()
{
    env.reset();
    return livingCndCount == 0 ? "" : "clones of the numeric condition\n";
}

std::string CRandomRun::Describe() const
{
    std::ostringstream out;
    out << table.Describe() << (hasSumMngr ? "with" : "without") << " a sum manager at first\n";
    for (const std::ostringstream& operation : log)
        out << operation.str() << '\n';
    return out.str();
}

bool CRandomRun::Says(bool envSays, bool modelSays)
{
    log.back() << " -> " << envSays;
    if (envSays != modelSays)
        log.back() << ", model " << modelSays;
    return envSays == modelSays;
}

bool CRandomRun::Gives(DWORD envGives, DWORD modelGives)
{
    log.back() << " -> " << envGives;
    if (envGives != modelGives)
        log.back() << ", model " << modelGives;
    return envGives == modelGives;
}

DWORD CRandomRun::ChooseClassID()
{
    if (model.GetItems().empty() || HappensOneIn(leaning.unknownID * 2))
        return std::vector<DWORD>{0, 999, 1000000001, 2000000001, 4294967295}[random.GetBelow(5)];
    // The class of before now and then, so that presses in it follow each other.
    if (lastClassID == 0 || random.IsOneOf(2))
        lastClassID =
            std::next(model.GetItems().begin(), random.GetBelow(static_cast<DWORD>(model.GetItems().size())))
                ->first;
    return lastClassID;
}

template <class TIsWanted>
DWORD CRandomRun::ChooseClassIDOf(const TIsWanted& isWanted)
{
    IDList wanted;
    for (const auto& [classID, item] : model.GetItems()) {
        if (isWanted(item))
            wanted.push_back(classID);
    }
    return wanted.empty() || random.IsOneOf(25) ? ChooseClassID() : ChooseFrom(wanted);
}

DWORD CRandomRun::ChooseVirtualClassID()
{
    return ChooseClassIDOf([](const SModelItem& item) { return item.isVirtual; });
}

DWORD CRandomRun::ChooseRefClassID(DWORD classID)
{
    const bool virtualToo = random.IsOneOf(2);
    const DWORD chosen = ChooseClassIDOf(
        [&](const SModelItem& item) { return item.classID != classID && (virtualToo || !item.isVirtual); });
    return chosen == 0 ? 1 : chosen;
}

DWORD CRandomRun::GetClassIDOfMembers(DWORD classID, DWORD btnID) const
{
    const auto found = model.GetItems().find(classID);
    if (found == model.GetItems().end() || found->second.btns.count(btnID) == 0)
        return classID;
    const DWORD refClassID = found->second.btns.at(btnID).refClassID;
    return refClassID == 0 ? classID : refClassID;
}

DWORD CRandomRun::ChooseBtnID(DWORD classID, bool select)
{
    const auto found = model.GetItems().find(classID);
    if (found == model.GetItems().end() || HappensOneIn(leaning.unknownID))
        return std::vector<DWORD>{
            0, 888888, 3000000002, 4000000009, 4080000002, 4160000009}[random.GetBelow(6)];
    if (HappensOneIn(leaning.spBtnPress)) {
        const IDList spBtnIDs = found->second.ListSpecial(true);
        if (!spBtnIDs.empty())
            return ChooseFrom(spBtnIDs);
    }
    IDList ids = found->second.ListAll();
    if (ids.empty())
        return SCBUICoreCom::BTN_ID_VIRINC_BEGIN;
    if (!HappensOneIn(leaning.hiddenBtn)) {
        const IDList better = select ? found->second.ListDisplayed() : found->second.ListSelected();
        if (!better.empty())
            ids = better;
    }
    return ChooseFrom(ids);
}

IDList CRandomRun::ChooseBtnIDs(DWORD classID, bool select)
{
    const DWORD counts[] = {0, 1, 1, 1, 2, 2, 3, 4, 8};
    IDList ids;
    for (DWORD left = counts[random.GetBelow(static_cast<DWORD>(std::size(counts)))]; left > 0; --left)
        ids.push_back(ChooseBtnID(classID, select));
    return ids;
}

void CRandomRun::Log(const IDList& ids)
{
    log.back() << " {";
    for (const DWORD id : ids)
        log.back() << ' ' << id;
    log.back() << " }";
}

bool CRandomRun::Operate()
{
    if (HappensOneIn(leaning.modeChange)) {
        const auto mode = leaning.modes[random.GetBelow(static_cast<DWORD>(leaning.modes.size()))];
        log.back() << "SetRelationMode " << mode;
        env->SetRelationMode(mode);
        model.SetRelationMode(mode);
        return true;
    }
    if (HappensOneIn(leaning.multiChange)) {
        const bool multi = random.IsOneOf(2);
        log.back() << "SetMultiSelectionInfo " << multi;
        env->SetMultiSelectionInfo(multi);
        model.SetMultiSelectionInfo(multi);
        return true;
    }
    if (HappensOneIn(leaning.limitation))
        return Limit();
    if (HappensOneIn(leaning.clearing)) {
        ClearOfFixedSpec();
        return true;
    }
    if (HappensOneIn(leaning.restoring))
        return Restore();
    if (HappensOneIn(leaning.damaging))
        return ReadDamagedSave();
    if (HappensOneIn(leaning.sourceChanges))
        return ChangeSource();
    if (HappensOneIn(leaning.dates))
        return OperateOnDates();
    if (HappensOneIn(leaning.virtualItems))
        return OperateOnVirtualItems();
    if (HappensOneIn(leaning.special))
        return OperateOnSpBtns();
    if (HappensOneIn(12))
        return OperateSeldom();
    return Press();
}

bool CRandomRun::Press()
{
    const bool select = !random.IsOneOf(4);
    const DWORD classID = ChooseClassID();
    if (random.IsOneOf(2)) {
        const DWORD btnID = ChooseBtnID(classID, select);
        log.back() << "SelectTheBtn " << classID << ' ' << btnID << ' ' << select;
        return Says(env->SelectTheBtn(classID, btnID, select), model.SelectTheBtn(classID, btnID, select));
    }
    if (random.IsOneOf(8)) {
        log.back() << "SelectAllBtnsOfBtnClass " << classID << ' ' << select;
        return Says(env->SelectAllBtnsOfBtnClass(classID, select),
                    model.SelectAllBtnsOfBtnClass(classID, select));
    }
    const IDList btnIDs = ChooseBtnIDs(classID, select);
    const bool includeHidden = random.IsOneOf(3);
    log.back() << "SelectBtns " << classID;
    Log(btnIDs);
    log.back() << ' ' << select << ' ' << includeHidden;
    return Says(env->SelectBtns(classID, btnIDs, select, includeHidden),
                model.SelectBtns(classID, btnIDs, select, includeHidden));
}

bool CRandomRun::Limit()
{
    if (random.IsOneOf(3)) {
        log.back() << "ClearLimitedRecList";
        env->ClearLimitedRecList();
        model.ClearLimitedRecList();
        return true;
    }
    IDList recs;
    const DWORD oneOf = 1 + random.GetBelow(8);
    for (DWORD rec = 0; rec < model.GetRecCount(); ++rec) {
        if (random.IsOneOf(oneOf))
            recs.push_back(rec);
    }
    if (random.IsOneOf(6))
        recs.push_back(model.GetRecCount() + random.GetBelow(3));
    log.back() << "SetLimitedRecList";
    Log(recs);
    env->SetLimitedRecList(recs.data(), static_cast<DWORD>(recs.size()));
    model.SetLimitedRecList(recs);
    return true;
}

bool CRandomRun::OperateSeldom()
{
    const bool flag = random.IsOneOf(2);
    const DWORD classID = ChooseClassID();
    switch (random.GetBelow(12)) {
    case 0:
    case 1:
        log.back() << "ClearAllBtnSelections " << flag;
        env->ClearAllBtnSelections(flag);
        model.ClearAllBtnSelections(flag);
        return true;
    case 2:
    case 3:
        return RestoreSelection();
    case 4:
    case 5:
        return SetAlias(classID);
    case 6:
        log.back() << "SetNewBtnMadeSelStateOfBtnClass " << classID << ' ' << flag;
        return Says(env->SetNewBtnMadeSelStateOfBtnClass(classID, flag),
                    model.SetNewBtnMadeSelStateOfBtnClass(classID, flag));
    case 7:
        log.back() << "SelectTheBtnClass " << classID << ' ' << flag;
        return Says(env->SelectTheBtnClass(classID, flag), model.SelectTheBtnClass(classID, flag));
    case 8:
        if (flag) {
            log.back() << "ClearAllBtnClassSelections";
            env->ClearAllBtnClassSelections();
            model.ClearAllBtnClassSelections();
        } else {
            ClearOfFixedSpec();
        }
        return true;
    case 9:
        if (flag) {
            log.back() << "SetNumCnd";
            env->SetNumCnd(CHostCnd(livingCndCount));
            model.SetNumCnd();
        } else {
            log.back() << "ClearNumCnd";
            env->ClearNumCnd();
            model.ClearNumCnd();
        }
        return livingCndCount == (model.HasNumCnd() ? 1 : 0);
    case 10:
        if (leaning.sumMngrMissing != 0) {
            log.back() << "SetCoreSumMngrPtr " << flag;
            env->SetCoreSumMngrPtr(flag ? &sumMngr : nullptr);
            model.SetSumMngr(flag);
        }
        return true;
    default:
        log.back() << "SetMultiSelectionInfo " << flag;
        env->SetMultiSelectionInfo(flag);
        model.SetMultiSelectionInfo(flag);
        return true;
    }
}

void CRandomRun::ClearOfFixedSpec()
{
    formerTables.clear(); // the history goes too
    log.back() << "ClearOfFixedSpec";
    env->ClearOfFixedSpec();
    model.ClearOfFixedSpec();
}

// What was remembered of this environment, or a new invention.
bool CRandomRun::RestoreSelection()
{
    std::vector<SSelectBtnIDList> selection;
    if (random.IsOneOf(2)) {
        selection = remembered;
        env->GetAllBtnSelectionInfo(remembered);
    } else {
        for (DWORD left = random.GetBelow(4); left > 0; --left) {
            const DWORD classID = ChooseClassID();
            selection.push_back({classID, ChooseBtnIDs(classID, true), random.IsOneOf(2)});
        }
    }
    const bool includeHidden = random.IsOneOf(2);
    log.back() << "SelectBtns of a whole selection";
    for (const SSelectBtnIDList& share : selection) {
        log.back() << " class " << share.btnClassID << " new " << share.newBtnMadeSelState;
        Log(share.btnIDList);
    }
    log.back() << ' ' << includeHidden;
    return Says(env->SelectBtns(selection, includeHidden), model.SelectBtns(selection, includeHidden));
}

bool CRandomRun::SetAlias(DWORD classID)
{
    const DWORD btnID = ChooseBtnID(classID, true);
    // A text of another button, of the button itself (the very bytes that it holds), a new one, none.
    const char* alias = nullptr;
    const DWORD otherID = ChooseBtnID(classID, true);
    switch (random.GetBelow(5)) {
    case 0:
        env->GetAliasOfBtn(classID, otherID, alias);
        break;
    case 1:
        env->GetAliasOfBtn(classID, btnID, alias);
        break;
    case 2:
        env->GetNameOfBtn(classID, btnID, alias);
        break;
    case 3:
        alias = "\x83\x5c alias";
        break;
    default:
        break;
    }
    const std::string copy = alias == nullptr ? "" : alias;
    log.back() << "SetAliasOfBtn " << classID << ' ' << btnID << " \"" << copy << '"'
               << (alias == nullptr ? " (null)" : "");
    const char* const aliasForModel = alias == nullptr ? nullptr : copy.c_str();
    return Says(env->SetAliasOfBtn(classID, btnID, alias),
                model.SetAliasOfBtn(classID, btnID, aliasForModel));
}

// ---- Special buttons

bool CRandomRun::OperateOnSpBtns()
{
    const DWORD classID = ChooseClassID();
    const auto found = model.GetItems().find(classID);
    const bool hasMany =
        found != model.GetItems().end() &&
        found->second.ListSpecial(true).size() - found->second.groups.size() >= leaning.maxSpBtnCount;
    DWORD choice = random.GetBelow(leaning.creations + leaning.memberChanges + leaning.switches +
                                   leaning.destructions + leaning.conditionChanges + leaning.displayChanges);
    if (choice < leaning.creations)
        return hasMany ? DestroySpBtn(classID) : CreateSpBtn(classID);
    choice -= leaning.creations;
    if (choice < leaning.memberChanges)
        return ChangeMembers(classID);
    choice -= leaning.memberChanges;
    if (choice < leaning.switches)
        return SwitchSpBtn(classID);
    choice -= leaning.switches;
    if (choice < leaning.destructions)
        return DestroySpBtn(classID);
    choice -= leaning.destructions;
    if (choice < leaning.conditionChanges)
        return ChangeCnd(classID);
    return ChangeDisplay(classID);
}

DWORD CRandomRun::ChooseSpBtnID(DWORD classID, EWanted wanted)
{
    const auto found = model.GetItems().find(classID);
    if (found == model.GetItems().end() || HappensOneIn(leaning.unknownID))
        return std::vector<DWORD>{
            0, 1, 2, 3500000000, 4000000009, 4080000002, 4160000009}[random.GetBelow(7)];
    IDList spBtnIDs = found->second.ListSpecial(true);
    if (!random.IsOneOf(4) && spBtnIDs.size() > found->second.groups.size())
        std::erase_if(spBtnIDs, [&](DWORD spBtnID) { return found->second.IsManagedBySystem(spBtnID); });
    if (wanted != WANTED_ANY && !random.IsOneOf(8)) {
        IDList better = spBtnIDs;
        std::erase_if(better, [&](DWORD spBtnID) {
            return found->second.btns.at(spBtnID).byCondition != (wanted == WANTED_BY_CONDITION);
        });
        if (!better.empty())
            spBtnIDs = better;
    }
    return spBtnIDs.empty() ? SCBUICoreCom::BTN_ID_INC_BEGIN : ChooseFrom(spBtnIDs);
}

IDList CRandomRun::ChooseMembers(DWORD classID)
{
    const auto found = model.GetItems().find(classID);
    if (found == model.GetItems().end())
        return {2};
    const SModelItem& item = found->second;
    if (leaning.table.minValueCount != 0 && item.btns.size() >= leaning.table.minValueCount &&
        random.IsOneOf(2))
        return ChooseManyMembers(item);
    const IDList all = item.ListAll();
    const IDList spBtnIDs = item.ListSpecial(true);
    IDList members;
    for (DWORD left = random.IsOneOf(15) ? 0 : 1 + random.GetBelow(random.IsOneOf(4) ? 12 : 5); left > 0;
         --left) {
        if (!spBtnIDs.empty() && HappensOneIn(leaning.nesting))
            members.push_back(ChooseFrom(spBtnIDs));
        else if (HappensOneIn(leaning.unknownID))
            members.push_back(
                std::vector<DWORD>{0, 888888, 3000000001, 3500000000, 4000000009}[random.GetBelow(5)]);
        else if (!members.empty() && random.IsOneOf(12))
            members.push_back(ChooseFrom(members));
        else if (!all.empty())
            members.push_back(ChooseFrom(all));
    }
    return members;
}

// So many that a button is about to have a row of records of its own, or has one.
IDList CRandomRun::ChooseManyMembers(const SModelItem& item)
{
    IDList ids = item.ListAll();
    std::erase_if(ids, [](DWORD id) { return SCBUICoreCom::IsSpBtn(id); });
    std::rotate(ids.begin(), ids.begin() + random.GetBelow(static_cast<DWORD>(ids.size())), ids.end());
    ids.resize(std::min<std::size_t>(ids.size(), 395 + random.GetBelow(56)));
    for (const DWORD spBtnID : item.ListSpecial(true)) {
        if (HappensOneIn(leaning.nesting))
            ids.push_back(spBtnID);
    }
    return ids;
}

IDList CRandomRun::ChangeAFew(const SModelItem& item, const IDList& members)
{
    IDList changed = members;
    for (DWORD left = random.GetBelow(4); left > 0 && !changed.empty(); --left)
        changed.erase(changed.begin() + random.GetBelow(static_cast<DWORD>(changed.size())));
    for (DWORD left = random.GetBelow(4); left > 0; --left) {
        const IDList spBtnIDs = item.ListSpecial(true);
        if (item.btns.empty())
            break;
        changed.push_back(!spBtnIDs.empty() && HappensOneIn(leaning.nesting) ? ChooseFrom(spBtnIDs)
                                                                             : ChooseFrom(item.ListAll()));
    }
    return changed;
}

SModelCnd CRandomRun::ChooseCnd()
{
    IDList numIDs;
    for (const SModelFld& fld : table.GetTexts().flds) {
        if (fld.type == NSKZCore::SCDeclareConstant::DATATYPE_NUM)
            numIDs.push_back(fld.fldID);
    }
    return SModelCnd::MakeRandom(random, numIDs, random.GetBelow(4));
}

bool CRandomRun::CreateSpBtn(DWORD classID)
{
    CModelEnv::SMaking making;
    making.type = random.IsOneOf(2) ? SCBUICoreCom::BTNTYPE_INC : SCBUICoreCom::BTNTYPE_CLL;
    if (HappensOneIn(leaning.condition)) {
        making.method = VCSpBtn::MMBBTNSELMTH_CONDITION;
        if (!HappensOneIn(leaning.unknownID))
            making.type = SCBUICoreCom::BTNTYPE_CLL;
    }
    if (HappensOneIn(leaning.unknownID))
        making.type = static_cast<SCBUICoreCom::EBtnType>(random.GetBelow(7));
    if (HappensOneIn(leaning.unknownID))
        making.method = static_cast<VCSpBtn::EMmbBtnSelMth>(random.GetBelow(4));
    const auto found = model.GetItems().find(classID);
    const bool isVirtual = found != model.GetItems().end() && found->second.isVirtual;
    if (isVirtual ? !random.IsOneOf(4) : HappensOneIn(leaning.unknownID)) {
        making.refClassID = ChooseRefClassID(classID);
        if (!HappensOneIn(leaning.unknownID))
            making.type = SCBUICoreCom::BTNTYPE_VIRINC;
    }

    const IDList members = ChooseMembers(making.refClassID == 0 ? classID : making.refClassID);
    const SModelCnd cnd = ChooseCnd();
    if (!random.IsOneOf(15))
        making.members = &members;
    if (!random.IsOneOf(15))
        making.cnd = &cnd;
    // A text of another button, a new one, none.
    const char* shown = nullptr;
    if (random.IsOneOf(3))
        env->GetAliasOfBtn(classID, ChooseBtnID(classID, true), shown);
    const std::string name = shown == nullptr ? "special " + std::to_string(random.GetBelow(5)) : shown;
    if (!random.IsOneOf(15))
        making.name = name.c_str();

    log.back() << "CreateSpBtn " << classID << " type " << making.type << " method " << making.method;
    log.back() << (making.name == nullptr ? " (null)" : " \"" + name + '"');
    if (making.refClassID != 0)
        log.back() << " of class " << making.refClassID;
    if (making.members != nullptr)
        Log(members);
    if (making.cnd != nullptr)
        log.back() << ' ' << cnd.Describe();
    constexpr DWORD UNTOUCHED = 12345;
    DWORD idOfEnv = UNTOUCHED;
    DWORD idOfModel = UNTOUCHED;
    const NSKZCore::CBasicBtnCnd madeCnd = cnd.Make();
    making.from = VCSpBtn::GetPresentTime();
    const NSKZCore::IBtnCnd* const cndOfEnv = making.cnd != nullptr ? &madeCnd : nullptr;
    const DWORD result = making.refClassID == 0
                             ? env->CreateSpBtn(idOfEnv, classID, making.type, making.name, making.method,
                                                making.members, cndOfEnv)
                             : env->CreateSpBtn(idOfEnv, classID, making.type, making.name, making.method,
                                                making.members, cndOfEnv, making.refClassID);
    making.until = VCSpBtn::GetPresentTime();
    const bool agrees = Gives(result, model.CreateSpBtn(idOfModel, classID, making));
    log.back() << " button";
    return Gives(idOfEnv, idOfModel) && agrees;
}

bool CRandomRun::DestroySpBtn(DWORD classID)
{
    const DWORD btnID = ChooseSpBtnID(classID);
    log.back() << "DestroySpBtn " << classID << ' ' << btnID;
    return Says(env->DestroySpBtn(classID, btnID), model.DestroySpBtn(classID, btnID));
}

bool CRandomRun::SwitchSpBtn(DWORD classID)
{
    const DWORD btnID = ChooseSpBtnID(classID);
    bool effective = random.IsOneOf(2);
    const auto found = model.GetItems().find(classID);
    if (found != model.GetItems().end() && found->second.btns.count(btnID) != 0 && !random.IsOneOf(6))
        effective = !found->second.btns.at(btnID).effective;
    log.back() << "SetEffectiveInfoOfSpBtn " << classID << ' ' << btnID << ' ' << effective;
    return Says(env->SetEffectiveInfoOfSpBtn(classID, btnID, effective),
                model.SetEffectiveInfoOfSpBtn(classID, btnID, effective));
}

bool CRandomRun::ChangeMembers(DWORD classID)
{
    const DWORD btnID = ChooseSpBtnID(classID, WANTED_BY_LIST);
    const DWORD classIDOfMembers = GetClassIDOfMembers(classID, btnID);
    IDList members = ChooseMembers(classIDOfMembers);
    const auto found = model.GetItems().find(classID);
    const auto ofMembers = model.GetItems().find(classIDOfMembers);
    if (found != model.GetItems().end() && ofMembers != model.GetItems().end() &&
        found->second.btns.count(btnID) != 0 && random.IsOneOf(2))
        members = ChangeAFew(ofMembers->second, found->second.btns.at(btnID).members);
    log.back() << "SetMemberBtnIDListOfSpBtn " << classID << ' ' << btnID;
    Log(members);
    return Gives(env->SetMemberBtnIDListOfSpBtn(classID, btnID, members),
                 model.SetMemberBtnIDListOfSpBtn(classID, btnID, members));
}

bool CRandomRun::ChangeCnd(DWORD classID)
{
    if (random.IsOneOf(6)) {
        const DWORD numID = random.GetBelow(10);
        log.back() << "ResetMemberBtnBasedOnTheCndOfAll " << numID;
        return Says(env->ResetMemberBtnBasedOnTheCndOfAll(numID),
                    model.ResetMemberBtnBasedOnTheCndOfAll(numID));
    }
    const DWORD btnID = ChooseSpBtnID(classID, WANTED_BY_CONDITION);
    if (random.IsOneOf(5)) {
        log.back() << "ClearMemberBtnCndOfSpBtn " << classID << ' ' << btnID;
        return Says(env->ClearMemberBtnCndOfSpBtn(classID, btnID),
                    model.ClearMemberBtnCndOfSpBtn(classID, btnID));
    }
    const SModelCnd cnd = ChooseCnd();
    log.back() << "SetMemberBtnCndOfSpBtn " << classID << ' ' << btnID << ' ' << cnd.Describe();
    return Gives(env->SetMemberBtnCndOfSpBtn(classID, btnID, cnd.Make()),
                 model.SetMemberBtnCndOfSpBtn(classID, btnID, cnd));
}

bool CRandomRun::ChangeDisplay(DWORD classID)
{
    const bool disp = random.IsOneOf(2);
    if (random.IsOneOf(3)) {
        log.back() << "SetDispEmpValBtnInfoOfBtnClass " << classID << ' ' << disp;
        return Says(env->SetDispEmpValBtnInfoOfBtnClass(classID, disp),
                    model.SetDispEmpValBtnInfoOfBtnClass(classID, disp));
    }
    const DWORD btnID = ChooseSpBtnID(classID);
    log.back() << "SetDispMemberBtnInfoOfIncBtn " << classID << ' ' << btnID << ' ' << disp;
    return Says(env->SetDispMemberBtnInfoOfIncBtn(classID, btnID, disp),
                model.SetDispMemberBtnInfoOfIncBtn(classID, btnID, disp));
}

// ---- Dates and times

namespace {

// Patterns of dates and of times, and what is no pattern.
constexpr const char* PATTERNS[] = {
    "{yyyy}",    "{yy}-{mm}",       "{ggg}{E}",         "{g}{e}/{m}", "{m}/{d}", "{yyyy} {d}",
    "{d}",       "{ggg}{e} {yyyy}", "{gg}{ee}{mm}{dd}", "nothing",    "{m",      "{h}",
    "{hh}:{nn}", "{ap}{h12}",       "{AM/PM}",          "{n}:{s}",    "{s}",     "{ap}{h12}:{nn}"};

template <class TForm>
void LogForm(std::ostream& log, const TForm& form)
{
    log << form.kind << " form " << form.form << " \"" << std::string(form.optionalForm, 10).c_str() << '"';
}

} // namespace

bool CRandomRun::OperateOnDates()
{
    switch (random.GetBelow(6)) {
    case 0:
        return ChangeCriteria();
    case 1:
        return random.IsOneOf(2) ? ChangeDataForm() : ChangeCriteria();
    default: {
        const DWORD classID = ChooseClassIDOf([](const SModelItem& item) { return item.IsOfDates(); });
        const auto found = model.GetItems().find(classID);
        const bool isTime = found != model.GetItems().end() &&
                            found->second.type == NSKZCore::SCDeclareConstant::DATATYPE_TIME;
        return isTime == !HappensOneIn(leaning.unknownID) ? SetTimeForm(classID) : SetDateForm(classID);
    }
    }
}

bool CRandomRun::SetDateForm(DWORD classID)
{
    constexpr DWORD UNSETTING = NSKZCore::SCDeclareConstant::UNSETTING;
    const auto named = NSKZCore::SCDispForm::GetDateForms();
    const auto& chosen = named[random.GetBelow(static_cast<DWORD>(named.size()))];
    NSKZCore::SCDeclareConstant::SDateDispForm form;
    form.kind = chosen.kind;
    form.form = chosen.form;
    form.option = chosen.option;
    form.SetOptionalForm(chosen.optionalForm);
    if (random.IsOneOf(8)) {
        form.kind = 5;
        form.SetOptionalForm(PATTERNS[random.GetBelow(std::size(PATTERNS))]);
    }
    if (random.IsOneOf(8))
        form.kind = random.GetBelow(8);
    if (random.IsOneOf(12))
        form.form = random.GetBelow(410);
    if (random.IsOneOf(12))
        form.option = random.GetBelow(4);
    if (random.IsOneOf(40))
        form.kind = UNSETTING - random.GetBelow(3);
    if (random.IsOneOf(40))
        form.form = UNSETTING - random.GetBelow(3);
    if (random.IsOneOf(40))
        form.option = UNSETTING - random.GetBelow(3);
    if (random.IsOneOf(40))
        std::fill(std::begin(form.optionalForm), std::end(form.optionalForm), 'x');
    log.back() << "SetDispFormOfDateBtnClass " << classID << " kind ";
    LogForm(log.back(), form);
    log.back() << " option " << form.option;
    CModelEnv::SMoment moment = Begin();
    const bool result = env->SetDispFormOfDateBtnClass(classID, form);
    End(moment);
    return Says(result, model.SetDispForm(classID, form, moment));
}

bool CRandomRun::SetTimeForm(DWORD classID)
{
    constexpr DWORD UNSETTING = NSKZCore::SCDeclareConstant::UNSETTING;
    const auto named = NSKZCore::SCDispForm::GetTimeForms();
    const auto& chosen = named[random.GetBelow(static_cast<DWORD>(named.size()))];
    NSKZCore::SCDeclareConstant::STimeDispForm form;
    form.kind = chosen.kind;
    form.form = chosen.form;
    form.SetOptionalForm(chosen.optionalForm);
    if (random.IsOneOf(5)) {
        form.kind = 3;
        form.SetOptionalForm(PATTERNS[random.GetBelow(std::size(PATTERNS))]);
    }
    if (random.IsOneOf(8))
        form.kind = random.GetBelow(6);
    if (random.IsOneOf(6))
        form.form = random.GetBelow(17);
    if (random.IsOneOf(40))
        form.kind = UNSETTING - random.GetBelow(3);
    if (random.IsOneOf(40))
        form.form = UNSETTING - random.GetBelow(3);
    if (random.IsOneOf(40))
        std::fill(std::begin(form.optionalForm), std::end(form.optionalForm), 'x');
    log.back() << "SetDispFormOfTimeBtnClass " << classID << " kind ";
    LogForm(log.back(), form);
    CModelEnv::SMoment moment = Begin();
    const bool result = env->SetDispFormOfTimeBtnClass(classID, form);
    End(moment);
    return Says(result, model.SetDispForm(classID, form, moment));
}

bool CRandomRun::ChangeCriteria()
{
    KeepTable(env->GetUndoOpeCountOfTheSrcData());
    const SModelCriteria& criteria = table.ChangeCriteria(random);
    log.back() << "AdjstAccordingToChangeDateCriterionInfo: start month " << criteria.startMonth
               << ", cut-off day " << criteria.cutOffDate << ", weeks from " << criteria.firstDayOfWeek;
    CModelEnv::SMoment moment = Begin();
    const bool result = env->AdjstAccordingToChangeDateCriterionInfo();
    End(moment);
    model.ChangeCriteria(criteria, moment);
    return Says(result, true);
}

// Of some fields, of items of dates and others.
bool CRandomRun::ChangeDataForm()
{
    KeepTable(env->GetUndoOpeCountOfTheSrcData());
    hasChangedForms = true;
    log.back() << "AdjstAccordingToChangeFldDataForm";
    std::vector<SModelFld> changed;
    IDList fldIDs;
    for (std::size_t position = 0; position < table.GetTexts().flds.size(); ++position) {
        if (random.IsOneOf(2))
            continue;
        const SModelFld& fld = table.ChangeDataForm(random, position);
        changed.push_back(fld);
        fldIDs.push_back(fld.fldID);
        log.back() << " field " << fld.fldID << " form " << fld.dateTypeInfo.form << " or "
                   << fld.timeTypeInfo.form;
    }
    if (HappensOneIn(leaning.unknownID))
        fldIDs.push_back(777);
    CModelEnv::SMoment moment = Begin();
    const bool result =
        env->AdjstAccordingToChangeFldDataForm(fldIDs.data(), static_cast<unsigned int>(fldIDs.size()));
    End(moment);
    model.ChangeDataForm(changed, moment);
    return Says(result, true);
}

// ---- Virtual items

bool CRandomRun::OperateOnVirtualItems()
{
    const auto isVirtual = [](const auto& entry) { return entry.second.isVirtual; };
    const auto count =
        static_cast<DWORD>(std::count_if(model.GetItems().begin(), model.GetItems().end(), isVirtual));
    if (count == 0 || (count < leaning.maxVirtualCount && random.IsOneOf(3)))
        return CreateVirtualItem();
    const DWORD classID = ChooseVirtualClassID();
    if (HappensOneIn(leaning.classDestruction)) {
        log.back() << "DestroyVirBtnClass " << classID;
        return Says(env->DestroyVirBtnClass(classID), model.DestroyVirBtnClass(classID));
    }
    if (random.IsOneOf(6)) {
        const std::string name = ChooseName(classID);
        const char* const given = random.IsOneOf(8) ? nullptr : name.c_str();
        log.back() << "SetNameOfVirBtnClass " << classID << " \"" << name << '"'
                   << (given == nullptr ? " (null)" : "");
        return Says(env->SetNameOfVirBtnClass(classID, given), model.SetNameOfVirBtnClass(classID, given));
    }
    const auto found = model.GetItems().find(classID);
    if (random.IsOneOf(3) && found != model.GetItems().end()) {
        const bool effective = random.IsOneOf(6) ? found->second.effective : !found->second.effective;
        log.back() << "SetEffectiveInfoOfVirBtnClass " << classID << ' ' << effective;
        return Says(env->SetEffectiveInfoOfVirBtnClass(classID, effective),
                    model.SetEffectiveInfoOfVirBtnClass(classID, effective));
    }
    const bool hasMany =
        found != model.GetItems().end() && found->second.btns.size() >= leaning.maxSpBtnCount;
    return hasMany ? ChangeMembers(classID) : CreateSpBtn(classID);
}

bool CRandomRun::CreateVirtualItem()
{
    const bool common = random.IsOneOf(2);
    const std::string name = ChooseName(0);
    const char* const given = random.IsOneOf(8) ? nullptr : name.c_str();
    log.back() << "CreateVirBtnClass \"" << name << '"' << (given == nullptr ? " (null) " : " ") << common;
    constexpr DWORD UNTOUCHED = 12345;
    DWORD idOfEnv = UNTOUCHED;
    DWORD idOfModel = UNTOUCHED;
    const DWORD result = env->CreateVirBtnClass(given, common, idOfEnv);
    const bool agrees = Gives(result, model.CreateVirBtnClass(given, common, idOfModel));
    log.back() << " class";
    return Gives(idOfEnv, idOfModel) && agrees;
}

// That of another item or its own, none, a new one.
std::string CRandomRun::ChooseName(DWORD classID)
{
    const auto found = model.GetItems().find(random.IsOneOf(2) ? classID : ChooseClassID());
    if (found != model.GetItems().end() && random.IsOneOf(4))
        return found->second.isVirtual || found->second.isOut ? found->second.name
                                                              : model.FindFld(found->second.fldID)->name;
    return "virtual " + std::to_string(random.GetBelow(9));
}

} // namespace NSKZ::Test
