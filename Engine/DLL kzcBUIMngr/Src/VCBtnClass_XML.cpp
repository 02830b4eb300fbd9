// A class in its saved forms, and what makes true again what was read.

#include "VCBtnClass.h"

#include "ECAbnormalData.h"
#include "IRpLink.h"
#include "SCIDList.h"
#include "SCKZCoreStrDef.h"
#include "SCSpecXML.h"

#include <algorithm>
#include <cstring>

namespace NSKZ::NSKZCore {

namespace {

constexpr const char* SRC_FILE = "Src/VCBtnClass";

constexpr struct
{
    SCBUICoreCom::EBtnClassType type;
    const char* word;
} WORDS_OF_TYPES[] = {
    {SCBUICoreCom::BTNCLSTYPE_NORMAL, "Normal"}, {SCBUICoreCom::BTNCLSTYPE_NUM, "Num"},
    {SCBUICoreCom::BTNCLSTYPE_DATE, "Date"},     {SCBUICoreCom::BTNCLSTYPE_TIME, "Time"},
    {SCBUICoreCom::BTNCLSTYPE_VIR, "Virtual"},
};

[[noreturn]] void ThrowUnknownSpecType(const char* function, long line)
{
    throw ECAbnormalData(SCKZCoreStrDef::MSG_UNKNOWN_SPECTYPE, SRC_FILE, function, line);
}

bool IsSpecType(SCKZCoreCom::ESpecType specType) noexcept
{
    return specType == SCKZCoreCom::SPECTYPE_COMMON || specType == SCKZCoreCom::SPECTYPE_FIXED;
}

// The type of a button with that identifier; false for no button.
bool GetTypeOfID(DWORD btnID, SCBUICoreCom::EBtnType& type) noexcept
{
    if (SCBUICoreCom::IsNormalBtn(btnID))
        type = SCBUICoreCom::BTNTYPE_NORMAL;
    else if (SCBUICoreCom::IsEmpValBtn(btnID))
        type = SCBUICoreCom::BTNTYPE_EMPVAL;
    else if (SCBUICoreCom::IsIncBtn(btnID))
        type = SCBUICoreCom::BTNTYPE_INC;
    else if (SCBUICoreCom::IsVirIncBtn(btnID))
        type = SCBUICoreCom::BTNTYPE_VIRINC;
    else if (SCBUICoreCom::IsCllBtn(btnID))
        type = SCBUICoreCom::BTNTYPE_CLL;
    else
        return false;
    return true;
}

} // namespace

const char* VCBtnClass::GetBtnClassTypeAttrValue(SCBUICoreCom::EBtnClassType type) noexcept
{
    for (const auto& known : WORDS_OF_TYPES) {
        if (known.type == type)
            return known.word;
    }
    return nullptr;
}

bool VCBtnClass::GetBtnClassTypeBasedOnAttrValue(const char* text, DWORD len,
                                                 SCBUICoreCom::EBtnClassType& type) noexcept
{
    for (const auto& known : WORDS_OF_TYPES) {
        if (IXMLIO::IsSameText(text, len, known.word, static_cast<DWORD>(std::strlen(known.word)))) {
            type = known.type;
            return true;
        }
    }
    return false;
}

// --- Writing

bool VCBtnClass::WriteStartTagPartOfSpecByXML(CXMLWriter& writer, const Attributes& attributesOfCaller,
                                              SCKZCoreCom::ESpecType specType,
                                              const IXMLIO::SAttribute* commonAttr,
                                              const IXMLIO::SAttribute* attr1,
                                              const IXMLIO::SAttribute* attr2) const
{
    SCSpecXML::CAttributes attributes;
    if (!attributes.AddNumber(STR_ATTRNAME_ID, id))
        return false;
    for (const IXMLIO::SAttribute* const attribute : {attr1, attr2}) {
        if (attribute != nullptr)
            attributes.Add(*attribute);
    }
    switch (specType) {
    case SCKZCoreCom::SPECTYPE_COMMON:
        if (commonAttr != nullptr)
            attributes.Add(*commonAttr);
        break;
    case SCKZCoreCom::SPECTYPE_FIXED:
        if (btnSelState)
            attributes.AddTrue(STR_ATTRNAME_BTNSELSTATE);
        if (newBtnMadeSelState)
            attributes.AddTrue(STR_ATTRNAME_NEWBTNMADESELSTATE);
        break;
    default:
        ThrowUnknownSpecType("NSKZ::NSKZCore::VCBtnClass::WriteStartTagPartOfSpecByXML", 1118);
    }
    attributes.Add(attributesOfCaller);
    return writer.PutStartTag(STR_ELENAME_BTNCLASS, STRLEN_ELENAME_BTNCLASS, attributes.Get());
}

bool VCBtnClass::WriteChildElementsPartOfSpecByXML(const char* folder, CXMLWriter& writer, bool withData,
                                                   SCKZCoreCom::ESpecType specType) const
{
    if (!IsSpecType(specType))
        ThrowUnknownSpecType("NSKZ::NSKZCore::VCBtnClass::WriteChildElementsPartOfSpecByXML", 1202);
    if (specType == SCKZCoreCom::SPECTYPE_FIXED &&
        !(WriteSpBtnIDSpecByXML(writer, STR_ELENAME_INCBTN, STRLEN_ELENAME_INCBTN, SCBUICoreCom::BTNTYPE_INC,
                                SCBUICoreCom::BTN_ID_INC_BEGIN, incNextID, incBlankIDList) &&
          WriteSpBtnIDSpecByXML(writer, STR_ELENAME_CLLBTN, STRLEN_ELENAME_CLLBTN, SCBUICoreCom::BTNTYPE_CLL,
                                SCBUICoreCom::BTN_ID_CLL_BEGIN, cllNextID, cllBlankIDList)))
        return false;
    return WriteBtnsSpecByXML(folder, writer, withData, specType);
}

bool VCBtnClass::WriteEndTagPartOfSpecByXML(CXMLWriter& writer) const
{
    return writer.PutEndTag(STR_ELENAME_BTNCLASS, STRLEN_ELENAME_BTNCLASS);
}

bool VCBtnClass::WriteSpBtnIDSpecByXML(CXMLWriter& writer, const char* tag, DWORD tagLen,
                                       SCBUICoreCom::EBtnType type, DWORD beginID, DWORD nextID,
                                       const std::set<DWORD>& blankIDs) const
{
    if (nextID == beginID)
        return true;
    std::set<DWORD> freeIDs(blankIDs);
    for (const auto& [btnID, spBtn] : spBtnOfID) {
        if (!IsSaved(*spBtn) && spBtn->GetType() == type)
            freeIDs.insert(btnID);
    }
    return WriteBtnIDSpecByXML(writer, tag, tagLen, nextID, freeIDs);
}

bool VCBtnClass::WriteBtnIDSpecByXML(CXMLWriter& writer, const char* tag, DWORD tagLen, DWORD nextID,
                                     const std::set<DWORD>& blankIDs)
{
    SCSpecXML::CAttributes attributes;
    if (!attributes.AddNumber(STR_ATTRNAME_NEXTID, nextID))
        return false;
    if (!blankIDs.empty()) {
        std::string text;
        constexpr std::size_t MAX_SIZE = CXMLWriter::WRITING_BUFFER_SIZE;
        // No more than can stand in the text, with a digit and a comma each.
        const auto written = static_cast<std::ptrdiff_t>(std::min(blankIDs.size(), MAX_SIZE / 2 + 1));
        if (!SCSpecXML::ConvertIntoText({blankIDs.begin(), std::next(blankIDs.begin(), written)}, text))
            return false;
        constexpr std::size_t LAST_NUMBERS = 32; // at least one comma is among them
        if (text.size() > MAX_SIZE) {
            text.resize(MAX_SIZE + 1);
            const auto* const tail =
                reinterpret_cast<const unsigned char*>(text.c_str()) + MAX_SIZE - LAST_NUMBERS;
            const unsigned char* const comma = _mbsrchr(tail, SCKZCoreCom::CHAR_COMMA);
            text.resize(MAX_SIZE - LAST_NUMBERS + static_cast<std::size_t>(comma - tail));
        }
        attributes.AddKept(STR_ATTRNAME_BLANKIDLIST, std::move(text));
    }
    return writer.PutEmptyElement(tag, tagLen, attributes.Get());
}

bool VCBtnClass::WriteBtnsSpecByXML(const char* folder, CXMLWriter& writer, bool withData,
                                    SCKZCoreCom::ESpecType specType) const
{
    if (!IsSpecType(specType))
        ThrowUnknownSpecType("NSKZ::NSKZCore::VCBtnClass::WriteBtnsSpecByXML", 775);
    if (!writer.PutStartTag(STR_ELENAME_BTNS, STRLEN_ELENAME_BTNS, {}))
        return false;
    const bool defaultSel = newBtnMadeSelState && btnSelState;
    for (const VCBtn* const btn : srcBtnOfID) {
        if (btn != nullptr && !WriteBtnSpecByXML(folder, writer, withData, specType, defaultSel, *btn))
            return false;
    }
    for (const auto& [btnID, spBtn] : spBtnOfID) {
        if (!WriteBtnSpecByXML(folder, writer, withData, specType, defaultSel, *spBtn))
            return false;
    }
    return writer.PutEndTag(STR_ELENAME_BTNS, STRLEN_ELENAME_BTNS);
}

bool VCBtnClass::WriteBtnSpecByXML(const char* folder, CXMLWriter& writer, bool withData,
                                   SCKZCoreCom::ESpecType specType, bool defaultSel, const VCBtn& btn) const
{
    const bool isCommonForm = specType == SCKZCoreCom::SPECTYPE_COMMON;
    if (SCBUICoreCom::IsSpBtn(btn.id)) {
        const auto& spBtn = static_cast<const VCSpBtn&>(btn);
        if (!IsSaved(spBtn))
            return true;
        // A list may name buttons that are not saved themselves.
        const VCBtnClass& classOfMembers = *GetBtnClassOfMembers(spBtn);
        const auto isUnsaved = [&classOfMembers](DWORD mmbBtnID) {
            const VCSpBtn* const member = classOfMembers.FindSpBtn(mmbBtnID);
            return member != nullptr && !classOfMembers.IsSaved(*member);
        };
        const std::vector<DWORD>& members = spBtn.mmbBtnIDList;
        const bool isDefinedHere = isCommonForm == IsInCommonForm(spBtn);
        if (isDefinedHere && std::any_of(members.begin(), members.end(), isUnsaved)) {
            std::vector<DWORD> saved(members);
            std::erase_if(saved, isUnsaved);
            return spBtn.WriteDefinitionByXML(writer, saved, !isCommonForm && spBtn.sel);
        }
    }
    return isCommonForm ? btn.WriteCommonSpecByXML(folder, writer, withData)
                        : btn.WriteFixedSpecByXML(writer, defaultSel);
}

// Not what is switched off, and not what stands for buttons of a class that is switched off or gone.
bool VCBtnClass::IsSaved(const VCSpBtn& spBtn) const noexcept
{
    const VCBtnClass* const classOfMembers = GetBtnClassOfMembers(spBtn);
    return spBtn.effective && classOfMembers != nullptr &&
           (classOfMembers == this || classOfMembers->effective);
}

bool VCBtnClass::IsInCommonForm(const VCSpBtn&) const noexcept
{
    return false;
}

// --- Reading

bool VCBtnClass::ReadBtnIDSpecByXML(Attributes& attributes, DWORD& nextID, std::set<DWORD>& blankIDs)
{
    if (!SCSpecXML::TakeID(attributes, STR_ATTRNAME_NEXTID, nextID))
        return false;
    std::vector<DWORD> ids;
    if (SCSpecXML::TakeNumbers(attributes, STR_ATTRNAME_BLANKIDLIST, ids) == SCSpecXML::TAKEN_BAD)
        return false;
    SCIDList::SortAndTakeEachOnce(ids);
    blankIDs = std::set<DWORD>(ids.begin(), ids.end());
    return true;
}

VCBtnClass::EMthRetOfReadXML
VCBtnClass::ReadStartTagPartOfSpecByXML(const char* tag, DWORD tagLen, Attributes& attributes,
                                        SCKZCoreCom::ESpecType specType, DWORD recCountOfEnv,
                                        const std::unique_ptr<IRpLink>& rpLinkOfEnv)
{
    if (!IXMLIO::IsSameText(tag, tagLen, STR_ELENAME_BTNCLASS, STRLEN_ELENAME_BTNCLASS))
        return CXMLReader::READXML_BADFORMAT;
    allRequiredChildAppeared = false;
    if (specType == SCKZCoreCom::SPECTYPE_COMMON) {
        Clear();
        if (!SCSpecXML::TakeID(attributes, STR_ATTRNAME_ID, id))
            return CXMLReader::READXML_BADFORMAT;
        recCount = recCountOfEnv;
        rpLink = &rpLinkOfEnv;
        return CXMLReader::READXML_OK;
    }
    ClearOfFixedSpec();
    bool isFlag =
        SCSpecXML::TakeFlag(attributes, STR_ATTRNAME_BTNSELSTATE, btnSelState) != SCSpecXML::TAKEN_BAD;
    isFlag = SCSpecXML::TakeFlag(attributes, STR_ATTRNAME_NEWBTNMADESELSTATE, newBtnMadeSelState) !=
                 SCSpecXML::TAKEN_BAD &&
             isFlag;
    return isFlag ? CXMLReader::READXML_OK : CXMLReader::READXML_BADFORMAT;
}

VCBtnClass::EMthRetOfReadXML VCBtnClass::ReadChildElementPartsOfSpecByXML(const char* folder,
                                                                          CXMLReader& reader,
                                                                          SCKZCoreCom::ESpecType specType)
{
    EMthRetOfReadXML result = SCSpecXML::ReadSiblings(
        reader, [&] { return ReadChildElementPartOfSpecByXML(folder, reader, specType); });
    if (result == CXMLReader::READXML_NOTEXIST)
        result = CXMLReader::READXML_OK;
    RepairIDs(reader, specType);
    if (result == CXMLReader::READXML_OK && !allRequiredChildAppeared)
        return CXMLReader::READXML_BADFORMAT;
    return result;
}

VCBtnClass::EMthRetOfReadXML VCBtnClass::ReadChildElementPartOfSpecByXML(const char* folder,
                                                                         CXMLReader& reader,
                                                                         SCKZCoreCom::ESpecType specType)
{
    const char* name = nullptr;
    DWORD nameLen = 0;
    if (!reader.GetCurrentElementName(name, nameLen))
        return CXMLReader::READXML_NOELEMENT;
    if (SCSpecXML::IsOnElement(reader, STR_ELENAME_BTNS)) // twice is once
        return allRequiredChildAppeared ? CXMLReader::READXML_BADFORMAT
                                        : ReadBtnsSpecByXML(folder, reader, specType);
    const bool isIncBtn = SCSpecXML::IsOnElement(reader, STR_ELENAME_INCBTN);
    if (specType == SCKZCoreCom::SPECTYPE_COMMON ||
        !(isIncBtn || SCSpecXML::IsOnElement(reader, STR_ELENAME_CLLBTN)))
        return CXMLReader::READXML_UNKNOWNELEMENT;
    Attributes attributes(reader.GetAttributes());
    const bool isRead = isIncBtn ? ReadBtnIDSpecByXML(attributes, incNextID, incBlankIDList)
                                 : ReadBtnIDSpecByXML(attributes, cllNextID, cllBlankIDList);
    return isRead ? CXMLReader::READXML_OK : CXMLReader::READXML_BADFORMAT;
}

VCBtnClass::EMthRetOfReadXML VCBtnClass::ReadBtnsSpecByXML(const char* folder, CXMLReader& reader,
                                                           SCKZCoreCom::ESpecType specType)
{
    if (btnSelState && newBtnMadeSelState) // what is not named is selected
        SetSelectionInfoOfAllBtns(true);
    const bool hasRecInfo = (*rpLink)->ExistFld(id);
    const EMthRetOfReadXML result = SCSpecXML::ReadChildren(reader, CXMLReader::READXML_OK, [&] {
        DWORD btnID = SCBUICoreCom::BTN_ID_UNSETTING;
        if (!SCSpecXML::IsOnElement(reader, VCBtn::STR_ELENAME_BTN))
            return CXMLReader::READXML_UNKNOWNELEMENT;
        if (!SCSpecXML::GetID(reader.GetAttributes(), STR_ATTRNAME_ID, btnID))
            return CXMLReader::READXML_BADFORMAT;
        return ReadBtnSpecByXML(folder, reader, btnID, hasRecInfo, specType);
    });
    if (result != CXMLReader::READXML_OK)
        return result;
    allRequiredChildAppeared = true;
    std::vector<DWORD> selectedIDs;
    GetSelectedBtnIDList(selectedIDs);
    selBtnCount = static_cast<DWORD>(selectedIDs.size());
    return result;
}

VCBtnClass::EMthRetOfReadXML VCBtnClass::ReadBtnSpecByXML(const char* folder, CXMLReader& reader, DWORD btnID,
                                                          bool, SCKZCoreCom::ESpecType specType)
{
    if (FindBtn(btnID) != nullptr || !IsTypeOfElement(reader, btnID))
        return CXMLReader::READXML_BADFORMAT;
    std::unique_ptr<VCBtn> btn = CreateBtnBasedOnBtnID(btnID);
    if (btn == nullptr)
        return CXMLReader::READXML_BADFORMAT;
    const EMthRetOfReadXML result = specType == SCKZCoreCom::SPECTYPE_COMMON
                                        ? btn->ReadCommonSpecByXML(folder, reader)
                                        : btn->ReadFixedSpecByXML(reader);
    btn->visibleInfo |= VISINFO_NOLIVEMEMBER;
    if (result != CXMLReader::READXML_OK)
        return result;
    if (!TakeRoomFor(reader, btnID))
        return CXMLReader::READXML_BADFORMAT;
    const VCBtn& read = *btn;
    if (SCBUICoreCom::IsSpBtn(btnID))
        static_cast<VCSpBtn&>(*btn).isRowOutdated = true;
    RegBtn(std::move(btn)); // before anything names it
    if (SCBUICoreCom::IsSpBtn(btnID))
        ++spBtnCount;
    if ((read.visibleInfo & VISINFO_NOREC) == 0)
        InsertBtnInfoToNameOrdList(&read);
    NoteReadSelection(read);
    return CXMLReader::READXML_OK;
}

bool VCBtnClass::IsTypeOfElement(const CXMLReader& reader, DWORD btnID) const
{
    DWORD index = 0;
    const Attributes& attributes = reader.GetAttributes();
    if (!CXMLReader::SearchAttribute(attributes, static_cast<DWORD>(attributes.size()), STR_ATTRNAME_TYPE,
                                     STRLEN_ATTRNAME_TYPE, index))
        return true;
    SCBUICoreCom::EBtnType told{};
    SCBUICoreCom::EBtnType type{};
    return GetBtnTypeBasedOnBtnTypeAttrValue(attributes[index].value, attributes[index].valueLen, told) &&
           GetTypeOfID(btnID, type) && told == type;
}

// One past the greatest identifier of a range that is in use; its begin if none is.
DWORD VCBtnClass::GetEndIDInUse(DWORD beginID, DWORD endID) const noexcept
{
    if (beginID == SCBUICoreCom::BTN_ID_NRM_BEGIN)
        return std::max(beginID, static_cast<DWORD>(srcBtnOfID.size()));
    const auto behind = spBtnOfID.upper_bound(endID);
    if (behind == spBtnOfID.begin())
        return beginID;
    return std::max(beginID, std::prev(behind)->first + 1);
}

bool VCBtnClass::TakeRoomFor(CXMLReader& reader, DWORD btnID) const noexcept
{
    // The lists of the class are as long as the greatest identifier of a kind.
    const auto take = [&](DWORD beginID, DWORD endID) {
        const DWORD endIDInUse = GetEndIDInUse(beginID, endID);
        return btnID < endIDInUse || reader.TakeFromAllowance(btnID - endIDInUse + 1);
    };
    if (SCBUICoreCom::IsNormalBtn(btnID))
        return take(SCBUICoreCom::BTN_ID_NRM_BEGIN, SCBUICoreCom::BTN_ID_NRM_END);
    if (SCBUICoreCom::IsIncBtn(btnID))
        return take(SCBUICoreCom::BTN_ID_INC_BEGIN, SCBUICoreCom::BTN_ID_INC_END);
    if (SCBUICoreCom::IsVirIncBtn(btnID))
        return take(SCBUICoreCom::BTN_ID_VIRINC_BEGIN, SCBUICoreCom::BTN_ID_VIRINC_END);
    if (SCBUICoreCom::IsCllBtn(btnID))
        return take(SCBUICoreCom::BTN_ID_CLL_BEGIN, SCBUICoreCom::BTN_ID_CLL_END);
    return true;
}

void VCBtnClass::NoteReadSelection(const VCBtn& btn)
{
    if (!btn.sel)
        return;
    RememberSelection(btn.id);
    if (btn.IsEffective())
        ++selBtnCount;
}

void VCBtnClass::RepairIDs(CXMLReader& reader, SCKZCoreCom::ESpecType specType)
{
    if (specType == SCKZCoreCom::SPECTYPE_COMMON)
        return;
    RepairIDsOfKind(reader, SCBUICoreCom::BTN_ID_INC_BEGIN, SCBUICoreCom::BTN_ID_INC_END, incNextID,
                    incBlankIDList);
    RepairIDsOfKind(reader, SCBUICoreCom::BTN_ID_CLL_BEGIN, SCBUICoreCom::BTN_ID_CLL_END, cllNextID,
                    cllBlankIDList);
}

void VCBtnClass::RepairIDsOfKind(CXMLReader& reader, DWORD beginID, DWORD endID, DWORD& nextID,
                                 std::set<DWORD>& blankIDs) const
{
    std::erase_if(blankIDs, [=, this](DWORD blankID) {
        return blankID < beginID || blankID > endID || FindBtn(blankID) != nullptr;
    });
    const DWORD endIDInUse = GetEndIDInUse(beginID, endID);
    if (nextID < beginID || nextID > endID + 1)
        nextID = beginID;
    nextID = std::max(nextID, endIDInUse);
    if (!blankIDs.empty())
        nextID = std::max(nextID, *blankIDs.rbegin() + 1);
    // A next identifier far beyond all others would have great lists made for the next button.
    if (!reader.TakeFromAllowance(nextID - endIDInUse)) {
        nextID = endIDInUse;
        blankIDs.erase(blankIDs.lower_bound(endIDInUse), blankIDs.end());
    }
}

// --- Members that were read

void VCBtnClass::SettleMembers(const std::vector<VCBtnClass*>& btnClasses)
{
    for (VCBtnClass* const btnClass : btnClasses)
        btnClass->DropImpossibleMembers();
    BreakLoops(btnClasses);
    // What inc buttons mean for a member is asked once, however many hold it.
    std::vector<std::pair<VCBtnClass*, VCBtn*>> heldByIncBtns;
    for (VCBtnClass* const btnClass : btnClasses) {
        for (const auto& [btnID, spBtn] : btnClass->spBtnOfID) {
            if (!spBtn->effective)
                continue;
            btnClass->MakeRoomForBackReferences(*spBtn, spBtn->mmbBtnIDList);
            btnClass->LinkMembers(*spBtn, false);
            if (!SCBUICoreCom::IsIncBtn(btnID))
                continue;
            for (const DWORD mmbBtnID : spBtn->mmbBtnIDList) {
                if (VCBtn* const member = btnClass->FindBtn(mmbBtnID))
                    heldByIncBtns.emplace_back(btnClass, member);
            }
        }
    }
    std::sort(heldByIncBtns.begin(), heldByIncBtns.end());
    heldByIncBtns.erase(std::unique(heldByIncBtns.begin(), heldByIncBtns.end()), heldByIncBtns.end());
    for (const auto& [btnClass, member] : heldByIncBtns)
        btnClass->AdjstToIncBtns(*member);
}

void VCBtnClass::DropImpossibleMembers()
{
    hasAbsentSpMembers = false;
    for (const auto& [btnID, spBtn] : spBtnOfID) {
        if (spBtn->mmbBtnIDList.empty())
            continue;
        const VCBtnClass* const classOfMembers = GetBtnClassOfMembers(*spBtn);
        const bool mayAwait = IsInCommonForm(*spBtn);
        bool awaitsAny = false;
        const auto isImpossible = [&](DWORD mmbBtnID) {
            if (classOfMembers == nullptr || classOfMembers->IsBarredAsMember(mmbBtnID))
                return true;
            const VCBtn* const member = classOfMembers->FindBtn(mmbBtnID);
            if (member == nullptr) {
                const bool mayCome =
                    mayAwait && (SCBUICoreCom::IsIncBtn(mmbBtnID) || SCBUICoreCom::IsCllBtn(mmbBtnID));
                awaitsAny = awaitsAny || mayCome;
                return !mayCome;
            }
            return SCBUICoreCom::IsSpBtn(mmbBtnID) &&
                   static_cast<const VCSpBtn*>(member)->mmbBtnSelMth == VCSpBtn::MMBBTNSELMTH_CONDITION;
        };
        std::vector<DWORD> members = SCIDList::TakeEachOnce(spBtn->mmbBtnIDList);
        std::erase_if(members, isImpossible);
        if (members.size() != spBtn->mmbBtnIDList.size()) {
            UnlinkMembers(*spBtn); // of an earlier time; those that stay are linked anew
            spBtn->mmbBtnIDList = std::move(members);
            spBtn->isRowOutdated = true;
            SetOwnVisibleInfo(*spBtn, VISINFO_NOMEMBER, spBtn->mmbBtnIDList.empty());
        }
        hasAbsentSpMembers = hasAbsentSpMembers || awaitsAny;
    }
}

void VCBtnClass::DropMemberOfReadList(VCSpBtn& spBtn, std::size_t position) noexcept
{
    const auto member = spBtn.mmbBtnIDList.begin() + static_cast<std::ptrdiff_t>(position);
    UnlinkMember(spBtn, *member); // of an earlier time
    spBtn.mmbBtnIDList.erase(member);
    spBtn.isRowOutdated = true;
    SetOwnVisibleInfo(spBtn, VISINFO_NOMEMBER, spBtn.mmbBtnIDList.empty());
}

// Walks down from each button in turn, along a path that is kept. Where it comes back to the path, a member
// is dropped on the way round: of the last button there that a user defined, since a shared definition is not
// to suffer from what one user has; a loop without any is dropped where it closes. What was walked through
// behind that button is walked through again later, by another way, but not without end.
void VCBtnClass::BreakLoops(const std::vector<VCBtnClass*>& btnClasses)
{
    struct SStep
    {
        VCBtnClass* btnClass;
        VCSpBtn* spBtn;
        std::size_t nextMember;
    };
    constexpr std::size_t MAX_STEPS_AGAIN = 1024 * 1024;
    std::vector<SStep> path;
    std::map<const VCSpBtn*, std::size_t> positionOnPath;
    std::set<const VCSpBtn*> reached;
    std::size_t stepsAgain = 0;
    const auto enter = [&](VCBtnClass& btnClass, VCSpBtn& spBtn) {
        if (!reached.insert(&spBtn).second)
            return;
        positionOnPath.emplace(&spBtn, path.size());
        path.push_back({&btnClass, &spBtn, 0});
    };
    const auto leave = [&] {
        positionOnPath.erase(path.back().spBtn);
        path.pop_back();
    };
    const auto isOfUser = [](const SStep& step) { return !step.btnClass->IsInCommonForm(*step.spBtn); };

    for (VCBtnClass* const firstClass : btnClasses) {
        for (const auto& [firstID, first] : firstClass->spBtnOfID) {
            enter(*firstClass, *first);
            while (!path.empty()) {
                SStep& step = path.back();
                VCBtnClass* const classOfMembers = step.btnClass->GetBtnClassOfMembers(*step.spBtn);
                if (classOfMembers == nullptr || step.nextMember == step.spBtn->mmbBtnIDList.size()) {
                    leave();
                    continue;
                }
                VCSpBtn* const nested = classOfMembers->FindSpBtn(step.spBtn->mmbBtnIDList[step.nextMember]);
                ++step.nextMember;
                const auto closing = positionOnPath.find(nested);
                if (closing == positionOnPath.end()) {
                    if (nested != nullptr)
                        enter(*classOfMembers, *nested);
                    continue;
                }
                const auto loop = path.begin() + static_cast<std::ptrdiff_t>(closing->second);
                const auto lastOfUser =
                    std::find_if(path.rbegin(), std::make_reverse_iterator(loop), isOfUser);
                const bool hasUser = lastOfUser.base() != loop && stepsAgain < MAX_STEPS_AGAIN;
                const std::size_t kept =
                    hasUser ? static_cast<std::size_t>(lastOfUser.base() - path.begin()) : path.size();
                for (; path.size() > kept; ++stepsAgain) {
                    reached.erase(path.back().spBtn);
                    leave();
                }
                SStep& holder = path.back();
                --holder.nextMember;
                holder.btnClass->DropMemberOfReadList(*holder.spBtn, holder.nextMember);
            }
        }
    }
}

void VCBtnClass::BuildOutdatedRows(const std::vector<VCBtnClass*>& btnClasses)
{
    SpBtnsOfClasses outdated;
    for (VCBtnClass* const btnClass : btnClasses) {
        for (const auto& [btnID, spBtn] : btnClass->spBtnOfID) {
            if (spBtn->effective && spBtn->isRowOutdated)
                outdated.emplace_back(btnClass, spBtn);
        }
    }
    for (const auto& [btnClass, spBtn] : ListWithAllAbove(outdated)) {
        if (spBtn->isRowOutdated)
            btnClass->BuildRow(*spBtn);
    }
}

} // namespace NSKZ::NSKZCore
