#ifndef SPECSAMPLE_H
#define SPECSAMPLE_H

#include "CBUIDataMngr.h"
#include "CCoreSumMngr.h"
#include "Support/MakeTable.h"

#include <string>
#include <vector>

// A small environment that has something of everything that is saved.

namespace NSKZ::Test {

inline NSKZCore::CSourceDataMngr MakeSampleTable()
{
    return MakeTable({{"shop", TEXT, {"a", "a", "b", "", "c", "b"}},
                      {"day", DATE, {"2024-01-05", "2024-01-20", "2024-02-01", "?", "2024-01-05", ""}},
                      {"amount", NUM, {"10", "20", "10", "x", "20", "10"}},
                      {"hour", TIME, {"09:00:00", "10:30:00", "10:45:00", "", "09:00:00", "10:30:00"}}});
}

struct SSampleEnv
{
    // An empty one is to be filled by reading.
    explicit SSampleEnv(bool isBuilt, bool hasSums = true)
        : table(MakeSampleTable()), sums(table), env(Make(isBuilt, hasSums ? &sums : nullptr))
    {}

    static constexpr DWORD REC_COUNT = 6;

    NSKZCore::CSourceDataMngr table;
    NSKZCore::CCoreSumMngr sums;
    NSKZCore::CBUIDataMngr env;

private:
    NSKZCore::CBUIDataMngr Make(bool isBuilt, const NSKZCore::CCoreSumMngr* usedSums) const
    {
        constexpr auto ON_MEM = NSKZCore::SCBUICoreCom::LINKTBLVERTYPE_ONMEM;
        return isBuilt ? NSKZCore::CBUIDataMngr(1, ON_MEM, ON_MEM, table, usedSums, nullptr)
                       : NSKZCore::CBUIDataMngr(1, ON_MEM, ON_MEM, table, usedSums);
    }
};

// Special buttons within each other, groups of dates and times, virtual classes of both kinds with buttons
// over each other, free identifiers, aliases.
inline void AddSpecialBtns(NSKZCore::CBUIDataMngr& env)
{
    using namespace NSKZCore;
    using List = std::vector<DWORD>;
    constexpr auto SELECT = VCSpBtn::MMBBTNSELMTH_SELECT;
    const auto create = [&env](DWORD classID, SCBUICoreCom::EBtnType type, const char* name,
                               const List& members,
                               VCSpBtn::EMmbBtnSelMth method = VCSpBtn::MMBBTNSELMTH_SELECT) {
        DWORD btnID = 0;
        env.CreateSpBtn(btnID, classID, type, name, method, &members, nullptr);
        return btnID;
    };
    const auto createVirInc = [&env](DWORD classID, const char* name, const List& members, DWORD refClassID) {
        DWORD btnID = 0;
        env.CreateSpBtn(btnID, classID, SCBUICoreCom::BTNTYPE_VIRINC, name, SELECT, &members, nullptr,
                        refClassID);
        return btnID;
    };
    env.SetAliasOfBtn(1, 2, "alias");
    const DWORD inc = create(1, SCBUICoreCom::BTNTYPE_INC, "inc", {2, 3});
    env.SetDispMemberBtnInfoOfIncBtn(1, inc, true);
    const DWORD blank = create(1, SCBUICoreCom::BTNTYPE_INC, "blank", {});
    create(1, SCBUICoreCom::BTNTYPE_INC, "outer", {inc, 1});
    env.DestroySpBtn(1, blank);
    create(1, SCBUICoreCom::BTNTYPE_CLL, "cll", {4});
    create(3, SCBUICoreCom::BTNTYPE_CLL, "by condition", {}, VCSpBtn::MMBBTNSELMTH_CONDITION);
    env.SetDispEmpValBtnInfoOfBtnClass(3, false);
    SCDeclareConstant::SDateDispForm dateForm;
    dateForm.kind = 2;
    dateForm.form = 7;
    dateForm.option = 0;
    env.SetDispFormOfDateBtnClass(2, dateForm);
    SCDeclareConstant::STimeDispForm timeForm;
    timeForm.kind = 3;
    timeForm.form = 1;
    timeForm.SetOptionalForm("{h}");
    env.SetDispFormOfTimeBtnClass(4, timeForm);
    DWORD common = 0;
    DWORD fixed = 0;
    env.CreateVirBtnClass("common", true, common);
    env.CreateVirBtnClass("fixed", false, fixed);
    const DWORD upper = createVirInc(common, "upper", {2, inc}, 1);
    createVirInc(common, "lower", {3}, 3);
    createVirInc(fixed, "over", {upper}, common);
    create(fixed, SCBUICoreCom::BTNTYPE_CLL, "own", {SCBUICoreCom::BTN_ID_VIRINC_BEGIN});
}

// The texts of a form with all moments at the same one, so that it is the same whenever it is written.
inline std::string WithoutMoments(std::string text)
{
    for (const std::string attribute : {"createTime=\"", "updateTime=\""}) {
        for (std::size_t at = text.find(attribute); at != std::string::npos; at = text.find(attribute, at)) {
            at += attribute.size();
            text.replace(at, text.find('"', at) - at, "2024/09/01 08:30:00");
        }
    }
    return text;
}

} // namespace NSKZ::Test

#endif
