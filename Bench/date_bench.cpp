// The benchmark of dates: an item of 50,000 distinct dates, grouped into fiscal quarters and again after a
// changed start month.
//
// Beside it stands, in the same run, the bare loop that reads the same texts and puts each button into the
// array of its quarter. The figure to quote is the time, and how many times the bare loop it is.
//
//     date_bench [ROWS [REPETITIONS]]

#include "SCBenchTime.h"

#include "CBUIDataMngr.h"
#include "CFldValueList.h"
#include "CSourceDataMngr.h"
#include "SCDispForm.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

using namespace NSKZ::NSKZCore;

namespace {

constexpr std::uint32_t DATE_COUNT = 50000;

std::string MakeDate(std::uint32_t number)
{
    using namespace std::chrono;
    const year_month_day date(sys_days(1900y / January / 1) + days(number));
    char text[16];
    std::snprintf(text, sizeof text, "%04d-%02u-%02u", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
    return text;
}

// The texts as quarters of fiscal years that begin in a month.
std::size_t GroupBarely(const std::vector<const char*>& texts, int startMonth)
{
    std::map<int, std::vector<std::size_t>> groups;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const int year = std::atoi(texts[i]);
        const int month = std::atoi(texts[i] + 5);
        const int monthsSinceStart = year * 12 + month - startMonth;
        groups[monthsSinceStart / 3].push_back(i);
    }
    return groups.size();
}

void SetForm(CBUIDataMngr& env, DWORD btnClassID, const char* name)
{
    SCDeclareConstant::SDateDispForm form;
    SCDispForm::FindDateForm(name, form);
    env.SetDispFormOfDateBtnClass(btnClassID, form);
}

} // namespace

int main(int argc, char** argv)
{
    const auto rows = static_cast<std::uint32_t>(argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 1000000);
    const int repetitions = argc > 2 ? std::atoi(argv[2]) : 15;
    if (rows < DATE_COUNT || repetitions < 1) {
        std::fprintf(stderr, "usage: date_bench [ROWS (at least %u) [REPETITIONS]]\n", DATE_COUNT);
        return 2;
    }
    CSourceDataMngr table;
    CFldValueList values;
    for (std::uint32_t row = 0; row < rows; ++row)
        values.Append(MakeDate(static_cast<std::uint32_t>(row * std::uint64_t{2654435761} % DATE_COUNT)));
    CSourceDataMngr::SFldInfo info;
    info.name = "day";
    info.spec.dataType = SCDeclareConstant::DATATYPE_DATE;
    DWORD fldID = 0;
    table.AddFld(info, std::move(values), fldID);
    constexpr auto ON_MEM = SCBUICoreCom::LINKTBLVERTYPE_ONMEM;
    CBUIDataMngr env(1, ON_MEM, ON_MEM, table, nullptr, nullptr);
    DWORD btnClassID = 0;
    env.GetBtnClassID(fldID, btnClassID);
    std::vector<DWORD> btnIDs;
    env.GetAllBtnIDListOfBtnClass(btnClassID, btnIDs, true);
    std::erase(btnIDs, SCBUICoreCom::BTN_ID_EMPVAL);
    std::vector<const char*> texts(btnIDs.size());
    for (std::size_t i = 0; i < btnIDs.size(); ++i)
        env.GetAliasOfBtn(btnClassID, btnIDs[i], texts[i]);

    std::vector<double> grouping;
    std::vector<double> regrouping;
    std::vector<double> each;
    std::vector<double> bare;
    DWORD quarterCount = 0;
    for (int i = 0; i < repetitions; ++i) {
        table.SetStartMonth(4);
        SetForm(env, btnClassID, "day-of-month"); // few groups to leave
        grouping.push_back(SCBenchTime::Measure([&] { SetForm(env, btnClassID, "fiscal-quarter"); }));
        env.GetSystemMngrSpBtnCountOfBtnClass(btnClassID, quarterCount);
        std::size_t expected = 0;
        bare.push_back(SCBenchTime::Measure([&] { expected = GroupBarely(texts, 4); }));
        if (quarterCount != expected) {
            std::fprintf(stderr, "%u quarters, the bare loop says %zu\n", quarterCount, expected);
            return 1;
        }
        table.SetStartMonth(6);
        regrouping.push_back(SCBenchTime::Measure([&] { env.AdjstAccordingToChangeDateCriterionInfo(); }));
        table.SetStartMonth(4);
        SetForm(env, btnClassID, "day-of-month");
        each.push_back(SCBenchTime::Measure([&] { SetForm(env, btnClassID, "as-it-is"); }));
    }
    const double bareMs = SCBenchTime::GetMedian(bare);
    std::printf("%u rows, %zu distinct dates\n", rows, texts.size());
    std::printf("%-44s %10s %8s\n", "", "ms", "ratio");
    const auto print = [bareMs](const char* what, const std::vector<double>& times) {
        const double ms = SCBenchTime::GetMedian(times);
        std::printf("%-44s %10.2f %8.2f\n", what, ms, ms / bareMs);
    };
    std::printf("%-44s %10.2f\n", "bare loop", bareMs);
    print(("into fiscal quarters, of which there are " + std::to_string(quarterCount)).c_str(), grouping);
    print("again after a changed start month", regrouping);
    print("a group for each date", each);
    return 0;
}
