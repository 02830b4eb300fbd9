#include "CRandomRun.h"

#include <gtest/gtest.h>

#include <string>

// Random operations on an environment over a random table and on the naive model of it. After every operation
// both answer the same, or the run tells the seed, the table, the operations so far and what differs. Setting
// KZC_SEED repeats a run.

namespace NSKZ::Test {
namespace {

using NSKZCore::CBUIDataMngr;
using NSKZCore::CRandom;

#ifdef KZC_SANITIZED
constexpr DWORD OPERATIONS_OF_A_TEST = 3000;
#else
constexpr DWORD OPERATIONS_OF_A_TEST = 60000;
#endif

void RunOperations(const SLeaning& leaning, DWORD operationCount = OPERATIONS_OF_A_TEST)
{
    CRandom random;
    CRandomRun::SRestores restores;
    for (DWORD done = 0; done < operationCount;) {
        CRandomRun run(random, leaning);
        std::string differences;
        DWORD number = 0;
        while (differences.empty() && number < leaning.operationsOfATable) {
            differences = run.Step();
            ++number;
        }
        if (differences.empty())
            differences = run.End();
        ASSERT_TRUE(differences.empty()) << "seed " << random.GetSeed() << ", after " << done
                                         << " operations on other tables, at operation " << number << " of\n"
                                         << run.Describe() << "there differ:\n"
                                         << differences;
        done += number;
        restores.forms += run.GetRestores().forms;
        restores.sameForms += run.GetRestores().sameForms;
    }
    // Most of what is restored is saved again to the byte.
    EXPECT_LE(restores.forms, restores.sameForms + restores.sameForms / 4);
    ::testing::Test::RecordProperty("forms", static_cast<int>(restores.forms));
    ::testing::Test::RecordProperty("sameForms", static_cast<int>(restores.sameForms));
    ::testing::Test::RecordProperty("operations", static_cast<int>(operationCount));
}

TEST(RandomOperations, AgreeWithTheModelInAllModes)
{
    RunOperations({});
}

TEST(RandomOperations, AgreeWithTheModelInNarrowing)
{
    SLeaning leaning;
    leaning.modes = {CBUIDataMngr::RELATIONMODE_NARROWING};
    RunOperations(leaning);
}

TEST(RandomOperations, AgreeWithTheModelInNarrowingThroughManyLevels)
{
    SLeaning leaning;
    leaning.modes = {CBUIDataMngr::RELATIONMODE_NARROWING};
    leaning.modeChange = 0;
    leaning.multiChange = 10;
    leaning.limitation = 60;
    leaning.hiddenBtn = 0;
    leaning.unknownID = 400;
    RunOperations(leaning);
}

TEST(RandomOperations, AgreeWithTheModelInOr)
{
    SLeaning leaning;
    leaning.modes = {CBUIDataMngr::RELATIONMODE_OR};
    leaning.modeChange = 10;
    RunOperations(leaning);
}

TEST(RandomOperations, AgreeWithTheModelInAnd)
{
    SLeaning leaning;
    leaning.modes = {CBUIDataMngr::RELATIONMODE_AND};
    leaning.modeChange = 10;
    RunOperations(leaning);
}

TEST(RandomOperations, AgreeWithTheModelInDifference)
{
    SLeaning leaning;
    leaning.modes = {CBUIDataMngr::RELATIONMODE_DIFFERENCE};
    leaning.modeChange = 10;
    RunOperations(leaning);
}

TEST(RandomOperations, AgreeWithTheModelWithoutARelationAndAcrossChangesOfTheMode)
{
    SLeaning leaning;
    leaning.modes.push_back(CBUIDataMngr::RELATIONMODE_NONE);
    leaning.modes.push_back(CBUIDataMngr::RELATIONMODE_NONE);
    leaning.modeChange = 6;
    RunOperations(leaning);
}

TEST(RandomOperations, AgreeWithTheModelUnderLimitations)
{
    SLeaning leaning;
    leaning.limitation = 6;
    RunOperations(leaning);
}

TEST(RandomOperations, AgreeWithTheModelWithHiddenAndUnknownButtons)
{
    SLeaning leaning;
    leaning.hiddenBtn = 2;
    leaning.unknownID = 8;
    RunOperations(leaning);
}

TEST(RandomOperations, AgreeWithTheModelWithAndWithoutASumManager)
{
    SLeaning leaning;
    leaning.sumMngrMissing = 2;
    RunOperations(leaning);
}

TEST(RandomOperations, AgreeWithTheModelAcrossChangesOfTheTable)
{
    SLeaning leaning;
    leaning.sourceChanges = 4;
    leaning.table.maxRecCount = 30;
    leaning.table.maxFldCount = 5;
    leaning.dates = 0;
    leaning.virtualItems = 0;
    leaning.special = 0;
    RunOperations(leaning);
}

TEST(RandomOperations, AgreeWithTheModelAcrossChangesOfTheTableUnderSpecialAndVirtualButtons)
{
    SLeaning leaning;
    leaning.sourceChanges = 6;
    leaning.special = 5;
    leaning.virtualItems = 8;
    leaning.table.maxRecCount = 30;
    leaning.table.maxFldCount = 5;
    RunOperations(leaning);
}

TEST(RandomOperations, AgreeWithTheModelAcrossChangesOfTheTableUnderGroupsOfDates)
{
    SLeaning leaning;
    leaning.sourceChanges = 6;
    leaning.dates = 5;
    leaning.table.dates = 2;
    leaning.table.maxRecCount = 30;
    leaning.table.maxFldCount = 5;
    RunOperations(leaning);
}

TEST(RandomOperations, AgreeWithTheModelAcrossChangesOfTheTableUnderLimitations)
{
    SLeaning leaning;
    leaning.sourceChanges = 5;
    leaning.limitation = 5;
    leaning.table.maxRecCount = 30;
    RunOperations(leaning);
}

TEST(RandomOperations, AgreeWithTheModelAcrossChangesOfTheTableAndRestores)
{
    SLeaning leaning;
    leaning.sourceChanges = 8;
    leaning.restoring = 30;
    leaning.table.maxRecCount = 30;
    RunOperations(leaning, OPERATIONS_OF_A_TEST / 8);
}

TEST(RandomOperations, AgreeWithTheModelOnTablesOfAFewRecords)
{
    SLeaning leaning;
    leaning.table.maxRecCount = 6;
    leaning.operationsOfATable = 40;
    RunOperations(leaning);
}

// What is counted up at every press, and tidied up once it has grown, comes round many times.
TEST(RandomOperations, AgreeWithTheModelThroughALongLifeOfOneEnvironment)
{
    SLeaning leaning;
    leaning.operationsOfATable = OPERATIONS_OF_A_TEST / 20;
    RunOperations(leaning);
}

// Records enough for every stretch in which they are worked on.
TEST(RandomOperations, AgreeWithTheModelOnTablesOfAFewThousandRecords)
{
    SLeaning leaning;
    leaning.table.maxRecCount = 6000;
    leaning.operationsOfATable = 30;
    RunOperations(leaning, OPERATIONS_OF_A_TEST / 50);
}

TEST(RandomOperations, AgreeWithTheModelOnTablesOfAFewHundredRecords)
{
    SLeaning leaning;
    leaning.table.maxRecCount = 400;
    RunOperations(leaning, OPERATIONS_OF_A_TEST / 4);
}

// A few items with many special buttons, and lives long enough for them to grow.
SLeaning LeanToSpecialBtns()
{
    SLeaning leaning;
    leaning.table.maxRecCount = 30;
    leaning.table.maxFldCount = 3;
    leaning.table.number = 3;
    leaning.table.mayBeTiny = false;
    leaning.operationsOfATable = 400;
    leaning.limitation = 120;
    leaning.unknownID = 150;
    leaning.special = 2;
    leaning.maxSpBtnCount = 10;
    return leaning;
}

TEST(RandomOperations, AgreeWithTheModelOnSpecialButtonsUnderPresses)
{
    SLeaning leaning = LeanToSpecialBtns();
    leaning.special = 6;
    leaning.spBtnPress = 2;
    RunOperations(leaning, OPERATIONS_OF_A_TEST / 2);
}

TEST(RandomOperations, AgreeWithTheModelOnSpecialButtonsUnderLimitations)
{
    SLeaning leaning = LeanToSpecialBtns();
    leaning.limitation = 6;
    RunOperations(leaning, OPERATIONS_OF_A_TEST / 4);
}

TEST(RandomOperations, AgreeWithTheModelOnSpecialButtonsWithinEachOther)
{
    SLeaning leaning = LeanToSpecialBtns();
    leaning.nesting = 2;
    leaning.condition = 12;
    leaning.maxSpBtnCount = 16;
    leaning.memberChanges = 10;
    leaning.destructions = 1;
    RunOperations(leaning, OPERATIONS_OF_A_TEST / 4);
}

TEST(RandomOperations, AgreeWithTheModelOnMembersByCondition)
{
    SLeaning leaning = LeanToSpecialBtns();
    leaning.special = 4;
    leaning.condition = 1;
    leaning.conditionChanges = 8;
    leaning.memberChanges = 1;
    RunOperations(leaning, OPERATIONS_OF_A_TEST / 2);
}

// Buttons by condition have special members.
TEST(RandomOperations, AgreeWithTheModelOnSpecialMembersByCondition)
{
    SLeaning leaning = LeanToSpecialBtns();
    leaning.special = 4;
    leaning.condition = 2;
    leaning.nesting = 4;
    leaning.conditionChanges = 6;
    RunOperations(leaning, OPERATIONS_OF_A_TEST / 4);
}

// Buttons are switched off and on and destroyed, and their identifiers given out again.
TEST(RandomOperations, AgreeWithTheModelOnSpecialButtonsThatComeAndGo)
{
    SLeaning leaning = LeanToSpecialBtns();
    leaning.nesting = 2;
    leaning.condition = 6;
    leaning.creations = 8;
    leaning.switches = 12;
    leaning.destructions = 4;
    RunOperations(leaning, OPERATIONS_OF_A_TEST / 2);
}

// Around the count of members from which on a button keeps a row of records of its own.
TEST(RandomOperations, AgreeWithTheModelOnSpecialButtonsOfHundredsOfMembers)
{
    SLeaning leaning = LeanToSpecialBtns();
    leaning.table.minValueCount = 450;
    leaning.table.maxRecCount = 600;
    leaning.nesting = 4;
    leaning.condition = 10;
    leaning.memberChanges = 12;
    leaning.operationsOfATable = 100;
    RunOperations(leaning, OPERATIONS_OF_A_TEST / 50);
}

// Items of dates and times, whose groups come and go.
SLeaning LeanToDates()
{
    SLeaning leaning;
    leaning.table.maxRecCount = 40;
    leaning.table.maxFldCount = 3;
    leaning.table.number = 4;
    leaning.table.dates = 2;
    leaning.table.mayBeTiny = false;
    leaning.operationsOfATable = 120;
    leaning.limitation = 60;
    leaning.unknownID = 150;
    leaning.dates = 3;
    leaning.special = 4;
    leaning.virtualItems = 60;
    return leaning;
}

TEST(RandomOperations, AgreeWithTheModelOnGroupsOfDates)
{
    SLeaning leaning = LeanToDates();
    RunOperations(leaning);
}

TEST(RandomOperations, AgreeWithTheModelOnPressesOfGroupsOfDates)
{
    SLeaning leaning = LeanToDates();
    leaning.dates = 10;
    leaning.special = 10;
    leaning.spBtnPress = 2;
    leaning.limitation = 15;
    RunOperations(leaning, OPERATIONS_OF_A_TEST / 2);
}

TEST(RandomOperations, AgreeWithTheModelOnGroupsOfDatesWithinSpecialButtons)
{
    SLeaning leaning = LeanToDates();
    leaning.special = 2;
    leaning.dates = 6;
    leaning.nesting = 2;
    leaning.virtualItems = 8;
    leaning.operationsOfATable = 250;
    RunOperations(leaning, OPERATIONS_OF_A_TEST / 2);
}

// A few items and virtual ones over them and each other.
SLeaning LeanToVirtualItems()
{
    SLeaning leaning = LeanToSpecialBtns();
    leaning.table.maxRecCount = 20;
    leaning.table.maxFldCount = 2;
    leaning.virtualItems = 4;
    leaning.maxVirtualCount = 4;
    leaning.classDestruction = 12;
    leaning.dates = 30;
    leaning.maxSpBtnCount = 6;
    return leaning;
}

TEST(RandomOperations, AgreeWithTheModelOnVirtualItemsUnderPresses)
{
    SLeaning leaning = LeanToVirtualItems();
    leaning.special = 6;
    leaning.virtualItems = 12;
    leaning.spBtnPress = 2;
    leaning.limitation = 15;
    RunOperations(leaning);
}

TEST(RandomOperations, AgreeWithTheModelOnVirtualItemsWithinEachOther)
{
    SLeaning leaning = LeanToVirtualItems();
    leaning.nesting = 2;
    leaning.condition = 12;
    leaning.memberChanges = 10;
    leaning.classDestruction = 30;
    RunOperations(leaning);
}

TEST(RandomOperations, AgreeWithTheModelOnVirtualItemsThatComeAndGo)
{
    SLeaning leaning = LeanToVirtualItems();
    leaning.nesting = 2;
    leaning.condition = 8;
    leaning.switches = 10;
    leaning.destructions = 4;
    leaning.classDestruction = 4;
    RunOperations(leaning);
}

// Few buttons, so that identifiers soon come round, under items that are switched off and on.
TEST(RandomOperations, AgreeWithTheModelOnVirtualItemsThatAreSwitched)
{
    SLeaning leaning = LeanToVirtualItems();
    leaning.table.maxRecCount = 6;
    leaning.table.maxFldCount = 1;
    leaning.virtualItems = 2;
    leaning.maxVirtualCount = 3;
    leaning.classDestruction = 25;
    leaning.maxSpBtnCount = 3;
    leaning.condition = 15;
    leaning.creations = 8;
    leaning.destructions = 8;
    leaning.switches = 8;
    leaning.memberChanges = 2;
    leaning.conditionChanges = 1;
    RunOperations(leaning);
}

TEST(RandomOperations, AgreeWithTheModelOnMembersByConditionOfVirtualItems)
{
    SLeaning leaning = LeanToVirtualItems();
    leaning.table.number = 2;
    leaning.special = 4;
    leaning.condition = 2;
    leaning.conditionChanges = 8;
    RunOperations(leaning, OPERATIONS_OF_A_TEST / 2);
}

TEST(RandomOperations, AgreeWithTheModelOnVirtualItemsAfterClearingWhatUsersFixed)
{
    SLeaning leaning = LeanToVirtualItems();
    leaning.nesting = 2;
    leaning.clearing = 20;
    leaning.condition = 8;
    RunOperations(leaning, OPERATIONS_OF_A_TEST / 2);
}

TEST(RandomOperations, AgreeWithTheModelOnVirtualItemsOverHundredsOfButtons)
{
    SLeaning leaning = LeanToVirtualItems();
    leaning.table.minValueCount = 450;
    leaning.table.maxRecCount = 600;
    leaning.nesting = 4;
    leaning.condition = 10;
    leaning.memberChanges = 12;
    leaning.limitation = 20;
    leaning.clearing = 25;
    leaning.operationsOfATable = 100;
    RunOperations(leaning, OPERATIONS_OF_A_TEST / 50);
}

// ---- Saved and restored

// An item whose form comes out otherwise than the first time is one that the model says has changed.
TEST(RandomOperations, AgreeWithTheModelAcrossRestores)
{
    SLeaning leaning;
    leaning.restoring = 20;
    RunOperations(leaning, OPERATIONS_OF_A_TEST / 20);
}

TEST(RandomOperations, AgreeWithTheModelAcrossRestoresOfSpecialButtons)
{
    SLeaning leaning = LeanToSpecialBtns();
    leaning.nesting = 3;
    leaning.special = 3;
    leaning.limitation = 20;
    leaning.restoring = 12;
    RunOperations(leaning, OPERATIONS_OF_A_TEST / 20);
}

TEST(RandomOperations, AgreeWithTheModelAcrossRestoresOfGroupsOfDates)
{
    SLeaning leaning = LeanToDates();
    leaning.nesting = 3;
    leaning.restoring = 12;
    RunOperations(leaning, OPERATIONS_OF_A_TEST / 20);
}

TEST(RandomOperations, AgreeWithTheModelAcrossRestoresOfVirtualItems)
{
    SLeaning leaning = LeanToVirtualItems();
    leaning.nesting = 3;
    leaning.restoring = 12;
    RunOperations(leaning, OPERATIONS_OF_A_TEST / 20);
}

TEST(RandomOperations, AgreeWithTheModelAcrossRestoresOfHundredsOfButtons)
{
    SLeaning leaning = LeanToVirtualItems();
    leaning.table.minValueCount = 450;
    leaning.table.maxRecCount = 600;
    leaning.nesting = 4;
    leaning.condition = 10;
    leaning.memberChanges = 12;
    leaning.operationsOfATable = 100;
    leaning.restoring = 12;
    RunOperations(leaning, OPERATIONS_OF_A_TEST / 200);
}

TEST(RandomOperations, AgreeWithTheModelOnTablesThatSaveMemory)
{
    SLeaning leaning = LeanToVirtualItems();
    leaning.nesting = 3;
    leaning.restoring = 40;
    leaning.linkTables = NSKZCore::SCBUICoreCom::LINKTBLVERTYPE_MEMSAV;
    RunOperations(leaning, OPERATIONS_OF_A_TEST / 4);
}

// Rows of special buttons stand in several stretches of a table, with what came between.
TEST(RandomOperations, AgreeWithTheModelAcrossChangesOfTablesThatSaveMemoryUnderHundredsOfButtons)
{
    SLeaning leaning = LeanToVirtualItems();
    leaning.table.minValueCount = 450;
    leaning.table.maxRecCount = 600;
    leaning.table.maxFldCount = 3;
    leaning.memberChanges = 12;
    leaning.sourceChanges = 5;
    leaning.restoring = 20;
    leaning.clearing = 40;
    leaning.versionChange = 60;
    leaning.operationsOfATable = 100;
    leaning.linkTables = NSKZCore::SCBUICoreCom::LINKTBLVERTYPE_MEMSAV;
    RunOperations(leaning, OPERATIONS_OF_A_TEST / 200);
}

TEST(RandomOperations, AgreeWithTheModelWhileTheVersionsOfTablesChange)
{
    SLeaning leaning = LeanToSpecialBtns();
    leaning.restoring = 40;
    leaning.versionChange = 10;
    RunOperations(leaning, OPERATIONS_OF_A_TEST / 4);
}

// Elements, attributes and files of tables are damaged, of environments that have something of everything.
TEST(RandomOperations, SurviveDamagedSaves)
{
    SLeaning leaning = LeanToVirtualItems();
    leaning.table.maxFldCount = 4;
    leaning.table.dates = 2;
    leaning.nesting = 3;
    leaning.dates = 12;
    leaning.damaging = 4;
    RunOperations(leaning, OPERATIONS_OF_A_TEST / 20);
}

} // namespace
} // namespace NSKZ::Test
