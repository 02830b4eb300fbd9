#include "CBinaryReader.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>

namespace NSKZ::NSKZCore {

namespace {

constexpr std::size_t BUFFER_SIZE = 65536;

} // namespace

CBinaryReader::CBinaryReader(const char* path, bool isBuffered)
    : file(SCSystemPath::OpenFileForReading(path, fileSize))
{
    if (file == nullptr) {
        Fail(READDATA_FAILURE, GetLastError());
        return;
    }
    std::setvbuf(file.get(), nullptr, _IONBF, 0); // what is buffered is buffered here
    if (isBuffered) {
        buffer = std::make_unique_for_overwrite<unsigned char[]>(BUFFER_SIZE);
        bufferPos = bufferEnd = buffer.get();
    }
}

CBinaryReader::~CBinaryReader() = default;

bool CBinaryReader::GetFileSize(unsigned long long& size) const noexcept
{
    if (file == nullptr) {
        SetLastError(failureError);
        return false;
    }
    size = fileSize;
    return true;
}

CBinaryReader::EMthRetOfReadData CBinaryReader::ReadData(DWORD* values, DWORD count) noexcept
{
    return ReadBytes(reinterpret_cast<unsigned char*>(values), std::size_t{count} * sizeof(DWORD));
}

CBinaryReader::EMthRetOfReadData CBinaryReader::ReadBytes(unsigned char* bytes, std::size_t size) noexcept
{
    if (failure != READDATA_OK)
        return Fail(failure, failureError);
    const std::size_t held = std::min(size, static_cast<std::size_t>(bufferEnd - bufferPos));
    if (held != 0)
        std::memcpy(bytes, bufferPos, held);
    bufferPos += held;
    bytes += held;
    size -= held;
    if (size == 0)
        return READDATA_OK;

    bool isRead = false;
    if (buffer != nullptr && size < BUFFER_SIZE) {
        bufferPos = buffer.get();
        bufferEnd = bufferPos + ReadFromFile(buffer.get(), BUFFER_SIZE);
        isRead = static_cast<std::size_t>(bufferEnd - bufferPos) >= size;
        if (isRead) {
            std::memcpy(bytes, bufferPos, size);
            bufferPos += size;
        }
    } else {
        isRead = ReadFromFile(bytes, size) == size;
    }
    if (isRead)
        return READDATA_OK;
    return std::ferror(file.get()) != 0 ? Fail(READDATA_FAILURE, SCSystemPath::GetLastErrorOfErrno(errno))
                                        : Fail(READDATA_ENDOFFILE, ERROR_HANDLE_EOF);
}

std::size_t CBinaryReader::ReadFromFile(unsigned char* bytes, std::size_t size) noexcept
{
    errno = 0;
    return std::fread(bytes, 1, size, file.get());
}

CBinaryReader::EMthRetOfReadData CBinaryReader::Fail(EMthRetOfReadData reason, DWORD error) noexcept
{
    bufferPos = bufferEnd;
    failure = reason;
    failureError = error;
    SetLastError(error);
    return reason;
}

} // namespace NSKZ::NSKZCore
