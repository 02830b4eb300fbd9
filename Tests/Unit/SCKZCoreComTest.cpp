#include "SCKZCoreCom.h"

#include "Support/CAllocFault.h"
#include "Support/TestText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <iterator>
#include <limits>
#include <random>
#include <string>

using namespace NSKZ::NSKZCore;
using NSKZ::Test::FailEveryAllocation;
using Recs = std::vector<DWORD>;

namespace {

constexpr DWORD UNTOUCHED = 987654;

Recs And(Recs list, const Recs& other)
{
    DWORD count = static_cast<DWORD>(list.size());
    const DWORD returned =
        SCKZCoreCom::MergeRecListByANDCnd(list.data(), count, other.data(), static_cast<DWORD>(other.size()));
    EXPECT_EQ(returned, count);
    list.resize(count);
    return list;
}

Recs Or(const Recs& a, const Recs& b)
{
    Recs out(a.size() + b.size());
    const DWORD count = SCKZCoreCom::MergeRecListByORCnd(a.data(), static_cast<DWORD>(a.size()), b.data(),
                                                         static_cast<DWORD>(b.size()), out.data());
    out.resize(count);
    return out;
}

Recs MakeRandomRecs(std::mt19937& random, std::size_t count, DWORD range)
{
    Recs recs(count);
    for (DWORD& rec : recs)
        rec = static_cast<DWORD>(random() % range);
    std::sort(recs.begin(), recs.end());
    recs.erase(std::unique(recs.begin(), recs.end()), recs.end());
    return recs;
}

std::queue<DWORD> MakeQueue(const Recs& numbers)
{
    return std::queue<DWORD>(std::deque<DWORD>(numbers.begin(), numbers.end()));
}

Recs GetAll(std::queue<DWORD> numbers)
{
    Recs all;
    for (; !numbers.empty(); numbers.pop())
        all.push_back(numbers.front());
    return all;
}

// The text, or "(refused)" with a look that nothing was written.
template <typename TNumber>
std::string Write(TNumber value, DWORD size = 64)
{
    std::string buffer(size + 1, '#');
    DWORD length = UNTOUCHED;
    if (!SCKZCoreCom::ConvertNumericValueIntoString(value, buffer.data(), size, length)) {
        EXPECT_EQ(length, UNTOUCHED);
        EXPECT_EQ(buffer, std::string(size + 1, '#'));
        return "(refused)";
    }
    EXPECT_EQ(buffer[length], '\0');
    EXPECT_EQ(buffer.back(), '#');
    return buffer.substr(0, length);
}

template <typename TNumber>
bool Reads(const std::string& text, TNumber& value)
{
    return SCKZCoreCom::ConvertStringIntoNumericValue(text.data(), static_cast<DWORD>(text.size()), value);
}

std::string WriteList(const Recs& numbers, DWORD size = 64)
{
    std::string buffer(size + 1, '#');
    DWORD length = UNTOUCHED;
    if (!SCKZCoreCom::ConvertNumericValueListIntoString(numbers, ',', buffer.data(), size, length)) {
        EXPECT_EQ(length, UNTOUCHED);
        EXPECT_EQ(buffer.back(), '#');
        return "(refused)";
    }
    EXPECT_EQ(buffer[length], '\0');
    return buffer.substr(0, length);
}

bool ReadsList(const std::string& text, Recs& numbers)
{
    return SCKZCoreCom::ConvertStringIntoNumericValueList(text.data(), static_cast<DWORD>(text.size()), ',',
                                                          numbers);
}

} // namespace

TEST(SCKZCoreCom, MergesOfEmptyListsTakeNullPointers)
{
    DWORD count = 0;
    EXPECT_EQ(SCKZCoreCom::MergeRecListByANDCnd(nullptr, count, nullptr, 0), 0u);
    EXPECT_EQ(SCKZCoreCom::MergeRecListByORCnd(nullptr, 0, nullptr, 0, nullptr), 0u);
    EXPECT_EQ(And({1, 2}, {}), Recs());
    EXPECT_EQ(And({}, {1, 2}), Recs());
    EXPECT_EQ(Or({1, 2}, {}), (Recs{1, 2}));
    EXPECT_EQ(Or({}, {1, 2}), (Recs{1, 2}));
}

TEST(SCKZCoreCom, AndKeepsWhatStandsInBothAndOrTakesEachOnce)
{
    EXPECT_EQ(And({0, 2, 4, 4294967295}, {1, 2, 3, 4294967295}), (Recs{2, 4294967295}));
    EXPECT_EQ(Or({0, 2, 4, 4294967295}, {1, 2, 3, 4294967295}), (Recs{0, 1, 2, 3, 4, 4294967295}));
}

TEST(SCKZCoreCom, MergesAgreeWithTheStandardLibraryForListsOfAllLengths)
{
    std::mt19937 random(1);
    for (int round = 0; round < 400; ++round) {
        const Recs a = MakeRandomRecs(random, random() % 2000 >> random() % 11, 3000);
        const Recs b = MakeRandomRecs(random, random() % 2000 >> random() % 11, 3000);
        Recs both;
        std::set_intersection(a.begin(), a.end(), b.begin(), b.end(), std::back_inserter(both));
        Recs any;
        std::set_union(a.begin(), a.end(), b.begin(), b.end(), std::back_inserter(any));
        EXPECT_EQ(And(a, b), both);
        EXPECT_EQ(Or(a, b), any);
    }
}

TEST(SCKZCoreCom, OrWritesNothingBehindTheUnion)
{
    const Recs a = {1, 2, 3};
    Recs out(4, 77);
    EXPECT_EQ(SCKZCoreCom::MergeRecListByORCnd(a.data(), 3, a.data(), 3, out.data()), 3u);
    EXPECT_EQ(out, (Recs{1, 2, 3, 77}));
}

TEST(SCKZCoreCom, AQueueIsEmptied)
{
    std::queue<DWORD> numbers = MakeQueue({3, 1});
    SCKZCoreCom::ClearQueueContainer(numbers);
    EXPECT_TRUE(numbers.empty());
    SCKZCoreCom::ClearQueueContainer(numbers);
    EXPECT_TRUE(numbers.empty());
}

TEST(SCKZCoreCom, AQueueIsSortedAscendingWithItsEquals)
{
    std::queue<DWORD> numbers = MakeQueue({3, 4294967295, 1, 3, 0});
    SCKZCoreCom::SortQueueContainer(numbers);
    EXPECT_EQ(GetAll(numbers), (Recs{0, 1, 3, 3, 4294967295}));
    std::queue<DWORD> none;
    SCKZCoreCom::SortQueueContainer(none);
    EXPECT_TRUE(none.empty());
}

TEST(SCKZCoreCom, AQueueThatCannotBeSortedForLackOfMemoryStaysAsItWas)
{
    const int failures = FailEveryAllocation(
        [] {
            return MakeQueue({3, 1, 2});
        },
        [](std::queue<DWORD>& numbers) { SCKZCoreCom::SortQueueContainer(numbers); },
        [](const std::queue<DWORD>& numbers) {
            EXPECT_EQ(GetAll(numbers), (Recs{3, 1, 2}));
        });
    EXPECT_GE(failures, 2);
}

TEST(SCKZCoreCom, IntegersAreWrittenInDecimal)
{
    EXPECT_EQ(Write(0), "0");
    EXPECT_EQ(Write(std::numeric_limits<int>::min()), "-2147483648");
    EXPECT_EQ(Write(4294967295u), "4294967295");
    EXPECT_EQ(Write(DWORD{1000000000}), "1000000000");
    EXPECT_EQ(Write(7ul), "7");
}

TEST(SCKZCoreCom, ANumberThatDoesNotFitWithItsNulIsRefused)
{
    EXPECT_EQ(Write(123, 4), "123");
    EXPECT_EQ(Write(123, 3), "(refused)");
    EXPECT_EQ(Write(123, 0), "(refused)");
    EXPECT_EQ(Write(0.25, 5), "0.25");
    EXPECT_EQ(Write(0.25, 4), "(refused)");
}

TEST(SCKZCoreCom, ADoubleIsWrittenSoThatTheSameOneIsRead)
{
    EXPECT_EQ(Write(0.1), "0.1");
    EXPECT_EQ(Write(-1.5), "-1.5");
    for (const double value : {0.0, 1e300, -1e-300, 1.0 / 3, std::numeric_limits<double>::max(),
                               std::numeric_limits<double>::denorm_min(), 12345678901234567890.0}) {
        double read = -1;
        ASSERT_TRUE(Reads(Write(value), read)) << Write(value);
        EXPECT_EQ(read, value);
    }
}

TEST(SCKZCoreCom, InfinitiesAndNanHaveWordsThatAreReadBack)
{
    constexpr double INFINITE = std::numeric_limits<double>::infinity();
    constexpr double NAN_VALUE = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(Write(INFINITE), "inf");
    EXPECT_EQ(Write(-INFINITE), "-inf");
    EXPECT_EQ(Write(NAN_VALUE), "nan");
    EXPECT_EQ(Write(std::copysign(NAN_VALUE, -1.0)), "nan");
    EXPECT_EQ(Write(INFINITE, 3), "(refused)");
    double value = 0;
    EXPECT_TRUE(Reads("inf", value));
    EXPECT_EQ(value, INFINITE);
    EXPECT_TRUE(Reads("-inf", value));
    EXPECT_EQ(value, -INFINITE);
    EXPECT_TRUE(Reads("nan", value));
    EXPECT_TRUE(std::isnan(value));
}

TEST(SCKZCoreCom, TheSignOfAZeroIsKept)
{
    double value = 1;
    EXPECT_TRUE(Reads(Write(-0.0), value));
    EXPECT_EQ(value, 0.0);
    EXPECT_TRUE(std::signbit(value));
}

TEST(SCKZCoreCom, DigitsAloneAreReadAsAnUnsignedNumber)
{
    DWORD value = 0;
    EXPECT_TRUE(Reads("0", value));
    EXPECT_EQ(value, 0u);
    EXPECT_TRUE(Reads("4294967295", value));
    EXPECT_EQ(value, 4294967295u);
    EXPECT_TRUE(Reads("007", value));
    EXPECT_EQ(value, 7u);
    unsigned long wide = 0;
    EXPECT_TRUE(Reads("12", wide));
    EXPECT_EQ(wide, 12ul);
    value = UNTOUCHED;
    for (const char* const text :
         {"", " 1", "1 ", "+1", "-1", "1.0", "1e2", "0x1", "abc", "4294967296", "1,2"}) {
        EXPECT_FALSE(Reads(text, value)) << text;
        EXPECT_EQ(value, UNTOUCHED);
    }
}

TEST(SCKZCoreCom, ADoubleIsReadFromABareNumberAlone)
{
    double value = -1;
    EXPECT_TRUE(Reads("-12.5e1", value));
    EXPECT_EQ(value, -125.0);
    value = -1;
    for (const char* const text :
         {"", " 1", "1 ", "+1", "1,000", "INF", "Nan", "-nan", "+inf", "infinity", "inf ", "1e309", "x"}) {
        EXPECT_FALSE(Reads(text, value)) << text;
        EXPECT_EQ(value, -1.0);
    }
}

TEST(SCKZCoreCom, AListIsWrittenWithItsSeparator)
{
    EXPECT_EQ(WriteList({}), "");
    EXPECT_EQ(WriteList({7}), "7");
    EXPECT_EQ(WriteList({3, 0, 4294967295, 3}), "3,0,4294967295,3");
    char buffer[16];
    DWORD length = 0;
    ASSERT_TRUE(
        SCKZCoreCom::ConvertNumericValueListIntoString(MakeQueue({3, 0, 12}), ';', buffer, 16, length));
    EXPECT_STREQ(buffer, "3;0;12");
    EXPECT_EQ(length, 6u);
}

TEST(SCKZCoreCom, AListThatDoesNotFitWithItsNulIsRefused)
{
    const std::string whole = "10,20,30";
    for (DWORD size = 0; size <= whole.size(); ++size)
        EXPECT_EQ(WriteList({10, 20, 30}, size), "(refused)") << size;
    EXPECT_EQ(WriteList({10, 20, 30}, static_cast<DWORD>(whole.size()) + 1), whole);
    EXPECT_EQ(WriteList({}, 0), "(refused)");
    EXPECT_EQ(WriteList({}, 1), "");
    EXPECT_EQ(WriteList(Recs(3, 4294967295), 3 * 11 + 1), "4294967295,4294967295,4294967295");
}

TEST(SCKZCoreCom, AListIsReadInPlaceOfWhatStoodThere)
{
    Recs numbers = {9, 9};
    EXPECT_TRUE(ReadsList("3,0,4294967295", numbers));
    EXPECT_EQ(numbers, (Recs{3, 0, 4294967295}));
    EXPECT_TRUE(ReadsList("5", numbers));
    EXPECT_EQ(numbers, (Recs{5}));
    EXPECT_TRUE(ReadsList("", numbers));
    EXPECT_EQ(numbers, Recs());
    std::queue<DWORD> queued = MakeQueue({9});
    ASSERT_TRUE(SCKZCoreCom::ConvertStringIntoNumericValueList("3 1", 3, ' ', queued));
    EXPECT_EQ(GetAll(queued), (Recs{3, 1}));
}

TEST(SCKZCoreCom, AListWithAnythingElseInItIsRefusedAndTheFormerStays)
{
    Recs numbers = {9};
    std::queue<DWORD> queued = MakeQueue({9});
    for (const std::string text : {",", "1,", ",1", "1,,2", "1, 2", "1;2", "a", "1,4294967296", "-1"}) {
        EXPECT_FALSE(ReadsList(text, numbers)) << text;
        EXPECT_EQ(numbers, (Recs{9}));
        EXPECT_FALSE(SCKZCoreCom::ConvertStringIntoNumericValueList(
            text.data(), static_cast<DWORD>(text.size()), ',', queued));
        EXPECT_EQ(GetAll(queued), (Recs{9}));
    }
}

TEST(SCKZCoreCom, AListThatCannotBeReadForLackOfMemoryLeavesTheFormer)
{
    const int ofVector = FailEveryAllocation(
        [] { return Recs{9}; }, [](Recs& numbers) { EXPECT_TRUE(ReadsList("1,2,3,4,5,6,7,8,9", numbers)); },
        [](const Recs& numbers) { EXPECT_EQ(numbers, (Recs{9})); });
    EXPECT_GE(ofVector, 2);
    const int ofQueue =
        FailEveryAllocation([] { return MakeQueue({9}); },
                            [](std::queue<DWORD>& numbers) {
                                SCKZCoreCom::ConvertStringIntoNumericValueList("1,2,3", 5, ',', numbers);
                            },
                            [](const std::queue<DWORD>& numbers) { EXPECT_EQ(GetAll(numbers), (Recs{9})); });
    EXPECT_GE(ofQueue, 2);
}

TEST(SCKZCoreCom, ABooleanOperatorHasItsAttributeAndAnyOtherThanAndIsOr)
{
    const auto getAttribute = [](DWORD value) {
        IXMLIO::SAttribute attribute;
        SCKZCoreCom::GetBoolOperatorAttribute(static_cast<SCKZCoreCom::EBoolOperator>(value), attribute);
        return std::string(attribute.name, attribute.nameLen) + "=" +
               std::string(attribute.value, attribute.valueLen);
    };
    EXPECT_EQ(getAttribute(SCKZCoreCom::BOOLOPERATOR_AND), "boolOperator=And");
    EXPECT_EQ(getAttribute(SCKZCoreCom::BOOLOPERATOR_OR), "boolOperator=Or");
    EXPECT_EQ(getAttribute(0), "boolOperator=Or");
    EXPECT_EQ(getAttribute(4294967295), "boolOperator=Or");
}

TEST(SCKZCoreCom, CompareStringRearComparesTheEndByteByByte)
{
    const auto endsIn = [](const std::string& text, const std::string& rear) {
        return SCKZCoreCom::CompareStringRear(text.data(), static_cast<DWORD>(text.size()), rear.data(),
                                              static_cast<DWORD>(rear.size()));
    };
    EXPECT_TRUE(endsIn("abc", "bc"));
    EXPECT_TRUE(endsIn("abc", "abc"));
    EXPECT_TRUE(endsIn("abc", ""));
    EXPECT_TRUE(endsIn("", ""));
    EXPECT_FALSE(endsIn("abc", "ab"));
    EXPECT_FALSE(endsIn("bc", "abc"));
    EXPECT_TRUE(endsIn("\x83\x5C", "\x5C")); // whatever the characters are
    EXPECT_TRUE(SCKZCoreCom::CompareStringRear(nullptr, 0, nullptr, 0));
}

TEST(SCKZCoreCom, MinusAndMacronAreTheCharactersOfTheirWidth)
{
    EXPECT_EQ(NSKZ::Test::FromSJIS(SCKZCoreCom::STR_EM_MINUS), NSKZ::Test::UTF8(u8"－"));
    EXPECT_EQ(NSKZ::Test::FromSJIS(SCKZCoreCom::STR_EM_MACRON), NSKZ::Test::UTF8(u8"ー"));
    EXPECT_EQ(NSKZ::Test::FromSJIS(SCKZCoreCom::STR_EN_MINUS), "-");
    EXPECT_EQ(NSKZ::Test::FromSJIS(SCKZCoreCom::STR_EN_MACRON), NSKZ::Test::UTF8(u8"ｰ"));
    EXPECT_EQ(SCKZCoreCom::STRLEN_EM_MACRON, 2u);
    EXPECT_EQ(SCKZCoreCom::STRLEN_EN_MACRON, 1u);
}

TEST(SCKZCoreCom, ADirectoryPathEndsInASeparatorThatIsACharacter)
{
    const auto isDirectoryPath = [](const std::string& path) {
        return SCKZCoreCom::IsDirectoryPath(path.data(), static_cast<DWORD>(path.size()));
    };
    EXPECT_TRUE(isDirectoryPath("C:\\BUI\\"));
    EXPECT_TRUE(isDirectoryPath("/BUI/"));
    EXPECT_TRUE(isDirectoryPath("\\"));
    EXPECT_TRUE(isDirectoryPath(NSKZ::Test::SJIS(u8"\\表\\"))); // behind a character that ends in its byte
    EXPECT_FALSE(isDirectoryPath(""));
    EXPECT_FALSE(isDirectoryPath("C:\\BUI"));
    EXPECT_FALSE(isDirectoryPath("C:"));
    EXPECT_FALSE(isDirectoryPath(NSKZ::Test::SJIS(u8"\\表"))); // a character that ends in the byte of one
    EXPECT_FALSE(SCKZCoreCom::IsDirectoryPath(nullptr, 0));
    const char* const longer = "ab\\cd";
    EXPECT_TRUE(SCKZCoreCom::IsDirectoryPath(longer, 3));
    EXPECT_FALSE(SCKZCoreCom::IsDirectoryPath(longer, 4));

    const NSKZ::Test::CCodePageScope utf8(CP_UTF8);
    EXPECT_TRUE(isDirectoryPath(NSKZ::Test::UTF8(u8"\\表\\")));
    EXPECT_TRUE(isDirectoryPath("\x95\\")); // no lead byte here
    EXPECT_FALSE(isDirectoryPath(NSKZ::Test::UTF8(u8"\\表")));
}

TEST(SCKZCoreCom, ByteOrdersAndDataModelsHaveWordsThatReadBack)
{
    const char* text = "untouched";
    DWORD len = 77;
    for (const auto& [value, word] : {std::pair(SCKZCoreCom::ENDIANNESS_LITTLE, "LittleEndian"),
                                      {SCKZCoreCom::ENDIANNESS_BIG, "BigEndian"}}) {
        ASSERT_TRUE(SCKZCoreCom::GetEndiannessStr(value, text, len));
        EXPECT_EQ(std::string(text, len), word);
        auto read = static_cast<SCKZCoreCom::EEndianness>(0);
        EXPECT_TRUE(SCKZCoreCom::GetEndianness(text, len, read));
        EXPECT_EQ(read, value);
    }
    for (const auto& [value, word] : {std::pair(SCKZCoreCom::DATAMODEL_ILP32, "ILP32"),
                                      {SCKZCoreCom::DATAMODEL_LLP64, "LLP64"},
                                      {SCKZCoreCom::DATAMODEL_LP64, "LP64"}}) {
        ASSERT_TRUE(SCKZCoreCom::GetDataModelStr(value, text, len));
        EXPECT_EQ(std::string(text, len), word);
        auto read = static_cast<SCKZCoreCom::EDataModel>(0);
        EXPECT_TRUE(SCKZCoreCom::GetDataModel(text, len, read));
        EXPECT_EQ(read, value);
    }
}

TEST(SCKZCoreCom, WhatIsNoByteOrderAndNoDataModelIsRefusedAndLeavesTheOutput)
{
    const char* text = "untouched";
    DWORD len = 77;
    for (const DWORD value : {0u, 3u, 4294967295u})
        EXPECT_FALSE(SCKZCoreCom::GetEndiannessStr(static_cast<SCKZCoreCom::EEndianness>(value), text, len));
    for (const DWORD value : {0u, 4u, 4294967295u})
        EXPECT_FALSE(SCKZCoreCom::GetDataModelStr(static_cast<SCKZCoreCom::EDataModel>(value), text, len));
    EXPECT_STREQ(text, "untouched");
    EXPECT_EQ(len, 77u);

    auto endianness = SCKZCoreCom::ENDIANNESS_BIG;
    auto dataModel = SCKZCoreCom::DATAMODEL_LLP64;
    for (const std::string& word : {std::string(), std::string("littleEndian"), std::string("LittleEndian "),
                                    std::string("LittleEndia"), std::string("lp64"), std::string("LP6"),
                                    std::string("LP64\0", 5), std::string("64")}) {
        EXPECT_FALSE(SCKZCoreCom::GetEndianness(word.data(), static_cast<DWORD>(word.size()), endianness));
        EXPECT_FALSE(SCKZCoreCom::GetDataModel(word.data(), static_cast<DWORD>(word.size()), dataModel));
    }
    EXPECT_FALSE(SCKZCoreCom::GetEndianness("LP64", 4, endianness));
    EXPECT_FALSE(SCKZCoreCom::GetDataModel("BigEndian", 9, dataModel));
    EXPECT_EQ(endianness, SCKZCoreCom::ENDIANNESS_BIG);
    EXPECT_EQ(dataModel, SCKZCoreCom::DATAMODEL_LLP64);
}

TEST(SCKZCoreCom, ThePresentEnvironmentIsWhatTheProgramRunsOn)
{
    const DWORD one = 1;
    unsigned char firstByte = 0;
    std::memcpy(&firstByte, &one, 1);
    EXPECT_EQ(SCKZCoreCom::GetEndiannessOfPresentEnvironment(),
              firstByte == 1 ? SCKZCoreCom::ENDIANNESS_LITTLE : SCKZCoreCom::ENDIANNESS_BIG);
    const auto dataModel = SCKZCoreCom::GetDataModelOfPresentEnvironment();
    EXPECT_EQ(dataModel == SCKZCoreCom::DATAMODEL_ILP32, sizeof(void*) == 4);
    EXPECT_EQ(dataModel == SCKZCoreCom::DATAMODEL_LP64, sizeof(long) == 8);
}

TEST(SCKZCoreCom, TheConstantsOfFilesHaveTheirLengths)
{
    const auto expectText = [](const char* text, DWORD len, const char* expected) {
        EXPECT_EQ(std::string(text, len), expected);
    };
    expectText(SCKZCoreCom::STR_EXTENSION_DAT, SCKZCoreCom::STRLEN_EXTENSION_DAT, ".dat");
    expectText(SCKZCoreCom::STR_ATTRNAME_ENDIANNESS, SCKZCoreCom::STRLEN_ATTRNAME_ENDIANNESS, "endianness");
    expectText(SCKZCoreCom::STR_ATTRNAME_DATAMODEL, SCKZCoreCom::STRLEN_ATTRNAME_DATAMODEL, "dataModel");
    expectText(SCKZCoreCom::STR_ATTRNAME_XLINK_TYPE, SCKZCoreCom::STRLEN_ATTRNAME_XLINK_TYPE, "xlink:type");
    expectText(SCKZCoreCom::STR_ATTRVALUE_XLINK_TYPE_SIMPLE, SCKZCoreCom::STRLEN_ATTRVALUE_XLINK_TYPE_SIMPLE,
               "simple");
    expectText(SCKZCoreCom::STR_ATTRNAME_XLINK_HREF, SCKZCoreCom::STRLEN_ATTRNAME_XLINK_HREF, "xlink:href");
    EXPECT_EQ(SCKZCoreCom::CHAR_YEN, '\x5C');
}
