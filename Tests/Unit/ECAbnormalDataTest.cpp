#include "ECAbnormalData.h"

#include "SCKZCoreStrDef.h"

#include <gtest/gtest.h>

#include <string>

using namespace NSKZ::NSKZCore;

TEST(ECAbnormalData, CarriesItsKindMessageAndPlace)
{
    try {
        std::string message = "message";
        throw ECAbnormalData(message.c_str(), "Src/CBUIDataMngr",
                             "NSKZ::NSKZCore::CBUIDataMngr::CreateRpLink", 12);
    } catch (const VECException& exception) {
        EXPECT_NE(dynamic_cast<const ECAbnormalData*>(&exception), nullptr);
        EXPECT_STREQ(exception.GetKind(), SCKZCoreStrDef::MES_EXCEP_ABNORMALDATA);
        EXPECT_STREQ(exception.GetMessageText(), "message");
        EXPECT_STREQ(exception.GetFile(), "Src/CBUIDataMngr");
        EXPECT_STREQ(exception.GetFunction(), "NSKZ::NSKZCore::CBUIDataMngr::CreateRpLink");
        EXPECT_EQ(exception.GetLine(), 12);
    }
}
