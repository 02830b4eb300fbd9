// All files of a table, of either kind and version: the input is split into them.
//
// Its first byte tells the kind of table (even BnLink, odd RpLink) and the version (bit 1: memory-saving),
// its second how many field files there are (less than eight), and the next ones how long each of these is,
// in bytes. What follows is these files one behind the other, and all that is left is the index.

#include "CLinkTableFuzz.h"
#include "Support/LinkTableVersions.h"

#include <algorithm>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

template <class TTable>
void TryFiles(const std::vector<std::string>& files)
{
    static CLinkTableFuzz<TTable> fuzz;
    for (std::size_t number = 0; number < files.size(); ++number)
        fuzz.SetFile(static_cast<DWORD>(number), files[number]);
    fuzz.RemoveFilesFrom(static_cast<DWORD>(files.size()));
    fuzz.Try();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr std::size_t HEADER = 2;
    if (size < HEADER)
        return 0;
    const std::uint8_t* const end = data + size;
    const std::size_t fldCount = std::min<std::size_t>(data[1] % 8, size - HEADER);
    const std::uint8_t* rest = data + HEADER + fldCount;
    std::vector<std::string> files(1);
    for (std::size_t fld = 0; fld < fldCount; ++fld) {
        const auto length = std::min<std::ptrdiff_t>(data[HEADER + fld], end - rest);
        files.emplace_back(rest, rest + length);
        rest += length;
    }
    files[0].assign(rest, end);
    switch (data[0] % 4) {
    case 0:
        TryFiles<CBnLink_OnMemVer>(files);
        break;
    case 1:
        TryFiles<CRpLink_OnMemVer>(files);
        break;
    case 2:
        TryFiles<CBnLink_MemSavVer>(files);
        break;
    default:
        TryFiles<CRpLink_MemSavVer>(files);
    }
    return 0;
}
