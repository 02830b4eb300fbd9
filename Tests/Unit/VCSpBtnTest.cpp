#include "CCllBtn.h"
#include "CIncBtn.h"
#include "Support/CAllocFault.h"
#include "Support/CTestBtnCnd.h"

#include <gtest/gtest.h>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

constexpr DWORD INC = SCBUICoreCom::BTN_ID_INC_BEGIN;
constexpr DWORD CLL = SCBUICoreCom::BTN_ID_CLL_BEGIN;
using List = std::vector<DWORD>;

TEST(VCSpBtn, ANewButtonIsEffectiveAndWithoutMembers)
{
    const long long before = _time64(nullptr);
    const CIncBtn inc(INC, VCSpBtn::MMBBTNSELMTH_SELECT);
    EXPECT_EQ(inc.id, INC);
    EXPECT_TRUE(inc.IsEffective());
    EXPECT_TRUE(inc.mmbBtnIDList.empty());
    EXPECT_EQ(inc.mmbBtnCnd, nullptr);
    EXPECT_FALSE(inc.dispMember);
    EXPECT_EQ(inc.visibleInfo, 0u);
    EXPECT_EQ(inc.name, nullptr);
    EXPECT_GE(inc.createTime, before);
    EXPECT_EQ(inc.updateTime, inc.createTime);
    EXPECT_EQ(inc.GetType(), SCBUICoreCom::BTNTYPE_INC);
    const CCllBtn cll(CLL, VCSpBtn::MMBBTNSELMTH_CONDITION);
    EXPECT_EQ(cll.mmbBtnSelMth, VCSpBtn::MMBBTNSELMTH_CONDITION);
    EXPECT_EQ(cll.GetType(), SCBUICoreCom::BTNTYPE_CLL);
}

TEST(VCSpBtn, ClearLeavesNothingOfTheButton)
{
    CIncBtn inc(INC, VCSpBtn::MMBBTNSELMTH_CONDITION);
    int living = 0;
    inc.mmbBtnCnd.reset(CTestBtnCnd(List{2}, &living).CreateClone());
    EXPECT_EQ(living, 1);
    inc.SetAlias("group");
    inc.mmbBtnIDList = {2, 3};
    inc.effective = false;
    inc.dispMember = true;
    inc.sel = true;
    inc.ClearOfFixedSpec(); // of a special button nothing but users' work is there to be dropped
    EXPECT_EQ(living, 0);
    EXPECT_EQ(inc.id, 0u);
    EXPECT_EQ(inc.GetShownText(), nullptr);
    EXPECT_TRUE(inc.mmbBtnIDList.empty());
    EXPECT_TRUE(inc.effective);
    EXPECT_FALSE(inc.dispMember);
    EXPECT_FALSE(inc.sel);
    EXPECT_EQ(inc.mmbBtnSelMth, VCSpBtn::MMBBTNSELMTH_SELECT);
    EXPECT_EQ(inc.createTime, 0);
    EXPECT_EQ(inc.updateTime, 0);
}

TEST(VCSpBtn, ACloneHasAllButTheTimes)
{
    int living = 0;
    {
        CCllBtn cll(CLL, VCSpBtn::MMBBTNSELMTH_CONDITION);
        cll.mmbBtnCnd.reset(CTestBtnCnd(List{2}, &living).CreateClone());
        cll.SetAlias("best");
        cll.mmbBtnIDList = {3, 2};
        cll.effective = false;
        cll.visibleInfo = VISINFO_INEFFECTIVE;
        cll.sel = true;
        cll.createTime = 1;
        cll.updateTime = 2;
        const long long before = _time64(nullptr);
        const std::unique_ptr<VCBtn> clone = cll.Clone();
        const auto& cloned = dynamic_cast<const CCllBtn&>(*clone);
        EXPECT_EQ(cloned.id, CLL);
        EXPECT_STREQ(cloned.GetShownText(), "best");
        EXPECT_EQ(cloned.mmbBtnIDList, List({3, 2}));
        EXPECT_FALSE(cloned.effective);
        EXPECT_TRUE(cloned.sel);
        EXPECT_EQ(cloned.visibleInfo, VISINFO_INEFFECTIVE);
        EXPECT_EQ(cloned.mmbBtnSelMth, VCSpBtn::MMBBTNSELMTH_CONDITION);
        EXPECT_GE(cloned.createTime, before);
        EXPECT_EQ(cloned.updateTime, cloned.createTime);
        EXPECT_EQ(living, 2); // a condition of its own
    }
    EXPECT_EQ(living, 0);

    CIncBtn inc(INC, VCSpBtn::MMBBTNSELMTH_SELECT); // no text and no condition: absent stays absent
    inc.dispMember = true;
    const std::unique_ptr<VCBtn> clone = inc.Clone();
    EXPECT_TRUE(dynamic_cast<const CIncBtn&>(*clone).dispMember);
    EXPECT_EQ(clone->GetShownText(), nullptr);
    EXPECT_EQ(dynamic_cast<const CIncBtn&>(*clone).mmbBtnCnd, nullptr);
}

TEST(VCSpBtn, CopyTakesOverWhatEveryKindOfButtonHas)
{
    CIncBtn source(INC, VCSpBtn::MMBBTNSELMTH_SELECT);
    source.SetAlias("group");
    source.mmbBtnIDList = {2};
    source.effective = false;
    source.dispMember = true;
    CIncBtn target(INC + 1, VCSpBtn::MMBBTNSELMTH_SELECT);
    target.Copy(source);
    EXPECT_EQ(target.id, INC);
    EXPECT_STREQ(target.GetShownText(), "group");
    EXPECT_TRUE(target.mmbBtnIDList.empty());
    EXPECT_TRUE(target.effective);
    EXPECT_FALSE(target.dispMember);
}

TEST(VCSpBtn, ACloneThatRunsOutOfMemoryLeavesNothing)
{
    int living = 0;
    CCllBtn cll(CLL, VCSpBtn::MMBBTNSELMTH_CONDITION);
    cll.mmbBtnCnd.reset(CTestBtnCnd(List{2}, &living).CreateClone());
    cll.SetAlias("a text that is longer than what a string keeps in itself");
    cll.mmbBtnIDList = {3, 2};
    const int failures = FailEveryAllocation([] { return 0; }, [&cll](int) { cll.Clone(); },
                                             [&living](int) { EXPECT_EQ(living, 1); });
    EXPECT_GE(failures, 4);
}

} // namespace
