#include "CBtn.h"
#include "CEmpValBtn.h"
#include "Support/CAllocFault.h"
#include "Support/TestText.h"

#include <gtest/gtest.h>

using namespace NSKZ::NSKZCore;

namespace {

TEST(VCBtn, ANewButtonShowsACopyOfItsName)
{
    std::string text = "tea";
    const CBtn btn(7, text.c_str());
    text = "xxx";
    EXPECT_EQ(btn.id, 7u);
    EXPECT_STREQ(btn.GetShownText(), "tea");
    EXPECT_TRUE(btn.aliasIsName);
    EXPECT_EQ(btn.alias, nullptr);
    EXPECT_FALSE(btn.sel);
    EXPECT_EQ(btn.visibleInfo, 0u);
    EXPECT_FALSE(btn.HasBackReferences());
}

TEST(VCBtn, TypesTellTheKinds)
{
    EXPECT_EQ(CBtn(2, "x").GetType(), SCBUICoreCom::BTNTYPE_NORMAL);
    EXPECT_EQ(CEmpValBtn(1).GetType(), SCBUICoreCom::BTNTYPE_EMPVAL);
}

TEST(VCBtn, AnAliasEqualToTheNameIsNone)
{
    CBtn btn(2, "tea");
    btn.SetAlias("coffee");
    EXPECT_STREQ(btn.GetShownText(), "coffee");
    btn.SetAlias("tea");
    EXPECT_EQ(btn.alias, nullptr);
    EXPECT_TRUE(btn.aliasIsName);
    EXPECT_STREQ(btn.GetShownText(), "tea");
}

TEST(VCBtn, ANullAliasIsAnEmptyOne)
{
    CBtn btn(2, "tea");
    btn.SetAlias(nullptr);
    EXPECT_FALSE(btn.aliasIsName);
    EXPECT_STREQ(btn.GetShownText(), "");
}

TEST(VCBtn, TheEmptyValueButtonKeepsAnyAlias)
{
    CEmpValBtn btn(SCBUICoreCom::BTN_ID_EMPVAL);
    EXPECT_EQ(btn.GetShownText(), nullptr);
    btn.SetAlias("");
    EXPECT_FALSE(btn.aliasIsName);
    EXPECT_STREQ(btn.GetShownText(), "");
    btn.SetAlias("none");
    EXPECT_STREQ(btn.GetShownText(), "none");
}

TEST(VCBtn, ItsOwnTextsMayBeGivenAsAlias)
{
    CBtn btn(2, "tea");
    btn.SetAlias("green tea");
    btn.SetAlias(btn.GetShownText());
    EXPECT_STREQ(btn.GetShownText(), "green tea");
    btn.SetAlias(btn.GetShownText() + 6);
    EXPECT_TRUE(btn.aliasIsName); // "tea" again
    btn.SetAlias(btn.name.get() + 1);
    EXPECT_STREQ(btn.GetShownText(), "ea");
}

TEST(VCBtn, ClearLeavesAButtonOfNothing)
{
    CBtn btn(5, "tea");
    btn.SetAlias("coffee");
    btn.sel = true;
    btn.visibleInfo = VISINFO_NOREC;
    btn.backReferences = std::make_unique<VCBtn::SBackReferences>();
    btn.backReferences->spBtnIDsInClass.insert(SCBUICoreCom::BTN_ID_CLL_BEGIN);
    btn.Clear();
    EXPECT_EQ(btn.id, 0u);
    EXPECT_EQ(btn.GetShownText(), nullptr);
    EXPECT_EQ(btn.alias, nullptr);
    EXPECT_TRUE(btn.aliasIsName);
    EXPECT_FALSE(btn.sel);
    EXPECT_EQ(btn.visibleInfo, 0u);
    EXPECT_FALSE(btn.HasBackReferences());
}

TEST(VCBtn, ACloneIsAnIndependentImage)
{
    CBtn btn(5, "tea");
    btn.sel = true;
    btn.visibleInfo = VISINFO_NOREC | VISINFO_INCMEMBER;
    btn.backReferences = std::make_unique<VCBtn::SBackReferences>();
    btn.backReferences->spBtnIDsInClass = {SCBUICoreCom::BTN_ID_INC_BEGIN};
    btn.backReferences->spBtnIDsOfOtherClass = {{SCBUICoreCom::BTNCLS_ID_VIR_COMMON_BEGIN, 9}};
    const std::unique_ptr<VCBtn> clone = btn.Clone();
    btn.Clear();
    EXPECT_EQ(clone->GetType(), SCBUICoreCom::BTNTYPE_NORMAL);
    EXPECT_EQ(clone->id, 5u);
    EXPECT_STREQ(clone->name.get(), "tea");
    EXPECT_EQ(clone->alias, nullptr); // absent stays absent
    EXPECT_TRUE(clone->aliasIsName);
    EXPECT_TRUE(clone->sel);
    EXPECT_EQ(clone->visibleInfo, VISINFO_NOREC | VISINFO_INCMEMBER);
    EXPECT_TRUE(clone->backReferences->spBtnIDsInClass.contains(SCBUICoreCom::BTN_ID_INC_BEGIN));
    EXPECT_EQ(clone->backReferences->spBtnIDsOfOtherClass.size(), 1u);

    CEmpValBtn empty(SCBUICoreCom::BTN_ID_EMPVAL);
    empty.SetAlias("none");
    const std::unique_ptr<VCBtn> emptyClone = empty.Clone();
    EXPECT_EQ(emptyClone->GetType(), SCBUICoreCom::BTNTYPE_EMPVAL);
    EXPECT_EQ(emptyClone->name, nullptr);
    EXPECT_STREQ(emptyClone->GetShownText(), "none");
}

TEST(VCBtn, CopyingFromItselfChangesNothing)
{
    CBtn btn(5, "tea");
    btn.SetAlias("coffee");
    btn.Copy(btn);
    EXPECT_STREQ(btn.name.get(), "tea");
    EXPECT_STREQ(btn.GetShownText(), "coffee");
}

TEST(VCBtn, ClearOfFixedSpecKeepsWhatTheSourceGives)
{
    CBtn btn(5, "tea");
    btn.sel = true;
    btn.SetAlias("coffee");
    btn.visibleInfo = 0x7FF;
    btn.backReferences = std::make_unique<VCBtn::SBackReferences>();
    btn.backReferences->spBtnIDsInClass = {SCBUICoreCom::BTN_ID_INC_BEGIN, SCBUICoreCom::BTN_ID_CLL_BEGIN};
    btn.backReferences->spBtnIDsOfOtherClass = {{SCBUICoreCom::BTNCLS_ID_VIR_COMMON_END, 3},
                                                {SCBUICoreCom::BTNCLS_ID_VIR_FIXED_BEGIN, 4},
                                                {SCBUICoreCom::BTNCLS_ID_VIR_FIXED_END, 5}};
    btn.ClearOfFixedSpec();
    EXPECT_FALSE(btn.sel);
    EXPECT_STREQ(btn.GetShownText(), "coffee");
    EXPECT_EQ(btn.visibleInfo, 0x718u); // 8, 10, 100, 200 and 400 stay
    EXPECT_TRUE(btn.backReferences->spBtnIDsInClass.empty());
    ASSERT_EQ(btn.backReferences->spBtnIDsOfOtherClass.size(), 1u);
    EXPECT_EQ(btn.backReferences->spBtnIDsOfOtherClass.begin()->btnClassID,
              SCBUICoreCom::BTNCLS_ID_VIR_COMMON_END);
}

TEST(VCBtn, MasksHoldTheReasonsTheyAreNamedFor)
{
    EXPECT_EQ(VISINFO_MASK_FIXEDSPEC, 0xE7u);
    EXPECT_EQ(VISINFO_MASK_NOTALIVE, 0x198u);
}

TEST(VCBtn, ExhaustedMemoryLeavesTheButtonAsItWas)
{
    const int failures = NSKZ::Test::FailEveryAllocation(
        [] {
            auto btn = std::make_unique<CBtn>(5, "tea");
            btn->SetAlias("coffee");
            return btn;
        },
        [](const std::unique_ptr<CBtn>& btn) { btn->SetAlias("a longer text than that"); },
        [](const std::unique_ptr<CBtn>& btn) { EXPECT_STREQ(btn->GetShownText(), "coffee"); });
    EXPECT_EQ(failures, 1);

    CBtn source(9, "water");
    source.SetAlias("ice");
    source.backReferences = std::make_unique<VCBtn::SBackReferences>();
    source.backReferences->spBtnIDsInClass = {SCBUICoreCom::BTN_ID_INC_BEGIN};
    const int copyFailures =
        NSKZ::Test::FailEveryAllocation([] { return std::make_unique<CBtn>(5, "tea"); },
                                        [&source](const std::unique_ptr<CBtn>& btn) { btn->Copy(source); },
                                        [](const std::unique_ptr<CBtn>& btn) {
                                            EXPECT_EQ(btn->id, 5u);
                                            EXPECT_STREQ(btn->GetShownText(), "tea");
                                            EXPECT_FALSE(btn->HasBackReferences());
                                        });
    EXPECT_GE(copyFailures, 4);
}

} // namespace
