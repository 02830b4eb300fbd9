#ifndef CBTNCLASS_H
#define CBTNCLASS_H

#include "VCSrcBtnClass.h"

namespace NSKZ::NSKZCore {

// The button class of a text field.
class CBtnClass final : public VCSrcBtnClass
{
public:
    using VCSrcBtnClass::VCSrcBtnClass;

    SCBUICoreCom::EBtnClassType GetBtnClassType() const override;
};

} // namespace NSKZ::NSKZCore

#endif
