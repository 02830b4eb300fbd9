// The index file of CBnLink_OnMemVer: the input is the file. Its first columns, if they are short, are of the
// length it tells, so that reading goes on behind the index.

#include "CBnLink_OnMemVer.h"
#include "CLinkTableFuzz.h"

#include <algorithm>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr DWORD MAX_COLUMNS = 8;
    constexpr DWORD MAX_RECORDS = 256;
    static CLinkTableFuzz<CBnLink_OnMemVer> fuzz;
    const std::string index(data, data + size);
    const std::vector<DWORD> numbers = MakeNumbers(index);
    const DWORD columns = numbers.empty() ? 0 : std::min(numbers[0], MAX_COLUMNS);
    const DWORD records = numbers.size() < 2 || numbers[1] > MAX_RECORDS ? 0 : numbers[1];
    fuzz.SetFile(0, index);
    for (DWORD column = 1; column <= columns; ++column)
        fuzz.SetFile(column, MakeBytes(std::vector<DWORD>(records, column)));
    fuzz.RemoveFilesFrom(columns + 1);
    fuzz.Try();
    return 0;
}
