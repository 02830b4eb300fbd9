#ifndef CSOURCEDATAMNGR_H
#define CSOURCEDATAMNGR_H

#include "KzcDataMngrAPI.h"
#include "SCDeclareConstant.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace NSKZ::NSKZCore {

class CSourceDataMngr
{
public:
    virtual ~CSourceDataMngr();
    virtual DWORD GetRecCount() const;
    virtual DWORD GetFldCount() const;
    virtual bool GetSrcFrmDataFldID(std::vector<DWORD>& fldIDs) const;
    virtual bool GetDataSpec(DWORD fldID, SCDeclareConstant::SDataSpec& spec) const;
    virtual bool GetDataSize(DWORD fldID, DWORD firstRec, DWORD recCount, DWORD& size32,
                             unsigned long long& size) const;
    virtual bool GetData(DWORD fldID, DWORD firstRec, DWORD recCount, DWORD& size32, char* buffer,
                         DWORD bufferSize, unsigned short* lengths, char** values) const;
    virtual bool GetDateTypeInfo(DWORD fldID, SCDeclareConstant::SDateTypeInfo& info) const;
    virtual bool GetTimeTypeInfo(DWORD fldID, SCDeclareConstant::STimeTypeInfo& info) const;
    virtual const char* GetDefEmpValName() const;
    virtual bool GetItemName(DWORD fldID, const char*& name) const;
};

} // namespace NSKZ::NSKZCore

#endif
