#ifndef SCSMCORECOM_H
#define SCSMCORECOM_H

#include "KzcSumMngrAPI.h"

namespace NSKZ::NSKZCore {

// Vocabulary of sums.
class KZCSUMMNGR_API SCSMCoreCom
{
public:
    SCSMCoreCom() = delete;

    // What is worked out over a list of records. Cells that hold no number, empty ones above all, take no
    // part.
    enum ENumKindOfSum : DWORD
    {
        KINDOFSUM_SUM = 1,   // the sum; 0 over no number
        KINDOFSUM_AVG = 2,   // the sum divided by the count; NaN over no number
        KINDOFSUM_COUNT = 3, // how many numbers there are
        KINDOFSUM_MAX = 4,   // the greatest; NaN over no number
        KINDOFSUM_MIN = 5,   // the least; NaN over no number
    };
};

} // namespace NSKZ::NSKZCore

#endif
