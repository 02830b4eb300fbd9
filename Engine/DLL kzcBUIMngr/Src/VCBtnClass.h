#ifndef VCBTNCLASS_H
#define VCBTNCLASS_H

#include "CSrcBtnDisplay.h"
#include "KzcBUIMngrAPI.h"
#include "SBtnClassIDAndBtnID.h"
#include "SCBUICoreCom.h"
#include "SCFnv1a.h"
#include "TCBtnOrdList.h"
#include "TCHashMap.h"
#include "VCBtn.h"

#include <map>
#include <memory>
#include <set>
#include <vector>

namespace NSKZ::NSKZCore {

class IBnLink;
class IRpLink;

// One analysis item: it owns the buttons of the item, gives them their state of selection and display, and
// keeps the counters that every press asks for. Everything that stays within one item is here; what reaches
// across items is the environment's (CBUIDataMngr), which owns the classes. Records are reached through the
// environment's IRpLink alone.
//
// Registry. `btns` holds every button by identifier. Beside it stand, because walks need them, dense arrays
// for the source buttons, whose identifiers are dense: a pointer each (`srcBtnOfID`) and what decides on
// display (`display`, which also holds the reasons VISINFO_RELATION and VISINFO_LIMITEDREC of source
// buttons); and an ordered map of the special buttons. Every walk whose order can be seen goes by ascending
// identifier.
//
// Selection. A button's `sel` is the truth; `selBtnIDs` remembers which buttons were selected, so that
// dropping a selection costs what was selected and not the size of the class.
//
// One thread at a time. Const operations may sort order lists behind the scenes.
class KZCBUIMNGR_API VCBtnClass
{
public:
    // Flags of the order lists, to be added up.
    static constexpr unsigned int ORDLIST_NORMAL = 0;              // displayed buttons, ascending
    static constexpr unsigned int ORDLIST_DESCEND = 1;             // descending
    static constexpr unsigned int ORDLIST_INCLUDE_NONDISPBTNS = 2; // hidden buttons too, whatever hides them
    static constexpr unsigned int ORDLIST_INCLUDE_CNDCLLMEMBERBTNS = 4; // those too that are hidden only as
                                                                        // members of a condition cll button
    static constexpr unsigned int ORDLIST_TAILEND_EMPVALBTN = 256; // the empty-value button at the very end
    static constexpr unsigned int ORDLIST_TAILEND_CNDCLLBTN = 512; // condition cll buttons at the very end

    // `rpLinkOfEnv` is the environment's own pointer: the class follows it to the table of the moment.
    VCBtnClass(DWORD id, const std::unique_ptr<IRpLink>& rpLinkOfEnv);
    virtual ~VCBtnClass();
    VCBtnClass(const VCBtnClass&) = delete;
    VCBtnClass& operator=(const VCBtnClass&) = delete;

    virtual SCBUICoreCom::EBtnClassType GetBtnClassType() const = 0;

    // --- The class itself. All constant.
    DWORD GetID() const noexcept { return id; }
    bool IsEffective() const noexcept { return effective; }
    // Whether the class as a whole is selected; independent of its buttons.
    bool IsBtnClassSelected() const noexcept { return selected; }
    // Whether buttons that a saved selection does not name come up selected.
    bool IsNewBtnMadeSelState() const noexcept { return newBtnMadeSelState; }
    // Whether buttons of the class are being chosen. While they are, the class keeps its relation marks.
    bool IsBtnSelectiveState() const noexcept { return btnSelState; }
    DWORD GetBtnCount() const noexcept { return static_cast<DWORD>(btns.GetSize()); }
    DWORD GetSelBtnCount() const noexcept { return selBtnCount; }
    bool HasAllBtnsBeenSelected() const noexcept { return selBtnCount == btns.GetSize(); }
    DWORD GetRecCount() const noexcept { return recCount; }

    // --- Buttons by identifier. False, with the output untouched, if the button is absent. Constant.
    bool GetTypeOfBtn(DWORD btnID, SCBUICoreCom::EBtnType& type) const;
    bool GetSelectionInfoOfBtn(DWORD btnID, bool& sel) const;
    // The name may be null: only a normal button has one. It holds until the button's next change.
    bool GetNameOfBtn(DWORD btnID, const char*& name) const;
    // The shown text. It holds until the button's next change.
    bool GetAliasOfBtn(DWORD btnID, const char*& alias) const;
    // All reasons to hide the button, relation and limitation included; 0 means displayed.
    bool GetVisibleInfoOfBtn(DWORD btnID, unsigned int& visibleInfo) const;

    // False also for an ineffective special button.
    bool ExistTheBtn(DWORD btnID) const;
    // Whether a button other than `exceptID` shows exactly the `len` bytes at `text`, whatever hides it;
    // ineffective special buttons do not count. Linear in the buttons.
    bool ExistTheBtn(const char* text, DWORD len, DWORD exceptID = SCBUICoreCom::BTN_ID_UNSETTING) const;

    // --- Populations, by ascending identifier. The output is resized to the result; its size is returned.
    // How many buttons are displayed. Constant but for the special buttons, which are counted one by one.
    DWORD GetDispBtnCount() const;
    // Costs what is selected, sorted. The set form empties its output first.
    DWORD GetSelectedBtnIDList(std::vector<DWORD>& btnIDs) const;
    DWORD GetSelectedBtnIDList(std::set<DWORD>& btnIDs) const;
    DWORD GetDispSelectedBtnIDList(std::vector<DWORD>& btnIDs) const;
    // Linear in the buttons.
    DWORD GetDisplayedBtnIDList(std::vector<DWORD>& btnIDs) const;
    // What conditions look at: the buttons that nothing hides but their being members of a condition cll
    // button.
    DWORD GetDisplayedBtnIDListWhichExpandCndCllBtn(std::vector<DWORD>& btnIDs) const;
    // Ineffective special buttons are left out unless `includeIneffective` is set.
    DWORD GetAllBtnIDList(std::vector<DWORD>& btnIDs, bool includeIneffective) const;
    DWORD GetAllSpBtnIDList(std::vector<DWORD>& btnIDs, bool includeIneffective) const;
    // The virtual classes that refer to this class.
    DWORD GetBtnClassIDListOfRefOrg(std::vector<DWORD>& btnClassIDs) const;

    // --- Orders.
    // Whether a button of that visible info stands in a list with those flags.
    static bool IsIncludInOrdList(unsigned int visibleInfo, unsigned int flags) noexcept;
    // Takes the source buttons in order of first appearance from the table. Throws ECAbnormalData if the
    // table does not know the class; the former order stays then, as it does when memory is exhausted.
    virtual void SetBtnAppOrdList(const IBnLink& bnLink);
    // The buttons in order of first appearance in the source; of shown text; in an order that the host keeps.
    // `flags` are the ORDLIST_ constants; the output is resized to the result. An identifier in `order` that
    // is no button is left out (but not looked up with ORDLIST_INCLUDE_NONDISPBTNS). The first two throw
    // ECAbnormalData if the class's own lists name a button that it does not have. Linear in the buttons;
    // GetBtnNameOrdList also sorts what has entered the list since its last call.
    void GetBtnAppOrdList(unsigned int flags, std::vector<DWORD>& btnIDs) const;
    virtual void GetBtnNameOrdList(unsigned int flags, std::vector<DWORD>& btnIDs) const;
    void GetBtnUnknownOrdList(unsigned int flags, const std::vector<DWORD>& order,
                              std::vector<DWORD>& btnIDs) const;

    // --- Records.
    // The records of one button, united with the `recCount` records that `recList` holds (a count of 0: those
    // alone), ascending. False for a special button that is absent; an absent source button has no records.
    // `recList` and the two `mergeBuffers` have room for every record of the environment each; they may be
    // swapped with each other: whoever owns them keeps copies of the pointers.
    bool GetRecListThatRelatesToBtn(DWORD btnID, DWORD*& recList, DWORD& recCount,
                                    DWORD** mergeBuffers) const;
    // The same for all of `btnIDs`, of which an identifier counts once. False, with the first failing
    // identifier in `failedID`, also for a null class.
    static bool GetRecListThatRelatesToBtns(const VCBtnClass* btnClass, const std::vector<DWORD>& btnIDs,
                                            DWORD*& recList, DWORD& recCount, DWORD** buffers,
                                            DWORD& failedID);

    // --- What the environment changes.
    virtual void Clear();
    // Drops what users added and leaves what the source data gives. Does not throw.
    virtual void ClearOfFixedSpec();
    // Becomes an image of `other`, a class of the same type, with clones of its buttons; references from
    // virtual classes are not taken over. If memory is exhausted the class is left empty.
    virtual void Copy(const VCBtnClass& other, const std::unique_ptr<IRpLink>& rpLinkOfEnv);

    // False if unchanged.
    bool SetEffective(bool isEffective) noexcept;
    // False if unchanged.
    bool SetSelectionInfo(bool isSelected) noexcept;
    void SetNewBtnMadeSelState(bool state) noexcept { newBtnMadeSelState = state; }
    // False, with nothing changed, if unchanged or while a button is selected.
    bool SetBtnSelectiveState(bool state) noexcept;

    // Selects or deselects a button and gives its visible info. False if the button is absent. The first
    // selected button begins the selective state, the last deselected one ends it. If memory is exhausted
    // nothing changes.
    bool SetSelectionInfoOfBtn(DWORD btnID, bool sel, unsigned int& visibleInfo);
    bool SetSelectionInfoOfBtn(DWORD btnID, bool sel);
    // Selects or deselects every button, hidden ones too. Deselecting costs what was selected and does not
    // throw.
    void SetSelectionInfoOfAllBtns(bool sel);

    // Gives the button an alias (see VCBtn::SetAlias) and moves it in the order of names, into which it comes
    // in any case. False if the button is absent. If memory is exhausted nothing changes.
    bool SetAliasOfBtn(DWORD btnID, const char* alias);

    // The relation reason of all buttons: true clears, false sets it; nothing at all in selective state.
    // Constant but for the special buttons.
    void SetVisibleInfoBasedOnRelationOfAllBtns(bool show) noexcept;
    // The same for the limitation, whatever the state. A pass over a byte for each source button.
    void SetVisibleInfoBasedOnLimitedRecListOfAllBtns(bool show) noexcept;
    // Brings the listed buttons back as far as the relation or the limitation goes, and with them the special
    // buttons that hold them. The relation reason stays in selective state. Special and unknown identifiers
    // are passed over.
    bool PutVisibleInfoBasedOnRelationOfBtns(const std::vector<DWORD>& btnIDs);
    bool PutVisibleInfoBasedOnLimitedRecListOfBtns(const std::vector<DWORD>& btnIDs);
    // PutVisibleInfoBasedOnRelationOfBtns for the buttons of the listed records, straight from the table and
    // without a list of buttons in between; to be called after SetVisibleInfoBasedOnRelationOfAllBtns(false).
    // False if the table does not know the class. Linear in the records; nothing is allocated unless a button
    // that special buttons hold comes back.
    bool PutVisibleInfoBasedOnRelationOfRecs(const IBnLink& bnLink, const DWORD* recList,
                                             DWORD recCountOfList);

    // The distinct source buttons of the class that the listed records carry, ascending. False if the table
    // does not know the class. Linear in the records; with few of them the buttons do not count.
    bool GetBtnIDListOfRecs(const IBnLink& bnLink, const DWORD* recList, DWORD recCountOfList,
                            std::vector<DWORD>& btnIDs);

protected:
    // Enters a button. False, and the button is gone, if its identifier is taken. If memory is exhausted
    // nothing changes, but the button is gone too.
    bool RegBtn(std::unique_ptr<VCBtn> btn);
    // Sees to it that the RegBtn of a source button of that identifier cannot run out of memory.
    void MakeRoomForSrcBtn(DWORD btnID);
    // Null if absent. Constant.
    VCBtn* FindBtn(DWORD btnID) noexcept;
    const VCBtn* FindBtn(DWORD btnID) const noexcept;
    // FindBtn for an identifier that the class's own lists name: throws ECAbnormalData if it is absent.
    // `function` and `line` tell where the list was read.
    const VCBtn& GetInsideBtn(DWORD btnID, const char* function, long line) const;
    // Whether a button of one of the class's own lists stands in an order list with those flags. Throws as
    // GetInsideBtn does, but looks nothing up with ORDLIST_INCLUDE_NONDISPBTNS.
    bool IsInsideBtnListed(DWORD btnID, unsigned int flags, const char* function, long line) const
    {
        if ((flags & ORDLIST_INCLUDE_NONDISPBTNS) != 0)
            return true;
        if ((flags & ORDLIST_INCLUDE_CNDCLLMEMBERBTNS) == 0 && display.IsRegistered(btnID))
            return display.IsDisplayed(btnID); // without a look at the button
        return IsListed(GetInsideBtn(btnID, function, line), flags);
    }
    bool IsListed(const VCBtn& btn, unsigned int flags) const noexcept
    {
        return IsIncludInOrdList(GetVisibleInfo(btn), flags);
    }

    unsigned int GetVisibleInfo(const VCBtn& btn) const noexcept;
    // Sets or clears reasons that stand in the button itself, that is, all but relation and limitation of
    // source buttons.
    void SetOwnVisibleInfo(VCBtn& btn, unsigned int bits, bool set) noexcept;
    // To be called after the back-references of `btn` changed.
    void AdjstToBackReferences(const VCBtn& btn) noexcept;

    // Brings a button back as far as `bits` go, and then all special buttons above it. False for null.
    bool PutVisibleInfoOfBtn(VCBtn* btn, unsigned int bits);
    // `bits` may only hold VISINFO_RELATION and VISINFO_LIMITEDREC; false, with nothing changed, for others.
    bool PutVisibleInfoOfBtns(const std::vector<DWORD>& btnIDs, unsigned int bits);

    bool InsertBtnInfoToNameOrdList(const VCBtn* btn);
    bool DeleteBtnInfoFromNameOrdList(const VCBtn* btn) noexcept;

    struct SBtnIDHash
    {
        static std::uint64_t Hash(DWORD btnID) noexcept { return SCFnv1a::OfID(btnID); }
        static bool Equal(DWORD left, DWORD right) noexcept { return left == right; }
    };

    DWORD id;
    bool effective;
    bool selected;
    std::vector<DWORD> appOrdList;
    CTextOrdList nameOrdList;
    TCHashMap<DWORD, std::unique_ptr<VCBtn>, SBtnIDHash> btns;
    bool newBtnMadeSelState;
    bool btnSelState;
    DWORD selBtnCount;
    DWORD recCount; // source records as the class last saw them
    const std::unique_ptr<IRpLink>* rpLink;
    std::map<DWORD, VCBtnClass*> refOrgBtnClasses; // borrowed: virtual classes that refer to this one

    std::vector<VCBtn*> srcBtnOfID;    // by source identifier; null where there is no button
    std::map<DWORD, VCBtn*> spBtnOfID; // special buttons
    CSrcBtnDisplay display;
    std::vector<DWORD> selBtnIDs; // every selected button, in no order; may repeat and name deselected ones
    std::size_t selBtnIDsKept;    // what was left of them when they were last cut down

private:
    using SpBtnsAbove = std::vector<std::pair<VCBtnClass*, DWORD>>;
    void AddSpBtnsAbove(const VCBtn& btn, SpBtnsAbove& spBtns);
    static void PutVisibleInfoOfSpBtnsAbove(SpBtnsAbove& pending, unsigned int bits);
    void ClearVisibleInfo(VCBtn& btn, unsigned int bits) noexcept;
    template <class TVisit>
    void VisitBtnIDsOfRecs(const IBnLink& bnLink, const DWORD* recList, DWORD recCountOfList,
                           const TVisit& visit) const;
    void RememberSelection(DWORD btnID);
    template <class TCondition>
    DWORD ListBtnIDs(std::vector<DWORD>& btnIDs, const TCondition& isListed) const;
    template <class TOrder, class TIsListed>
    static void ListInOrder(const TOrder& order, unsigned int flags, const TIsListed& isListed,
                            std::vector<DWORD>& btnIDs);
};

} // namespace NSKZ::NSKZCore

#endif
