#ifndef TCDISPFORMBTNCLASS_H
#define TCDISPFORMBTNCLASS_H

#include "VCDateTimeBtnClass.h"

#include <cstring>

namespace NSKZ::NSKZCore {

// A class of dates or times with the display form of its kind: SCDeclareConstant::SDateDispForm or
// STimeDispForm.
template <class TDispForm>
class TCDispFormBtnClass : public VCDateTimeBtnClass
{
public:
    using SDispForm = TDispForm;
    using VCDateTimeBtnClass::VCDateTimeBtnClass;

    // Unset in a new class.
    const TDispForm& GetDispForm() const noexcept { return dispForm; }

    // Whether the pattern ends within its bytes; a form whose does not is to be refused before anything else.
    static bool IsPatternTerminated(const TDispForm& form) noexcept
    {
        return std::memchr(form.optionalForm, '\0', sizeof form.optionalForm) != nullptr;
    }

    // Stores the form and makes the groups anew, with buttons of their own: each gets the smallest free
    // identifier of a cll button, in the order of the dates, and the text of the group in that form. A form
    // that shows nothing makes no group, and a group for which no identifier is left gets no button. If
    // memory is exhausted nothing has changed; or there is no display form and no group with members; or all
    // is done and rows of records are outdated.
    void SetDispForm(const TDispForm& form)
    {
        const TDispForm newForm(form); // it may be the one held
        try {
            ResetAllSysCllBtns();
            dispForm = newForm;
            RebuildSysCllBtns();
        } catch (...) {
            // The same form asked for again is to make the groups.
            if (!HasGroupWithMembers())
                dispForm = TDispForm();
            throw;
        }
    }

    void UnsetDispForm() noexcept override { dispForm = TDispForm(); }

    void Clear() override
    {
        dispForm = TDispForm();
        VCDateTimeBtnClass::Clear();
    }

    void Copy(const VCBtnClass& other, const std::unique_ptr<IRpLink>& rpLinkOfEnv) override
    {
        if (&other == this)
            return;
        const auto& otherOfForm = dynamic_cast<const TCDispFormBtnClass&>(other);
        dispForm = TDispForm();
        VCDateTimeBtnClass::Copy(other, rpLinkOfEnv);
        dispForm = otherOfForm.dispForm;
    }

protected:
    bool HasDispForm() const noexcept override { return dispForm.kind != SCDeclareConstant::UNSETTING; }

    // Whether a code of a display form is set: the two greatest numbers stand for none.
    static bool IsSetCode(DWORD code) noexcept { return code < SCDeclareConstant::UNSETTING - 1; }

    TDispForm dispForm;
};

} // namespace NSKZ::NSKZCore

#endif
