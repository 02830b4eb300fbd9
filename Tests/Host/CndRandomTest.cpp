// Random conditions: what they pick is compared with sets worked out beside, and any text is either taken or
// refused at a place within it.

#include "CCndParser.h"
#include "ECCndError.h"
#include "SCCndText.h"
#include "Support/CRandom.h"
#include "Support/CTestSumMngr.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace NSKZ::Host {

namespace {

using NSKZCore::CRandom;

using BtnIDs = std::set<DWORD>;

DWORD FindField(const std::string& word)
{
    if (word != "a" && word != "b c")
        throw ECCommandError("There is no item \"" + word + "\".");
    return word == "a" ? 1 : 2;
}

std::string NameField(DWORD fldID)
{
    return fldID == 1 ? "a" : "b c";
}

// Buttons of different whole worths above 0, and random conditions on them with what each picks.
class CCndMaker
{
public:
    struct SMade
    {
        std::string text;
        BtnIDs picked;
    };

    explicit CCndMaker(CRandom& randomOfTest) : random(randomOfTest)
    {
        for (DWORD btnID = 2; btnID < 12; ++btnID) {
            DWORD worth = 0;
            do
                worth = 1 + random.GetBelow(40);
            while (std::count(worths.begin(), worths.end(), worth) != 0);
            btnIDs.push_back(btnID);
            worths.push_back(worth);
            sums.values[btnID] = worth;
        }
    }

    // What "or" joins; of parts with parentheses up to `depth`.
    SMade MakeOr(int depth)
    {
        SMade made = MakeAnd(depth);
        while (random.IsOneOf(3)) {
            const SMade next = MakeAnd(depth);
            made.text += " or " + next.text;
            made.picked.insert(next.picked.begin(), next.picked.end());
        }
        return made;
    }

    const std::vector<DWORD>& GetBtnIDs() const { return btnIDs; }
    const Test::CTestSumMngr& GetSums() const { return sums; }

private:
    SMade MakeAnd(int depth)
    {
        SMade made = MakePart(depth);
        while (random.IsOneOf(3)) {
            const SMade next = MakePart(depth);
            made.text += " and " + next.text;
            std::erase_if(made.picked, [&next](DWORD btnID) { return next.picked.count(btnID) == 0; });
        }
        return made;
    }

    SMade MakePart(int depth)
    {
        if (random.IsOneOf(4)) {
            SMade made = MakePart(depth);
            return {"not " + made.text, Complement(made.picked)};
        }
        if (depth > 0 && random.IsOneOf(2)) {
            SMade made = MakeOr(depth - 1);
            made.text = "(" + made.text + ")";
            return made;
        }
        return MakeUnit();
    }

    SMade MakeUnit()
    {
        // Of each method the test's sums tell the worth with something added.
        static constexpr struct
        {
            const char* word;
            int added;
        } METHODS[] = {{"sum", 0}, {"count", 1000}, {"average", 2000}};
        const auto& method = METHODS[random.GetBelow(3)];
        SMade made = {std::string(random.IsOneOf(2) ? "a " : "'b c' ") + method.word + " ", {}};
        const bool isNegated = random.IsOneOf(3);
        if (isNegated)
            made.text += "not ";
        if (random.IsOneOf(2)) {
            const bool isTop = random.IsOneOf(2);
            const DWORD count = 1 + random.GetBelow(12);
            made.text += (isTop ? "top " : "bottom ") + std::to_string(count);
            for (std::size_t i = 0; i < btnIDs.size(); ++i) {
                const auto betterCount = std::count_if(worths.begin(), worths.end(), [&](DWORD worth) {
                    return isTop ? worth > worths[i] : worth < worths[i];
                });
                if (static_cast<DWORD>(betterCount) < count)
                    made.picked.insert(btnIDs[i]);
            }
        } else {
            static constexpr const char* SIGNS[] = {"=", "!=", ">", ">=", "<", "<="};
            const DWORD sign = random.GetBelow(6);
            const DWORD number = random.GetBelow(42);
            made.text +=
                std::string(SIGNS[sign]) + " " + std::to_string(static_cast<int>(number) + method.added);
            for (std::size_t i = 0; i < btnIDs.size(); ++i) {
                const DWORD worth = worths[i];
                const bool tests[] = {worth == number, worth != number, worth > number,
                                      worth >= number, worth < number,  worth <= number};
                if (tests[sign])
                    made.picked.insert(btnIDs[i]);
            }
        }
        return isNegated ? SMade{made.text, Complement(made.picked)} : made;
    }

    BtnIDs Complement(const BtnIDs& picked) const
    {
        BtnIDs others(btnIDs.begin(), btnIDs.end());
        for (const DWORD btnID : picked)
            others.erase(btnID);
        return others;
    }

    CRandom& random;
    std::vector<DWORD> btnIDs;
    std::vector<DWORD> worths;
    Test::CTestSumMngr sums;
};

BtnIDs Pick(const NSKZCore::CBasicBtnCnd& cnd, const CCndMaker& maker)
{
    std::vector<DWORD> picked;
    EXPECT_TRUE(cnd.GetBtnIDListThatAppliesToTheCnd(1, maker.GetBtnIDs(), maker.GetSums(), picked));
    return {picked.begin(), picked.end()};
}

} // namespace

TEST(CndRandom, ConditionsPickWhatTheirWordsSayAndAreWrittenAsTheyAreRead)
{
    CRandom random;
    for (int i = 0; i < 3000; ++i) {
        CCndMaker maker(random);
        const CCndMaker::SMade made = maker.MakeOr(4);
        const NSKZCore::CBasicBtnCnd cnd = CCndParser::Parse(made.text, FindField);
        ASSERT_EQ(Pick(cnd, maker), made.picked) << made.text;
        const std::string written = SCCndText::Write(cnd, NameField).value_or("no words");
        const NSKZCore::CBasicBtnCnd again = CCndParser::Parse(written, FindField);
        ASSERT_EQ(SCCndText::Write(again, NameField), written);
        ASSERT_EQ(Pick(again, maker), made.picked) << written;
    }
}

TEST(CndRandom, EveryTextIsTakenOrRefusedAtAPlaceWithinIt)
{
    static constexpr const char* PIECES[] = {
        "a",   "'b c'",  "sum", "average", "max", "top", "bottom", "3",           "-1.5", "0",
        "and", "or",     "not", "(",       ")",   "<",   ">=",     "=",           "!",    "'",
        "\"",  "except", "金",  "",        "\t",  "1e9", "\x01",   "a sum top 3", "b"};
    CRandom random;
    int takenCount = 0;
    for (int i = 0; i < 20000; ++i) {
        std::string text;
        for (DWORD pieces = 1 + random.GetBelow(8); pieces > 0; --pieces) {
            text += PIECES[random.GetBelow(static_cast<DWORD>(std::size(PIECES)))];
            text += random.IsOneOf(5) ? "" : " ";
        }
        try {
            CCndParser::Parse(text, FindField);
            ++takenCount;
        } catch (const ECCndError& error) {
            ASSERT_LE(error.GetOffset(), text.size()) << text;
            ASSERT_LE(error.GetPosition(), error.GetOffset()) << text;
            ASSERT_STRNE(error.what(), "") << text;
        }
    }
    EXPECT_GT(takenCount, 0);
    EXPECT_LT(takenCount, 20000);
}

} // namespace NSKZ::Host
