#ifndef VCBTN_H
#define VCBTN_H

#include "CXMLReader.h"
#include "CXMLWriter.h"
#include "SBtnClassIDAndBtnID.h"
#include "SCBUICoreCom.h"
#include "SCKZCoreCom.h"
#include "TCFlatSet.h"

#include <memory>

namespace NSKZ::NSKZCore {

// Reasons to hide a button, as the bits of its visible info. Each bit is one reason; a button is displayed
// exactly when no bit is set.
constexpr unsigned int VISINFO_SELCLLMEMBER = 0x1; // member of a cll button that selects by list
constexpr unsigned int VISINFO_CNDCLLMEMBER = 0x2; // member of a cll button that selects by condition
constexpr unsigned int VISINFO_INCMEMBER = 0x4; // member of inc buttons, none of which displays its members
constexpr unsigned int VISINFO_NOMEMBER = 0x8;  // special button: its member list is empty
constexpr unsigned int VISINFO_NOLIVEMEMBER = 0x10;  // special button: no member is alive
constexpr unsigned int VISINFO_RELATION = 0x20;      // the relation of the selection leaves the button out
constexpr unsigned int VISINFO_RESERVED = 0x40;      // never set
constexpr unsigned int VISINFO_LIMITEDREC = 0x80;    // the limited record list leaves the button out
constexpr unsigned int VISINFO_NOREC = 0x100;        // source button: its value has no record at present
constexpr unsigned int VISINFO_EMPVALNODISP = 0x200; // empty-value button: the class hides the empty value
constexpr unsigned int VISINFO_INEFFECTIVE = 0x400;  // special button: it was made ineffective

// The reasons that come from what a user fixed: ClearOfFixedSpec clears them.
constexpr unsigned int VISINFO_MASK_FIXEDSPEC = VISINFO_SELCLLMEMBER | VISINFO_CNDCLLMEMBER |
                                                VISINFO_INCMEMBER | VISINFO_RELATION | VISINFO_RESERVED |
                                                VISINFO_LIMITEDREC;
// The reasons that count against a member's being alive.
constexpr unsigned int VISINFO_MASK_NOTALIVE =
    VISINFO_NOMEMBER | VISINFO_NOLIVEMEMBER | VISINFO_LIMITEDREC | VISINFO_NOREC;

// One selectable button of an analysis item: what every kind of button has. A button knows nothing of
// records; they are reached through the link tables by its identifier.
//
// Buttons are owned by their class, which alone reaches them, and reaches their fields directly. For a source
// button the class keeps the reasons VISINFO_RELATION and VISINFO_LIMITEDREC beside its buttons (see
// CSrcBtnDisplay): they are worked out for all buttons of the class at every press, and never stand in
// `visibleInfo` here. Ask the class for the whole visible info of a button.
//
// Texts are in the host's code page, NUL-terminated.
class VCBtn
{
public:
    // The special buttons that hold a button as member. Few buttons are members, so most have none of this.
    struct SBackReferences
    {
        TCFlatSet<DWORD> spBtnIDsInClass;                    // of the same class
        TCFlatSet<SBtnClassIDAndBtnID> spBtnIDsOfOtherClass; // virtual inc buttons of other classes
    };

    // `name` is copied; null stands for no name.
    VCBtn(DWORD id, const char* name);
    virtual ~VCBtn();
    VCBtn(const VCBtn&) = delete;
    VCBtn& operator=(const VCBtn&) = delete;

    // Back to a button of identifier 0 without texts, selection, reasons to hide and back-references.
    virtual void Clear();
    // Takes over what every kind of button has from `other`, which may be this button. An absent text is
    // copied as absent. If memory is exhausted the button stays as it was.
    virtual void Copy(const VCBtn& other);
    // Drops what users added: the selection, the reasons of VISINFO_MASK_FIXEDSPEC, the back-references to
    // special buttons of the class and to those of fixed virtual classes. Does not throw.
    virtual void ClearOfFixedSpec();

    // --- A button in the saved forms of its class (VCBtnClass has them whole): the element "Btn".
    static constexpr char STR_ELENAME_BTN[] = "Btn";
    static constexpr DWORD STRLEN_ELENAME_BTN = sizeof STR_ELENAME_BTN - 1;
    static constexpr char STR_ATTRNAME_ID[] = "id";
    static constexpr DWORD STRLEN_ATTRNAME_ID = sizeof STR_ATTRNAME_ID - 1;
    static constexpr char STR_ATTRNAME_TYPE[] = "type";
    static constexpr DWORD STRLEN_ATTRNAME_TYPE = sizeof STR_ATTRNAME_TYPE - 1;
    static constexpr char STR_ATTRNAME_NAME[] = "name";
    static constexpr DWORD STRLEN_ATTRNAME_NAME = sizeof STR_ATTRNAME_NAME - 1;
    static constexpr char STR_ATTRNAME_ALIAS[] = "alias";
    static constexpr DWORD STRLEN_ATTRNAME_ALIAS = sizeof STR_ATTRNAME_ALIAS - 1;
    static constexpr char STR_ATTRNAME_SEL[] = "sel";
    static constexpr DWORD STRLEN_ATTRNAME_SEL = sizeof STR_ATTRNAME_SEL - 1;

    // Write what users fixed of the button, or what follows from the source data. A button that is selected
    // as `defaultSel` says has nothing to write in the first, nor has a special button that users fixed in
    // the second. False as CXMLWriter tells, or with the last error ERROR_INVALID_DATA for what has no text.
    // `folder` and `withData` are handed through.
    virtual bool WriteFixedSpecByXML(CXMLWriter& writer, bool defaultSel) const = 0;
    virtual bool WriteCommonSpecByXML(const char* folder, CXMLWriter& writer, bool withData) const = 0;
    // Read from the element that the reader is on, and leave the reader on its level. READXML_NOELEMENT if it
    // is on none; READXML_BADFORMAT if the element is not that of such a button: the button is to be cleared
    // then. Back-references are not made: the class does that when it has all buttons.
    virtual CXMLReader::EMthRetOfReadXML ReadFixedSpecByXML(CXMLReader& reader) = 0;
    virtual CXMLReader::EMthRetOfReadXML ReadCommonSpecByXML(const char* folder, CXMLReader& reader) = 0;

    virtual SCBUICoreCom::EBtnType GetType() const = 0;
    // A new button of the same kind and content.
    virtual std::unique_ptr<VCBtn> Clone() const = 0;

    // Whether the button takes part in the analysis. Source buttons always do; a special button may be
    // switched off.
    virtual bool IsEffective() const noexcept { return true; }

    // Gives the button the alias `text`. A text equal to the name means no alias: the button shows its name
    // again. Null gives an empty alias, not the name. `text` may be a text of the button itself. If memory is
    // exhausted the button stays as it was.
    void SetAlias(const char* text) { SetAlias(MakeAlias(text)); }

    // The same in two steps: what the alias will be, and making it so, which does not fail.
    struct SAlias
    {
        std::unique_ptr<char[]> text; // null if isName
        bool isName;
    };
    SAlias MakeAlias(const char* text) const;
    void SetAlias(SAlias&& made) noexcept;

    // What the button shows everywhere: its name, or its alias if it has one of its own. May be null.
    const char* GetShownText() const noexcept { return aliasIsName ? name.get() : alias.get(); }

    bool HasBackReferences() const noexcept
    {
        return backReferences != nullptr &&
               !(backReferences->spBtnIDsInClass.empty() && backReferences->spBtnIDsOfOtherClass.empty());
    }

    std::unique_ptr<char[]> alias; // null when the button has no alias of its own
    std::unique_ptr<char[]> name;  // the value in the source; null on empty-value and special buttons
    std::unique_ptr<SBackReferences> backReferences; // null: none
    DWORD id;
    unsigned int visibleInfo = 0;
    bool aliasIsName = true;
    bool sel = false;

protected:
    using Attributes = std::vector<IXMLIO::SAttribute>;

    // Which tag of the element is written; the end tag has no attributes.
    enum EElementPart
    {
        ELEMENTPART_START = 1,
        ELEMENTPART_END = 2,
        ELEMENTPART_EMPTY = 3,
    };
    // Writes a tag of the element: "id"; the type, which may be null; "name" and "alias", or "sel"; and
    // further attributes behind them. Throws ECAbnormalData for an unknown form. The second form writes "sel"
    // as `selToWrite` has it.
    bool WriteSpecByXML(CXMLWriter& writer, const Attributes& attributes, const IXMLIO::SAttribute* typeAttr,
                        SCKZCoreCom::ESpecType specType, EElementPart part) const;
    bool WriteSpecByXML(CXMLWriter& writer, const Attributes& attributes, const IXMLIO::SAttribute* typeAttr,
                        SCKZCoreCom::ESpecType specType, EElementPart part, bool selToWrite) const;
    // The fixed form of a button that only has a selection to save.
    bool WriteSelectionByXML(CXMLWriter& writer, bool defaultSel) const;
    // The common form of a source button, with the word of its type.
    bool WriteSrcBtnByXML(CXMLWriter& writer, const char* typeWord, DWORD typeWordLen) const;
    // Reads what the former wrote, after Clear or ClearOfFixedSpec; READXML_BADFORMAT also for another tag.
    // What was read is blank in `attributes` afterwards.
    CXMLReader::EMthRetOfReadXML ReadSpecByXML(const char* tag, DWORD tagLen, Attributes& attributes,
                                               SCKZCoreCom::ESpecType specType);
    // The same for the element that the reader is on.
    CXMLReader::EMthRetOfReadXML ReadSpecOfCurrentElement(const CXMLReader& reader,
                                                          SCKZCoreCom::ESpecType specType);

    // `text` with its NUL in memory of its own; null for null.
    static std::unique_ptr<char[]> DuplicateText(const char* text);
    // The same for the `len` bytes at `text`.
    static std::unique_ptr<char[]> DuplicateText(const char* text, std::size_t len);
};

} // namespace NSKZ::NSKZCore

#endif
