#include "CSrcBtnDisplay.h"

#include "Support/CRandom.h"

#include <gtest/gtest.h>

#include <map>

using namespace NSKZ::NSKZCore;

namespace {

CSrcBtnDisplay MakeDisplay(DWORD lastID)
{
    CSrcBtnDisplay display;
    for (DWORD btnID = 1; btnID <= lastID; ++btnID) {
        display.ReserveFor(btnID);
        display.Register(btnID);
    }
    return display;
}

TEST(CSrcBtnDisplay, ARegisteredButtonIsDisplayed)
{
    const CSrcBtnDisplay display = MakeDisplay(3);
    EXPECT_EQ(display.GetDispCount(), 3u);
    EXPECT_TRUE(display.IsDisplayed(3));
    EXPECT_FALSE(display.IsDisplayed(0));
    EXPECT_FALSE(display.IsDisplayed(4));
    EXPECT_EQ(display.GetEndID(), 4u);
}

TEST(CSrcBtnDisplay, HidingAllByRelationLeavesWhatIsShownAfter)
{
    CSrcBtnDisplay display = MakeDisplay(5);
    display.HideAllByRelation();
    EXPECT_EQ(display.GetDispCount(), 0u);
    const DWORD shown[] = {2, 4, 2, 0, 9, 4160000002};
    display.ShowByRelation(shown, 6);
    EXPECT_EQ(display.GetDispCount(), 2u);
    EXPECT_TRUE(display.IsDisplayed(2));
    EXPECT_TRUE(display.IsHiddenByRelation(3));
    EXPECT_FALSE(display.IsHiddenByRelation(9)); // not there at all
    display.ShowAllByRelation();
    EXPECT_EQ(display.GetDispCount(), 5u);
}

TEST(CSrcBtnDisplay, AHiddenButtonOfAnotherReasonDoesNotCount)
{
    CSrcBtnDisplay display = MakeDisplay(4);
    display.SetHiddenByItself(2, true);
    display.HideAllByLimit();
    display.ShowByLimit(2);
    display.ShowByLimit(3);
    EXPECT_EQ(display.GetDispCount(), 1u);
    display.HideAllByRelation();
    display.ShowByRelation(2);
    EXPECT_EQ(display.GetDispCount(), 0u);
    display.SetHiddenByItself(2, false);
    EXPECT_EQ(display.GetDispCount(), 1u);
    EXPECT_TRUE(display.IsHiddenByLimit(4));
    display.ShowAllByLimit();
    EXPECT_EQ(display.GetDispCount(), 1u);
}

TEST(CSrcBtnDisplay, BackReferredButtonsAreListedOnceAndOnlyWhenTheyComeBack)
{
    CSrcBtnDisplay display = MakeDisplay(4);
    display.SetBackReferred(2, true);
    display.SetBackReferred(3, true);
    display.HideAllByRelation();
    display.ShowByRelation(3);
    std::vector<DWORD> backReferred;
    const DWORD shown[] = {4, 2, 3, 2, 77};
    display.ShowByRelation(shown, 5, backReferred);
    EXPECT_EQ(backReferred, std::vector<DWORD>({2}));
    display.Mark(shown, 5);
    backReferred.clear();
    display.ListMarkedBackReferred(backReferred);
    EXPECT_EQ(backReferred, std::vector<DWORD>({2, 3}));
    display.TakeMarksAway();
    backReferred.clear();
    display.ListMarkedBackReferred(backReferred);
    EXPECT_TRUE(backReferred.empty());
    display.SetBackReferred(2, false);
    EXPECT_TRUE(display.HasBackReferred());
    display.SetBackReferred(3, false);
    EXPECT_FALSE(display.HasBackReferred());
}

// More generations than fit the byte, every way of showing, gaps among the identifiers.
TEST(CSrcBtnDisplay, AgreesWithAPlainModelOverManyGenerations)
{
    struct SButton
    {
        bool relation = false;
        bool itself = false;
        bool folded = false; // hidden by itself, but only by condition cll buttons
        bool limit = false;
    };
    CRandom random;
    for (int run = 0; run < 20; ++run) {
        std::map<DWORD, SButton> model;
        CSrcBtnDisplay display;
        for (int step = 0; step < 2000; ++step) {
            const DWORD btnID = random.GetBelow(40) + 1;
            const DWORD list[] = {btnID, random.GetBelow(45), btnID, random.GetBelow(45)};
            switch (random.GetBelow(9)) {
            case 0:
                display.ReserveFor(btnID);
                display.Register(btnID);
                model.try_emplace(btnID);
                break;
            case 1:
                display.HideAllByRelation();
                for (auto& [id, btn] : model)
                    btn.relation = true;
                break;
            case 2:
                display.ShowAllByRelation();
                for (auto& [id, btn] : model)
                    btn.relation = false;
                break;
            case 3:
            case 4:
                if (random.IsOneOf(2)) {
                    display.ShowByRelation(list, 4);
                } else {
                    display.Mark(list, 4);
                    display.ShowMarkedByRelation();
                }
                for (const DWORD id : list) {
                    if (model.count(id) != 0)
                        model[id].relation = false;
                }
                break;
            case 5:
            case 6: {
                const bool hide = random.IsOneOf(2);
                const bool onlyFolded = random.IsOneOf(2);
                display.SetHiddenByItself(btnID, hide, onlyFolded);
                if (model.count(btnID) != 0) {
                    model[btnID].itself = hide;
                    model[btnID].folded = hide && onlyFolded;
                }
                break;
            }
            case 7: {
                const bool hide = random.IsOneOf(2);
                hide ? display.HideAllByLimit() : display.ShowAllByLimit();
                for (auto& [id, btn] : model)
                    btn.limit = hide;
                break;
            }
            default:
                display.ShowByLimit(btnID);
                if (model.count(btnID) != 0)
                    model[btnID].limit = false;
            }
            DWORD displayed = 0;
            std::vector<DWORD> displayedOrFolded;
            for (const auto& [id, btn] : model) {
                if (!btn.relation && !btn.limit && (!btn.itself || btn.folded))
                    displayedOrFolded.push_back(id);
                const bool isDisplayed = !btn.relation && !btn.itself && !btn.limit;
                displayed += isDisplayed ? 1 : 0;
                ASSERT_EQ(display.IsDisplayed(id), isDisplayed);
                ASSERT_EQ(display.IsHiddenByRelation(id), btn.relation);
                ASSERT_EQ(display.IsHiddenByLimit(id), btn.limit);
            }
            ASSERT_EQ(display.GetDispCount(), displayed);
            if (random.IsOneOf(2)) {
                ASSERT_EQ(display.GetDisplayedOrFolded(), displayedOrFolded);
            }
        }
    }
}

} // namespace
