// Runs a fuzz target over the files of directories, without the fuzzer:
//
//     TARGET DIRECTORY...
//
// Fails when there is no file, or when the target ends the program.

#include "FuzzTarget.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

int main(int argc, char** argv)
{
    std::vector<std::filesystem::path> files;
    for (int i = 1; i < argc; ++i) {
        for (const auto& entry : std::filesystem::directory_iterator(argv[i]))
            files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    for (const std::filesystem::path& file : files) {
        std::printf("%s\n", file.c_str());
        std::fflush(stdout); // the last line tells what ended the program
        std::ifstream stream(file, std::ios::binary);
        const std::string content(std::istreambuf_iterator<char>(stream), {});
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(content.data()), content.size());
    }
    std::printf("%zu inputs\n", files.size());
    return files.empty() ? 1 : 0;
}
