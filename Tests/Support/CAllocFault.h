#ifndef CALLOCFAULT_H
#define CALLOCFAULT_H

#include <cstddef>
#include <new>

namespace NSKZ::NSKZCore {

// Lets memory run dry at a chosen allocation of the calling thread, and counts what is allocated. Operator
// new and the heap of the engine's resizable arrays (SCMemory) count in one sequence. Linking this class
// replaces the global operator new; nothing fails unless an object of it has been armed. One object at a
// time.
class CAllocFault
{
public:
    CAllocFault() noexcept;
    ~CAllocFault(); // disarms
    CAllocFault(const CAllocFault&) = delete;
    CAllocFault& operator=(const CAllocFault&) = delete;

    // The `nth` allocation from now on, counted from 1, fails, and no other. The count of allocations starts
    // at 0.
    void Arm(std::size_t nth) noexcept;
    // The same, and every one behind it fails too.
    void ArmFrom(std::size_t nth) noexcept;
    // No allocation fails. Returns whether one had.
    bool Disarm() noexcept;
    // How many allocations and reallocations there have been since the last Arm or the start.
    std::size_t GetAllocCount() const noexcept;
    // Blocks allocated less blocks released since the start: what an operation leaks stays in the difference.
    std::ptrdiff_t GetLiveBlockCount() const noexcept;

    // The most bytes that have been asked for at once since the last Arm or the start.
    std::size_t GetLargestSize() const noexcept;

    // Calls test(attempt) once for each allocation that an operation makes, that one failing, and once more
    // with none failing. `test` prepares, calls attempt(operation) and looks at what it says: true if the
    // operation came to its end, which it may in spite of a failure, false if it ended in std::bad_alloc.
    // Returns how many allocations failed.
    template <class TTest>
    std::size_t FailEachInTurn(TTest&& test)
    {
        for (std::size_t nth = 1;; ++nth) {
            bool hadFailure = false;
            test([&](auto&& operation) {
                bool completed = false;
                Arm(nth);
                try {
                    operation();
                    completed = true;
                } catch (const std::bad_alloc&) {
                } catch (...) {
                    Disarm();
                    throw;
                }
                hadFailure = Disarm();
                return completed;
            });
            if (!hadFailure)
                return nth - 1;
        }
    }
};

} // namespace NSKZ::NSKZCore

namespace NSKZ::Test {

// Runs an operation with its first allocation failing, then its second, until it gets through with none
// failing. `prepare` makes what the operation works on; `operate(subject)` runs it; `prove(subject)` is
// called whenever an allocation failed and looks whether all is as it was. Returns the number of failures, or
// -1 if an exception other than std::bad_alloc came out, a failure was swallowed, or memory was lost.
template <class TPrepare, class TOperate, class TProve>
int FailEveryAllocation(TPrepare prepare, TOperate operate, TProve prove)
{
    {
        auto subject = prepare(); // what is made once in a process is made here
        operate(subject);
    }
    for (std::size_t nth = 1;; ++nth) {
        NSKZ::NSKZCore::CAllocFault fault;
        bool failed = false;
        bool thrown = false;
        {
            auto subject = prepare();
            try {
                fault.Arm(nth);
                try {
                    operate(subject);
                } catch (const std::bad_alloc&) {
                    thrown = true;
                }
                failed = fault.Disarm();
            } catch (...) {
                fault.Disarm();
                return -1;
            }
            if (thrown)
                prove(subject);
        }
        if (failed != thrown || fault.GetLiveBlockCount() != 0)
            return -1;
        if (!failed)
            return static_cast<int>(nth - 1);
    }
}

} // namespace NSKZ::Test

#endif
