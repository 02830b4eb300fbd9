#ifndef SCBENCHHEAP_H
#define SCBENCHHEAP_H

#include <cstddef>
#include <malloc.h>

// The heap of a benchmark.
class SCBenchHeap
{
public:
    SCBenchHeap() = delete;

    // The bytes that are allocated, with what the allocator adds to each block for itself.
    static std::size_t GetBytesInUse()
    {
        const struct mallinfo2 info = mallinfo2();
        return info.uordblks + info.hblkhd;
    }
};

#endif
