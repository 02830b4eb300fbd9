// A virtual class in its saved forms.

#include "CVirBtnClass.h"

#include "IRpLink.h"
#include "SCSpecXML.h"

#include <cstring>

namespace NSKZ::NSKZCore {

bool CVirBtnClass::IsDefinedIn(SCKZCoreCom::ESpecType specType) const noexcept
{
    return IsCommon() == (specType == SCKZCoreCom::SPECTYPE_COMMON);
}

bool CVirBtnClass::IsInCommonForm(const VCSpBtn& spBtn) const noexcept
{
    return IsCommon() && SCBUICoreCom::IsVirIncBtn(spBtn.id);
}

// --- Writing

bool CVirBtnClass::WriteSpecOfBtnClassByXML(const char* folder, CXMLWriter& writer, bool withData,
                                            SCKZCoreCom::ESpecType specType) const
{
    if (!effective || (!IsCommon() && specType == SCKZCoreCom::SPECTYPE_COMMON))
        return true;
    const char* const word = GetBtnClassTypeAttrValue(SCBUICoreCom::BTNCLSTYPE_VIR);
    const IXMLIO::SAttribute type{STR_ATTRNAME_TYPE, STRLEN_ATTRNAME_TYPE, word,
                                  static_cast<DWORD>(std::strlen(word))};
    IXMLIO::SAttribute nameAttr;
    if (name.has_value())
        nameAttr = {STR_ATTRNAME_NAME, STRLEN_ATTRNAME_NAME, name->c_str(), static_cast<DWORD>(name->size())};
    const bool isDefined = IsDefinedIn(specType);
    return WriteStartTagPartOfSpecByXML(writer, {}, specType, nullptr, isDefined ? &type : nullptr,
                                        isDefined && name.has_value() ? &nameAttr : nullptr) &&
           WriteChildElementsPartOfSpecByXML(folder, writer, withData, specType) &&
           WriteEndTagPartOfSpecByXML(writer);
}

bool CVirBtnClass::WriteChildElementsPartOfSpecByXML(const char* folder, CXMLWriter& writer, bool withData,
                                                     SCKZCoreCom::ESpecType specType) const
{
    return (!IsDefinedIn(specType) ||
            WriteSpBtnIDSpecByXML(writer, STR_ELENAME_VIRINCBTN, STRLEN_ELENAME_VIRINCBTN,
                                  SCBUICoreCom::BTNTYPE_VIRINC, SCBUICoreCom::BTN_ID_VIRINC_BEGIN,
                                  nextVirIncBtnID, blankVirIncBtnIDs)) &&
           VCBtnClass::WriteChildElementsPartOfSpecByXML(folder, writer, withData, specType);
}

// --- Reading

VCBtnClass::EMthRetOfReadXML
CVirBtnClass::ReadSpecOfBtnClassByXML(const char* folder, CXMLReader& reader, SCKZCoreCom::ESpecType specType,
                                      DWORD recCountOfEnv, const std::unique_ptr<IRpLink>& rpLinkOfEnv)
{
    const char* tag = nullptr;
    DWORD tagLen = 0;
    if (!reader.GetCurrentElementName(tag, tagLen))
        return CXMLReader::READXML_NOELEMENT;
    Attributes attributes(reader.GetAttributes());
    EMthRetOfReadXML result =
        ReadStartTagPartOfSpecByXML(tag, tagLen, attributes, specType, recCountOfEnv, rpLinkOfEnv);
    if (result != CXMLReader::READXML_OK)
        return result;
    result = reader.SeekToStartTagOfFirstChildElement();
    if (result == CXMLReader::READXML_NOTEXIST)
        return CXMLReader::READXML_BADFORMAT;
    if (result != CXMLReader::READXML_OK)
        return result;
    virIncBtnsRead.clear();
    result = ReadChildElementPartsOfSpecByXML(folder, reader, specType);
    virIncBtnsRead.clear();
    if (IsDefinedIn(specType))
        CountReadRefs();
    return result;
}

VCBtnClass::EMthRetOfReadXML
CVirBtnClass::ReadStartTagPartOfSpecByXML(const char* tag, DWORD tagLen, Attributes& attributes,
                                          SCKZCoreCom::ESpecType specType, DWORD recCountOfEnv,
                                          const std::unique_ptr<IRpLink>& rpLinkOfEnv)
{
    Attributes forID(attributes);
    DWORD readID = SCBUICoreCom::BTNCLS_ID_UNSETTING;
    if (!IXMLIO::IsSameText(tag, tagLen, STR_ELENAME_BTNCLASS, STRLEN_ELENAME_BTNCLASS) ||
        !SCSpecXML::TakeID(forID, STR_ATTRNAME_ID, readID) || !SCBUICoreCom::IsVirBtnClass(readID) ||
        (!SCBUICoreCom::IsCommonVirBtnClass(readID) && specType != SCKZCoreCom::SPECTYPE_FIXED))
        return CXMLReader::READXML_BADFORMAT;
    const EMthRetOfReadXML result = VCBtnClass::ReadStartTagPartOfSpecByXML(tag, tagLen, attributes, specType,
                                                                            recCountOfEnv, rpLinkOfEnv);
    if (result != CXMLReader::READXML_OK ||
        (SCBUICoreCom::IsCommonVirBtnClass(readID) && specType != SCKZCoreCom::SPECTYPE_COMMON))
        return result;
    id = readID;
    IXMLIO::SAttribute taken;
    if (SCSpecXML::TakeText(attributes, STR_ATTRNAME_NAME, taken) == SCSpecXML::TAKEN_OK)
        name.emplace(taken.value, taken.valueLen);
    else
        name.reset();
    recCount = recCountOfEnv;
    rpLink = &rpLinkOfEnv;
    return result;
}

VCBtnClass::EMthRetOfReadXML CVirBtnClass::ReadChildElementPartOfSpecByXML(const char* folder,
                                                                           CXMLReader& reader,
                                                                           SCKZCoreCom::ESpecType specType)
{
    if (IsDefinedIn(specType) && SCSpecXML::IsOnElement(reader, STR_ELENAME_VIRINCBTN)) {
        Attributes attributes(reader.GetAttributes());
        return ReadBtnIDSpecByXML(attributes, nextVirIncBtnID, blankVirIncBtnIDs)
                   ? CXMLReader::READXML_OK
                   : CXMLReader::READXML_BADFORMAT;
    }
    return VCBtnClass::ReadChildElementPartOfSpecByXML(folder, reader, specType);
}

VCBtnClass::EMthRetOfReadXML CVirBtnClass::ReadBtnSpecByXML(const char* folder, CXMLReader& reader,
                                                            DWORD btnID, bool hasRecInfo,
                                                            SCKZCoreCom::ESpecType specType)
{
    if (specType == SCKZCoreCom::SPECTYPE_COMMON || !IsCommon() || !SCBUICoreCom::IsVirIncBtn(btnID))
        return VCBtnClass::ReadBtnSpecByXML(folder, reader, btnID, hasRecInfo, specType);
    VCSpBtn* const spBtn = FindSpBtn(btnID);
    if (spBtn == nullptr || !IsTypeOfElement(reader, btnID) || !virIncBtnsRead.insert(btnID).second)
        return CXMLReader::READXML_BADFORMAT;
    const EMthRetOfReadXML result = spBtn->ReadFixedSpecByXML(reader);
    if (result == CXMLReader::READXML_BADFORMAT)
        spBtn->ClearOfFixedSpec();
    else if (result == CXMLReader::READXML_OK)
        NoteReadSelection(*spBtn);
    return result;
}

void CVirBtnClass::RepairIDs(CXMLReader& reader, SCKZCoreCom::ESpecType specType)
{
    VCBtnClass::RepairIDs(reader, specType);
    if (IsDefinedIn(specType)) {
        RepairIDsOfKind(reader, SCBUICoreCom::BTN_ID_VIRINC_BEGIN, SCBUICoreCom::BTN_ID_VIRINC_END,
                        nextVirIncBtnID, blankVirIncBtnIDs);
    }
}

void CVirBtnClass::CountReadRefs()
{
    refBtnClasses.clear();
    for (const auto& [btnID, spBtn] : spBtnOfID) {
        if (SCBUICoreCom::IsVirIncBtn(btnID)) {
            const DWORD refBtnClassID = static_cast<const CVirIncBtn*>(spBtn)->refBtnClassID;
            ++refBtnClasses.try_emplace(refBtnClassID, SRefBtnClass{0, nullptr}).first->second.btnCount;
        }
    }
}

void CVirBtnClass::BindRefBtnClasses(const std::map<DWORD, std::unique_ptr<VCBtnClass>>& btnClasses)
{
    std::set<DWORD> unboundIDs;
    for (auto& [refBtnClassID, ref] : refBtnClasses) {
        const auto found = btnClasses.find(refBtnClassID);
        const bool isBarred =
            refBtnClassID == id || (IsCommon() && SCBUICoreCom::IsFixedVirBtnClass(refBtnClassID));
        if (found == btnClasses.end() || isBarred) {
            unboundIDs.insert(unboundIDs.end(), refBtnClassID);
            continue;
        }
        found->second->refOrgBtnClasses.emplace(id, this);
        ref.btnClass = found->second.get();
    }
    for (auto next = spBtnOfID.begin(); next != spBtnOfID.end() && !unboundIDs.empty();) {
        const auto [btnID, spBtn] = *next++;
        if (!SCBUICoreCom::IsVirIncBtn(btnID) ||
            !unboundIDs.contains(static_cast<const CVirIncBtn*>(spBtn)->refBtnClassID))
            continue;
        blankVirIncBtnIDs.insert(btnID);
        --(spBtn->effective ? spBtnCount : ineffectiveBtnCount);
        if (spBtn->effective && spBtn->sel && --selBtnCount == 0)
            btnSelState = false;
        nameOrdList.Remove(btnID);
        UnregSpBtn(btnID);
    }
    std::erase_if(refBtnClasses, [&](const auto& idAndRef) { return unboundIDs.contains(idAndRef.first); });
}

void CVirBtnClass::SwitchOffBtnsOverIneffectiveClasses()
{
    for (const auto& [btnID, spBtn] : spBtnOfID) {
        VCBtnClass* const classOfMembers = GetBtnClassOfMembers(*spBtn);
        if (!spBtn->effective || classOfMembers == nullptr || classOfMembers == this ||
            classOfMembers->effective)
            continue;
        classOfMembers->ineffectiveOuterSpBtns.insert({id, btnID});
        SetEffectiveInfoOfSpBtn(btnID, false);
    }
}

} // namespace NSKZ::NSKZCore
