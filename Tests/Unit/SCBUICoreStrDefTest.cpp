#include "SCBUICoreStrDef.h"

#include "CFormattedMsg.h"

#include <gtest/gtest.h>

#include <iconv.h>

#include <string>

using namespace NSKZ::NSKZCore;

namespace {

// Decodes Shift-JIS; a text that cannot be decoded gives a text that equals no other.
std::string DecodeShiftJIS(std::string text)
{
    const iconv_t decoder = iconv_open("UTF-8", "CP932");
    if (decoder == iconv_t(-1))
        return "no decoder for code page 932";
    std::string decoded(text.size() * 3, '\0');
    char* in = text.data();
    char* out = decoded.data();
    std::size_t inLeft = text.size();
    std::size_t outLeft = decoded.size();
    const std::size_t result = iconv(decoder, &in, &inLeft, &out, &outLeft);
    iconv_close(decoder);
    if (result == std::size_t(-1) || inLeft != 0)
        return "not decodable: " + text;
    decoded.resize(decoded.size() - outLeft);
    return decoded;
}

struct SText
{
    const char* name;
    const char* bytes;
    const char* readable;
};

const SText TEXTS[] = {
    {"STR_PROCNAME_BUILD_BTNINFO", SCBUICoreStrDef::STR_PROCNAME_BUILD_BTNINFO,
     "分析項目の情報を構築しています。"},
    {"STR_PROCNAME_REBUILD_BTNINFO", SCBUICoreStrDef::STR_PROCNAME_REBUILD_BTNINFO,
     "分析項目の情報を更新しています。"},
    {"MSG_UNKNOWN_LINKTBLTYPE", SCBUICoreStrDef::MSG_UNKNOWN_LINKTBLTYPE,
     "未知のLinkテーブルの種類であった。"},
    {"MSG_UNKNOWN_LINKTBLVERTYPE", SCBUICoreStrDef::MSG_UNKNOWN_LINKTBLVERTYPE,
     "未知のLinkテーブルの方式であった。"},
    {"MSG_UNKNOWN_BTNTYPE", SCBUICoreStrDef::MSG_UNKNOWN_BTNTYPE, "未知のボタンの種類であった。"},
    {"MSG_UNKNOWN_BTNCLSTYPE", SCBUICoreStrDef::MSG_UNKNOWN_BTNCLSTYPE, "未知のボタンクラスの種類であった。"},
    {"MSG_UNKNOWN_DATATYPE", SCBUICoreStrDef::MSG_UNKNOWN_DATATYPE, "未知のデータ型の種類であった。"},
    {"MSG_ABNORMAL_DATATYPE", SCBUICoreStrDef::MSG_ABNORMAL_DATATYPE,
     "データ型が異常な値であった。(EDataType:%d)"},
    {"MSG_UNKNOWN_RELATIONMODE", SCBUICoreStrDef::MSG_UNKNOWN_RELATIONMODE, "未知の関連モードであった。"},
    {"MSG_UNKNOWN_RECLISTLIMITATION", SCBUICoreStrDef::MSG_UNKNOWN_RECLISTLIMITATION,
     "未知のレコード限定方法であった。"},
    {"MSG_NOTEXIST_BNLINK", SCBUICoreStrDef::MSG_NOTEXIST_BNLINK, "BnLinkが存在しなかった。"},
    {"MSG_NOTEXIST_RPLINK", SCBUICoreStrDef::MSG_NOTEXIST_RPLINK, "RpLinkが存在しなかった。"},
    {"MSG_NOTEXIST_SRCBTNCLS_IN_BNLINK", SCBUICoreStrDef::MSG_NOTEXIST_SRCBTNCLS_IN_BNLINK,
     "BnLinkに指定されたソースボタンクラスの情報が存在しなかった。(BtnClsID:%d)"},
    {"MSG_NOTEXIST_SELBTN", SCBUICoreStrDef::MSG_NOTEXIST_SELBTN,
     "選択ボタンとされたボタンが存在しなかった。(BtnClsID:%d BtnID:%d)"},
    {"MSG_NOTEXIST_MMBBTN", SCBUICoreStrDef::MSG_NOTEXIST_MMBBTN,
     "構成ボタンとされたボタンが存在しなかった。(BtnClsID:%d BtnID:%d)"},
    {"MSG_NOTEXIST_INSIDEBTN", SCBUICoreStrDef::MSG_NOTEXIST_INSIDEBTN,
     "内部ボタンとされたボタンが存在しなかった。(BtnClsID:%d BtnID:%d)"},
    {"MSG_NOTEXIST_REFBTNCLS", SCBUICoreStrDef::MSG_NOTEXIST_REFBTNCLS,
     "仮想増殖ボタンの参照先ボタンクラスが存在しなかった。(BtnClsID:%d BtnID:%d RefBtnCls:%d)"},
    {"MSG_NOTEXIST_BTNCLS_OF_SPBTN", SCBUICoreStrDef::MSG_NOTEXIST_BTNCLS_OF_SPBTN,
     "指定されたボタンを構成ボタンとする特殊ボタンの属するボタンクラスが存在しなかった。(BtnClsIDOfSpBtn:%d "
     "BtnIDOfSpBtn:%d BtnClsID:%d BtnID%d)"},
    {"MSG_UNKNOWN_SRCDATA_OPETYPE", SCBUICoreStrDef::MSG_UNKNOWN_SRCDATA_OPETYPE,
     "未知のソースデータの操作が行われた。"},
    {"MSG_UNKNOWN_SUMMETHOD_FORCND", SCBUICoreStrDef::MSG_UNKNOWN_SUMMETHOD_FORCND,
     "未知の比較条件用集計方法であった。"},
    {"MSG_UNKNOWN_MMBBTNSELCND", SCBUICoreStrDef::MSG_UNKNOWN_MMBBTNSELCND,
     "未知の構成ボタン選別条件であった。"},
    {"MSG_UNKNOWN_SELCONDITION", SCBUICoreStrDef::MSG_UNKNOWN_SELCONDITION, "未知の選別条件であった。"},
    {"MSG_UNKNOWN_BTNNAME_SRCHOPTION", SCBUICoreStrDef::MSG_UNKNOWN_BTNNAME_SRCHOPTION,
     "未知のボタン名称検索オプションであった。"},
    {"MSG_UNKNOWN_MMBBTNSELMTH", SCBUICoreStrDef::MSG_UNKNOWN_MMBBTNSELMTH,
     "未知の構成ボタン選別方法であった。"},
    {"MSG_NOT_IMPLEMENTED", SCBUICoreStrDef::MSG_NOT_IMPLEMENTED, "未実装"},
};

} // namespace

TEST(SCBUICoreStrDef, EveryTextDecodesToItsReadableText)
{
    for (const SText& text : TEXTS)
        EXPECT_EQ(DecodeShiftJIS(text.bytes), text.readable) << text.name;
}

TEST(SCBUICoreStrDef, EveryMessageFitsIntoAFormattedMessageWithTheLongestNumbers)
{
    constexpr DWORD LONGEST = 2147483648; // shows as -2147483648
    for (const SText& text : TEXTS) {
        std::string expected = text.readable;
        for (std::size_t pos = expected.find("%d"); pos != std::string::npos; pos = expected.find("%d"))
            expected.replace(pos, 2, "-2147483648");
        EXPECT_EQ(DecodeShiftJIS(CFormattedMsg(text.bytes, {LONGEST, LONGEST, LONGEST, LONGEST}).GetText()),
                  expected)
            << text.name;
    }
}
