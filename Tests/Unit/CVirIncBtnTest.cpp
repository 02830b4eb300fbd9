#include "CVirIncBtn.h"

#include "Support/CTestBtnCnd.h"

#include <gtest/gtest.h>

using namespace NSKZ::NSKZCore;
using NSKZ::Test::CTestBtnCnd;

namespace {

constexpr DWORD VIRINC = SCBUICoreCom::BTN_ID_VIRINC_BEGIN;
constexpr DWORD COMMON_CLASS = SCBUICoreCom::BTNCLS_ID_VIR_COMMON_BEGIN;
constexpr DWORD FIXED_CLASS = SCBUICoreCom::BTNCLS_ID_VIR_FIXED_BEGIN;
constexpr auto SELECT = VCSpBtn::MMBBTNSELMTH_SELECT;
constexpr auto CONDITION = VCSpBtn::MMBBTNSELMTH_CONDITION;

void Fill(CVirIncBtn& btn)
{
    btn.SetAlias("group");
    btn.sel = true;
    btn.visibleInfo = VISINFO_RELATION | VISINFO_NOLIVEMEMBER;
    btn.mmbBtnIDList = {4, 2};
    btn.backReferences = std::make_unique<VCBtn::SBackReferences>();
    btn.backReferences->spBtnIDsInClass.insert(SCBUICoreCom::BTN_ID_INC_BEGIN);
    btn.backReferences->spBtnIDsOfOtherClass.insert({COMMON_CLASS, VIRINC + 1});
    btn.backReferences->spBtnIDsOfOtherClass.insert({FIXED_CLASS, VIRINC + 1});
}

TEST(CVirIncBtn, IsAnEffectiveButtonOfItsKindMadeNow)
{
    const CVirIncBtn btn(VIRINC, CONDITION, 7, true);
    EXPECT_EQ(btn.id, VIRINC);
    EXPECT_EQ(btn.GetType(), SCBUICoreCom::BTNTYPE_VIRINC);
    EXPECT_EQ(btn.mmbBtnSelMth, CONDITION);
    EXPECT_EQ(btn.refBtnClassID, 7u);
    EXPECT_TRUE(btn.commonBtn);
    EXPECT_TRUE(btn.IsEffective());
    EXPECT_TRUE(btn.mmbBtnIDList.empty());
    EXPECT_EQ(btn.createTime, btn.updateTime);
    EXPECT_LE(VCSpBtn::GetPresentTime() - btn.createTime, 5);
}

TEST(CVirIncBtn, ClearedItRefersToNoClassAndIsNotCommon)
{
    CVirIncBtn btn(VIRINC, SELECT, 7, true);
    Fill(btn);
    btn.Clear();
    EXPECT_EQ(btn.refBtnClassID, 0u);
    EXPECT_FALSE(btn.commonBtn);
    EXPECT_EQ(btn.id, 0u);
    EXPECT_TRUE(btn.mmbBtnIDList.empty());
    EXPECT_FALSE(btn.HasBackReferences());
}

TEST(CVirIncBtn, ACommonButtonKeepsItsDefinitionWhenFixedThingsAreCleared)
{
    CVirIncBtn btn(VIRINC, SELECT, 7, true);
    Fill(btn);
    btn.effective = false;
    btn.ClearOfFixedSpec();
    EXPECT_EQ(btn.refBtnClassID, 7u);
    EXPECT_TRUE(btn.commonBtn);
    EXPECT_EQ(btn.mmbBtnIDList, std::vector<DWORD>({4, 2}));
    EXPECT_STREQ(btn.GetShownText(), "group");
    EXPECT_FALSE(btn.IsEffective());
    EXPECT_FALSE(btn.sel);
    EXPECT_EQ(btn.visibleInfo, VISINFO_NOLIVEMEMBER);
    EXPECT_TRUE(btn.backReferences->spBtnIDsInClass.empty());
    EXPECT_EQ(btn.backReferences->spBtnIDsOfOtherClass.size(), 1u);
    EXPECT_TRUE(btn.backReferences->spBtnIDsOfOtherClass.contains({COMMON_CLASS, VIRINC + 1}));
}

TEST(CVirIncBtn, AFixedButtonLosesMembersAndClassWhenFixedThingsAreCleared)
{
    CVirIncBtn btn(VIRINC, SELECT, 7, false);
    Fill(btn);
    btn.ClearOfFixedSpec();
    EXPECT_EQ(btn.refBtnClassID, 0u);
    EXPECT_TRUE(btn.mmbBtnIDList.empty());
    EXPECT_EQ(btn.GetShownText(), nullptr);
}

TEST(CVirIncBtn, ACloneHasAllOfItButTheTimes)
{
    CVirIncBtn btn(VIRINC, CONDITION, 7, true);
    Fill(btn);
    btn.createTime = 1;
    btn.effective = false;
    btn.mmbBtnCnd.reset(CTestBtnCnd({3}).CreateClone());
    const std::unique_ptr<VCBtn> clone = btn.Clone();
    const auto* const copy = dynamic_cast<const CVirIncBtn*>(clone.get());
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->id, VIRINC);
    EXPECT_EQ(copy->refBtnClassID, 7u);
    EXPECT_TRUE(copy->commonBtn);
    EXPECT_EQ(copy->mmbBtnSelMth, CONDITION);
    EXPECT_EQ(copy->mmbBtnIDList, btn.mmbBtnIDList);
    EXPECT_FALSE(copy->effective);
    EXPECT_STREQ(copy->GetShownText(), "group");
    ASSERT_NE(copy->mmbBtnCnd, nullptr);
    EXPECT_NE(copy->mmbBtnCnd, btn.mmbBtnCnd);
    EXPECT_GT(copy->createTime, 1);
}

} // namespace
