#ifndef CINCBTN_H
#define CINCBTN_H

#include "VCSpBtn.h"

namespace NSKZ::NSKZCore {

// An extra button beside its members: pressing it covers the records of all of them. The members stay on
// screen if `dispMember` is set; otherwise they are hidden, unless another inc button that displays its
// members holds them.
class CIncBtn final : public VCSpBtn
{
public:
    CIncBtn(DWORD id, EMmbBtnSelMth selMth);

    void Clear() override;
    SCBUICoreCom::EBtnType GetType() const override;
    // The clone is made now: neither time is taken over.
    std::unique_ptr<VCBtn> Clone() const override;

    bool dispMember = false;
};

} // namespace NSKZ::NSKZCore

#endif
