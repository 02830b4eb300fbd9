#ifndef CALLOCFAULT_H
#define CALLOCFAULT_H

#include <cstddef>
#include <new>

namespace NSKZ::Test {

// Makes memory run out on purpose. A program that links it has every operator new counted here, and one of
// them fails where a test has asked for it. Other allocations of the code under test, by malloc, take part by
// asking Pass() first.
class CAllocFault
{
public:
    // From now on the n-th allocation of this thread fails, counted from 1, and the ones before and after it
    // do not. While the object lives, that is.
    explicit CAllocFault(std::size_t n) noexcept;
    ~CAllocFault();
    CAllocFault(const CAllocFault&) = delete;
    CAllocFault& operator=(const CAllocFault&) = delete;

    // Whether the allocation came that was to fail.
    bool HasFailed() const noexcept;

    // Counts an allocation of this thread; false if it is the one that has to fail.
    static bool Pass() noexcept;

    // How many allocations by operator new, of all threads, have not been given back.
    static std::size_t GetLiveCount() noexcept;
};

// Runs an operation with its first allocation failing, then its second, until it gets through with none
// failing. `prepare` makes what the operation works on; `operate(subject)` runs it; `prove(subject)` is
// called whenever an allocation failed and looks whether all is as it was. Returns the number of failures, or
// -1 if an exception other than std::bad_alloc came out, a failure was swallowed, or memory was lost.
template <typename TPrepare, typename TOperate, typename TProve>
int FailEveryAllocation(TPrepare prepare, TOperate operate, TProve prove)
{
    {
        auto subject = prepare();
        operate(subject);
    }
    for (std::size_t n = 1;; ++n) {
        const std::size_t liveBefore = CAllocFault::GetLiveCount();
        bool failed = false;
        bool thrown = false;
        {
            auto subject = prepare();
            try {
                CAllocFault fault(n);
                try {
                    operate(subject);
                } catch (const std::bad_alloc&) {
                    thrown = true;
                }
                failed = fault.HasFailed();
            } catch (...) {
                return -1;
            }
            if (thrown)
                prove(subject);
        }
        if (failed != thrown || CAllocFault::GetLiveCount() != liveBefore)
            return -1;
        if (!failed)
            return static_cast<int>(n - 1);
    }
}

} // namespace NSKZ::Test

#endif
