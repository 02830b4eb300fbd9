#include "CModelComparison.h"
#include "CModelEnv.h"
#include "CModelTable.h"

#include "CCoreSumMngr.h"
#include "INumCnd.h"
#include "Support/CRandom.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <vector>

// Random operations on an environment over a random table and on the naive model of it. After every operation
// both answer the same, or the run tells the seed, the table, the operations so far and what differs. Setting
// KZC_SEED repeats a run.

namespace NSKZ::Test {
namespace {

using NSKZCore::CBUIDataMngr;
using NSKZCore::CCoreSumMngr;
using NSKZCore::CRandom;
using NSKZCore::INumCnd;
using NSKZCore::SCBUICoreCom;
using NSKZCore::SSelectBtnIDList;

#ifdef KZC_SANITIZED
constexpr DWORD OPERATIONS_OF_A_TEST = 5000;
#else
constexpr DWORD OPERATIONS_OF_A_TEST = 100000;
#endif

// What a run leans to; each number is the chance, one in so many, 0 for never.
struct SLeaning
{
    DWORD maxRecCount = 60;
    DWORD operationsOfATable = 150;
    DWORD modeChange = 25;
    std::vector<CBUIDataMngr::ERelationMode> modes = {
        CBUIDataMngr::RELATIONMODE_NONE, CBUIDataMngr::RELATIONMODE_OR, CBUIDataMngr::RELATIONMODE_AND,
        CBUIDataMngr::RELATIONMODE_DIFFERENCE, CBUIDataMngr::RELATIONMODE_NARROWING};
    DWORD multiChange = 20;
    DWORD limitation = 25;
    DWORD unknownID = 40;
    DWORD hiddenBtn = 6; // choosing from all buttons and not from the displayed ones
    DWORD sumMngrMissing = 0;
};

class CHostCnd : public INumCnd
{
public:
    explicit CHostCnd(int& countOfLiving) : livingCount(countOfLiving) { ++livingCount; }
    CHostCnd(const CHostCnd& other) : INumCnd(other), livingCount(other.livingCount) { ++livingCount; }
    CHostCnd& operator=(const CHostCnd&) = delete;
    ~CHostCnd() override { --livingCount; }
    bool IsEqualTo(const INumCnd&) const override { return true; }
    bool IsMetBy(double) const override { return true; }
    INumCnd* CreateClone() const override { return new CHostCnd(*this); }
    void Destroy() override { delete this; }

private:
    int& livingCount;
};

// One environment with its model and what was done to both.
class CRun
{
public:
    CRun(CRandom& choice, const SLeaning& leaningOfRun)
        : random(choice), leaning(leaningOfRun), table(choice, leaningOfRun.maxRecCount),
          sumMngr(table.GetSource()),
          hasSumMngr(leaning.sumMngrMissing == 0 || !random.IsOneOf(leaning.sumMngrMissing)),
          env(std::make_unique<CBUIDataMngr>(1, SCBUICoreCom::LINKTBLVERTYPE_ONMEM,
                                             SCBUICoreCom::LINKTBLVERTYPE_ONMEM, table.GetSource(),
                                             hasSumMngr ? &sumMngr : nullptr, nullptr)),
          model(table.GetTexts(), hasSumMngr)
    {}

    // Operates and compares. Empty, or what differs.
    std::string Step()
    {
        log.emplace_back();
        const std::string disagreement = Operate() ? "" : "the results of the operation\n";
        return disagreement + CModelComparison(*env, model, random).Compare();
    }

    // The end of the environment: empty, or what was left behind.
    std::string End()
    {
        env.reset();
        return livingCndCount == 0 ? "" : "clones of the numeric condition\n";
    }

    std::string Describe() const
    {
        std::ostringstream out;
        out << table.Describe() << (hasSumMngr ? "with" : "without") << " a sum manager at first\n";
        for (const std::ostringstream& operation : log)
            out << operation.str() << '\n';
        return out.str();
    }

private:
    bool Says(bool envSays, bool modelSays)
    {
        log.back() << " -> " << envSays;
        if (envSays != modelSays)
            log.back() << ", model " << modelSays;
        return envSays == modelSays;
    }
    bool HappensOneIn(DWORD times) { return times != 0 && random.IsOneOf(times); }

    DWORD ChooseClassID()
    {
        if (model.GetItems().empty() || HappensOneIn(leaning.unknownID * 2))
            return std::vector<DWORD>{0, 999, 1000000001, 2000000001, 4294967295}[random.GetBelow(5)];
        // The class of before now and then, so that presses in it follow each other.
        if (lastClassID == 0 || random.IsOneOf(2))
            lastClassID = 1 + random.GetBelow(static_cast<DWORD>(model.GetItems().size()));
        return lastClassID;
    }

    DWORD ChooseBtnID(DWORD classID, bool select)
    {
        const auto found = model.GetItems().find(classID);
        if (found == model.GetItems().end() || HappensOneIn(leaning.unknownID))
            return std::vector<DWORD>{
                0, 888888, 3000000002, 4000000002, 4080000002, 4160000002}[random.GetBelow(6)];
        IDList ids = found->second.ListAll();
        if (!HappensOneIn(leaning.hiddenBtn)) {
            const IDList better = select ? found->second.ListDisplayed() : found->second.ListSelected();
            if (!better.empty())
                ids = better;
        }
        return ids[random.GetBelow(static_cast<DWORD>(ids.size()))];
    }

    IDList ChooseBtnIDs(DWORD classID, bool select)
    {
        const DWORD counts[] = {0, 1, 1, 1, 2, 2, 3, 4, 8};
        IDList ids;
        for (DWORD left = counts[random.GetBelow(static_cast<DWORD>(std::size(counts)))]; left > 0; --left)
            ids.push_back(ChooseBtnID(classID, select));
        return ids;
    }

    void Log(const IDList& ids)
    {
        log.back() << " {";
        for (const DWORD id : ids)
            log.back() << ' ' << id;
        log.back() << " }";
    }

    bool Operate()
    {
        if (HappensOneIn(leaning.modeChange)) {
            const auto mode = leaning.modes[random.GetBelow(static_cast<DWORD>(leaning.modes.size()))];
            log.back() << "SetRelationMode " << mode;
            env->SetRelationMode(mode);
            model.SetRelationMode(mode);
            return true;
        }
        if (HappensOneIn(leaning.multiChange)) {
            const bool multi = random.IsOneOf(2);
            log.back() << "SetMultiSelectionInfo " << multi;
            env->SetMultiSelectionInfo(multi);
            model.SetMultiSelectionInfo(multi);
            return true;
        }
        if (HappensOneIn(leaning.limitation))
            return Limit();
        if (HappensOneIn(12))
            return OperateSeldom();
        return Press();
    }

    bool Press()
    {
        const bool select = !random.IsOneOf(4);
        const DWORD classID = ChooseClassID();
        if (random.IsOneOf(2)) {
            const DWORD btnID = ChooseBtnID(classID, select);
            log.back() << "SelectTheBtn " << classID << ' ' << btnID << ' ' << select;
            return Says(env->SelectTheBtn(classID, btnID, select),
                        model.SelectTheBtn(classID, btnID, select));
        }
        if (random.IsOneOf(8)) {
            log.back() << "SelectAllBtnsOfBtnClass " << classID << ' ' << select;
            return Says(env->SelectAllBtnsOfBtnClass(classID, select),
                        model.SelectAllBtnsOfBtnClass(classID, select));
        }
        const IDList btnIDs = ChooseBtnIDs(classID, select);
        const bool includeHidden = random.IsOneOf(3);
        log.back() << "SelectBtns " << classID;
        Log(btnIDs);
        log.back() << ' ' << select << ' ' << includeHidden;
        return Says(env->SelectBtns(classID, btnIDs, select, includeHidden),
                    model.SelectBtns(classID, btnIDs, select, includeHidden));
    }

    bool Limit()
    {
        if (random.IsOneOf(3)) {
            log.back() << "ClearLimitedRecList";
            env->ClearLimitedRecList();
            model.ClearLimitedRecList();
            return true;
        }
        IDList recs;
        const DWORD oneOf = 1 + random.GetBelow(8);
        for (DWORD rec = 0; rec < model.GetRecCount(); ++rec) {
            if (random.IsOneOf(oneOf))
                recs.push_back(rec);
        }
        if (random.IsOneOf(6))
            recs.push_back(model.GetRecCount() + random.GetBelow(3));
        log.back() << "SetLimitedRecList";
        Log(recs);
        env->SetLimitedRecList(recs.data(), static_cast<DWORD>(recs.size()));
        model.SetLimitedRecList(recs);
        return true;
    }

    bool OperateSeldom()
    {
        const bool flag = random.IsOneOf(2);
        const DWORD classID = ChooseClassID();
        switch (random.GetBelow(12)) {
        case 0:
        case 1:
            log.back() << "ClearAllBtnSelections " << flag;
            env->ClearAllBtnSelections(flag);
            model.ClearAllBtnSelections(flag);
            return true;
        case 2:
        case 3:
            return RestoreSelection();
        case 4:
        case 5:
            return SetAlias(classID);
        case 6:
            log.back() << "SetNewBtnMadeSelStateOfBtnClass " << classID << ' ' << flag;
            return Says(env->SetNewBtnMadeSelStateOfBtnClass(classID, flag),
                        model.SetNewBtnMadeSelStateOfBtnClass(classID, flag));
        case 7:
            log.back() << "SelectTheBtnClass " << classID << ' ' << flag;
            return Says(env->SelectTheBtnClass(classID, flag), model.SelectTheBtnClass(classID, flag));
        case 8:
            if (flag) {
                log.back() << "ClearAllBtnClassSelections";
                env->ClearAllBtnClassSelections();
                model.ClearAllBtnClassSelections();
            } else {
                log.back() << "ClearOfFixedSpec";
                env->ClearOfFixedSpec();
                model.ClearOfFixedSpec();
            }
            return true;
        case 9:
            if (flag) {
                log.back() << "SetNumCnd";
                env->SetNumCnd(CHostCnd(livingCndCount));
                model.SetNumCnd();
            } else {
                log.back() << "ClearNumCnd";
                env->ClearNumCnd();
                model.ClearNumCnd();
            }
            return livingCndCount == (model.HasNumCnd() ? 1 : 0);
        case 10:
            if (leaning.sumMngrMissing != 0) {
                log.back() << "SetCoreSumMngrPtr " << flag;
                env->SetCoreSumMngrPtr(flag ? &sumMngr : nullptr);
                model.SetSumMngr(flag);
            }
            return true;
        default:
            log.back() << "SetMultiSelectionInfo " << flag;
            env->SetMultiSelectionInfo(flag);
            model.SetMultiSelectionInfo(flag);
            return true;
        }
    }

    // What was remembered of this environment, or a new invention.
    bool RestoreSelection()
    {
        std::vector<SSelectBtnIDList> selection;
        if (random.IsOneOf(2)) {
            selection = remembered;
            env->GetAllBtnSelectionInfo(remembered);
        } else {
            for (DWORD left = random.GetBelow(4); left > 0; --left) {
                const DWORD classID = ChooseClassID();
                selection.push_back({classID, ChooseBtnIDs(classID, true), random.IsOneOf(2)});
            }
        }
        const bool includeHidden = random.IsOneOf(2);
        log.back() << "SelectBtns of a whole selection";
        for (const SSelectBtnIDList& share : selection) {
            log.back() << " class " << share.btnClassID << " new " << share.newBtnMadeSelState;
            Log(share.btnIDList);
        }
        log.back() << ' ' << includeHidden;
        return Says(env->SelectBtns(selection, includeHidden), model.SelectBtns(selection, includeHidden));
    }

    bool SetAlias(DWORD classID)
    {
        const DWORD btnID = ChooseBtnID(classID, true);
        // A text of another button, of the button itself (the very bytes that it holds), a new one, none.
        const char* alias = nullptr;
        const DWORD otherID = ChooseBtnID(classID, true);
        switch (random.GetBelow(5)) {
        case 0:
            env->GetAliasOfBtn(classID, otherID, alias);
            break;
        case 1:
            env->GetAliasOfBtn(classID, btnID, alias);
            break;
        case 2:
            env->GetNameOfBtn(classID, btnID, alias);
            break;
        case 3:
            alias = "\x83\x5c alias";
            break;
        default:
            break;
        }
        const std::string copy = alias == nullptr ? "" : alias;
        log.back() << "SetAliasOfBtn " << classID << ' ' << btnID << " \"" << copy << '"'
                   << (alias == nullptr ? " (null)" : "");
        const char* const aliasForModel = alias == nullptr ? nullptr : copy.c_str();
        return Says(env->SetAliasOfBtn(classID, btnID, alias),
                    model.SetAliasOfBtn(classID, btnID, aliasForModel));
    }

    CRandom& random;
    const SLeaning& leaning;
    int livingCndCount = 0;
    CModelTable table;
    CCoreSumMngr sumMngr;
    bool hasSumMngr;
    std::unique_ptr<CBUIDataMngr> env;
    CModelEnv model;
    DWORD lastClassID = 0;
    std::vector<SSelectBtnIDList> remembered;
    std::vector<std::ostringstream> log;
};

void RunOperations(const SLeaning& leaning, DWORD operationCount = OPERATIONS_OF_A_TEST)
{
    CRandom random;
    for (DWORD done = 0; done < operationCount;) {
        CRun run(random, leaning);
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
    }
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

TEST(RandomOperations, AgreeWithTheModelOnTablesOfAFewRecords)
{
    SLeaning leaning;
    leaning.maxRecCount = 6;
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
    leaning.maxRecCount = 6000;
    leaning.operationsOfATable = 30;
    RunOperations(leaning, OPERATIONS_OF_A_TEST / 50);
}

TEST(RandomOperations, AgreeWithTheModelOnTablesOfAFewHundredRecords)
{
    SLeaning leaning;
    leaning.maxRecCount = 400;
    RunOperations(leaning, OPERATIONS_OF_A_TEST / 4);
}

} // namespace
} // namespace NSKZ::Test
