// Records what LCMapStringA makes of every character of code page 932 on a Japanese Windows or what stands
// for one: a line for each character and set of flags that changes it, as Tests/Data/lcmap_cp932.tsv has
// them. Compiled for Windows; run by script/test --windows-text.

#include <windows.h>

#include <cstdio>
#include <cstring>

namespace {

void PrintHex(const unsigned char* bytes, int count)
{
    for (int i = 0; i < count; ++i)
        std::printf("%02x", bytes[i]);
}

// One of two bytes, or of one.
void Record(const unsigned char* character, int count)
{
    for (int flags = 1; flags <= 7; ++flags) {
        const DWORD mapFlags = ((flags & 1) != 0 ? LCMAP_HALFWIDTH : 0) |
                               ((flags & 2) != 0 ? LCMAP_KATAKANA : 0) |
                               ((flags & 4) != 0 ? LCMAP_LOWERCASE : 0);
        unsigned char mapped[16];
        const int mappedCount =
            LCMapStringA(GetUserDefaultLCID(), mapFlags, reinterpret_cast<const char*>(character), count,
                         reinterpret_cast<char*>(mapped), sizeof mapped);
        if (mappedCount == count && std::memcmp(mapped, character, static_cast<std::size_t>(count)) == 0)
            continue;
        PrintHex(character, count);
        std::printf("\t%d\t", flags);
        PrintHex(mapped, mappedCount);
        std::printf("\n");
    }
}

// Whether the code page has the character: others are no text.
bool IsCharacter(const unsigned char* character, int count)
{
    wchar_t wide[4];
    return MultiByteToWideChar(932, MB_ERR_INVALID_CHARS, reinterpret_cast<const char*>(character), count,
                               wide, 4) == 1;
}

} // namespace

int main()
{
    if (GetACP() != 932) {
        std::fprintf(stderr, "lcmap_probe: the system's code page is %u, not 932\n", GetACP());
        return 2;
    }
    for (int first = 1; first < 0x100; ++first) {
        unsigned char character[2] = {static_cast<unsigned char>(first), 0};
        if (!IsDBCSLeadByteEx(932, character[0])) {
            if (IsCharacter(character, 1))
                Record(character, 1);
            continue;
        }
        for (int second = 0x40; second <= 0xFC; ++second) {
            character[1] = static_cast<unsigned char>(second);
            if (second != 0x7F && IsCharacter(character, 2))
                Record(character, 2);
        }
    }
    return 0;
}
