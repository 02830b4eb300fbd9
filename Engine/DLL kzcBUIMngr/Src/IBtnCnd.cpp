#include "IBtnCnd.h"

namespace NSKZ::NSKZCore {

IBtnCnd::~IBtnCnd() = default;

bool IBtnCnd::CompareElementName(const char* name, DWORD nameLen) noexcept
{
    return IXMLIO::IsSameText(name, nameLen, STR_ELENAME_BTNCONDITION, STRLEN_ELENAME_BTNCONDITION);
}

bool IBtnCnd::SearchBtnCndTypeAttribute(const std::vector<IXMLIO::SAttribute>& attributes,
                                        DWORD& index) noexcept
{
    return CXMLReader::SearchAttribute(attributes, static_cast<DWORD>(attributes.size()), STR_ATTRNAME_TYPE,
                                       STRLEN_ATTRNAME_TYPE, index);
}

} // namespace NSKZ::NSKZCore
