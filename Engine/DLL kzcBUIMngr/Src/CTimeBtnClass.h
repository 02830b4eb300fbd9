#ifndef CTIMEBTNCLASS_H
#define CTIMEBTNCLASS_H

#include "TCDispFormBtnClass.h"

namespace NSKZ::NSKZCore {

// The button class of a time field: its buttons are the distinct time texts of the field. Groups are those of
// SCDispForm; the calendar criteria have no part in them.
class CTimeBtnClass final : public TCDispFormBtnClass<SCDeclareConstant::STimeDispForm>
{
public:
    using TCDispFormBtnClass::TCDispFormBtnClass;

    void GetBtnNameOrdList(unsigned int flags, std::vector<DWORD>& btnIDs) const override;
    SCBUICoreCom::EBtnClassType GetBtnClassType() const override;

    // Whether kind and form are set and the pattern ends within its bytes.
    static bool IsSet(const SDispForm& form) noexcept;

    // As that of CDateBtnClass, for hour, minute, second, and morning or afternoon. False, with `groups`
    // untouched, for every other type, one that is none among them.
    bool GetGroupedBtnIDLists(VCDate::EDateType dateType, CDateGroupMap& groups) const;

    // The elements of the groups in the fixed form.
    static constexpr char STR_ELENAME_TIMECLLBTNS[] = "TimeCllBtns";
    static constexpr DWORD STRLEN_ELENAME_TIMECLLBTNS = sizeof STR_ELENAME_TIMECLLBTNS - 1;
    static constexpr char STR_ELENAME_TIMECLLBTN[] = "TimeCllBtn";
    static constexpr DWORD STRLEN_ELENAME_TIMECLLBTN = sizeof STR_ELENAME_TIMECLLBTN - 1;

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
