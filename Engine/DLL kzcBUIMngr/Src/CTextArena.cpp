#include "CTextArena.h"

#include <cstring>
#include <utility>

namespace NSKZ::NSKZCore {

namespace {

constexpr std::size_t SMALLEST_BLOCK = 1024;
constexpr std::size_t LARGEST_BLOCK = std::size_t{1} << 20;

} // namespace

CTextArena::CTextArena(CTextArena&& other) noexcept
    : blocks(std::move(other.blocks)), next(std::exchange(other.next, nullptr)),
      room(std::exchange(other.room, 0))
{
    other.blocks.clear();
}

CTextArena& CTextArena::operator=(CTextArena&& other) noexcept
{
    CTextArena taken(std::move(other));
    blocks.swap(taken.blocks);
    next = taken.next;
    room = taken.room;
    return *this;
}

const char* CTextArena::Add(const char* text)
{
    if (text == nullptr)
        return nullptr;
    const std::size_t size = std::strlen(text) + 1;
    if (size > room) {
        // Blocks grow with the arena: a small class costs little, a large one few blocks.
        std::size_t blockSize = SMALLEST_BLOCK << (blocks.size() < 10 ? blocks.size() : 10);
        blockSize = blockSize < LARGEST_BLOCK ? blockSize : LARGEST_BLOCK;
        blockSize = blockSize < size ? size : blockSize;
        std::unique_ptr<char[]> block(new char[blockSize]);
        blocks.push_back(std::move(block));
        next = blocks.back().get();
        room = blockSize;
    }
    char* const copy = next;
    std::memcpy(copy, text, size);
    next += size;
    room -= size;
    return copy;
}

void CTextArena::Clear() noexcept
{
    blocks.clear();
    next = nullptr;
    room = 0;
}

} // namespace NSKZ::NSKZCore
