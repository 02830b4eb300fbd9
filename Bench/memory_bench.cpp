// What the memory-saving link tables save, and what they cost. The two tables that tie the records and
// buttons of the eight text fields together are made in both versions, and the bytes counted that each has
// taken from the heap; then each of the eight fields is pressed in two environments over the same table, one
// on each version, turn and turn about. The figures to quote are the two ratios.
//
//     memory_bench [ROWS [REPETITIONS]]

#include "CBenchTable.h"
#include "SCBenchHeap.h"
#include "SCBenchPress.h"
#include "SCBenchTime.h"

#include "CBnLink_MemSavVer.h"
#include "CBnLink_OnMemVer.h"
#include "CBUIDataMngr.h"
#include "CCoreSumMngr.h"
#include "CCSVLoader.h"
#include "CRpLink_MemSavVer.h"
#include "CRpLink_OnMemVer.h"
#include "CSourceDataMngr.h"
#include "VCBtnClass.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

using namespace NSKZ::NSKZCore;

namespace {

// What both link tables hold of one class, as the tables take it.
struct SClassContent
{
    SClassContent(const CBUIDataMngr& env, DWORD btnClassID, DWORD rows) : column(rows), recs(rows)
    {
        std::vector<DWORD> btnIDs;
        env.GetAllBtnIDListOfBtnClass(btnClassID, btnIDs, true);
        std::sort(btnIDs.begin(), btnIDs.end());
        DWORD* free = recs.data();
        for (const DWORD btnID : btnIDs) {
            DWORD count = 0;
            env.GetRecListThatRelatesToBtn(btnClassID, btnID, free, count);
            lists.Set(btnID, SRecordList{free, count});
            for (DWORD i = 0; i < count; ++i)
                column[free[i]] = btnID;
            free += count;
        }
    }
    SClassContent(const SClassContent&) = delete;
    SClassContent& operator=(const SClassContent&) = delete;

    std::vector<DWORD> column;
    std::vector<DWORD> recs;
    TCBtnIDAssArr<SRecordList> lists; // borrow from recs
};

// The bytes that a table takes once fill(table) has filled it.
template <class TTable, class TFill>
std::size_t MeasureBytes(const TFill& fill)
{
    const std::size_t before = SCBenchHeap::GetBytesInUse();
    const auto table = std::make_unique<TTable>();
    fill(*table);
    return SCBenchHeap::GetBytesInUse() - before;
}

bool PrintRow(const char* name, std::size_t onMemory, std::size_t memorySaving)
{
    const double share = static_cast<double>(memorySaving) / static_cast<double>(onMemory);
    std::printf("%-16s %14.2f %16.2f %8.1f %%\n", name, static_cast<double>(onMemory) / 1e6,
                static_cast<double>(memorySaving) / 1e6, share * 100);
    return share <= 0.4;
}

bool CompareBytes(const CBUIDataMngr& env, const std::vector<DWORD>& btnClassIDs, DWORD rows)
{
    std::vector<std::unique_ptr<const SClassContent>> contents;
    for (std::size_t fld = 0; fld < CBenchTable::TEXT_FLD_COUNT; ++fld)
        contents.push_back(std::make_unique<SClassContent>(env, btnClassIDs[fld], rows));
    const auto fillBnLink = [&](IBnLink& table) {
        for (std::size_t fld = 0; fld < contents.size(); ++fld)
            table.InsertFld(btnClassIDs[fld], rows, contents[fld]->column.data());
    };
    const auto fillRpLink = [&](IRpLink& table) {
        for (std::size_t fld = 0; fld < contents.size(); ++fld)
            table.InsertFld(btnClassIDs[fld], contents[fld]->lists, rows);
    };
    const std::size_t bnOnMemory = MeasureBytes<CBnLink_OnMemVer>(fillBnLink);
    const std::size_t rpOnMemory = MeasureBytes<CRpLink_OnMemVer>(fillRpLink);
    const std::size_t bnMemorySaving = MeasureBytes<CBnLink_MemSavVer>(fillBnLink);
    const std::size_t rpMemorySaving = MeasureBytes<CRpLink_MemSavVer>(fillRpLink);
    std::printf("%-16s %14s %16s %10s\n", "table", "on memory, MB", "memory-saving, MB", "share");
    PrintRow("record to button", bnOnMemory, bnMemorySaving);
    PrintRow("button to record", rpOnMemory, rpMemorySaving);
    const bool isWithin = PrintRow("both", bnOnMemory + rpOnMemory, bnMemorySaving + rpMemorySaving);
    std::printf("%s\n\n", isWithin ? "within the goal of 40 %" : "the goal of 40 % is missed");
    return isWithin;
}

} // namespace

int main(int argc, char** argv)
{
    const auto rows = static_cast<std::uint32_t>(argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 1000000);
    const int repetitions = argc > 2 ? std::atoi(argv[2]) : 15;
    if (rows == 0 || repetitions < 1) {
        std::fprintf(stderr, "usage: memory_bench [ROWS [REPETITIONS]]\n");
        return 2;
    }
    const CBenchTable bench(rows);
    CSourceDataMngr table;
    CCSVLoader(CCSVLoader::SOptions{}).LoadMemory(bench.MakeCSV(), "bench", table);
    using Clock = SCBenchTime::Clock;
    const CCoreSumMngr sums(table);
    const auto build = [&](SCBUICoreCom::ELinkTableVerType version, const char* name) {
        const Clock::time_point start = Clock::now();
        auto env = std::make_unique<CBUIDataMngr>(1, version, version, table, &sums, nullptr);
        std::printf("%u rows, build %s: %.0f ms\n", table.GetRecCount(), name,
                    SCBenchTime::GetMilliseconds(Clock::now() - start));
        return env;
    };
    const auto onMemory = build(SCBUICoreCom::LINKTBLVERTYPE_ONMEM, "on memory");
    const auto memorySaving = build(SCBUICoreCom::LINKTBLVERTYPE_MEMSAV, "memory-saving");
    std::vector<DWORD> btnClassIDs;
    onMemory->GetAllBtnClassIDList(btnClassIDs, true);
    std::printf("\n");
    CompareBytes(*onMemory, btnClassIDs, rows);

    std::printf("%10s %14s %18s %8s\n", "distinct", "on memory, ms", "memory-saving, ms", "ratio");
    bool allWithin = true;
    for (std::size_t fld = 0; fld < CBenchTable::TEXT_FLD_COUNT; ++fld) {
        std::vector<DWORD> btnIDs;
        onMemory->GetBtnAppOrdListOfBtnClass(btnClassIDs[fld], VCBtnClass::ORDLIST_NORMAL, btnIDs);
        std::vector<double> times[2];
        for (int i = 0; i < repetitions; ++i) {
            const DWORD btnID = SCBenchPress::PickBtn(btnIDs, i);
            std::size_t displayed[2] = {};
            if (!SCBenchPress::Press(*onMemory, btnClassIDs, fld, btnID, times[0], displayed[0]) ||
                !SCBenchPress::Press(*memorySaving, btnClassIDs, fld, btnID, times[1], displayed[1]) ||
                displayed[0] != displayed[1]) {
                std::fprintf(stderr, "field %zu: %zu buttons displayed on memory, %zu memory-saving\n", fld,
                             displayed[0], displayed[1]);
                return 1;
            }
        }
        const double plain = SCBenchTime::GetMedian(times[0]);
        const double packed = SCBenchTime::GetMedian(times[1]);
        const bool isWithin = packed <= 3 * plain;
        allWithin = allWithin && isWithin;
        std::printf("%10u %14.4f %18.4f %8.2f %7s\n", bench.GetDistinctCount(fld), plain, packed,
                    packed / plain, isWithin ? "within" : "missed");
    }
    std::printf("%s\n", allWithin ? "every field within 3 times the press on memory"
                                  : "the goal of 3 times the press on memory is missed");
    return 0;
}
