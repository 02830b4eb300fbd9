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
    // Puts another source table in the place of the one that the class stands on.
    void SetSrcDataMngr(const CSourceDataMngr* srcDataMngrOfEnv) noexcept { srcDataMngr = srcDataMngrOfEnv; }
    // Whether the empty-value button is to be shown.
    bool GetDispEmpValBtnInfo() const noexcept { return empValBtnDisp; }
    // Shows or hides the empty-value button: hidden, it has the reason VISINFO_EMPVALNODISP and is a member
    // of no special button, not even of an ineffective one. Showing does not throw; if memory is exhausted in
    // hiding nothing has changed, or all has and rows of records stay outdated.
    void SetDispEmpValBtnInfo(bool disp);

    // --- Saved forms (VCBtnClass). Constants of the elements that only a source class has.
    static constexpr char STR_ATTRNAME_FLDID[] = "fldID";
    static constexpr DWORD STRLEN_ATTRNAME_FLDID = sizeof STR_ATTRNAME_FLDID - 1;
    static constexpr char STR_ELENAME_DATABTN[] = "DataBtn";
    static constexpr DWORD STRLEN_ELENAME_DATABTN = sizeof STR_ELENAME_DATABTN - 1;
    static constexpr char STR_ELENAME_EMPVALBTN[] = "EmpValBtn";
    static constexpr DWORD STRLEN_ELENAME_EMPVALBTN = sizeof STR_ELENAME_EMPVALBTN - 1;
    static constexpr char STR_ATTRNAME_DISP[] = "disp";
    static constexpr DWORD STRLEN_ATTRNAME_DISP = sizeof STR_ATTRNAME_DISP - 1;

    // Write the class in its common form, under the field `fldIDToWrite`, or in its fixed one; nothing of an
    // ineffective class. False as CXMLWriter tells, or with the last error ERROR_INVALID_DATA.
    bool WriteCommonSpecOfBtnClassByXML(const char* folder, CXMLWriter& writer, bool withData,
                                        DWORD fldIDToWrite) const;
    bool WriteFixedSpecOfBtnClassByXML(CXMLWriter& writer) const;
    // Read the class from the element that the reader is on and leave the reader on its level: the common
    // form in place of everything but the source table, the fixed one in place of what users fixed. Elements
    // inside that are not as they should be are passed over. READXML_NOELEMENT if the reader is on none,
    // READXML_BADFORMAT if the element is not that of such a class or lacks what it must have; the class is
    // to be dropped then, or ClearOfFixedSpec called. `recCountOfEnv` is how many records the environment
    // has.
    CXMLReader::EMthRetOfReadXML ReadCommonSpecOfBtnClassByXML(const char* folder, CXMLReader& reader,
                                                               DWORD recCountOfEnv,
                                                               const std::unique_ptr<IRpLink>& rpLinkOfEnv);
    CXMLReader::EMthRetOfReadXML ReadFixedSpecOfBtnClassByXML(CXMLReader& reader);
    // Hides the empty value if the fixed form that was read last does not tell it to be shown: to be called
    // when the whole document has been read, since shared buttons lose it as a member.
    void HideEmpValBtnAsRead();

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

    // How many records the source buttons of the class have in the environment's IRpLink, all together.
    // Linear in the buttons.
    unsigned long long GetRecCountOfAllSrcBtns() const;

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

    bool WriteChildElementsPartOfSpecByXML(const char* folder, CXMLWriter& writer, bool withData,
                                           SCKZCoreCom::ESpecType specType) const override;
    // What the class has behind these in its fixed form: here nothing.
    virtual bool WriteFurtherFixedElementsByXML(CXMLWriter& writer) const;
    EMthRetOfReadXML ReadChildElementPartOfSpecByXML(const char* folder, CXMLReader& reader,
                                                     SCKZCoreCom::ESpecType specType) override;
    EMthRetOfReadXML ReadBtnsSpecByXML(const char* folder, CXMLReader& reader,
                                       SCKZCoreCom::ESpecType specType) override;
    EMthRetOfReadXML ReadBtnSpecByXML(const char* folder, CXMLReader& reader, DWORD btnID, bool hasRecInfo,
                                      SCKZCoreCom::ESpecType specType) override;
    void RepairIDs(CXMLReader& reader, SCKZCoreCom::ESpecType specType) override;

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
    bool isEmpValToBeHidden = false;                        // by the fixed form that was read
    bool isEmpValShownByRead = false;                       // the fixed form being read has said so
    std::vector<bool> isSrcBtnRead; // by identifier, while "Btns" is read: it was met already
    std::vector<std::unique_ptr<VCBtn>> btnsToRegister; // while "Btns" is read

    // Lets everything go, the empty-value button too: what a copy that ran out of memory leaves.
    void DropAll() noexcept;

private:
    EMthRetOfReadXML ReadSpecOfBtnClassByXML(const char* folder, CXMLReader& reader,
                                             SCKZCoreCom::ESpecType specType, DWORD recCountOfEnv,
                                             const std::unique_ptr<IRpLink>& rpLinkOfEnv);
    EMthRetOfReadXML ReadEmpValBtnDisp(const CXMLReader& reader);
    void ReserveForBtns(CXMLReader& reader);
    bool MeetFirst(DWORD btnID);
    void RegReadBtns(CXMLReader& reader);
    EMthRetOfReadXML ReadSrcBtnFixed(CXMLReader& reader, DWORD btnID);
    EMthRetOfReadXML ReadSrcBtnCommon(const char* folder, CXMLReader& reader, DWORD btnID, bool hasRecInfo);
    // Enters a source button that has records in the lists that it stands in then.
    void ListReadBtn(VCBtn& btn);
    // Enters the empty-value button; false if its identifier is taken.
    bool CreateEmpValBtn(const char* alias);
    void ClearOwnFields() noexcept;
    void CreateDataBtn(const char* value);
    bool BringBtnBack(VCBtn& btn);
    void ResetInsideInfoAboveBtns(const std::vector<const VCBtn*>& srcBtns, bool buildRpLink, bool force);
};

} // namespace NSKZ::NSKZCore

#endif
