#ifndef CCHARMAP_H
#define CCHARMAP_H

#include "KzcPlatform.h"

#if !defined(_WIN32)

#include <cstddef>
#include <memory>

// What LCMapStringA makes of each character of a code page under a set of its flags: lower case first, then
// katakana, then half width. Made once for a code page and a set of flags, and kept.
//
// The mappings are those of a Japanese Windows, where they go by way of Unicode. A character that code page
// 932 has twice becomes the one that Windows prefers under any flag, and one whose half-width form the code
// page lacks becomes a question mark, unless it has an old substitute. Bytes that are no character stay.
class CCharMap
{
public:
    // Of LCMAP_HALFWIDTH, LCMAP_KATAKANA and LCMAP_LOWERCASE one or more; the code page is 932 or 65001. The
    // first call for a pair builds the map (half a megabyte, some tens of milliseconds) and throws what
    // SCCodePageText throws; then nothing is done and the call does not throw. Any number of threads.
    static const CCharMap& Get(int codePage, DWORD mapFlags);

    // Maps `count` bytes at `text` to `mapped`, which has room for `room` bytes. Returns how many bytes there
    // are; nothing is written behind `room`, and what does not fit is only counted. The texts do not overlap.
    std::size_t Map(const char* text, std::size_t count, char* mapped, std::size_t room) const noexcept;

private:
    struct SMapped;

    CCharMap(int codePage, DWORD mapFlags);
    void MakeShiftJIS(DWORD mapFlags);
    void MakeUTF8(DWORD mapFlags);
    template <bool IS_UTF8>
    std::size_t MapText(const char* text, std::size_t count, char* mapped, std::size_t room) const noexcept;
    template <bool IS_UTF8>
    const SMapped& Find(const char* text, std::size_t count, std::size_t& len) const noexcept;

    bool isUTF8;
    std::unique_ptr<SMapped[]> entries; // by code in 932, by character in UTF-8
};

#endif

#endif
