#ifndef CMODELENV_H
#define CMODELENV_H

#include "CBUIDataMngr.h"
#include "CModelCnd.h"
#include "CModelDate.h"
#include "SCDeclareConstant.h"

#include <cstdint>
#include <map>
#include <optional>
#include <ostream>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace NSKZ::Test {

using IDList = std::vector<DWORD>;
using RecSet = std::set<DWORD>;
using SModelBtnRef = NSKZCore::SBtnClassIDAndBtnID;
using BtnRefSet = std::set<SModelBtnRef>;

// A source table as plain texts, field by field; the empty text is the empty value.
struct SModelFld
{
    DWORD fldID = 0;
    std::string name;
    bool isItem = true; // of a kind that becomes a class
    NSKZCore::SCDeclareConstant::EDataType type = NSKZCore::SCDeclareConstant::DATATYPE_TEXT;
    NSKZCore::SCDeclareConstant::SDateTypeInfo dateTypeInfo; // of dates, without a display form
    NSKZCore::SCDeclareConstant::STimeTypeInfo timeTypeInfo; // the same of times
    std::vector<std::string> texts;
};

struct SModelTable
{
    DWORD recCount = 0;
    std::vector<SModelFld> flds;
    std::string empValName;
    SModelCriteria criteria;
};

// One button: what it shows, whether it is selected, why it is hidden, what holds it, and its records or its
// members.
struct SModelBtn
{
    std::optional<std::string> name; // none: the empty-value button or a special one
    std::optional<std::string> alias;
    bool sel = false;
    unsigned int visibleInfo = 0;
    // Special buttons with this member, of the item and of virtual ones; of an ineffective button: those to
    // which it returns.
    std::set<DWORD> holders;
    BtnRefSet outerHolders;

    // Source buttons:
    RecSet recs;

    // Special buttons:
    bool effective = true;
    bool byCondition = false;
    bool dispMember = false;
    IDList members;
    std::optional<SModelCnd> cnd;
    DWORD refClassID = 0;        // of a virtual inc button: the item of its members
    bool hasLostRef = false;     // that item is gone
    std::int64_t createTime = 0; // in seconds
    bool isTimeCertain = true;   // false: made around the turn of a second

    const std::string& GetShownText() const { return alias ? *alias : *name; }
    bool HasMember(DWORD btnID) const;
};

// Buttons in the order of a text or a number each, those of the same one in the order in which they came.
template <class TKey>
using ModelOrder = std::set<std::tuple<TKey, std::uint64_t, DWORD>>;

// One item.
struct SModelItem
{
    DWORD classID = 0;
    DWORD fldID = 0;
    NSKZCore::SCDeclareConstant::EDataType type = NSKZCore::SCDeclareConstant::DATATYPE_TEXT;
    std::map<DWORD, SModelBtn> btns;
    IDList btnOfRec;
    IDList appearance; // buttons with records, in order of first appearance
    ModelOrder<std::string> names;
    ModelOrder<double> numbers;              // number items only
    ModelOrder<std::string> nonNumbers;      // likewise
    std::map<DWORD, SModelDate> dates;       // date and time items only: what texts read as
    ModelOrder<std::vector<long>> dateOrder; // equal dates by identifier
    ModelOrder<std::string> nonDates;
    std::map<DWORD, SModelDate> groups; // likewise: the cll buttons that the system manages
    NSKZCore::SCDeclareConstant::SDateDispForm dateForm;
    NSKZCore::SCDeclareConstant::STimeDispForm timeForm;
    bool isVirtual = false; // without a field
    std::string name;       // of a virtual item
    bool isOut = false;     // of its field: that was deleted or has another type now
    bool effective = true;
    BtnRefSet switchedOff; // of an ineffective item: buttons of others that went with it
    bool selected = false;
    bool selective = false;
    bool newBtnMadeSelState = false;
    bool displaysEmpVal = true;
    DWORD selBtnCount = 0;

    IDList ListSelected() const;
    IDList ListDisplayedSelected() const;
    IDList ListDisplayed() const;
    // The displayed ones, each cll button that selects by condition shown as its members.
    IDList ListDisplayedExpanded() const;
    IDList ListAll() const;
    IDList ListSpecial(bool includeIneffective) const;
    DWORD CountIneffective() const;
    bool IsCndCll(DWORD btnID) const;
    bool IsOfDates() const;
    bool IsManagedBySystem(DWORD btnID) const { return groups.count(btnID) != 0; }
    bool IsCommon() const { return NSKZCore::SCBUICoreCom::IsCommonVirBtnClass(classID); }
    bool SelectBtn(DWORD btnID, bool select);
    void DropSelection();
    void SelectAll(bool select);
};

// One level of the selection.
struct SModelLevel
{
    DWORD depth = 0;
    DWORD classID = 0;
    RecSet recs;
};

// An environment written down as the rules read, with sets and maps and nothing clever: items, buttons and
// the reasons to hide them. It says what an environment over the same table must answer after the same
// operations. Its operations are named as the environment's are and mean the same.
//
// Sums are kept as the environment keeps them: what was asked is remembered, and forgotten only where a rule
// says so. So a sum is asked of the model exactly when it is asked of the environment.
class CModelEnv
{
public:
    using ERelationMode = NSKZCore::CBUIDataMngr::ERelationMode;

    using ECreate = NSKZCore::VCBtnClass::EMthRetOfCreateSpBtn;
    using EOpeToMembers = NSKZCore::VCBtnClass::EMthRetOfOpeToMmbBtnIDList;
    using EGetCnd = NSKZCore::VCBtnClass::EMthRetOfGetMmbBtnCnd;
    using ESetCnd = NSKZCore::VCBtnClass::EMthRetOfSetMmbBtnCnd;

    CModelEnv(const SModelTable& table, bool hasSumMngr);

    // --- Operations
    bool SelectTheBtn(DWORD classID, DWORD btnID, bool select);
    bool SelectBtns(DWORD classID, const IDList& btnIDs, bool select, bool includeHidden);
    bool SelectBtns(const std::vector<NSKZCore::SSelectBtnIDList>& selectInfo, bool includeHidden);
    bool SelectAllBtnsOfBtnClass(DWORD classID, bool select);
    void ClearAllBtnSelections(bool force);
    bool SelectTheBtnClass(DWORD classID, bool select);
    void ClearAllBtnClassSelections();
    void SetRelationMode(ERelationMode newMode);
    void SetMultiSelectionInfo(bool multi) { multiSelection = multi; }
    void SetLimitedRecList(const IDList& recs);
    void ClearLimitedRecList();
    void SetNumCnd();
    void ClearNumCnd();
    bool SetAliasOfBtn(DWORD classID, DWORD btnID, const char* alias);
    bool SetNewBtnMadeSelStateOfBtnClass(DWORD classID, bool state);
    void SetSumMngr(bool has) { hasSumMngr = has; }
    void ClearOfFixedSpec();

    // --- Operations on special buttons
    // What a button is to be made from. It is made at `from` at the earliest and at `until` at the latest.
    struct SMaking
    {
        NSKZCore::SCBUICoreCom::EBtnType type = NSKZCore::SCBUICoreCom::BTNTYPE_INC;
        const char* name = nullptr;
        NSKZCore::VCSpBtn::EMmbBtnSelMth method = NSKZCore::VCSpBtn::MMBBTNSELMTH_SELECT;
        const IDList* members = nullptr;
        const SModelCnd* cnd = nullptr;
        DWORD refClassID = 0; // of a virtual inc button
        std::int64_t from = 0;
        std::int64_t until = 0;
    };
    // When the system's buttons are made.
    struct SMoment
    {
        std::int64_t from = 0;
        std::int64_t until = 0;
    };
    ECreate CreateSpBtn(DWORD& btnID, DWORD classID, const SMaking& making);
    bool DestroySpBtn(DWORD classID, DWORD btnID);
    bool SetEffectiveInfoOfSpBtn(DWORD classID, DWORD btnID, bool effective);
    EOpeToMembers SetMemberBtnIDListOfSpBtn(DWORD classID, DWORD btnID, const IDList& members);
    ESetCnd SetMemberBtnCndOfSpBtn(DWORD classID, DWORD btnID, const SModelCnd& cnd);
    bool ClearMemberBtnCndOfSpBtn(DWORD classID, DWORD btnID);
    bool SetDispMemberBtnInfoOfIncBtn(DWORD classID, DWORD btnID, bool disp);
    bool SetDispEmpValBtnInfoOfBtnClass(DWORD classID, bool disp);
    bool ResetMemberBtnBasedOnTheCndOfAll(DWORD numID);

    // --- Operations on virtual items
    using ECreateVirtual = NSKZCore::CBUIDataMngr::EMthRetOfCreateVirBtnCls;
    ECreateVirtual CreateVirBtnClass(const char* name, bool common, DWORD& classID);
    bool DestroyVirBtnClass(DWORD classID);
    bool SetNameOfVirBtnClass(DWORD classID, const char* name);
    bool SetEffectiveInfoOfVirBtnClass(DWORD classID, bool effective);
    bool ExistBtnClass(const std::string& name, DWORD ignoredClassID) const;

    // --- Operations on dates and times
    bool SetDispForm(DWORD classID, const NSKZCore::SCDeclareConstant::SDateDispForm& form, SMoment moment);
    bool SetDispForm(DWORD classID, const NSKZCore::SCDeclareConstant::STimeDispForm& form, SMoment moment);
    void ChangeCriteria(const SModelCriteria& criteria, SMoment moment);
    // The fields are those of the table with their new forms.
    void ChangeDataForm(const std::vector<SModelFld>& flds, SMoment moment);

    // --- Following changes of the table, of which each operation gets the state behind the change.
    void InsertRec(DWORD startRec, DWORD count, const SModelTable& changed, SMoment moment);
    void DeleteRec(DWORD startRec, DWORD count, const SModelTable& changed, SMoment moment);
    bool InsertFld(const IDList& fldIDs, const SModelTable& changed, SMoment moment);
    void DeleteFld(const IDList& fldIDs, const SModelTable& changed);
    void ChangeFldData(const SModelTable& changed, SMoment moment);
    bool ChangeFldDataSpec(const IDList& fldIDs, const SModelTable& changed, SMoment moment);
    void FollowSummary(const NSKZCore::SCDataMngrCoreDef::SBtnRenewalInfo& info, const SModelTable& changed,
                       SMoment moment);
    // How many records there are when the newest change is taken back.
    DWORD GetRecCountBehindUndo() const;
    // The table is put back before.
    bool UndoOpeOfTheSrcData(const SModelTable& putBack, SMoment moment);
    void ClearUndoOfTheSrcData();
    std::size_t GetUndoOpeCount() const { return history.size(); }

    // --- Saving and restoring
    // Become what is read of the forms in which an environment like `saved` was saved: the common form in
    // place of all that there is, the fixed form in place of what users fixed. Groups of dates may be made
    // meanwhile.
    void ReadCommonForm(const CModelEnv& saved);
    void ReadFixedForm(const CModelEnv& saved, const IDList& limitedRecs, SMoment moment);
    // What the forms tell, of an item and besides; two that tell the same are equal.
    std::string DescribeCommonFormOf(DWORD classID) const;
    std::string DescribeFixedFormOf(DWORD classID) const;
    std::string DescribeFixedFormOfAll() const;
    bool HasItemOfCommonForm() const;
    // What a host limits the records to; empty if it does not.
    IDList GetLimitedRecListOfHost() const;

    // --- What is to be seen
    const SModelTable& GetTable() const { return table; }
    const SModelFld* FindFld(DWORD fldID) const;
    // The buttons of groups by a part of their dates, in the order of the groups.
    struct SGroup
    {
        SModelDate date;
        IDList btnIDs;
    };
    std::vector<SGroup> GetGroups(const SModelItem& item, NSKZCore::VCDate::EDateType type) const;
    // None in an item without dates and where its first date does not give what `date` holds.
    std::optional<IDList> GetBtnsOfDates(const SModelItem& item,
                                         NSKZCore::SCKZCoreCom::ECmpOperator cmpOperator,
                                         const SModelDate& date) const;
    // None if no button listed has a date.
    std::optional<DWORD> GetLatestBtn(const SModelItem& item, const IDList& btnIDs) const;
    DWORD GetRecCount() const { return table.recCount; }
    ERelationMode GetRelationMode() const { return mode; }
    bool GetMultiSelectionInfo() const { return multiSelection; }
    bool HasSumMngr() const { return hasSumMngr; }
    bool IsLimited() const { return limitation.has_value(); }
    bool HasNumCnd() const { return hasNumCnd; }
    const std::map<DWORD, SModelItem>& GetItems() const { return items; }
    const std::vector<SModelLevel>& GetLevels() const { return levels; }
    const IDList& GetSelectedClasses() const { return selectedClasses; }
    RecSet GetTargetRecList() const;
    RecSet GetTargetRecListOfBtnClass(DWORD classID) const;
    bool GetHierDepthOfBtnClass(DWORD classID, unsigned int& depth) const;
    std::vector<NSKZCore::SSelectBtnIDList> GetAllBtnSelectionInfo() const;
    bool GetSelBtnsInfoForDiffCnd(DWORD& classID, DWORD& standardBtnID, DWORD& targetBtnID) const;
    bool IsBtnSelectiveState() const;
    // Selective state, a level or a difference pair.
    bool HasSelection() const { return IsBtnSelectiveState() || !levels.empty() || diffClassID != 0; }
    IDList GetBtnAppOrdList(const SModelItem& item, unsigned int flags) const;
    IDList GetBtnNameOrdList(const SModelItem& item, unsigned int flags) const;
    IDList GetBtnUnknownOrdList(const SModelItem& item, unsigned int flags, const IDList& order) const;
    // None for a button whose records cannot be told.
    std::optional<RecSet> GetRecsOfBtn(const SModelItem& item, DWORD btnID) const;
    std::optional<RecSet> GetRecsOfBtns(const SModelItem& item, const IDList& btnIDs) const;
    IDList GetBtnsOfRecs(const SModelItem& item, const IDList& recs) const;
    // None for an absent button.
    std::optional<IDList> GetRootSpBtnIDListIncludingBtn(const SModelItem& item, DWORD btnID,
                                                         bool includeIneffective) const;
    BtnRefSet GetSpBtnsThatTheBtnInfluences(const SModelItem& item, DWORD btnID, bool directOnly) const;
    // None if a member does not exist.
    std::optional<IDList> GetDisplayedMembers(const SModelItem& item, const SModelBtn& spBtn) const;
    // The buttons among `btnIDs` that meet the condition, in the order in which it gives them; none if it
    // asks for a number that is not to be had.
    std::optional<IDList> Evaluate(const SModelCnd& cnd, DWORD classID, const IDList& btnIDs);

    // --- Sums
    bool GetSumValue(DWORD classID, DWORD btnID, DWORD numID, double& value);
    bool GetCountValue(DWORD classID, DWORD btnID, DWORD numID, DWORD& count);
    bool GetAverageValue(DWORD classID, DWORD btnID, DWORD numID, double& value);
    bool GetEachValue(DWORD classID, DWORD btnID, DWORD numID, std::vector<double>& values);
    bool GetTotalValue(DWORD classID, DWORD numID, double& value);
    bool GetTotalAbsoluteValue(DWORD classID, DWORD numID, double& value);
    bool ExistNumDataItem(DWORD numID) const;

private:
    struct SKnownSum
    {
        std::optional<double> sum;
        std::optional<DWORD> count;
    };
    struct SKnownSums
    {
        std::map<std::pair<DWORD, DWORD>, SKnownSum> ofBtn; // by button and numeric item
        std::map<DWORD, double> totals;
        std::map<DWORD, double> absoluteTotals;
    };

    void BuildItem(const SModelFld& fld);
    // What a cell of the field means to its item.
    static std::string ReadCell(const SModelFld& fld, DWORD rec);
    void EnterBtnWithRecs(SModelItem& item, DWORD btnID);

    // Following changes of the table
    struct SUndo
    {
        unsigned int type = 0;
        DWORD startRec = 0;
        DWORD count = 0; // asked for
        DWORD taken = 0; // of a deletion: what there was
        IDList fldIDs;
        IDList classIDs;
        std::vector<NSKZCore::SSelectBtnIDList> selection;
        bool isOfDataChange = false;
        bool hasLimitation = false;
        RecSet limitation;
    };
    SUndo& AddToHistory(unsigned int type);
    void TakeTable(const SModelTable& changed);
    void AddRecs(SModelItem& item, DWORD startRec, DWORD count, SMoment moment);
    void FollowInsertion(DWORD startRec, DWORD count, SMoment moment);
    void FollowDeletion(DWORD startRec, DWORD count, SMoment moment);
    void LoseBtnsWithoutRecs(SModelItem& item, SMoment moment);
    void AdjustAbove(const SModelItem& item, const std::set<DWORD>& btnIDs);
    void CloseFollowing(bool forgetsSums, bool clears);
    void TakeItemOut(DWORD classID);
    void PutItemBack(DWORD fldID, DWORD classID, SMoment moment);
    void DestroySrcItem(DWORD classID);
    void SetEffectiveOfItem(SModelItem& item, bool effective);
    DWORD FindClassOfFld(DWORD fldID) const;
    // Whether the table still tells the form of the item's dates.
    bool KnowsDataForm(const SModelItem& item) const;
    void EnterNumber(SModelItem& item, DWORD btnID);
    void EnterDate(SModelItem& item, DWORD btnID);
    IDList ListByNumber(const SModelItem& item, unsigned int flags) const;
    IDList ListByDate(const SModelItem& item, unsigned int flags) const;
    SModelItem* FindItem(DWORD classID);
    const SModelItem* FindItem(DWORD classID) const;
    SModelBtn& GetBtn(const SModelBtnRef& ref) { return items.at(ref.btnClassID).btns.at(ref.btnID); }
    const SModelBtn& GetBtn(const SModelBtnRef& ref) const
    {
        return items.at(ref.btnClassID).btns.at(ref.btnID);
    }
    // The item of the members of a special button; null if it is gone.
    SModelItem* FindItemOfMembers(const SModelItem& item, DWORD spBtnID);
    const SModelItem* FindItemOfMembers(const SModelItem& item, DWORD spBtnID) const;
    // All special buttons that list the button.
    BtnRefSet FindListing(const SModelItem& item, DWORD btnID) const;
    static BtnRefSet GetHolders(const SModelItem& item, DWORD btnID);
    static void ForgetHolder(SModelBtn& btn, const SModelItem& item, const SModelBtnRef& holder);
    // `btns` and all special buttons above them.
    BtnRefSet WithHolders(const BtnRefSet& btns) const;
    SModelLevel* FindLevel(DWORD classID);
    RecSet GetLimitationOrAll() const;
    RecSet WithinLimitation(const RecSet& recs) const;
    // The records before the level at `position`.
    RecSet WithinLevelBefore(std::size_t position, const RecSet& recs) const;

    bool PressDifference(SModelItem& item, const IDList& btnIDs, bool select);
    bool Narrow(SModelItem& item, const IDList& btnIDs, bool select);
    bool RelateByAnd(SModelItem& item);
    bool RelateByDifference(SModelItem& item);
    void ShowAllByRelation(bool show);
    void ShowByRelation(const BtnRefSet& btns);
    void ResetRelationReason();
    void ResetLimitationReason();
    void ChangeLimitation();

    // Special buttons of one item
    bool AreAppropriateMembers(const SModelItem& item, DWORD spBtnID, const IDList& members) const;
    bool Holds(const SModelBtnRef& spBtn, const SModelBtnRef& sought) const;
    void ChangeMembers(SModelItem& item, DWORD spBtnID, const IDList& members);
    void TakeMembers(SModelItem& item, DWORD spBtnID);
    void LetMembersGo(SModelItem& item, DWORD spBtnID);
    void LetGo(SModelItem& item, DWORD spBtnID, DWORD memberID);
    void AdjustIncReason(SModelItem& item, SModelBtn& member);
    void AdjustLiveMemberReason(const BtnRefSet& spBtns);
    void AdjustLiveMemberReasonOfAll();
    DWORD FindFreeBtnID(const SModelItem& item, NSKZCore::SCBUICoreCom::EBtnType type) const;
    void JoinAwaitingSpBtns(const SModelItem& item, DWORD btnID);
    void RemoveMember(SModelItem& item, DWORD spBtnID, DWORD memberID);
    void SwitchOn(SModelItem& item, DWORD btnID);
    void SwitchOff(SModelItem& item, DWORD btnID);
    void Destroy(SModelItem& item, DWORD btnID);
    void EnterName(SModelItem& item, DWORD btnID);
    void RemoveName(SModelItem& item, DWORD btnID);
    void CloseChange(SModelItem& item, bool wasSelected);

    // Groups of dates
    std::optional<SModelDate> GetGroupOf(const SModelItem& item, const SModelDate& date) const;
    std::string GetNameOfGroup(const SModelItem& item, const SModelDate& group) const;
    void RebuildGroups(SModelItem& item, SMoment moment);
    void DropGroups(SModelItem& item);
    void RenewDateOrder(SModelItem& item);

    // Saving and restoring
    bool IsSpBtnSaved(const SModelItem& item, DWORD btnID) const;
    std::optional<SModelBtn> GetSavedSpBtn(const SModelItem& item, DWORD btnID) const;
    static void DescribeSavedSpBtn(std::ostream& out, const SModelBtn& btn);
    IDList ListFreeFixedClassesOfSave() const;
    void ReadBtnOfCommonForm(SModelItem& item, DWORD btnID, const CModelEnv& saved,
                             const SModelItem& savedItem);
    void ReadItemOfFixedForm(SModelItem& item, const CModelEnv& saved, const SModelItem& savedItem);
    void DropBtnsOfLostItems(SModelItem& item);
    void SwitchOffBtnsOverIneffectiveItems(SModelItem& item);
    void SettleReadMembers();
    std::vector<NSKZCore::SSelectBtnIDList> ListReadSelection(const CModelEnv& saved) const;

    // Virtual items
    void LoseRef(SModelItem& item, DWORD btnID);
    void ForgetBtnsOf(DWORD classID);

    // Members by condition
    bool ResetMembers();
    void ResetMembersWithReferring(DWORD classID, std::set<DWORD>& visited);
    void ResetMembers(SModelItem& item);
    void ResetMembersOfEffective(SModelItem& item);
    void ResetMembers(SModelItem& item, DWORD spBtnID);
    bool GetWorth(const SModelCnd& leaf, DWORD classID, DWORD btnID, double total, double& worth);
    std::optional<IDList> EvaluateRank(const SModelCnd& leaf, DWORD classID, const IDList& btnIDs);
    std::optional<IDList> EvaluateComparison(const SModelCnd& leaf, DWORD classID, const IDList& btnIDs);

    void ForgetSumsOf(DWORD classID);
    void ForgetSums();
    void ForgetTotals();
    void AdjustSumsToPress(DWORD classID);
    void AdjustSumsToClearing();
    bool HoldTarget(DWORD classID);
    // The records that count for a sum of the button; none if they cannot be told.
    std::optional<RecSet> CollectRecs(DWORD classID, DWORD btnID);
    bool CalculateTotals(DWORD classID, DWORD numID);
    const SModelFld* FindNumFld(DWORD numID) const;
    double AddUp(DWORD numID, const RecSet& recs) const;
    DWORD CountNumbers(DWORD numID, const RecSet& recs) const;

    SModelTable table;
    std::map<DWORD, SModelItem> items;
    DWORD nextSrcClassID = NSKZCore::SCBUICoreCom::BTNCLS_ID_SRC_BEGIN;
    DWORD nextCommonClassID = NSKZCore::SCBUICoreCom::BTNCLS_ID_VIR_COMMON_BEGIN;
    DWORD nextFixedClassID = NSKZCore::SCBUICoreCom::BTNCLS_ID_VIR_FIXED_BEGIN;
    IDList freeFixedClassIDs; // released ones, the first first
    ERelationMode mode = NSKZCore::CBUIDataMngr::RELATIONMODE_NARROWING;
    bool multiSelection = false;
    bool hasSumMngr;
    bool hasNumCnd = false;
    std::vector<SModelLevel> levels;
    std::optional<RecSet> limitation;
    DWORD diffClassID = 0;
    DWORD diffStandardBtnID = 0;
    DWORD diffTargetBtnID = 0;
    IDList selectedClasses;
    std::uint64_t entryNumber = 0; // of order lists: what came when
    std::vector<SUndo> history;

    std::map<DWORD, SKnownSums> knownSums;
    DWORD heldClassID = 0; // whose target records are held
    RecSet heldTarget;
};

} // namespace NSKZ::Test

#endif
