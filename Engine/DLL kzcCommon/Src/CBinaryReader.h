#ifndef CBINARYREADER_H
#define CBINARYREADER_H

#include "KzcCommonAPI.h"
#include "SCSystemPath.h"

#include <concepts>
#include <cstddef>
#include <cstring>
#include <memory>

namespace NSKZ::NSKZCore {

// Reads a file of 32-bit numbers, from its beginning to its end, in the byte order of this machine. Only
// regular files are read: a directory, a pipe or a device counts as a file that cannot be opened.
//
// A call that fails sets the last error. Behind a failure every further one fails in the same way.
class KZCCOMMON_API CBinaryReader
{
public:
    enum EMthRetOfReadData : DWORD
    {
        READDATA_OK = 0,
        READDATA_FAILURE = 1,   // the file could not be opened or read; the last error is the system's
        READDATA_ENDOFFILE = 2, // it has less than was wanted; the last error is ERROR_HANDLE_EOF
    };

    // Opens the file of that path, in the host's code page. If that fails, the last error tells why and so
    // does every call. `isBuffered` is true for many small items, which are then read ahead in large blocks,
    // and false for few large ones, which then go straight to where they are wanted. Throws std::bad_alloc.
    CBinaryReader(const char* path, bool isBuffered);
    ~CBinaryReader();
    CBinaryReader(const CBinaryReader&) = delete;
    CBinaryReader& operator=(const CBinaryReader&) = delete;

    // The bytes of the file when it was opened. False, with `size` untouched, if it could not be opened.
    bool GetFileSize(unsigned long long& size) const noexcept;

    // Read the next number, of whatever type of 32 bits, or the next `count`. What is written on a failure
    // means nothing. A count of 0 reads nothing; `values` may be null then.
    template <std::unsigned_integral TNumber>
    requires(sizeof(TNumber) == sizeof(DWORD)) EMthRetOfReadData ReadData(TNumber& value)
    noexcept
    {
        if (static_cast<std::size_t>(bufferEnd - bufferPos) < sizeof value)
            return ReadBytes(reinterpret_cast<unsigned char*>(&value), sizeof value);
        std::memcpy(&value, bufferPos, sizeof value);
        bufferPos += sizeof value;
        return READDATA_OK;
    }
    EMthRetOfReadData ReadData(DWORD* values, DWORD count) noexcept;

private:
    EMthRetOfReadData ReadBytes(unsigned char* bytes, std::size_t size) noexcept;
    // How many of `size` bytes of the file could be read.
    std::size_t ReadFromFile(unsigned char* bytes, std::size_t size) noexcept;
    EMthRetOfReadData Fail(EMthRetOfReadData reason, DWORD error) noexcept;

    unsigned long long fileSize = 0; // set by what opens the file, which comes next
    CFilePtr file;
    std::unique_ptr<unsigned char[]> buffer; // null if the reader is not buffered
    const unsigned char* bufferPos = nullptr;
    const unsigned char* bufferEnd = nullptr;
    EMthRetOfReadData failure = READDATA_OK;
    DWORD failureError = ERROR_SUCCESS;
};

} // namespace NSKZ::NSKZCore

#endif
