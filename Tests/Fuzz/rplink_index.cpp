// The index file of CRpLink_OnMemVer: the input is the file. There are eight record areas of 64 cells.

#include "CLinkTableFuzz.h"
#include "CRpLink_OnMemVer.h"

#include <numeric>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static CLinkTableFuzz<CRpLink_OnMemVer> fuzz;
    fuzz.SetFile(0, std::string(data, data + size));
    std::vector<DWORD> area(64);
    std::iota(area.begin(), area.end(), 0U);
    for (DWORD fld = 1; fld <= 8; ++fld)
        fuzz.SetFile(fld, MakeBytes(area));
    fuzz.Try();
    return 0;
}
