// Random changes of the table, beside a session that is opened anew on it, and taken back.

#include "Support/CRandom.h"
#include "TableState.h"

#include <filesystem>

namespace NSKZ::Test {

using NSKZCore::CRandom;
using NSKZCore::CSourceDataMngr;
using NSKZCore::SCDeclareConstant;

namespace {

// Makes changes of the table of a session, with the files that they need.
class CRandomChanges
{
public:
    CRandomChanges(CRandom& randomOfRun, CHostSession& sessionOfRun, const CTempDir& dirOfRun)
        : random(randomOfRun), session(sessionOfRun), dir(dirOfRun)
    {}

    // A change as a command, which may be refused.
    std::string Make()
    {
        const CSourceDataMngr& table = session.GetWorkspace().GetAnalysis().GetTableWithHeld();
        const DWORD recCount = table.GetRecCount();
        const std::string position = std::to_string(random.GetBelow(recCount + 1));
        switch (random.GetBelow(12)) {
        case 0:
        case 1:
        case 2:
            return "rows insert " + (random.IsOneOf(3) ? "0" : position) + " " + WriteRows();
        case 3:
        case 4:
            return "rows delete " + (random.IsOneOf(3) ? "0" : position) + " " +
                   std::to_string(1 + random.GetBelow(3));
        case 5:
            return "field insert " + WriteColumn("new" + std::to_string(++newCount)) + " --position " +
                   std::to_string(random.GetBelow(table.GetFldCount() + 1));
        case 6:
            return "field delete " + Field();
        case 7:
        case 8:
            return "field data " + Field() + " " + WriteColumn("x");
        case 9:
            return "field type " + Field() + " " + OneOf({"text", "number", "date:ymd-hyphen", "time:hm"});
        case 10:
            return "field form " + Field() + " " + OneOf({"ymd-hyphen", "dmy-hyphen", "hm", "hms"});
        default:
            return "calendar --start-month " + std::to_string(1 + random.GetBelow(12)) + " --cut-off-day " +
                   std::to_string(1 + random.GetBelow(31));
        }
    }

    std::string OneOf(const std::vector<std::string>& words)
    {
        return words[random.GetBelow(static_cast<DWORD>(words.size()))];
    }
    std::string Field()
    {
        const CSourceDataMngr& table = session.GetWorkspace().GetAnalysis().GetTableWithHeld();
        std::vector<DWORD> fldIDs;
        table.GetSrcFrmDataFldID(fldIDs);
        const char* name = nullptr;
        table.GetItemName(fldIDs[random.GetBelow(table.GetFldCount())], name);
        return name;
    }

private:
    std::string Value()
    {
        return OneOf({"East", "West", "A", "\"\"", "7", "-2.5", "10", "2024-01-05", "2024-02-11",
                      "2023-12-31", "01-02-2024", "09:30", "11:00", "9:05:30", "\"x,y\""});
    }
    std::string WriteRows()
    {
        const CSourceDataMngr& table = session.GetWorkspace().GetAnalysis().GetTableWithHeld();
        std::vector<DWORD> fldIDs;
        table.GetSrcFrmDataFldID(fldIDs);
        std::string text;
        for (const DWORD fldID : fldIDs) {
            const char* name = nullptr;
            table.GetItemName(fldID, name);
            text += (text.empty() ? "" : ",") + std::string(name);
        }
        for (DWORD rec = 1 + random.GetBelow(3); rec != 0; --rec) {
            text += "\n";
            for (std::size_t i = 0; i < fldIDs.size(); ++i)
                text += (i != 0 ? "," : "") + Value();
        }
        return dir.WriteFile("rows.csv", text + "\n");
    }
    std::string WriteColumn(const std::string& name)
    {
        std::string text = name + "\n";
        const DWORD recCount = session.GetWorkspace().GetAnalysis().GetTableWithHeld().GetRecCount();
        const bool isMixed = random.IsOneOf(2);
        for (DWORD rec = 0; rec < recCount; ++rec)
            text += (isMixed ? Value() : std::to_string(random.GetBelow(4))) + "\n";
        return dir.WriteFile("column.csv", text);
    }

    CRandom& random;
    CHostSession& session;
    const CTempDir& dir;
    unsigned int newCount = 0;
};

// What a session shows of its source items, by names: the buttons with records in both orders, sums, groups
// of dates.
Json Describe(CHostSession& session)
{
    Json described;
    const Json items = session.RunWell("items").at("items");
    for (const Json& item : items) {
        const std::string word = "@" + std::to_string(item.at("id").get<DWORD>());
        Json& ofItem = described[item.at("name").get<std::string>()];
        ofItem["type"] = item.at("type");
        ofItem["displayed"] = item.at("displayed");
        for (const char* order : {"app", "name"}) {
            const Json answer = session.RunWell("buttons " + word + " --all --order " + order);
            for (const Json& btn : answer.at("buttons")) {
                if (btn.at("records") != 0)
                    ofItem[order].push_back({btn.at("text"), btn.at("kind"), btn.at("displayed"),
                                             btn.at("records"), btn.at("targetRecords")});
            }
        }
        for (const Json& number : items) {
            if (number.at("type") != "number")
                continue;
            const std::string numberWord = "@" + std::to_string(number.at("id").get<DWORD>());
            const Json sums = session.RunWell("sum " + word + " " + numberWord);
            for (const Json& value : sums.at("values"))
                ofItem["sums"][number.at("name").get<std::string>()][value.at("text").get<std::string>()] =
                    value.at("value");
        }
        if (item.at("type") == "date") {
            for (const char* part : {"month", "fiscal-quarter", "weekday"}) {
                const Json groups = session.RunWell("groups " + word + " " + part);
                for (const Json& group : groups.at("groups")) {
                    if (group.at("records") != 0)
                        ofItem[part].push_back({group.at("number"), group.at("records")});
                }
            }
        }
    }
    described["records"] = session.RunWell("records --list").at("list");
    return described;
}

} // namespace

class HostTableRandom : public HostFixture
{
protected:
    HostTableRandom() : codePage(_getmbcp()) {}

    // A session opened anew on the table of another one.
    std::unique_ptr<CHostSession> Reopen(CHostSession& session) const
    {
        const std::string path = (dir.GetPath() / "saved.csv").string();
        std::vector<std::string> arguments =
            session.RunWell("table save --replace " + path).at("options").get<std::vector<std::string>>();
        arguments.push_back(path);
        auto opened = std::make_unique<CHostSession>(CHostSession::MakeOptions(arguments));
        const Json calendar = session.RunWell("calendar");
        opened->RunWell("calendar --start-month " + calendar.at("startMonth").dump() + " --cut-off-day " +
                        calendar.at("cutOffDay").dump());
        return opened;
    }

    CCodePageScope codePage;
};

TEST_F(HostTableRandom, AChangedTableShowsAsOneOpenedAnew)
{
    CRandom random;
    for (int run = 0; run < 6; ++run) {
        CHostSession session(table);
        CRandomChanges changes(random, session, dir);
        std::string trace;
        std::size_t wentWell = 0;
        for (int step = 0; step < 25; ++step) {
            // Some of them held, and one refresh for all.
            const bool holds = random.IsOneOf(3);
            for (DWORD i = holds ? 1 + random.GetBelow(3) : 1; i != 0; --i) {
                const std::string command = changes.Make() + (holds ? " --hold" : "");
                const bool isGood = session.Run(command).at("ok");
                trace += isGood ? command + "\n" : "";
                wentWell += isGood ? 1 : 0;
            }
            if (holds && session.Run("refresh").at("ok") == true)
                trace += "refresh\n";
            if (random.IsOneOf(5) && session.Run("undo").at("ok") == true)
                trace += "undo\n";
            session.RunWell("clear");
            SCOPED_TRACE(trace);
            const std::unique_ptr<CHostSession> opened = Reopen(session);
            ASSERT_EQ(Describe(session), Describe(*opened));
            // And so it does under a selection.
            const std::string item = changes.Field();
            const Json btns = session.RunWell("buttons " + item).at("buttons");
            if (!btns.empty()) {
                const std::string text =
                    btns[random.GetBelow(static_cast<DWORD>(btns.size()))].at("text").get<std::string>();
                session.RunWell("press " + item + " '" + text + "'");
                opened->RunWell("press " + item + " '" + text + "'");
                ASSERT_EQ(Describe(session), Describe(*opened)) << "press " << item << " " << text;
            }
            if (random.IsOneOf(2))
                session.RunWell("clear");
        }
        EXPECT_GT(wentWell, 10u);
    }
}

TEST_F(HostTableRandom, RandomChangesTakenBackLeaveEverythingAsItWas)
{
    CRandom random;
    for (int run = 0; run < 12; ++run) {
        CHostSession session(table);
        for (const char* command :
             {"special create region inc Both East West --disp-members", "special create shop cll AB A B",
              "special create shop cll Best --where 'amount sum top 1'", "virtual create Areas",
              "special create Areas virinc Main --of region East", "form day year-month", "form at hour",
              "special create amount cll Few 10 20", "limit 0-5", "press region East North"})
            session.RunWell(command);
        const std::map<std::string, Json> before = AskByGroups(session);
        CRandomChanges changes(random, session, dir);
        std::string trace;
        for (int step = 0; step < 12; ++step) {
            const bool holds = random.IsOneOf(3);
            for (DWORD i = holds ? 1 + random.GetBelow(4) : 1; i != 0; --i) {
                const std::string command = changes.Make() + (holds ? " --hold" : "");
                trace += session.Run(command).at("ok") == true ? command + "\n" : "";
            }
            if (holds && session.Run("refresh").at("ok") == true)
                trace += "refresh\n";
            if (random.IsOneOf(3) && !session.RunWell("history").at("changes").empty())
                session.Run("press " + changes.Field() + " #2");
        }
        SCOPED_TRACE(trace);
        const std::size_t count = session.RunWell("history").at("changes").size();
        EXPECT_GT(count, 3u);
        for (std::size_t i = 0; i < count; ++i)
            session.RunWell("undo");
        ExpectSameState(AskByGroups(session), before);
        if (HasFailure())
            return;
    }
}

} // namespace NSKZ::Test
