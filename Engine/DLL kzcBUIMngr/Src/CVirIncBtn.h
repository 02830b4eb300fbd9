#ifndef CVIRINCBTN_H
#define CVIRINCBTN_H

#include "VCSpBtn.h"

namespace NSKZ::NSKZCore {

// The special button of a virtual class: its members are buttons of another class, the one it refers to, and
// stay displayed there. Each of them names it among its holders of other classes.
class CVirIncBtn final : public VCSpBtn
{
public:
    CVirIncBtn(DWORD id, EMmbBtnSelMth selMth, DWORD refBtnClassID, bool commonBtn);

    void Clear() override;
    // A button of a common virtual class keeps its definition; one of a fixed virtual class is emptied.
    void ClearOfFixedSpec() override;
    SCBUICoreCom::EBtnType GetType() const override;
    // The clone is made now: neither time is taken over.
    std::unique_ptr<VCBtn> Clone() const override;

    DWORD refBtnClassID; // the class whose buttons are the members; 0 while nothing has been read, and once
                         // it is gone
    bool commonBtn;      // whether it belongs to a common virtual class
};

} // namespace NSKZ::NSKZCore

#endif
