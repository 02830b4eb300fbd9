#include "SCNumeric.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <optional>
#include <random>
#include <string>
#include <vector>

using namespace NSKZ::NSKZCore;

namespace {

constexpr double UNTOUCHED = -987.5;

std::optional<double> Read(const std::string& text)
{
    double value = UNTOUCHED;
    if (SCNumeric::AtoF(text.c_str(), value))
        return value;
    EXPECT_EQ(value, UNTOUCHED) << text;
    return std::nullopt;
}

std::optional<double> ReadBare(const std::string& text)
{
    double value = UNTOUCHED;
    if (SCNumeric::ReadDecimal(text.data(), text.size(), value))
        return value;
    EXPECT_EQ(value, UNTOUCHED) << text;
    return std::nullopt;
}

} // namespace

TEST(SCNumeric, AtoFReadsSignsPointsAndExponents)
{
    EXPECT_EQ(Read("0"), 0.0);
    EXPECT_EQ(Read("42"), 42.0);
    EXPECT_EQ(Read("-1.5"), -1.5);
    EXPECT_EQ(Read("+.5"), 0.5);
    EXPECT_EQ(Read("-.5"), -0.5);
    EXPECT_EQ(Read("5."), 5.0);
    EXPECT_EQ(Read("1e2"), 100.0);
    EXPECT_EQ(Read("1E+2"), 100.0);
    EXPECT_EQ(Read("1.25e-2"), 0.0125);
    EXPECT_EQ(Read("007"), 7.0);
    EXPECT_EQ(Read("18446744073709551616"), 18446744073709551616.0);
}

TEST(SCNumeric, AtoFPassesOverBlanksAroundTheNumberAlone)
{
    EXPECT_EQ(Read("  42\t "), 42.0);
    EXPECT_EQ(Read("\t-1,000 "), -1000.0);
    EXPECT_EQ(Read("- 1"), std::nullopt);
    EXPECT_EQ(Read("1 000"), std::nullopt);
    EXPECT_EQ(Read("1\n"), std::nullopt);
    EXPECT_EQ(Read(" "), std::nullopt);
}

TEST(SCNumeric, AtoFReadsGroupsOfThreeDigits)
{
    EXPECT_EQ(Read("1,234,567.8"), 1234567.8);
    EXPECT_EQ(Read("-12,345"), -12345.0);
    EXPECT_EQ(Read("123,456e2"), 12345600.0);
    EXPECT_EQ(Read("1,000."), 1000.0);
}

TEST(SCNumeric, AtoFRefusesCommasThatSetNoGroupsApart)
{
    for (const char* const text : {"1,23", "1,2345", "1234,567", ",123", "1,,234", "1,234,", "1.5,000",
                                   "1,23.4", "1e1,000", "1,234-", ","})
        EXPECT_EQ(Read(text), std::nullopt) << text;
}

TEST(SCNumeric, AtoFReadsGroupsUpToTheirGreatestLength)
{
    std::string text = "1";
    for (int i = 0; i < 100; ++i)
        text += ",000";
    EXPECT_EQ(Read(text), 1e300);
    std::string zeros = "0";
    while (zeros.size() + 4 <= 1000)
        zeros += ",000";
    EXPECT_EQ(Read(zeros), 0.0);
    EXPECT_EQ(Read(zeros + ",000"), std::nullopt);
}

TEST(SCNumeric, AtoFRefusesWhatIsNoNumber)
{
    for (const char* const text :
         {"",         ".",   "-",     "+",      "+-1", "-+1",  "--1",          "e5",         ".e5",
          "1e",       "1e+", "1.2.3", "12a",    "a12", "0x10", "0X1p3",        "inf",        "-inf",
          "INFINITY", "nan", "NaN",   "nan(1)", "1f",  "1d3",  "\xEF\xBC\x91", "2024-07-15", "13:05"})
        EXPECT_EQ(Read(text), std::nullopt) << text;
    double value = UNTOUCHED;
    EXPECT_FALSE(SCNumeric::AtoF(nullptr, value));
    EXPECT_EQ(value, UNTOUCHED);
}

TEST(SCNumeric, AtoFRefusesWhatIsTooLargeAndReadsWhatIsTooSmallAsZero)
{
    EXPECT_EQ(Read("1.7976931348623157e308"), std::numeric_limits<double>::max());
    for (const std::string& text : std::vector<std::string>{
             "1e309", "-1e309", "1e99999999999999999999", std::string(400, '9'), "0.001e400",
             std::string(400, '1') + "e-10", "1,000e306", "1e9223372036854775807", "0.1e9223372036854775807"})
        EXPECT_EQ(Read(text), std::nullopt) << text;
    EXPECT_EQ(Read("4.9406564584124654e-324"), std::numeric_limits<double>::denorm_min());
    for (const std::string& text : std::vector<std::string>{
             "1e-400", "-1e-400", "1e-99999999999999999999", "0." + std::string(400, '0') + "1", "1000e-400",
             "0." + std::string(10, '0') + "1e-400", "1,000e-400", "0.0001e-9223372036854775807",
             "10e-9223372036854775807"})
        EXPECT_EQ(Read(text), 0.0) << text;
    EXPECT_EQ(Read("0e999999999999999999999"), 0.0);
    EXPECT_EQ(Read("0." + std::string(400, '0') + "1e402"), 10.0);
}

TEST(SCNumeric, AtoFRoundsAsTheStandardLibraryDoes)
{
    std::mt19937_64 random(20240715);
    for (int i = 0; i < 20000; ++i) {
        char text[64];
        const double scale = std::pow(10.0, static_cast<double>(random() % 40) - 20);
        std::snprintf(text, sizeof text, "%.*g", static_cast<int>(random() % 20) + 1,
                      (static_cast<double>(random()) - 9e18) * scale);
        EXPECT_EQ(Read(text), std::strtod(text, nullptr)) << text;
    }
}

TEST(SCNumeric, ReadDecimalTakesTheBareNumberAlone)
{
    EXPECT_EQ(ReadBare("-1.5e1"), -15.0);
    EXPECT_EQ(ReadBare(".5"), 0.5);
    EXPECT_EQ(ReadBare("1e-400"), 0.0);
    for (const char* const text : {"", "-", " 1", "1 ", "+1", "1,000", "--1", "inf", "-nan", "1e309", "1x"})
        EXPECT_EQ(ReadBare(text), std::nullopt) << text;
    EXPECT_EQ(ReadBare(std::string("1\0", 2)), std::nullopt);
    double value = UNTOUCHED;
    EXPECT_FALSE(SCNumeric::ReadDecimal(nullptr, 0, value));
    EXPECT_EQ(value, UNTOUCHED);
}

TEST(SCNumeric, ReadDecimalReadsNoFurtherThanItsLength)
{
    double value = UNTOUCHED;
    ASSERT_TRUE(SCNumeric::ReadDecimal("12345", 3, value));
    EXPECT_EQ(value, 123.0);
    ASSERT_TRUE(SCNumeric::ReadDecimal("-1e5", 2, value));
    EXPECT_EQ(value, -1.0);
}
