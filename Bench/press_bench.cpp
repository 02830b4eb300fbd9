// The press benchmark: for each of the eight text fields the time of pressing one of its buttons in Narrowing
// with nothing selected before, up to and including the count of displayed buttons of every item; beside it,
// in the same run, the streaming kernel, which is the bare loop over the same records that reads the seven
// other columns, marks the values met in a byte array and counts them. The figure to quote is the ratio of
// the two.
//
//     press_bench [ROWS [REPETITIONS [TABLE.csv]]]
//
// With a file name the table is written there and read from it, and it stays for others to be measured on.

#include "CBenchTable.h"
#include "SCBenchHeap.h"
#include "SCBenchPress.h"
#include "SCBenchTime.h"

#include "CBUIDataMngr.h"
#include "CCoreSumMngr.h"
#include "CCSVLoader.h"
#include "CSourceDataMngr.h"
#include "VCBtnClass.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <vector>

using namespace NSKZ::NSKZCore;

namespace {

using Clock = SCBenchTime::Clock;

// Columns of dense value numbers, as a program made for nothing but this would hold them.
struct SKernel
{
    std::vector<std::vector<DWORD>> columns;
    std::vector<std::vector<unsigned char>> marks;

    std::size_t Run(std::size_t pressedFld, const std::vector<DWORD>& recs)
    {
        std::size_t met = 0;
        for (std::size_t fld = 0; fld < columns.size(); ++fld) {
            if (fld == pressedFld)
                continue;
            unsigned char* const marksOfFld = marks[fld].data();
            const DWORD* const column = columns[fld].data();
            std::memset(marksOfFld, 0, marks[fld].size());
            for (const DWORD rec : recs)
                marksOfFld[column[rec]] = 1;
            std::size_t metOfFld = 0;
            for (std::size_t i = 0; i < marks[fld].size(); ++i)
                metOfFld += marksOfFld[i];
            met += metOfFld;
        }
        return met;
    }
};

} // namespace

int main(int argc, char** argv)
{
    const auto rows = static_cast<std::uint32_t>(argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 1000000);
    const int repetitions = argc > 2 ? std::atoi(argv[2]) : 15;
    if (rows == 0 || repetitions < 1) {
        std::fprintf(stderr, "usage: press_bench [ROWS [REPETITIONS [TABLE.csv]]]\n");
        return 2;
    }
    const CBenchTable bench(rows);
    const std::string csv = bench.MakeCSV();
    const char* const path = argc > 3 ? argv[3] : nullptr;
    if (path != nullptr &&
        !std::ofstream(path, std::ios::binary).write(csv.data(), static_cast<std::streamsize>(csv.size()))) {
        std::fprintf(stderr, "%s cannot be written\n", path);
        return 1;
    }

    const Clock::time_point loadStart = Clock::now();
    CSourceDataMngr table;
    const CCSVLoader loader(CCSVLoader::SOptions{});
    if (path != nullptr)
        loader.LoadFile(path, table);
    else
        loader.LoadMemory(csv, "bench", table);
    const Clock::time_point buildStart = Clock::now();
    const std::size_t heapBefore = SCBenchHeap::GetBytesInUse();
    const CCoreSumMngr sums(table);
    CBUIDataMngr env(1, SCBUICoreCom::LINKTBLVERTYPE_ONMEM, SCBUICoreCom::LINKTBLVERTYPE_ONMEM, table, &sums,
                     nullptr);
    const Clock::time_point buildEnd = Clock::now();
    const std::size_t heapAfter = SCBenchHeap::GetBytesInUse();
    std::printf("%u rows, %.1f MB of CSV: load %.0f ms, build %.0f ms\n", rows,
                static_cast<double>(csv.size()) / 1e6, SCBenchTime::GetMilliseconds(buildStart - loadStart),
                SCBenchTime::GetMilliseconds(buildEnd - buildStart));

    std::vector<DWORD> btnClassIDs;
    env.GetAllBtnClassIDList(btnClassIDs, true);
    std::size_t btnCount = 0;
    for (const DWORD btnClassID : btnClassIDs) {
        DWORD count = 0;
        env.GetBtnCountOfBtnClass(btnClassID, count);
        btnCount += count;
    }
    const double cellCount = static_cast<double>(rows) * static_cast<double>(btnClassIDs.size());
    const double linkBytes = 2 * cellCount * sizeof(DWORD);
    std::printf(
        "memory of the environment: %.1f MB, of it 8 bytes a cell in the link tables; %.0f bytes a button "
        "beside them (%zu buttons)\n",
        static_cast<double>(heapAfter - heapBefore) / 1e6,
        (static_cast<double>(heapAfter - heapBefore) - linkBytes) / static_cast<double>(btnCount), btnCount);

    // The kernel gets its columns from the environment's answers, so both see the same values.
    SKernel kernel;
    std::vector<DWORD> recs(rows);
    for (std::size_t fld = 0; fld < CBenchTable::TEXT_FLD_COUNT; ++fld) {
        std::vector<DWORD> column(rows);
        std::vector<DWORD> btnIDs;
        env.GetAllBtnIDListOfBtnClass(btnClassIDs[fld], btnIDs, true);
        DWORD greatest = 0;
        for (const DWORD btnID : btnIDs) {
            DWORD count = 0;
            env.GetRecListThatRelatesToBtn(btnClassIDs[fld], btnID, recs.data(), count);
            for (DWORD i = 0; i < count; ++i)
                column[recs[i]] = btnID;
            greatest = std::max(greatest, btnID);
        }
        kernel.columns.push_back(std::move(column));
        kernel.marks.emplace_back(greatest + 1);
    }

    std::printf("\n%10s %10s %14s %14s %8s %22s\n", "distinct", "records", "press ms", "kernel ms", "ratio",
                "3 x kernel + 0.1 ms");
    bool allWithin = true;
    std::size_t checksum = 0;
    for (std::size_t fld = 0; fld < CBenchTable::TEXT_FLD_COUNT; ++fld) {
        std::vector<DWORD> btnIDs;
        env.GetBtnAppOrdListOfBtnClass(btnClassIDs[fld], VCBtnClass::ORDLIST_NORMAL, btnIDs);
        std::vector<double> pressTimes;
        std::vector<double> kernelTimes;
        DWORD recCount = 0;
        for (int i = 0; i < repetitions; ++i) {
            const DWORD btnID = SCBenchPress::PickBtn(btnIDs, i);
            std::size_t displayed = 0;
            const bool pressed = SCBenchPress::Press(env, btnClassIDs, fld, btnID, pressTimes, displayed);

            recs.resize(rows);
            env.GetTargetRecList(recs.data(), recCount);
            recs.resize(recCount);
            const Clock::time_point kernelStart = Clock::now();
            const std::size_t met = kernel.Run(fld, recs);
            kernelTimes.push_back(SCBenchTime::GetMilliseconds(Clock::now() - kernelStart));
            checksum += met;
            if (!pressed || met != displayed) {
                std::fprintf(stderr, "field %zu: the engine displays %zu buttons, the kernel met %zu\n", fld,
                             displayed, met);
                return 1;
            }
        }
        const double press = SCBenchTime::GetMedian(pressTimes);
        const double bare = SCBenchTime::GetMedian(kernelTimes);
        const bool within = press <= 3 * bare + 0.1;
        allWithin = allWithin && within;
        std::printf("%10u %10u %14.4f %14.4f %8.2f %14.4f %7s\n", bench.GetDistinctCount(fld), recCount,
                    press, bare, press / bare, 3 * bare + 0.1, within ? "within" : "missed");
    }
    std::printf("\n%s (checksum %zu)\n", allWithin ? "every field within the goal" : "the goal is missed",
                checksum);
    return 0;
}
