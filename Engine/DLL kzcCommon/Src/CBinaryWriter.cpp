#include "CBinaryWriter.h"

#include <cerrno>
#include <cstdio>

namespace NSKZ::NSKZCore {

namespace {

constexpr std::size_t BUFFER_SIZE = 65536;

} // namespace

CBinaryWriter::CBinaryWriter(const char* path, bool isBuffered) : file(SCSystemPath::OpenFile(path, "wb"))
{
    if (file == nullptr) {
        Fail(GetLastError());
        return;
    }
    std::setvbuf(file.get(), nullptr, _IONBF, 0); // what is buffered is buffered here
    if (isBuffered) {
        buffer = std::make_unique_for_overwrite<unsigned char[]>(BUFFER_SIZE);
        bufferPos = buffer.get();
        bufferEnd = bufferPos + BUFFER_SIZE;
    }
}

CBinaryWriter::~CBinaryWriter()
{
    if (file != nullptr)
        Close();
}

bool CBinaryWriter::WriteData(const DWORD* values, DWORD count) noexcept
{
    return WriteBytes(reinterpret_cast<const unsigned char*>(values), std::size_t{count} * sizeof(DWORD));
}

bool CBinaryWriter::WriteBytes(const unsigned char* bytes, std::size_t size) noexcept
{
    if (failureError != ERROR_SUCCESS)
        return Fail(failureError);
    if (file == nullptr) { // behind Close
        SetLastError(ERROR_INVALID_DATA);
        return false;
    }
    if (size == 0)
        return true;
    if (static_cast<std::size_t>(bufferEnd - bufferPos) < size && !Flush())
        return false;
    if (buffer == nullptr || size > BUFFER_SIZE)
        return WriteToFile(bytes, size);
    std::memcpy(bufferPos, bytes, size);
    bufferPos += size;
    return true;
}

bool CBinaryWriter::Flush() noexcept
{
    if (buffer == nullptr)
        return true;
    const auto held = static_cast<std::size_t>(bufferPos - buffer.get());
    bufferPos = buffer.get();
    return WriteToFile(buffer.get(), held);
}

bool CBinaryWriter::WriteToFile(const unsigned char* bytes, std::size_t size) noexcept
{
    errno = 0;
    return std::fwrite(bytes, 1, size, file.get()) == size || Fail(SCSystemPath::GetLastErrorOfErrno(errno));
}

bool CBinaryWriter::Close() noexcept
{
    if (failureError == ERROR_SUCCESS && file != nullptr) {
        Flush();
        errno = 0;
        if (std::fclose(file.release()) != 0 && failureError == ERROR_SUCCESS)
            Fail(SCSystemPath::GetLastErrorOfErrno(errno));
        bufferPos = bufferEnd;
    }
    return failureError == ERROR_SUCCESS || Fail(failureError);
}

bool CBinaryWriter::Fail(DWORD error) noexcept
{
    bufferPos = bufferEnd;
    failureError = error;
    SetLastError(error);
    return false;
}

} // namespace NSKZ::NSKZCore
