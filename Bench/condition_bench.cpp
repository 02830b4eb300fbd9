// The benchmark of special buttons: a press with 100 condition cll buttons on the item of 10,000 values, each
// of which picks its members by the rank of their sums and is asked anew after the press; and the making of
// an inc button with 100,000 members.
//
// Beside the press stands, in the same run, the bare loop that sums the numeric column by button over the
// target records and sorts once. The figure to quote is the ratio of what the conditions add to a press to
// that loop.
//
//     condition_bench [ROWS [REPETITIONS]]

#include "CBenchTable.h"
#include "SCBenchTime.h"

#include "CBasicBtnCnd.h"
#include "CBUIDataMngr.h"
#include "CCoreSumMngr.h"
#include "CCSVLoader.h"
#include "CSourceDataMngr.h"
#include "CUnitCndOfBscBtnCnd.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <vector>

using namespace NSKZ::NSKZCore;

namespace {

constexpr DWORD CND_COUNT = 100;
constexpr std::size_t RANKED_FLD = 5;  // 10,000 distinct values
constexpr std::size_t GROUPED_FLD = 7; // a value of its own in each record

// The column of buttons and of numbers, as a program made for nothing but this would hold them.
struct SBareLoop
{
    std::vector<DWORD> btnOfRec;
    std::vector<double> numbers;
    std::vector<double> sums;
    std::vector<std::pair<double, DWORD>> ranking;

    // The sum of the highest.
    double Run(const std::vector<DWORD>& recs)
    {
        std::fill(sums.begin(), sums.end(), 0.0);
        for (const DWORD rec : recs)
            sums[btnOfRec[rec]] += numbers[rec];
        ranking.clear();
        for (DWORD btnID = 0; btnID < sums.size(); ++btnID)
            ranking.emplace_back(sums[btnID], btnID);
        std::sort(ranking.begin(), ranking.end(), std::greater<>());
        return ranking.front().first;
    }
};

CBasicBtnCnd MakeRankCnd(DWORD numID, DWORD rankNum, bool fromTheHighest)
{
    using ESelCondition = CUnitCndOfBscBtnCnd::ESelCondition;
    CUnitCndOfBscBtnCnd unit;
    unit.SetNumID(numID);
    unit.SetRankNum(rankNum);
    unit.SetSelCondition(fromTheHighest ? ESelCondition::Rank_High : ESelCondition::Rank_Low);
    CBasicBtnCnd cnd;
    cnd.SetCndComponent(unit);
    return cnd;
}

} // namespace

int main(int argc, char** argv)
{
    const auto rows = static_cast<std::uint32_t>(argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 1000000);
    const int repetitions = argc > 2 ? std::atoi(argv[2]) : 15;
    if (rows < 1000 || repetitions < 1) {
        std::fprintf(stderr, "usage: condition_bench [ROWS (at least 1000) [REPETITIONS]]\n");
        return 2;
    }
    const CBenchTable bench(rows);
    CSourceDataMngr table;
    CCSVLoader(CCSVLoader::SOptions{}).LoadMemory(bench.MakeCSV(), "bench", table);
    const CCoreSumMngr sums(table);
    constexpr auto ON_MEM = SCBUICoreCom::LINKTBLVERTYPE_ONMEM;
    CBUIDataMngr plain(1, ON_MEM, ON_MEM, table, &sums, nullptr);
    CBUIDataMngr env(2, ON_MEM, ON_MEM, table, &sums, nullptr);
    std::vector<DWORD> btnClassIDs;
    env.GetAllBtnClassIDList(btnClassIDs, true);
    const DWORD rankedClassID = btnClassIDs[RANKED_FLD];
    DWORD amountID = 0;
    env.GetFldID(btnClassIDs.back(), amountID);

    SBareLoop bare;
    bare.btnOfRec.resize(rows);
    bare.numbers.resize(rows);
    std::vector<DWORD> recs(rows);
    std::vector<DWORD> btnIDs;
    env.GetAllBtnIDListOfBtnClass(rankedClassID, btnIDs, true);
    for (const DWORD btnID : btnIDs) {
        DWORD count = 0;
        env.GetRecListThatRelatesToBtn(rankedClassID, btnID, recs.data(), count);
        for (DWORD i = 0; i < count; ++i)
            bare.btnOfRec[recs[i]] = btnID;
        bare.sums.resize(std::max<std::size_t>(bare.sums.size(), btnID + 1));
    }
    for (DWORD rec = 0; rec < rows; ++rec)
        bare.numbers[rec] = sums.GetRecordValue(amountID, rec);

    std::vector<DWORD> cndBtnIDs(CND_COUNT);
    for (DWORD i = 0; i < CND_COUNT; ++i) {
        const CBasicBtnCnd cnd = MakeRankCnd(amountID, 1 + i % 20, i % 2 == 0);
        env.CreateSpBtn(cndBtnIDs[i], rankedClassID, SCBUICoreCom::BTNTYPE_CLL, "rank",
                        VCSpBtn::MMBBTNSELMTH_CONDITION, nullptr, &cnd);
    }

    std::printf("%u rows; %u condition cll buttons on an item of %zu values, members by rank of their sums\n",
                rows, CND_COUNT, btnIDs.size());
    std::printf("%10s %10s %14s %14s %14s %14s %8s\n", "distinct", "records", "press ms", "without ms",
                "conditions ms", "bare loop ms", "ratio");
    for (const std::size_t fld : {std::size_t{0}, std::size_t{1}, std::size_t{2}, std::size_t{3}}) {
        std::vector<DWORD> pressed;
        env.GetAllBtnIDListOfBtnClass(btnClassIDs[fld], pressed, true);
        std::erase(pressed, SCBUICoreCom::BTN_ID_EMPVAL);
        std::vector<double> with;
        std::vector<double> without;
        std::vector<double> loop;
        DWORD recCount = 0;
        for (int i = 0; i < repetitions; ++i) {
            const DWORD btnID = pressed[static_cast<std::size_t>(i) % pressed.size()];
            env.ClearAllBtnSelections(true);
            plain.ClearAllBtnSelections(true);
            with.push_back(SCBenchTime::Measure([&] { env.SelectTheBtn(btnClassIDs[fld], btnID, true); }));
            without.push_back(
                SCBenchTime::Measure([&] { plain.SelectTheBtn(btnClassIDs[fld], btnID, true); }));
            recs.resize(rows);
            env.GetTargetRecList(recs.data(), recCount);
            recs.resize(recCount);
            double highest = 0.0;
            loop.push_back(SCBenchTime::Measure([&] { highest = bare.Run(recs); }));

            std::vector<DWORD> members;
            double sum = 0.0;
            env.GetMemberBtnIDListOfSpBtn(rankedClassID, cndBtnIDs.front(), members);
            if (members.empty() ||
                !env.GetSumValueCacheMngrObjRef().GetSumValue(rankedClassID, members.front(), amountID,
                                                              sum) ||
                sum != highest) {
                std::fprintf(stderr, "the first rank is worth %g, the bare loop says %g\n", sum, highest);
                return 1;
            }
        }
        const double pressMs = SCBenchTime::GetMedian(with);
        const double withoutMs = SCBenchTime::GetMedian(without);
        const double loopMs = SCBenchTime::GetMedian(loop);
        std::printf("%10u %10u %14.3f %14.3f %14.3f %14.3f %8.2f\n", bench.GetDistinctCount(fld), recCount,
                    pressMs, withoutMs, pressMs - withoutMs, loopMs, (pressMs - withoutMs) / loopMs);
    }

    std::vector<DWORD> members;
    plain.GetAllBtnIDListOfBtnClass(btnClassIDs[GROUPED_FLD], members, true);
    std::erase(members, SCBUICoreCom::BTN_ID_EMPVAL);
    members.resize(std::min<std::size_t>(members.size(), 100000));
    std::vector<double> making;
    std::vector<double> going;
    for (int i = 0; i < repetitions; ++i) {
        DWORD btnID = 0;
        making.push_back(SCBenchTime::Measure([&] {
            plain.CreateSpBtn(btnID, btnClassIDs[GROUPED_FLD], SCBUICoreCom::BTNTYPE_INC, "group",
                              VCSpBtn::MMBBTNSELMTH_SELECT, &members, nullptr);
        }));
        going.push_back(SCBenchTime::Measure([&] { plain.DestroySpBtn(btnClassIDs[GROUPED_FLD], btnID); }));
    }
    std::printf("\nan inc button of %zu members: made in %.2f ms, destroyed in %.2f ms\n", members.size(),
                SCBenchTime::GetMedian(making), SCBenchTime::GetMedian(going));
    return 0;
}
