// What the system's libraries call of Windows, under its Windows names.
//
// On Windows this header is the system's own; elsewhere this layer supplies the same names with the same
// behaviour, for as much of them as the libraries call. Nothing outside this layer asks which system it is
// compiled for.
//
// Text is in the code page that _setmbcp has chosen: 932 (Shift-JIS as Windows has it) until then, or 65001
// (UTF-8). The code page is one per process; set it before texts of that code page are handed in.

#ifndef KZCPLATFORM_H
#define KZCPLATFORM_H

#if defined(_WIN32)

#define NOMINMAX
#include <windows.h>

#include <float.h>
#include <mbctype.h>
#include <mbstring.h>
#include <shlobj.h>

#define KZC_API_EXPORT __declspec(dllexport)
#define KZC_API_IMPORT __declspec(dllimport)

#else

#include <cmath>
#include <cstddef>
#include <cstdint>

#define KZC_API_EXPORT __attribute__((visibility("default")))
#define KZC_API_IMPORT __attribute__((visibility("default")))

using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;

// The code pages that _setmbcp takes: Shift-JIS as Windows has it, and UTF-8.
constexpr int _KANJI_CP = 932;
constexpr int CP_UTF8 = 65001;

// Values of the last error.
constexpr DWORD ERROR_SUCCESS = 0;
constexpr DWORD ERROR_FILE_NOT_FOUND = 2;
constexpr DWORD ERROR_PATH_NOT_FOUND = 3;
constexpr DWORD ERROR_TOO_MANY_OPEN_FILES = 4;
constexpr DWORD ERROR_ACCESS_DENIED = 5;
constexpr DWORD ERROR_NOT_ENOUGH_MEMORY = 8;
constexpr DWORD ERROR_INVALID_DATA = 13;
constexpr DWORD ERROR_GEN_FAILURE = 31; // a device fails, or an error that has no value of its own
constexpr DWORD ERROR_HANDLE_EOF = 38;
constexpr DWORD ERROR_FILE_EXISTS = 80;
constexpr DWORD ERROR_INVALID_PARAMETER = 87;
constexpr DWORD ERROR_DISK_FULL = 112;
constexpr DWORD ERROR_INSUFFICIENT_BUFFER = 122;
constexpr DWORD ERROR_BAD_PATHNAME = 161;
constexpr DWORD ERROR_ALREADY_EXISTS = 183;
constexpr DWORD ERROR_FILENAME_EXCED_RANGE = 206;
constexpr DWORD ERROR_FILE_TOO_LARGE = 223;
constexpr DWORD ERROR_INVALID_FLAGS = 1004;
constexpr DWORD ERROR_NO_UNICODE_TRANSLATION = 1113; // the bytes are no text of the code page

// Seconds since the beginning of 1970, UTC; stored in `time` too unless that is null.
KZC_API_EXPORT long long _time64(long long* time) noexcept;

// The calling thread's last error, as system services leave it. A thread begins with ERROR_SUCCESS.
KZC_API_EXPORT DWORD GetLastError() noexcept;
KZC_API_EXPORT void SetLastError(DWORD error) noexcept;

// A lock that the thread that holds it may enter again; every entry needs its leave. It must be initialised
// before it is entered and deleted, unheld, at the end. InitializeCriticalSection throws std::bad_alloc when
// memory is exhausted; the others do not fail.
struct CRITICAL_SECTION
{
    void* mutex;
};
KZC_API_EXPORT void InitializeCriticalSection(CRITICAL_SECTION* section);
KZC_API_EXPORT void EnterCriticalSection(CRITICAL_SECTION* section) noexcept;
KZC_API_EXPORT void LeaveCriticalSection(CRITICAL_SECTION* section) noexcept;
KZC_API_EXPORT void DeleteCriticalSection(CRITICAL_SECTION* section) noexcept;

// Sets the code page of the text operations: 932 or 65001; 0 on success, -1 (and nothing changed) for
// another.
KZC_API_EXPORT int _setmbcp(int codePage) noexcept;
// The code page in force.
KZC_API_EXPORT int _getmbcp() noexcept;

// Compares two texts character by character: below 0, 0 or above 0. Characters order by their code: a
// double-byte one by lead byte and trail byte.
KZC_API_EXPORT int _mbscmp(const unsigned char* left, const unsigned char* right) noexcept;

// Whether the byte at `position`, which lies in the text that starts at `text`, is a byte of a character
// other than its first: -1 if so, else 0. The walk starts at `text`, so the cost is the distance.
KZC_API_EXPORT int _ismbstrail(const unsigned char* text, const unsigned char* position) noexcept;

// Where a character or a text stands first, or last, in a text; null if nowhere. What is found begins where a
// character of the text begins: a trail byte is never taken for a character, nor the trail byte of one
// character with the lead byte of the next. The character is a code: in 932 lead byte and trail byte of a
// double-byte one, in 65001 the bytes of one in order, up to four. The character 0 is found at the end; the
// empty text at the beginning.
KZC_API_EXPORT const unsigned char* _mbschr(const unsigned char* text, unsigned int character) noexcept;
KZC_API_EXPORT unsigned char* _mbschr(unsigned char* text, unsigned int character) noexcept;
KZC_API_EXPORT const unsigned char* _mbsrchr(const unsigned char* text, unsigned int character) noexcept;
KZC_API_EXPORT unsigned char* _mbsrchr(unsigned char* text, unsigned int character) noexcept;
KZC_API_EXPORT const unsigned char* _mbsstr(const unsigned char* text,
                                            const unsigned char* searched) noexcept;
KZC_API_EXPORT unsigned char* _mbsstr(unsigned char* text, const unsigned char* searched) noexcept;

// The user's language: Japanese.
using LCID = DWORD;
KZC_API_EXPORT LCID GetUserDefaultLCID() noexcept;

// What LCMapStringA can make of a text, to be added up.
constexpr DWORD LCMAP_LOWERCASE = 0x00000100;
constexpr DWORD LCMAP_KATAKANA = 0x00200000;
constexpr DWORD LCMAP_HALFWIDTH = 0x00400000;

// Maps the characters of a text by the Japanese rules, whatever the locale: to lower case, hiragana to
// katakana, and full-width forms to half-width ones, of which a voiced letter becomes two. A character that
// the code page has twice becomes the preferred one; one whose half-width form it lacks becomes a question
// mark; bytes that are no character stay. `srcCount` tells the bytes, the NUL included if it is to be mapped
// too, or is -1 for all of them. Returns how many bytes were written to `dst`; with a `dstCount` of 0 nothing
// is written and the bytes that are needed are returned.
//
// 0 with the last error: ERROR_INVALID_PARAMETER for null texts, a count that is neither, and texts in the
// same place; ERROR_INVALID_FLAGS for no flag or another one; ERROR_INSUFFICIENT_BUFFER if `dst` is too
// short, which is partly written then; ERROR_NOT_ENOUGH_MEMORY. The first call for a code page and a set of
// flags takes some tens of milliseconds.
KZC_API_EXPORT int LCMapStringA(LCID locale, DWORD mapFlags, const char* src, int srcCount, char* dst,
                                int dstCount) noexcept;

// Makes a directory and those above it that are missing. `path` is absolute, in the host's code page; one
// separator or more at its end make no difference. `window` and `security` are not looked at. Returns
// ERROR_SUCCESS; ERROR_ALREADY_EXISTS if the directory is there, ERROR_FILE_EXISTS if something else of that
// name is; ERROR_BAD_PATHNAME for a relative or null path; ERROR_PATH_NOT_FOUND if a part of the path is no
// directory and cannot become one; ERROR_NO_UNICODE_TRANSLATION, ERROR_NOT_ENOUGH_MEMORY, or what else the
// system says. Directories that were made before a failure stay.
using HWND = void*;
struct SECURITY_ATTRIBUTES;
KZC_API_EXPORT int SHCreateDirectoryExA(HWND window, const char* path,
                                        const SECURITY_ATTRIBUTES* security) noexcept;

inline int _isnan(double value) noexcept
{
    return std::isnan(value) ? 1 : 0;
}
inline int _finite(double value) noexcept
{
    return std::isfinite(value) ? 1 : 0;
}

#endif

// Asks for the memory at an address, which need not be valid, to be fetched into the cache; nothing waits for
// it, and where the compiler cannot do that nothing happens.
inline void PrefetchMemory(const void* address) noexcept
{
#if defined(__GNUC__)
    __builtin_prefetch(address);
#else
    static_cast<void>(address);
#endif
}

// Marks what of this layer can be called from outside its shared form.
#if defined(KZCPLATFORM_API_BUILDING)
#define KZCPLATFORM_API KZC_API_EXPORT
#else
#define KZCPLATFORM_API KZC_API_IMPORT
#endif

#endif
