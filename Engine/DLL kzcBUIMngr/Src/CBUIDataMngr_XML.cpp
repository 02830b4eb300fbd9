// Saving and restoring: the environment as two XML documents and the files of its link tables.

#include "CBUIDataMngr.h"

#include "CBtnClass.h"
#include "CDateBtnClass.h"
#include "CNumBtnClass.h"
#include "CSourceDataMngr.h"
#include "CTimeBtnClass.h"
#include "CVirBtnClass.h"
#include "ECAbnormalData.h"
#include "IBnLink.h"
#include "IRpLink.h"
#include "SCBUICoreStrDef.h"
#include "SCSpecXML.h"

#include <algorithm>
#include <cstdio>
#include <string_view>

namespace NSKZ::NSKZCore {

namespace {

constexpr const char* SRC_FILE = "Src/CBUIDataMngr";

constexpr struct
{
    CBUIDataMngr::ERelationMode mode;
    const char* word;
    DWORD wordLen;
} WORDS_OF_MODES[] = {
    {CBUIDataMngr::RELATIONMODE_NONE, CBUIDataMngr::STR_ATTRVALUE_MODE_NONE,
     CBUIDataMngr::STRLEN_ATTRVALUE_MODE_NONE},
    {CBUIDataMngr::RELATIONMODE_OR, CBUIDataMngr::STR_ATTRVALUE_MODE_OR,
     CBUIDataMngr::STRLEN_ATTRVALUE_MODE_OR},
    {CBUIDataMngr::RELATIONMODE_AND, CBUIDataMngr::STR_ATTRVALUE_MODE_AND,
     CBUIDataMngr::STRLEN_ATTRVALUE_MODE_AND},
    {CBUIDataMngr::RELATIONMODE_DIFFERENCE, CBUIDataMngr::STR_ATTRVALUE_MODE_DIFF,
     CBUIDataMngr::STRLEN_ATTRVALUE_MODE_DIFF},
    {CBUIDataMngr::RELATIONMODE_NARROWING, CBUIDataMngr::STR_ATTRVALUE_MODE_NARROWING,
     CBUIDataMngr::STRLEN_ATTRVALUE_MODE_NARROWING},
};

// What lies behind the first separator of an href, which is relative to the folder of a save; null if there
// is none, or if it would lead out of that folder.
const char* GetPathBelowFolder(const std::string& href) noexcept
{
    const auto* const separator = _mbschr(reinterpret_cast<const unsigned char*>(href.c_str()),
                                          static_cast<unsigned char>(SCKZCoreCom::CHAR_YEN));
    if (separator == nullptr)
        return nullptr;
    const auto* const path = reinterpret_cast<const char*>(separator) + 1;
    return std::strstr(path, "..") == nullptr ? path : nullptr;
}

} // namespace

// --- Words

void CBUIDataMngr::GetRelationModeAttribute(ERelationMode mode, IXMLIO::SAttribute& attribute)
{
    for (const auto& known : WORDS_OF_MODES) {
        if (known.mode == mode) {
            attribute = {STR_ATTRNAME_MODE, STRLEN_ATTRNAME_MODE, known.word, known.wordLen};
            return;
        }
    }
    throw ECAbnormalData(SCBUICoreStrDef::MSG_UNKNOWN_RELATIONMODE, SRC_FILE,
                         "NSKZ::NSKZCore::CBUIDataMngr::GetRelationModeAttribute", __LINE__);
}

bool CBUIDataMngr::GetRelationModeEnum(const IXMLIO::SAttribute& attribute, ERelationMode& mode) noexcept
{
    if (!IXMLIO::IsSameText(attribute.name, attribute.nameLen, STR_ATTRNAME_MODE, STRLEN_ATTRNAME_MODE))
        return false;
    mode = RELATIONMODE_NONE;
    for (const auto& known : WORDS_OF_MODES) {
        if (IXMLIO::IsSameText(attribute.value, attribute.valueLen, known.word, known.wordLen))
            mode = known.mode;
    }
    return true;
}

// --- Writing

bool CBUIDataMngr::WriteCommonSpecByXML(const char* folder, CXMLWriter& writer, bool withData) const
{
    SCSpecXML::CAttributes attributes;
    return attributes.AddNumber(STR_ATTRNAME_ID, id) &&
           writer.PutStartTag(STR_ELENAME_BUIDATAMNGR, STRLEN_ELENAME_BUIDATAMNGR, attributes.Get()) &&
           WriteLinkTableSpecByXML(folder, writer, withData, LINKTBLTYPE_BNLINK) &&
           WriteLinkTableSpecByXML(folder, writer, withData, LINKTBLTYPE_RPLINK) &&
           WriteBtnClassIDSpecByXML(writer, STR_ELENAME_SRCBTNCLS, STRLEN_ELENAME_SRCBTNCLS,
                                    nextSrcBtnClassID, {}) &&
           (nextCommonVirBtnClassID == SCBUICoreCom::BTNCLS_ID_VIR_COMMON_BEGIN ||
            WriteBtnClassIDSpecByXML(writer, STR_ELENAME_VIRBTNCLS_COMMON, STRLEN_ELENAME_VIRBTNCLS_COMMON,
                                     nextCommonVirBtnClassID, {})) &&
           WriteBtnClassesSpecByXML(folder, writer, withData, SCKZCoreCom::SPECTYPE_COMMON) &&
           writer.PutEndTag(STR_ELENAME_BUIDATAMNGR, STRLEN_ELENAME_BUIDATAMNGR);
}

bool CBUIDataMngr::WriteFixedSpecByXML(CXMLWriter& writer) const
{
    SCSpecXML::CAttributes attributes;
    if (!attributes.AddNumber(STR_ATTRNAME_ID, id))
        return false;
    if (multiSelection)
        attributes.AddTrue(STR_ATTRNAME_MULTISEL);
    // What is not saved leaves its identifier free.
    std::deque<DWORD> freeIDs(blankFixedVirBtnClassIDs);
    std::vector<DWORD> ineffectiveIDs;
    GetAllUneffectiveVirBtnClassIDList(ineffectiveIDs);
    std::copy_if(ineffectiveIDs.begin(), ineffectiveIDs.end(), std::back_inserter(freeIDs),
                 SCBUICoreCom::IsFixedVirBtnClass);
    return writer.PutStartTag(STR_ELENAME_BUIDATAMNGR, STRLEN_ELENAME_BUIDATAMNGR, attributes.Get()) &&
           WriteRelationSpecByXML(writer) &&
           (nextFixedVirBtnClassID == SCBUICoreCom::BTNCLS_ID_VIR_FIXED_BEGIN ||
            WriteBtnClassIDSpecByXML(writer, STR_ELENAME_VIRBTNCLS_FIXED, STRLEN_ELENAME_VIRBTNCLS_FIXED,
                                     nextFixedVirBtnClassID, freeIDs)) &&
           WriteBtnClassesSpecByXML("", writer, false, SCKZCoreCom::SPECTYPE_FIXED) &&
           writer.PutEndTag(STR_ELENAME_BUIDATAMNGR, STRLEN_ELENAME_BUIDATAMNGR);
}

bool CBUIDataMngr::WriteRelationSpecByXML(CXMLWriter& writer) const
{
    Attributes attributes(1);
    GetRelationModeAttribute(relationMode, attributes.front());
    const bool hasDifference =
        relationMode == RELATIONMODE_DIFFERENCE && diffBtnClassID != SCBUICoreCom::BTNCLS_ID_UNSETTING;
    const bool hasLevels = relationMode == RELATIONMODE_NARROWING && !hierarchies.empty();
    if (!hasDifference && !hasLevels)
        return writer.PutEmptyElement(STR_ELENAME_RELATION, STRLEN_ELENAME_RELATION, attributes);
    return writer.PutStartTag(STR_ELENAME_RELATION, STRLEN_ELENAME_RELATION, attributes) &&
           (hasDifference ? WriteDifferenceSpecByXML(writer) : WriteHierarchiesSpecByXML(writer)) &&
           writer.PutEndTag(STR_ELENAME_RELATION, STRLEN_ELENAME_RELATION);
}

bool CBUIDataMngr::WriteDifferenceSpecByXML(CXMLWriter& writer) const
{
    SCSpecXML::CAttributes attributes;
    return attributes.AddNumber(STR_ATTRNAME_BTNCLSID, diffBtnClassID) &&
           attributes.AddNumber(STR_ATTRNAME_STANDARDBTNID, diffStandardBtnID) &&
           (diffTargetBtnID == SCBUICoreCom::BTN_ID_UNSETTING ||
            attributes.AddNumber(STR_ATTRNAME_TARGETBTNID, diffTargetBtnID)) &&
           writer.PutEmptyElement(STR_ELENAME_DIFFERENCE, STRLEN_ELENAME_DIFFERENCE, attributes.Get());
}

bool CBUIDataMngr::WriteHierarchiesSpecByXML(CXMLWriter& writer) const
{
    if (!writer.PutStartTag(STR_ELENAME_HIERARCHIES, STRLEN_ELENAME_HIERARCHIES, {}))
        return false;
    for (const SHierarchyInfo& level : hierarchies) {
        SCSpecXML::CAttributes attributes;
        if (!attributes.AddNumber(STR_ATTRNAME_DEPTH, level.depth) ||
            !attributes.AddNumber(STR_ATTRNAME_BTNCLSID, level.btnClassID) ||
            !writer.PutEmptyElement(STR_ELENAME_HIERARCHY, STRLEN_ELENAME_HIERARCHY, attributes.Get()))
            return false;
    }
    return writer.PutEndTag(STR_ELENAME_HIERARCHIES, STRLEN_ELENAME_HIERARCHIES);
}

bool CBUIDataMngr::WriteBtnClassIDSpecByXML(CXMLWriter& writer, const char* name, DWORD nameLen, DWORD nextID,
                                            const std::deque<DWORD>& blankIDs)
{
    SCSpecXML::CAttributes attributes;
    return attributes.AddNumber(STR_ATTRNAME_NEXTID, nextID) &&
           (blankIDs.empty() ||
            attributes.AddNumbers(STR_ATTRNAME_BLANKIDLIST, {blankIDs.begin(), blankIDs.end()})) &&
           writer.PutEmptyElement(name, nameLen, attributes.Get());
}

bool CBUIDataMngr::WriteBtnClassesSpecByXML(const char* folder, CXMLWriter& writer, bool withData,
                                            SCKZCoreCom::ESpecType specType) const
{
    if (!writer.PutStartTag(STR_ELENAME_BTNCLASSES, STRLEN_ELENAME_BTNCLASSES, {}))
        return false;
    const bool isFixedForm = specType == SCKZCoreCom::SPECTYPE_FIXED;
    for (const auto& [btnClassID, btnClass] : btnClasses) {
        if (!btnClass->IsEffective())
            continue;
        bool isWritten = false;
        if (const auto* const virBtnClass = dynamic_cast<const CVirBtnClass*>(btnClass.get())) {
            isWritten = virBtnClass->WriteSpecOfBtnClassByXML(folder, writer, withData,
                                                              isFixedForm ? SCKZCoreCom::SPECTYPE_FIXED
                                                                          : SCKZCoreCom::SPECTYPE_COMMON);
        } else if (const auto fld = fldIDOfBtnClass.find(btnClassID); fld != fldIDOfBtnClass.end()) {
            const auto& srcBtnClass = static_cast<const VCSrcBtnClass&>(*btnClass);
            isWritten = isFixedForm ? srcBtnClass.WriteFixedSpecOfBtnClassByXML(writer)
                                    : srcBtnClass.WriteCommonSpecOfBtnClassByXML(folder, writer, withData,
                                                                                 fld->second);
        }
        if (!isWritten)
            return false;
    }
    return writer.PutEndTag(STR_ELENAME_BTNCLASSES, STRLEN_ELENAME_BTNCLASSES);
}

// --- The element of a link table

bool CBUIDataMngr::WriteLinkTableSpecByXML(const char* folder, CXMLWriter& writer, bool withData,
                                           ELinkTableType type) const
{
    constexpr const char* FUNCTION = "NSKZ::NSKZCore::CBUIDataMngr::WriteLinkTableSpecByXML";
    if (type != LINKTBLTYPE_BNLINK && type != LINKTBLTYPE_RPLINK)
        throw ECAbnormalData(SCBUICoreStrDef::MSG_UNKNOWN_LINKTBLTYPE, SRC_FILE, FUNCTION, __LINE__);
    const bool isBnLink = type == LINKTBLTYPE_BNLINK;
    if (isBnLink ? bnLink == nullptr : rpLink == nullptr) {
        throw ECAbnormalData(isBnLink ? SCBUICoreStrDef::MSG_NOTEXIST_BNLINK
                                      : SCBUICoreStrDef::MSG_NOTEXIST_RPLINK,
                             SRC_FILE, FUNCTION, __LINE__);
    }
    SCSpecXML::CAttributes attributes;
    switch (isBnLink ? bnLink->GetVersionType() : rpLink->GetVersionType()) {
    case SCBUICoreCom::LINKTBLVERTYPE_ONMEM:
        attributes.AddText(STR_ATTRNAME_VERTYPE, STR_ATTRVALUE_VERTYPE_ONMEMORY);
        break;
    case SCBUICoreCom::LINKTBLVERTYPE_MEMSAV:
        attributes.AddText(STR_ATTRNAME_VERTYPE, STR_ATTRVALUE_VERTYPE_MEMORYSAVING);
        break;
    default:
        throw ECAbnormalData(SCBUICoreStrDef::MSG_UNKNOWN_LINKTBLVERTYPE, SRC_FILE, FUNCTION, __LINE__);
    }
    if (withData) {
        const auto addWord = [&attributes](const char* name, DWORD nameLen, auto getWord, auto value) {
            IXMLIO::SAttribute attribute{name, nameLen, nullptr, 0};
            if (!getWord(value, attribute.value, attribute.valueLen)) {
                SetLastError(ERROR_INVALID_DATA);
                return false;
            }
            attributes.Add(attribute);
            return true;
        };
        if (!addWord(SCKZCoreCom::STR_ATTRNAME_ENDIANNESS, SCKZCoreCom::STRLEN_ATTRNAME_ENDIANNESS,
                     SCKZCoreCom::GetEndiannessStr, SCKZCoreCom::GetEndiannessOfPresentEnvironment()) ||
            !addWord(SCKZCoreCom::STR_ATTRNAME_DATAMODEL, SCKZCoreCom::STRLEN_ATTRNAME_DATAMODEL,
                     SCKZCoreCom::GetDataModelStr, SCKZCoreCom::GetDataModelOfPresentEnvironment()))
            return false;
        attributes.AddText(SCKZCoreCom::STR_ATTRNAME_XLINK_TYPE,
                           SCKZCoreCom::STR_ATTRVALUE_XLINK_TYPE_SIMPLE);
        // An identifier above 2147483647 shows negative, here and where it is read.
        char href[260];
        const int hrefLen = std::snprintf(href, sizeof href,
                                          isBnLink ? STR_FORMAT_ATTRVALUE_XLINK_HREF_BNLINK
                                                   : STR_FORMAT_ATTRVALUE_XLINK_HREF_RPLINK,
                                          static_cast<int>(id));
        if (hrefLen < 0 || static_cast<std::size_t>(hrefLen) >= sizeof href) {
            SetLastError(ERROR_INVALID_DATA);
            return false;
        }
        attributes.AddKept(SCKZCoreCom::STR_ATTRNAME_XLINK_HREF, href);
        const std::string dir = std::string(folder) + GetPathBelowFolder(href);
        if (isBnLink ? !bnLink->WriteTo(dir.c_str()) : !rpLink->WriteTo(dir.c_str()))
            return false;
    }
    return isBnLink ? writer.PutEmptyElement(STR_ELENAME_BNLINK, STRLEN_ELENAME_BNLINK, attributes.Get())
                    : writer.PutEmptyElement(STR_ELENAME_RPLINK, STRLEN_ELENAME_RPLINK, attributes.Get());
}

CBUIDataMngr::EMthRetOfReadXML CBUIDataMngr::ReadLinkTableSpecByXML(const char* folder,
                                                                    const Attributes& attributesOfElement,
                                                                    ELinkTableType type)
{
    Attributes attributes(attributesOfElement);
    IXMLIO::SAttribute taken;
    if (SCSpecXML::TakeText(attributes, STR_ATTRNAME_VERTYPE, taken) != SCSpecXML::TAKEN_OK)
        return CXMLReader::READXML_BADFORMAT;
    const bool isOnMemory = IXMLIO::IsSameText(taken.value, taken.valueLen, STR_ATTRVALUE_VERTYPE_ONMEMORY,
                                               STRLEN_ATTRVALUE_VERTYPE_ONMEMORY);
    const SCBUICoreCom::ELinkTableVerType verType =
        isOnMemory ? SCBUICoreCom::LINKTBLVERTYPE_ONMEM : SCBUICoreCom::LINKTBLVERTYPE_MEMSAV;
    if (type == LINKTBLTYPE_BNLINK) {
        ChangeVersionTypeOfBnLink(verType);
    } else if (type == LINKTBLTYPE_RPLINK) {
        ChangeVersionTypeOfRpLink(verType);
    } else {
        throw ECAbnormalData(SCBUICoreStrDef::MSG_UNKNOWN_LINKTBLTYPE, SRC_FILE,
                             "NSKZ::NSKZCore::CBUIDataMngr::ReadLinkTableSpecByXML", __LINE__);
    }

    SCKZCoreCom::EEndianness endianness{};
    const bool hasData =
        SCSpecXML::TakeText(attributes, SCKZCoreCom::STR_ATTRNAME_ENDIANNESS, taken) == SCSpecXML::TAKEN_OK;
    if (hasData && !SCKZCoreCom::GetEndianness(taken.value, taken.valueLen, endianness))
        return CXMLReader::READXML_BADFORMAT;
    SCKZCoreCom::EDataModel dataModel{};
    const bool hasDataModel =
        SCSpecXML::TakeText(attributes, SCKZCoreCom::STR_ATTRNAME_DATAMODEL, taken) == SCSpecXML::TAKEN_OK;
    if (hasDataModel ? !SCKZCoreCom::GetDataModel(taken.value, taken.valueLen, dataModel) : hasData)
        return CXMLReader::READXML_BADFORMAT;
    const bool hasHref =
        SCSpecXML::TakeText(attributes, SCKZCoreCom::STR_ATTRNAME_XLINK_HREF, taken) == SCSpecXML::TAKEN_OK;
    if (!hasData) {
        recCount = 0;
        return CXMLReader::READXML_OK;
    }
    const std::string href(taken.value, hasHref ? taken.valueLen : 0);
    const char* const path = hasHref ? GetPathBelowFolder(href) : nullptr;
    if (path == nullptr)
        return CXMLReader::READXML_BADFORMAT;
    const std::string dir = std::string(folder) + path;
    const bool isRead = type == LINKTBLTYPE_BNLINK ? bnLink->ReadFrom(dir.c_str(), endianness, dataModel)
                                                   : rpLink->ReadFrom(dir.c_str(), endianness, dataModel);
    if (!isRead) {
        areLinkTablesLost = true;
        bnLink->Clear();
        rpLink->Clear();
        recCount = 0;
    }
    return CXMLReader::READXML_OK;
}

// --- Reading the common form

void CBUIDataMngr::ClearButCollaborators()
{
    const CSourceDataMngr* const keptSrcDataMngr = srcDataMngr;
    const CCoreSumMngr* const keptCoreSumMngr = coreSumMngr;
    Clear();
    srcDataMngr = keptSrcDataMngr;
    coreSumMngr = keptCoreSumMngr;
}

CBUIDataMngr::EMthRetOfReadXML CBUIDataMngr::ReadCommonSpecByXML(const char* folder, CXMLReader& reader,
                                                                 DWORD recCountOfSrc)
{
    if (!SCSpecXML::IsOnElement(reader, STR_ELENAME_BUIDATAMNGR))
        return CXMLReader::READXML_NOELEMENT;
    ClearButCollaborators();
    recCount = recCountOfSrc;
    EMthRetOfReadXML result = CXMLReader::READXML_FAILURE;
    try {
        result = ReadCommonSpecOfRoot(folder, reader);
    } catch (...) {
        ClearButCollaborators();
        throw;
    }
    if (result != CXMLReader::READXML_OK)
        ClearButCollaborators();
    return result;
}

CBUIDataMngr::EMthRetOfReadXML CBUIDataMngr::ReadCommonSpecOfRoot(const char* folder, CXMLReader& reader)
{
    Attributes attributes(reader.GetAttributes());
    if (!SCSpecXML::TakeID(attributes, STR_ATTRNAME_ID, id))
        return CXMLReader::READXML_BADFORMAT;
    bool isBnLinkRead = false;
    bool isRpLinkRead = false;
    bool areBtnClassesRead = false;
    areLinkTablesLost = false;
    std::deque<DWORD> blankIDs; // those of source classes and common virtual classes are not used again

    const auto readLinkTable = [&](ELinkTableType type, bool& isTableRead) {
        const EMthRetOfReadXML read = ReadLinkTableSpecByXML(folder, reader.GetAttributes(), type);
        isTableRead = isTableRead || read == CXMLReader::READXML_OK;
        return read;
    };
    const auto readIDs = [&](DWORD& nextID) {
        return ReadBtnClassIDSpecByXML(reader.GetAttributes(), nextID, blankIDs)
                   ? CXMLReader::READXML_OK
                   : CXMLReader::READXML_BADFORMAT;
    };
    bool isOrderWrong = false;
    const EMthRetOfReadXML walked =
        SCSpecXML::ReadChildren(reader, CXMLReader::READXML_BADFORMAT, [&]() -> EMthRetOfReadXML {
            const bool isBnLink = SCSpecXML::IsOnElement(reader, STR_ELENAME_BNLINK);
            if (isBnLink || SCSpecXML::IsOnElement(reader, STR_ELENAME_RPLINK)) {
                if (areBtnClassesRead) {
                    isOrderWrong = true;
                    return CXMLReader::READXML_BADFORMAT;
                }
                return isBnLink ? readLinkTable(LINKTBLTYPE_BNLINK, isBnLinkRead)
                                : readLinkTable(LINKTBLTYPE_RPLINK, isRpLinkRead);
            }
            if (SCSpecXML::IsOnElement(reader, STR_ELENAME_SRCBTNCLS))
                return readIDs(nextSrcBtnClassID);
            if (SCSpecXML::IsOnElement(reader, STR_ELENAME_VIRBTNCLS_COMMON))
                return readIDs(nextCommonVirBtnClassID);
            if (!SCSpecXML::IsOnElement(reader, STR_ELENAME_BTNCLASSES) || areBtnClassesRead)
                return CXMLReader::READXML_UNKNOWNELEMENT;
            // What the classes take from the tables is proved before.
            if (areLinkTablesLost || !DropFldsThatDisagree())
                LoseLinkTables();
            const EMthRetOfReadXML read =
                ReadBtnClassesSpecByXML(folder, reader, SCKZCoreCom::SPECTYPE_COMMON);
            areBtnClassesRead = read == CXMLReader::READXML_OK;
            return read;
        });
    if (walked != CXMLReader::READXML_OK)
        return walked;
    if (isOrderWrong || !isBnLinkRead || !isRpLinkRead || !areBtnClassesRead)
        return CXMLReader::READXML_BADFORMAT;

    blankIDs.clear();
    RepairBtnClassIDs(reader, SCBUICoreCom::BTNCLS_ID_SRC_BEGIN, SCBUICoreCom::BTNCLS_ID_SRC_END,
                      nextSrcBtnClassID, blankIDs);
    RepairBtnClassIDs(reader, SCBUICoreCom::BTNCLS_ID_VIR_COMMON_BEGIN,
                      SCBUICoreCom::BTNCLS_ID_VIR_COMMON_END, nextCommonVirBtnClassID, blankIDs);
    if (!DoLinkTablesFitBtnClasses())
        LoseLinkTables();
    DropFldsWithoutBtnClass();
    SettleVirBtnClasses(true);
    return CXMLReader::READXML_OK;
}

// The class of such a field is missed if it is read, and the tables are lost then; one that is not saved,
// such as that of a deleted field, may have records without a button.
bool CBUIDataMngr::DropFldsThatDisagree()
{
    std::vector<DWORD> inBnLink;
    std::vector<DWORD> inRpLink;
    bnLink->GetBtnClassIDList(inBnLink);
    rpLink->GetBtnClassIDList(inRpLink);
    const DWORD recCountOfBnLink = bnLink->GetRecCount();
    if (recCountOfBnLink != recCount && !(inBnLink.empty() && recCountOfBnLink == 0))
        return false;
    const std::unique_ptr<DWORD[]> btnIDOfRec(new DWORD[recCount]);
    for (const DWORD btnClassID : inBnLink) {
        if (!DoLinkTablesAgreeOn(btnClassID, btnIDOfRec.get())) {
            bnLink->DeleteFld(btnClassID);
            rpLink->DeleteFld(btnClassID);
        }
    }
    std::erase_if(inRpLink, [this](DWORD btnClassID) {
        return !SCBUICoreCom::IsSrcBtnClass(btnClassID) || bnLink->ExistFld(btnClassID);
    });
    rpLink->DeleteFlds(inRpLink);
    return true;
}

// Whether the lists of a class are as long as they can be: no more records than there are in any, and each
// record in one of the source buttons'. Packed areas may claim to be far longer than their file, so this is
// looked at before one is unpacked.
bool CBUIDataMngr::HasPlausibleRecArea(DWORD btnClassID) const
{
    DWORD recAreaSize = 0;
    std::vector<DWORD> btnIDs;
    if (!rpLink->GetRecCountOfFld(btnClassID, recAreaSize) || !rpLink->GetBtnIDList(btnClassID, btnIDs))
        return false;
    unsigned long long ofSrcBtns = 0;
    unsigned long long ofAll = 0;
    for (const DWORD btnID : btnIDs) {
        DWORD recCountOfBtn = 0;
        rpLink->GetRecCount(btnClassID, btnID, recCountOfBtn);
        if (recCountOfBtn > recCount || SCBUICoreCom::IsVirIncBtn(btnID))
            return false;
        ofSrcBtns += SCBUICoreCom::IsSrcBtn(btnID) ? recCountOfBtn : 0;
        ofAll += recCountOfBtn;
    }
    return ofSrcBtns == recCount && recAreaSize <= ofAll + recCount;
}

// Whether each record is listed under its button, and under no other. `btnIDOfRec` has room for all records.
bool CBUIDataMngr::DoLinkTablesAgreeOn(DWORD btnClassID, DWORD* btnIDOfRec) const
{
    if (!HasPlausibleRecArea(btnClassID) || !bnLink->GetData(btnClassID, 0, recCount, btnIDOfRec))
        return false;
    DWORD recAreaSize = 0;
    rpLink->GetRecCountOfFld(btnClassID, recAreaSize);
    const std::unique_ptr<DWORD[]> recArea(new DWORD[recAreaSize]);
    TCBtnIDAssArr<SRecordList> recLists;
    if (!rpLink->GetAllRecList(btnClassID, recLists, recArea.get()))
        return false;
    bool areListsRight = true;
    recLists.ForEach([&](DWORD btnID, const SRecordList& list) {
        if (!SCBUICoreCom::IsSrcBtn(btnID))
            return; // a row, which is made anew
        for (DWORD i = 0; i < list.recCount && areListsRight; ++i) {
            const DWORD recNum = list.recList[i];
            areListsRight =
                recNum < recCount && btnIDOfRec[recNum] == btnID && (i == 0 || recNum > list.recList[i - 1]);
        }
    });
    return areListsRight;
}

bool CBUIDataMngr::DoLinkTablesFitBtnClasses() const
{
    return std::all_of(btnClasses.begin(), btnClasses.end(), [this](const auto& idAndClass) {
        const auto* const srcBtnClass = dynamic_cast<const VCSrcBtnClass*>(idAndClass.second.get());
        return srcBtnClass == nullptr ||
               (bnLink->ExistFld(idAndClass.first) && rpLink->ExistFld(idAndClass.first) &&
                srcBtnClass->GetRecCountOfAllSrcBtns() == recCount);
    });
}

void CBUIDataMngr::LoseLinkTables()
{
    bnLink->Clear();
    rpLink->Clear();
    recCount = 0;
    for (const auto& [btnClassID, btnClass] : btnClasses) {
        rpLink->InsertFld(btnClassID);
        btnClass->DeleteRecs(0, btnClass->GetRecCount());
        if (SCBUICoreCom::IsSrcBtnClass(btnClassID)) {
            bnLink->InsertFld(btnClassID, 0, nullptr);
            btnClass->SetBtnAppOrdList(*bnLink);
        }
    }
}

// What belongs to no class would be taken over by one that gets its identifier.
void CBUIDataMngr::DropFldsWithoutBtnClass()
{
    std::vector<DWORD> btnClassIDs;
    bnLink->GetBtnClassIDList(btnClassIDs);
    for (const DWORD btnClassID : btnClassIDs) {
        if (!ExistBtnClass(btnClassID))
            bnLink->DeleteFld(btnClassID);
    }
    rpLink->GetBtnClassIDList(btnClassIDs);
    std::erase_if(btnClassIDs, [this](DWORD btnClassID) { return ExistBtnClass(btnClassID); });
    rpLink->DeleteFlds(btnClassIDs);
    // Rows of special buttons are made anew: they may be those of other members.
    DropRowsOfSpBtns();
    for (const auto& [btnClassID, btnClass] : btnClasses) {
        if (SCBUICoreCom::IsVirBtnClass(btnClassID))
            rpLink->ClearFld(btnClassID);
    }
}

void CBUIDataMngr::SettleVirBtnClasses(bool common)
{
    std::vector<VCBtnClass*> all;
    for (const auto& [btnClassID, btnClass] : btnClasses) {
        all.push_back(btnClass.get());
        auto* const virBtnClass = dynamic_cast<CVirBtnClass*>(btnClass.get());
        if (virBtnClass != nullptr && virBtnClass->IsCommon() == common)
            virBtnClass->BindRefBtnClasses(btnClasses);
    }
    std::erase_if(all, [](const VCBtnClass* btnClass) { return !btnClass->HasSpBtns(); });
    VCBtnClass::SettleMembers(all);
    VCBtnClass::ResetLiveMemberInfoOfAllSpBtns(all);
    for (VCBtnClass* const btnClass : all) {
        auto* const virBtnClass = dynamic_cast<CVirBtnClass*>(btnClass);
        if (virBtnClass != nullptr && !virBtnClass->IsCommon())
            virBtnClass->SwitchOffBtnsOverIneffectiveClasses();
    }
    if (common)
        VCBtnClass::BuildOutdatedRows(all);
}

// --- Reading the fixed form

CBUIDataMngr::EMthRetOfReadXML CBUIDataMngr::ReadFixedSpecByXML(CXMLReader& reader,
                                                                const DWORD* limitedRecListOfHost,
                                                                DWORD limitedRecCountOfHost)
{
    const char* name = nullptr;
    DWORD nameLen = 0;
    if (!reader.GetCurrentElementName(name, nameLen))
        return CXMLReader::READXML_NOELEMENT;
    if (!SCSpecXML::IsOnElement(reader, STR_ELENAME_BUIDATAMNGR))
        return CXMLReader::READXML_BADFORMAT;
    EMthRetOfReadXML result = CXMLReader::READXML_FAILURE;
    std::vector<SSelectBtnIDList> selectInfo;
    try {
        ClearOfFixedSpec();
        result = ReadFixedSpecOfRoot(reader);
        if (result == CXMLReader::READXML_OK) {
            PlaceReadLevels();
            for (const auto& [btnClassID, btnClass] : btnClasses) {
                if (auto* const srcBtnClass = dynamic_cast<VCSrcBtnClass*>(btnClass.get()))
                    srcBtnClass->HideEmpValBtnAsRead();
            }
            SettleVirBtnClasses(false); // what it drops is selected no more
            GetAllBtnSelectionInfo(selectInfo);
            SetLimitedRecList(limitedRecListOfHost, limitedRecCountOfHost);
            FollowRestoredSpBtns(selectInfo);
            if (!SelectBtns(selectInfo, false))
                ClearAllBtnSelections(true);
        }
    } catch (...) {
        try {
            DropHalfReadFixedSpec();
        } catch (...) {
            ClearButCollaborators();
        }
        throw;
    }
    if (result != CXMLReader::READXML_OK)
        DropHalfReadFixedSpec();
    levelsRead.clear();
    return result;
}

void CBUIDataMngr::DropHalfReadFixedSpec()
{
    levelsRead.clear();
    multiSelection = false;
    relationMode = RELATIONMODE_NARROWING;
    for (const auto& [btnClassID, btnClass] : btnClasses) {
        if (auto* const dateTimeBtnClass = dynamic_cast<VCDateTimeBtnClass*>(btnClass.get()))
            dateTimeBtnClass->UnsetDispForm();
    }
    ClearOfFixedSpec();
}

CBUIDataMngr::EMthRetOfReadXML CBUIDataMngr::ReadFixedSpecOfRoot(CXMLReader& reader)
{
    Attributes attributes(reader.GetAttributes());
    bool multi = false;
    if (!SCSpecXML::TakeID(attributes, STR_ATTRNAME_ID, id) ||
        SCSpecXML::TakeFlag(attributes, STR_ATTRNAME_MULTISEL, multi) == SCSpecXML::TAKEN_BAD)
        return CXMLReader::READXML_BADFORMAT;
    multiSelection = multi;
    levelsRead.clear();
    bool isRelationRead = false;
    bool areBtnClassesRead = false;
    const EMthRetOfReadXML walked =
        SCSpecXML::ReadChildren(reader, CXMLReader::READXML_BADFORMAT, [&]() -> EMthRetOfReadXML {
            if (SCSpecXML::IsOnElement(reader, STR_ELENAME_RELATION)) {
                const EMthRetOfReadXML read = ReadRelationSpecByXML(reader, reader.GetAttributes());
                isRelationRead = isRelationRead || read == CXMLReader::READXML_OK;
                return read;
            }
            if (SCSpecXML::IsOnElement(reader, STR_ELENAME_VIRBTNCLS_FIXED))
                return ReadBtnClassIDSpecByXML(reader.GetAttributes(), nextFixedVirBtnClassID,
                                               blankFixedVirBtnClassIDs)
                           ? CXMLReader::READXML_OK
                           : CXMLReader::READXML_BADFORMAT;
            if (!SCSpecXML::IsOnElement(reader, STR_ELENAME_BTNCLASSES) || areBtnClassesRead)
                return CXMLReader::READXML_UNKNOWNELEMENT;
            const EMthRetOfReadXML read = ReadBtnClassesSpecByXML("", reader, SCKZCoreCom::SPECTYPE_FIXED);
            areBtnClassesRead = read == CXMLReader::READXML_OK;
            return read;
        });
    if (walked != CXMLReader::READXML_OK)
        return walked;
    if (!isRelationRead || !areBtnClassesRead)
        return CXMLReader::READXML_BADFORMAT;
    RepairBtnClassIDs(reader, SCBUICoreCom::BTNCLS_ID_VIR_FIXED_BEGIN, SCBUICoreCom::BTNCLS_ID_VIR_FIXED_END,
                      nextFixedVirBtnClassID, blankFixedVirBtnClassIDs);
    return CXMLReader::READXML_OK;
}

CBUIDataMngr::EMthRetOfReadXML CBUIDataMngr::ReadRelationSpecByXML(CXMLReader& reader,
                                                                   const Attributes& attributesOfElement)
{
    DWORD index = 0;
    ERelationMode mode = RELATIONMODE_NONE;
    if (!CXMLReader::SearchAttribute(attributesOfElement, static_cast<DWORD>(attributesOfElement.size()),
                                     STR_ATTRNAME_MODE, STRLEN_ATTRNAME_MODE, index) ||
        !GetRelationModeEnum(attributesOfElement[index], mode))
        return CXMLReader::READXML_BADFORMAT;
    relationMode = mode; // there is no selection yet that another mode would have to let go
    if (mode != RELATIONMODE_DIFFERENCE && mode != RELATIONMODE_NARROWING)
        return CXMLReader::READXML_OK;
    bool hasChildren = false;
    bool isRead = false;
    const EMthRetOfReadXML walked =
        SCSpecXML::ReadChildren(reader, CXMLReader::READXML_OK, [&]() -> EMthRetOfReadXML {
            hasChildren = true;
            if (isRead)
                return CXMLReader::READXML_OK;
            EMthRetOfReadXML read = CXMLReader::READXML_UNKNOWNELEMENT;
            if (mode == RELATIONMODE_DIFFERENCE && SCSpecXML::IsOnElement(reader, STR_ELENAME_DIFFERENCE))
                read = ReadDifferenceSpecByXML(reader.GetAttributes());
            else if (mode == RELATIONMODE_NARROWING &&
                     SCSpecXML::IsOnElement(reader, STR_ELENAME_HIERARCHIES))
                read = ReadHierarchiesSpecByXML(reader);
            isRead = read == CXMLReader::READXML_OK;
            return read;
        });
    return walked == CXMLReader::READXML_OK && hasChildren && !isRead ? CXMLReader::READXML_BADFORMAT
                                                                      : walked;
}

CBUIDataMngr::EMthRetOfReadXML CBUIDataMngr::ReadDifferenceSpecByXML(const Attributes& attributesOfElement)
{
    Attributes attributes(attributesOfElement);
    DWORD btnClassID = SCBUICoreCom::BTNCLS_ID_UNSETTING;
    DWORD standardBtnID = SCBUICoreCom::BTN_ID_UNSETTING;
    DWORD targetBtnID = SCBUICoreCom::BTN_ID_UNSETTING;
    if (!SCSpecXML::TakeID(attributes, STR_ATTRNAME_BTNCLSID, btnClassID) ||
        !SCSpecXML::TakeID(attributes, STR_ATTRNAME_STANDARDBTNID, standardBtnID))
        return CXMLReader::READXML_BADFORMAT;
    const SCSpecXML::ETaken target = SCSpecXML::TakeNumber(attributes, STR_ATTRNAME_TARGETBTNID, targetBtnID);
    if (target == SCSpecXML::TAKEN_BAD ||
        (target == SCSpecXML::TAKEN_OK && targetBtnID == SCBUICoreCom::BTN_ID_UNSETTING))
        return CXMLReader::READXML_BADFORMAT;
    diffBtnClassID = btnClassID;
    diffStandardBtnID = standardBtnID;
    diffTargetBtnID = targetBtnID;
    return CXMLReader::READXML_OK;
}

CBUIDataMngr::EMthRetOfReadXML CBUIDataMngr::ReadHierarchiesSpecByXML(CXMLReader& reader)
{
    levelsRead.clear();
    return SCSpecXML::ReadChildren(reader, CXMLReader::READXML_BADFORMAT, [&]() -> EMthRetOfReadXML {
        if (!SCSpecXML::IsOnElement(reader, STR_ELENAME_HIERARCHY))
            return CXMLReader::READXML_UNKNOWNELEMENT;
        Attributes attributes(reader.GetAttributes());
        DWORD depth = 0;
        DWORD btnClassID = SCBUICoreCom::BTNCLS_ID_UNSETTING;
        if (SCSpecXML::TakeNumber(attributes, STR_ATTRNAME_DEPTH, depth) != SCSpecXML::TAKEN_OK ||
            !SCSpecXML::TakeID(attributes, STR_ATTRNAME_BTNCLSID, btnClassID))
            return CXMLReader::READXML_BADFORMAT;
        levelsRead[depth] = btnClassID;
        return CXMLReader::READXML_OK;
    });
}

// The order of the levels is that of their depths; there are no more than classes, of which those of a user
// are read behind the levels. A depth that was not told is a level of no class.
void CBUIDataMngr::PlaceReadLevels()
{
    levelsRead.erase(levelsRead.lower_bound(static_cast<unsigned int>(btnClasses.size())), levelsRead.end());
    hierarchies.clear();
    if (levelsRead.empty())
        return;
    hierarchies.resize(levelsRead.rbegin()->first + std::size_t{1});
    for (const auto& [depth, btnClassID] : levelsRead) {
        hierarchies[depth].depth = depth;
        hierarchies[depth].btnClassID = btnClassID;
    }
}

// Source classes bring their special buttons up to date. Groups of dates that come about by it are new
// buttons, which join a selection that new buttons are made part of.
void CBUIDataMngr::FollowRestoredSpBtns(std::vector<SSelectBtnIDList>& selectInfo)
{
    std::map<DWORD, SSelectBtnIDList*> entries;
    for (SSelectBtnIDList& ofClass : selectInfo)
        entries.emplace(ofClass.btnClassID, &ofClass);
    for (const auto& [btnClassID, btnClass] : btnClasses) {
        auto* const srcBtnClass = dynamic_cast<VCSrcBtnClass*>(btnClass.get());
        if (srcBtnClass == nullptr)
            continue;
        const auto entry = entries.find(btnClassID);
        const bool joins = entry != entries.end() && entry->second->newBtnMadeSelState &&
                           dynamic_cast<const VCDateTimeBtnClass*>(srcBtnClass) != nullptr;
        std::vector<DWORD> before;
        if (joins)
            srcBtnClass->GetAllBtnIDList(before, false);
        srcBtnClass->ResetInsideInfoForSpBtnsOfSrcBtns(true, false);
        if (!joins || before.size() >= srcBtnClass->GetBtnCount() - srcBtnClass->GetIneffectiveBtnCount())
            continue;
        std::vector<DWORD> added;
        srcBtnClass->GetAllBtnIDList(added, false);
        std::sort(before.begin(), before.end());
        std::sort(added.begin(), added.end());
        SCBUICoreCom::DeleteBtnIDList(added, before);
        std::vector<DWORD>& selected = entry->second->btnIDList;
        selected.insert(selected.end(), added.begin(), added.end());
    }
    std::vector<VCBtnClass*> all;
    for (const auto& [btnClassID, btnClass] : btnClasses)
        all.push_back(btnClass.get());
    VCBtnClass::ResetLiveMemberInfoOfAllSpBtns(all); // a group tells those that hold it and are off nothing
    VCBtnClass::BuildOutdatedRows(all);
}

// --- Classes

bool CBUIDataMngr::ReadBtnClassIDSpecByXML(const Attributes& attributesOfElement, DWORD& nextID,
                                           std::deque<DWORD>& blankIDs)
{
    Attributes attributes(attributesOfElement);
    if (!SCSpecXML::TakeID(attributes, STR_ATTRNAME_NEXTID, nextID))
        return false;
    std::vector<DWORD> ids;
    if (SCSpecXML::TakeNumbers(attributes, STR_ATTRNAME_BLANKIDLIST, ids) == SCSpecXML::TAKEN_BAD)
        return false;
    blankIDs.assign(ids.begin(), ids.end());
    return true;
}

// Sees to it that the next identifier is above all that are in use, and that released ones are free and each
// there once.
void CBUIDataMngr::RepairBtnClassIDs(CXMLReader& reader, DWORD beginID, DWORD endID, DWORD& nextID,
                                     std::deque<DWORD>& blankIDs) const
{
    std::set<DWORD> kept;
    std::erase_if(blankIDs, [&](DWORD blankID) {
        return blankID < beginID || blankID > endID || ExistBtnClass(blankID) || !kept.insert(blankID).second;
    });
    const auto behind = btnClasses.upper_bound(endID);
    const DWORD lastID = behind == btnClasses.begin() ? 0 : std::prev(behind)->first;
    const DWORD endIDInUse = std::max(beginID, lastID + 1);
    if (nextID < beginID || nextID > endID + 1)
        nextID = beginID;
    nextID = std::max(nextID, endIDInUse);
    if (!kept.empty())
        nextID = std::max(nextID, *kept.rbegin() + 1);
    // A next identifier far beyond all others would have great tables made for the next class.
    if (!reader.TakeFromAllowance(nextID - endIDInUse)) {
        nextID = endIDInUse;
        std::erase_if(blankIDs, [=](DWORD blankID) { return blankID >= endIDInUse; });
    }
}

bool CBUIDataMngr::TakeRoomForBtnClass(CXMLReader& reader, DWORD btnClassID) const
{
    const DWORD beginID = SCBUICoreCom::IsSrcBtnClass(btnClassID) ? SCBUICoreCom::BTNCLS_ID_SRC_BEGIN
                          : SCBUICoreCom::IsCommonVirBtnClass(btnClassID)
                              ? SCBUICoreCom::BTNCLS_ID_VIR_COMMON_BEGIN
                              : SCBUICoreCom::BTNCLS_ID_VIR_FIXED_BEGIN;
    const auto behind = btnClasses.lower_bound(btnClassID);
    const DWORD before = behind == btnClasses.begin() ? beginID : std::max(beginID, std::prev(behind)->first);
    return reader.TakeFromAllowance(btnClassID - before);
}

std::unique_ptr<VCBtnClass>
CBUIDataMngr::CreateBtnClassBasedOnBtnClassType(SCBUICoreCom::EBtnClassType type) const
{
    constexpr DWORD NO_ID = SCBUICoreCom::BTNCLS_ID_UNSETTING;
    if (srcDataMngr == nullptr)
        return nullptr;
    switch (type) {
    case SCBUICoreCom::BTNCLSTYPE_NORMAL:
        return CreateBtnClassBasedOnDataType(SCDeclareConstant::DATATYPE_TEXT, NO_ID, 0);
    case SCBUICoreCom::BTNCLSTYPE_NUM:
        return CreateBtnClassBasedOnDataType(SCDeclareConstant::DATATYPE_NUM, NO_ID, 0);
    case SCBUICoreCom::BTNCLSTYPE_DATE:
        return CreateBtnClassBasedOnDataType(SCDeclareConstant::DATATYPE_DATE, NO_ID, 0);
    case SCBUICoreCom::BTNCLSTYPE_TIME:
        return CreateBtnClassBasedOnDataType(SCDeclareConstant::DATATYPE_TIME, NO_ID, 0);
    case SCBUICoreCom::BTNCLSTYPE_VIR:
        return std::make_unique<CVirBtnClass>(NO_ID, nullptr, rpLink);
    }
    throw ECAbnormalData(SCBUICoreStrDef::MSG_UNKNOWN_BTNCLSTYPE, SRC_FILE,
                         "NSKZ::NSKZCore::CBUIDataMngr::CreateBtnClassBasedOnBtnClassType", __LINE__);
}

std::unique_ptr<VCBtnClass> CBUIDataMngr::CreateBtnClassBasedOnBtnClassTypeAttrValue(const char* text,
                                                                                     DWORD len) const
{
    SCBUICoreCom::EBtnClassType type{};
    if (!VCBtnClass::GetBtnClassTypeBasedOnAttrValue(text, len, type))
        return nullptr;
    return CreateBtnClassBasedOnBtnClassType(type);
}

CBUIDataMngr::EMthRetOfReadXML CBUIDataMngr::ReadBtnClassesSpecByXML(const char* folder, CXMLReader& reader,
                                                                     SCKZCoreCom::ESpecType specType)
{
    std::set<DWORD> readIDs;
    return SCSpecXML::ReadChildren(reader, CXMLReader::READXML_BADFORMAT,
                                   [&] { return ReadBtnClassSpecByXML(folder, reader, specType, readIDs); });
}

CBUIDataMngr::EMthRetOfReadXML CBUIDataMngr::ReadBtnClassSpecByXML(const char* folder, CXMLReader& reader,
                                                                   SCKZCoreCom::ESpecType specType,
                                                                   std::set<DWORD>& readIDs)
{
    Attributes attributes(reader.GetAttributes());
    DWORD btnClassID = SCBUICoreCom::BTNCLS_ID_UNSETTING;
    if (!SCSpecXML::TakeID(attributes, VCBtnClass::STR_ATTRNAME_ID, btnClassID) ||
        readIDs.contains(btnClassID))
        return CXMLReader::READXML_BADFORMAT;
    const bool isOfCommonForm =
        SCBUICoreCom::IsSrcBtnClass(btnClassID) || SCBUICoreCom::IsCommonVirBtnClass(btnClassID);
    if (specType != SCKZCoreCom::SPECTYPE_FIXED || !isOfCommonForm) {
        const EMthRetOfReadXML result = ReadNewBtnClass(folder, reader, specType, btnClassID);
        if (result == CXMLReader::READXML_OK)
            readIDs.insert(btnClassID);
        return result;
    }
    VCBtnClass* const btnClass = FindBtnClass(btnClassID);
    if (btnClass == nullptr)
        return CXMLReader::READXML_BADFORMAT;
    readIDs.insert(btnClassID);
    auto* const virBtnClass = dynamic_cast<CVirBtnClass*>(btnClass);
    const EMthRetOfReadXML result =
        virBtnClass != nullptr
            ? virBtnClass->ReadSpecOfBtnClassByXML(folder, reader, specType, recCount, rpLink)
            : static_cast<VCSrcBtnClass*>(btnClass)->ReadFixedSpecOfBtnClassByXML(reader);
    if (result == CXMLReader::READXML_BADFORMAT)
        btnClass->ClearOfFixedSpec();
    return result;
}

CBUIDataMngr::EMthRetOfReadXML CBUIDataMngr::ReadNewBtnClass(const char* folder, CXMLReader& reader,
                                                             SCKZCoreCom::ESpecType specType,
                                                             DWORD btnClassID)
{
    Attributes attributes(reader.GetAttributes());
    IXMLIO::SAttribute type;
    if (ExistBtnClass(btnClassID) ||
        SCSpecXML::TakeText(attributes, VCBtnClass::STR_ATTRNAME_TYPE, type) != SCSpecXML::TAKEN_OK)
        return CXMLReader::READXML_BADFORMAT;
    std::unique_ptr<VCBtnClass> made = CreateBtnClassBasedOnBtnClassTypeAttrValue(type.value, type.valueLen);
    auto* const virBtnClass = dynamic_cast<CVirBtnClass*>(made.get());
    auto* const srcBtnClass = dynamic_cast<VCSrcBtnClass*>(made.get());
    if (made == nullptr || SCBUICoreCom::IsSrcBtnClass(btnClassID) != (srcBtnClass != nullptr))
        return CXMLReader::READXML_BADFORMAT;
    const EMthRetOfReadXML result =
        virBtnClass != nullptr
            ? virBtnClass->ReadSpecOfBtnClassByXML(folder, reader, specType, recCount, rpLink)
            : srcBtnClass->ReadCommonSpecOfBtnClassByXML(folder, reader, recCount, rpLink);
    if (result != CXMLReader::READXML_OK)
        return result;
    if ((srcBtnClass != nullptr && btnClassIDOfFld.contains(srcBtnClass->GetFldID())) ||
        !TakeRoomForBtnClass(reader, btnClassID))
        return CXMLReader::READXML_BADFORMAT;
    if (srcBtnClass != nullptr) {
        btnClassIDOfFld.emplace(srcBtnClass->GetFldID(), btnClassID);
        fldIDOfBtnClass.emplace(btnClassID, srcBtnClass->GetFldID());
        bnLink->InsertFld(btnClassID, 0, nullptr); // refused where the table came with it
        if (bnLink->GetRecCount() != 0 && bnLink->ExistFld(btnClassID))
            srcBtnClass->SetBtnAppOrdList(*bnLink);
    }
    btnClasses.emplace(btnClassID, std::move(made));
    rpLink->InsertFld(btnClassID);
    return result;
}

} // namespace NSKZ::NSKZCore
