#include "VCBtn.h"

#include "ECAbnormalData.h"
#include "SCBUICoreStrDef.h"
#include "SCKZCoreStrDef.h"
#include "SCSpecXML.h"

#include <cstring>

namespace NSKZ::NSKZCore {

namespace {

bool AreEqualTexts(const char* left, const char* right)
{
    return _mbscmp(reinterpret_cast<const unsigned char*>(left),
                   reinterpret_cast<const unsigned char*>(right)) == 0;
}

} // namespace

VCBtn::VCBtn(DWORD btnID, const char* nameOfBtn) : name(DuplicateText(nameOfBtn)), id(btnID) {}

VCBtn::~VCBtn() = default;

void VCBtn::Clear()
{
    alias.reset();
    name.reset();
    backReferences.reset();
    id = SCBUICoreCom::BTN_ID_UNSETTING;
    visibleInfo = 0;
    aliasIsName = true;
    sel = false;
}

void VCBtn::Copy(const VCBtn& other)
{
    std::unique_ptr<char[]> newAlias = DuplicateText(other.alias.get());
    std::unique_ptr<char[]> newName = DuplicateText(other.name.get());
    std::unique_ptr<SBackReferences> newReferences;
    if (other.backReferences != nullptr)
        newReferences = std::make_unique<SBackReferences>(*other.backReferences);

    alias = std::move(newAlias);
    name = std::move(newName);
    backReferences = std::move(newReferences);
    id = other.id;
    visibleInfo = other.visibleInfo;
    aliasIsName = other.aliasIsName;
    sel = other.sel;
}

void VCBtn::ClearOfFixedSpec()
{
    sel = false;
    visibleInfo &= ~VISINFO_MASK_FIXEDSPEC;
    if (backReferences == nullptr)
        return;
    backReferences->spBtnIDsInClass.clear();
    backReferences->spBtnIDsOfOtherClass.EraseIf(
        [](const SBtnClassIDAndBtnID& spBtn) { return SCBUICoreCom::IsFixedVirBtnClass(spBtn.btnClassID); });
    if (!HasBackReferences())
        backReferences.reset();
}

VCBtn::SAlias VCBtn::MakeAlias(const char* text) const
{
    if (text != nullptr && name != nullptr && AreEqualTexts(text, name.get()))
        return SAlias{nullptr, true};
    return SAlias{DuplicateText(text == nullptr ? "" : text), false};
}

void VCBtn::SetAlias(SAlias&& made) noexcept
{
    alias = std::move(made.text);
    aliasIsName = made.isName;
}

bool VCBtn::WriteSpecByXML(CXMLWriter& writer, const Attributes& attributes,
                           const IXMLIO::SAttribute* typeAttr, SCKZCoreCom::ESpecType specType,
                           EElementPart part) const
{
    return WriteSpecByXML(writer, attributes, typeAttr, specType, part, sel);
}

bool VCBtn::WriteSpecByXML(CXMLWriter& writer, const Attributes& attributes,
                           const IXMLIO::SAttribute* typeAttr, SCKZCoreCom::ESpecType specType,
                           EElementPart part, bool selToWrite) const
{
    if (part == ELEMENTPART_END)
        return writer.PutEndTag(STR_ELENAME_BTN, STRLEN_ELENAME_BTN);
    const auto makeText = [](const char* attrName, DWORD attrNameLen, const char* text) {
        return IXMLIO::SAttribute{attrName, attrNameLen, text,
                                  text == nullptr ? 0 : static_cast<DWORD>(std::strlen(text))};
    };
    char idText[SCSpecXML::MAX_NUMBER_SIZE];
    Attributes all(1);
    all.reserve(4 + attributes.size());
    if (!SCSpecXML::MakeNumberAttribute(STR_ATTRNAME_ID, STRLEN_ATTRNAME_ID, id, idText, all.front()))
        return false;
    if (typeAttr != nullptr)
        all.push_back(*typeAttr);
    switch (specType) {
    case SCKZCoreCom::SPECTYPE_COMMON:
        if (name != nullptr)
            all.push_back(makeText(STR_ATTRNAME_NAME, STRLEN_ATTRNAME_NAME, name.get()));
        if (!aliasIsName)
            all.push_back(makeText(STR_ATTRNAME_ALIAS, STRLEN_ATTRNAME_ALIAS, alias.get()));
        break;
    case SCKZCoreCom::SPECTYPE_FIXED:
        if (selToWrite)
            all.push_back(makeText(STR_ATTRNAME_SEL, STRLEN_ATTRNAME_SEL, SCKZCoreCom::STR_TRUE));
        break;
    default:
        throw ECAbnormalData(SCKZCoreStrDef::MSG_UNKNOWN_SPECTYPE, "Src/VCBtn",
                             "NSKZ::NSKZCore::VCBtn::WriteSpecByXML", 641);
    }
    all.insert(all.end(), attributes.begin(), attributes.end());
    return part == ELEMENTPART_START ? writer.PutStartTag(STR_ELENAME_BTN, STRLEN_ELENAME_BTN, all)
                                     : writer.PutEmptyElement(STR_ELENAME_BTN, STRLEN_ELENAME_BTN, all);
}

bool VCBtn::WriteSelectionByXML(CXMLWriter& writer, bool defaultSel) const
{
    return sel == defaultSel ||
           WriteSpecByXML(writer, {}, nullptr, SCKZCoreCom::SPECTYPE_FIXED, ELEMENTPART_EMPTY);
}

bool VCBtn::WriteSrcBtnByXML(CXMLWriter& writer, const char* typeWord, DWORD typeWordLen) const
{
    const IXMLIO::SAttribute typeAttr{STR_ATTRNAME_TYPE, STRLEN_ATTRNAME_TYPE, typeWord, typeWordLen};
    return WriteSpecByXML(writer, {}, &typeAttr, SCKZCoreCom::SPECTYPE_COMMON, ELEMENTPART_EMPTY);
}

CXMLReader::EMthRetOfReadXML VCBtn::ReadSpecByXML(const char* tag, DWORD tagLen, Attributes& attributes,
                                                  SCKZCoreCom::ESpecType specType)
{
    if (!IXMLIO::IsSameText(tag, tagLen, STR_ELENAME_BTN, STRLEN_ELENAME_BTN))
        return CXMLReader::READXML_BADFORMAT;
    if (specType != SCKZCoreCom::SPECTYPE_COMMON) {
        ClearOfFixedSpec();
        const bool isFlag = SCSpecXML::TakeFlag(attributes, STR_ATTRNAME_SEL, sel) != SCSpecXML::TAKEN_BAD;
        return isFlag ? CXMLReader::READXML_OK : CXMLReader::READXML_BADFORMAT;
    }
    Clear();
    if (!SCSpecXML::TakeID(attributes, STR_ATTRNAME_ID, id))
        return CXMLReader::READXML_BADFORMAT;
    const auto takeText = [&attributes](const auto& attrName, std::unique_ptr<char[]>& text) {
        IXMLIO::SAttribute taken;
        if (SCSpecXML::TakeText(attributes, attrName, taken) != SCSpecXML::TAKEN_OK)
            return false;
        text = DuplicateText(taken.value, taken.valueLen);
        return true;
    };
    takeText(STR_ATTRNAME_NAME, name);
    aliasIsName = !takeText(STR_ATTRNAME_ALIAS, alias);
    return CXMLReader::READXML_OK;
}

CXMLReader::EMthRetOfReadXML VCBtn::ReadSpecOfCurrentElement(const CXMLReader& reader,
                                                             SCKZCoreCom::ESpecType specType)
{
    const char* tag = nullptr;
    DWORD tagLen = 0;
    if (!reader.GetCurrentElementName(tag, tagLen))
        return CXMLReader::READXML_NOELEMENT;
    Attributes attributes(reader.GetAttributes());
    return ReadSpecByXML(tag, tagLen, attributes, specType);
}

std::unique_ptr<char[]> VCBtn::DuplicateText(const char* text)
{
    if (text == nullptr)
        return nullptr;
    return DuplicateText(text, std::strlen(text));
}

std::unique_ptr<char[]> VCBtn::DuplicateText(const char* text, std::size_t len)
{
    std::unique_ptr<char[]> copy(new char[len + 1]);
    std::memcpy(copy.get(), text, len);
    copy[len] = '\0';
    return copy;
}

} // namespace NSKZ::NSKZCore
