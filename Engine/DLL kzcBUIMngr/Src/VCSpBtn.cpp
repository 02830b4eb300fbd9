#include "VCSpBtn.h"

#include <algorithm>

namespace NSKZ::NSKZCore {

VCSpBtn::VCSpBtn(DWORD btnID, EMmbBtnSelMth selMth)
    : VCBtn(btnID, nullptr), mmbBtnSelMth(selMth), createTime(GetPresentTime()), updateTime(createTime)
{}

VCSpBtn::~VCSpBtn() = default;

void VCSpBtn::Clear()
{
    VCBtn::Clear();
    mmbBtnIDList.clear();
    effective = true;
    mmbBtnSelMth = MMBBTNSELMTH_SELECT;
    mmbBtnCnd.reset();
    createTime = 0;
    updateTime = 0;
    isRowOutdated = false;
}

void VCSpBtn::ClearOfFixedSpec()
{
    Clear();
}

bool VCSpBtn::HasMember(DWORD btnID) const noexcept
{
    return std::find(mmbBtnIDList.begin(), mmbBtnIDList.end(), btnID) != mmbBtnIDList.end();
}

std::int64_t VCSpBtn::GetPresentTime() noexcept
{
    return _time64(nullptr);
}

void VCSpBtn::CopySpBtn(const VCSpBtn& other)
{
    std::vector<DWORD> members(other.mmbBtnIDList);
    BtnCndPtr cnd(other.mmbBtnCnd == nullptr ? nullptr : other.mmbBtnCnd->CreateClone());
    VCBtn::Copy(other);
    effective = other.effective;
    mmbBtnSelMth = other.mmbBtnSelMth;
    mmbBtnIDList = std::move(members);
    mmbBtnCnd = std::move(cnd);
    isRowOutdated = other.isRowOutdated;
}

} // namespace NSKZ::NSKZCore
