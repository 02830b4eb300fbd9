#ifndef CSEEDFILES_H
#define CSEEDFILES_H

#include "Support/LinkTableFiles.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

namespace NSKZ::Test {

// The seeds of fuzz targets below a directory: DIRECTORY/TARGET/NAME. Either they are written, or each is
// proved to be what would be written.
class CSeedFiles
{
public:
    // Runs `add(seeds)` as the program's arguments tell, `[--check] DIRECTORY`; gives its exit status.
    template <class TAdd>
    static int Run(int argc, char** argv, const TAdd& add)
    {
        const bool checks = argc == 3 && std::strcmp(argv[1], "--check") == 0;
        if (argc != 2 && !checks) {
            std::fprintf(stderr, "usage: %s [--check] DIRECTORY\n", argv[0]);
            return 2;
        }
        add(CSeedFiles(argv[argc - 1], checks));
        return 0;
    }

    // Ends the program if it cannot be written, or is not what it should be.
    void Write(const std::string& target, const std::string& name, const std::string& bytes) const
    {
        if (isChecked) {
            if (ReadFileBytes(root / target / name) == bytes)
                return;
            std::fprintf(stderr, "%s/%s is not what would be written\n", target.c_str(), name.c_str());
            std::exit(1);
        }
        std::filesystem::create_directories(root / target);
        std::ofstream file(root / target / name, std::ios::binary);
        file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        if (!file.flush())
            std::exit(1);
    }

private:
    CSeedFiles(const char* path, bool checks) : root(path), isChecked(checks) {}

    std::filesystem::path root;
    bool isChecked;
};

} // namespace NSKZ::Test

#endif
