// The file of a field of packed cells. The first byte of the input tells which kind of groups the table has
// (even: cells that are each read by itself, odd: also ascending ones); the rest is the file. Either nothing
// comes of it, or cells that can be read in every manner, that are written as they were read, and that can be
// changed.

#include "CCellTable.h"
#include "FuzzTarget.h"
#include "Support/LinkTableFiles.h"

#include <algorithm>
#include <numeric>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

constexpr DWORD MAX_CELLS = 1 << 20;

std::vector<DWORD> GetCells(const CCellTable& table)
{
    std::vector<DWORD> cells(table.GetRecCount(0));
    Require(table.GetData(0, 0, table.GetRecCount(0), CCellTable::GetBytes(cells.data())),
            "all cells are read");
    return cells;
}

void Use(CCellTable& table, const std::vector<DWORD>& cells)
{
    const auto count = static_cast<DWORD>(cells.size());
    std::vector<DWORD> list;
    for (DWORD pos = 0; pos < count; pos += 1 + pos % 7)
        list.push_back(pos);
    std::vector<DWORD> listed(list.size());
    Require(table.GetListedData(0, list.data(), static_cast<DWORD>(list.size()), listed.data()),
            "listed cells are read");
    for (std::size_t i = 0; i < list.size(); ++i)
        Require(listed[i] == cells[list[i]], "a listed cell is the one that stands there");
    const DWORD middle = count / 2;
    std::vector<DWORD> expected(cells);
    expected.insert(expected.begin() + middle, 3, 0);
    expected.erase(expected.begin());
    Require(table.InsertRec(0, middle, 3, nullptr) && table.DeleteRec(0, 0, 1), "cells come and go");
    Require(GetCells(table) == expected, "and the others stay");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const CLinkTableDir dir;
    static const std::string path = dir.GetFile(1).string();
    static const std::string writtenPath = dir.GetFile(2).string();
    if (size == 0)
        return 0;
    CCellTable table(data[0] % 2 == 0 ? CCellTable::BTNS_OF_GROUP : CCellTable::RECS_OF_GROUP);
    const std::string bytes(data + 1, data + size);
    dir.WriteFileBytes(1, bytes);
    Require(table.InsertFld(0, 0, nullptr), "there is a field");
    SetLastError(ERROR_SUCCESS);
    if (!table.ReadFldData(0, path.c_str(), true)) {
        Require(GetLastError() == ERROR_INVALID_DATA, "what is refused has a reason");
        Require(table.GetRecCount(0) == 0, "what is refused leaves the field empty");
        return 0;
    }
    Require(table.WriteFldData(0, writtenPath.c_str()), "what was read is written");
    Require(ReadFileBytes(writtenPath) == bytes, "as it was read");
    if (table.GetRecCount(0) != 0 && table.GetRecCount(0) <= MAX_CELLS)
        Use(table, GetCells(table));
    return 0;
}
