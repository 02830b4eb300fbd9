#ifndef CBTN_H
#define CBTN_H

#include "VCBtn.h"

namespace NSKZ::NSKZCore {

// The button of one distinct non-empty value of a source field. Its class never destroys it while it lives
// itself, even if all records of the value go: the identifier, and what users built on it, survives.
class CBtn final : public VCBtn
{
public:
    using VCBtn::VCBtn;

    SCBUICoreCom::EBtnType GetType() const override;
    std::unique_ptr<VCBtn> Clone() const override;
};

} // namespace NSKZ::NSKZCore

#endif
