#include "CProgressStatus.h"

#include <stdexcept>

namespace NSKZ::NSKZCore {

namespace {

constexpr unsigned int RATIO_OF_WHOLE = 100;

DWORD ProveMaxValue(DWORD maxValue)
{
    if (maxValue == 0)
        throw std::invalid_argument("CProgressStatus: the maximum of a process is above 0");
    return maxValue;
}

} // namespace

CProgressStatus::CProgressStatus(DWORD maxValue)
    : presentValue(0), maxValueOfPresentProc(ProveMaxValue(maxValue)), canceled(false),
      ratioOfPresentProc(RATIO_OF_WHOLE)
{}

CProgressStatus::~CProgressStatus() = default;

DWORD CProgressStatus::GetMaxValueOfPresentProc() const noexcept
{
    return maxValueOfPresentProc;
}

unsigned int CProgressStatus::GetRatioOfPresentProc() const noexcept
{
    return ratioOfPresentProc;
}

bool CProgressStatus::SetRatioOfPresentProc(unsigned int ratio) noexcept
{
    if (ratio > RATIO_OF_WHOLE)
        return false;
    ratioOfPresentProc = ratio;
    return true;
}

void CProgressStatus::SetNameOfPresentProc(const std::string& name)
{
    nameOfPresentProc = name;
    OnProgress();
}

const std::string& CProgressStatus::GetNameOfPresentProc() const noexcept
{
    return nameOfPresentProc;
}

void CProgressStatus::EndPresentProc()
{
    SetPresentValue(0);
}

void CProgressStatus::SetPresentValue(DWORD value)
{
    presentValue = value;
    OnProgress();
}

void CProgressStatus::OnProgress() noexcept {}

} // namespace NSKZ::NSKZCore
