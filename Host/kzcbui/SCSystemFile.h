#ifndef SCSYSTEMFILE_H
#define SCSYSTEMFILE_H

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <system_error>

namespace NSKZ::Host {

// Files as the user of a command line names them: whatever the system takes for a path.
class SCSystemFile
{
public:
    SCSystemFile() = delete;

    // The whole content of a file, of whatever kind it is. Throws ECHostError with
    // EXITSTATUS_TABLE_UNREADABLE.
    static std::string Read(const std::string& path);

    // Gives the content of a file to `take`, in pieces of PIECE_SIZE bytes of which the last one may be
    // shorter. The system's error; none on success.
    static constexpr std::size_t PIECE_SIZE = 1 << 20;
    static std::error_code ReadInPieces(const std::filesystem::path& path,
                                        const std::function<void(std::string_view)>& take);
    // Writes a file that is not there yet. The system's error; none on success. What was written of it
    // stays.
    static std::error_code WriteNew(const std::filesystem::path& path, std::string_view content);

    // A path of a command, which is UTF-8, as the system has it, and the reverse.
    static std::filesystem::path FromUTF8(std::string_view path);
    static std::string IntoUTF8(const std::filesystem::path& path);
};

} // namespace NSKZ::Host

#endif
