#ifndef CRANDOMRUN_H
#define CRANDOMRUN_H

#include "CModelEnv.h"
#include "CModelTable.h"

#include "CCoreSumMngr.h"
#include "Support/CRandom.h"
#include "Support/CSavedEnv.h"

#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace NSKZ::Test {

// What a run leans to; each number is the chance, one in so many, 0 for never, where nothing else is told.
struct SLeaning
{
    using CBUIDataMngr = NSKZCore::CBUIDataMngr;

    STableWish table;
    DWORD operationsOfATable = 150; // a count
    DWORD modeChange = 25;
    std::vector<CBUIDataMngr::ERelationMode> modes = {
        CBUIDataMngr::RELATIONMODE_NONE, CBUIDataMngr::RELATIONMODE_OR, CBUIDataMngr::RELATIONMODE_AND,
        CBUIDataMngr::RELATIONMODE_DIFFERENCE, CBUIDataMngr::RELATIONMODE_NARROWING};
    DWORD multiChange = 20;
    DWORD limitation = 25;
    DWORD unknownID = 40;
    DWORD hiddenBtn = 6; // choosing from all buttons and not from the displayed ones
    DWORD sumMngrMissing = 0;

    DWORD special = 25;      // an operation on special buttons
    DWORD spBtnPress = 6;    // pressing a special button where there is one
    DWORD maxSpBtnCount = 6; // of an item: a count; with more, buttons are rather destroyed
    DWORD nesting = 5;       // a member that is a special button
    DWORD condition = 3;     // a button that selects by condition
    // How often each operation on special buttons comes, in proportion to the others.
    DWORD creations = 6;
    DWORD memberChanges = 4;
    DWORD switches = 4;
    DWORD destructions = 2;
    DWORD conditionChanges = 3;
    DWORD displayChanges = 3;

    DWORD sourceChanges = 0;    // a change of the table, or one taken back
    DWORD dates = 40;           // a change of display form, calendar criteria or data form
    DWORD virtualItems = 40;    // an operation on virtual items
    DWORD maxVirtualCount = 3;  // a count
    DWORD classDestruction = 4; // of the operations on virtual items
    DWORD clearing = 400;       // of what users fixed
    DWORD restoring = 0;        // saving and going on with what is read
    DWORD damaging = 0;         // reading a damaged save beside

    NSKZCore::SCBUICoreCom::ELinkTableVerType linkTables = NSKZCore::SCBUICoreCom::LINKTBLVERTYPE_ONMEM;
    DWORD versionChange = 0; // another version of a link table
};

// One environment with its model, and what was done to both.
class CRandomRun
{
public:
    CRandomRun(NSKZCore::CRandom& choice, const SLeaning& leaningOfRun);

    // Operates and compares. Empty, or what differs.
    std::string Step();
    // The end of the environment: empty, or what was left behind.
    std::string End();
    // The table and all operations.
    std::string Describe() const;

    // How many forms were saved, read and saved again, and how many of them came out the same.
    struct SRestores
    {
        DWORD forms = 0;
        DWORD sameForms = 0;
    };
    const SRestores& GetRestores() const { return restores; }

private:
    bool Operate();
    void ChangeVersionOfTable();
    bool Press();
    bool Limit();
    bool OperateSeldom();
    void ClearOfFixedSpec();
    bool RestoreSelection();
    bool SetAlias(DWORD classID);

    bool OperateOnSpBtns();
    bool CreateSpBtn(DWORD classID);
    bool DestroySpBtn(DWORD classID);
    bool SwitchSpBtn(DWORD classID);
    bool ChangeMembers(DWORD classID);
    bool ChangeCnd(DWORD classID);
    bool ChangeDisplay(DWORD classID);

    bool OperateOnDates();
    bool SetDateForm(DWORD classID);
    bool SetTimeForm(DWORD classID);
    bool ChangeCriteria();
    bool ChangeDataForm();
    bool OperateOnVirtualItems();
    bool CreateVirtualItem();
    std::string ChooseName(DWORD classID);

    bool ChangeSource();
    bool InsertRecs();
    bool DeleteRecs();
    bool InsertFlds();
    bool DeleteFlds();
    bool ChangeData();
    bool ChangeTypes();
    bool Refresh();
    bool TakeBack();
    // Keeps the table as it is before a change.
    void KeepTable(std::size_t entryCountBefore);
    bool IsAsBuiltAnew();

    bool Restore();
    bool RestoreEnv();
    bool RestoreFixedForm();
    bool ComparesWithSecondSave(const CSavedEnv& first, const CModelEnv& saved);
    bool IsSavedAlike(const char* what, const std::string& first, const std::string& second, bool isSame);
    bool SetCndsAgain(const CModelEnv& saved);
    bool ReadDamagedSave();
    void DamageSave(const CSavedEnv& save);
    bool UseDamagedSave(CSavedEnv& save, NSKZCore::CBUIDataMngr& read);

    bool Says(bool envSays, bool modelSays);
    // The same for the value of an enumeration.
    bool Gives(DWORD envGives, DWORD modelGives);
    bool HappensOneIn(DWORD times) { return times != 0 && random.IsOneOf(times); }
    DWORD ChooseFrom(const IDList& ids) { return ids[random.GetBelow(static_cast<DWORD>(ids.size()))]; }
    DWORD ChooseClassID();
    // Mostly one of that kind, if there is one.
    template <class TIsWanted>
    DWORD ChooseClassIDOf(const TIsWanted& isWanted);
    DWORD ChooseVirtualClassID();
    // An item for the members of a virtual inc button.
    DWORD ChooseRefClassID(DWORD classID);
    // The item of the members of a special button.
    DWORD GetClassIDOfMembers(DWORD classID, DWORD btnID) const;
    CModelEnv::SMoment Begin() const { return {NSKZCore::VCSpBtn::GetPresentTime(), 0}; }
    void End(CModelEnv::SMoment& moment) const { moment.until = NSKZCore::VCSpBtn::GetPresentTime(); }
    DWORD ChooseBtnID(DWORD classID, bool select);
    IDList ChooseBtnIDs(DWORD classID, bool select);
    enum EWanted
    {
        WANTED_ANY,
        WANTED_BY_LIST,
        WANTED_BY_CONDITION,
    };
    // Mostly one of the wanted, if there is one.
    DWORD ChooseSpBtnID(DWORD classID, EWanted wanted = WANTED_ANY);
    IDList ChooseMembers(DWORD classID);
    IDList ChooseManyMembers(const SModelItem& item);
    // The members that a button has, but for a few.
    IDList ChangeAFew(const SModelItem& item, const IDList& members);
    SModelCnd ChooseCnd();
    void Log(const IDList& ids);

    NSKZCore::CRandom& random;
    const SLeaning& leaning;
    int livingCndCount = 0;
    CModelTable table;
    NSKZCore::CCoreSumMngr sumMngr;
    bool hasSumMngr;
    std::unique_ptr<NSKZCore::CBUIDataMngr> env;
    CModelEnv model;
    DWORD lastClassID = 0;
    std::vector<NSKZCore::SSelectBtnIDList> remembered;
    // An earlier save, and what it was of.
    struct SEarlierSave
    {
        explicit SEarlierSave(const CModelEnv& modelOfSave) : model(modelOfSave) {}
        CSavedEnv files;
        CModelEnv model;
    };
    std::unique_ptr<SEarlierSave> earlierSave;
    // The table before each change in the history, with the number of entries that there were before.
    struct SFormerTable
    {
        std::size_t entryCount;
        CModelTable table;
    };
    std::vector<SFormerTable> formerTables;
    bool hasChangedForms = false;
    SRestores restores;
    std::vector<std::ostringstream> log;
};

} // namespace NSKZ::Test

#endif
