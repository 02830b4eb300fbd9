#include "SCSystemFile.h"

#include "ECHostError.h"
#include "SCSystemPath.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace NSKZ::Host {

namespace {

std::error_code GetSystemError()
{
    return {errno != 0 ? errno : EIO, std::generic_category()};
}

} // namespace

std::string SCSystemFile::Read(const std::string& path)
{
    errno = 0;
    const NSKZCore::CFilePtr file(std::fopen(path.c_str(), "rb"));
    std::string content;
    if (file != nullptr) {
        for (std::size_t got = PIECE_SIZE; got == PIECE_SIZE;) {
            const std::size_t held = content.size();
            if (content.capacity() - held < PIECE_SIZE)
                content.reserve(2 * held + PIECE_SIZE);
            content.resize(held + PIECE_SIZE);
            got = std::fread(content.data() + held, 1, PIECE_SIZE, file.get());
            content.resize(held + got);
        }
    }
    if (file == nullptr || std::ferror(file.get()) != 0) {
        throw ECHostError(EXITSTATUS_TABLE_UNREADABLE,
                          path + ": The file cannot be read: " + std::strerror(errno) + ".");
    }
    return content;
}

std::error_code SCSystemFile::ReadInPieces(const std::filesystem::path& path,
                                           const std::function<void(std::string_view)>& take)
{
    errno = 0;
    const NSKZCore::CFilePtr file(std::fopen(path.string().c_str(), "rb"));
    if (file == nullptr)
        return GetSystemError();
    std::string piece(PIECE_SIZE, '\0');
    while (const std::size_t got = std::fread(piece.data(), 1, PIECE_SIZE, file.get()))
        take(std::string_view(piece).substr(0, got));
    return std::ferror(file.get()) != 0 ? GetSystemError() : std::error_code();
}

std::error_code SCSystemFile::WriteNew(const std::filesystem::path& path, std::string_view content)
{
    errno = 0;
    NSKZCore::CFilePtr file(std::fopen(path.string().c_str(), "wbx"));
    if (file == nullptr)
        return GetSystemError();
    const bool isWritten = std::fwrite(content.data(), 1, content.size(), file.get()) == content.size();
    const std::error_code error = isWritten ? std::error_code() : GetSystemError();
    return std::fclose(file.release()) != 0 && !error ? GetSystemError() : error;
}

std::filesystem::path SCSystemFile::FromUTF8(std::string_view path)
{
    return std::u8string(path.begin(), path.end());
}

std::string SCSystemFile::IntoUTF8(const std::filesystem::path& path)
{
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

} // namespace NSKZ::Host
