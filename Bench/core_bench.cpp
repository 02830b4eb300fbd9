// What a press and a listing are made of, piece by piece.

#include "CBenchTable.h"

#include "CBUIDataMngr.h"
#include "CCoreSumMngr.h"
#include "CCSVLoader.h"
#include "CSourceDataMngr.h"
#include "SCKZCoreCom.h"
#include "SCSortRecs.h"
#include "VCBtnClass.h"

#include <benchmark/benchmark.h>

#include <numeric>
#include <random>

using namespace NSKZ::NSKZCore;

namespace {

constexpr DWORD RECORDS = 1000000;

std::vector<DWORD> MakeEveryNth(DWORD n)
{
    std::vector<DWORD> recs;
    for (DWORD rec = 0; rec < RECORDS; rec += n)
        recs.push_back(rec);
    return recs;
}

void BM_IntersectRecordLists(benchmark::State& state)
{
    const std::vector<DWORD> list = MakeEveryNth(static_cast<DWORD>(state.range(0)));
    const std::vector<DWORD> other = MakeEveryNth(3);
    std::vector<DWORD> work(list.size());
    for (auto _ : state) {
        work = list;
        auto count = static_cast<DWORD>(work.size());
        benchmark::DoNotOptimize(SCKZCoreCom::MergeRecListByANDCnd(work.data(), count, other.data(),
                                                                   static_cast<DWORD>(other.size())));
    }
}
BENCHMARK(BM_IntersectRecordLists)->Arg(2)->Arg(100)->Arg(10000)->Unit(benchmark::kMicrosecond);

void BM_UniteRecordLists(benchmark::State& state)
{
    const std::vector<DWORD> list = MakeEveryNth(2);
    const std::vector<DWORD> other = MakeEveryNth(3);
    std::vector<DWORD> out(list.size() + other.size());
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            SCKZCoreCom::MergeRecListByORCnd(list.data(), static_cast<DWORD>(list.size()), other.data(),
                                             static_cast<DWORD>(other.size()), out.data()));
    }
}
BENCHMARK(BM_UniteRecordLists)->Unit(benchmark::kMicrosecond);

// The records of `range` pressed buttons, one slice behind the other.
void BM_SortRecordsOfButtons(benchmark::State& state)
{
    std::vector<DWORD> slices;
    const auto btnCount = static_cast<DWORD>(state.range(0));
    for (DWORD btn = 0; btn < btnCount; ++btn) {
        for (DWORD rec = btn; rec < RECORDS; rec += 2 * btnCount)
            slices.push_back(rec);
    }
    std::vector<DWORD> work;
    for (auto _ : state) {
        work = slices;
        SCSortRecs::Sort(work.data(), static_cast<DWORD>(work.size()));
        benchmark::DoNotOptimize(work.data());
    }
}
BENCHMARK(BM_SortRecordsOfButtons)->Arg(2)->Arg(100)->Arg(10000)->Unit(benchmark::kMicrosecond);

// An environment over the table of the press benchmark with a tenth of its rows.
struct SEnvironment
{
    SEnvironment()
    {
        const std::string csv = CBenchTable(RECORDS / 10).MakeCSV();
        CCSVLoader(CCSVLoader::SOptions{}).LoadMemory(csv, "bench", table);
        sums = std::make_unique<CCoreSumMngr>(table);
        env = std::make_unique<CBUIDataMngr>(1, SCBUICoreCom::LINKTBLVERTYPE_ONMEM,
                                             SCBUICoreCom::LINKTBLVERTYPE_ONMEM, table, sums.get(), nullptr);
    }
    CSourceDataMngr table;
    std::unique_ptr<CCoreSumMngr> sums;
    std::unique_ptr<CBUIDataMngr> env;
};

CBUIDataMngr& GetEnvironment()
{
    static SEnvironment environment;
    return *environment.env;
}

void BM_ListDisplayedButtonsByName(benchmark::State& state)
{
    CBUIDataMngr& env = GetEnvironment();
    env.ClearAllBtnSelections(true);
    std::vector<DWORD> btnIDs;
    for (auto _ : state)
        env.GetBtnNameOrdListOfBtnClass(static_cast<DWORD>(state.range(0)), VCBtnClass::ORDLIST_NORMAL,
                                        btnIDs);
}
BENCHMARK(BM_ListDisplayedButtonsByName)->Arg(5)->Arg(8)->Arg(9)->Unit(benchmark::kMicrosecond);

// The sums of all displayed buttons of an item of 1000 values, nothing being known yet.
void BM_SumsOfAnItem(benchmark::State& state)
{
    CBUIDataMngr& env = GetEnvironment();
    env.ClearAllBtnSelections(true);
    DWORD amount = 0;
    env.GetFldID(9, amount);
    double total = 0.0;
    for (auto _ : state) {
        env.GetSumValueCacheMngrObjRef().ClearSumValueCache();
        env.GetSumValueCacheMngrObjRef().GetTotalValue(5, amount, total);
    }
    benchmark::DoNotOptimize(total);
}
BENCHMARK(BM_SumsOfAnItem)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
