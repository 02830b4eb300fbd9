#ifndef INUMCND_H
#define INUMCND_H

#include "KzcBUIMngrAPI.h"

namespace NSKZ::NSKZCore {

// A host's own numeric condition, which an environment keeps for it: CBUIDataMngr::SetNumCnd takes a clone.
// The engine calls the cloning and the releasing operation only; what the two in between mean is the host's
// affair.
//
// The order of the operations is fixed.
class KZCBUIMNGR_API INumCnd
{
public:
    virtual ~INumCnd();
    // Whether `other` states the same condition.
    virtual bool IsEqualTo(const INumCnd& other) const = 0;
    // Whether a number meets the condition.
    virtual bool IsMetBy(double value) const = 0;
    // A condition of the same content, to be released by its Destroy. Throws std::bad_alloc.
    virtual INumCnd* CreateClone() const = 0;
    // Releases a condition that CreateClone made. Does not throw.
    virtual void Destroy() = 0;
};

} // namespace NSKZ::NSKZCore

#endif
