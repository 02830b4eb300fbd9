#include "CRandomRun.h"

#include "CModelComparison.h"

#include "CRpLink_OnMemVer.h"
#include "ECAbnormalData.h"
#include "Support/EnvUse.h"
#include "Support/LinkTableContent.h"
#include "Support/LinkTableFiles.h"
#include "Support/XMLDamage.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <stdexcept>

// Saving an environment and going on with what is read of it.

namespace NSKZ::Test {

using NSKZCore::CBUIDataMngr;
using NSKZCore::CXMLReader;
using NSKZCore::SCBUICoreCom;
using NSKZCore::SSelectBtnIDList;

namespace {

constexpr const char* COMMON_XML = "common.xml";
constexpr const char* FIXED_XML = "fixed.xml";

// Gives all changes a time long ago, so that one which a restore makes shows.
void AgeChanges(const CSavedEnv& save, const char* file)
{
    std::string text = save.GetText(file);
    const std::string attribute = "updateTime=\"";
    for (std::size_t at = text.find(attribute); at != std::string::npos; at = text.find(attribute, at)) {
        at += attribute.size() + std::strlen("20");
        text[at] = '0'; // the year
    }
    save.SetText(file, text);
}

// The elements of the items of a form, by identifier, and all around them by 0.
std::map<DWORD, std::string> SplitByItem(std::string text)
{
    std::map<DWORD, std::string> parts;
    const std::string start = "<BtnClass id=\"";
    const std::string end = "</BtnClass>";
    for (std::size_t at = text.find(start); at != std::string::npos; at = text.find(start)) {
        const std::size_t behind = text.find(end, at) + end.size();
        const std::string part = text.substr(at, behind - at);
        parts[static_cast<DWORD>(std::stoul(part.substr(start.size())))] = part;
        text.erase(at, behind - at);
    }
    parts[0] = text;
    return parts;
}

// From how many members on a special button has a row of its own in the table of records by button.
constexpr std::size_t MEMBERS_OF_ROW = 400;

// Every file of a link table by its name.
std::map<std::string, std::string> ReadTableFiles(const CSavedEnv& save, const std::string& table)
{
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(save.GetPath("BUI/ID_1/" + table)))
        files[entry.path().filename().string()] = ReadFileBytes(entry.path());
    return files;
}

// The records of source buttons, by item.
std::map<DWORD, Lists> ReadSrcRecLists(const CSavedEnv& save)
{
    NSKZCore::CRpLink_OnMemVer table;
    std::map<DWORD, Lists> all;
    if (!ReadFromDir(table, save.GetFolder() + "BUI\\ID_1\\RpLink\\"))
        return all;
    std::vector<DWORD> classIDs;
    table.GetBtnClassIDList(classIDs);
    for (const DWORD classID : classIDs) {
        if (!SCBUICoreCom::IsSrcBtnClass(classID))
            continue;
        all[classID] = GetLists(table, classID);
        std::erase_if(all[classID], [](const auto& entry) { return SCBUICoreCom::IsSpBtn(entry.first); });
    }
    return all;
}

// Whether the table of records by button holds nothing but source buttons of source items.
bool HasSourceRowsOnly(const CModelEnv& model)
{
    return std::none_of(model.GetItems().begin(), model.GetItems().end(), [](const auto& entry) {
        return entry.second.isVirtual ||
               std::any_of(entry.second.btns.begin(), entry.second.btns.end(), [](const auto& idAndBtn) {
                   return idAndBtn.second.members.size() >= MEMBERS_OF_ROW;
               });
    });
}

} // namespace

bool CRandomRun::Restore()
{
    if (!model.HasItemOfCommonForm())
        return RestoreEnv();
    if (earlierSave == nullptr || random.IsOneOf(2)) {
        earlierSave = std::make_unique<SEarlierSave>(model);
        log.back() << "saved";
        if (!Says(earlierSave->files.Save(*env), true))
            return false;
    }
    return random.IsOneOf(3) ? RestoreFixedForm() : RestoreEnv();
}

// The present environment as another one reads it, with which the run goes on.
bool CRandomRun::RestoreEnv()
{
    formerTables.clear();
    CSavedEnv first;
    const CModelEnv saved = model;
    log.back() << " saved and restored";
    if (!Says(first.Save(*env), true))
        return false;
    AgeChanges(first, COMMON_XML);
    AgeChanges(first, FIXED_XML);
    std::vector<SSelectBtnIDList> selection;
    env->GetAllBtnSelectionInfo(selection);
    const IDList limited = model.GetLimitedRecListOfHost();

    const NSKZCore::CCoreSumMngr* const sums = model.HasSumMngr() ? &sumMngr : nullptr;
    auto restored = std::make_unique<CBUIDataMngr>(
        2, SCBUICoreCom::LINKTBLVERTYPE_ONMEM, SCBUICoreCom::LINKTBLVERTYPE_ONMEM, table.GetSource(), sums);
    const bool hasItems = saved.HasItemOfCommonForm();
    if (!Gives(first.LoadCommon(*restored, model.GetRecCount()),
               hasItems ? CXMLReader::READXML_OK : CXMLReader::READXML_BADFORMAT))
        return false;
    if (!hasItems) // an environment of no item cannot be restored
        return true;
    CModelEnv::SMoment moment = Begin();
    const auto result = first.LoadFixed(*restored, limited);
    End(moment);
    if (!Gives(result, CXMLReader::READXML_OK))
        return false;
    env = std::move(restored);
    model.ReadCommonForm(saved);
    model.ReadFixedForm(saved, limited, moment);
    if (!ComparesWithSecondSave(first, saved) || !SetCndsAgain(saved))
        return false;
    log.back() << ", selection";
    return Says(env->SelectBtns(selection, false), model.SelectBtns(selection, false));
}

// What users had fixed at an earlier save, or have fixed now, in place of what they have fixed now.
bool CRandomRun::RestoreFixedForm()
{
    formerTables.clear();
    const IDList limited = random.IsOneOf(2) ? model.GetLimitedRecListOfHost() : IDList{};
    if (random.IsOneOf(2)) {
        earlierSave->model = model;
        log.back() << " saved";
        if (!Says(earlierSave->files.Save(*env), true))
            return false;
    }
    log.back() << " fixed form restored, limited to";
    Log(limited);
    // Special buttons of the save may close a loop with those that share items have got since. Where it is
    // broken is not the model's concern.
    try {
        CModelEnv(model).ReadFixedForm(earlierSave->model, limited, Begin());
    } catch (const std::logic_error&) {
        log.back() << " would close a loop";
        return true;
    }
    CModelEnv::SMoment moment = Begin();
    const auto result = earlierSave->files.LoadFixed(*env, limited);
    End(moment);
    if (!Gives(result, CXMLReader::READXML_OK))
        return false;
    model.ReadFixedForm(earlierSave->model, limited, moment);
    return true;
}

// What was restored answers like the model and is saved as it was before, as far as the model says that
// nothing has changed.
bool CRandomRun::ComparesWithSecondSave(const CSavedEnv& first, const CModelEnv& saved)
{
    const std::string differences = CModelComparison(*env, model, random).Compare();
    CSavedEnv second;
    if (!differences.empty() || !second.Save(*env)) {
        log.back() << ", restored otherwise:\n" << differences;
        return false;
    }
    const bool isUnmoved =
        saved.DescribeFixedFormOfAll() == model.DescribeFixedFormOfAll(); // but for single items
    bool isAlike = true;
    for (const char* const file : {COMMON_XML, FIXED_XML}) {
        const bool isCommonForm = file == COMMON_XML;
        std::map<DWORD, std::string> before = SplitByItem(first.GetText(file));
        const std::map<DWORD, std::string> after = SplitByItem(second.GetText(file));
        isAlike = IsSavedAlike(file, before[0], after.at(0), isCommonForm || isUnmoved) && isAlike;
        for (const auto& [classID, item] : saved.GetItems()) {
            const auto found = after.find(classID);
            const auto describe = [&, id = classID](const CModelEnv& described) {
                return isCommonForm ? described.DescribeCommonFormOf(id) : described.DescribeFixedFormOf(id);
            };
            const bool exists = model.GetItems().count(classID) != 0;
            isAlike = IsSavedAlike((file + (" item " + std::to_string(classID))).c_str(), before[classID],
                                   found == after.end() ? "" : found->second,
                                   exists ? describe(saved) == describe(model) : !item.effective) &&
                      isAlike;
        }
    }
    // The columns of classes that are out of their fields are saved, but nobody takes them over.
    const bool hasItemsThatAreOut = std::any_of(saved.GetItems().begin(), saved.GetItems().end(),
                                                [](const auto& entry) { return entry.second.isOut; });
    if (hasItemsThatAreOut)
        return isAlike;
    if (!HasSourceRowsOnly(saved)) {
        if (ReadSrcRecLists(first) != ReadSrcRecLists(second)) {
            log.back() << ", RpLink otherwise";
            isAlike = false;
        }
    } else if (ReadTableFiles(first, "RpLink") != ReadTableFiles(second, "RpLink")) {
        log.back() << ", files of RpLink otherwise";
        isAlike = false;
    }
    if (ReadTableFiles(first, "BnLink") != ReadTableFiles(second, "BnLink")) {
        log.back() << ", files of BnLink otherwise";
        isAlike = false;
    }
    return isAlike;
}

bool CRandomRun::IsSavedAlike(const char* what, const std::string& first, const std::string& second,
                              bool isSame)
{
    ++restores.forms;
    if (first == second)
        ++restores.sameForms;
    if (!isSame || first == second)
        return true;
    log.back() << ",\n" << what << " at first\n" << first << "\nand then\n" << second << '\n';
    return false;
}

// Conditions are not saved: hosts set them again.
bool CRandomRun::SetCndsAgain(const CModelEnv& saved)
{
    for (const auto& [classID, item] : saved.GetItems()) {
        for (const auto& [btnID, btn] : item.btns) {
            const auto found = model.GetItems().find(classID);
            if (!btn.cnd || found == model.GetItems().end() || found->second.btns.count(btnID) == 0)
                continue;
            log.back() << ", condition of " << classID << ' ' << btnID << ' ' << btn.cnd->Describe();
            if (!Gives(env->SetMemberBtnCndOfSpBtn(classID, btnID, btn.cnd->Make()),
                       model.SetMemberBtnCndOfSpBtn(classID, btnID, *btn.cnd)))
                return false;
        }
    }
    return true;
}

// ---- Damaged saves

// Whatever comes of it, an environment that has read it can be used; and what is written of it is read, and
// written again the same.
bool CRandomRun::ReadDamagedSave()
{
    CSavedEnv save;
    log.back() << "damaged save";
    if (!Says(save.Save(*env), true))
        return false;
    DamageSave(save);
    CBUIDataMngr read(3, SCBUICoreCom::LINKTBLVERTYPE_ONMEM, SCBUICoreCom::LINKTBLVERTYPE_ONMEM,
                      table.GetSource(), &sumMngr);
    try {
        return UseDamagedSave(save, read);
    } catch (const NSKZCore::ECAbnormalData& thrown) {
        log.back() << ", thrown in " << thrown.GetFunction() << ", line " << thrown.GetLine() << '\n'
                   << save.GetText(COMMON_XML) << save.GetText(FIXED_XML);
        return false;
    }
}

void CRandomRun::DamageSave(const CSavedEnv& save)
{
    const auto chooseBelow = [this](std::size_t bound) {
        return std::size_t{random.GetBelow(static_cast<DWORD>(bound))};
    };
    for (DWORD left = 1 + random.GetBelow(4); left > 0; --left) {
        const char* const file = random.IsOneOf(2) ? COMMON_XML : FIXED_XML;
        save.SetText(file, TXMLDamage(save.GetText(file), chooseBelow).Damage());
    }
    if (!random.IsOneOf(4))
        return;
    std::vector<std::string> files;
    for (const char* const tableName : {"BnLink", "RpLink"}) {
        for (const auto& [name, bytes] : ReadTableFiles(save, tableName))
            files.push_back(std::string("BUI/ID_1/") + tableName + '/' + name);
    }
    const std::string& file = files[chooseBelow(files.size())];
    std::string bytes = save.GetText(file);
    if (random.IsOneOf(3))
        bytes.resize(chooseBelow(bytes.size() + 1));
    else if (!bytes.empty())
        bytes[chooseBelow(bytes.size())] ^= static_cast<char>(1U << random.GetBelow(8));
    save.SetText(file, bytes);
}

bool CRandomRun::UseDamagedSave(CSavedEnv& save, CBUIDataMngr& read)
{
    CSavedEnv second;
    CSavedEnv third;
    const auto isSame = [&](const char* form) {
        if (second.GetText(form) == third.GetText(form))
            return true;
        log.back() << ", written otherwise than before:\n"
                   << save.GetText(form) << second.GetText(form) << third.GetText(form);
        return false;
    };
    const auto hasItems = [&read] { // without one there is nothing to be read again
        IDList classIDs;
        read.GetAllBtnClassIDList(classIDs, false);
        return !classIDs.empty();
    };
    const DWORD recCount = model.GetRecCount();
    if (save.LoadCommon(read, recCount) == CXMLReader::READXML_OK && hasItems()) {
        CBUIDataMngr again(4, SCBUICoreCom::LINKTBLVERTYPE_ONMEM, SCBUICoreCom::LINKTBLVERTYPE_ONMEM,
                           table.GetSource(), &sumMngr);
        if (!Says(second.SaveCommon(read), true) ||
            !Gives(second.LoadCommon(again, recCount), CXMLReader::READXML_OK) ||
            !Says(third.SaveCommon(again), true) || !isSame(COMMON_XML))
            return false;
    }
    if (save.LoadFixed(read) == CXMLReader::READXML_OK && hasItems()) {
        if (!Says(second.SaveFixed(read), true) || !Gives(second.LoadFixed(read), CXMLReader::READXML_OK) ||
            !Says(third.SaveFixed(read), true) || !isSame(FIXED_XML))
            return false;
    }
    CEnvUse use(read);
    use.Ask();
    use.Press({CBUIDataMngr::RELATIONMODE_OR, CBUIDataMngr::RELATIONMODE_AND,
               CBUIDataMngr::RELATIONMODE_DIFFERENCE});
    use.Change(true);
    use.Ask();
    return Says(second.SaveCommon(read) && second.SaveFixed(read), true);
}

} // namespace NSKZ::Test
