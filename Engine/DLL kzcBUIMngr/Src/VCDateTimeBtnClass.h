#ifndef VCDATETIMEBTNCLASS_H
#define VCDATETIMEBTNCLASS_H

#include "SDateGroupBtnIDList.h"
#include "VCSrcBtnClass.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace NSKZ::NSKZCore {

// What the button classes of a date field and of a time field share. "Date" below stands for either.
//
// Each normal button with records whose shown text reads as a date carries a date object. The order of names
// follows the dates; texts that read as none stand behind them. The text is read when a button begins to have
// records: an alias given meanwhile counts from its next coming, or from the next change of the form of the
// field's data.
//
// Under a display form the class keeps a cll button for each group of dates: a year, a fiscal quarter, a
// quarter of an hour, and so on. The system manages these buttons: it makes, fills and names them whenever
// the dates, the display form or the calendar criteria change, and refuses whoever wants to switch them off,
// destroy them or change their members. They may be members of others, be pressed and be given an alias. One
// that has lost its members stays, hidden and empty, until the display form or the form of the data changes.
// Without a display form there are no groups.
//
// The calendar criteria are read from the source table at each use. The numbers in `btnOfDateNum` are those
// of the criteria of their time; a change of the criteria is told by RegroupAfterCriterionChange.
//
// A rebuilding costs the dates, and what holds the system's buttons once. If memory is exhausted in one, the
// members of all groups are as they were, though system-managed buttons without members may have come, or all
// is done and rows of records are outdated. The next rebuilding goes on from there.
class VCDateTimeBtnClass : public VCSrcBtnClass
{
public:
    using VCSrcBtnClass::VCSrcBtnClass;
    ~VCDateTimeBtnClass() override;

    void Clear() override;
    // The system-managed buttons go with the users'; the display form stays. They come again with the next
    // rebuilding.
    void ClearOfFixedSpec() override;
    void Copy(const VCBtnClass& other, const std::unique_ptr<IRpLink>& rpLinkOfEnv) override;

    DWORD GetSystemMngrSpBtnCount() const override;
    // False for the system-managed ones.
    bool GetBtnMngrInfoOfSpBtn(DWORD btnID, bool& managedByUser) const override;

    // Special buttons that users manage, by text and only those that have a member; the dates, with the
    // system-managed buttons among them by the dates of their groups; the empty value; the texts that are no
    // dates, by text. Equal dates stand by ascending identifier. ORDLIST_DESCEND reverses all of it. A hidden
    // empty-value button is listed with ORDLIST_INCLUDE_NONDISPBTNS, but not while it has no record.
    // Otherwise as in the base.
    void GetBtnNameOrdList(unsigned int flags, std::vector<DWORD>& btnIDs) const override = 0;

    // As in the base, but for a system-managed button false or OPEMMBBTN_SYSTEMMNGR, with nothing changed.
    bool DestroyCllBtn(DWORD btnID) override;
    bool SetEffectiveInfoOfSpBtn(DWORD btnID, bool isEffective) override;
    EMthRetOfOpeToMmbBtnIDList SetMemberBtnIDListOfSpBtn(DWORD btnID,
                                                         const std::vector<DWORD>& mmbBtnIDs) override;
    EMthRetOfOpeToMmbBtnIDList AddMemberBtnIDListOfSpBtn(DWORD btnID, DWORD mmbBtnID) override;
    EMthRetOfOpeToMmbBtnIDList DeleteMemberBtnIDListOfSpBtn(DWORD btnID, DWORD mmbBtnID) override;

    // Rebuild the groups first.
    void ResetInsideInfoForSpBtnsOfBtns(const std::vector<DWORD>& btnIDs, bool buildRpLink) override;
    void ResetInsideInfoForSpBtnsOfSrcBtns(bool buildRpLink, bool force) override;
    void ResetInsideInfoForEffectiveSpBtns(bool buildRpLink) override;

    // Lets the display form go; the groups go with the next rebuilding.
    virtual void UnsetDispForm() noexcept = 0;

    // To be called when the form of the field's data has changed: reads every text anew and makes the groups
    // anew, with buttons of their own. If memory is exhausted nothing has changed, or the dates are the new
    // ones and there are no groups with members until the next rebuilding.
    void RegroupAfterDataFormChange();

protected:
    // The calendar criteria of the source table at this moment; those of a class without a table are of no
    // use to it.
    struct SCriteria
    {
        DWORD startMonth = 1;                   // first month of the fiscal year
        DWORD cutOffDate = 31;                  // day that ends a fiscal month
        VCDate::EDaysOfTheWeek daysOfTheWeek{}; // first day of a week
    };
    SCriteria GetCriteria() const;
    static bool GetDateNumeric(const VCDate& date, const SCriteria& criteria, unsigned long long& number);
    static unsigned long long GetOrdNumber(const VCDate& date, const SCriteria& criteria);

    // The date that a text reads as under the form of the field's data; null for none.
    virtual std::unique_ptr<VCDate> ReadDate(const char* text) const = 0;

    // Works out the groups of a display form: made for one rebuilding, with the criteria of that moment.
    class VCGroupMaker
    {
    public:
        VCGroupMaker() = default;
        VCGroupMaker(const VCGroupMaker&) = delete;
        VCGroupMaker& operator=(const VCGroupMaker&) = delete;
        virtual ~VCGroupMaker();
        // The date of the group that `date` is in; null if it joins none. Good until the next call.
        virtual const VCDate* MakeGroupDate(const VCDate& date) = 0;
        // What the button of the group shows.
        virtual std::string MakeName(const VCDate& groupDate) const = 0;
    };
    virtual bool HasDispForm() const noexcept = 0;

    // --- The display form and the groups in the fixed form of the class.
    bool WriteFurtherFixedElementsByXML(CXMLWriter& writer) const override;
    EMthRetOfReadXML ReadChildElementPartOfSpecByXML(const char* folder, CXMLReader& reader,
                                                     SCKZCoreCom::ESpecType specType) override;
    // The fixed form of a class without a display form does not tell one.
    EMthRetOfReadXML ReadStartTagPartOfSpecByXML(const char* tag, DWORD tagLen, Attributes& attributes,
                                                 SCKZCoreCom::ESpecType specType, DWORD recCountOfEnv,
                                                 const std::unique_ptr<IRpLink>& rpLinkOfEnv) override;
    // The names of the elements: all groups, one group.
    struct SGroupElements
    {
        const char* ofAll;
        DWORD ofAllLen;
        const char* ofOne;
        DWORD ofOneLen;
    };
    virtual SGroupElements GetGroupElements() const noexcept = 0;
    // The display form as attributes, which live as long as it is not changed and until this thread's next
    // such call; and the reverse: false, with nothing changed, for attributes that are those of no form.
    virtual bool GetDispFormAttributes(Attributes& attributes) const = 0;
    virtual bool TakeDispFormFrom(const Attributes& attributes) = 0;
    // Null without a display form and where the source table does not tell the form of the field's data.
    virtual std::unique_ptr<VCGroupMaker> CreateGroupMaker() const = 0;

    void AdjstAccordingToBtnAppearance(const VCBtn& btn) override;
    void AdjstAccordingToBtnDisappearance(const VCBtn& btn) noexcept override;

    bool IsSystemMngrSpBtn(DWORD btnID) const noexcept { return dateOfSysCllBtn.contains(btnID); }
    // GetBtnNameOrdList; `function` is the class's own, for the message.
    void ListByDate(unsigned int flags, std::vector<DWORD>& btnIDs, const char* function) const;
    // Brings the system-managed buttons in line with dates, display form and criteria: makes those that are
    // missing and gives each the buttons of its group.
    void RebuildSysCllBtns();
    // Destroys all of them. If memory is exhausted nothing has changed, or all is done.
    void ResetAllSysCllBtns();
    bool HasGroupWithMembers() const noexcept;
    // Works out the numbers of all dates anew, under the criteria of this moment. If memory is exhausted
    // nothing has changed.
    void RenewDateNums();

    // The length of a text that may read as a date: false for null and for one that is too long for any.
    static bool GetLenOfDateText(const char* text, unsigned short& len) noexcept;

    // Calls visit(btnID, date) for each button with a date, by ascending identifier.
    template <class TVisit>
    void VisitDates(const TVisit& visit) const;
    // Adds the buttons to groups: makeGroupDate(date) gives a pointer to the date of the group that a date is
    // in, which is cloned for a new group, or null. A group date without a number forms no group.
    template <class TMakeGroupDate>
    void GroupDates(TMakeGroupDate&& makeGroupDate, CDateGroupMap& groups) const;
    // The same, and the groups take the place of what `groups` held. If memory is exhausted it is untouched.
    template <class TMakeGroupDate>
    void GroupDatesAnew(TMakeGroupDate&& makeGroupDate, CDateGroupMap& groups) const;
    // The date of the button with the lowest identifier that has one; null in a class without dates.
    const VCDate* GetFirstDate() const noexcept;
    // The date of a normal button; null for none.
    const VCDate* FindDate(DWORD btnID) const noexcept;

    std::vector<std::unique_ptr<VCDate>> dateOfBtn; // by identifier of normal buttons; null without a date
    std::map<DWORD, std::unique_ptr<VCDate>> dateOfSysCllBtn; // the group that the button stands for
    CDateNumOrdList btnOfDateNum; // the buttons of both, by the number of the date
    CTextOrdList strNameOrd;      // normal buttons with records and without a date

private:
    void ClearOwnFields() noexcept;
    // Makes an empty button for a group; null if the identifiers are used up. The group date is moved out.
    VCSpBtn* CreateSysCllBtn(unsigned long long number, std::unique_ptr<VCDate>& groupDate,
                             const std::string& name);
    void ForgetSysCllBtn(DWORD btnID) noexcept;
    EMthRetOfReadXML ReadGroup(CXMLReader& reader, const SGroupElements& names);
};

template <class TVisit>
void VCDateTimeBtnClass::VisitDates(const TVisit& visit) const
{
    for (std::size_t btnID = 0; btnID < dateOfBtn.size(); ++btnID) {
        if (dateOfBtn[btnID] != nullptr)
            visit(static_cast<DWORD>(btnID), *dateOfBtn[btnID]);
    }
}

template <class TMakeGroupDate>
void VCDateTimeBtnClass::GroupDates(TMakeGroupDate&& makeGroupDate, CDateGroupMap& groups) const
{
    const SCriteria criteria = GetCriteria();
    VisitDates([&](DWORD btnID, const VCDate& date) {
        const VCDate* const groupDate = makeGroupDate(date);
        unsigned long long number = 0;
        if (groupDate == nullptr || !GetDateNumeric(*groupDate, criteria, number))
            return;
        const auto [group, isNew] = groups.try_emplace(number);
        if (isNew)
            group->second.date = groupDate->CreateClone();
        group->second.btnIDList.push_back(btnID);
    });
}

template <class TMakeGroupDate>
void VCDateTimeBtnClass::GroupDatesAnew(TMakeGroupDate&& makeGroupDate, CDateGroupMap& groups) const
{
    CDateGroupMap made;
    GroupDates(makeGroupDate, made);
    groups.swap(made);
}

} // namespace NSKZ::NSKZCore

#endif
