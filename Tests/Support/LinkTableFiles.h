#ifndef LINKTABLEFILES_H
#define LINKTABLEFILES_H

#include "KzcPlatform.h"
#include "SCKZCoreCom.h"
#include "Support/CTempDir.h"

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace NSKZ::Test {

// The bytes of 32-bit numbers.
inline std::string MakeBytes(const std::vector<DWORD>& numbers)
{
    std::string bytes(numbers.size() * sizeof(DWORD), '\0');
    if (!numbers.empty())
        std::memcpy(bytes.data(), numbers.data(), bytes.size());
    return bytes;
}

// Bytes as 32-bit numbers; what is left over is dropped.
inline std::vector<DWORD> MakeNumbers(const std::string& bytes)
{
    std::vector<DWORD> numbers(bytes.size() / sizeof(DWORD));
    if (!numbers.empty())
        std::memcpy(numbers.data(), bytes.data(), numbers.size() * sizeof(DWORD));
    return numbers;
}

inline std::string ReadFileBytes(const std::filesystem::path& path)
{
    std::ifstream stream(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

// A directory of its own for the files of a link table: 0 is the index, 1, 2, ... are the fields.
class CLinkTableDir
{
public:
    CLinkTableDir() {} // not defaulted: a const object needs one of its own

    // As the tables take it: with a separator at its end.
    std::string GetPath() const { return dir.GetPath().string() + "\\"; }
    std::filesystem::path GetFile(DWORD number) const
    {
        return dir.GetPath() / (std::to_string(number) + ".dat");
    }

    void WriteFileBytes(DWORD number, const std::string& bytes) const
    {
        dir.WriteFile(std::to_string(number) + ".dat", bytes);
    }
    void Write(DWORD number, const std::vector<DWORD>& numbers) const
    {
        WriteFileBytes(number, MakeBytes(numbers));
    }
    std::vector<DWORD> Read(DWORD number) const { return MakeNumbers(ReadFileBytes(GetFile(number))); }

private:
    CTempDir dir;
};

// Reads a table from a directory, whose path ends in a separator, as this machine has written it.
template <class TTable>
bool ReadFromDir(TTable& table, const std::string& path)
{
    return table.ReadFrom(path.c_str(), NSKZCore::SCKZCoreCom::GetEndiannessOfPresentEnvironment(),
                          NSKZCore::SCKZCoreCom::GetDataModelOfPresentEnvironment());
}
template <class TTable>
bool ReadFromDir(TTable& table, const CLinkTableDir& dir)
{
    return ReadFromDir(table, dir.GetPath());
}

} // namespace NSKZ::Test

#endif
