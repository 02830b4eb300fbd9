#include "SCSessionFile.h"

#include "ECCommandError.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace NSKZ::Test {

using Host::SCSessionFile;
using Host::SSavedSession;
using Json = nlohmann::ordered_json;

namespace {

SSavedSession MakeSession()
{
    SSavedSession session;
    session.codePage = 932;
    session.recCount = 7;
    session.fields = {{"地域", "text", "0123456789abcdef", 7},
                      {"day", "date:ymd-hyphen", "ffffffffffffffff", 2}};
    session.calendar = {10, 20, NSKZCore::VCDate::DAYSOFWEEK_MONDAY};
    session.limitation = {{0, 3}, {6, 6}};
    session.cnds = {{1, 2000000000, "金額 sum top 3 and \"it's\" count > 1"}};
    session.selection = {{1, {{5, 7}, {2, 2}}, 4}, {2, {}, std::nullopt}};
    session.itemsWithNewBtns = {2};
    session.selectedItems = {2, 1};
    session.digestOfState = "00000000000000aa";
    session.files = {{"BUI/ID_1/BnLink/0.dat", 1234567890123, "0000000000000001"}};
    return session;
}

std::string Refusal(const std::string& text)
{
    try {
        SCSessionFile::Read(text);
    } catch (const Host::ECCommandError& error) {
        return error.what();
    }
    return "";
}

} // namespace

TEST(SCSessionFile, WhatIsWrittenIsReadBack)
{
    const SSavedSession session = MakeSession();
    EXPECT_EQ(SCSessionFile::Read(SCSessionFile::Write(session)), session);
    SSavedSession empty;
    empty.codePage = 65001;
    empty.calendar = {1, 31, NSKZCore::VCDate::DAYSOFWEEK_SUNDAY};
    empty.digestOfState = "0000000000000000";
    EXPECT_EQ(SCSessionFile::Read(SCSessionFile::Write(empty)), empty);
}

TEST(SCSessionFile, TheFileIsOneLineThatStaysTheSame)
{
    EXPECT_EQ(
        SCSessionFile::Write(MakeSession()),
        R"({"format":2,"table":{"codePage":932,"records":7,"fields":[{"id":7,"name":"地域","type":"text",)"
        R"("digest":"0123456789abcdef"},)"
        R"({"id":2,"name":"day","type":"date:ymd-hyphen","digest":"ffffffffffffffff"}]},)"
        R"("calendar":{"startMonth":10,"cutOffDay":20,"weekBegins":1},"limitation":[[0,3],[6,6]],)"
        R"("conditions":[{"item":1,"button":2000000000,"text":"金額 sum top 3 and \"it's\" count > 1"}],)"
        R"("selection":[{"item":1,"buttons":[[5,7],[2,2]],"records":4},)"
        R"({"item":2,"buttons":[],"records":null}],"newButtons":[2],"selectedItems":[2,1],)"
        R"("state":"00000000000000aa","files":[{"name":"BUI/ID_1/BnLink/0.dat","size":1234567890123,)"
        R"("digest":"0000000000000001"}]})"
        "\n");
}

TEST(SCSessionFile, WhatIsNoObjectOfThisFormatIsRefused)
{
    EXPECT_EQ(Refusal(""), "It is no JSON.");
    EXPECT_EQ(Refusal("{\"format\":1"), "It is no JSON.");
    EXPECT_EQ(Refusal("[]"), "\"format\" is missing.");
    EXPECT_EQ(Refusal("null"), "\"format\" is missing.");
    EXPECT_EQ(Refusal("{\"format\":3}"), "It is of format 3; this program knows those up to 2.");
    EXPECT_EQ(Refusal("{\"format\":1}"), "\"table\" is missing.");
    EXPECT_EQ(Refusal(std::string(1000000, '[')), "It is no JSON.");
    EXPECT_EQ(Refusal(std::string(1000000, '[') + std::string(1000000, ']')), "\"format\" is missing.");
}

TEST(SCSessionFile, FieldsOfTheFirstFormatAreNumbered)
{
    Json whole = Json::parse(SCSessionFile::Write(MakeSession()));
    whole["format"] = 1;
    for (Json& field : whole["table"]["fields"])
        field.erase("id");
    SSavedSession expected = MakeSession();
    expected.fields[0].fldID = 1;
    expected.fields[1].fldID = 2;
    EXPECT_EQ(SCSessionFile::Read(whole.dump()), expected);
}

TEST(SCSessionFile, EveryKeyIsNeeded)
{
    const Json whole = Json::parse(SCSessionFile::Write(MakeSession()));
    const Json places = whole.flatten();
    std::size_t refused = 0;
    for (const auto& [pointer, value] : places.items()) {
        Json changed = whole;
        const Json::json_pointer place(pointer);
        Json& parent = changed.at(place.parent_pointer());
        if (!parent.is_object())
            continue;
        parent.erase(place.back());
        EXPECT_NE(Refusal(changed.dump()).find(place.back() + "\" is missing."), std::string::npos)
            << pointer;
        ++refused;
    }
    EXPECT_GT(refused, 15u);
}

TEST(SCSessionFile, ValuesThatCannotBeAreRefusedWithTheirPlace)
{
    struct SCase
    {
        const char* pointer;
        const char* value;
        const char* refusal;
    };
    const SCase cases[] = {
        {"/table/codePage", "0", "A number from 1 to 65535 is expected at table.codePage."},
        {"/table/codePage", "\"932\"", "A number from 1 to 65535 is expected at table.codePage."},
        {"/table/records", "-1", "A number from 0 to 4294967295 is expected at table.records."},
        {"/table/records", "4294967296", "A number from 0 to 4294967295 is expected at table.records."},
        {"/table/records", "1.5", "A number from 0 to 4294967295 is expected at table.records."},
        {"/table/fields", "{}", "A list is expected at table.fields."},
        {"/table/fields/0", "7", "\"table.fields[0].name\" is missing."},
        {"/table/fields/0/id", "0", "A number from 1 to 4294967295 is expected at table.fields[0].id."},
        {"/table/fields/1/name", "7", "A text is expected at table.fields[1].name."},
        {"/table/fields/1/name", "\"a\\u0000b\"", "A text is expected at table.fields[1].name."},
        {"/table/fields/1/digest", "\"ff\"",
         "A text of 16 hexadecimal digits is expected at table.fields[1].digest."},
        {"/calendar/startMonth", "13", "A number from 1 to 12 is expected at calendar.startMonth."},
        {"/calendar/cutOffDay", "0", "A number from 1 to 31 is expected at calendar.cutOffDay."},
        {"/calendar/weekBegins", "7", "A number from 0 to 6 is expected at calendar.weekBegins."},
        {"/limitation", "[]", "A list that is not empty is expected at limitation."},
        {"/limitation", "7", "A list is expected at limitation."},
        {"/limitation/0", "[0]",
         "A list of two numbers of which the first is not greater is expected at limitation[0]."},
        {"/limitation/0", "[4,3]",
         "A list of two numbers of which the first is not greater is expected at limitation[0]."},
        {"/limitation/0", "[0,6]", "A list whose numbers ascend is expected at limitation."},
        {"/conditions/0/button", "0", "A number from 1 to 4294967295 is expected at conditions[0].button."},
        {"/selection/0/buttons", "[5]", "A list is expected at selection[0].buttons[0]."},
        {"/selection/0/buttons/1", "[0,2]",
         "A number from 1 to 4294967295 is expected at selection[0].buttons[1][0]."},
        {"/selection/0/records", "\"4\"",
         "A number from 0 to 4294967295 is expected at selection[0].records."},
        {"/newButtons", "null", "A list is expected at newButtons."},
        {"/selectedItems/1", "[1]", "A number from 1 to 4294967295 is expected at selectedItems[1]."},
        {"/state", "\"00000000000000AA\"", "A text of 16 hexadecimal digits is expected at state."},
        {"/files/0/size", "-5", "A number from 0 to 18446744073709551615 is expected at files[0].size."},
    };
    for (const SCase& each : cases) {
        Json changed = Json::parse(SCSessionFile::Write(MakeSession()));
        changed.at(Json::json_pointer(each.pointer)) = Json::parse(each.value);
        EXPECT_EQ(Refusal(changed.dump()), each.refusal) << each.pointer;
    }
}

TEST(SCSessionFile, ATornFileIsRefusedAtEveryByte)
{
    const std::string text = SCSessionFile::Write(MakeSession());
    for (std::size_t size = 0; size + 2 < text.size(); ++size)
        EXPECT_NE(Refusal(text.substr(0, size)), "") << size;
}

TEST(SCSessionFile, AnyChangedByteIsReadOrRefused)
{
    const std::string text = SCSessionFile::Write(MakeSession());
    for (std::size_t i = 0; i < text.size(); ++i) {
        for (const char other : {'\0', '"', '9', '[', '}', '\xFF'}) {
            std::string changed = text;
            changed[i] = other;
            Refusal(changed); // throws nothing but what is told
        }
    }
}

} // namespace NSKZ::Test
