// A source class in its saved forms.

#include "VCSrcBtnClass.h"

#include "IRpLink.h"
#include "SCSpecXML.h"

#include <cstring>

namespace NSKZ::NSKZCore {

// --- Writing

bool VCSrcBtnClass::WriteCommonSpecOfBtnClassByXML(const char* folder, CXMLWriter& writer, bool withData,
                                                   DWORD fldIDToWrite) const
{
    if (!effective)
        return true;
    const char* const word = GetBtnClassTypeAttrValue(GetBtnClassType());
    const IXMLIO::SAttribute type{STR_ATTRNAME_TYPE, STRLEN_ATTRNAME_TYPE, word,
                                  static_cast<DWORD>(std::strlen(word))};
    char fldText[SCSpecXML::MAX_NUMBER_SIZE];
    IXMLIO::SAttribute fld;
    return SCSpecXML::MakeNumberAttribute(STR_ATTRNAME_FLDID, STRLEN_ATTRNAME_FLDID, fldIDToWrite, fldText,
                                          fld) &&
           WriteStartTagPartOfSpecByXML(writer, {}, SCKZCoreCom::SPECTYPE_COMMON, &fld, &type, nullptr) &&
           WriteChildElementsPartOfSpecByXML(folder, writer, withData, SCKZCoreCom::SPECTYPE_COMMON) &&
           WriteEndTagPartOfSpecByXML(writer);
}

bool VCSrcBtnClass::WriteFixedSpecOfBtnClassByXML(CXMLWriter& writer) const
{
    if (!effective)
        return true;
    return WriteStartTagPartOfSpecByXML(writer, {}, SCKZCoreCom::SPECTYPE_FIXED, nullptr, nullptr, nullptr) &&
           WriteChildElementsPartOfSpecByXML("", writer, false, SCKZCoreCom::SPECTYPE_FIXED) &&
           WriteFurtherFixedElementsByXML(writer) && WriteEndTagPartOfSpecByXML(writer);
}

bool VCSrcBtnClass::WriteChildElementsPartOfSpecByXML(const char* folder, CXMLWriter& writer, bool withData,
                                                      SCKZCoreCom::ESpecType specType) const
{
    if (specType == SCKZCoreCom::SPECTYPE_FIXED && empValBtnDisp) {
        SCSpecXML::CAttributes attributes;
        attributes.AddTrue(STR_ATTRNAME_DISP);
        if (!writer.PutEmptyElement(STR_ELENAME_EMPVALBTN, STRLEN_ELENAME_EMPVALBTN, attributes.Get()))
            return false;
    }
    if (specType == SCKZCoreCom::SPECTYPE_COMMON && dataBtnNextID != SCBUICoreCom::BTN_ID_NRM_BEGIN &&
        !WriteBtnIDSpecByXML(writer, STR_ELENAME_DATABTN, STRLEN_ELENAME_DATABTN, dataBtnNextID, {}))
        return false;
    return VCBtnClass::WriteChildElementsPartOfSpecByXML(folder, writer, withData, specType);
}

bool VCSrcBtnClass::WriteFurtherFixedElementsByXML(CXMLWriter&) const
{
    return true;
}

// --- Reading

VCBtnClass::EMthRetOfReadXML
VCSrcBtnClass::ReadCommonSpecOfBtnClassByXML(const char* folder, CXMLReader& reader, DWORD recCountOfEnv,
                                             const std::unique_ptr<IRpLink>& rpLinkOfEnv)
{
    return ReadSpecOfBtnClassByXML(folder, reader, SCKZCoreCom::SPECTYPE_COMMON, recCountOfEnv, rpLinkOfEnv);
}

VCBtnClass::EMthRetOfReadXML VCSrcBtnClass::ReadFixedSpecOfBtnClassByXML(CXMLReader& reader)
{
    return ReadSpecOfBtnClassByXML("", reader, SCKZCoreCom::SPECTYPE_FIXED, recCount, *rpLink);
}

VCBtnClass::EMthRetOfReadXML
VCSrcBtnClass::ReadSpecOfBtnClassByXML(const char* folder, CXMLReader& reader,
                                       SCKZCoreCom::ESpecType specType, DWORD recCountOfEnv,
                                       const std::unique_ptr<IRpLink>& rpLinkOfEnv)
{
    const char* tag = nullptr;
    DWORD tagLen = 0;
    if (!reader.GetCurrentElementName(tag, tagLen))
        return CXMLReader::READXML_NOELEMENT;
    Attributes attributes(reader.GetAttributes());
    const CSourceDataMngr* const keptSrcDataMngr = srcDataMngr;
    EMthRetOfReadXML result =
        ReadStartTagPartOfSpecByXML(tag, tagLen, attributes, specType, recCountOfEnv, rpLinkOfEnv);
    srcDataMngr = keptSrcDataMngr;
    if (result != CXMLReader::READXML_OK)
        return result;
    if (specType == SCKZCoreCom::SPECTYPE_COMMON &&
        SCSpecXML::TakeNumber(attributes, STR_ATTRNAME_FLDID, fldID) != SCSpecXML::TAKEN_OK)
        return CXMLReader::READXML_BADFORMAT;
    isEmpValShownByRead = false;
    isEmpValToBeHidden = false;
    result = reader.SeekToStartTagOfFirstChildElement();
    if (result == CXMLReader::READXML_NOTEXIST)
        return CXMLReader::READXML_BADFORMAT;
    if (result != CXMLReader::READXML_OK)
        return result;
    result = ReadChildElementPartsOfSpecByXML(folder, reader, specType);
    isEmpValToBeHidden =
        result == CXMLReader::READXML_OK && specType != SCKZCoreCom::SPECTYPE_COMMON && !isEmpValShownByRead;
    return result;
}

VCBtnClass::EMthRetOfReadXML VCSrcBtnClass::ReadChildElementPartOfSpecByXML(const char* folder,
                                                                            CXMLReader& reader,
                                                                            SCKZCoreCom::ESpecType specType)
{
    if (SCSpecXML::IsOnElement(reader, STR_ELENAME_EMPVALBTN)) {
        return specType == SCKZCoreCom::SPECTYPE_FIXED ? ReadEmpValBtnDisp(reader) : CXMLReader::READXML_OK;
    }
    if (specType == SCKZCoreCom::SPECTYPE_COMMON && SCSpecXML::IsOnElement(reader, STR_ELENAME_DATABTN)) {
        Attributes attributes(reader.GetAttributes());
        std::set<DWORD> blankIDs; // a source button is never let go
        if (!ReadBtnIDSpecByXML(attributes, dataBtnNextID, blankIDs))
            return CXMLReader::READXML_BADFORMAT;
        ReserveForBtns(reader);
        return CXMLReader::READXML_OK;
    }
    return VCBtnClass::ReadChildElementPartOfSpecByXML(folder, reader, specType);
}

void VCSrcBtnClass::HideEmpValBtnAsRead()
{
    if (isEmpValToBeHidden)
        SetDispEmpValBtnInfo(false);
    isEmpValToBeHidden = false;
}

VCBtnClass::EMthRetOfReadXML VCSrcBtnClass::ReadEmpValBtnDisp(const CXMLReader& reader)
{
    Attributes attributes(reader.GetAttributes());
    bool disp = false;
    if (SCSpecXML::TakeFlag(attributes, STR_ATTRNAME_DISP, disp) == SCSpecXML::TAKEN_BAD)
        return CXMLReader::READXML_BADFORMAT;
    isEmpValShownByRead = disp;
    return CXMLReader::READXML_OK;
}

VCBtnClass::EMthRetOfReadXML VCSrcBtnClass::ReadBtnsSpecByXML(const char* folder, CXMLReader& reader,
                                                              SCKZCoreCom::ESpecType specType)
{
    isSrcBtnRead.clear();
    btnsToRegister.clear();
    const EMthRetOfReadXML result = VCBtnClass::ReadBtnsSpecByXML(folder, reader, specType);
    RegReadBtns(reader);
    std::vector<bool>().swap(isSrcBtnRead);
    if (result != CXMLReader::READXML_OK)
        return result;
    if (specType == SCKZCoreCom::SPECTYPE_FIXED)
        SettleMembers({this});
    VCBtn* const empValBtn = FindBtn(SCBUICoreCom::BTN_ID_EMPVAL);
    DWORD recCountOfBtn = 0;
    if (specType == SCKZCoreCom::SPECTYPE_COMMON && (empValBtn->visibleInfo & VISINFO_NOREC) != 0 &&
        (*rpLink)->GetRecCount(id, SCBUICoreCom::BTN_ID_EMPVAL, recCountOfBtn) && recCountOfBtn != 0) {
        SetOwnVisibleInfo(*empValBtn, VISINFO_NOREC, false);
        ListReadBtn(*empValBtn);
    }
    return result;
}

VCBtnClass::EMthRetOfReadXML VCSrcBtnClass::ReadBtnSpecByXML(const char* folder, CXMLReader& reader,
                                                             DWORD btnID, bool hasRecInfo,
                                                             SCKZCoreCom::ESpecType specType)
{
    if (!SCBUICoreCom::IsSrcBtn(btnID))
        return VCBtnClass::ReadBtnSpecByXML(folder, reader, btnID, hasRecInfo, specType);
    if (!IsTypeOfElement(reader, btnID))
        return CXMLReader::READXML_BADFORMAT;
    return specType == SCKZCoreCom::SPECTYPE_COMMON ? ReadSrcBtnCommon(folder, reader, btnID, hasRecInfo)
                                                    : ReadSrcBtnFixed(reader, btnID);
}

// Room for as many buttons as the next identifier tells, if the document may ask for it.
void VCSrcBtnClass::ReserveForBtns(CXMLReader& reader)
{
    if (dataBtnNextID > SCBUICoreCom::BTN_ID_NRM_END || dataBtnNextID < srcBtnOfID.size() ||
        !reader.TakeFromAllowance(dataBtnNextID - srcBtnOfID.size()))
        return;
    btns.Reserve(dataBtnNextID);
    valueToBtnID.Reserve(dataBtnNextID);
    srcBtnOfID.reserve(dataBtnNextID);
}

// Whether the element being read names the button for the first time.
bool VCSrcBtnClass::MeetFirst(DWORD btnID)
{
    if (btnID >= isSrcBtnRead.size())
        isSrcBtnRead.resize(srcBtnOfID.size());
    if (isSrcBtnRead[btnID])
        return false;
    isSrcBtnRead[btnID] = true;
    return true;
}

VCBtnClass::EMthRetOfReadXML VCSrcBtnClass::ReadSrcBtnFixed(CXMLReader& reader, DWORD btnID)
{
    VCBtn* const btn = FindBtn(btnID);
    if (btn == nullptr || !MeetFirst(btnID))
        return CXMLReader::READXML_BADFORMAT;
    const EMthRetOfReadXML result = btn->ReadFixedSpecByXML(reader);
    if (result == CXMLReader::READXML_BADFORMAT)
        btn->ClearOfFixedSpec();
    AdjstToBackReferences(*btn);
    TellDisplayOfOwnReasons(*btn);
    if (result == CXMLReader::READXML_OK)
        NoteReadSelection(*btn);
    return result;
}

VCBtnClass::EMthRetOfReadXML VCSrcBtnClass::ReadSrcBtnCommon(const char* folder, CXMLReader& reader,
                                                             DWORD btnID, bool hasRecInfo)
{
    const auto readInto = [&](VCBtn& btn) {
        const EMthRetOfReadXML result = btn.ReadCommonSpecByXML(folder, reader);
        DWORD recCountOfBtn = 0;
        const bool hasRecs =
            hasRecInfo && (*rpLink)->GetRecCount(id, btnID, recCountOfBtn) && recCountOfBtn != 0;
        btn.visibleInfo = hasRecs ? 0 : VISINFO_NOREC;
        return result;
    };
    if (SCBUICoreCom::IsEmpValBtn(btnID)) {
        VCBtn* const empValBtn = FindBtn(btnID);
        if (empValBtn == nullptr || !MeetFirst(btnID))
            return CXMLReader::READXML_BADFORMAT;
        const EMthRetOfReadXML result = readInto(*empValBtn);
        empValBtn->id = btnID; // whatever was read
        TellDisplayOfOwnReasons(*empValBtn);
        if (result == CXMLReader::READXML_OK && empValBtn->visibleInfo == 0)
            ListReadBtn(*empValBtn);
        return result;
    }
    std::unique_ptr<VCBtn> made = CreateBtnBasedOnBtnID(btnID);
    if (made == nullptr)
        return CXMLReader::READXML_BADFORMAT;
    const EMthRetOfReadXML result = readInto(*made);
    if (result != CXMLReader::READXML_OK)
        return result;
    const char* const value = made->name.get();
    if (value == nullptr || *value == '\0')
        return CXMLReader::READXML_BADFORMAT;
    // Where it is to be entered is far from where the last one was: some are read before they are.
    constexpr std::size_t MAX_WAITING = 64;
    valueToBtnID.PrefetchBucket(value);
    btns.PrefetchBucket(btnID);
    btnsToRegister.push_back(std::move(made));
    if (btnsToRegister.size() >= MAX_WAITING)
        RegReadBtns(reader);
    return result;
}

// Enters the normal buttons that were read, less those that cannot be: an identifier and a value stand for
// one button each.
void VCSrcBtnClass::RegReadBtns(CXMLReader& reader)
{
    for (const std::unique_ptr<VCBtn>& btn : btnsToRegister)
        valueToBtnID.PrefetchEntry(btn->name.get());
    for (std::unique_ptr<VCBtn>& waiting : btnsToRegister) {
        VCBtn& btn = *waiting;
        const char* const value = btn.name.get();
        if (FindBtn(btn.id) != nullptr || valueToBtnID.Find(value) != nullptr || !TakeRoomFor(reader, btn.id))
            continue;
        RegBtn(std::move(waiting));
        valueToBtnID.InsertNew(value, btn.id);
        if (btn.visibleInfo == 0)
            ListReadBtn(btn);
    }
    btnsToRegister.clear();
}

void VCSrcBtnClass::ListReadBtn(VCBtn& btn)
{
    InsertBtnInfoToNameOrdList(&btn);
    // An alias came to the button when it stood in the lists of its class already, by its name.
    const bool showsName = btn.aliasIsName;
    if (btn.name != nullptr)
        btn.aliasIsName = true;
    AdjstAccordingToBtnAppearance(btn);
    btn.aliasIsName = showsName;
}

void VCSrcBtnClass::RepairIDs(CXMLReader& reader, SCKZCoreCom::ESpecType specType)
{
    VCBtnClass::RepairIDs(reader, specType);
    if (specType != SCKZCoreCom::SPECTYPE_COMMON)
        return;
    std::set<DWORD> blankIDs;
    RepairIDsOfKind(reader, SCBUICoreCom::BTN_ID_NRM_BEGIN, SCBUICoreCom::BTN_ID_NRM_END, dataBtnNextID,
                    blankIDs);
}

} // namespace NSKZ::NSKZCore
