// Sessions of random commands, saved and loaded.

#include "HostState.h"
#include "Support/CRandom.h"
#include "VCBtn.h"

#include <algorithm>

namespace NSKZ::Test {

namespace {

using NSKZCore::CRandom;

// Makes commands of which most go well: on the items of TABLE_TEXT and up to two virtual ones of each kind.
class CRandomCommands
{
public:
    explicit CRandomCommands(CRandom& randomOfRun) : random(randomOfRun) {}

    std::vector<std::string> Make(std::size_t count)
    {
        std::vector<std::string> commands;
        for (std::size_t i = 0; i < count; ++i)
            commands.push_back(MakeOne());
        return commands;
    }

private:
    std::string MakeOne()
    {
        switch (random.GetBelow(20)) {
        case 0:
        case 1:
        case 2:
            return "press " + Item() + Btn() + (random.IsOneOf(2) ? Btn() : "");
        case 3:
            return "release " + Item() + Btn();
        case 4:
            return "press-all " + Item();
        case 5:
            return "mode " + OneOf({"none", "or", "and", "difference", "narrowing"});
        case 6:
            return "multi " + OneOf({"on", "off"});
        case 7:
            return "limit " + std::to_string(random.GetBelow(3)) + "-" +
                   std::to_string(3 + random.GetBelow(4));
        case 8:
            // Not of an empty value that is in no cell: the engine lists it by name from then on.
            return "alias " + Item() + " #" + std::to_string(2 + random.GetBelow(4)) + Name();
        case 9:
            return "empty-value " + Item() + OneOf({" on", " off"});
        case 10:
            return "special create " + Item() + " inc" + Name() + Btn() + Btn() +
                   OneOf({"", " --disp-members"});
        case 11:
            return "special create " + Item() + " cll" + Name() + Btn() + Btn();
        case 12:
            return "special create " + Item() + " cll" + Name() + Cnd();
        case 13:
            return "virtual create" + Name() + OneOf({"", " --common"});
        case 14:
            return "special create " + VirItem() + " virinc" + Name() + " --of " + Item() + Btn() + Btn();
        case 15:
            return "special create " + VirItem() + " virinc" + Name() + " --of " + Item() + Cnd();
        case 16:
            return "form @4 " + OneOf({"year-month", "fiscal-quarter", "as-it-is", "week-weekday"});
        case 17:
            return "calendar --start-month " + std::to_string(1 + random.GetBelow(12)) + " --cut-off-day " +
                   std::to_string(1 + random.GetBelow(31));
        case 18:
            return "special destroy " + Item() + Btn();
        default:
            return OneOf({"select-item ", "new-buttons "}) + Item() + OneOf({" on", ""});
        }
    }

    std::string OneOf(const std::vector<std::string>& words)
    {
        return words[random.GetBelow(static_cast<DWORD>(words.size()))];
    }
    std::string VirItem() { return OneOf({"@1000000001", "@1000000002", "@2000000001", "@2000000002"}); }
    std::string Item()
    {
        return random.IsOneOf(6) ? VirItem() : "@" + std::to_string(1 + random.GetBelow(5));
    }
    std::string Btn()
    {
        if (!random.IsOneOf(3))
            return " #" + std::to_string(1 + random.GetBelow(6));
        return OneOf({" #400000000", " #408000000", " #416000000"}) + std::to_string(2 + random.GetBelow(4));
    }
    std::string Name() { return " N" + std::to_string(random.GetBelow(10000)); }
    std::string Cnd()
    {
        return " --where \"" +
               OneOf({"amount sum top 2", "amount average > 5", "amount count >= 2 or amount sum bottom 1",
                      "not (amount ratio > 0.3 and amount sum top 3)"}) +
               "\"";
    }

    CRandom& random;
};

// A hidden button without members is hidden for several reasons, of which the engine works out some when
// they come about and all of them at a load.
void ForgetReasonsOfEmptyBtns(Json& answer)
{
    constexpr unsigned int REASONS =
        NSKZCore::VISINFO_NOMEMBER | NSKZCore::VISINFO_NOLIVEMEMBER | NSKZCore::VISINFO_LIMITEDREC;
    if (answer.is_object() && answer.contains("visible") && answer.at("displayed") == false) {
        answer["visible"] = answer.at("visible").get<unsigned int>() & ~REASONS;
        answer.erase("reasons"); // the same in words
    }
    if (answer.is_structured()) {
        for (Json& part : answer)
            ForgetReasonsOfEmptyBtns(part);
    }
}

} // namespace

using HostSaveRandom = HostFixture;

TEST_F(HostSaveRandom, SessionsOfRandomCommandsComeBack)
{
    constexpr std::size_t SESSIONS = 40;
    CRandom random;
    CRandomCommands generator(random);
    const std::string work = (dir.GetPath() / "work").string();
    std::size_t wentWell = 0;
    std::size_t otherCount = 0;
    for (std::size_t i = 0; i < SESSIONS; ++i) {
        // Those that are refused change nothing and are left out.
        std::vector<std::string> commands = generator.Make(30);
        const std::vector<Json> answers = CHostProcess::RunCommands(table, commands).GetAnswers();
        ASSERT_EQ(answers.size(), commands.size());
        std::vector<std::string> good;
        std::string trace;
        for (std::size_t j = 0; j < commands.size(); ++j) {
            if (answers[j].at("ok") == true) {
                good.push_back(commands[j]);
                trace += commands[j] + "\n";
            }
        }
        SCOPED_TRACE(trace);
        wentWell += good.size();
        std::map<std::string, Json> made = CHostState::Ask(table, good);
        good.push_back("save " + work);
        const Json saved = LastAnswer(good);
        EXPECT_EQ(saved.at("result"), true);
        // What conditions pick may hang on what they picked before; in Or and And a press may replace a
        // selection that hid some of its buttons; in Difference a release of a stranger leaves a pair without
        // its selected buttons.
        const Json spBtns = made.at("special list").at("special");
        const bool hasCnd = std::any_of(spBtns.begin(), spBtns.end(),
                                        [](const Json& spBtn) { return !spBtn.at("condition").is_null(); });
        const bool isAsSaved = LastAnswer({"load " + work}).at("asSaved");
        const std::string mode = made.at("mode").at("mode");
        EXPECT_TRUE(isAsSaved || hasCnd || (mode != "narrowing" && mode != "none"));
        if (!isAsSaved) {
            ++otherCount;
            continue;
        }
        std::map<std::string, Json> loaded = CHostState::Ask(table, {"load " + work});
        EXPECT_EQ(loaded.size(), made.size());
        for (auto* const state : {&made, &loaded}) {
            for (auto& [question, answer] : *state)
                ForgetReasonsOfEmptyBtns(answer);
        }
        for (const auto& [question, answer] : made)
            EXPECT_EQ(loaded.count(question) != 0 ? loaded.at(question) : Json(), answer) << question;
        if (HasFailure())
            return;
    }
    EXPECT_GT(wentWell, SESSIONS * 10);
    EXPECT_LT(otherCount, SESSIONS / 2);
}

} // namespace NSKZ::Test
