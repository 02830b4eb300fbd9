#ifndef VCSPBTN_H
#define VCSPBTN_H

#include "IBtnCnd.h"
#include "VCBtn.h"

#include <cstdint>
#include <vector>

namespace NSKZ::NSKZCore {

// A button that a user made to stand for other buttons of its class, its members: picked by hand, or by a
// condition on sums. Members may be special buttons themselves. The class keeps both ways of a membership in
// step: the list here, and the back-references of the members.
//
// An ineffective special button keeps its members and the buttons that held it, and takes no part in anything
// until it is effective again.
class VCSpBtn : public VCBtn
{
public:
    // How members are picked.
    enum EMmbBtnSelMth : DWORD
    {
        MMBBTNSELMTH_SELECT = 1,    // by hand: the list is the user's
        MMBBTNSELMTH_CONDITION = 2, // by the condition: the list is what it last gave
    };

    // An effective button without members, made now.
    VCSpBtn(DWORD id, EMmbBtnSelMth selMth);
    ~VCSpBtn() override;

    void Clear() override;
    void ClearOfFixedSpec() override;
    bool IsEffective() const noexcept override { return effective; }

    // Whether the list holds the button. Linear in the members.
    bool HasMember(DWORD btnID) const noexcept;
    // The present moment, in seconds since 1970, UTC.
    static std::int64_t GetPresentTime() noexcept;

    EMmbBtnSelMth mmbBtnSelMth;
    bool effective = true;
    // Whether the class's row of records of this button is behind its members (see VCBtnClass).
    bool isRowOutdated = false;
    mutable bool isVisited = false;  // by a walk through the nesting; false between walks
    std::vector<DWORD> mmbBtnIDList; // in the order given, each once
    BtnCndPtr mmbBtnCnd;             // may be null
    std::int64_t createTime;         // in seconds since 1970, UTC
    std::int64_t updateTime; // when members, condition, effectiveness or display of members last changed

protected:
    // What the clone of a special button takes over beside what VCBtn::Copy does; its times stay its own. A
    // condition that is absent is cloned as absent. If memory is exhausted the button is as it was.
    void CopySpBtn(const VCSpBtn& other);
};

} // namespace NSKZ::NSKZCore

#endif
