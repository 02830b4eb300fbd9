#include "KzcPlatform.h"

#include "CCharMap.h"
#include "SCSystemPath.h"

#if !defined(_WIN32)

#include <atomic>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <limits>
#include <mutex>
#include <new>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace {

thread_local DWORD lastError = ERROR_SUCCESS;
std::atomic<int> textCodePage{_KANJI_CP};

bool IsShiftJISLeadByte(unsigned char byte) noexcept
{
    return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}

// The bytes of the character that starts at `text`; 1 for a byte that starts none, and never past a NUL.
std::size_t GetCharLen(const unsigned char* text, int codePage) noexcept
{
    std::size_t wanted = 1;
    if (codePage == _KANJI_CP) {
        wanted = IsShiftJISLeadByte(text[0]) ? 2 : 1;
    } else if (text[0] >= 0xF0 && text[0] <= 0xF4) {
        wanted = 4;
    } else if (text[0] >= 0xE0 && text[0] <= 0xEF) {
        wanted = 3;
    } else if (text[0] >= 0xC2 && text[0] <= 0xDF) {
        wanted = 2;
    }
    for (std::size_t i = 1; i < wanted; ++i) {
        const bool follows = codePage == _KANJI_CP ? text[i] != 0 : (text[i] & 0xC0) == 0x80;
        if (!follows)
            return 1;
    }
    return wanted;
}

unsigned int GetCharCode(const unsigned char* text, std::size_t len) noexcept
{
    unsigned int code = 0;
    for (std::size_t i = 0; i < len; ++i)
        code = code << 8 | text[i];
    return code;
}

DWORD MakeDirectory(std::filesystem::path path)
{
    namespace fs = std::filesystem;
    if (!path.is_absolute())
        return ERROR_BAD_PATHNAME;
    if (path.has_relative_path() && !path.has_filename())
        path = path.parent_path(); // without the separators at the end
    const auto getErrorOfWhatIsThere = [&path]() -> DWORD {
        std::error_code ignored;
        if (fs::is_directory(path, ignored))
            return ERROR_ALREADY_EXISTS;
        return fs::exists(fs::symlink_status(path, ignored)) ? ERROR_FILE_EXISTS : ERROR_SUCCESS;
    };
    if (const DWORD error = getErrorOfWhatIsThere(); error != ERROR_SUCCESS)
        return error;
    std::error_code error;
    if (fs::create_directories(path, error))
        return ERROR_SUCCESS;
    if (!error)
        return ERROR_ALREADY_EXISTS; // someone else was faster
    switch (const DWORD code = NSKZ::NSKZCore::SCSystemPath::GetLastErrorOfErrno(error.value())) {
    case ERROR_FILE_NOT_FOUND: // a part of the path, not its end
    case ERROR_FILE_EXISTS:    // likewise: something that is no directory
        return ERROR_PATH_NOT_FOUND;
    default:
        return code;
    }
}

std::recursive_mutex& GetMutex(CRITICAL_SECTION* section) noexcept
{
    return *static_cast<std::recursive_mutex*>(section->mutex);
}

} // namespace

long long _time64(long long* time) noexcept
{
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    const long long seconds = std::chrono::floor<std::chrono::seconds>(now).count();
    if (time != nullptr)
        *time = seconds;
    return seconds;
}

DWORD GetLastError() noexcept
{
    return lastError;
}

void SetLastError(DWORD error) noexcept
{
    lastError = error;
}

void InitializeCriticalSection(CRITICAL_SECTION* section)
{
    section->mutex = new std::recursive_mutex;
}

void EnterCriticalSection(CRITICAL_SECTION* section) noexcept
{
    GetMutex(section).lock();
}

void LeaveCriticalSection(CRITICAL_SECTION* section) noexcept
{
    GetMutex(section).unlock();
}

void DeleteCriticalSection(CRITICAL_SECTION* section) noexcept
{
    delete &GetMutex(section);
    section->mutex = nullptr;
}

int _setmbcp(int codePage) noexcept
{
    if (codePage != _KANJI_CP && codePage != CP_UTF8)
        return -1;
    textCodePage = codePage;
    return 0;
}

int _getmbcp() noexcept
{
    return textCodePage;
}

int _mbscmp(const unsigned char* left, const unsigned char* right) noexcept
{
    const int codePage = textCodePage;
    for (;;) {
        const std::size_t leftLen = GetCharLen(left, codePage);
        const std::size_t rightLen = GetCharLen(right, codePage);
        const unsigned int leftCode = GetCharCode(left, leftLen);
        const unsigned int rightCode = GetCharCode(right, rightLen);
        if (leftCode != rightCode)
            return leftCode < rightCode ? -1 : 1;
        if (leftCode == 0)
            return 0;
        left += leftLen;
        right += rightLen;
    }
}

int _ismbstrail(const unsigned char* text, const unsigned char* position) noexcept
{
    const int codePage = textCodePage;
    while (text < position && *text != 0)
        text += GetCharLen(text, codePage);
    return text > position ? -1 : 0;
}

const unsigned char* _mbschr(const unsigned char* text, unsigned int character) noexcept
{
    const int codePage = textCodePage;
    for (;;) {
        const std::size_t len = GetCharLen(text, codePage);
        if (GetCharCode(text, len) == character)
            return text;
        if (*text == 0)
            return nullptr;
        text += len;
    }
}

unsigned char* _mbschr(unsigned char* text, unsigned int character) noexcept
{
    return const_cast<unsigned char*>(_mbschr(static_cast<const unsigned char*>(text), character));
}

const unsigned char* _mbsrchr(const unsigned char* text, unsigned int character) noexcept
{
    const int codePage = textCodePage;
    const unsigned char* last = nullptr;
    for (;;) {
        const std::size_t len = GetCharLen(text, codePage);
        if (GetCharCode(text, len) == character)
            last = text;
        if (*text == 0)
            return last;
        text += len;
    }
}

unsigned char* _mbsrchr(unsigned char* text, unsigned int character) noexcept
{
    return const_cast<unsigned char*>(_mbsrchr(static_cast<const unsigned char*>(text), character));
}

const unsigned char* _mbsstr(const unsigned char* text, const unsigned char* searched) noexcept
{
    const int codePage = textCodePage;
    if (*searched == 0)
        return text;
    // Where the bytes stand is found first; most texts do not hold them. Then comes what a character is.
    const unsigned char* border = text;
    for (const unsigned char* next = text;; ++next) {
        const char* const found =
            std::strstr(reinterpret_cast<const char*>(next), reinterpret_cast<const char*>(searched));
        if (found == nullptr)
            return nullptr;
        next = reinterpret_cast<const unsigned char*>(found);
        while (border < next)
            border += GetCharLen(border, codePage);
        if (border == next)
            return next;
    }
}

unsigned char* _mbsstr(unsigned char* text, const unsigned char* searched) noexcept
{
    return const_cast<unsigned char*>(_mbsstr(static_cast<const unsigned char*>(text), searched));
}

int SHCreateDirectoryExA(HWND, const char* path, const SECURITY_ATTRIBUTES*) noexcept
{
    try {
        std::filesystem::path systemPath;
        if (path == nullptr)
            return static_cast<int>(ERROR_BAD_PATHNAME);
        if (!NSKZ::NSKZCore::SCSystemPath::ConvertIntoSystemPath(path, systemPath))
            return static_cast<int>(ERROR_NO_UNICODE_TRANSLATION);
        return static_cast<int>(MakeDirectory(std::move(systemPath)));
    } catch (const std::bad_alloc&) {
        return static_cast<int>(ERROR_NOT_ENOUGH_MEMORY);
    }
}

LCID GetUserDefaultLCID() noexcept
{
    constexpr LCID JAPANESE = 0x0411;
    return JAPANESE;
}

int LCMapStringA(LCID, DWORD mapFlags, const char* src, int srcCount, char* dst, int dstCount) noexcept
{
    const auto fail = [](DWORD error) {
        SetLastError(error);
        return 0;
    };
    if (src == nullptr || srcCount < -1 || srcCount == 0 || dstCount < 0 ||
        (dstCount != 0 && (dst == nullptr || dst == src)))
        return fail(ERROR_INVALID_PARAMETER);
    if (mapFlags == 0 || (mapFlags & ~(LCMAP_LOWERCASE | LCMAP_KATAKANA | LCMAP_HALFWIDTH)) != 0)
        return fail(ERROR_INVALID_FLAGS);
    const std::size_t count = srcCount < 0 ? std::strlen(src) + 1 : static_cast<std::size_t>(srcCount);
    try {
        const CCharMap& map = CCharMap::Get(textCodePage, mapFlags);
        const std::size_t mappedCount = map.Map(src, count, dst, static_cast<std::size_t>(dstCount));
        if (mappedCount > static_cast<std::size_t>(std::numeric_limits<int>::max()))
            return fail(ERROR_INVALID_PARAMETER);
        if (dstCount != 0 && mappedCount > static_cast<std::size_t>(dstCount))
            return fail(ERROR_INSUFFICIENT_BUFFER);
        return static_cast<int>(mappedCount);
    } catch (const std::bad_alloc&) {
        return fail(ERROR_NOT_ENOUGH_MEMORY);
    } catch (const std::runtime_error&) { // the system knows nothing of the code page
        return fail(ERROR_INVALID_PARAMETER);
    }
}

#endif
