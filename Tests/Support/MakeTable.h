#ifndef MAKETABLE_H
#define MAKETABLE_H

#include "CFldValueList.h"
#include "CSourceDataMngr.h"

#include <string>
#include <vector>

namespace NSKZ::Test {

// A field of a source table as a test writes it down.
struct STestFld
{
    const char* name;
    NSKZ::NSKZCore::SCDeclareConstant::EDataType type;
    std::vector<std::string> values;
    DWORD dataKind = NSKZ::NSKZCore::SCDeclareConstant::DATAKIND_ITEM;
};

constexpr auto TEXT = NSKZ::NSKZCore::SCDeclareConstant::DATATYPE_TEXT;
constexpr auto NUM = NSKZ::NSKZCore::SCDeclareConstant::DATATYPE_NUM;
constexpr auto DATE = NSKZ::NSKZCore::SCDeclareConstant::DATATYPE_DATE;
constexpr auto TIME = NSKZ::NSKZCore::SCDeclareConstant::DATATYPE_TIME;

// A table of these fields; their identifiers are 1, 2, ... in this order.
inline NSKZ::NSKZCore::CSourceDataMngr MakeTable(const std::vector<STestFld>& flds)
{
    NSKZ::NSKZCore::CSourceDataMngr table;
    for (const STestFld& fld : flds) {
        NSKZ::NSKZCore::CSourceDataMngr::SFldInfo info;
        info.name = fld.name;
        info.spec = {fld.dataKind, fld.type};
        NSKZ::NSKZCore::CFldValueList values;
        for (const std::string& value : fld.values)
            values.Append(value);
        DWORD fldID = 0;
        table.AddFld(std::move(info), std::move(values), fldID);
    }
    return table;
}

} // namespace NSKZ::Test

#endif
