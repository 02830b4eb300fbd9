#include "VECException.h"

#include "Support/CAllocFault.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

using namespace NSKZ::NSKZCore;

namespace {

class ECExample : public VECException
{
public:
    ECExample(const char* message)
        : VECException("kind of exception", message, "Src/Example", "NSKZ::Example::Run", 42)
    {}
};

} // namespace

TEST(VECException, CarriesWhatItWasMadeWith)
{
    const ECExample exception("message");
    EXPECT_STREQ(exception.what(), "message");
    EXPECT_STREQ(exception.GetMessageText(), "message");
    EXPECT_STREQ(exception.GetKind(), "kind of exception");
    EXPECT_STREQ(exception.GetFile(), "Src/Example");
    EXPECT_STREQ(exception.GetFunction(), "NSKZ::Example::Run");
    EXPECT_EQ(exception.GetLine(), 42);
}

TEST(VECException, IsCaughtAsTheStandardBase)
{
    try {
        throw ECExample("message");
    } catch (const std::exception& exception) {
        EXPECT_STREQ(exception.what(), "message");
        return;
    }
    FAIL();
}

TEST(VECException, ACopyOutlivesWhatItWasMadeFromAndCopiesItsTexts)
{
    std::string text = "message";
    auto original = std::make_unique<ECExample>(text.c_str());
    text = "changed";
    const ECExample copy(*original);
    ECExample assigned("other");
    assigned = *original;
    original.reset();
    EXPECT_STREQ(copy.what(), "message");
    EXPECT_STREQ(assigned.what(), "message");
}

TEST(VECException, ACopyAllocatesNothing)
{
    const ECExample original("message");
    const CAllocFault memory;
    const ECExample copy(original);
    EXPECT_EQ(memory.GetLiveBlockCount(), 0);
}
