#include "CTimeBtnClass.h"

#include "CConvertTime.h"
#include "CDate.h"
#include "CSourceDataMngr.h"
#include "CTimeBasedOnNoon.h"
#include "SCDispForm.h"
#include "SCThemeIOStrDef.h"

namespace NSKZ::NSKZCore {

namespace {

constexpr DWORD HOURS_OF_DAY = 24;
constexpr DWORD NOON = 12;

// What the group of a form takes of a time.
struct STimeForm
{
    bool hasHour;
    bool isHourOfDay; // modulo 24
    DWORD minuteStep;
    bool hasSecond;
};

// False for a form that there is not.
bool GetTimeForm(DWORD form, STimeForm& timeForm) noexcept
{
    constexpr DWORD MINUTE_STEPS[] = {1, 1, 5, 10, 15, 20, 30}; // of two forms each
    constexpr DWORD FORM_WITHOUT_HOUR = 14;
    if (form > FORM_WITHOUT_HOUR)
        return false;
    if (form == FORM_WITHOUT_HOUR)
        timeForm = {false, false, 1, true};
    else
        timeForm = {true, form % 2 == 1, MINUTE_STEPS[form / 2], form < 2};
    return true;
}

// What makes group dates: puts the part that a getter gives into `object`, which is the date of the group.
template <class TObject, class TPart>
auto TakePart(bool (VCDate::*get)(TPart&) const noexcept, TObject& object,
              bool (TObject::*set)(TPart) noexcept)
{
    return [=, &object](const VCDate& time) -> const VCDate* {
        TPart part{};
        return (time.*get)(part) && (object.*set)(part) ? &object : nullptr;
    };
}

} // namespace

class CTimeBtnClass::CGroupMaker final : public VCGroupMaker
{
public:
    explicit CGroupMaker(const SCDeclareConstant::STimeTypeInfo& typeInfo)
        : dispForm(typeInfo.dispForm), convertTime(typeInfo)
    {}

    const VCDate* MakeGroupDate(const VCDate& time) override { return CreateTimeOfDispForm(time); }

    std::string MakeName(const VCDate& ofGroup) const override
    {
        std::string name(std::size_t{convertTime.GetMaxLenOfTimeString()} + 1, '\0');
        return convertTime.ConvertTimeString(ofGroup, name.data(), static_cast<DWORD>(name.size()))
                   ? std::string(name.c_str())
                   : std::string();
    }

private:
    // The time of the group, in an object used again and again; null if a part that the form needs is not
    // held.
    const VCDate* CreateTimeOfDispForm(const VCDate& time) noexcept
    {
        groupTime.Clear();
        if (dispForm.kind == SCDispForm::TIMEKIND_ASITIS)
            return &time;
        const bool isMade =
            dispForm.kind == SCDispForm::TIMEKIND_OPTIONAL ? TakePartsOfPattern(time) : TakePartsOfForm(time);
        return isMade ? &groupTime : nullptr;
    }

    bool TakePartsOfPattern(const VCDate& time) noexcept
    {
        DWORD hour = 0;
        DWORD minute = 0;
        DWORD second = 0;
        VCDate::ETimeBasedOnNoon partOfDay = VCDate::TIMEBASEDONNOON_UNSETTING;
        if (convertTime.IsUsedHourForOptionalForm()) {
            if (!time.GetHour(hour))
                return false;
            groupTime.SetHour(convertTime.IsUsed12HourForOptionalForm() ? hour % HOURS_OF_DAY : hour);
        } else if (convertTime.IsUsedAMPMForOptionalForm()) {
            if (!time.GetTimeBasedOnNoon(partOfDay))
                return false;
            groupTime.SetHour(partOfDay == VCDate::TIMEBASEDONNOON_MORNING ? 0 : NOON);
        }
        if (convertTime.IsUsedMinuteForOptionalForm()) {
            if (!time.GetMinute(minute))
                return false;
            groupTime.SetMinute(minute);
        }
        if (convertTime.IsUsedSecondForOptionalForm()) {
            if (!time.GetSecond(second))
                return false;
            groupTime.SetSecond(second);
        }
        return true;
    }

    bool TakePartsOfForm(const VCDate& time) noexcept
    {
        STimeForm form{};
        DWORD hour = 0;
        DWORD minute = 0;
        DWORD second = 0;
        if (!GetTimeForm(dispForm.form, form) || (form.hasHour && !time.GetHour(hour)) ||
            !time.GetMinute(minute) || (form.hasSecond && !time.GetSecond(second)))
            return false;
        if (form.hasHour)
            groupTime.SetHour(form.isHourOfDay ? hour % HOURS_OF_DAY : hour);
        groupTime.SetMinute(minute - minute % form.minuteStep);
        if (form.hasSecond)
            groupTime.SetSecond(second);
        return true;
    }

    SDispForm dispForm;
    CConvertTime convertTime;
    CDate groupTime;
};

void CTimeBtnClass::GetBtnNameOrdList(unsigned int flags, std::vector<DWORD>& btnIDs) const
{
    ListByDate(flags, btnIDs, "NSKZ::NSKZCore::CTimeBtnClass::GetBtnNameOrdList");
}

SCBUICoreCom::EBtnClassType CTimeBtnClass::GetBtnClassType() const
{
    return SCBUICoreCom::BTNCLSTYPE_TIME;
}

bool CTimeBtnClass::IsSet(const SDispForm& form) noexcept
{
    return IsSetCode(form.kind) && IsSetCode(form.form) && IsPatternTerminated(form);
}

std::unique_ptr<VCDate> CTimeBtnClass::ReadDate(const char* text) const
{
    SCDeclareConstant::STimeTypeInfo typeInfo;
    unsigned short len = 0;
    if (!GetLenOfDateText(text, len) || !srcDataMngr->GetTimeTypeInfo(fldID, typeInfo))
        return nullptr;
    return VCDate::CreateTimeObject(text, len, typeInfo);
}

std::unique_ptr<VCDateTimeBtnClass::VCGroupMaker> CTimeBtnClass::CreateGroupMaker() const
{
    SCDeclareConstant::STimeTypeInfo typeInfo;
    if (!HasDispForm() || srcDataMngr == nullptr || !srcDataMngr->GetTimeTypeInfo(fldID, typeInfo))
        return nullptr;
    typeInfo.dispForm = dispForm;
    return std::make_unique<CGroupMaker>(typeInfo);
}

bool CTimeBtnClass::GetGroupedBtnIDLists(VCDate::EDateType dateType, CDateGroupMap& groups) const
{
    CDate time;
    CTimeBasedOnNoon partOfDay;
    switch (dateType) {
    case VCDate::DATETYPE_HOUR:
        GroupDatesAnew(TakePart(&VCDate::GetHour, time, &CDate::SetHour), groups);
        return true;
    case VCDate::DATETYPE_MINUTE:
        GroupDatesAnew(TakePart(&VCDate::GetMinute, time, &CDate::SetMinute), groups);
        return true;
    case VCDate::DATETYPE_SECOND:
        GroupDatesAnew(TakePart(&VCDate::GetSecond, time, &CDate::SetSecond), groups);
        return true;
    case VCDate::DATETYPE_TIMEBASEDONNOON:
        GroupDatesAnew(
            TakePart(&VCDate::GetTimeBasedOnNoon, partOfDay, &CTimeBasedOnNoon::SetTimeBasedOnNoon), groups);
        return true;
    default:
        return false;
    }
}

// --- Saved forms

VCDateTimeBtnClass::SGroupElements CTimeBtnClass::GetGroupElements() const noexcept
{
    return {STR_ELENAME_TIMECLLBTNS, STRLEN_ELENAME_TIMECLLBTNS, STR_ELENAME_TIMECLLBTN,
            STRLEN_ELENAME_TIMECLLBTN};
}

bool CTimeBtnClass::GetDispFormAttributes(Attributes& attributes) const
{
    return SCThemeIOStrDef::ConvertTimeDispFormIntoXMLAttributes(dispForm, attributes);
}

bool CTimeBtnClass::TakeDispFormFrom(const Attributes& attributes)
{
    SDispForm form;
    if (!SCThemeIOStrDef::ConvertXMLAttributesIntoTimeDispForm(attributes, form) || !IsSet(form))
        return false;
    dispForm = form;
    return true;
}

} // namespace NSKZ::NSKZCore
