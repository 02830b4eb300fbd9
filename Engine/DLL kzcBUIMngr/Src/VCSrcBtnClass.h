#ifndef VCSRCBTNCLASS_H
#define VCSRCBTNCLASS_H

#include "VCBtnClass.h"

#include <cstring>

namespace NSKZ::NSKZCore {

class CSourceDataMngr;

// A button class that stands on one field of the source table: the binding to the field, the table from value
// to button, the one empty-value button, and the following of records that come and go.
//
// A value keeps its identifier for the life of the class: one that goes and comes back gets its old button,
// with everything built on it.
class VCSrcBtnClass : public VCBtnClass
{
public:
    // `empValAlias` is what the empty-value button shows; it is copied. The class borrows `srcDataMngrOfEnv`.
    VCSrcBtnClass(DWORD id, DWORD fldID, const char* empValAlias, const CSourceDataMngr* srcDataMngrOfEnv,
                  const std::unique_ptr<IRpLink>& rpLinkOfEnv);
    ~VCSrcBtnClass() override;

    DWORD GetFldID() const noexcept { return fldID; }
    // Whether the empty-value button is to be shown.
    bool GetDispEmpValBtnInfo() const noexcept { return empValBtnDisp; }
    // Shows or hides the empty-value button: hidden, it has the reason VISINFO_EMPVALNODISP and is a member
    // of no special button, not even of an ineffective one. Showing does not throw; if memory is exhausted in
    // hiding nothing has changed, or all has and rows of records stay outdated.
    void SetDispEmpValBtnInfo(bool disp);

    void Clear() override;
    void ClearOfFixedSpec() override;
    void Copy(const VCBtnClass& other, const std::unique_ptr<IRpLink>& rpLinkOfEnv) override;

    // Takes in records that came to the table: `count` values, NUL-terminated, null or empty for the empty
    // value. Values met for the first time become buttons; values whose button has lost all its records get
    // it back. `outBtnIDs` receives the button of each value, and `counts`, cleared first, how many of these
    // records each button got. `startRec` tells where the records begin and is there for classes that care.
    //
    // False when the identifiers are used up; buttons made before stay. If memory is exhausted the class
    // knows the values before the one at which it happened, or all of them, and a button that did not come
    // back is as it was. One hash look-up for each record; the order lists and the text are touched once for
    // each new value.
    bool AddRecs(DWORD startRec, DWORD count, const char* const* values, DWORD* outBtnIDs,
                 TCBtnIDAssArr<DWORD>& counts) override;
    // Lets go of `count` records. The link tables have lost them already: a button that has no record left
    // there stays, hidden by VISINFO_NOREC and out of the order lists. Always true.
    bool DeleteRecs(DWORD startRec, DWORD count) override;

    // ResetInsideInfoForSpBtn for every special button above the listed source buttons; above any source
    // button; and for every effective special button. Each is visited once, members before those that hold
    // them.
    virtual void ResetInsideInfoForSpBtnsOfBtns(const std::vector<DWORD>& btnIDs, bool buildRpLink);
    virtual void ResetInsideInfoForSpBtnsOfSrcBtns(bool buildRpLink, bool force);
    virtual void ResetInsideInfoForEffectiveSpBtns(bool buildRpLink);

protected:
    // The empty value is no member while it is hidden.
    bool IsBarredAsMember(DWORD btnID) const noexcept override;
    // A normal button and the empty value too.
    std::unique_ptr<VCBtn> CreateBtnBasedOnBtnID(DWORD btnID) const override;
    std::unique_ptr<VCBtn> CreateBtnBasedOnBtnType(SCBUICoreCom::EBtnType type) const override;
    bool GetBtnTypeBasedOnBtnTypeAttrValue(const char* text, DWORD len,
                                           SCBUICoreCom::EBtnType& type) const override;

    // Called when a source button begins to have records and when it has lost its last: the hook by which
    // classes with order lists of their own keep them. If memory is exhausted in the first, nothing has
    // changed.
    virtual void AdjstAccordingToBtnAppearance(const VCBtn& btn);
    virtual void AdjstAccordingToBtnDisappearance(const VCBtn& btn) noexcept;

    // The value that null stands for among the keys.
    struct SValueHash
    {
        static std::uint64_t Hash(const char* value) noexcept { return SCFnv1a::OfText(value); }
        static bool Equal(const char* left, const char* right) noexcept
        {
            return left == nullptr || right == nullptr ? left == right : std::strcmp(left, right) == 0;
        }
    };

    DWORD fldID;
    const CSourceDataMngr* srcDataMngr; // borrowed
    bool empValBtnDisp;
    DWORD dataBtnNextID;                                    // the next normal identifier
    TCHashMap<const char*, DWORD, SValueHash> valueToBtnID; // the keys are the names of the buttons

    // Lets everything go, the empty-value button too: what a copy that ran out of memory leaves.
    void DropAll() noexcept;

private:
    // Enters the empty-value button; false if its identifier is taken.
    bool CreateEmpValBtn(const char* alias);
    void ClearOwnFields() noexcept;
    void CreateDataBtn(const char* value);
    bool BringBtnBack(VCBtn& btn);
    void ResetInsideInfoAboveBtns(const std::vector<const VCBtn*>& srcBtns, bool buildRpLink, bool force);
};

} // namespace NSKZ::NSKZCore

#endif
