#ifndef CBUIDATAMNGR_H
#define CBUIDATAMNGR_H

#include "CSumValueCacheMngr.h"
#include "CXMLReader.h"
#include "CXMLWriter.h"
#include "KzcBUIMngrAPI.h"
#include "SCBUICoreCom.h"
#include "SCDataMngrCoreDef.h"
#include "SCDeclareConstant.h"
#include "SDateGroupBtnIDList.h"
#include "SHierarchyInfo.h"
#include "SRecordList.h"
#include "SSelectBtnIDList.h"
#include "TCBtnIDAssArr.h"
#include "VCBtnClass.h"

#include <array>
#include <deque>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace NSKZ::NSKZCore {

class CCoreSumMngr;
class CProgressStatus;
class CSourceDataMngr;
class CVirBtnClass;
class IBnLink;
class INumCnd;
class IRpLink;

// One analysis environment over one source table: the whole of the engine as a host sees it.
//
// Every item of the table is a button class, every distinct value of it a button; a record is a row, numbered
// from 0. The host presses buttons (SelectTheBtn, SelectBtns); the environment answers which records they
// cover (GetTargetRecList), which buttons of the other items stay related (the order lists and displayed
// lists) and which sums belong to them (GetSumValueCacheMngrObjRef).
//
// Identifiers come from the environment and may be stale: an operation that is given one of a class or a
// button that it does not have returns false (or what it tells as not found) and leaves its outputs
// untouched. ECAbnormalData comes out where an enumerator or the content of a table is impossible, and the
// environment is lost then. Exhausted memory arrives as std::bad_alloc; where nothing else is told, a query
// has changed nothing by then, and after a change that failed so, ClearAllBtnSelections(true) brings the
// environment back to a clean state.
//
// The source table and the sum manager are borrowed and outlive the environment. One thread at a time uses an
// environment, const operations included: they keep sums and sort lists behind the scenes.
class KZCBUIMNGR_API CBUIDataMngr
{
public:
    // How the selected buttons decide on the others.
    enum ERelationMode : DWORD
    {
        RELATIONMODE_NONE = 1,       // not at all
        RELATIONMODE_OR = 2,         // the records of any selected button, one class at a time
        RELATIONMODE_AND = 3,        // buttons that share a record with every selected one
        RELATIONMODE_DIFFERENCE = 4, // buttons that go with a standard but not with a target
        RELATIONMODE_NARROWING = 5,  // classes narrow each other in the order in which they were pressed
    };

    enum EMthRetOfCreateSrcBtnClses
    {
        CREATESRC_OK = 0,
        CREATESRC_CANCELED = 1,      // the progress status asked to stop
        CREATESRC_SRCDATA_ERROR = 2, // more fields asked for than there are, or a field's data cannot be read
        CREATESRC_ID_EXHAUSTED = 3,
        CREATESRC_BTN_ERROR = 4, // a class could not make its buttons
    };

    // What became of the making of a virtual class.
    enum EMthRetOfCreateVirBtnCls
    {
        CREATEVIR_OK = 0,
        CREATEVIR_ID_EXHAUSTED = 1,
        CREATEVIR_NAME_EXISTS = 2, // a class of that name exists
        CREATEVIR_ID_IN_USE = 4,   // the identifier was taken already
    };

    // --- Life

    // An empty environment with the identifier `id` (BUIDATAMNGR_ID_BEGIN to BUIDATAMNGR_ID_END), to be
    // filled from a saved one. `coreSumMngr` may be null: sums are not to be had then, and SelectBtns answers
    // false after it has done its work. Throws ECAbnormalData for an unknown version type of a table.
    CBUIDataMngr(DWORD id, SCBUICoreCom::ELinkTableVerType bnLinkVerType,
                 SCBUICoreCom::ELinkTableVerType rpLinkVerType, const CSourceDataMngr& srcDataMngr,
                 const CCoreSumMngr* coreSumMngr);
    // An environment with a class for every item of the source table. `progressStatus` may be null; it is
    // told the way, and may cancel: the classes finished until then stay, and the host learns of it from the
    // status alone. A field that cannot be read ends the build in the same way. Throws as above, and
    // ECAbnormalData for a field of an impossible type or of more than 4294967295 bytes. Cost: a hash look-up
    // and a few copies for each cell.
    CBUIDataMngr(DWORD id, SCBUICoreCom::ELinkTableVerType bnLinkVerType,
                 SCBUICoreCom::ELinkTableVerType rpLinkVerType, const CSourceDataMngr& srcDataMngr,
                 const CCoreSumMngr* coreSumMngr, CProgressStatus* progressStatus);
    virtual ~CBUIDataMngr();

    // Becomes an image of `other`, with classes and buttons, selection, limitation, numeric condition, sums
    // and history of its own, on another source table and sum manager; the latter may be null. The identifier
    // stays, and so do the versions of the link tables. Of the tables' content only that of the
    // button-to-record table is carried, and that only to one of another version; where a table's content
    // does not fit the records and buttons, it is dropped: presses answer false or throw ECAbnormalData until
    // CopyLinkTables has followed. With itself nothing changes. False, with nothing changed, without a source
    // table. Throws std::bad_alloc with nothing changed. Linear in all that is copied.
    virtual bool Copy(const CBUIDataMngr& other, const CSourceDataMngr* srcDataMngr,
                      const CCoreSumMngr* coreSumMngr);
    // Carries the content of both link tables from `other`, whatever the versions on either side: behind Copy
    // the environment answers everything that `other` does. False, with nothing changed, if the tables are
    // those of other records or buttons. Throws std::bad_alloc with nothing changed, or, with all done, rows
    // of special buttons that are worked out at each use. Linear in the tables.
    bool CopyLinkTables(const CBUIDataMngr& other);
    CBUIDataMngr& operator=(const CBUIDataMngr&) = delete;

    // Removes what a user added (special buttons, fixed virtual classes, selections, the limitation, the
    // numeric condition, a hidden empty value) and keeps what follows from the source data, and the common
    // virtual classes with their virtual inc buttons. Aliases, the relation mode and multiple selection stay.
    // A virtual inc button keeps naming special buttons that went with the rest: they are no part of it until
    // there are buttons of those identifiers again. The history of changes of the source data is emptied; the
    // classes of deleted fields that it named stay switched off until the environment goes, so a host that
    // wants them gone calls ClearUndoOfTheSrcData before.
    void ClearOfFixedSpec();

    // --- Saving and restoring. The environment is saved as two documents with the root "BUIDataMngr" and, if
    // wanted, as the files of its link tables beside them. The common form holds what follows from the source
    // data, with the common virtual classes; the fixed form what a user's analysis adds. Restoring reads the
    // common form and then the fixed one, which alone can be read again and again.
    // Doc/saved-environment.md shows both forms; Doc/link-table-files.md the files.
    //
    // What is not saved: conditions (the buttons that select by them are), ineffective special buttons and
    // classes, the limitation, the numeric condition and which classes are selected as a whole.

    enum ELinkTableType : DWORD
    {
        LINKTBLTYPE_BNLINK = 0,
        LINKTBLTYPE_RPLINK = 1,
    };

    static constexpr char STR_ELENAME_BUIDATAMNGR[] = "BUIDataMngr";
    static constexpr DWORD STRLEN_ELENAME_BUIDATAMNGR = sizeof STR_ELENAME_BUIDATAMNGR - 1;
    static constexpr char STR_ELENAME_SRCBTNCLS[] = "SrcBtnClass";
    static constexpr DWORD STRLEN_ELENAME_SRCBTNCLS = sizeof STR_ELENAME_SRCBTNCLS - 1;
    static constexpr char STR_ELENAME_VIRBTNCLS_COMMON[] = "CommonVirBtnClass";
    static constexpr DWORD STRLEN_ELENAME_VIRBTNCLS_COMMON = sizeof STR_ELENAME_VIRBTNCLS_COMMON - 1;
    static constexpr char STR_ELENAME_VIRBTNCLS_FIXED[] = "FixedVirBtnClass";
    static constexpr DWORD STRLEN_ELENAME_VIRBTNCLS_FIXED = sizeof STR_ELENAME_VIRBTNCLS_FIXED - 1;
    static constexpr char STR_ELENAME_BTNCLASSES[] = "BtnClasses";
    static constexpr DWORD STRLEN_ELENAME_BTNCLASSES = sizeof STR_ELENAME_BTNCLASSES - 1;
    static constexpr char STR_ELENAME_RELATION[] = "Relation";
    static constexpr DWORD STRLEN_ELENAME_RELATION = sizeof STR_ELENAME_RELATION - 1;
    static constexpr char STR_ELENAME_DIFFERENCE[] = "Difference";
    static constexpr DWORD STRLEN_ELENAME_DIFFERENCE = sizeof STR_ELENAME_DIFFERENCE - 1;
    static constexpr char STR_ELENAME_HIERARCHIES[] = "Hierarchies";
    static constexpr DWORD STRLEN_ELENAME_HIERARCHIES = sizeof STR_ELENAME_HIERARCHIES - 1;
    static constexpr char STR_ELENAME_HIERARCHY[] = "Hierarchy";
    static constexpr DWORD STRLEN_ELENAME_HIERARCHY = sizeof STR_ELENAME_HIERARCHY - 1;
    static constexpr char STR_ELENAME_BNLINK[] = "BnLink";
    static constexpr DWORD STRLEN_ELENAME_BNLINK = sizeof STR_ELENAME_BNLINK - 1;
    static constexpr char STR_ELENAME_RPLINK[] = "RpLink";
    static constexpr DWORD STRLEN_ELENAME_RPLINK = sizeof STR_ELENAME_RPLINK - 1;
    static constexpr char STR_ATTRNAME_ID[] = "id";
    static constexpr DWORD STRLEN_ATTRNAME_ID = sizeof STR_ATTRNAME_ID - 1;
    static constexpr char STR_ATTRNAME_MULTISEL[] = "multiSel";
    static constexpr DWORD STRLEN_ATTRNAME_MULTISEL = sizeof STR_ATTRNAME_MULTISEL - 1;
    static constexpr char STR_ATTRNAME_MODE[] = "mode";
    static constexpr DWORD STRLEN_ATTRNAME_MODE = sizeof STR_ATTRNAME_MODE - 1;
    static constexpr char STR_ATTRNAME_NEXTID[] = "nextID";
    static constexpr DWORD STRLEN_ATTRNAME_NEXTID = sizeof STR_ATTRNAME_NEXTID - 1;
    static constexpr char STR_ATTRNAME_BLANKIDLIST[] = "blankIDList";
    static constexpr DWORD STRLEN_ATTRNAME_BLANKIDLIST = sizeof STR_ATTRNAME_BLANKIDLIST - 1;
    static constexpr char STR_ATTRNAME_BTNCLSID[] = "btnClassID";
    static constexpr DWORD STRLEN_ATTRNAME_BTNCLSID = sizeof STR_ATTRNAME_BTNCLSID - 1;
    static constexpr char STR_ATTRNAME_STANDARDBTNID[] = "standardBtnID";
    static constexpr DWORD STRLEN_ATTRNAME_STANDARDBTNID = sizeof STR_ATTRNAME_STANDARDBTNID - 1;
    static constexpr char STR_ATTRNAME_TARGETBTNID[] = "targetBtnID";
    static constexpr DWORD STRLEN_ATTRNAME_TARGETBTNID = sizeof STR_ATTRNAME_TARGETBTNID - 1;
    static constexpr char STR_ATTRNAME_DEPTH[] = "depth";
    static constexpr DWORD STRLEN_ATTRNAME_DEPTH = sizeof STR_ATTRNAME_DEPTH - 1;
    static constexpr char STR_ATTRNAME_VERTYPE[] = "verType";
    static constexpr DWORD STRLEN_ATTRNAME_VERTYPE = sizeof STR_ATTRNAME_VERTYPE - 1;
    static constexpr char STR_ATTRVALUE_MODE_NONE[] = "None";
    static constexpr DWORD STRLEN_ATTRVALUE_MODE_NONE = sizeof STR_ATTRVALUE_MODE_NONE - 1;
    static constexpr char STR_ATTRVALUE_MODE_AND[] = "And";
    static constexpr DWORD STRLEN_ATTRVALUE_MODE_AND = sizeof STR_ATTRVALUE_MODE_AND - 1;
    static constexpr char STR_ATTRVALUE_MODE_OR[] = "Or";
    static constexpr DWORD STRLEN_ATTRVALUE_MODE_OR = sizeof STR_ATTRVALUE_MODE_OR - 1;
    static constexpr char STR_ATTRVALUE_MODE_DIFF[] = "Difference";
    static constexpr DWORD STRLEN_ATTRVALUE_MODE_DIFF = sizeof STR_ATTRVALUE_MODE_DIFF - 1;
    static constexpr char STR_ATTRVALUE_MODE_NARROWING[] = "Narrowing";
    static constexpr DWORD STRLEN_ATTRVALUE_MODE_NARROWING = sizeof STR_ATTRVALUE_MODE_NARROWING - 1;
    static constexpr char STR_ATTRVALUE_VERTYPE_ONMEMORY[] = "OnMemory";
    static constexpr DWORD STRLEN_ATTRVALUE_VERTYPE_ONMEMORY = sizeof STR_ATTRVALUE_VERTYPE_ONMEMORY - 1;
    static constexpr char STR_ATTRVALUE_VERTYPE_MEMORYSAVING[] = "MemorySaving";
    static constexpr DWORD STRLEN_ATTRVALUE_VERTYPE_MEMORYSAVING =
        sizeof STR_ATTRVALUE_VERTYPE_MEMORYSAVING - 1;
    // Where the files of a table are, behind the folder of a save; %d is the identifier of the environment.
    static constexpr char STR_FORMAT_ATTRVALUE_XLINK_HREF_BNLINK[] = ".\\BUI\\ID_%d\\BnLink\\";
    static constexpr DWORD STRLEN_FORMAT_ATTRVALUE_XLINK_HREF_BNLINK =
        sizeof STR_FORMAT_ATTRVALUE_XLINK_HREF_BNLINK - 1;
    static constexpr char STR_FORMAT_ATTRVALUE_XLINK_HREF_RPLINK[] = ".\\BUI\\ID_%d\\RpLink\\";
    static constexpr DWORD STRLEN_FORMAT_ATTRVALUE_XLINK_HREF_RPLINK =
        sizeof STR_FORMAT_ATTRVALUE_XLINK_HREF_RPLINK - 1;

    // The attribute of a relation mode; its texts are constants. Throws ECAbnormalData for a mode that is
    // none. The reverse is false, with `mode` untouched, for an attribute of another name; a word that is no
    // mode gives RELATIONMODE_NONE.
    static void GetRelationModeAttribute(ERelationMode mode, IXMLIO::SAttribute& attribute);
    static bool GetRelationModeEnum(const IXMLIO::SAttribute& attribute, ERelationMode& mode) noexcept;

    // Write a form as a document whose root is the element "BUIDataMngr"; the writer is closed by the caller.
    // `folder` is an absolute directory path in the host's code page, ending in a separator; with `withData`
    // the link tables are written below it, otherwise it is not looked at and the tables come back empty.
    // False if something cannot be written: as CXMLWriter tells, or with the last error of a link table's
    // file; what was written until then is of no use. Linear in the buttons, their members and, with the
    // tables, the records times the items.
    bool WriteCommonSpecByXML(const char* folder, CXMLWriter& writer, bool withData) const;
    bool WriteFixedSpecByXML(CXMLWriter& writer) const;

    // Reads the common form from the root that the reader is on, in place of everything that the environment
    // has but its source table and sum manager. `recCountOfSrc` is how many records the source table has.
    // READXML_NOELEMENT, with nothing changed, if the reader is on no element or on another root. Otherwise,
    // if the document fails (READXML_FAILURE, READXML_SEEKFAILURE) or lacks what it must have
    // (READXML_BADFORMAT), the environment is left empty. What is not as it should be further in is passed
    // over: elements that are not known or not complete, an identifier that occurs twice or is of another
    // kind. Link tables that are lost, contradict each other or the classes, or have another count of records
    // than the source table, are no failure: the result is READXML_OK, GetRecCountOfSrcData() gives 0, and
    // no button has a record. Throws std::bad_alloc, and the environment is empty then.
    CXMLReader::EMthRetOfReadXML ReadCommonSpecByXML(const char* folder, CXMLReader& reader,
                                                     DWORD recCountOfSrc);
    // Reads the fixed form in place of what a user has fixed, and selects as it tells; `limitedRecList`, of
    // `limitedRecCount` records, is the limitation to be in force (SetLimitedRecList), with 0 none.
    // READXML_NOELEMENT, with nothing changed, if the reader is on no element, READXML_BADFORMAT likewise if
    // it is on another root. Otherwise, if the document fails or lacks what it must have, the environment is
    // left without anything that a user fixed, display forms, relation mode and multiple selection among it.
    // A selection that cannot be made ends in none, and READXML_OK: so does every one without a sum manager,
    // but in mode None. Throws std::bad_alloc; the environment is without anything that a user fixed then, or
    // empty.
    CXMLReader::EMthRetOfReadXML ReadFixedSpecByXML(CXMLReader& reader, const DWORD* limitedRecList,
                                                    DWORD limitedRecCount);

    // Write and read the element of one link table, which names its version and, `withData`, its files.
    // Writing writes the files first, and is false without an element if that fails. Reading takes the
    // attributes of the element: READXML_BADFORMAT for what is missing or cannot be understood; any version
    // but the one on memory is the memory-saving one, and the table is of it from then on. A table that
    // cannot be read is a lost one, as above. Throw ECAbnormalData for a table type that is none.
    bool WriteLinkTableSpecByXML(const char* folder, CXMLWriter& writer, bool withData,
                                 ELinkTableType type) const;
    CXMLReader::EMthRetOfReadXML ReadLinkTableSpecByXML(const char* folder,
                                                        const std::vector<IXMLIO::SAttribute>& attributes,
                                                        ELinkTableType type);

    // --- Simple members

    DWORD GetID() const noexcept { return id; }
    // Records of the source table when the environment was built.
    DWORD GetRecCountOfSrcData() const noexcept { return recCount; }
    bool HasSrcDataInfo() const noexcept { return srcDataMngr != nullptr; }
    const CCoreSumMngr* GetCoreSumMngrPtr() const noexcept { return coreSumMngr; }
    void SetCoreSumMngrPtr(const CCoreSumMngr* coreSumMngrOfHost) noexcept
    {
        coreSumMngr = coreSumMngrOfHost;
    }
    // The sums of the environment's buttons under the present selection.
    CSumValueCacheMngr& GetSumValueCacheMngrObjRef() const noexcept { return *sumValueCacheMngr; }

    // The version of the two link tables.
    SCBUICoreCom::ELinkTableVerType GetVersionTypeOfBnLink() const;
    SCBUICoreCom::ELinkTableVerType GetVersionTypeOfRpLink() const;
    // Changes a table's version and carries its content over; the same version leaves the very same table in
    // place. The record-to-button table loses the columns of classes that are not effective. Throws as the
    // constructors do and std::bad_alloc, with the table in force as it was. Costs a read and a write of all
    // cells.
    void ChangeVersionTypeOfBnLink(SCBUICoreCom::ELinkTableVerType verType);
    void ChangeVersionTypeOfRpLink(SCBUICoreCom::ELinkTableVerType verType);

    // --- Record limitation and numeric condition

    // Limits the analysis to the listed records: buttons without a record among them are hidden, and every
    // selection starts from them. `limitedRecList` is ascending and is copied; a number that is no record, or
    // not greater than the ones before it, is dropped. A count of 0 clears the limitation. Clears all
    // selections and sums. If memory is exhausted nothing changes, or, if there are special buttons, no
    // limitation is in force.
    void SetLimitedRecList(const DWORD* limitedRecList, DWORD limitedRecCount);
    void ClearLimitedRecList();
    bool IsRecListLimitationExecuted() const noexcept { return recListLimited || numCndRecListLimited; }

    // Keeps a clone of the host's condition in place of the one held; drops all sums. If cloning throws, the
    // held one stays.
    void SetNumCnd(const INumCnd& cnd);
    // Releases it; nothing without one.
    void ClearNumCnd();
    // The held condition; false, with null, without one.
    bool GetNumCnd(const INumCnd*& cnd) const noexcept;

    // --- Target records

    // The records that the environment stands on, ascending: those of the last level in Or and Narrowing;
    // without one, and in the other modes, the limitation, or else all. `recList` has room for
    // GetRecCountOfSrcData() numbers. Always true; linear in the result.
    bool GetTargetRecList(DWORD* recList, DWORD& recListCount) const;
    // The records against which the class's own buttons are judged: those of the level before the class's
    // own, so that a class is never narrowed by itself; without a level of its own the same as above. Always
    // true.
    bool GetTargetRecListOfBtnClass(DWORD btnClassID, DWORD* recList, DWORD& recListCount) const;

    // --- Relation mode and hierarchy

    ERelationMode GetRelationMode() const noexcept { return relationMode; }
    // A change clears all selections and sums; the same mode changes nothing.
    void SetRelationMode(ERelationMode mode);
    bool GetMultiSelectionInfo() const noexcept { return multiSelection; }
    // Whether a class keeps several selected buttons: off, a press replaces the class's selection. Stores
    // only.
    void SetMultiSelectionInfo(bool multi) noexcept { multiSelection = multi; }
    // The depth of the class's level, 0 for the first. False unless the mode is Narrowing and there is one.
    bool GetHierDepthOfBtnClass(DWORD btnClassID, unsigned int& depth) const;
    // The levels from the first on: how many, and the class and the count of records of one. False past the
    // end. In mode And a level holds no records of its own.
    DWORD GetHierCount() const noexcept { return static_cast<DWORD>(hierarchies.size()); }
    bool GetHierInfo(DWORD position, DWORD& btnClassID, DWORD& recCountOfLevel) const;
    // The class and the two buttons of a difference selection, 0 for what is not chosen. False unless the
    // mode is Difference.
    bool GetSelBtnsInfoForDiffCnd(DWORD& btnClassID, DWORD& standardBtnID, DWORD& targetBtnID) const;

    // --- Selection

    // Presses (`select` true) or releases a button.
    bool SelectTheBtn(DWORD btnClassID, DWORD btnID, bool select);
    // Presses or releases buttons of a class in one step, an identifier once, in first place. Deeper levels
    // are dissolved; in Or and And a press in another class starts afresh; without multiple selection a press
    // replaces. Hidden buttons become selected but take part in the relation only with `includeNonDispBtns`.
    // In Difference the first button is the standard, the second, or the next press in the class, the target;
    // releasing undoes the target first. A special button that is switched off is no button of a pair.
    //
    // False for an unknown or ineffective class; for an unknown button, with the changes before it kept; for
    // an empty list in Difference; and, with everything done, without a sum manager in any mode but None.
    // Cost: the records of the new level times the items, plus the buttons that come back; nothing is
    // allocated for a record or a button.
    bool SelectBtns(DWORD btnClassID, const std::vector<DWORD>& btnIDs, bool select, bool includeNonDispBtns);
    // Restores a whole selection: clears the present one and presses each element in order, which in
    // Narrowing is the order of the levels. If an element fails, nothing is selected and the answer is false.
    bool SelectBtns(const std::vector<SSelectBtnIDList>& selectInfo, bool includeNonDispBtns);
    // Presses or releases all displayed buttons of the class, and if that succeeds sets or clears the
    // selection flag of every button, hidden ones too. False in mode Difference and for an unknown class, and
    // where SelectBtns is.
    bool SelectAllBtnsOfBtnClass(DWORD btnClassID, bool select);
    // Clears the selection of all classes. Without `force` nothing happens unless a class is in selective
    // state.
    void ClearAllBtnSelections(bool force);
    // The whole selection, as SelectBtns restores it: in Narrowing an element for each level in order, in
    // Difference one for the pair, in the other modes one for each class in selective state. Throws
    // ECAbnormalData for a mode that is none.
    void GetAllBtnSelectionInfo(std::vector<SSelectBtnIDList>& selectInfo) const;
    // Whether any class is in selective state.
    bool IsBtnSelectiveState() const;

    // The selection of classes as such, independent of buttons: a flag for each, listed in the order in which
    // they were selected.
    bool SelectTheBtnClass(DWORD btnClassID, bool select);
    void GetAllBtnClassSelectionInfo(std::vector<DWORD>& btnClassIDs) const;
    void ClearAllBtnClassSelections();

    // --- Classes

    // All classes, ascending; without ineffective ones if the flag is false. Returns the count of all
    // classes.
    DWORD GetAllBtnClassIDList(std::vector<DWORD>& btnClassIDs, bool includeIneffective) const;
    bool ExistBtnClass(DWORD btnClassID) const;
    // Whether a class, other than the ignored one, has exactly that name: a source class has the name of its
    // item, a virtual class the one that it was given.
    bool ExistBtnClass(const char* name, DWORD len) const;
    bool ExistBtnClass(const char* name, DWORD len, DWORD ignoredBtnClassID) const;
    bool GetFldID(DWORD btnClassID, DWORD& fldID) const;
    bool GetBtnClassID(DWORD fldID, DWORD& btnClassID) const;
    // The class of each field.
    void GetBtnClassIDCnvObj(std::map<DWORD, DWORD>& btnClassIDsOfFlds) const;

    // --- One class; each is told in VCBtnClass under nearly the same name.

    bool GetTypeOfBtnClass(DWORD btnClassID, SCBUICoreCom::EBtnClassType& type) const;
    // Whether the class takes part in the analysis.
    bool GetEffectiveInfoOfBtnClass(DWORD btnClassID, bool& effective) const;
    bool GetSelectionInfoOfBtnClass(DWORD btnClassID, bool& selected) const;
    bool GetBtnSelectiveStateOfBtnClass(DWORD btnClassID, bool& state) const;
    bool GetNewBtnMadeSelStateOfBtnClass(DWORD btnClassID, bool& state) const;
    bool SetNewBtnMadeSelStateOfBtnClass(DWORD btnClassID, bool state);
    // Source classes only: whether the empty-value button is to be shown. Setting it, also to what it is,
    // clears all sums and the whole selection. A hidden one is a member of no special button.
    bool GetDispEmpValBtnInfoOfBtnClass(DWORD btnClassID, bool& disp) const;
    bool SetDispEmpValBtnInfoOfBtnClass(DWORD btnClassID, bool disp);

    bool GetBtnCountOfBtnClass(DWORD btnClassID, DWORD& count) const;
    bool GetSelBtnCountOfBtnClass(DWORD btnClassID, DWORD& count) const;
    bool GetDispBtnCountOfBtnClass(DWORD btnClassID, DWORD& count) const;
    bool GetIneffectiveBtnCountOfBtnClass(DWORD btnClassID, DWORD& count) const;
    bool GetSystemMngrSpBtnCountOfBtnClass(DWORD btnClassID, DWORD& count) const;

    bool GetBtnAppOrdListOfBtnClass(DWORD btnClassID, unsigned int flags, std::vector<DWORD>& btnIDs) const;
    bool GetBtnNameOrdListOfBtnClass(DWORD btnClassID, unsigned int flags, std::vector<DWORD>& btnIDs) const;
    bool GetBtnUnknownOrdListOfBtnClass(DWORD btnClassID, unsigned int flags, const std::vector<DWORD>& order,
                                        std::vector<DWORD>& btnIDs) const;

    bool GetSelBtnIDListOfBtnClass(DWORD btnClassID, std::vector<DWORD>& btnIDs) const;
    bool GetDispSelBtnIDListOfBtnClass(DWORD btnClassID, std::vector<DWORD>& btnIDs) const;
    bool GetDispBtnIDListOfBtnClass(DWORD btnClassID, std::vector<DWORD>& btnIDs) const;
    bool GetAllBtnIDListOfBtnClass(DWORD btnClassID, std::vector<DWORD>& btnIDs,
                                   bool includeIneffective) const;
    bool GetAllSpBtnIDListOfBtnClass(DWORD btnClassID, std::vector<DWORD>& btnIDs,
                                     bool includeIneffective) const;

    bool GetBtnExistInfoOfBtnClass(DWORD btnClassID, DWORD btnID) const;
    bool GetBtnExistInfoOfBtnClass(DWORD btnClassID, const char* text, DWORD len) const;
    bool GetBtnExistInfoOfBtnClass(DWORD btnClassID, const char* text, DWORD len, DWORD ignoredBtnID) const;

    // SearchTheBtnByAlias of the class, over the listed buttons and over all.
    bool SearchBtnsByAliasFromBtnClass(DWORD btnClassID, const std::vector<DWORD>& btnIDs,
                                       const std::vector<const char*>& words,
                                       VCBtnClass::EOptionOfSearchBtnName option, unsigned int flags,
                                       bool firstOnly, std::vector<DWORD>& found) const;
    bool SearchBtnsByAliasFromBtnClass(DWORD btnClassID, const std::vector<const char*>& words,
                                       VCBtnClass::EOptionOfSearchBtnName option, unsigned int flags,
                                       std::vector<DWORD>& found) const;

    // --- One button; likewise.

    bool GetTypeOfBtn(DWORD btnClassID, DWORD btnID, SCBUICoreCom::EBtnType& type) const;
    bool GetSelectionInfoOfBtn(DWORD btnClassID, DWORD btnID, bool& sel) const;
    bool GetNameOfBtn(DWORD btnClassID, DWORD btnID, const char*& name) const;
    bool GetAliasOfBtn(DWORD btnClassID, DWORD btnID, const char*& alias) const;
    bool SetAliasOfBtn(DWORD btnClassID, DWORD btnID, const char* alias);
    bool GetVisibleInfoOfBtn(DWORD btnClassID, DWORD btnID, unsigned int& visibleInfo) const;
    // Whether the button is displayed; false as the result only for an unknown class or button.
    bool GetVisibleStateOfBtn(DWORD btnClassID, DWORD btnID, bool& visible) const;
    // Whether the button takes part in the analysis.
    bool GetEffectiveInfoOfBtn(DWORD btnClassID, DWORD btnID, bool& effective) const;

    // --- Special buttons: queries; each is told in VCBtnClass under nearly the same name.

    bool GetSpBtnIDListIncludingBtn(DWORD btnClassID, DWORD btnID, std::vector<DWORD>& spBtnIDs) const;
    bool GetRootSpBtnIDListIncludingBtn(DWORD btnClassID, DWORD btnID, std::vector<DWORD>& spBtnIDs,
                                        bool includeIneffective) const;
    bool GetSpBtnIDListThatTheSpecifiedBtnInfluences(DWORD btnClassID, DWORD btnID,
                                                     std::set<SBtnClassIDAndBtnID>& spBtns,
                                                     bool directOnly) const;
    bool GetEffectiveInfoOfSpBtn(DWORD btnClassID, DWORD btnID, bool& effective) const;
    bool GetMmbBtnSelMthOfSpBtn(DWORD btnClassID, DWORD btnID, VCSpBtn::EMmbBtnSelMth& selMth) const;
    bool GetMemberBtnCountOfSpBtn(DWORD btnClassID, DWORD btnID, DWORD& count) const;
    bool GetMemberBtnIDListOfSpBtn(DWORD btnClassID, DWORD btnID, std::vector<DWORD>& mmbBtnIDs) const;
    // The members that a user sees when looking into the button, ascending: those that nothing hides but
    // being members, and all of a virtual inc button. Throws ECAbnormalData for a member that the class does
    // not have.
    bool GetDisplayedMemberBtnIDListOfSpBtn(DWORD btnClassID, DWORD btnID,
                                            std::vector<DWORD>& mmbBtnIDs) const;
    // The condition itself, good until the button changes; an unknown class gives GETMMBBTNCND_NOSPBTN.
    VCBtnClass::EMthRetOfGetMmbBtnCnd GetMemberBtnCndOfSpBtn(DWORD btnClassID, DWORD btnID,
                                                             const IBtnCnd*& cnd) const;
    bool GetBtnMngrInfoOfSpBtn(DWORD btnClassID, DWORD btnID, bool& managedByUser) const;
    bool GetDispMemberBtnInfoOfIncBtn(DWORD btnClassID, DWORD btnID, bool& disp) const;

    // The class that a virtual inc button refers to, 0 once that class is gone; false for any other button.
    bool GetRefBtnClassIDOfVirIncBtn(DWORD btnClassID, DWORD btnID, DWORD& refBtnClassID) const;

    // --- Virtual classes: items without a field, in which a user lays out groupings of other items' buttons.
    // All false for a class that is not virtual.

    // Makes one, without buttons. A common one is part of what users share, a fixed one is a user's own and
    // goes with ClearOfFixedSpec. The name is copied; null stands for the empty one. A fixed identifier that
    // was released is given out again, the one released first; a common one never is. On a refusal
    // `btnClassID` is untouched, and so it is, with everything else, if memory is exhausted.
    EMthRetOfCreateVirBtnCls CreateVirBtnClass(const char* name, bool common, DWORD& btnClassID);
    // Destroys one with its buttons. Buttons of other virtual classes that refer to it lose their members and
    // stay behind ineffective, for good. Clears all sums and selections. If memory is exhausted the class may
    // be gone or not, and some of those buttons may be ineffective.
    bool DestroyVirBtnClass(DWORD btnClassID);
    // The name, good until it is set.
    bool GetNameOfVirBtnClass(DWORD btnClassID, const char*& name) const;
    // False also for a name that another class has.
    bool SetNameOfVirBtnClass(DWORD btnClassID, const char* name);
    bool GetEffectiveInfoOfVirBtnClass(DWORD btnClassID, bool& effective) const;
    // Replaces `btnClassIDs` by the virtual classes that are out of the analysis, ascending, and returns how
    // many they are.
    DWORD GetAllUneffectiveVirBtnClassIDList(std::vector<DWORD>& btnClassIDs) const;
    // Takes a class out of the analysis or back into it; buttons of other virtual classes that hold buttons
    // of it are switched with it. Clears all sums and selections.
    bool SetEffectiveInfoOfVirBtnClass(DWORD btnClassID, bool effective);

    // --- Special buttons: changes. Each that succeeds clears the whole selection and lets the conditions
    // pick their members anew; all but the making of a button also clear all sums. Where nothing else is
    // told, a refused one changes nothing.

    // Makes an inc button (BTNTYPE_INC, members by list only) or a cll button (BTNTYPE_CLL, members by list
    // or by condition) that shows `name`. Of `members` and `cnd` the one that `method` asks for is copied; it
    // may be null. On a refusal `btnID` is untouched.
    VCBtnClass::EMthRetOfCreateSpBtn CreateSpBtn(DWORD& btnID, DWORD btnClassID, SCBUICoreCom::EBtnType type,
                                                 const char* name, VCSpBtn::EMmbBtnSelMth method,
                                                 const std::vector<DWORD>* members, const IBtnCnd* cnd);
    // Makes a virtual inc button (BTNTYPE_VIRINC) in a virtual class over buttons of another class, by list
    // or by a condition on that class. CREATESPBTN_NOBTNCLASS also if `btnClassID` is no virtual class, if
    // the other class is unknown or the same, or if it is fixed and the virtual class common.
    VCBtnClass::EMthRetOfCreateSpBtn CreateSpBtn(DWORD& btnID, DWORD btnClassID, SCBUICoreCom::EBtnType type,
                                                 const char* name, VCSpBtn::EMmbBtnSelMth method,
                                                 const std::vector<DWORD>* members, const IBtnCnd* cnd,
                                                 DWORD refBtnClassID);
    // False if there is no such button; sums and selections are cleared also then, unless the class is
    // unknown.
    bool DestroySpBtn(DWORD btnClassID, DWORD btnID);
    // Switches a special button off or on; see VCBtnClass::SetEffectiveInfoOfSpBtn. A virtual inc button
    // whose referred class is gone stays off.
    bool SetEffectiveInfoOfSpBtn(DWORD btnClassID, DWORD btnID, bool effective);
    // Replaces the members of a button that selects by list.
    VCBtnClass::EMthRetOfOpeToMmbBtnIDList SetMemberBtnIDListOfSpBtn(DWORD btnClassID, DWORD btnID,
                                                                     const std::vector<DWORD>& mmbBtnIDs);
    // Gives a button that selects by condition a clone of another condition. An unknown class gives
    // SETMMBBTNCND_NOSPBTN.
    VCBtnClass::EMthRetOfSetMmbBtnCnd SetMemberBtnCndOfSpBtn(DWORD btnClassID, DWORD btnID,
                                                             const IBtnCnd& cnd);
    // Lets the condition of a special button go, and the members that it picked; of one that selects by list
    // nothing goes, but sums and selections are cleared as well.
    bool ClearMemberBtnCndOfSpBtn(DWORD btnClassID, DWORD btnID);
    // Whether the members of an inc button stay displayed beside it.
    bool SetDispMemberBtnInfoOfIncBtn(DWORD btnClassID, DWORD btnID, bool disp);
    // Lets every condition that asks for the numeric item pick its members anew: to be called when the item
    // has changed. Classes in selective state too. False without a sum manager.
    bool ResetMemberBtnBasedOnTheCndOfAll(DWORD numID);

    // --- Dates and times: what the class of a date or time field has beyond the others (CDateBtnClass,
    // CTimeBtnClass). Each is false for an unknown class and for one of another type.

    // How the dates or times of a class are grouped and shown; unset in a new class.
    bool GetDispFormOfDateBtnClass(DWORD btnClassID, SCDeclareConstant::SDateDispForm& dispForm) const;
    bool GetDispFormOfTimeBtnClass(DWORD btnClassID, SCDeclareConstant::STimeDispForm& dispForm) const;
    // Groups and shows them otherwise: makes a cll button for each group, which the system manages (see
    // VCDateTimeBtnClass), in place of those of the form before; clears all sums and the whole selection, and
    // lets the conditions of the class pick their members anew. The form in force changes nothing and gives
    // true. A form whose kind, form or, of dates, option is not set, or whose pattern does not end within its
    // bytes, is refused: the answer is false, and sums and selection are cleared. If memory is exhausted
    // nothing has changed; or there is no display form and no group with members, and the call is to be made
    // again; or the groups are made, rows of records are outdated, which costs those who ask for them time,
    // and conditions may not have picked anew: ClearAllBtnSelections(true) lets them, the same form once more
    // does not.
    bool SetDispFormOfDateBtnClass(DWORD btnClassID, const SCDeclareConstant::SDateDispForm& dispForm);
    bool SetDispFormOfTimeBtnClass(DWORD btnClassID, const SCDeclareConstant::STimeDispForm& dispForm);
    // The buttons grouped by one part of their dates, whatever the display form. Parts of a time are those of
    // time classes and refused for dates, and the reverse. Throws ECAbnormalData if a date class is given a
    // type that is none.
    bool GetGroupedBtnIDListsOfDateBtnClass(DWORD btnClassID, VCDate::EDateType dateType,
                                            CDateGroupMap& groups) const;
    bool GetGroupedBtnIDListsOfTimeBtnClass(DWORD btnClassID, VCDate::EDateType dateType,
                                            CDateGroupMap& groups) const;
    // The buttons whose date is in that relation to `date`, ascending, and the records of these buttons,
    // whatever is selected. `recList` borrows an array of GetRecCountOfSrcData() numbers. False also in a
    // class without dates, and where the date of its first button does not give what `date` holds.
    bool GetGroupedBtnIDListOfDateBtnClass(DWORD btnClassID, const VCDate& date,
                                           SCKZCoreCom::ECmpOperator cmpOperator,
                                           std::vector<DWORD>& btnIDs) const;
    bool GetGroupedRecListOfDateBtnClass(DWORD btnClassID, const VCDate& date,
                                         SCKZCoreCom::ECmpOperator cmpOperator, SRecordList& recList) const;
    // The latest date of the class, good until its dates change. False in a class without dates.
    bool GetLatestDateOfDateBtnClass(DWORD btnClassID, const VCDate*& date) const;
    // The last of the listed records that carry the latest date among them, and the number of that date. The
    // list is ascending. False if none of them carries a date, and for a number that is no record.
    bool GetLatestRecNumOfDateBtnClass(DWORD btnClassID, const DWORD* recList, DWORD recListCount,
                                       DWORD& recNum, unsigned long long& dateNum) const;
    // A symbol for each date class, by its identifier, as STR_FORMAT_DATEBTNCLS_SYMBOL makes it; replaces
    // what `symbols` held. Ineffective classes too. Always true.
    static constexpr char STR_FORMAT_DATEBTNCLS_SYMBOL[] = "D%lu";
    bool GetSymbolListOfDateBtnClasses(std::map<DWORD, std::string>& symbols) const;

    // --- Following the source data. The host changes the source table first and then tells the environment
    // by one of these. Buttons, special buttons and identifiers survive every change but the removal of their
    // class; a value that goes and comes back gets its old button. The whole selection is cleared (and with
    // it what is known of sums), the limitation follows the records: deleted ones leave it, inserted ones are
    // not in it. Each operation that does its work adds an entry to the history, from which it can be taken
    // back.
    //
    // If memory is exhausted in a change of records the environment is as it was before, but for buttons of
    // new values that have come and have no record; or the change is done, with its entry in the history, and
    // ClearAllBtnSelections(true) brings the display up to date, though a limitation may be gone. Where there
    // is not even memory to go back or on, the link tables are lost as in a restoring (GetRecCountOfSrcData()
    // is 0, no button has a record) and AdjstAccordingToInsertRec(0, all) builds them again; where there is
    // none at all the environment is left empty. In a change of fields the fields before the one at which it
    // happened are followed, as the entry in the history tells.

    // `recCountOfChange` records were inserted before record `startRec`, or behind all others if that is not
    // less than the number of records. Their values are read from the source table. False, with nothing
    // changed, if the records could not be numbered in 32 bits, or if the link tables are not those of this
    // environment's records (see Copy). False also if values cannot be read or the identifiers of a class are
    // used up: the records are there then, but have no button in that class and those behind it. Throws
    // ECAbnormalData (MSG_ABNORMAL_DATASIZE), with nothing changed, for values of more than 4294967295 bytes.
    // Costs a block move of the tables and one hash look-up for each new value.
    bool AdjstAccordingToInsertRec(DWORD startRec, DWORD recCountOfChange);
    // The records from `startRec` on were deleted; what is said to go past the end is what there is. True,
    // with an entry in the history, also where there is none. Costs a pass over the tables and the buttons.
    bool AdjstAccordingToDeleteRec(DWORD startRec, DWORD recCountOfChange);
    // The data of fields has changed: all records of all fields are read again, which takes two entries in
    // the history, the deletion of all records and the insertion of all. The limitation stays. Which fields
    // it are does not matter but for `count`: with 0 nothing is done. `progressStatus` may be null; it is
    // told the way, and cannot cancel. False as AdjstAccordingToInsertRec. If the insertion fails as a whole
    // or memory is exhausted in it there is no record and no limitation: taking the deletion back brings
    // both.
    bool AdjstAccordingToChangeFldData(const DWORD* fldIDs, unsigned int count,
                                       CProgressStatus* progressStatus);
    // Fields were inserted: each gets a class, as in a build. Returns what the build did; with
    // CREATESRC_CANCELED and others the classes made until then stay. CREATESRC_SRCDATA_ERROR, without an
    // entry in the history, if there are more fields than the source table has; also, with one, if it has
    // another number of records than the environment. If the link tables were lost they are built first.
    EMthRetOfCreateSrcBtnClses AdjstAccordingToInsertFld(const DWORD* fldIDs, unsigned int count,
                                                         CProgressStatus* progressStatus);
    // Fields were deleted: their classes are switched off and stand for no field any more. They are kept
    // until the history is cleared. Always true; a field without a class is passed over.
    bool AdjstAccordingToDeleteFld(const DWORD* fldIDs, unsigned int count);
    // The types of fields have changed: a class of another type than its field is switched off as in a
    // deletion, and the field gets a new one. False if a class cannot be built, and, without an entry in the
    // history, if the source table does not know a field; the fields before are followed. Lost link tables
    // are built first here too.
    bool AdjstAccordingToChangeFldDataSpec(const DWORD* fldIDs, unsigned int count,
                                           CProgressStatus* progressStatus);
    // The form of the data of these fields has changed: the classes of dates and times among them read their
    // texts anew and group them anew, and their cll buttons that select by list are switched off. Other
    // fields, and those without a class, are passed over. Always true. If memory is exhausted some classes
    // may follow and others not: to be called again.
    bool AdjstAccordingToChangeFldDataForm(const DWORD* fldIDs, unsigned int count);
    // The calendar criteria have changed (start month of the fiscal year, cut-off day of a month, first day
    // of the week): the dates of every date class are grouped anew. Always true. If memory is exhausted the
    // same holds.
    bool AdjstAccordingToChangeDateCriterionInfo();
    // Follows all that a summary tells, in its order (see SBtnRenewalInfo), by the operations above, each
    // with its entries in the history. CREATESRC_SRCDATA_ERROR as soon as one of them fails, with the others
    // undone by nobody; else what AdjstAccordingToInsertFld returns, or CREATESRC_OK. With `progressStatus`
    // the process is named STR_PROCNAME_REBUILD_BTNINFO, its ratio is divided among the steps by their fields
    // and set back at the end.
    EMthRetOfCreateSrcBtnClses
    AdjstAccordingToChangeSrcDataMngr(const SCDataMngrCoreDef::SBtnRenewalInfo& renewalInfo,
                                      CProgressStatus* progressStatus);

    // --- Taking changes of the source data back

    // Takes the newest entry out of the history and follows the change back; the host has put the source
    // table back before. A deletion of records is taken back by reading as many as it took out. Then the
    // selection of the moment before the change is made again, whose result is the result. False without an
    // entry. Groups of dates and times are not made anew by taking back a change of form or criteria. Throws
    // ECAbnormalData for an entry of an unknown kind, which stays. If memory is exhausted the entry stays,
    // and this is to be called again; or it is gone (GetUndoOpeCountOfTheSrcData), and the change is taken
    // back without its selection.
    bool AdjstAccordingToUndoOpeOfTheSrcData();
    // Empties the history. The classes of deleted and replaced fields go, unless they are in use again.
    void ClearUndoOfTheSrcData();
    // How many entries the history has.
    DWORD GetUndoOpeCountOfTheSrcData() const noexcept { return static_cast<DWORD>(undoStack.size()); }

    // --- Records and buttons

    // The distinct buttons of a source class that the listed records carry, in order of first appearance,
    // straight from the table. The array has room for as many identifiers as there are records; entries
    // behind the last one found are 0. Record numbers are below GetRecCountOfSrcData(). An unknown class
    // leaves the output untouched.
    bool GetBtnIDListThatRelatesToRecListFromBtnClass(DWORD btnClassID, DWORD recListCount,
                                                      const DWORD* recList, DWORD* btnIDs) const;
    bool GetBtnIDListThatRelatesToRecListFromBtnClass(DWORD btnClassID, DWORD recListCount,
                                                      const DWORD* recList, std::vector<DWORD>& btnIDs) const;
    // The records of one button, ascending, whatever is selected. `recList` has room for
    // GetRecCountOfSrcData() numbers. A button without records, or one that a source class does not have,
    // gives 0. The second form is given two work arrays of the same room.
    bool GetRecListThatRelatesToBtn(DWORD btnClassID, DWORD btnID, DWORD* recList, DWORD& recListCount) const;
    bool GetRecListThatRelatesToBtn(DWORD btnClassID, DWORD btnID, DWORD* recList, DWORD& recListCount,
                                    DWORD** workArrays) const;
    // The union over the listed buttons.
    bool GetRecListThatRelatesToBtns(DWORD btnClassID, const std::vector<DWORD>& btnIDs, DWORD* recList,
                                     DWORD& recListCount) const;

protected:
    // The kinds of changes in the history.
    enum ESrcDataOpeType : unsigned int
    {
        SRCDATAOPE_INSERTREC = 1,
        SRCDATAOPE_DELETEREC = 2,
        SRCDATAOPE_INSERTFLD = 3,
        SRCDATAOPE_DELETEFLD = 4,
        SRCDATAOPE_CHANGEFLDDATASPEC = 5,
        SRCDATAOPE_CHANGEFLDDATAFORM = 6,
        SRCDATAOPE_RESERVED = 7, // never made; no unknown kind
        SRCDATAOPE_CHANGEDATECRITERION = 8,
    };
    // One entry of the history.
    struct SSrcDataUndo
    {
        unsigned int opeType = 0;
        DWORD startRec = 0; // of changes of records, as is recCount: what was asked for
        DWORD recCount = 0;
        std::vector<DWORD> fldIDList;      // of changes of fields
        unsigned int fldCount = 0;         // size of fldIDList
        std::vector<DWORD> btnClassIDList; // deletion and type: the class that held each field, 0 for none
        std::vector<SSelectBtnIDList> selectBtnIDList; // the selection before the change

        DWORD takenRecCount = 0;     // of a deletion of records: how many there were to delete
        bool isOfDataChange = false; // half of the deletion and insertion of all records
        bool hasLimitation = false;  // the one to be in force when the deletion is taken back
        std::vector<DWORD> limitedRecs;
    };
    std::deque<SSrcDataUndo> undoStack; // the newest entry is at the back

    // Null if absent.
    VCBtnClass* FindBtnClass(DWORD btnClassID) const noexcept;
    // Lets every effective condition cll button of a class judge one button alone, and adds it to its members
    // or takes it out: for a change of the sums of one button. A cll button is judged by none. False without
    // a sum manager and for a null class.
    bool ResetMemberBtnBasedOnTheCndOfCllBtns(VCBtnClass* btnClass, DWORD btnID);
    // Destroys a class of any kind; false for null. A selection that it takes part in is cleared, and virtual
    // classes let go of it.
    bool DestroyBtnClass(VCBtnClass* btnClass);

private:
    friend class CSumValueCacheMngr;

    struct SNumCndReleaser
    {
        void operator()(INumCnd* cnd) const noexcept;
    };

    // Life
    void Clear();
    bool CreateBnLink(SCBUICoreCom::ELinkTableVerType verType);
    bool CreateRpLink(SCBUICoreCom::ELinkTableVerType verType);
    void DropRowsOfSpBtns();
    // Carry the content of a table of another version: all fields of the first; the columns of effective
    // classes, up to the first that is not to be had, of the second. False for null; a table of the same
    // version is not carried, and one that there is not is made empty in the version of the other.
    bool CopyRpLink(IRpLink* other);
    bool CopyBnLink(IBnLink* other);
    std::map<DWORD, std::unique_ptr<VCBtnClass>> CopyBtnClasses(const CBUIDataMngr& other,
                                                                const CSourceDataMngr* srcDataMngrOfHost);
    bool DoesBnLinkFit(const std::map<DWORD, std::unique_ptr<VCBtnClass>>& ofBtnClasses,
                       DWORD ofRecCount) const;
    bool DoesRpLinkFit(DWORD ofRecCount) const;
    // Runs `operation` on the class and gives its result; false for an unknown class.
    template <class TOperation>
    bool WithBtnClass(DWORD btnClassID, const TOperation& operation) const
    {
        VCBtnClass* const btnClass = FindBtnClass(btnClassID);
        return btnClass != nullptr && operation(*btnClass);
    }

    // Building and following. What is read of one field at a time, and what becomes of it.
    struct SBuildAreas
    {
        // For so many records; made once and used for every field.
        explicit SBuildAreas(DWORD recCountOfSrc);

        DWORD recCount;
        std::unique_ptr<char[]> texts;          // the values of a field
        std::unique_ptr<DWORD[]> btnIDOfRec;    // the button of each record
        std::unique_ptr<DWORD[]> recArena;      // the records of all buttons, button by button
        std::unique_ptr<char*[]> srcDataList;   // where each value begins
        std::unique_ptr<WORD[]> srcDataLenList; // and how long it is
        TCBtnIDAssArr<DWORD> btnRecCounts;
        TCBtnIDAssArr<SRecordList> btnRecLists; // point into recArena, and where else lists are added
    };
    // The steps of a build, as the host's status sees them. Every field is worth the same share of the whole.
    class CBuildProgress
    {
    public:
        CBuildProgress(CProgressStatus* statusOfHost, DWORD eligibleFldCount);
        // Adds `weight` of a field's share. False if the host wants to stop.
        bool Step(double weight);

    private:
        CProgressStatus* status;
        DWORD maxValue;
        DWORD fldCount;
    };
    // Reads the values of a field from `firstRec` on. False if the source table does not give them; throws
    // ECAbnormalData, in the name of `function`, if they are more than 4294967295 bytes.
    bool ReadSrcData(DWORD fldID, DWORD firstRec, SBuildAreas& areas, const char* function, long line) const;
    EMthRetOfCreateSrcBtnClses CreateSrcBtnClasses(const DWORD* fldIDs, unsigned int fldCount,
                                                   CProgressStatus* progressStatus);
    EMthRetOfCreateSrcBtnClses CreateSrcBtnClass(DWORD fldID, SCDeclareConstant::EDataType dataType,
                                                 SBuildAreas& areas, CBuildProgress& progress);
    static void BuildRpLinkInfo(const TCBtnIDAssArr<DWORD>& btnRecCounts, const DWORD* btnIDOfRec,
                                DWORD firstRec, DWORD recCountOfCall, TCBtnIDAssArr<SRecordList>& btnRecLists,
                                DWORD* recArena);
    bool AdjstSrcDataListToBtnClassType(DWORD fldID, char** srcDataList, const WORD* srcDataLenList,
                                        DWORD recCountOfCall) const;
    std::unique_ptr<VCBtnClass> CreateBtnClassBasedOnDataType(SCDeclareConstant::EDataType dataType,
                                                              DWORD btnClassID, DWORD fldID) const;

    std::unique_ptr<VCBtnClass> CreateBtnClassBasedOnBtnClassType(SCBUICoreCom::EBtnClassType type) const;
    // Null for a word that is no type.
    std::unique_ptr<VCBtnClass> CreateBtnClassBasedOnBtnClassTypeAttrValue(const char* text, DWORD len) const;

    // Saving and restoring
    using Attributes = std::vector<IXMLIO::SAttribute>;
    using EMthRetOfReadXML = CXMLReader::EMthRetOfReadXML;
    bool WriteRelationSpecByXML(CXMLWriter& writer) const;
    bool WriteDifferenceSpecByXML(CXMLWriter& writer) const;
    bool WriteHierarchiesSpecByXML(CXMLWriter& writer) const;
    bool WriteBtnClassesSpecByXML(const char* folder, CXMLWriter& writer, bool withData,
                                  SCKZCoreCom::ESpecType specType) const;
    static bool WriteBtnClassIDSpecByXML(CXMLWriter& writer, const char* name, DWORD nameLen, DWORD nextID,
                                         const std::deque<DWORD>& blankIDs);
    EMthRetOfReadXML ReadCommonSpecOfRoot(const char* folder, CXMLReader& reader);
    EMthRetOfReadXML ReadFixedSpecOfRoot(CXMLReader& reader);
    // What a failed reading leaves: nothing that users fix.
    void DropHalfReadFixedSpec();
    EMthRetOfReadXML ReadRelationSpecByXML(CXMLReader& reader, const Attributes& attributes);
    EMthRetOfReadXML ReadDifferenceSpecByXML(const Attributes& attributes);
    EMthRetOfReadXML ReadHierarchiesSpecByXML(CXMLReader& reader);
    EMthRetOfReadXML ReadBtnClassesSpecByXML(const char* folder, CXMLReader& reader,
                                             SCKZCoreCom::ESpecType specType);
    EMthRetOfReadXML ReadBtnClassSpecByXML(const char* folder, CXMLReader& reader,
                                           SCKZCoreCom::ESpecType specType, std::set<DWORD>& readIDs);
    EMthRetOfReadXML ReadNewBtnClass(const char* folder, CXMLReader& reader, SCKZCoreCom::ESpecType specType,
                                     DWORD btnClassID);
    static bool ReadBtnClassIDSpecByXML(const Attributes& attributes, DWORD& nextID,
                                        std::deque<DWORD>& blankIDs);
    void RepairBtnClassIDs(CXMLReader& reader, DWORD beginID, DWORD endID, DWORD& nextID,
                           std::deque<DWORD>& blankIDs) const;
    bool TakeRoomForBtnClass(CXMLReader& reader, DWORD btnClassID) const;
    // Sees to it that each source class has, in both tables or in none, all records, each with one button:
    // fields of which that is not true go. False if the tables cannot be those of these records.
    bool DropFldsThatDisagree();
    bool HasPlausibleRecArea(DWORD btnClassID) const;
    bool DoLinkTablesAgreeOn(DWORD btnClassID, DWORD* btnIDOfRec) const;
    bool DoLinkTablesFitBtnClasses() const;
    void LoseLinkTables();
    void DropFldsWithoutBtnClass();
    void SettleVirBtnClasses(bool common);
    void PlaceReadLevels();
    void FollowRestoredSpBtns(std::vector<SSelectBtnIDList>& selectInfo);
    void ClearButCollaborators();

    // Dates and times. Null for an unknown class and one of another type.
    template <class TBtnClass>
    TBtnClass* FindBtnClassOfType(DWORD btnClassID) const;
    template <class TBtnClass>
    bool GetDispFormOfBtnClass(DWORD btnClassID, typename TBtnClass::SDispForm& dispForm) const;
    template <class TBtnClass>
    bool SetDispFormOfBtnClass(DWORD btnClassID, const typename TBtnClass::SDispForm& dispForm);
    template <class TBtnClass>
    bool GetGroupedBtnIDListsOfBtnClass(DWORD btnClassID, VCDate::EDateType dateType,
                                        CDateGroupMap& groups) const;

    // Following the source data
    class CNewUndoEntry;
    // While it lives no rows of special buttons are made: they would be made of tables of which some have
    // followed a change and others not.
    class CDeferredRows
    {
    public:
        explicit CDeferredRows(CBUIDataMngr& envToFollow);
        ~CDeferredRows();
        CDeferredRows(const CDeferredRows&) = delete;
        CDeferredRows& operator=(const CDeferredRows&) = delete;

    private:
        void Defer(bool deferred) noexcept;

        CBUIDataMngr& env;
    };
    class CRatioOfSteps;
    using RecListsOfBtns = std::map<DWORD, std::vector<DWORD>>;
    using RecListsOfBtnClasses = std::map<DWORD, RecListsOfBtns>;
    void CloseFollowingOfSrcData(bool dropsSums, bool clearsSelection);
    bool AreLinkTablesOfRecs();
    // Follows inserted records without an entry in the history and without the closing. The fields in
    // `passedOver` are not read. False if not all could be read.
    bool FollowInsertedRecs(DWORD startRec, DWORD count, const std::set<DWORD>& passedOver,
                            CProgressStatus* progressStatus);
    bool AdjstAccordingToInsertRec(DWORD startRec, DWORD count, const std::set<DWORD>& passedOver,
                                   CProgressStatus* progressStatus);
    // Adds its identifier to `following` when the table of its records has followed.
    bool AddRecsToBtnClass(VCBtnClass& btnClass, DWORD fldID, DWORD startRec, SBuildAreas& areas,
                           RecListsOfBtnClasses& addedOfOtherBtnClasses, std::vector<DWORD>& following);
    void AddUnreadRecsToBtnClass(VCBtnClass& btnClass, DWORD startRec, DWORD count,
                                 const RecListsOfBtns& added, std::vector<DWORD>& following);
    void TakeInsertedRecsBack(DWORD startRec, DWORD count, const std::vector<DWORD>& following) noexcept;
    void FollowDeletedRecs(DWORD startRec, DWORD count);
    void LetBtnClassesFollowDeletion(DWORD startRec);
    void LoseLinkTablesOrAll() noexcept;
    bool ReadAllRecsAnew(CProgressStatus* progressStatus);
    void TakeRecsIfThereAreNone();
    void BuildOutdatedRows();
    // The records that come to the special buttons with a row, of the class and of others, by those that come
    // to the class's source buttons. The first adds them to the lists, in memory that `recArea` gets, and
    // gives back how many they are; the others are united with what is in `addedOfOtherBtnClasses`.
    unsigned long long GetAddedRelatedRecListOfSpBtns(const VCBtnClass& btnClass,
                                                      TCBtnIDAssArr<SRecordList>& addedRecLists,
                                                      std::vector<DWORD>& recArea) const;
    void GetAddedRelatedRecListOfSpBtnsThatBelongsToOtherBtnClass(
        const VCBtnClass& btnClass, const TCBtnIDAssArr<SRecordList>& addedRecLists,
        RecListsOfBtnClasses& addedOfOtherBtnClasses) const;
    // Takes a class out of its field, and puts it back.
    void TakeBtnClassOutOfFld(DWORD fldID, DWORD btnClassID);
    void PutBtnClassBackIntoFld(DWORD fldID, DWORD btnClassID);
    bool HasButtonInEachRec(DWORD btnClassID) const;
    void ReadBtnClassAnew(VCBtnClass& btnClass, DWORD fldID);
    void LetLevelsGo() noexcept;
    void LetLimitationFollowInsertion(DWORD startRec, DWORD count) noexcept;
    void LetLimitationFollowDeletion(DWORD startRec, DWORD count) noexcept;
    void UndoOpeOfTheSrcData(const SSrcDataUndo& undone);
    // Runs a change of records that is to leave no entry in the history.
    template <class TChange>
    void RunWithoutEntry(const TChange& change);

    // Selection
    // Switches off the cll buttons of a class that select by list and that users manage, and lists those that
    // are off now; the class may be unknown.
    void SetIneffectiveInfoOfAllSelCllBtns(DWORD btnClassID, std::vector<DWORD>& changedBtnIDs);
    bool SelectBtnsForDiffCnd(VCBtnClass& btnClass, const std::vector<DWORD>& btnIDs, bool select);
    bool ExecRelation(SHierarchyInfo* level, DWORD btnClassID, const std::vector<DWORD>& btnIDs, bool select);
    void AdjstSumValueCacheToSelectBtn(DWORD btnClassID) const;
    void AdjstSumValueCacheToClearAllBtnSelections() const;

    // Special buttons. The members that conditions pick follow the sums: of all classes; of a class; of one
    // button, where the result tells whether its members were set; of a class and of all that refer to it.
    // All false without a sum manager. A class in selective state is passed over but by the one-button form.
    bool ResetMemberBtnBasedOnTheCnd();
    bool ResetMemberBtnBasedOnTheCnd(VCBtnClass* btnClass);
    bool ResetMemberBtnBasedOnTheCnd(VCBtnClass* btnClass, DWORD btnID);
    bool ResetMemberBtnBasedOnTheCnd(DWORD btnClassID);
    bool ResetMemberBtnBasedOnTheCnd(DWORD btnClassID, std::set<DWORD>& visited);
    void ResetMembersOfEffectiveSpBtns(VCBtnClass& btnClass);
    // What the making of a special button ends in; `wasSelected` was noted before it.
    void CloseCreationOfSpBtn(VCBtnClass& btnClass, bool wasSelected, bool changesTotals);
    // Null for a class that is unknown or not virtual.
    CVirBtnClass* FindVirBtnClass(DWORD btnClassID) const noexcept;
    // Whether there is anything that a change of a special button makes wrong: a class in selective state, a
    // level or a difference pair.
    bool HasSelection() const;
    // Runs a change. If memory runs out in it some of it may stand, and what is known of sums is not to be
    // relied on.
    template <class TChange>
    auto ChangeSpBtn(const TChange& change)
    {
        try {
            return change();
        } catch (...) {
            sumValueCacheMngr->ClearSumValueCache();
            throw;
        }
    }
    template <class TChange>
    bool ChangeBtnClass(DWORD btnClassID, const TChange& change);
    // What every change of a special button ends in; `wasSelected` was noted before it.
    void CloseChangeOfSpBtn(DWORD btnClassID, bool wasSelected);

    // Relation
    using BtnIDsOfClasses = std::map<DWORD, std::vector<DWORD>>; // by source class
    BtnIDsOfClasses GetBtnsOfRecs(const DWORD* recList, DWORD recListCount, const char* function) const;
    bool ExecRelationByANDCnd(SHierarchyInfo* level, DWORD btnClassID, const std::vector<DWORD>& btnIDs,
                              bool select);
    bool ExecRelationByORCnd(SHierarchyInfo* level, DWORD btnClassID, const std::vector<DWORD>& btnIDs,
                             bool select);
    bool ExecRelationByDiffCnd(DWORD btnClassID, DWORD standardBtnID, DWORD targetBtnID);
    bool ExecNarrowing(SHierarchyInfo* level, DWORD btnClassID, const std::vector<DWORD>& btnIDs,
                       bool select);
    void IntersectWithLevelBefore(std::size_t position, DWORD* recList, DWORD& recListCount) const;
    void IntersectWithLimitation(DWORD* recList, DWORD& recListCount) const;
    bool GetMergedLimitedRecList(DWORD* recList, DWORD& recListCount) const;
    bool GetLimitationOrAllRecs(DWORD* recList, DWORD& recListCount) const;
    // The target records of a class; `function` is what a host called.
    bool GetRecsOfLevelBefore(DWORD btnClassID, DWORD* recList, DWORD& recListCount,
                              const char* function) const;
    void ClearHierInfo() noexcept;
    void ClearDiffInfo() noexcept;
    void SetVisibleInfoBasedOnRelationOfAllBtns(bool show) noexcept;
    void SetVisibleInfoBasedOnLimitedRecListOfAllBtns(bool show) noexcept;
    void ResetVisibleInfoBasedOnRelationOfAllBtns();
    // `reached`: the buttons of the limited records, if there is a limitation.
    void ResetVisibleInfoBasedOnLimitedRecListOfAllBtns(const BtnIDsOfClasses& reached);
    void DropLimitedRecList() noexcept;
    void DropLimitationWithoutMemory() noexcept;
    void AdjstToLimitation(const BtnIDsOfClasses& reached);
    // The part of it that concerns the buttons alone.
    void TellLimitationToBtns(const BtnIDsOfClasses& reached);
    // Work arrays of recCount entries, made when first needed and kept.
    DWORD* GetWorkArea(std::size_t number) const;

    DWORD id;
    bool multiSelection;
    ERelationMode relationMode;
    DWORD recCount;
    std::unique_ptr<IBnLink> bnLink;
    std::unique_ptr<IRpLink> rpLink;
    std::vector<DWORD> selBtnClassIDList; // in order of selection
    std::map<DWORD, std::unique_ptr<VCBtnClass>> btnClasses;
    std::map<DWORD, DWORD> btnClassIDOfFld;
    std::map<DWORD, DWORD> fldIDOfBtnClass;
    std::unique_ptr<INumCnd, SNumCndReleaser> numCnd;
    const CSourceDataMngr* srcDataMngr;
    const CCoreSumMngr* coreSumMngr;
    DWORD nextSrcBtnClassID;
    DWORD nextCommonVirBtnClassID;
    DWORD nextFixedVirBtnClassID;
    std::deque<DWORD> blankFixedVirBtnClassIDs; // released ones, first out first reused
    std::vector<SHierarchyInfo> hierarchies;
    std::map<unsigned int, DWORD> levelsRead; // while the fixed form is read: the classes of levels, by depth
    bool areLinkTablesLost;                   // while the common form is read
    DWORD diffBtnClassID;
    DWORD diffStandardBtnID;
    DWORD diffTargetBtnID;
    bool recListLimited;
    std::unique_ptr<DWORD[]> limitedRecList;
    DWORD limitedRecCount;
    bool numCndRecListLimited;
    std::unique_ptr<DWORD[]> numCndRecList;
    DWORD numCndRecCount;
    std::unique_ptr<CSumValueCacheMngr> sumValueCacheMngr;
    mutable std::array<std::unique_ptr<DWORD[]>, 4> workAreas;
    mutable DWORD workAreaSize = 0; // entries of each work area that there is
};

} // namespace NSKZ::NSKZCore

#endif
