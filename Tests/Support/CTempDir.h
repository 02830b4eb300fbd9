#ifndef CTEMPDIR_H
#define CTEMPDIR_H

#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <string_view>
#include <system_error>

namespace NSKZ::Test {

// A directory of its own for a test, removed with all it holds at the end.
class CTempDir
{
public:
    CTempDir()
    {
        std::random_device random;
        do {
            path = std::filesystem::temp_directory_path() / ("kzcbui_test_" + std::to_string(random()));
        } while (!std::filesystem::create_directory(path));
    }
    ~CTempDir()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    CTempDir(const CTempDir&) = delete;
    CTempDir& operator=(const CTempDir&) = delete;

    const std::filesystem::path& GetPath() const noexcept { return path; }

    // Writes a file; its name is UTF-8. Returns its path.
    std::string WriteFile(std::string_view name, std::string_view content) const
    {
        const std::filesystem::path file = path / std::u8string(name.begin(), name.end());
        std::ofstream(file, std::ios::binary)
            .write(content.data(), static_cast<std::streamsize>(content.size()));
        return file.string();
    }

private:
    std::filesystem::path path;
};

} // namespace NSKZ::Test

#endif
