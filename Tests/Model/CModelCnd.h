#ifndef CMODELCND_H
#define CMODELCND_H

#include "CBasicBtnCnd.h"
#include "Support/CRandom.h"

#include <string>
#include <vector>

namespace NSKZ::Test {

// A condition that picks buttons, as a plain tree. The numbers are those of the environment's enumerations.
struct SModelCnd
{
    enum EKind
    {
        KIND_NOTHING, // an empty condition
        KIND_LEAF,
        KIND_CONTAINER,
    };

    EKind kind = KIND_NOTHING;
    // Of a leaf:
    DWORD numID = 0;
    DWORD sumMethod = 1;
    DWORD selCondition = 1;
    DWORD rankNum = 1;
    double cmpNum = 0;
    // Of a container:
    DWORD boolOperator = 1;
    std::vector<SModelCnd> children;

    bool HasNumDataItem(DWORD id) const;
    std::string Describe() const;
    // The condition as a host makes it.
    NSKZCore::CBasicBtnCnd Make() const;

    // Containers up to `depth` deep; the numeric items are among `numIDs` but now and then.
    static SModelCnd MakeRandom(NSKZCore::CRandom& random, const std::vector<DWORD>& numIDs, DWORD depth);
};

} // namespace NSKZ::Test

#endif
