#ifndef CDATEBTNCLASS_H
#define CDATEBTNCLASS_H

#include "TCDispFormBtnClass.h"

namespace NSKZ::NSKZCore {

// The button class of a date field: its buttons are the distinct date texts of the field.
//
// Groups are those of SCDispForm. A Gregorian year before 1873, the first in which Japan used that calendar,
// stays unset in the date of a group, and the group forms without it. A date that has no Japanese year, as
// those before Meiji, joins no group of a form that has one.
class CDateBtnClass final : public TCDispFormBtnClass<SCDeclareConstant::SDateDispForm>
{
public:
    using TCDispFormBtnClass::TCDispFormBtnClass;

    void GetBtnNameOrdList(unsigned int flags, std::vector<DWORD>& btnIDs) const override;
    SCBUICoreCom::EBtnClassType GetBtnClassType() const override;

    // Whether kind, form and option are set and the pattern ends within its bytes.
    static bool IsSet(const SDispForm& form) noexcept;

    // Groups the buttons by a part of their dates, whatever the display form: `groups`, which is emptied
    // first, gets a group for each value of the part; buttons whose date does not give it are in none. False,
    // with `groups` untouched, for the parts of a time. Throws ECAbnormalData for a type that is none, with
    // `groups` untouched, as it is when memory is exhausted.
    bool GetGroupedBtnIDLists(VCDate::EDateType dateType, CDateGroupMap& groups) const;
    // The buttons whose date is in that relation to `date` (VCDate::CompareDate), ascending: dates before
    // `date`, in the week that `date` is, and so on. False, with the output untouched, in a class without
    // dates, and where the date of the first button does not give what `date` holds.
    bool GetGroupedBtnIDList(const VCDate& date, SCKZCoreCom::ECmpOperator cmpOperator,
                             std::vector<DWORD>& btnIDs) const;

    // The latest date of all; null in a class without dates. Good until the dates change. Sorts what has
    // entered the order of names since it was last read, as does the next.
    const VCDate* GetLatestDate() const;
    // The button with the latest date among those listed, and the number of the date: of equal dates the one
    // that stands last in the order of names. False if none of them has a date. Costs the list and the dates
    // behind the one found.
    bool GetLatestBtn(const DWORD* btnIDs, DWORD count, DWORD& btnID, unsigned long long& dateNum) const;

    // To be called when the calendar criteria of the source table have changed: dates move between groups.
    // Buttons whose group there is still keep their identifiers and names; those without stay, empty. If
    // memory is exhausted nothing has changed, or it is as after a rebuilding.
    void RegroupAfterCriterionChange();

    // The elements of the groups in the fixed form.
    static constexpr char STR_ELENAME_DATECLLBTNS[] = "DateCllBtns";
    static constexpr DWORD STRLEN_ELENAME_DATECLLBTNS = sizeof STR_ELENAME_DATECLLBTNS - 1;
    static constexpr char STR_ELENAME_DATECLLBTN[] = "DateCllBtn";
    static constexpr DWORD STRLEN_ELENAME_DATECLLBTN = sizeof STR_ELENAME_DATECLLBTN - 1;

protected:
    SGroupElements GetGroupElements() const noexcept override;
    bool GetDispFormAttributes(Attributes& attributes) const override;
    bool TakeDispFormFrom(const Attributes& attributes) override;
    std::unique_ptr<VCDate> ReadDate(const char* text) const override;
    std::unique_ptr<VCGroupMaker> CreateGroupMaker() const override;

private:
    class CGroupMaker;
};

} // namespace NSKZ::NSKZCore

#endif
