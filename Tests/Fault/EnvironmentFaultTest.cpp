#include "CFaultEnv.h"

#include "CDate.h"
#include "INumCnd.h"
#include "Support/CAllocFault.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

// Every allocation of an operation on an environment fails in turn: std::bad_alloc arrives, nothing leaks,
// and the environment is what its header says.

namespace NSKZ::Test {
namespace {

using NSKZCore::CAllocFault;
using NSKZCore::CBUIDataMngr;
using NSKZCore::CSumValueCacheMngr;
using NSKZCore::INumCnd;
using NSKZCore::SSelectBtnIDList;

using Operation = std::function<void(CBUIDataMngr&)>;
using IDList = std::vector<DWORD>;

// The snapshot of a new environment on which `prepare` ran.
std::string SnapshotAfter(const Operation& prepare)
{
    const std::unique_ptr<SFaultEnv> subject = MakeFaultEnv();
    prepare(subject->env);
    return TakeSnapshot(subject->env);
}

// Fails each allocation of `operate` in turn, on a new environment on which `prepare` ran each time.
int FailEach(const Operation& prepare, const Operation& operate, const Operation& prove)
{
    return FailEveryAllocation(
        [&] {
            std::unique_ptr<SFaultEnv> subject = MakeFaultEnv();
            prepare(subject->env);
            return subject;
        },
        [&](std::unique_ptr<SFaultEnv>& subject) { operate(subject->env); },
        [&](std::unique_ptr<SFaultEnv>& subject) { prove(subject->env); });
}

// What the failure left is cleared by ClearAllBtnSelections(true), and the environment answers as a new one
// in the same mode does; after that the operation goes through.
int FailEachAndClear(CBUIDataMngr::ERelationMode mode, bool multi, const Operation& prepare,
                     const Operation& operate)
{
    const auto setUp = [=](CBUIDataMngr& env) {
        env.SetRelationMode(mode);
        env.SetMultiSelectionInfo(multi);
    };
    const auto setUpAndPrepare = [&](CBUIDataMngr& env) {
        setUp(env);
        prepare(env);
    };
    const std::string cleared = SnapshotAfter(setUp);
    const std::string done = SnapshotAfter([&](CBUIDataMngr& env) {
        setUpAndPrepare(env);
        operate(env);
    });
    return FailEach(setUpAndPrepare, operate, [&](CBUIDataMngr& env) {
        env.ClearAllBtnSelections(true);
        EXPECT_EQ(TakeSnapshot(env), cleared);
        prepare(env);
        operate(env);
        EXPECT_EQ(TakeSnapshot(env), done);
    });
}

// The environment is as it was.
int FailEachAndKeep(const Operation& prepare, const Operation& operate)
{
    const std::string before = SnapshotAfter(prepare);
    return FailEach(prepare, operate, [&](CBUIDataMngr& env) { EXPECT_EQ(TakeSnapshot(env), before); });
}

void Press(CBUIDataMngr& env, DWORD classID, const IDList& btnIDs, bool select = true,
           bool includeHidden = false)
{
    EXPECT_TRUE(env.SelectBtns(classID, btnIDs, select, includeHidden));
}

void Nothing(CBUIDataMngr&) {}

// Two levels, sums of which are known.
void PressTwoLevels(CBUIDataMngr& env)
{
    Press(env, CLASS_TEXT, {2, 3, 1});
    Press(env, CLASS_NUM, {3, 2});
    double total = 0;
    for (DWORD classID = CLASS_TEXT; classID <= CLASS_DIFFERENT; ++classID)
        EXPECT_TRUE(env.GetSumValueCacheMngrObjRef().GetTotalValue(classID, FLD_NUM, total));
}

constexpr CBUIDataMngr::ERelationMode MODES[] = {
    CBUIDataMngr::RELATIONMODE_NONE, CBUIDataMngr::RELATIONMODE_OR, CBUIDataMngr::RELATIONMODE_AND,
    CBUIDataMngr::RELATIONMODE_DIFFERENCE, CBUIDataMngr::RELATIONMODE_NARROWING};

TEST(EnvironmentFault, AFirstPressThatRunsOutOfMemoryCanBeClearedInEveryMode)
{
    for (const CBUIDataMngr::ERelationMode mode : MODES) {
        SCOPED_TRACE(mode);
        const auto press = [](CBUIDataMngr& env) { Press(env, CLASS_TEXT, {3, 2, 3}); };
        EXPECT_GE(FailEachAndClear(mode, false, Nothing, press), 3);
    }
}

TEST(EnvironmentFault, APressThatAddsAndRunsOutOfMemoryCanBeClearedInEveryMode)
{
    for (const CBUIDataMngr::ERelationMode mode : MODES) {
        SCOPED_TRACE(mode);
        const auto prepare = [](CBUIDataMngr& env) { Press(env, CLASS_TEXT, {2}); };
        const auto add = [](CBUIDataMngr& env) { Press(env, CLASS_TEXT, {3}); };
        EXPECT_GE(FailEachAndClear(mode, true, prepare, add), 1);
    }
}

TEST(EnvironmentFault, APressThatReplacesAndRunsOutOfMemoryCanBeClearedInEveryMode)
{
    for (const CBUIDataMngr::ERelationMode mode : MODES) {
        SCOPED_TRACE(mode);
        const auto prepare = [](CBUIDataMngr& env) { Press(env, CLASS_TEXT, {2, 1}); };
        const auto replace = [](CBUIDataMngr& env) { Press(env, CLASS_TEXT, {3, 4}); };
        EXPECT_GE(FailEachAndClear(mode, false, prepare, replace), 1);
    }
}

TEST(EnvironmentFault, AReleaseThatRunsOutOfMemoryCanBeClearedInEveryMode)
{
    for (const CBUIDataMngr::ERelationMode mode : MODES) {
        SCOPED_TRACE(mode);
        const auto prepare = [](CBUIDataMngr& env) { Press(env, CLASS_TEXT, {2, 3}); };
        const auto release = [](CBUIDataMngr& env) { Press(env, CLASS_TEXT, {3}, false); };
        EXPECT_GE(FailEachAndClear(mode, true, prepare, release), 1);
        const auto releaseAll = [](CBUIDataMngr& env) { Press(env, CLASS_TEXT, {3, 2}, false); };
        EXPECT_GE(FailEachAndClear(mode, true, prepare, releaseAll), 1);
    }
}

TEST(EnvironmentFault, APressInAnotherClassThatRunsOutOfMemoryCanBeClearedInEveryMode)
{
    for (const CBUIDataMngr::ERelationMode mode : MODES) {
        SCOPED_TRACE(mode);
        const auto press = [](CBUIDataMngr& env) { Press(env, CLASS_DATE, {2, 4, 5}, true, true); };
        EXPECT_GE(FailEachAndClear(mode, true, PressTwoLevels, press), 3);
        const auto pressInTheFirst = [](CBUIDataMngr& env) { Press(env, CLASS_TEXT, {4}, true, true); };
        EXPECT_GE(FailEachAndClear(mode, true, PressTwoLevels, pressInTheFirst), 1);
    }
}

TEST(EnvironmentFault, APressUnderALimitationThatRunsOutOfMemoryLeavesTheLimitation)
{
    const DWORD recs[] = {0, 1, 2, 3, 5, 8, 13, 21, 34};
    for (const CBUIDataMngr::ERelationMode mode : MODES) {
        SCOPED_TRACE(mode);
        const auto limit = [&](CBUIDataMngr& env) {
            env.SetRelationMode(mode);
            env.SetLimitedRecList(recs, static_cast<DWORD>(std::size(recs)));
        };
        const std::string cleared = SnapshotAfter(limit);
        const auto press = [](CBUIDataMngr& env) { Press(env, CLASS_DIFFERENT, {2, 3, 4}); };
        EXPECT_GE(FailEach(limit, press,
                           [&](CBUIDataMngr& env) {
                               env.ClearAllBtnSelections(true);
                               EXPECT_EQ(TakeSnapshot(env), cleared);
                           }),
                  3);
    }
}

TEST(EnvironmentFault, ARestoredSelectionThatRunsOutOfMemoryCanBeClearedInEveryMode)
{
    const std::vector<SSelectBtnIDList> selection = {
        {CLASS_TEXT, {2, 3}, true}, {CLASS_NUM, {2, 4}, false}, {CLASS_TIME, {1, 2}, false}};
    for (const CBUIDataMngr::ERelationMode mode : MODES) {
        SCOPED_TRACE(mode);
        const auto restore = [&](CBUIDataMngr& env) { EXPECT_TRUE(env.SelectBtns(selection, true)); };
        EXPECT_GE(FailEachAndClear(mode, true, PressTwoLevels, restore), 5);
    }
}

TEST(EnvironmentFault, SelectingAWholeClassThatRunsOutOfMemoryCanBeClearedInEveryMode)
{
    for (const CBUIDataMngr::ERelationMode mode : MODES) {
        if (mode == CBUIDataMngr::RELATIONMODE_DIFFERENCE)
            continue; // refused there
        SCOPED_TRACE(mode);
        const auto selectAll = [](CBUIDataMngr& env) {
            EXPECT_TRUE(env.SelectAllBtnsOfBtnClass(CLASS_DIFFERENT, true));
        };
        EXPECT_GE(FailEachAndClear(mode, true, PressTwoLevels, selectAll), 3);
        const auto prepare = [&](CBUIDataMngr& env) {
            PressTwoLevels(env);
            selectAll(env);
        };
        const auto releaseAll = [](CBUIDataMngr& env) {
            EXPECT_TRUE(env.SelectAllBtnsOfBtnClass(CLASS_DIFFERENT, false));
        };
        EXPECT_GE(FailEachAndClear(mode, true, prepare, releaseAll), 1);
    }
}

TEST(EnvironmentFault, ClearingNeedsNoMemoryOrChangesNothing)
{
    for (const CBUIDataMngr::ERelationMode mode : MODES) {
        SCOPED_TRACE(mode);
        const auto prepare = [&](CBUIDataMngr& env) {
            env.SetRelationMode(mode);
            const DWORD recs[] = {4, 5, 6, 7, 40, 41};
            env.SetLimitedRecList(recs, 6);
            PressTwoLevels(env);
        };
        EXPECT_EQ(FailEach(
                      prepare, [](CBUIDataMngr& env) { env.ClearAllBtnSelections(true); }, Nothing),
                  0);
        EXPECT_EQ(FailEach(
                      prepare, [](CBUIDataMngr& env) { env.ClearLimitedRecList(); }, Nothing),
                  0);
        EXPECT_GE(FailEachAndKeep(prepare, [](CBUIDataMngr& env) { env.ClearOfFixedSpec(); }), 1);
        EXPECT_EQ(FailEach(
                      prepare, [](CBUIDataMngr& env) { env.ClearAllBtnClassSelections(); }, Nothing),
                  0);
    }
}

TEST(EnvironmentFault, ALimitationThatRunsOutOfMemoryChangesNothing)
{
    const DWORD recs[] = {0, 1, 2, 3, 5, 8, 13, 21, 34, 60};
    const auto limit = [&](CBUIDataMngr& env) {
        env.SetLimitedRecList(recs, static_cast<DWORD>(std::size(recs)));
    };
    EXPECT_GE(FailEachAndKeep(Nothing, limit), 2);
    EXPECT_GE(FailEachAndKeep(PressTwoLevels, limit), 2);
    const auto limitOtherwiseAndPress = [](CBUIDataMngr& env) {
        const DWORD others[] = {9, 10, 11, 12, 13, 20};
        env.SetLimitedRecList(others, 6);
        PressTwoLevels(env);
    };
    EXPECT_GE(FailEachAndKeep(limitOtherwiseAndPress, limit), 2);
}

TEST(EnvironmentFault, AnAliasThatRunsOutOfMemoryLeavesTheFormerOne)
{
    const auto giveOne = [](CBUIDataMngr& env) { EXPECT_TRUE(env.SetAliasOfBtn(CLASS_TEXT, 3, "first")); };
    const auto giveAnother = [](CBUIDataMngr& env) {
        EXPECT_TRUE(env.SetAliasOfBtn(CLASS_TEXT, 3, "a text that is long enough to need memory of its own"));
    };
    EXPECT_GE(FailEachAndKeep(Nothing, giveOne), 1);
    EXPECT_GE(FailEachAndKeep(giveOne, giveAnother), 1);
    const auto takeIt = [](CBUIDataMngr& env) { EXPECT_TRUE(env.SetAliasOfBtn(CLASS_NUM, 1, nullptr)); };
    EXPECT_GE(FailEachAndKeep(giveOne, takeIt), 1);
    const auto takeItBack = [](CBUIDataMngr& env) {
        const char* name = nullptr;
        EXPECT_TRUE(env.GetNameOfBtn(CLASS_TEXT, 3, name));
        EXPECT_TRUE(env.SetAliasOfBtn(CLASS_TEXT, 3, name));
    };
    EXPECT_GE(FailEachAndKeep(giveOne, takeItBack), 0); // it may need no memory at all
}

TEST(EnvironmentFault, SelectingAClassThatRunsOutOfMemoryChangesNothing)
{
    const auto select = [](CBUIDataMngr& env) { EXPECT_TRUE(env.SelectTheBtnClass(CLASS_DATE, true)); };
    EXPECT_GE(FailEachAndKeep(Nothing, select), 1);
    const auto selectOne = [](CBUIDataMngr& env) { EXPECT_TRUE(env.SelectTheBtnClass(CLASS_TIME, true)); };
    EXPECT_GE(FailEachAndKeep(selectOne, select), 1);
}

// A host's condition with something to clone.
class CHostCnd : public INumCnd
{
public:
    explicit CHostCnd(double limitOfHost) : limit(std::make_unique<double>(limitOfHost)) {}
    bool IsEqualTo(const INumCnd& other) const override
    {
        const auto* const cnd = dynamic_cast<const CHostCnd*>(&other);
        return cnd != nullptr && *cnd->limit == *limit;
    }
    bool IsMetBy(double value) const override { return value < *limit; }
    INumCnd* CreateClone() const override { return new CHostCnd(*limit); }
    void Destroy() override { delete this; }

private:
    std::unique_ptr<double> limit;
};

TEST(EnvironmentFault, AConditionThatRunsOutOfMemoryLeavesTheFormerOneAndTheSums)
{
    const auto setFirst = [](CBUIDataMngr& env) { env.SetNumCnd(CHostCnd(1)); };
    const CHostCnd second(2);
    const auto setSecond = [&](CBUIDataMngr& env) { env.SetNumCnd(second); };
    EXPECT_GE(FailEachAndKeep(Nothing, setSecond), 2);
    EXPECT_GE(FailEach(setFirst, setSecond,
                       [](CBUIDataMngr& env) {
                           const INumCnd* held = nullptr;
                           ASSERT_TRUE(env.GetNumCnd(held));
                           EXPECT_TRUE(held->IsEqualTo(CHostCnd(1)));
                       }),
              2);
}

TEST(EnvironmentFault, QueriesThatRunOutOfMemoryChangeNothing)
{
    const auto prepare = [](CBUIDataMngr& env) {
        Press(env, CLASS_TEXT, {2, 3, 1});
        Press(env, CLASS_NUM, {3, 2});
        EXPECT_TRUE(env.SetAliasOfBtn(CLASS_DATE, 3, "alias"));
    };
    const std::vector<Operation> queries = {
        [](CBUIDataMngr& env) {
            IDList ids;
            env.GetSelBtnIDListOfBtnClass(CLASS_TEXT, ids);
        },
        [](CBUIDataMngr& env) {
            IDList ids;
            env.GetDispSelBtnIDListOfBtnClass(CLASS_TEXT, ids);
        },
        [](CBUIDataMngr& env) {
            IDList ids;
            env.GetDispBtnIDListOfBtnClass(CLASS_DIFFERENT, ids);
        },
        [](CBUIDataMngr& env) {
            IDList ids;
            env.GetAllBtnIDListOfBtnClass(CLASS_DIFFERENT, ids, true);
        },
        [](CBUIDataMngr& env) {
            IDList ids;
            env.GetBtnAppOrdListOfBtnClass(CLASS_DIFFERENT, 0, ids);
        },
        [](CBUIDataMngr& env) {
            IDList ids;
            env.GetBtnNameOrdListOfBtnClass(CLASS_DATE, 0, ids);
        },
        [](CBUIDataMngr& env) {
            IDList ids;
            env.GetBtnNameOrdListOfBtnClass(CLASS_NUM, 2, ids);
        },
        [](CBUIDataMngr& env) {
            IDList ids;
            env.GetBtnUnknownOrdListOfBtnClass(CLASS_NUM, 0, {3, 2, 1}, ids);
        },
        [](CBUIDataMngr& env) {
            std::vector<SSelectBtnIDList> selection;
            env.GetAllBtnSelectionInfo(selection);
        },
        [](CBUIDataMngr& env) {
            IDList ids;
            env.GetAllBtnClassIDList(ids, true);
        },
        [](CBUIDataMngr& env) {
            std::map<DWORD, DWORD> classIDs;
            env.GetBtnClassIDCnvObj(classIDs);
        },
        [](CBUIDataMngr& env) {
            DWORD recs[50];
            DWORD count = 0;
            env.GetRecListThatRelatesToBtns(CLASS_TEXT, {2, 4, 1}, recs, count);
        },
        [](CBUIDataMngr& env) {
            const DWORD recs[] = {3, 4, 5};
            IDList ids;
            env.GetBtnIDListThatRelatesToRecListFromBtnClass(CLASS_TEXT, 3, recs, ids);
        },
        [](CBUIDataMngr& env) {
            double value = 0;
            env.GetSumValueCacheMngrObjRef().GetSumValue(CLASS_DATE, 2, FLD_NUM, value);
        },
        [](CBUIDataMngr& env) {
            DWORD count = 0;
            env.GetSumValueCacheMngrObjRef().GetCountValue(CLASS_DATE, 2, FLD_NUM, count);
        },
        [](CBUIDataMngr& env) {
            double value = 0;
            env.GetSumValueCacheMngrObjRef().GetAverageValue(CLASS_DATE, 2, FLD_NUM, value);
        },
        [](CBUIDataMngr& env) {
            std::vector<double> values;
            env.GetSumValueCacheMngrObjRef().GetEachValue(CLASS_DATE, 2, FLD_NUM, values);
        },
        [](CBUIDataMngr& env) {
            double value = 0;
            env.GetSumValueCacheMngrObjRef().GetTotalValue(CLASS_DIFFERENT, FLD_NUM, value);
        },
        [](CBUIDataMngr& env) {
            double value = 0;
            env.GetSumValueCacheMngrObjRef().GetTotalAbsoluteValue(CLASS_TEXT, FLD_NUM, value);
        },
    };
    for (std::size_t number = 0; number < queries.size(); ++number) {
        SCOPED_TRACE(number);
        EXPECT_GE(FailEachAndKeep(prepare, queries[number]), 1);
    }
}

// Groups of dates and times.
NSKZCore::SCDeclareConstant::SDateDispForm MakeDateForm(DWORD form)
{
    NSKZCore::SCDeclareConstant::SDateDispForm dispForm;
    dispForm.kind = 1;
    dispForm.form = form;
    dispForm.option = 0;
    return dispForm;
}

TEST(EnvironmentFault, ADisplayFormThatRunsOutOfMemoryCanBeSetAfterwards)
{
    for (const bool hadForm : {false, true}) {
        SCOPED_TRACE(hadForm);
        const auto prepare = [=](CBUIDataMngr& env) {
            if (hadForm) {
                EXPECT_TRUE(env.SetDispFormOfDateBtnClass(CLASS_DATE, MakeDateForm(6)));
            }
            PressTwoLevels(env);
        };
        const auto group = [](CBUIDataMngr& env) {
            EXPECT_TRUE(env.SetDispFormOfDateBtnClass(CLASS_DATE, MakeDateForm(0)));
        };
        const std::string done = SnapshotAfter([&](CBUIDataMngr& env) {
            prepare(env);
            group(env);
        });
        EXPECT_GE(FailEach(prepare, group,
                           [&](CBUIDataMngr& env) {
                               env.ClearAllBtnSelections(true);
                               TakeSnapshot(env); // every list names what there is
                               group(env);
                               EXPECT_EQ(TakeSnapshot(env), done);
                           }),
                  30);
    }
}

TEST(EnvironmentFault, ATimeFormThatRunsOutOfMemoryCanBeSetAfterwards)
{
    const auto group = [](CBUIDataMngr& env) {
        NSKZCore::SCDeclareConstant::STimeDispForm dispForm;
        dispForm.kind = 1;
        dispForm.form = 2;
        EXPECT_TRUE(env.SetDispFormOfTimeBtnClass(CLASS_TIME, dispForm));
    };
    const std::string done = SnapshotAfter(group);
    EXPECT_GE(FailEach(Nothing, group,
                       [&](CBUIDataMngr& env) {
                           TakeSnapshot(env);
                           group(env);
                           EXPECT_EQ(TakeSnapshot(env), done);
                       }),
              20);
}

TEST(EnvironmentFault, FollowingCriteriaOrADataFormCanBeRepeatedWhenMemoryRanOut)
{
    const auto prepare = [](CBUIDataMngr& env) {
        EXPECT_TRUE(env.SetDispFormOfDateBtnClass(CLASS_DATE, MakeDateForm(0)));
        PressTwoLevels(env);
    };
    const DWORD fldIDs[] = {3, 4};
    const Operation followings[] = {
        [](CBUIDataMngr& env) { EXPECT_TRUE(env.AdjstAccordingToChangeDateCriterionInfo()); },
        [&](CBUIDataMngr& env) { EXPECT_TRUE(env.AdjstAccordingToChangeFldDataForm(fldIDs, 2)); },
    };
    for (const Operation& follow : followings) {
        const std::string done = SnapshotAfter([&](CBUIDataMngr& env) {
            prepare(env);
            follow(env);
        });
        EXPECT_GE(FailEach(prepare, follow,
                           [&](CBUIDataMngr& env) {
                               env.ClearAllBtnSelections(true);
                               TakeSnapshot(env);
                               follow(env);
                               EXPECT_EQ(TakeSnapshot(env), done);
                           }),
                  10);
    }
}

TEST(EnvironmentFault, QueriesOfDatesThatRunOutOfMemoryChangeNothing)
{
    const auto prepare = [](CBUIDataMngr& env) {
        EXPECT_TRUE(env.SetDispFormOfDateBtnClass(CLASS_DATE, MakeDateForm(6)));
    };
    NSKZCore::CDate july;
    july.SetYearOfTheGrgCalendar(2024);
    july.SetMonth(7);
    const std::vector<Operation> queries = {
        [](CBUIDataMngr& env) {
            NSKZCore::CDateGroupMap groups;
            EXPECT_TRUE(
                env.GetGroupedBtnIDListsOfDateBtnClass(CLASS_DATE, NSKZCore::VCDate::DATETYPE_DAY, groups));
        },
        [](CBUIDataMngr& env) {
            NSKZCore::CDateGroupMap groups;
            EXPECT_TRUE(
                env.GetGroupedBtnIDListsOfTimeBtnClass(CLASS_TIME, NSKZCore::VCDate::DATETYPE_HOUR, groups));
        },
        [&](CBUIDataMngr& env) {
            DWORD recs[50];
            NSKZCore::SRecordList recList{recs, 0};
            EXPECT_TRUE(env.GetGroupedRecListOfDateBtnClass(
                CLASS_DATE, july, NSKZCore::SCKZCoreCom::CMPOPERATOR_EQUAL, recList));
        },
        [](CBUIDataMngr& env) {
            const DWORD recs[] = {1, 2, 3};
            DWORD recNum = 0;
            unsigned long long dateNum = 0;
            EXPECT_TRUE(env.GetLatestRecNumOfDateBtnClass(CLASS_DATE, recs, 3, recNum, dateNum));
        },
        [](CBUIDataMngr& env) {
            std::map<DWORD, std::string> symbols;
            EXPECT_TRUE(env.GetSymbolListOfDateBtnClasses(symbols));
        },
    };
    for (std::size_t number = 0; number < queries.size(); ++number) {
        SCOPED_TRACE(number);
        EXPECT_GE(FailEachAndKeep(prepare, queries[number]), 1);
    }
}

TEST(EnvironmentFault, AFailedSumLeavesItsOutputAndIsHadAfterwards)
{
    double expected = 0;
    EXPECT_TRUE(
        MakeFaultEnv()->env.GetSumValueCacheMngrObjRef().GetTotalValue(CLASS_TEXT, FLD_NUM, expected));
    double value = -1;
    EXPECT_GE(FailEach([&](CBUIDataMngr&) { value = -1; },
                       [&](CBUIDataMngr& env) {
                           env.GetSumValueCacheMngrObjRef().GetTotalValue(CLASS_TEXT, FLD_NUM, value);
                       },
                       [&](CBUIDataMngr& env) {
                           EXPECT_EQ(value, -1);
                           EXPECT_TRUE(
                               env.GetSumValueCacheMngrObjRef().GetTotalValue(CLASS_TEXT, FLD_NUM, value));
                           EXPECT_EQ(value, expected);
                       }),
              5);
}

TEST(EnvironmentFault, ABuildThatRunsOutOfMemoryLeavesNothingBehind)
{
    const NSKZCore::CSourceDataMngr& table = GetFaultTable();
    const std::string built = SnapshotAfter(Nothing);
    const int failures =
        FailEveryAllocation([] { return std::unique_ptr<SFaultEnv>(); },
                            [](std::unique_ptr<SFaultEnv>& subject) { subject = MakeFaultEnv(); },
                            [&](std::unique_ptr<SFaultEnv>& subject) {
                                EXPECT_EQ(subject, nullptr);
                                EXPECT_EQ(table.GetRecCount(), 50u);
                            });
    EXPECT_GE(failures, 100);
    EXPECT_EQ(SnapshotAfter(Nothing), built);
}

} // namespace
} // namespace NSKZ::Test
