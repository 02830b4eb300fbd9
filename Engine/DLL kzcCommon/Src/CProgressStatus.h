#ifndef CPROGRESSSTATUS_H
#define CPROGRESSSTATUS_H

#include "KzcCommonAPI.h"

#include <atomic>
#include <string>

namespace NSKZ::NSKZCore {

// How far a long operation has come, and the wish to stop it. The operation runs on one thread and writes;
// the host may read `presentValue` and set `canceled` from another one, or from a signal handler. To be told
// of every step on the same thread, a host overrides OnProgress.
class KZCCOMMON_API CProgressStatus
{
public:
    // `maxValue`: the value of a process that has reached its end. Throws std::invalid_argument for 0.
    explicit CProgressStatus(DWORD maxValue = 10000);
    virtual ~CProgressStatus();
    CProgressStatus(const CProgressStatus&) = delete;
    CProgressStatus& operator=(const CProgressStatus&) = delete;

    // The range of the running process: presentValue goes from 0 to it.
    DWORD GetMaxValueOfPresentProc() const noexcept;

    // The share of the whole, in percent, that the running process has: 100 at first. Setting one above 100
    // is refused with false.
    unsigned int GetRatioOfPresentProc() const noexcept;
    bool SetRatioOfPresentProc(unsigned int ratio) noexcept;

    // The name of the running process, to be shown; Shift-JIS.
    void SetNameOfPresentProc(const std::string& name);
    const std::string& GetNameOfPresentProc() const noexcept;

    // Ends the running process: the next one starts at value 0.
    void EndPresentProc();

    // Stores `value` and calls OnProgress.
    void SetPresentValue(DWORD value);

    std::atomic<DWORD> presentValue; // 0 to maxValueOfPresentProc
    DWORD maxValueOfPresentProc;
    std::atomic<bool> canceled; // set by the host: the operation stops at its next step

protected:
    // Called on the operation's thread after presentValue, the name or the end of a process changed. The base
    // does nothing. It must not throw.
    virtual void OnProgress() noexcept;

private:
    unsigned int ratioOfPresentProc;
    std::string nameOfPresentProc;
};

} // namespace NSKZ::NSKZCore

#endif
