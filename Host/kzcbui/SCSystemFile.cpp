#include "SCSystemFile.h"

#include "ECHostError.h"
#include "SCSystemPath.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace NSKZ::Host {

std::string SCSystemFile::Read(const std::string& path)
{
    constexpr std::size_t PIECE = 1 << 20;
    errno = 0;
    const NSKZCore::CFilePtr file(std::fopen(path.c_str(), "rb"));
    std::string content;
    if (file != nullptr) {
        for (std::size_t got = PIECE; got == PIECE;) {
            const std::size_t held = content.size();
            if (content.capacity() - held < PIECE)
                content.reserve(2 * held + PIECE);
            content.resize(held + PIECE);
            got = std::fread(content.data() + held, 1, PIECE, file.get());
            content.resize(held + got);
        }
    }
    if (file == nullptr || std::ferror(file.get()) != 0) {
        throw ECHostError(EXITSTATUS_TABLE_UNREADABLE,
                          path + ": The file cannot be read: " + std::strerror(errno) + ".");
    }
    return content;
}

} // namespace NSKZ::Host
