#include "SCThemeIOStrDef.h"

#include "Support/XMLText.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

using SC = SCDeclareConstant;
using Attributes = std::vector<IXMLIO::SAttribute>;

namespace {

std::string Show(const Attributes& attributes)
{
    std::string text;
    for (const IXMLIO::SAttribute& each : attributes)
        text += std::string(each.name, each.nameLen) + "=" + std::string(each.value, each.valueLen) + ";";
    return text;
}

} // namespace

TEST(SCThemeIOStrDef, AFormComesBackFromItsAttributes)
{
    SC::SDateDispForm form;
    form.kind = 5;
    ASSERT_TRUE(form.SetOptionalForm("{yyyy} \"&"));
    form.form = 0;
    form.option = 4294967294;
    Attributes attributes = {MakeAttribute("old", "1")};
    ASSERT_TRUE(SCThemeIOStrDef::ConvertDateDispFormIntoXMLAttributes(form, attributes));
    EXPECT_EQ(Show(attributes), "kind=5;form=0;option=4294967294;optionalForm={yyyy} \"&;");
    SC::SDateDispForm read;
    ASSERT_TRUE(SCThemeIOStrDef::ConvertXMLAttributesIntoDateDispForm(attributes, read));
    EXPECT_EQ(read, form);

    SC::STimeDispForm timeForm;
    timeForm.kind = 2;
    timeForm.form = 5;
    ASSERT_TRUE(SCThemeIOStrDef::ConvertTimeDispFormIntoXMLAttributes(timeForm, attributes));
    EXPECT_EQ(Show(attributes), "kind=2;form=5;");
    SC::STimeDispForm readTime;
    ASSERT_TRUE(SCThemeIOStrDef::ConvertXMLAttributesIntoTimeDispForm(attributes, readTime));
    EXPECT_EQ(readTime, timeForm);
}

TEST(SCThemeIOStrDef, WhatIsUnsetHasNoAttribute)
{
    Attributes attributes = {MakeAttribute("old", "1")};
    ASSERT_TRUE(SCThemeIOStrDef::ConvertDateDispFormIntoXMLAttributes(SC::SDateDispForm(), attributes));
    EXPECT_TRUE(attributes.empty());
    SC::SDateDispForm read;
    read.kind = 3;
    ASSERT_TRUE(SCThemeIOStrDef::ConvertXMLAttributesIntoDateDispForm(attributes, read));
    EXPECT_EQ(read, SC::SDateDispForm());
}

TEST(SCThemeIOStrDef, APatternWithoutEndIsNotWritten)
{
    SC::SDateDispForm form;
    std::memset(form.optionalForm, 'x', sizeof form.optionalForm);
    Attributes attributes = {MakeAttribute("old", "1")};
    EXPECT_FALSE(SCThemeIOStrDef::ConvertDateDispFormIntoXMLAttributes(form, attributes));
    EXPECT_EQ(Show(attributes), "old=1;");
}

TEST(SCThemeIOStrDef, WhatIsNoFormIsRefusedAndChangesNothing)
{
    const std::string tooLong(261, 'x');
    const Attributes bad[] = {{MakeAttribute("kind", "")},
                              {MakeAttribute("kind", "-1")},
                              {MakeAttribute("kind", "4294967295")},
                              {MakeAttribute("kind", "4294967296")},
                              {MakeAttribute("kind", "1 ")},
                              {MakeAttribute("Kind", "1")},
                              {MakeAttribute("kind", "1"), MakeAttribute("kind", "1")},
                              {MakeAttribute("optionalForm", ""), MakeAttribute("optionalForm", "")},
                              {MakeAttribute("optionalForm", tooLong)},
                              {MakeAttribute("optionalForm", std::string_view("a\0b", 3))}};
    SC::SDateDispForm form;
    SC::STimeDispForm timeForm;
    form.kind = timeForm.kind = 7;
    for (const Attributes& attributes : bad) {
        EXPECT_FALSE(SCThemeIOStrDef::ConvertXMLAttributesIntoDateDispForm(attributes, form))
            << Show(attributes);
        EXPECT_FALSE(SCThemeIOStrDef::ConvertXMLAttributesIntoTimeDispForm(attributes, timeForm));
    }
    EXPECT_FALSE(
        SCThemeIOStrDef::ConvertXMLAttributesIntoTimeDispForm({MakeAttribute("option", "1")}, timeForm));
    EXPECT_EQ(form.kind, 7u);
    EXPECT_EQ(timeForm.kind, 7u);
}
