#ifndef CCORESUMMNGR_H
#define CCORESUMMNGR_H

#include "KzcSumMngrAPI.h"
#include "SCSMCoreCom.h"

namespace NSKZ::NSKZCore {

class CSourceDataMngr;

class CCoreSumMngr
{
public:
    explicit CCoreSumMngr(const CSourceDataMngr& srcDataMngr);
    virtual ~CCoreSumMngr();
    virtual bool IsExistItem(DWORD fldID) const;
    virtual double GetRecordValue(DWORD fldID, DWORD recNum) const;
    virtual double GetSumValue(DWORD fldID, SCSMCoreCom::ENumKindOfSum kind, const DWORD* recList,
                               DWORD recCount) const;
};

} // namespace NSKZ::NSKZCore

#endif
