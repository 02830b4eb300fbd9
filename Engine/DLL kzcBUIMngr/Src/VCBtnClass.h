#ifndef VCBTNCLASS_H
#define VCBTNCLASS_H

#include "CSrcBtnDisplay.h"
#include "CXMLReader.h"
#include "CXMLWriter.h"
#include "KzcBUIMngrAPI.h"
#include "SBtnClassIDAndBtnID.h"
#include "SCBUICoreCom.h"
#include "SCFnv1a.h"
#include "SCKZCoreCom.h"
#include "TCBtnIDAssArr.h"
#include "TCBtnOrdList.h"
#include "TCHashMap.h"
#include "VCSpBtn.h"

#include <functional>
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
// Special buttons. A special button lists its members; each member names the special buttons that hold it.
// Both ways are always changed together, and what follows from them, the reasons to hide of members and of
// special buttons above, with them. Nesting may be deep and may share members: walks through it visit each
// button once, members before those that hold them, and do not recurse. A button that selects by list and has
// at least ROW_MEMBER_COUNT members keeps its records in a row of its own of the environment's IRpLink; below
// that, and while memory was too short to bring the row up to date, its records are worked out from its
// members.
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

    // How a word must stand in the text of a button that is searched for.
    enum EOptionOfSearchBtnName : DWORD
    {
        SRCHBTNNAME_MATCH = 1,       // it is the text
        SRCHBTNNAME_FRONT = 2,       // the text begins with it
        SRCHBTNNAME_REAR = 3,        // the text ends with it, byte by byte
        SRCHBTNNAME_INCLUDE_ALL = 4, // it stands in the text, and so does every other word
    };

    // Flags of a search, to be added up: what a vague search is blind to. Only the low eight bits count.
    static constexpr unsigned int SRCH_NORMAL = 0;       // nothing: exact bytes
    static constexpr unsigned int SRCH_VAGUE_WIDTH = 1;  // full and half width
    static constexpr unsigned int SRCH_VAGUE_KANA = 2;   // hiragana and katakana
    static constexpr unsigned int SRCH_VAGUE_CASE = 4;   // upper and lower case
    static constexpr unsigned int SRCH_VAGUE_MACRON = 8; // minus signs and the long-vowel mark
    static constexpr unsigned int SRCH_VAGUE_ALL = 255;

    // How many members a button that selects by list has when it gets a row of records of its own.
    static constexpr std::size_t ROW_MEMBER_COUNT = 400;

    // What became of the making of a special button. The values 1 and 5 are those of CBUIDataMngr.
    enum EMthRetOfCreateSpBtn : DWORD
    {
        CREATESPBTN_OK = 0,
        CREATESPBTN_NOBTNCLASS = 1,    // the class does not exist
        CREATESPBTN_NOID = 2,          // the identifiers of the kind are used up
        CREATESPBTN_DUPLICATEID = 4,   // the identifier is taken
        CREATESPBTN_BADTYPE = 5,       // a type of button that is not made this way
        CREATESPBTN_UNKNOWNSELMTH = 6, // members are picked neither by list nor by condition
        CREATESPBTN_BADMEMBER = 7,     // CheckAppropriateMmbBtnOrNot refused the members
        CREATESPBTN_NULL = 4294967295, // there is no button to register
    };

    // What became of a change of a member list. The values 2 and 3 are those of CBUIDataMngr.
    enum EMthRetOfOpeToMmbBtnIDList : DWORD
    {
        OPEMMBBTN_OK = 0,
        OPEMMBBTN_NOSPBTN = 1,    // no special button of the class
        OPEMMBBTN_NOTSELECT = 2,  // the button does not select by list
        OPEMMBBTN_SYSTEMMNGR = 3, // the system manages the button
        OPEMMBBTN_BADMEMBER = 4,  // CheckAppropriateMmbBtnOrNot refused the members
        OPEMMBBTN_NOMEMBER = 6,   // to be added: a member already; to be deleted: no member
    };

    enum EMthRetOfGetMmbBtnCnd : DWORD
    {
        GETMMBBTNCND_OK = 0,
        GETMMBBTNCND_NOSPBTN = 1, // no special button of the class
        GETMMBBTNCND_NOCND = 2,   // the button has no condition
    };

    enum EMthRetOfSetMmbBtnCnd : DWORD
    {
        SETMMBBTNCND_OK = 0,
        SETMMBBTNCND_NOSPBTN = 1,   // no special button of the class
        SETMMBBTNCND_NOTCNDBTN = 2, // the button does not select by condition
    };

    // --- Saved forms: the element "BtnClass", in two forms. The common one holds what follows from the
    // source data, the fixed one what users fixed. Doc/saved-environment.md shows both.
    static constexpr char STR_ELENAME_BTNCLASS[] = "BtnClass";
    static constexpr DWORD STRLEN_ELENAME_BTNCLASS = sizeof STR_ELENAME_BTNCLASS - 1;
    static constexpr char STR_ELENAME_BTNS[] = "Btns";
    static constexpr DWORD STRLEN_ELENAME_BTNS = sizeof STR_ELENAME_BTNS - 1;
    static constexpr char STR_ELENAME_INCBTN[] = "IncBtn";
    static constexpr DWORD STRLEN_ELENAME_INCBTN = sizeof STR_ELENAME_INCBTN - 1;
    static constexpr char STR_ELENAME_CLLBTN[] = "CllBtn";
    static constexpr DWORD STRLEN_ELENAME_CLLBTN = sizeof STR_ELENAME_CLLBTN - 1;
    static constexpr char STR_ATTRNAME_ID[] = "id";
    static constexpr DWORD STRLEN_ATTRNAME_ID = sizeof STR_ATTRNAME_ID - 1;
    static constexpr char STR_ATTRNAME_TYPE[] = "type";
    static constexpr DWORD STRLEN_ATTRNAME_TYPE = sizeof STR_ATTRNAME_TYPE - 1;
    static constexpr char STR_ATTRNAME_NEXTID[] = "nextID";
    static constexpr DWORD STRLEN_ATTRNAME_NEXTID = sizeof STR_ATTRNAME_NEXTID - 1;
    static constexpr char STR_ATTRNAME_BLANKIDLIST[] = "blankIDList";
    static constexpr DWORD STRLEN_ATTRNAME_BLANKIDLIST = sizeof STR_ATTRNAME_BLANKIDLIST - 1;
    static constexpr char STR_ATTRNAME_BTNSELSTATE[] = "btnSelState";
    static constexpr DWORD STRLEN_ATTRNAME_BTNSELSTATE = sizeof STR_ATTRNAME_BTNSELSTATE - 1;
    static constexpr char STR_ATTRNAME_NEWBTNMADESELSTATE[] = "newBtnMadeSelState";
    static constexpr DWORD STRLEN_ATTRNAME_NEWBTNMADESELSTATE = sizeof STR_ATTRNAME_NEWBTNMADESELSTATE - 1;
    // A prefix for hosts that give names a namespace; no name here has it.
    static constexpr char STR_PREFIX_KZCS[] = "kzcs:";
    static constexpr DWORD STRLEN_PREFIX_KZCS = sizeof STR_PREFIX_KZCS - 1;

    // The word for a type of class in the attribute "type", and the reverse: false, with the output
    // untouched, for a word that is none. The first gives null for a type that is none.
    static const char* GetBtnClassTypeAttrValue(SCBUICoreCom::EBtnClassType type) noexcept;
    static bool GetBtnClassTypeBasedOnAttrValue(const char* text, DWORD len,
                                                SCBUICoreCom::EBtnClassType& type) noexcept;

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
    DWORD GetIneffectiveBtnCount() const noexcept { return ineffectiveBtnCount; }
    // Special buttons that the system itself manages: none in a class whose special buttons are all users'.
    virtual DWORD GetSystemMngrSpBtnCount() const { return 0; }
    // Ineffective ones too.
    bool HasSpBtns() const noexcept { return !spBtnOfID.empty(); }
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
    // The displayed buttons as they are with each condition cll button shown as its members: those that
    // nothing hides but such a button, and no condition cll button. Linear in the result and the special
    // buttons, and after a change of the display in the buttons.
    DWORD GetDisplayedBtnIDListWhichExpandCndCllBtn(std::vector<DWORD>& btnIDs) const;
    // Ineffective special buttons are left out unless `includeIneffective` is set.
    DWORD GetAllBtnIDList(std::vector<DWORD>& btnIDs, bool includeIneffective) const;
    DWORD GetAllSpBtnIDList(std::vector<DWORD>& btnIDs, bool includeIneffective) const;
    // The ineffective special buttons.
    DWORD GetAllUneffectiveBtnIDList(std::vector<DWORD>& btnIDs) const;
    // The virtual classes that refer to this class.
    DWORD GetBtnClassIDListOfRefOrg(std::vector<DWORD>& btnClassIDs) const;

    // --- Orders.
    // Whether a button of that visible info stands in a list with those flags.
    static bool IsIncludInOrdList(unsigned int visibleInfo, unsigned int flags) noexcept;
    // Takes the source buttons in order of first appearance from the table. Throws ECAbnormalData if the
    // table does not know the class; the former order stays then, as it does when memory is exhausted.
    virtual void SetBtnAppOrdList(const IBnLink& bnLink);
    // The buttons in order of first appearance in the source; of shown text; in an order that the host keeps.
    // In the first, special buttons stand in front, oldest first; with ORDLIST_DESCEND behind, newest first.
    // Condition cll buttons that go to the end are never reversed. A class of numbers has its special buttons
    // by text in front in its order of shown texts.
    // `flags` are the ORDLIST_ constants; the output is resized to the result. An identifier in `order` that
    // is no button is left out (but not looked up with ORDLIST_INCLUDE_NONDISPBTNS). The first two throw
    // ECAbnormalData if the class's own lists name a button that it does not have. Linear in the buttons;
    // GetBtnNameOrdList also sorts what has entered the list since its last call.
    void GetBtnAppOrdList(unsigned int flags, std::vector<DWORD>& btnIDs) const;
    virtual void GetBtnNameOrdList(unsigned int flags, std::vector<DWORD>& btnIDs) const;
    void GetBtnUnknownOrdList(unsigned int flags, const std::vector<DWORD>& order,
                              std::vector<DWORD>& btnIDs) const;

    // --- Search by shown text. A word and a text are compared as they are, or with flags as
    // ConvertStringForVagueSearch makes them, each text once. A null word is the empty one. All options but
    // SRCHBTNNAME_INCLUDE_ALL look at the first word alone; a text that is shorter than the word in bytes
    // does not fit. With SRCH_VAGUE_MACRON as the only flag all lengths count as 0, so that every text fits
    // but with SRCHBTNNAME_INCLUDE_ALL. False for no word, with `found` untouched, and if a text cannot be
    // converted. Throws ECAbnormalData for an option that is none, as soon as a text is long enough. Linear
    // in the texts.

    // Searches the listed buttons; `found` becomes the positions of those that fit, ascending. An identifier
    // that is no button does not fit. With `firstOnly` the search ends at the first that fits.
    bool SearchTheBtnByAlias(const std::vector<DWORD>& btnIDs, const std::vector<const char*>& words,
                             EOptionOfSearchBtnName option, unsigned int flags, bool firstOnly,
                             std::vector<DWORD>& found) const;
    // Searches all buttons, ineffective ones and those without records too; `found` becomes the identifiers.
    bool SearchTheBtnByAlias(const std::vector<const char*>& words, EOptionOfSearchBtnName option,
                             unsigned int flags, std::vector<DWORD>& found) const;
    // Makes of a text, which is followed by a NUL, what vague searches compare, and writes it to `dst` with
    // its NUL: in half width, katakana and lower case, and with long-vowel marks for minus signs, as the
    // flags tell. With half width only the half-width minus sign is looked for. `dstLen` becomes the length,
    // but stays untouched where SRCH_VAGUE_MACRON is the only flag. False if `dst`, of `dstSize` bytes, is
    // too short: twice the length and the NUL is enough in code page 932, three times in 65001; and for flags
    // without a low bit.
    static bool ConvertStringForVagueSearch(const char* src, DWORD srcLen, unsigned int flags, DWORD dstSize,
                                            char* dst, DWORD& dstLen);

    // --- Special buttons: queries. False, with the output untouched, for an identifier that is absent or not
    // special. Constant where nothing else is told.
    bool GetEffectiveInfoOfSpBtn(DWORD btnID, bool& isEffective) const;
    bool GetMmbBtnSelMthOfSpBtn(DWORD btnID, VCSpBtn::EMmbBtnSelMth& selMth) const;
    bool GetMemberBtnCountOfSpBtn(DWORD btnID, DWORD& count) const;
    // The members in their order: a copy, or the list itself, good until the class changes.
    bool GetMemberBtnIDListOfSpBtn(DWORD btnID, std::vector<DWORD>& mmbBtnIDs) const;
    bool GetMemberBtnIDListOfSpBtn(DWORD btnID, const std::vector<DWORD>*& mmbBtnIDs) const;
    // The condition itself, good until the button changes.
    EMthRetOfGetMmbBtnCnd GetMemberBtnCndOfSpBtn(DWORD btnID, const IBtnCnd*& cnd) const;
    // Whether the members of an inc button stay displayed; false also for a button that is no inc button.
    bool GetDispMemberBtnInfoOfIncBtn(DWORD btnID, bool& disp) const;
    // Whether a special button is managed by users (true) or by the system. Here true for every identifier of
    // a special kind, present or not.
    virtual bool GetBtnMngrInfoOfSpBtn(DWORD btnID, bool& managedByUser) const;
    // The special buttons of the class that hold a button, ascending, those that an ineffective button will
    // return to included; false for an absent button only.
    bool GetSpBtnIDListIncludingSpecifiedBtn(DWORD btnID, std::vector<DWORD>& spBtnIDs) const;
    // The special buttons above a button that no further one holds, ascending. Ineffective ones count with
    // `includeIneffective`. False for an absent button. Linear in what is above and, with the flag, in the
    // members of ineffective buttons.
    bool GetRootSpBtnIDListIncludingBtn(DWORD btnID, bool includeIneffective,
                                        std::vector<DWORD>& spBtnIDs) const;
    // Adds to `spBtns` all special buttons above a button, across classes, or only those that hold it itself.
    void GetSpBtnIDListThatTheSpecifiedBtnInfluences(DWORD btnID, std::set<SBtnClassIDAndBtnID>& spBtns,
                                                     bool directOnly) const;
    // Adds the source buttons that a special button stands for in the end, across classes; in the second form
    // a virtual inc button counts as one of them, and none is looked into. False, with what was added until
    // then, for a button that is not special, a virtual inc button whose class is missing, and a member of an
    // inc or cll button that is neither a source button nor a special button of the class; what is missing
    // among the members of a virtual inc button adds nothing. Linear in the members below.
    bool GetMinimumMemberBtnIDListOfSpBtn(DWORD btnID, std::set<SBtnClassIDAndBtnID>& btns) const;
    bool GetMinimumMemberBtnIDListInThisBtnClassOfSpBtn(DWORD btnID, std::set<DWORD>& btnIDs) const;
    // Whether the records of the button have a row in IRpLink: true for every identifier that is not special.
    bool IsBtnWithRpLink(DWORD btnID) const;

    // --- Special buttons: changes. Where members change, each special button above is brought up to date.
    // Costs the members, and the buttons and rows above. If memory is exhausted nothing has changed, except
    // where something else is told.

    // Makes an inc or a cll button that shows `alias`, with the given members or a clone of the condition,
    // either of which may be null; which of them counts is told by `selMth`. A released identifier is given
    // out again first, the smallest one. On a refusal `btnID` is untouched, and an identifier that was new is
    // a released one.
    EMthRetOfCreateSpBtn CreateIncBtn(const char* alias, VCSpBtn::EMmbBtnSelMth selMth,
                                      const std::vector<DWORD>* members, const IBtnCnd* cnd, DWORD& btnID);
    EMthRetOfCreateSpBtn CreateCllBtn(const char* alias, VCSpBtn::EMmbBtnSelMth selMth,
                                      const std::vector<DWORD>* members, const IBtnCnd* cnd, DWORD& btnID);
    // Destroys it and releases its identifier; false if there is no button of the kind. It leaves those that
    // hold it, ineffective ones too, and lets its members go. A selected one lowers the count of selected
    // buttons. If memory is exhausted nothing has changed, or all has and rows above are outdated.
    virtual bool DestroyIncBtn(DWORD btnID);
    virtual bool DestroyCllBtn(DWORD btnID);
    // Switches a special button off or on. Off, it leaves those that hold it and lets its members go, but
    // both sides are remembered, and on again they are put back. False for no special button; true if
    // unchanged. If memory is exhausted nothing has changed, or all has and rows above are outdated.
    virtual bool SetEffectiveInfoOfSpBtn(DWORD btnID, bool isEffective);
    // Replaces the members; an identifier counts once, in first place. An ineffective button stores the list;
    // the members learn of it when it is effective again.
    virtual EMthRetOfOpeToMmbBtnIDList SetMemberBtnIDListOfSpBtn(DWORD btnID,
                                                                 const std::vector<DWORD>& mmbBtnIDs);
    // Adds a member at the end, without a test of whether it is appropriate, or takes one out. Adding a
    // button that holds this one closes a loop: walks end all the same, but SetMemberBtnIDListOfSpBtn is
    // the operation that refuses it. VISINFO_NOMEMBER is not touched by adding.
    virtual EMthRetOfOpeToMmbBtnIDList AddMemberBtnIDListOfSpBtn(DWORD btnID, DWORD mmbBtnID);
    virtual EMthRetOfOpeToMmbBtnIDList DeleteMemberBtnIDListOfSpBtn(DWORD btnID, DWORD mmbBtnID);
    // Keeps a clone of the condition in place of the one held; members stay until the environment asks for
    // them.
    EMthRetOfSetMmbBtnCnd SetMemberBtnCndOfSpBtn(DWORD btnID, const IBtnCnd& cnd);
    // Lets the condition go. False for no special button.
    bool ClearMemberBtnCndOfSpBtn(DWORD btnID);
    // Whether the members of an inc button stay displayed. False for no inc button; true if unchanged.
    bool SetDispMemberBtnInfoOfIncBtn(DWORD btnID, bool disp);
    // Works out anew what follows from the members of a special button, and of all above it: whether a member
    // is alive, and with `buildRpLink` its row of records. `force` false passes over the buttons of a common
    // virtual class. False for no special button. If memory is exhausted rows may stay outdated, which costs
    // time and no truth.
    bool ResetInsideInfoForSpBtn(DWORD btnID, bool buildRpLink, bool force);
    // The rows of records of special buttons are not to be relied on until each is made anew.
    void CallRowsOutdated() noexcept;
    // Works out for every special button of the classes whether a member is alive, members first: to be
    // called when the limitation has changed.
    static void ResetLiveMemberInfoOfAllSpBtns(const std::vector<VCBtnClass*>& btnClasses);
    // Makes what was read of members true: of the members of every special button that selects by list those
    // are dropped that there are not, that may be none, that stand there twice or that close a loop, and the
    // others learn of it. What a button of a common virtual class lists of special buttons that users fix may
    // come later and stays. To be called when all classes that refer to each other are there; called again it
    // changes nothing more. Linear in the members.
    static void SettleMembers(const std::vector<VCBtnClass*>& btnClasses);
    // While the tables follow a change of records, rows of special buttons are not made but called outdated;
    // BuildOutdatedRows is to be called behind it.
    void DeferRows(bool deferred) noexcept { areRowsDeferred = deferred; }
    // Makes the rows of records that are outdated in these classes, and above them. If memory is exhausted
    // some stay so.
    static void BuildOutdatedRows(const std::vector<VCBtnClass*>& btnClasses);
    // Whether the children of the element that was read last were all there that must be.
    bool CheckWhetherAllRequiredChildElementsAppeared() const noexcept { return allRequiredChildAppeared; }
    // The same for one class when there is no memory for it: again and again over all buttons until nothing
    // changes. Whether anything did: it is called for all classes until nothing does.
    bool ResetLiveMemberInfoOfAllSpBtnsWithoutMemory() noexcept;

    // --- Records.
    // The records of one button, united with the `recCount` records that `recList` holds (a count of 0: those
    // alone), ascending. False for a special button that is absent; an absent source button has no records,
    // and neither has an ineffective special button. Throws ECAbnormalData for a special button with a member
    // that is a special button the class does not have.
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

    // Follows records that came to the table or left it, `count` from `startRec` on. What they do with the
    // arrays, and what false means, is told by the classes.
    virtual bool AddRecs(DWORD startRec, DWORD count, const char* const* values, DWORD* outBtnIDs,
                         TCBtnIDAssArr<DWORD>& counts) = 0;
    virtual bool DeleteRecs(DWORD startRec, DWORD count) = 0;
    // Counts records that came to the table without being read: none of the buttons gets any of them.
    void AddUnreadRecs(DWORD count) noexcept { recCount += count; }
    // Sees to it that the virtual classes that refer to this one let go of its buttons: to be called before
    // the class is destroyed. If memory is exhausted some of their buttons are ineffective, and the rest is
    // as it was.
    void LetReferringClassesGo();
    virtual void Clear();
    // Drops what users added and leaves what the source data gives. Does not throw.
    virtual void ClearOfFixedSpec();
    // Becomes an image of `other`, a class of the same type, with clones of its buttons; references from
    // virtual classes are not taken over. If memory is exhausted the class is left empty.
    virtual void Copy(const VCBtnClass& other, const std::unique_ptr<IRpLink>& rpLinkOfEnv);

    // False if unchanged. An ineffective class switches off the virtual inc buttons of other classes that
    // hold its buttons, and effective again it switches them on. If memory is exhausted the class is as it
    // was, but some of those buttons are switched already: to be called again.
    bool SetEffective(bool isEffective);
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
    // Brings a special button that selects by condition back as far as the relation goes, unless the class is
    // in selective state; false for any other button.
    bool PutVisibleInfoBasedOnRelationOfCndSpBtn(DWORD btnID);
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
    // Enters a button, which is a VCSpBtn if its identifier is not a source button's. False, and the button
    // is gone, if its identifier is taken. If memory is exhausted nothing changes, but the button is gone
    // too.
    bool RegBtn(std::unique_ptr<VCBtn> btn);
    // Lets a special button go: false if there is none of that identifier. What refers to it stays.
    bool UnregSpBtn(DWORD btnID) noexcept;
    // Sees to it that the RegBtn of a source button of that identifier cannot run out of memory.
    void MakeRoomForSrcBtn(DWORD btnID);
    // Null if absent. Constant.
    VCBtn* FindBtn(DWORD btnID) noexcept;
    const VCBtn* FindBtn(DWORD btnID) const noexcept;
    // The same for special buttons; null for others.
    VCSpBtn* FindSpBtn(DWORD btnID) noexcept;
    const VCSpBtn* FindSpBtn(DWORD btnID) const noexcept;
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
    // To be called after the button's own visible info changed otherwise.
    void TellDisplayOfOwnReasons(const VCBtn& btn) noexcept;
    // To be called after the back-references of `btn` changed.
    void AdjstToBackReferences(const VCBtn& btn) noexcept;

    // Brings a button back as far as `bits` go, and then all special buttons above it. False for null.
    bool PutVisibleInfoOfBtn(VCBtn* btn, unsigned int bits);
    // `bits` may only hold VISINFO_RELATION and VISINFO_LIMITEDREC; false, with nothing changed, for others.
    bool PutVisibleInfoOfBtns(const std::vector<DWORD>& btnIDs, unsigned int bits);

    class CSpBtnWalk;
    class COrdListBuilder;

    // New buttons of a kind, in their first state, without an identifier: null for a kind that the class does
    // not make. The kind is told by an identifier, by a type, or by the word for the type.
    virtual std::unique_ptr<VCBtn> CreateBtnBasedOnBtnID(DWORD btnID) const;
    virtual std::unique_ptr<VCBtn> CreateBtnBasedOnBtnType(SCBUICoreCom::EBtnType type) const;
    std::unique_ptr<VCBtn> CreateBtnBasedOnBtnTypeAttrValue(const char* text, DWORD len) const;
    virtual bool GetBtnTypeBasedOnBtnTypeAttrValue(const char* text, DWORD len,
                                                   SCBUICoreCom::EBtnType& type) const;

    // Whether the button selects by list and is large enough for a row of its own. False for null.
    static bool IsSpBtnWithRpLink(const VCSpBtn* spBtn) noexcept;
    static bool IsCndCllBtn(const VCBtn& btn) noexcept;
    // Special buttons that are, or are not only, effective, by identifier.
    DWORD GetAllSpBtnList(std::map<DWORD, VCSpBtn*>& spBtns, bool includeIneffective) const;
    // The identifiers of a kind of special button.
    struct SSpBtnIDs
    {
        DWORD& nextID; // the next one that was never used
        DWORD endID;   // the last one of the kind
        std::set<DWORD>& blankIDs;
    };
    // Takes an identifier, makes a special button of it and enters that. An identifier that was not used
    // comes back as a released one.
    EMthRetOfCreateSpBtn CreateSpBtn(const std::function<std::unique_ptr<VCSpBtn>(DWORD)>& make,
                                     const char* alias, const std::vector<DWORD>* members, const IBtnCnd* cnd,
                                     const SSpBtnIDs& ids, DWORD& btnID);
    // Enters a special button with its alias and its members or condition. On a refusal the button is gone.
    EMthRetOfCreateSpBtn RegSpBtn(std::unique_ptr<VCSpBtn> spBtn, const char* alias,
                                  const std::vector<DWORD>* members, const IBtnCnd* cnd);
    // Destroys a special button of that type and enters its identifier among the released ones. False if
    // there is none.
    bool DestroyBtn(DWORD btnID, SCBUICoreCom::EBtnType type, std::set<DWORD>& blankIDs);
    // The class whose buttons the members of a special button are: this one, or the one that a virtual inc
    // button refers to, which may be missing (null).
    virtual VCBtnClass* GetBtnClassOfMembers(const VCSpBtn& spBtn) const noexcept;
    // Appends the classes that buttons of this one refer to.
    virtual void AddRefBtnClasses(std::vector<const VCBtnClass*>& classes) const;
    // Called before a class that this one refers to goes: its buttons leave all members here. The second form
    // only lets go of the class itself.
    virtual void LoseRefBtnClass(DWORD refBtnClassID);
    virtual void ForgetRefBtnClass(DWORD refBtnClassID) noexcept;
    // Whether the class keeps a source button from being a member at present.
    virtual bool IsBarredAsMember(DWORD btnID) const noexcept;
    // Whether the list may become the members of the button: every special member exists and selects by list,
    // and none holds the button, at any depth, across classes and counting what ineffective buttons remember.
    // Of source buttons only a barred one is refused; other identifiers are not looked at. False for null and
    // where the class of the members is missing.
    bool CheckAppropriateMmbBtnOrNot(const VCSpBtn* spBtn, const std::vector<DWORD>& mmbBtnIDs) const;
    // Whether the button `targetBtnID` of the class `btnClassID` is the special button of this class, or a
    // member of it at any depth and across classes.
    bool CheckWhetherToHaveSpecificBtnID(DWORD spBtnID, DWORD btnClassID, DWORD targetBtnID) const;
    // Makes the members know of the button (`add`) or forget it, and sets the reasons that follow for them.
    // Being a member of a virtual inc button is no reason to hide. False for null and where the class of the
    // members is missing. If memory is exhausted nothing changes; forgetting does not throw.
    bool AdjstRelatedInfoOnMmbBtnOfSpBtn(VCSpBtn* spBtn, bool add);
    // Takes a button out of the lists of all special buttons that hold it, or (`add`) puts one that is
    // effective again back into the lists of those that it remembers. Its own side is not changed, except
    // that it forgets a special button that is ineffective itself: that one stores it, and tells it when it
    // is effective again. The special buttons are not brought up to date, and for putting back there is room
    // in their lists. False for null.
    bool AdjstRelatedInfoBtnIncludingOneself(VCBtn* btn, bool add) noexcept;
    // Takes a member out of a list and does nothing else.
    EMthRetOfOpeToMmbBtnIDList DeleteMemberBtnIDListOfSpBtn_Inside(DWORD btnID, DWORD mmbBtnID) noexcept;
    // Lets ineffective special buttons, those of virtual classes that refer to this one too, forget members
    // that go.
    void LetIneffectiveSpBtnsForgetMembers(const std::function<bool(DWORD)>& isGone) noexcept;
    // Lets them forget a button that goes: as a member and as one to return to.
    void LetIneffectiveSpBtnsForget(const VCBtn& btn) noexcept;
    // Lets the class and its ineffective special buttons forget what they would bring back or return to in a
    // virtual class that goes.
    void ForgetSpBtnsToReturnTo(DWORD virBtnClassID) noexcept;
    // Whether a member of inc buttons is displayed beside them: it is in none, or one displays its members.
    bool GetBtnDispInfoAsMmbBtn(const VCBtn& btn) const noexcept;
    // Sets or clears VISINFO_NOLIVEMEMBER.
    void AdjstVisibleInfoBasedOnTheMmbBtnStateChangeOfSpBtn(VCSpBtn& spBtn) noexcept;
    // The records of the members, ascending; `recList` has room for every record of the class. False where
    // the class of the members is missing, and for an inc or cll button with a member that does not exist.
    bool GetRecListThatRelatesToMemberBtns(const VCSpBtn& spBtn, DWORD* recList, DWORD& recCountOfList) const;

    using SpBtnsOfClasses = std::vector<std::pair<VCBtnClass*, VCSpBtn*>>;
    // Appends the special buttons that hold a button itself, across classes.
    void AddSpBtnsAbove(const VCBtn& btn, SpBtnsOfClasses& spBtns);
    // Those of them that are effective: an ineffective button remembers others too.
    SpBtnsOfClasses ListEffectiveHolders(const VCBtn& btn);
    // The special buttons of `starts` and all effective ones above them, each once and members before those
    // that hold them.
    static SpBtnsOfClasses ListWithAllAbove(const SpBtnsOfClasses& starts);
    // Brings what follows from the members up to date, for buttons in the order of ListWithAllAbove: first
    // whether a member is alive, which does not throw, then the rows of records.
    static void ResetInsideInfoForSpBtns(const SpBtnsOfClasses& spBtns, bool buildRpLink, bool force);

    // Changes of many special buttons in one step, for a class that makes and fills some by itself. What is
    // above them is brought up to date once, so the cost is that of the members and not of the buttons times
    // what is above.
    struct SSpBtnAndMembers
    {
        VCSpBtn* spBtn;
        std::vector<DWORD> mmbBtnIDs;
    };
    // Gives each of the effective inc or cll buttons its new members, which are source buttons; the lists are
    // moved out. A source button stands in one of the lists at most. If memory is exhausted nothing has
    // changed, or all has and rows of records are outdated.
    void SetMemberBtnIDListOfSpBtns(std::vector<SSpBtnAndMembers>& changes);
    // Destroys cll buttons as DestroyCllBtn does each of them; those that are not there are passed over. If
    // memory is exhausted nothing has changed but rows of records that are outdated, or all has.
    void DestroyCllBtns(const std::set<DWORD>& btnIDs);

    // --- Saving and reading. `folder` is where the files of the link tables are and, as `withData`, handed
    // through. Writing is false as CXMLWriter tells, or with the last error ERROR_INVALID_DATA; an unknown
    // form throws ECAbnormalData. Reading leaves the reader on the level of the element it was called on. If
    // memory is exhausted in it the class is to be cleared.
    using Attributes = std::vector<IXMLIO::SAttribute>;
    using EMthRetOfReadXML = CXMLReader::EMthRetOfReadXML;

    // "id", `attr1`, `attr2`, then `commonAttr` in the common form or the flags of the fixed one, then
    // `attributes`. Each of the three may be null.
    bool WriteStartTagPartOfSpecByXML(CXMLWriter& writer, const Attributes& attributes,
                                      SCKZCoreCom::ESpecType specType, const IXMLIO::SAttribute* commonAttr,
                                      const IXMLIO::SAttribute* attr1, const IXMLIO::SAttribute* attr2) const;
    virtual bool WriteChildElementsPartOfSpecByXML(const char* folder, CXMLWriter& writer, bool withData,
                                                   SCKZCoreCom::ESpecType specType) const;
    bool WriteEndTagPartOfSpecByXML(CXMLWriter& writer) const;
    bool WriteBtnsSpecByXML(const char* folder, CXMLWriter& writer, bool withData,
                            SCKZCoreCom::ESpecType specType) const;
    // An element that tells the identifiers of a kind. The text of released ones is cut at a comma where it
    // would be longer than CXMLWriter::WRITING_BUFFER_SIZE: the greatest are not used again after reading.
    static bool WriteBtnIDSpecByXML(CXMLWriter& writer, const char* tag, DWORD tagLen, DWORD nextID,
                                    const std::set<DWORD>& blankIDs);
    // False, with what was read until then, if "nextID" is missing or no identifier, or a list is none.
    static bool ReadBtnIDSpecByXML(Attributes& attributes, DWORD& nextID, std::set<DWORD>& blankIDs);
    // Writes the element of a kind of special button unless none was ever made; the identifiers of those that
    // are not saved are free in it.
    bool WriteSpBtnIDSpecByXML(CXMLWriter& writer, const char* tag, DWORD tagLen, SCBUICoreCom::EBtnType type,
                               DWORD beginID, DWORD nextID, const std::set<DWORD>& blankIDs) const;

    // Begins the reading: clears the class, or what users fixed of it, and takes what the start tag tells.
    // What was taken is blank in `attributes` afterwards.
    virtual EMthRetOfReadXML ReadStartTagPartOfSpecByXML(const char* tag, DWORD tagLen,
                                                         Attributes& attributes,
                                                         SCKZCoreCom::ESpecType specType, DWORD recCountOfEnv,
                                                         const std::unique_ptr<IRpLink>& rpLinkOfEnv);
    // Reads the child that the reader is on and those behind it. READXML_BADFORMAT if one that must be there
    // did not appear. Identifiers are repaired by what was read.
    EMthRetOfReadXML ReadChildElementPartsOfSpecByXML(const char* folder, CXMLReader& reader,
                                                      SCKZCoreCom::ESpecType specType);
    // READXML_UNKNOWNELEMENT for a child that the class does not know in that form.
    virtual EMthRetOfReadXML ReadChildElementPartOfSpecByXML(const char* folder, CXMLReader& reader,
                                                             SCKZCoreCom::ESpecType specType);
    virtual EMthRetOfReadXML ReadBtnsSpecByXML(const char* folder, CXMLReader& reader,
                                               SCKZCoreCom::ESpecType specType);
    // READXML_BADFORMAT also for a button that was read already, for one whose type and identifier do not
    // agree, and for an identifier far beyond what the document can be meant to have.
    virtual EMthRetOfReadXML ReadBtnSpecByXML(const char* folder, CXMLReader& reader, DWORD btnID,
                                              bool hasRecInfo, SCKZCoreCom::ESpecType specType);
    // Whether the type that the element tells, if it does, is that of the identifier.
    bool IsTypeOfElement(const CXMLReader& reader, DWORD btnID) const;
    // Whether the definition of a special button is part of the common form: here of none.
    virtual bool IsInCommonForm(const VCSpBtn& spBtn) const noexcept;
    // Takes the room that registering a button needs out of what the document may ask for; false if it has no
    // such room left.
    bool TakeRoomFor(CXMLReader& reader, DWORD btnID) const noexcept;
    // To be called for a button whose selection was read.
    void NoteReadSelection(const VCBtn& btn);
    // Sees to it that the next identifiers are above all that are in use and released ones are free.
    virtual void RepairIDs(CXMLReader& reader, SCKZCoreCom::ESpecType specType);
    // The same for one kind, whose identifiers are from `beginID` to `endID`.
    void RepairIDsOfKind(CXMLReader& reader, DWORD beginID, DWORD endID, DWORD& nextID,
                         std::set<DWORD>& blankIDs) const;

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
    DWORD spBtnCount;          // effective special buttons
    DWORD ineffectiveBtnCount; // ineffective special buttons
    DWORD recCount;            // source records as the class last saw them
    bool areRowsDeferred;      // rows of records are called outdated where they would be made
    const std::unique_ptr<IRpLink>* rpLink;
    DWORD incNextID;                // the next inc identifier that was never used
    std::set<DWORD> incBlankIDList; // released inc identifiers
    DWORD cllNextID;                // the same for cll buttons
    std::set<DWORD> cllBlankIDList;
    std::map<DWORD, VCBtnClass*> refOrgBtnClasses; // borrowed: virtual classes that refer to this one
    // While the class is ineffective: the virtual inc buttons of other classes that it switched off.
    std::set<SBtnClassIDAndBtnID> ineffectiveOuterSpBtns;

    std::vector<VCBtn*> srcBtnOfID;      // by source identifier; null where there is no button
    std::map<DWORD, VCSpBtn*> spBtnOfID; // special buttons
    bool hasAbsentSpMembers;             // a special button that was not there may be listed as a member
    CSrcBtnDisplay display;
    std::vector<DWORD> selBtnIDs;  // every selected button, in no order; may repeat and name deselected ones
    std::size_t selBtnIDsKept;     // what was left of them when they were last cut down
    bool allRequiredChildAppeared; // in the element that was read last

private:
    static void AdjstVisibleInfoOfSpBtns(CSpBtnWalk& walk, unsigned int bits);
    friend class CVirBtnClass;

    struct SRecSources;

    bool WriteBtnSpecByXML(const char* folder, CXMLWriter& writer, bool withData,
                           SCKZCoreCom::ESpecType specType, bool defaultSel, const VCBtn& btn) const;
    bool IsSaved(const VCSpBtn& spBtn) const noexcept;
    void DropImpossibleMembers();
    void DropMemberOfReadList(VCSpBtn& spBtn, std::size_t position) noexcept;
    static void BreakLoops(const std::vector<VCBtnClass*>& btnClasses);
    DWORD GetEndIDInUse(DWORD beginID, DWORD endID) const noexcept;

    void ForgetReferringClasses() noexcept;
    void ChangeMemberBtnIDListOfSpBtn(VCSpBtn& spBtn, std::vector<DWORD> mmbBtnIDs);
    // The same with VISINFO_NOMEMBER as `noMember` has it; `letFormerGo` false if the former members stay.
    void ReplaceMembers(VCSpBtn& spBtn, std::vector<DWORD> mmbBtnIDs, unsigned int noMember,
                        bool letFormerGo);
    // Sees to it that each of the buttons, as members of the special button, can take that many
    // back-references without memory.
    void MakeRoomForBackReferences(const VCSpBtn& spBtn, const std::vector<DWORD>& mmbBtnIDs,
                                   std::size_t count = 1);
    void LinkToAwaitingOuterSpBtns(const VCSpBtn& member);
    // Not `withIncBtns`, AdjstToIncBtns is to be called for the members of an inc button.
    void LinkMembers(const VCSpBtn& spBtn, bool withIncBtns = true) noexcept;
    void UnlinkMembers(const VCSpBtn& spBtn) noexcept;
    void LinkMember(const VCSpBtn& spBtn, VCBtn& member, bool withIncBtns) noexcept;
    void AdjstToIncBtns(VCBtn& member) noexcept;
    void ForgetOuterSpBtn(const SBtnClassIDAndBtnID& spBtn, VCBtn& member) noexcept;
    void UnlinkMember(const VCSpBtn& spBtn, VCBtn& member) noexcept;
    void UnlinkMember(const VCSpBtn& spBtn, DWORD mmbBtnID) noexcept; // in whatever class it is
    bool TakeIn(VCSpBtn& spBtn, DWORD mmbBtnID) noexcept;
    void BuildRow(VCSpBtn& spBtn);
    static bool HoldAny(const SpBtnsOfClasses& spBtns, DWORD targetClassID, DWORD targetBtnID);
    bool ListRecSources(const std::vector<DWORD>& btnIDs, std::vector<SRecSources>& sources,
                        DWORD& failedID) const;
    template <class TVisit>
    bool VisitMembersInTheEnd(DWORD btnID, bool intoVirIncBtns, const TVisit& visit) const;
    void ClearVisibleInfo(VCBtn& btn, unsigned int bits) noexcept;
    template <class TVisit>
    void VisitBtnIDsOfRecs(const IBnLink& bnLink, const DWORD* recList, DWORD recCountOfList,
                           const TVisit& visit) const;
    static bool SearchTheBtnByAlias(const std::vector<const VCBtn*>& searched,
                                    const std::vector<const char*>& words, EOptionOfSearchBtnName option,
                                    unsigned int flags, bool firstOnly, std::vector<DWORD>& found);
    void RememberSelection(DWORD btnID);
    template <class TCondition>
    DWORD ListBtnIDs(std::vector<DWORD>& btnIDs, const TCondition& isListed) const;
};

} // namespace NSKZ::NSKZCore

#endif
