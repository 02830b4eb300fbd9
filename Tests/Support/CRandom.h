#ifndef CRANDOM_H
#define CRANDOM_H

#include "KzcPlatform.h"

#include <cstdlib>
#include <iostream>
#include <random>
#include <string>

namespace NSKZ::NSKZCore {

// Random numbers of one test run. The seed is printed; the environment variable KZC_SEED repeats a run.
class CRandom
{
public:
    CRandom() : CRandom(ChooseSeed()) {}
    explicit CRandom(unsigned int seedOfRun) : seed(seedOfRun), generator(seedOfRun)
    {
        std::cout << "seed " << seed << '\n';
    }

    unsigned int GetSeed() const noexcept { return seed; }

    // A number from 0 to `bound` - 1, all alike; `bound` is above 0.
    DWORD GetBelow(DWORD bound) { return static_cast<DWORD>(generator() % bound); }
    // True once in `times`.
    bool IsOneOf(DWORD times) { return GetBelow(times) == 0; }

private:
    static unsigned int ChooseSeed()
    {
        const char* const given = std::getenv("KZC_SEED");
        return given != nullptr ? static_cast<unsigned int>(std::stoul(given)) : std::random_device()();
    }

    unsigned int seed;
    std::mt19937 generator;
};

} // namespace NSKZ::NSKZCore

#endif
