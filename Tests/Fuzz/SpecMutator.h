#ifndef SPECMUTATOR_H
#define SPECMUTATOR_H

#include "Support/XMLDamage.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <utility>

// How the fuzzer changes an input of a flag byte and a document: it damages the document in its elements and
// attributes, and now and then in its bytes. For one source of a target.

// The fuzzer's own; null in a program that runs seeds.
extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize)
    __attribute__((weak));

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned int seed)
{
    std::mt19937 random(seed);
    const auto chooseBelow = [&random](std::size_t bound) { return random() % bound; };
    if (size < 2 || chooseBelow(4) == 0)
        return LLVMFuzzerMutate(data, size, maxSize);
    std::string document(data + 1, data + size);
    for (std::size_t left = 1 + chooseBelow(4); left > 0; --left) {
        std::string damaged = NSKZ::Test::TXMLDamage(document, chooseBelow).Damage();
        if (damaged.size() < maxSize)
            document = std::move(damaged);
    }
    std::memcpy(data + 1, document.data(), document.size());
    return document.size() + 1;
}

#endif
