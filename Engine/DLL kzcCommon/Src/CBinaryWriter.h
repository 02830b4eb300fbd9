#ifndef CBINARYWRITER_H
#define CBINARYWRITER_H

#include "KzcCommonAPI.h"
#include "SCSystemPath.h"

#include <concepts>
#include <cstddef>
#include <cstring>
#include <memory>

namespace NSKZ::NSKZCore {

// Writes a file of 32-bit numbers, one behind the other, in the byte order of this machine.
//
// A call that fails sets the last error, which is the system's. Behind a failure every further one fails in
// the same way, so that a long run of calls may be made with one look at Close at its end.
class KZCCOMMON_API CBinaryWriter
{
public:
    // Creates the file of that path, in the host's code page, or empties it. If that fails, the last error
    // tells why and so does every call. `isBuffered` is true for many small items, which are then gathered
    // into large blocks, and false for few large ones, which then go straight to the file. Throws
    // std::bad_alloc.
    CBinaryWriter(const char* path, bool isBuffered);
    // Writes what is still held back, as far as that can be done, and closes the file. Whoever wants to know
    // whether all has been written calls Close before.
    ~CBinaryWriter();
    CBinaryWriter(const CBinaryWriter&) = delete;
    CBinaryWriter& operator=(const CBinaryWriter&) = delete;

    // Write a number, of whatever type of 32 bits, or `count` of them. A count of 0 writes nothing; `values`
    // may be null then. True does not mean yet that it has reached the file: see Close.
    template <std::unsigned_integral TNumber>
    requires(sizeof(TNumber) == sizeof(DWORD)) bool WriteData(TNumber value) noexcept
    {
        if (static_cast<std::size_t>(bufferEnd - bufferPos) < sizeof value)
            return WriteBytes(reinterpret_cast<const unsigned char*>(&value), sizeof value);
        std::memcpy(bufferPos, &value, sizeof value);
        bufferPos += sizeof value;
        return true;
    }
    bool WriteData(const DWORD* values, DWORD count) noexcept;

    // Writes what is held back and closes the file. True if the system has taken everything that was written;
    // it may still be on its way to the disk. Called again it gives the same; every other call behind it
    // fails.
    bool Close() noexcept;

private:
    bool WriteBytes(const unsigned char* bytes, std::size_t size) noexcept;
    bool Flush() noexcept;
    bool WriteToFile(const unsigned char* bytes, std::size_t size) noexcept;
    bool Fail(DWORD error) noexcept;

    CFilePtr file;                           // null once it is closed
    std::unique_ptr<unsigned char[]> buffer; // null if the writer is not buffered
    unsigned char* bufferPos = nullptr;
    unsigned char* bufferEnd = nullptr;
    DWORD failureError = ERROR_SUCCESS;
};

} // namespace NSKZ::NSKZCore

#endif
