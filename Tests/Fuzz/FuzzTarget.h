#ifndef FUZZTARGET_H
#define FUZZTARGET_H

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

// What every fuzz target has: it takes one input and returns 0, or ends the program where something is not
// as it must be. The fuzzer calls it with inputs of its own, CorpusRunner.cpp with the files of a corpus.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace NSKZ::Test {

// Ends the program, saying what does not hold, unless `holds`.
inline void Require(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "required: %s\n", what);
    std::abort();
}

} // namespace NSKZ::Test

#endif
