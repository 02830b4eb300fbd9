#include "SCThemeIOStrDef.h"

#include "SCKZCoreCom.h"

#include <array>
#include <cstring>
#include <string_view>

namespace NSKZ::NSKZCore {

namespace {

// The fields of a display form, those of dates and those of times alike; times have no option.
struct SFields
{
    const DWORD* kind;
    const char* optionalForm;
    const DWORD* form;
    const DWORD* option;
};

struct SNumber
{
    const char* name;
    DWORD nameLen;
};
constexpr std::array<SNumber, 3> NUMBERS = {{
    {SCThemeIOStrDef::STR_ATTRNAME_KIND, SCThemeIOStrDef::STRLEN_ATTRNAME_KIND},
    {SCThemeIOStrDef::STR_ATTRNAME_FORM, SCThemeIOStrDef::STRLEN_ATTRNAME_FORM},
    {SCThemeIOStrDef::STR_ATTRNAME_OPTION, SCThemeIOStrDef::STRLEN_ATTRNAME_OPTION},
}};

bool Write(const SFields& fields, std::vector<IXMLIO::SAttribute>& attributes)
{
    const void* const end = std::memchr(fields.optionalForm, '\0', SCDeclareConstant::OPTIONALFORM_SIZE);
    if (end == nullptr)
        return false;

    // An attribute borrows its text, and its caller has nowhere to keep one.
    thread_local char texts[NUMBERS.size()][16];
    std::vector<IXMLIO::SAttribute> made;
    made.reserve(NUMBERS.size() + 1);
    const std::array<const DWORD*, NUMBERS.size()> values = {fields.kind, fields.form, fields.option};
    for (std::size_t i = 0; i < NUMBERS.size(); ++i) {
        if (values[i] == nullptr || *values[i] == SCDeclareConstant::UNSETTING)
            continue;
        DWORD len = 0;
        SCKZCoreCom::ConvertNumericValueIntoString(*values[i], texts[i], sizeof texts[i], len);
        made.push_back({NUMBERS[i].name, NUMBERS[i].nameLen, texts[i], len});
    }
    const auto len = static_cast<DWORD>(static_cast<const char*>(end) - fields.optionalForm);
    if (len != 0)
        made.push_back({SCThemeIOStrDef::STR_ATTRNAME_OPTIONALFORM,
                        SCThemeIOStrDef::STRLEN_ATTRNAME_OPTIONALFORM, fields.optionalForm, len});
    attributes.swap(made);
    return true;
}

// Reads a number into a field that is still unset.
bool ReadNumber(const IXMLIO::SAttribute& attribute, DWORD* field) noexcept
{
    return field != nullptr && *field == SCDeclareConstant::UNSETTING &&
           SCKZCoreCom::ConvertStringIntoNumericValue(attribute.value, attribute.valueLen, *field) &&
           *field != SCDeclareConstant::UNSETTING;
}

template <typename TDispForm>
bool Read(const std::vector<IXMLIO::SAttribute>& attributes, TDispForm& dispForm, DWORD* option) noexcept
{
    bool hasPattern = false;
    for (const IXMLIO::SAttribute& attribute : attributes) {
        const auto is = [&attribute](const char* name, DWORD nameLen) {
            return IXMLIO::IsSameText(attribute.name, attribute.nameLen, name, nameLen);
        };
        bool good = false;
        if (is(SCThemeIOStrDef::STR_ATTRNAME_KIND, SCThemeIOStrDef::STRLEN_ATTRNAME_KIND)) {
            good = ReadNumber(attribute, &dispForm.kind);
        } else if (is(SCThemeIOStrDef::STR_ATTRNAME_FORM, SCThemeIOStrDef::STRLEN_ATTRNAME_FORM)) {
            good = ReadNumber(attribute, &dispForm.form);
        } else if (is(SCThemeIOStrDef::STR_ATTRNAME_OPTION, SCThemeIOStrDef::STRLEN_ATTRNAME_OPTION)) {
            good = ReadNumber(attribute, option);
        } else if (is(SCThemeIOStrDef::STR_ATTRNAME_OPTIONALFORM,
                      SCThemeIOStrDef::STRLEN_ATTRNAME_OPTIONALFORM)) {
            good = !hasPattern &&
                   dispForm.SetOptionalForm(std::string_view(attribute.value, attribute.valueLen));
            hasPattern = true;
        }
        if (!good)
            return false;
    }
    return true;
}

} // namespace

bool SCThemeIOStrDef::ConvertDateDispFormIntoXMLAttributes(const SCDeclareConstant::SDateDispForm& dispForm,
                                                           std::vector<IXMLIO::SAttribute>& attributes)
{
    return Write({&dispForm.kind, dispForm.optionalForm, &dispForm.form, &dispForm.option}, attributes);
}

bool SCThemeIOStrDef::ConvertTimeDispFormIntoXMLAttributes(const SCDeclareConstant::STimeDispForm& dispForm,
                                                           std::vector<IXMLIO::SAttribute>& attributes)
{
    return Write({&dispForm.kind, dispForm.optionalForm, &dispForm.form, nullptr}, attributes);
}

bool SCThemeIOStrDef::ConvertXMLAttributesIntoDateDispForm(
    const std::vector<IXMLIO::SAttribute>& attributes, SCDeclareConstant::SDateDispForm& dispForm) noexcept
{
    SCDeclareConstant::SDateDispForm read;
    if (!Read(attributes, read, &read.option))
        return false;
    dispForm = read;
    return true;
}

bool SCThemeIOStrDef::ConvertXMLAttributesIntoTimeDispForm(
    const std::vector<IXMLIO::SAttribute>& attributes, SCDeclareConstant::STimeDispForm& dispForm) noexcept
{
    SCDeclareConstant::STimeDispForm read;
    if (!Read(attributes, read, nullptr))
        return false;
    dispForm = read;
    return true;
}

} // namespace NSKZ::NSKZCore
