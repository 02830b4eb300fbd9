#ifndef SCTHEMEIOSTRDEF_H
#define SCTHEMEIOSTRDEF_H

#include "IXMLIO.h"
#include "KzcDataMngrAPI.h"
#include "SCDeclareConstant.h"

#include <vector>

namespace NSKZ::NSKZCore {

// How display forms are saved: as attributes of an element of its owner.
//
// "kind", "form" and, of dates, "option" are decimal numbers; "optionalForm" is the pattern. What is unset,
// and an empty pattern, has no attribute; so a form of which nothing is set has none at all.
class KZCDATAMNGR_API SCThemeIOStrDef
{
public:
    SCThemeIOStrDef() = delete;

    static constexpr char STR_ATTRNAME_KIND[] = "kind";
    static constexpr DWORD STRLEN_ATTRNAME_KIND = sizeof STR_ATTRNAME_KIND - 1;
    static constexpr char STR_ATTRNAME_OPTIONALFORM[] = "optionalForm";
    static constexpr DWORD STRLEN_ATTRNAME_OPTIONALFORM = sizeof STR_ATTRNAME_OPTIONALFORM - 1;
    static constexpr char STR_ATTRNAME_FORM[] = "form";
    static constexpr DWORD STRLEN_ATTRNAME_FORM = sizeof STR_ATTRNAME_FORM - 1;
    static constexpr char STR_ATTRNAME_OPTION[] = "option";
    static constexpr DWORD STRLEN_ATTRNAME_OPTION = sizeof STR_ATTRNAME_OPTION - 1;

    // Put the attributes of a form in the place of what `attributes` held. Their texts are borrowed: the
    // pattern from the form, the numbers until this thread's next such call. False, with `attributes`
    // untouched, for a pattern without NUL. Throw std::bad_alloc with `attributes` untouched.
    static bool ConvertDateDispFormIntoXMLAttributes(const SCDeclareConstant::SDateDispForm& dispForm,
                                                     std::vector<IXMLIO::SAttribute>& attributes);
    static bool ConvertTimeDispFormIntoXMLAttributes(const SCDeclareConstant::STimeDispForm& dispForm,
                                                     std::vector<IXMLIO::SAttribute>& attributes);

    // The reverse. False, with `dispForm` untouched, for an attribute of another name, one that stands there
    // twice, a number that is none or is the value of what is unset, and a pattern that is too long or holds
    // a NUL. Whether there is a form of these codes is not tested.
    static bool ConvertXMLAttributesIntoDateDispForm(const std::vector<IXMLIO::SAttribute>& attributes,
                                                     SCDeclareConstant::SDateDispForm& dispForm) noexcept;
    static bool ConvertXMLAttributesIntoTimeDispForm(const std::vector<IXMLIO::SAttribute>& attributes,
                                                     SCDeclareConstant::STimeDispForm& dispForm) noexcept;
};

} // namespace NSKZ::NSKZCore

#endif
