#ifndef CTIMEBTNCLASS_H
#define CTIMEBTNCLASS_H

#include "VCSrcBtnClass.h"

namespace NSKZ::NSKZCore {

// The button class of a time field: its buttons are the distinct time texts of the field.
class CTimeBtnClass final : public VCSrcBtnClass
{
public:
    using VCSrcBtnClass::VCSrcBtnClass;

    SCBUICoreCom::EBtnClassType GetBtnClassType() const override;
};

} // namespace NSKZ::NSKZCore

#endif
