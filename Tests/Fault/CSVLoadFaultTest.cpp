#include "CCSVLoader.h"
#include "CSourceDataMngr.h"
#include "Support/CAllocFault.h"
#include "Support/CTempDir.h"
#include "Support/TestText.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

// Every allocation of loading a table fails in turn: the table is as it was.

namespace NSKZ::Test {
namespace {

using NSKZCore::CCSVLoader;
using NSKZCore::CSourceDataMngr;

std::vector<std::string> ListCells(const CSourceDataMngr& table)
{
    std::vector<std::string> cells;
    std::vector<DWORD> fldIDs;
    table.GetSrcFrmDataFldID(fldIDs);
    for (const DWORD fldID : fldIDs) {
        const char* name = nullptr;
        NSKZCore::SCDeclareConstant::SDataSpec spec;
        EXPECT_TRUE(table.GetItemName(fldID, name) && table.GetDataSpec(fldID, spec));
        cells.push_back(std::string(name) + " of type " + std::to_string(spec.dataType));
        table.GetFldData(fldID)->Visit([&](const char* text, std::size_t len) {
            cells.emplace_back(text, len);
            return true;
        });
    }
    return cells;
}

std::string MakeCSV()
{
    std::string csv = UTF8(u8"名前,数,日付,時刻\r\n");
    for (int rec = 0; rec < 50; ++rec) {
        const std::string digits = std::to_string(rec % 10);
        csv += UTF8(u8"\"値, ") + digits + "\"," + (rec % 7 == 0 ? "" : digits) + ",2024-07-1" + digits +
               ",1" + digits + ":00:00\r\n";
    }
    return csv;
}

TEST(CSVLoadFault, ALoadThatRunsOutOfMemoryLeavesTheTableAsItWas)
{
    const CTempDir dir;
    const std::string path = dir.WriteFile("table.csv", MakeCSV());
    const CCSVLoader loader({});
    const auto prepare = [] {
        CSourceDataMngr table;
        CCSVLoader({}).LoadMemory("former,other\nvalue,1\n", "memory", table);
        return table;
    };
    const std::vector<std::string> before = ListCells(prepare());
    const auto proveAsItWas = [&](const CSourceDataMngr& table) { EXPECT_EQ(ListCells(table), before); };
    EXPECT_GE(
        FailEveryAllocation(
            prepare, [&](CSourceDataMngr& table) { loader.LoadFile(path.c_str(), table); }, proveAsItWas),
        30);
    const std::string csv = MakeCSV();
    EXPECT_GE(
        FailEveryAllocation(
            prepare, [&](CSourceDataMngr& table) { loader.LoadMemory(csv, "memory", table); }, proveAsItWas),
        30);
}

TEST(CSVLoadFault, ARefusalThatRunsOutOfMemoryLeavesTheTableAsItWas)
{
    const CCSVLoader loader({});
    const auto prepare = [] {
        CSourceDataMngr table;
        CCSVLoader({}).LoadMemory("former,other\nvalue,1\n", "memory", table);
        return table;
    };
    const std::vector<std::string> before = ListCells(prepare());
    EXPECT_GE(FailEveryAllocation(
                  prepare,
                  [&](CSourceDataMngr& table) {
                      try {
                          loader.LoadMemory("a,b\n1,2\n3\n", "memory", table);
                          ADD_FAILURE() << "a ragged record was taken";
                      } catch (const NSKZCore::ECSVLoadError&) {
                          EXPECT_EQ(ListCells(table), before);
                      }
                  },
                  [&](const CSourceDataMngr& table) { EXPECT_EQ(ListCells(table), before); }),
              5);
}

} // namespace
} // namespace NSKZ::Test
