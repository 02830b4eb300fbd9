// Changes of the table while memory runs out.

#include "ECCommandError.h"
#include "ECSessionLost.h"
#include "Support/CAllocFault.h"
#include "TableState.h"

#include <functional>

namespace NSKZ::Test {

class HostTableFault : public HostFixture
{
protected:
    HostTableFault() : codePage(_getmbcp()) {}

    CCodePageScope codePage;
};

TEST_F(HostTableFault, AChangeThatRunsOutOfMemoryIsTakenBackOrEndsTheSession)
{
    using NSKZCore::CBUIDataMngr;
    using NSKZCore::CProgressStatus;
    using NSKZCore::CSourceDataMngr;
    using NSKZCore::SCDeclareConstant;
    struct SCase
    {
        const char* name;
        std::function<void(CSourceDataMngr&)> change;
        Host::CAnalysis::CFollow follow; // none: held and refreshed
    };
    static const DWORD SHOP = 2;
    static const DWORD DAY = 4;
    const auto shorten = [](CSourceDataMngr& changed) { changed.DeleteRecs(1, 3); };
    const auto setDayForm = [](CSourceDataMngr& changed) {
        CSourceDataMngr::SFldInfo info;
        changed.GetFldInfo(DAY, info);
        info.dateTypeInfo.form = SCDeclareConstant::DATEFORM_DMY;
        changed.SetFldInfo(DAY, info);
    };
    const SCase cases[] = {
        {"delete rows", shorten,
         [](CBUIDataMngr& env, CProgressStatus&) { return env.AdjstAccordingToDeleteRec(1, 3); }},
        {"insert rows",
         [](CSourceDataMngr& changed) {
             const std::string_view cells[] = {"South", "D", "9", "2024-02-01", "08:00"};
             changed.InsertRecs(2, cells);
         },
         [](CBUIDataMngr& env, CProgressStatus&) { return env.AdjstAccordingToInsertRec(2, 1); }},
        {"delete a field", [](CSourceDataMngr& changed) { changed.DeleteFld(SHOP); },
         [](CBUIDataMngr& env, CProgressStatus&) { return env.AdjstAccordingToDeleteFld(&SHOP, 1); }},
        {"other data", [](CSourceDataMngr& changed) { changed.SetFldData(SHOP, *changed.GetFldData(1)); },
         [](CBUIDataMngr& env, CProgressStatus& progress) {
             return env.AdjstAccordingToChangeFldData(&SHOP, 1, &progress);
         }},
        {"another form", setDayForm,
         [](CBUIDataMngr& env, CProgressStatus& progress) {
             return env.AdjstAccordingToChangeFldData(&DAY, 1, &progress) &&
                    env.AdjstAccordingToChangeFldDataForm(&DAY, 1);
         }},
        {"several at once",
         [=](CSourceDataMngr& changed) {
             shorten(changed);
             setDayForm(changed);
             changed.DeleteFld(SHOP);
         },
         nullptr},
    };
    for (const SCase& each : cases) {
        std::size_t takenBack = 0;
        std::size_t lost = 0;
        bool hadFailure = true;
        for (std::size_t nth = 1; hadFailure; nth += 1 + nth / 16) {
            CHostSession session(table);
            for (const char* before : {"special create region inc Both East West",
                                       "special create shop cll Best --where 'amount sum top 1'",
                                       "form day year-month", "limit 0-5", "press region Both"})
                session.RunWell(before);
            const std::map<std::string, Json> before = AskByGroups(session);
            Host::CAnalysis& analysis = session.GetWorkspace().GetAnalysis();
            CSourceDataMngr changed(analysis.GetTable());
            each.change(changed);
            if (!each.follow)
                analysis.Hold(changed, "held");
            NSKZCore::SCDataMngrCoreDef::SBtnRenewalInfo info;
            NSKZCore::CAllocFault fault;
            bool isDone = false;
            bool isLost = false;
            fault.Arm(nth);
            try {
                if (each.follow)
                    analysis.Change(std::move(changed), "", each.follow);
                else
                    analysis.FollowHeld("", info);
                isDone = true;
            } catch (const std::bad_alloc&) {
            } catch (const Host::ECCommandError&) {
            } catch (const Host::ECSessionLost&) {
                isLost = true;
            }
            hadFailure = fault.Disarm();
            lost += isLost ? 1 : 0;
            if (isDone || isLost)
                continue;
            ++takenBack;
            SCOPED_TRACE(std::string(each.name) + ", allocation " + std::to_string(nth));
            EXPECT_TRUE(analysis.GetHistory().empty());
            EXPECT_EQ(analysis.GetHeldCommands().size(), each.follow ? 0u : 1u);
            analysis.DropHeld();
            ExpectSameState(AskByGroups(session), before);
            session.RunWell("rows delete 0 1"); // further changes go well
            session.RunWell("undo");
            ExpectSameState(AskByGroups(session), before);
            if (HasFailure())
                return;
        }
        EXPECT_GT(takenBack, 5u) << each.name;
        // One failure leaves enough memory to take the change back.
        EXPECT_EQ(lost, 0u) << each.name;
    }
}

} // namespace NSKZ::Test
