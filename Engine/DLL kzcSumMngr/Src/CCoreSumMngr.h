#ifndef CCORESUMMNGR_H
#define CCORESUMMNGR_H

#include "KzcSumMngrAPI.h"
#include "SCSMCoreCom.h"

#include <map>
#include <vector>

namespace NSKZ::NSKZCore {

class CSourceDataMngr;

// Sums over the number fields of a source table. A host may put sums of its own in its place by overriding
// the virtual operations.
//
// The values of a field are read when it is first asked for, and held as numbers from then on. A cell that is
// empty or whose text is no number (SCNumeric::AtoF) adds nothing and counts nothing. After a change of the
// table Refresh must be called, before anything is asked again.
//
// The table is borrowed and outlives the object. One thread at a time may use it. Where a field is read,
// std::bad_alloc may come out, with nothing changed.
class KZCSUMMNGR_API CCoreSumMngr
{
public:
    explicit CCoreSumMngr(const CSourceDataMngr& srcDataMngr);
    CCoreSumMngr(const CCoreSumMngr&) = delete;
    CCoreSumMngr& operator=(const CCoreSumMngr&) = delete;
    virtual ~CCoreSumMngr();

    // Whether the field can be summed: it exists, and its type is number.
    virtual bool IsExistItem(DWORD fldID) const;

    // The number in one record; NaN where there is none, for a record that the table does not have, and for a
    // field that cannot be summed.
    virtual double GetRecordValue(DWORD fldID, DWORD recNum) const;

    // The aggregate over a list of records, ascending; see ENumKindOfSum. NaN for a field that cannot be
    // summed, an unknown kind, and a list that goes past the end of the table. Numbers are added in the order
    // of the list. Cost: a pass over the list.
    virtual double GetSumValue(DWORD fldID, SCSMCoreCom::ENumKindOfSum kind, const DWORD* recList,
                               DWORD recCount) const;

    // Forgets all numbers read, so that they are read anew when asked for.
    virtual void Refresh() noexcept;

private:
    // The numbers of a field by record; NaN where there is none.
    const std::vector<double>* GetNumbers(DWORD fldID) const;
    bool ReadNumbers(DWORD fldID, std::vector<double>& numbers) const;

    const CSourceDataMngr& srcDataMngr;
    mutable std::map<DWORD, std::vector<double>> numbersOfFld; // of the fields asked for so far
};

} // namespace NSKZ::NSKZCore

#endif
