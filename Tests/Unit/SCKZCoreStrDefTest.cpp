#include "SCKZCoreStrDef.h"

#include "Support/TestText.h"

#include <gtest/gtest.h>

using namespace NSKZ::NSKZCore;
using NSKZ::Test::FromSJIS;
using NSKZ::Test::UTF8;

TEST(SCKZCoreStrDef, EveryTextIsTheShiftJISOfItsReadableForm)
{
    EXPECT_STREQ(SCKZCoreStrDef::STR_EMPTY, "");
    EXPECT_EQ(FromSJIS(SCKZCoreStrDef::MES_EXCEP_ABNORMALDATA), UTF8(u8"データ異常"));
    EXPECT_EQ(FromSJIS(SCKZCoreStrDef::MES_EXCEP_INACCURATECODE), UTF8(u8"コード不備"));
    EXPECT_EQ(FromSJIS(SCKZCoreStrDef::MSG_ABNORMAL_DATASIZE), UTF8(u8"データのサイズが異常な値であった。"));
    EXPECT_EQ(FromSJIS(SCKZCoreStrDef::MSG_UNKNOWN_SPECTYPE), UTF8(u8"未知のスペックの種類であった。"));
    EXPECT_EQ(FromSJIS(SCKZCoreStrDef::MSG_UNKNOWN_DATETYPE), UTF8(u8"未知の日付の種類であった。"));
}
