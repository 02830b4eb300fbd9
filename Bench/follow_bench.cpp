// The benchmark of following the source data: records inserted and deleted at the head, in the middle and at
// the end of a table that an environment stands on, beside a rebuild of the environment in the same run. The
// figure to quote is the share of the rebuild.
//
//     follow_bench [ROWS [REPETITIONS [RECORDS]]]
//
// The records that are inserted are a copy of some that are there, so that the table stays what it is.

#include "CBenchTable.h"
#include "SCBenchTime.h"

#include "CBUIDataMngr.h"
#include "CCoreSumMngr.h"
#include "CCSVLoader.h"
#include "CSourceDataMngr.h"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

using namespace NSKZ::NSKZCore;

int main(int argc, char** argv)
{
    const auto rows = static_cast<DWORD>(argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 1000000);
    const int repetitions = argc > 2 ? std::atoi(argv[2]) : 15;
    const auto count = static_cast<DWORD>(argc > 3 ? std::strtoul(argv[3], nullptr, 10) : 1000);
    if (count == 0 || rows < 2 * count || repetitions < 1) {
        std::fprintf(stderr, "usage: follow_bench [ROWS [REPETITIONS [RECORDS]]]\n");
        return 2;
    }
    const CBenchTable bench(rows);
    CSourceDataMngr shortTable;
    CCSVLoader(CCSVLoader::SOptions{}).LoadMemory(bench.MakeCSV(), "bench", shortTable);

    // The values of some records, by record and in the order of the fields.
    std::vector<DWORD> fldIDs;
    shortTable.GetSrcFrmDataFldID(fldIDs);
    std::vector<std::string> texts;
    for (DWORD i = 0; i < count; ++i) {
        for (const DWORD fldID : fldIDs) {
            const std::string_view value = shortTable.GetFldData(fldID)->GetValue(rows / 3 + i);
            texts.emplace_back(value);
        }
    }
    const std::vector<std::string_view> cells(texts.begin(), texts.end());

    CSourceDataMngr table(shortTable);
    CCoreSumMngr sums(table);
    constexpr auto ON_MEM = SCBUICoreCom::LINKTBLVERTYPE_ONMEM;
    std::vector<double> rebuilds;
    for (int i = 0; i < repetitions; ++i) {
        rebuilds.push_back(
            SCBenchTime::Measure([&] { const CBUIDataMngr env(1, ON_MEM, ON_MEM, table, &sums, nullptr); }));
    }
    const double rebuild = SCBenchTime::GetMedian(rebuilds);
    std::printf("%u rows, %u of them inserted and deleted; a rebuild takes %.1f ms\n", rows, count, rebuild);
    std::printf("%-8s %14s %8s %14s %8s\n", "where", "insertion, ms", "share", "deletion, ms", "share");
    struct SPlace
    {
        const char* name;
        DWORD startRec;
    };
    for (const SPlace& place : {SPlace{"head", 0}, SPlace{"middle", rows / 2}, SPlace{"end", rows}}) {
        table = shortTable;
        CBUIDataMngr env(1, ON_MEM, ON_MEM, table, &sums, nullptr);
        CSourceDataMngr longTable(shortTable);
        longTable.InsertRecs(place.startRec, cells);
        std::vector<double> insertions;
        std::vector<double> deletions;
        for (int i = 0; i < repetitions; ++i) {
            table = longTable;
            sums.Refresh();
            insertions.push_back(
                SCBenchTime::Measure([&] { env.AdjstAccordingToInsertRec(place.startRec, count); }));
            table = shortTable;
            sums.Refresh();
            deletions.push_back(
                SCBenchTime::Measure([&] { env.AdjstAccordingToDeleteRec(place.startRec, count); }));
            env.ClearUndoOfTheSrcData();
        }
        const double insertion = SCBenchTime::GetMedian(insertions);
        const double deletion = SCBenchTime::GetMedian(deletions);
        std::printf("%-8s %14.1f %7.1f%% %14.1f %7.1f%%\n", place.name, insertion, 100 * insertion / rebuild,
                    deletion, 100 * deletion / rebuild);
    }
    return 0;
}
