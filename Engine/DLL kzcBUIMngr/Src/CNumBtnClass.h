#ifndef CNUMBTNCLASS_H
#define CNUMBTNCLASS_H

#include "VCSrcBtnClass.h"

namespace NSKZ::NSKZCore {

// The button class of a numeric field: its buttons are the distinct value texts of the field, and its order
// of names follows the numbers that the texts read as.
//
// Each normal button that has records stands in exactly one of two order lists: of numbers, or of texts that
// read as none. The texts are parsed when a button enters or leaves: the shown text decides under which key
// it stands.
class CNumBtnClass final : public VCSrcBtnClass
{
public:
    using VCSrcBtnClass::VCSrcBtnClass;

    void Clear() override;
    void Copy(const VCBtnClass& other, const std::unique_ptr<IRpLink>& rpLinkOfEnv) override;

    // Special buttons by text, numbers by value (equal ones as they appeared), the empty value, then the
    // texts that are no numbers, by text. ORDLIST_DESCEND reverses all but those last texts. A hidden
    // empty-value button is listed with ORDLIST_INCLUDE_NONDISPBTNS, but not while it has no record.
    // Otherwise as in the base.
    void GetBtnNameOrdList(unsigned int flags, std::vector<DWORD>& btnIDs) const override;
    SCBUICoreCom::EBtnClassType GetBtnClassType() const override;

protected:
    void AdjstAccordingToBtnAppearance(const VCBtn& btn) override;
    void AdjstAccordingToBtnDisappearance(const VCBtn& btn) noexcept override;

private:
    CNumOrdList numNameOrd;
    CTextOrdList strNameOrd;
};

} // namespace NSKZ::NSKZCore

#endif
