#include "CDateBtnClass.h"

#include "CConvertDate.h"
#include "CDate.h"
#include "CDaysOfTheWeek.h"
#include "CFiscalMonth.h"
#include "CFiscalYear.h"
#include "CHalfTerm.h"
#include "CQuarterTerm.h"
#include "CSourceDataMngr.h"
#include "CWeekNum.h"
#include "ECAbnormalData.h"
#include "SCDispForm.h"
#include "SCKZCoreStrDef.h"
#include "SCThemeIOStrDef.h"

#include <unordered_set>
#include <variant>

namespace NSKZ::NSKZCore {

namespace {

constexpr const char* SRC_FILE = "Src/CDateBtnClass";

constexpr DWORD FISCAL = SCDispForm::OPTION_FISCAL;

constexpr bool IsIn(DWORD form, DWORD first, DWORD last) noexcept
{
    return form >= first && form <= last;
}

// How the year of the group's date is counted.
SCDispForm::EYearKind GetYearKind(DWORD form) noexcept
{
    if (form == 0 || form == 1 || form == 6 || form == 7 || form == 101 || form == 102 || form == 107 ||
        form == 108 || form == 201 || form == 202 || form == 301 || form == 302)
        return SCDispForm::YEARKIND_GREGORIAN;
    if (IsIn(form, 2, 5) || IsIn(form, 8, 11) || IsIn(form, 103, 106) || IsIn(form, 109, 112) ||
        IsIn(form, 203, 206) || IsIn(form, 303, 306))
        return SCDispForm::YEARKIND_JAPANESE;
    return SCDispForm::YEARKIND_NONE;
}

// A Gregorian year that is not to be stored is none.
DWORD TakeGrgYear(DWORD year) noexcept
{
    return VCDate::IsAppropriateYear(VCDate::ERA_GREGORIAN, year) ? year : VCDate::DATE_UNSETTING;
}

} // namespace

// --- Groups of the display form

class CDateBtnClass::CGroupMaker final : public VCGroupMaker
{
public:
    CGroupMaker(const SCDeclareConstant::SDateTypeInfo& typeInfo, const SCriteria& criteriaOfNow)
        : dispForm(typeInfo.dispForm), yearKind(GetYearKind(dispForm.form)), convertDate(typeInfo),
          criteria(criteriaOfNow)
    {}

    const VCDate* MakeGroupDate(const VCDate& date) override { return CreateDateOfDispForm(date); }

    std::string MakeName(const VCDate& ofGroup) const override
    {
        std::string name(std::size_t{convertDate.GetMaxLenOfDateString()} + 1, '\0');
        return convertDate.ConvertDateString(ofGroup, name.data(), static_cast<DWORD>(name.size()),
                                             criteria.startMonth, criteria.cutOffDate)
                   ? std::string(name.c_str())
                   : std::string();
    }

private:
    // The date of the group, in an object used again and again; null if the form is none or a part that it
    // needs is not held.
    const VCDate* CreateDateOfDispForm(const VCDate& date) noexcept
    {
        const DWORD form = dispForm.form;
        if (dispForm.kind == SCDispForm::DATEKIND_ASITIS)
            return &date;
        if (dispForm.kind == SCDispForm::DATEKIND_OPTIONAL)
            return MakeDateOfPattern(date);
        if (!IsSetCode(form) || !IsSetCode(dispForm.option))
            return nullptr;
        const bool isFiscal = dispForm.option == FISCAL;
        if (form <= 5)
            return MakeDate(date, true, true);
        if (form <= 11)
            return isFiscal ? MakeFiscalMonth(date) : MakeDate(date, true, false);
        if (form == 12)
            return MakeDate(date, false, true);
        if (IsIn(form, 101, 106))
            return MakeTerm(date, &VCDate::GetHalfTerm, &CHalfTerm::SetHalfTerm);
        if (IsIn(form, 107, 112))
            return MakeTerm(date, &VCDate::GetQuarterTerm, &CQuarterTerm::SetQuarterTerm);
        if (IsIn(form, 201, 206))
            return isFiscal ? MakeWeekOfFiscalYear(date) : MakeWeekOfYear(date);
        if (IsIn(form, 301, 306) || form == 401)
            return isFiscal ? MakeWeekOfFiscalMonth(date) : MakeWeekOfMonth(date);
        if (form == 402 || form == 403)
            return isFiscal ? MakeDayOfFiscalWeek(date, form == 402) : MakeDayOfWeek(date, form == 402);
        return nullptr;
    }

    // Each stores a part of `date` in the date of the group; false if `date` does not hold it. A value
    // outside its limits leaves the part unset.
    template <class TGroupDate>
    bool PutYear(const VCDate& date, TGroupDate& group) const noexcept
    {
        DWORD year = 0;
        VCDate::EEra era = VCDate::ERA_UNSETTING;
        switch (yearKind) {
        case SCDispForm::YEARKIND_GREGORIAN:
            if (!date.GetYearOfTheGrgCalendar(year))
                return false;
            group.SetYearOfTheGrgCalendar(TakeGrgYear(year));
            return true;
        case SCDispForm::YEARKIND_JAPANESE:
            if (!date.GetYearOfTheJpnCalendar(era, year))
                return false;
            group.SetYearOfTheJpnCalendar(era, year);
            return true;
        default:
            return true;
        }
    }
    template <class TGroupDate>
    bool PutFiscalYear(const VCDate& date, TGroupDate& group) const noexcept
    {
        DWORD year = 0;
        VCDate::EEra era = VCDate::ERA_UNSETTING;
        if (yearKind == SCDispForm::YEARKIND_GREGORIAN) {
            if (!date.GetFiscalYearOfTheGrgCalendar(criteria.startMonth, criteria.cutOffDate, year))
                return false;
            group.SetFiscalYearOfTheGrgCalendar(TakeGrgYear(year));
        } else {
            if (!date.GetFiscalYearOfTheJpnCalendar(criteria.startMonth, criteria.cutOffDate, era, year))
                return false;
            group.SetFiscalYearOfTheJpnCalendar(era, year);
        }
        return true;
    }
    // The fiscal month with the year that it bears.
    template <class TGroupDate>
    bool PutFiscalMonth(const VCDate& date, TGroupDate& group) const noexcept
    {
        DWORD year = 0;
        DWORD month = 0;
        VCDate::EEra era = VCDate::ERA_UNSETTING;
        switch (yearKind) {
        case SCDispForm::YEARKIND_GREGORIAN:
            if (!date.GetFiscalMonth(criteria.cutOffDate, year, month))
                return false;
            group.SetYearOfTheGrgCalendar(TakeGrgYear(year));
            break;
        case SCDispForm::YEARKIND_JAPANESE:
            if (!date.GetFiscalMonth(criteria.cutOffDate, era, year, month))
                return false;
            group.SetYearOfTheJpnCalendar(era, year);
            break;
        default:
            if (!date.GetFiscalMonth(criteria.cutOffDate, month))
                return false;
            break;
        }
        group.SetFiscalMonth(month);
        return true;
    }
    template <class TGroupDate>
    static bool PutMonth(const VCDate& date, TGroupDate& group) noexcept
    {
        DWORD month = 0;
        if (!date.GetMonth(month))
            return false;
        group.SetMonth(month);
        return true;
    }
    static bool PutDay(const VCDate& date, CDate& group) noexcept
    {
        DWORD day = 0;
        if (!date.GetDay(day))
            return false;
        group.SetDay(day);
        return true;
    }
    template <class TGroupDate>
    static const VCDate* GiveIf(bool isMade, const TGroupDate& group) noexcept
    {
        return isMade ? &group : nullptr;
    }

    const VCDate* MakeDateOfPattern(const VCDate& date) noexcept
    {
        CDate& group = groupDate.emplace<CDate>();
        DWORD year = 0;
        VCDate::EEra era = VCDate::ERA_UNSETTING;
        if (convertDate.IsUsedJpnCalendarForOptionalForm()) {
            if (!date.GetYearOfTheJpnCalendar(era, year))
                return nullptr;
            group.SetYearOfTheJpnCalendar(era, year);
        } else if (convertDate.IsUsedGrgCalendarForOptionalForm()) {
            if (!date.GetYearOfTheGrgCalendar(year))
                return nullptr;
            group.SetYearOfTheGrgCalendar(TakeGrgYear(year));
        }
        return GiveIf((!convertDate.IsUsedMonthForOptionalForm() || PutMonth(date, group)) &&
                          (!convertDate.IsUsedDayForOptionalForm() || PutDay(date, group)),
                      group);
    }
    const VCDate* MakeDate(const VCDate& date, bool hasMonth, bool hasDay) noexcept
    {
        CDate& group = groupDate.emplace<CDate>();
        return GiveIf(PutYear(date, group) && (!hasMonth || PutMonth(date, group)) &&
                          (!hasDay || PutDay(date, group)),
                      group);
    }
    const VCDate* MakeFiscalMonth(const VCDate& date) noexcept
    {
        CFiscalMonth& group = groupDate.emplace<CFiscalMonth>();
        return GiveIf(PutFiscalMonth(date, group), group);
    }
    template <class TTerm>
    const VCDate* MakeTerm(const VCDate& date, bool (VCDate::*get)(DWORD, DWORD, DWORD&) const noexcept,
                           bool (TTerm::*set)(DWORD) noexcept) noexcept
    {
        TTerm& group = groupDate.emplace<TTerm>();
        DWORD term = 0;
        if (!(date.*get)(criteria.startMonth, criteria.cutOffDate, term) || !PutFiscalYear(date, group))
            return nullptr;
        (group.*set)(term);
        return &group;
    }
    const VCDate* MakeWeekOfYear(const VCDate& date) noexcept
    {
        CWeekNum& group = groupDate.emplace<CWeekNum>(CWeekNum::WEEKNUMTYPE_YEAR);
        DWORD week = 0;
        if (!date.GetWeekOfTheYear(criteria.daysOfTheWeek, week) || !PutYear(date, group))
            return nullptr;
        group.SetWeekNum(week);
        return &group;
    }
    const VCDate* MakeWeekOfFiscalYear(const VCDate& date) noexcept
    {
        CWeekNum& group = groupDate.emplace<CWeekNum>(CWeekNum::WEEKNUMTYPE_FISCALYEAR);
        DWORD week = 0;
        if (!date.GetWeekOfTheFiscalYear(criteria.startMonth, criteria.cutOffDate, criteria.daysOfTheWeek,
                                         week) ||
            !PutFiscalYear(date, group))
            return nullptr;
        group.SetWeekNum(week);
        return &group;
    }
    const VCDate* MakeWeekOfMonth(const VCDate& date) noexcept
    {
        CWeekNum& group = groupDate.emplace<CWeekNum>(CWeekNum::WEEKNUMTYPE_MONTH);
        DWORD week = 0;
        if (!date.GetWeekOfTheMonth(criteria.daysOfTheWeek, week) || !PutYear(date, group) ||
            !PutMonth(date, group))
            return nullptr;
        group.SetWeekNum(week);
        return &group;
    }
    const VCDate* MakeWeekOfFiscalMonth(const VCDate& date) noexcept
    {
        CWeekNum& group = groupDate.emplace<CWeekNum>(CWeekNum::WEEKNUMTYPE_FISCALMONTH);
        DWORD week = 0;
        if (!date.GetWeekOfTheFiscalMonth(criteria.cutOffDate, criteria.daysOfTheWeek, week) ||
            !PutFiscalMonth(date, group))
            return nullptr;
        group.SetWeekNum(week);
        return &group;
    }
    const VCDate* MakeDayOfWeek(const VCDate& date, bool hasMonth) noexcept
    {
        CDaysOfTheWeek& group = groupDate.emplace<CDaysOfTheWeek>(CDaysOfTheWeek::DAYSOFWEEKTYPE_MONTH);
        DWORD week = 0;
        VCDate::EDaysOfTheWeek day = VCDate::DAYSOFWEEK_UNSETTING;
        if (!date.GetDaysOfTheWeek(day) || !date.GetWeekOfTheMonth(criteria.daysOfTheWeek, week) ||
            (hasMonth && !PutMonth(date, group)))
            return nullptr;
        group.SetWeekNum(week);
        group.SetDaysOfTheWeek(day);
        return &group;
    }
    const VCDate* MakeDayOfFiscalWeek(const VCDate& date, bool hasMonth) noexcept
    {
        CDaysOfTheWeek& group = groupDate.emplace<CDaysOfTheWeek>(CDaysOfTheWeek::DAYSOFWEEKTYPE_FISCALMONTH);
        DWORD week = 0;
        DWORD month = 0;
        VCDate::EDaysOfTheWeek day = VCDate::DAYSOFWEEK_UNSETTING;
        if (!date.GetDaysOfTheWeek(day) ||
            !date.GetWeekOfTheFiscalMonth(criteria.cutOffDate, criteria.daysOfTheWeek, week) ||
            (hasMonth && !date.GetFiscalMonth(criteria.cutOffDate, month)))
            return nullptr;
        if (hasMonth)
            group.SetFiscalMonth(month);
        group.SetWeekNum(week);
        group.SetDaysOfTheWeek(day);
        return &group;
    }

    SDispForm dispForm;
    SCDispForm::EYearKind yearKind;
    CConvertDate convertDate;
    SCriteria criteria;
    std::variant<CDate, CFiscalMonth, CHalfTerm, CQuarterTerm, CWeekNum, CDaysOfTheWeek> groupDate;
};

bool CDateBtnClass::IsSet(const SDispForm& form) noexcept
{
    return IsSetCode(form.kind) && IsSetCode(form.form) && IsSetCode(form.option) &&
           IsPatternTerminated(form);
}

std::unique_ptr<VCDateTimeBtnClass::VCGroupMaker> CDateBtnClass::CreateGroupMaker() const
{
    SCDeclareConstant::SDateTypeInfo typeInfo;
    if (!HasDispForm() || srcDataMngr == nullptr || !srcDataMngr->GetDateTypeInfo(fldID, typeInfo))
        return nullptr;
    typeInfo.dispForm = dispForm;
    return std::make_unique<CGroupMaker>(typeInfo, GetCriteria());
}

void CDateBtnClass::RegroupAfterCriterionChange()
{
    RenewDateNums();
    RebuildSysCllBtns();
}

// --- Dates

std::unique_ptr<VCDate> CDateBtnClass::ReadDate(const char* text) const
{
    SCDeclareConstant::SDateTypeInfo typeInfo;
    unsigned short len = 0;
    if (!GetLenOfDateText(text, len) || !srcDataMngr->GetDateTypeInfo(fldID, typeInfo))
        return nullptr;
    return VCDate::CreateDateObject(text, len, typeInfo);
}

void CDateBtnClass::GetBtnNameOrdList(unsigned int flags, std::vector<DWORD>& btnIDs) const
{
    ListByDate(flags, btnIDs, "NSKZ::NSKZCore::CDateBtnClass::GetBtnNameOrdList");
}

SCBUICoreCom::EBtnClassType CDateBtnClass::GetBtnClassType() const
{
    return SCBUICoreCom::BTNCLSTYPE_DATE;
}

// --- Groups by a part

bool CDateBtnClass::GetGroupedBtnIDLists(VCDate::EDateType dateType, CDateGroupMap& groups) const
{
    const SCriteria criteria = GetCriteria();
    CDate date;
    CFiscalYear fiscalYear;
    CFiscalMonth fiscalMonth;
    CHalfTerm halfTerm;
    CQuarterTerm quarterTerm;
    CWeekNum weekOfYear(CWeekNum::WEEKNUMTYPE_YEAR);
    CWeekNum weekOfMonth(CWeekNum::WEEKNUMTYPE_MONTH);
    CWeekNum weekOfFiscalYear(CWeekNum::WEEKNUMTYPE_FISCALYEAR);
    CWeekNum weekOfFiscalMonth(CWeekNum::WEEKNUMTYPE_FISCALMONTH);
    CDaysOfTheWeek daysOfTheWeek;
    DWORD part = 0;
    VCDate::EEra era = VCDate::ERA_UNSETTING;
    // Groups by what put(date of a button) stores in `object`: false if there is nothing to store.
    const auto groupBy = [&](const VCDate& object, const auto& put) {
        GroupDatesAnew([&](const VCDate& dateOfButton) { return put(dateOfButton) ? &object : nullptr; },
                       groups);
        return true;
    };

    switch (dateType) {
    case VCDate::DATETYPE_HOUR:
    case VCDate::DATETYPE_MINUTE:
    case VCDate::DATETYPE_SECOND:
    case VCDate::DATETYPE_TIMEBASEDONNOON:
        return false;
    case VCDate::DATETYPE_GRGYEAR:
        return groupBy(date, [&](const VCDate& given) {
            return given.GetYearOfTheGrgCalendar(part) && date.SetYearOfTheGrgCalendar(TakeGrgYear(part));
        });
    case VCDate::DATETYPE_JPNYEAR:
        return groupBy(date, [&](const VCDate& given) {
            return given.GetYearOfTheJpnCalendar(era, part) && date.SetYearOfTheJpnCalendar(era, part);
        });
    case VCDate::DATETYPE_MONTH:
        return groupBy(date,
                       [&](const VCDate& given) { return given.GetMonth(part) && date.SetMonth(part); });
    case VCDate::DATETYPE_DAY:
        return groupBy(date, [&](const VCDate& given) { return given.GetDay(part) && date.SetDay(part); });
    case VCDate::DATETYPE_FISCALGRGYEAR:
        return groupBy(fiscalYear, [&](const VCDate& given) {
            return given.GetFiscalYearOfTheGrgCalendar(criteria.startMonth, criteria.cutOffDate, part) &&
                   fiscalYear.SetFiscalYearOfTheGrgCalendar(TakeGrgYear(part));
        });
    case VCDate::DATETYPE_FISCALJPNYEAR:
        return groupBy(fiscalYear, [&](const VCDate& given) {
            return given.GetFiscalYearOfTheJpnCalendar(criteria.startMonth, criteria.cutOffDate, era, part) &&
                   fiscalYear.SetFiscalYearOfTheJpnCalendar(era, part);
        });
    case VCDate::DATETYPE_FISCALMONTH:
        return groupBy(fiscalMonth, [&](const VCDate& given) {
            return given.GetFiscalMonth(criteria.cutOffDate, part) && fiscalMonth.SetFiscalMonth(part);
        });
    case VCDate::DATETYPE_HALFTERM:
        return groupBy(halfTerm, [&](const VCDate& given) {
            return given.GetHalfTerm(criteria.startMonth, criteria.cutOffDate, part) &&
                   halfTerm.SetHalfTerm(part);
        });
    case VCDate::DATETYPE_QUARTERTERM:
        return groupBy(quarterTerm, [&](const VCDate& given) {
            return given.GetQuarterTerm(criteria.startMonth, criteria.cutOffDate, part) &&
                   quarterTerm.SetQuarterTerm(part);
        });
    case VCDate::DATETYPE_WEEKOFYEAR:
        return groupBy(weekOfYear, [&](const VCDate& given) {
            return given.GetWeekOfTheYear(criteria.daysOfTheWeek, part) && weekOfYear.SetWeekNum(part);
        });
    case VCDate::DATETYPE_WEEKOFMONTH:
        return groupBy(weekOfMonth, [&](const VCDate& given) {
            return given.GetWeekOfTheMonth(criteria.daysOfTheWeek, part) && weekOfMonth.SetWeekNum(part);
        });
    case VCDate::DATETYPE_WEEKOFFISCALYEAR:
        return groupBy(weekOfFiscalYear, [&](const VCDate& given) {
            return given.GetWeekOfTheFiscalYear(criteria.startMonth, criteria.cutOffDate,
                                                criteria.daysOfTheWeek, part) &&
                   weekOfFiscalYear.SetWeekNum(part);
        });
    case VCDate::DATETYPE_WEEKOFFISCALMONTH:
        return groupBy(weekOfFiscalMonth, [&](const VCDate& given) {
            return given.GetWeekOfTheFiscalMonth(criteria.cutOffDate, criteria.daysOfTheWeek, part) &&
                   weekOfFiscalMonth.SetWeekNum(part);
        });
    case VCDate::DATETYPE_DAYSOFWEEK:
        return groupBy(daysOfTheWeek, [&](const VCDate& given) {
            VCDate::EDaysOfTheWeek day = VCDate::DAYSOFWEEK_UNSETTING;
            return given.GetDaysOfTheWeek(day) && daysOfTheWeek.SetDaysOfTheWeek(day);
        });
    }
    throw ECAbnormalData(SCKZCoreStrDef::MSG_UNKNOWN_DATETYPE, SRC_FILE,
                         "NSKZ::NSKZCore::CDateBtnClass::GetGroupedBtnIDLists", __LINE__);
}

bool CDateBtnClass::GetGroupedBtnIDList(const VCDate& date, SCKZCoreCom::ECmpOperator cmpOperator,
                                        std::vector<DWORD>& btnIDs) const
{
    const VCDate* const firstDate = GetFirstDate();
    if (firstDate == nullptr || !VCDate::CheckDateInclusiveRelation(*firstDate, date))
        return false;
    const SCriteria criteria = GetCriteria();
    std::vector<DWORD> found;
    VisitDates([&](DWORD btnID, const VCDate& dateOfButton) {
        if (VCDate::CompareDate(dateOfButton, date, cmpOperator, criteria.startMonth, criteria.cutOffDate,
                                criteria.daysOfTheWeek))
            found.push_back(btnID);
    });
    btnIDs = std::move(found);
    return true;
}

// --- The latest

const VCDate* CDateBtnClass::GetLatestDate() const
{
    const auto btnIDs = btnOfDateNum.GetBtnIDs();
    for (std::size_t i = btnIDs.GetSize(); i-- != 0;) {
        if (const VCDate* const date = FindDate(btnIDs[i]))
            return date;
    }
    return nullptr;
}

bool CDateBtnClass::GetLatestBtn(const DWORD* btnIDs, DWORD count, DWORD& btnID,
                                 unsigned long long& dateNum) const
{
    const std::unordered_set<DWORD> given(btnIDs, btnIDs + count);
    const auto ordered = btnOfDateNum.GetBtnIDs();
    for (std::size_t i = ordered.GetSize(); i-- != 0;) {
        if (!given.contains(ordered[i]))
            continue;
        btnID = ordered[i];
        dateNum = btnOfDateNum.GetKeyOf(btnID);
        return true;
    }
    return false;
}

// --- Saved forms

VCDateTimeBtnClass::SGroupElements CDateBtnClass::GetGroupElements() const noexcept
{
    return {STR_ELENAME_DATECLLBTNS, STRLEN_ELENAME_DATECLLBTNS, STR_ELENAME_DATECLLBTN,
            STRLEN_ELENAME_DATECLLBTN};
}

bool CDateBtnClass::GetDispFormAttributes(Attributes& attributes) const
{
    return SCThemeIOStrDef::ConvertDateDispFormIntoXMLAttributes(dispForm, attributes);
}

bool CDateBtnClass::TakeDispFormFrom(const Attributes& attributes)
{
    SDispForm form;
    if (!SCThemeIOStrDef::ConvertXMLAttributesIntoDateDispForm(attributes, form) || !IsSet(form))
        return false;
    dispForm = form;
    return true;
}

} // namespace NSKZ::NSKZCore
