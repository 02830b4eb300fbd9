#ifndef CDATEBTNCLASS_H
#define CDATEBTNCLASS_H

#include "VCSrcBtnClass.h"

namespace NSKZ::NSKZCore {

// The button class of a date field: its buttons are the distinct date texts of the field.
class CDateBtnClass final : public VCSrcBtnClass
{
public:
    using VCSrcBtnClass::VCSrcBtnClass;

    SCBUICoreCom::EBtnClassType GetBtnClassType() const override;
};

} // namespace NSKZ::NSKZCore

#endif
