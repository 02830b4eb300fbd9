#include "ECInaccurateCode.h"

#include "SCBUICoreStrDef.h"
#include "SCKZCoreStrDef.h"

#include <gtest/gtest.h>

using namespace NSKZ::NSKZCore;

TEST(ECInaccurateCode, SaysThatThereIsNoCodeAndNamesItselfAsThePlace)
{
    try {
        throw ECInaccurateCode();
    } catch (const VECException& exception) {
        EXPECT_NE(dynamic_cast<const ECInaccurateCode*>(&exception), nullptr);
        EXPECT_STREQ(exception.GetKind(), SCKZCoreStrDef::MES_EXCEP_INACCURATECODE);
        EXPECT_STREQ(exception.GetMessageText(), SCBUICoreStrDef::MSG_NOT_IMPLEMENTED);
        EXPECT_STREQ(exception.GetFile(), "Src/ECInaccurateCode");
        EXPECT_STREQ(exception.GetFunction(), "NSKZ::NSKZCore::ECInaccurateCode::ECInaccurateCode");
        EXPECT_GT(exception.GetLine(), 0);
    }
}

TEST(ECInaccurateCode, CanNameThePlaceThatThrows)
{
    const ECInaccurateCode exception("Src/CPlace", "CPlace::Go", 3);
    EXPECT_STREQ(exception.GetMessageText(), SCBUICoreStrDef::MSG_NOT_IMPLEMENTED);
    EXPECT_STREQ(exception.GetFile(), "Src/CPlace");
    EXPECT_STREQ(exception.GetFunction(), "CPlace::Go");
    EXPECT_EQ(exception.GetLine(), 3);
}
