#ifndef CVIRBTNCLASS_H
#define CVIRBTNCLASS_H

#include "CVirIncBtn.h"
#include "VCBtnClass.h"

#include <map>
#include <optional>
#include <set>
#include <string>

namespace NSKZ::NSKZCore {

// An item without a field: a user lays out groupings of other items' buttons in it. Its buttons are virtual
// inc buttons, each of which refers to one other class and groups buttons of that; beside them it may have
// inc and cll buttons over its own buttons.
//
// The identifier tells whether the class is common (its definition is shared by users, who fix no more than
// what is selected) or fixed (a user's own, gone with the rest of what the user fixed).
//
// References. The class counts its virtual inc buttons by the class that they refer to. While it counts one,
// the referred class knows this one, so that what happens to buttons there reaches the buttons here; it may
// be a virtual class itself, but never this one. When a referred class goes, the buttons that refer to it
// lose their members and stay behind ineffective, and refer to no class any more.
class CVirBtnClass final : public VCBtnClass
{
public:
    // `name` is copied and may be null.
    CVirBtnClass(DWORD id, const char* name, const std::unique_ptr<IRpLink>& rpLinkOfEnv);
    ~CVirBtnClass() override;

    bool IsCommon() const noexcept { return SCBUICoreCom::IsCommonVirBtnClass(id); }
    // May be null; good until it is set.
    const char* GetName() const noexcept { return name.has_value() ? name->c_str() : nullptr; }
    void SetName(const char* text);
    SCBUICoreCom::EBtnClassType GetBtnClassType() const override;

    // Makes a virtual inc button over buttons of `refBtnClass`, otherwise as CreateIncBtn.
    // CREATESPBTN_NOBTNCLASS if that is this class, or a fixed virtual class while this one is common: it
    // would outlive it.
    EMthRetOfCreateSpBtn CreateVirIncBtn(const char* alias, VCSpBtn::EMmbBtnSelMth selMth,
                                         const std::vector<DWORD>* members, const IBtnCnd* cnd,
                                         VCBtnClass& refBtnClass, DWORD& btnID);
    // As DestroyIncBtn.
    bool DestroyVirIncBtn(DWORD btnID);
    // The class that a virtual inc button refers to, 0 once that class is gone; false for any other button.
    bool GetRefBtnClassIDOfVirIncBtn(DWORD btnID, DWORD& refBtnClassID) const;
    // How many of the class's buttons refer to a class.
    DWORD GetRefCount(DWORD refBtnClassID) const noexcept;

    // The other classes forget this one and its buttons, which forget their members: to be called before the
    // class is destroyed. If memory is exhausted some buttons of other classes that refer to this one are
    // ineffective, and the rest is as it was.
    void Release();

    // Also refuses to switch on a virtual inc button whose referred class is gone.
    bool SetEffectiveInfoOfSpBtn(DWORD btnID, bool isEffective) override;

    // --- Saved forms (VCBtnClass). Constants of what only a virtual class has.
    static constexpr char STR_ATTRNAME_NAME[] = "name";
    static constexpr DWORD STRLEN_ATTRNAME_NAME = sizeof STR_ATTRNAME_NAME - 1;
    static constexpr char STR_ELENAME_VIRINCBTN[] = "VirIncBtn";
    static constexpr DWORD STRLEN_ELENAME_VIRINCBTN = sizeof STR_ELENAME_VIRINCBTN - 1;

    // Writes the class in a form; nothing of an ineffective class, and of a fixed class nothing in the common
    // form. The definition is part of the common form of a common class and of the fixed form of a fixed one.
    // False as CXMLWriter tells, or with the last error ERROR_INVALID_DATA.
    bool WriteSpecOfBtnClassByXML(const char* folder, CXMLWriter& writer, bool withData,
                                  SCKZCoreCom::ESpecType specType) const;
    // Reads the class, as the two operations of VCSrcBtnClass do. READXML_BADFORMAT also for an identifier
    // that is not that of a virtual class, and for the common form of a fixed class. Which classes its
    // buttons refer to is known afterwards, the classes themselves are not: BindRefBtnClasses follows.
    CXMLReader::EMthRetOfReadXML ReadSpecOfBtnClassByXML(const char* folder, CXMLReader& reader,
                                                         SCKZCoreCom::ESpecType specType, DWORD recCountOfEnv,
                                                         const std::unique_ptr<IRpLink>& rpLinkOfEnv);
    // Ties the class to the classes that its buttons refer to, and those to this one. A virtual inc button is
    // dropped if it refers to no class of these, to this very class, or from a common to a fixed class, and
    // its identifier is free. SettleMembers is to be called for all classes behind it.
    void BindRefBtnClasses(const std::map<DWORD, std::unique_ptr<VCBtnClass>>& btnClasses);
    // Ties a copied class and the copies of the classes that its buttons refer to. If memory is exhausted
    // some are tied and others not.
    void BindCopiedRefBtnClasses(const std::map<DWORD, std::unique_ptr<VCBtnClass>>& copies);
    // Switches off the buttons over classes that are switched off, as those would have done; they come back
    // with them. To be called when the members are settled.
    void SwitchOffBtnsOverIneffectiveClasses();

    void Clear() override;
    // A common class keeps its virtual inc buttons, a fixed one is emptied.
    void ClearOfFixedSpec() override;
    // The clones refer to classes that are not bound yet: BindCopiedRefBtnClasses does that.
    void Copy(const VCBtnClass& other, const std::unique_ptr<IRpLink>& rpLinkOfEnv) override;
    // The class has no values: it only follows the number of records. The arrays are not looked at.
    bool AddRecs(DWORD startRec, DWORD count, const char* const* values, DWORD* outBtnIDs,
                 TCBtnIDAssArr<DWORD>& counts) override;
    bool DeleteRecs(DWORD startRec, DWORD count) override;

protected:
    // A virtual inc button too, which refers to no class yet.
    std::unique_ptr<VCBtn> CreateBtnBasedOnBtnID(DWORD btnID) const override;
    std::unique_ptr<VCBtn> CreateBtnBasedOnBtnType(SCBUICoreCom::EBtnType type) const override;
    bool GetBtnTypeBasedOnBtnTypeAttrValue(const char* text, DWORD len,
                                           SCBUICoreCom::EBtnType& type) const override;
    VCBtnClass* GetBtnClassOfMembers(const VCSpBtn& spBtn) const noexcept override;
    bool WriteChildElementsPartOfSpecByXML(const char* folder, CXMLWriter& writer, bool withData,
                                           SCKZCoreCom::ESpecType specType) const override;
    EMthRetOfReadXML ReadStartTagPartOfSpecByXML(const char* tag, DWORD tagLen, Attributes& attributes,
                                                 SCKZCoreCom::ESpecType specType, DWORD recCountOfEnv,
                                                 const std::unique_ptr<IRpLink>& rpLinkOfEnv) override;
    EMthRetOfReadXML ReadChildElementPartOfSpecByXML(const char* folder, CXMLReader& reader,
                                                     SCKZCoreCom::ESpecType specType) override;
    EMthRetOfReadXML ReadBtnSpecByXML(const char* folder, CXMLReader& reader, DWORD btnID, bool hasRecInfo,
                                      SCKZCoreCom::ESpecType specType) override;
    void RepairIDs(CXMLReader& reader, SCKZCoreCom::ESpecType specType) override;
    // That of a virtual inc button of a common class.
    bool IsInCommonForm(const VCSpBtn& spBtn) const noexcept override;
    void AddRefBtnClasses(std::vector<const VCBtnClass*>& classes) const override;
    void LoseRefBtnClass(DWORD refBtnClassID) override;
    void ForgetRefBtnClass(DWORD refBtnClassID) noexcept override;

private:
    struct SRefBtnClass
    {
        DWORD btnCount;       // virtual inc buttons that refer to it
        VCBtnClass* btnClass; // borrowed; null while there is no such class
    };

    // Whether the definition of the class is part of that form.
    bool IsDefinedIn(SCKZCoreCom::ESpecType specType) const noexcept;
    void CountReadRefs();
    void CountRef(VCBtnClass& refBtnClass);
    void UncountRef(DWORD refBtnClassID) noexcept;
    void LeaveRefBtnClasses() noexcept;
    void ClearOwnFields() noexcept;

    std::optional<std::string> name;
    DWORD nextVirIncBtnID;             // the next virtual inc identifier that was never used
    std::set<DWORD> blankVirIncBtnIDs; // released ones
    std::map<DWORD, SRefBtnClass> refBtnClasses;
    std::set<DWORD> virIncBtnsRead; // while "Btns" is read: those of a common class whose selection was met
};

} // namespace NSKZ::NSKZCore

#endif
