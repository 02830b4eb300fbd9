#include "SCSpecXML.h"

#include <limits>

namespace NSKZ::NSKZCore {

namespace {

constexpr std::size_t MAX_TEXT_OF_NUMBER = 11; // with the comma behind it

} // namespace

bool SCSpecXML::MakeNumberAttribute(const char* name, DWORD nameLen, DWORD number,
                                    char (&buffer)[MAX_NUMBER_SIZE], IXMLIO::SAttribute& attribute) noexcept
{
    DWORD length = 0;
    if (!SCKZCoreCom::ConvertNumericValueIntoString(number, buffer, sizeof buffer, length)) {
        SetLastError(ERROR_INVALID_DATA);
        return false;
    }
    attribute = {name, nameLen, buffer, length};
    return true;
}

bool SCSpecXML::ConvertIntoText(const std::vector<DWORD>& numbers, std::string& text)
{
    std::string made(numbers.size() * MAX_TEXT_OF_NUMBER + 1, '\0');
    DWORD length = 0;
    if (made.size() > std::numeric_limits<DWORD>::max() ||
        !SCKZCoreCom::ConvertNumericValueListIntoString(numbers, SCKZCoreCom::CHAR_COMMA, made.data(),
                                                        static_cast<DWORD>(made.size()), length)) {
        SetLastError(ERROR_INVALID_DATA);
        return false;
    }
    made.resize(length);
    text = std::move(made);
    return true;
}

bool SCSpecXML::CAttributes::AddNumber(const char* name, DWORD nameLen, DWORD number)
{
    char buffer[MAX_NUMBER_SIZE];
    IXMLIO::SAttribute attribute;
    if (!MakeNumberAttribute(name, nameLen, number, buffer, attribute))
        return false;
    AddKept(name, nameLen, std::string(attribute.value, attribute.valueLen));
    return true;
}

void SCSpecXML::CAttributes::AddKept(const char* name, DWORD nameLen, std::string text)
{
    const std::string& kept = keptTexts.emplace_back(std::move(text));
    attributes.push_back({name, nameLen, kept.c_str(), static_cast<DWORD>(kept.size())});
}

bool SCSpecXML::GetID(const Attributes& attributes, const char* name, DWORD nameLen, DWORD& id) noexcept
{
    DWORD index = 0;
    DWORD found = 0;
    if (!CXMLReader::SearchAttribute(attributes, static_cast<DWORD>(attributes.size()), name, nameLen,
                                     index) ||
        !SCKZCoreCom::ConvertStringIntoNumericValue(attributes[index].value, attributes[index].valueLen,
                                                    found) ||
        found == 0)
        return false;
    id = found;
    return true;
}

SCSpecXML::ETaken SCSpecXML::TakeText(Attributes& attributes, const char* name, DWORD nameLen,
                                      IXMLIO::SAttribute& taken) noexcept
{
    DWORD index = 0;
    if (!CXMLReader::SearchAttribute(attributes, static_cast<DWORD>(attributes.size()), name, nameLen, index))
        return TAKEN_ABSENT;
    taken = attributes[index];
    attributes[index] = IXMLIO::SAttribute();
    return TAKEN_OK;
}

SCSpecXML::ETaken SCSpecXML::TakeNumber(Attributes& attributes, const char* name, DWORD nameLen,
                                        DWORD& number) noexcept
{
    IXMLIO::SAttribute taken;
    const ETaken found = TakeText(attributes, name, nameLen, taken);
    if (found != TAKEN_OK)
        return found;
    return SCKZCoreCom::ConvertStringIntoNumericValue(taken.value, taken.valueLen, number) ? TAKEN_OK
                                                                                           : TAKEN_BAD;
}

SCSpecXML::ETaken SCSpecXML::TakeNumbers(Attributes& attributes, const char* name, DWORD nameLen,
                                         std::vector<DWORD>& numbers)
{
    IXMLIO::SAttribute taken;
    const ETaken found = TakeText(attributes, name, nameLen, taken);
    if (found != TAKEN_OK)
        return found;
    return SCKZCoreCom::ConvertStringIntoNumericValueList(taken.value, taken.valueLen,
                                                          SCKZCoreCom::CHAR_COMMA, numbers)
               ? TAKEN_OK
               : TAKEN_BAD;
}

SCSpecXML::ETaken SCSpecXML::TakeFlag(Attributes& attributes, const char* name, DWORD nameLen,
                                      bool& flag) noexcept
{
    IXMLIO::SAttribute taken;
    const ETaken found = TakeText(attributes, name, nameLen, taken);
    if (found != TAKEN_OK)
        return found;
    const bool isTrue =
        IXMLIO::IsSameText(taken.value, taken.valueLen, SCKZCoreCom::STR_TRUE, SCKZCoreCom::STRLEN_TRUE);
    if (!isTrue &&
        !IXMLIO::IsSameText(taken.value, taken.valueLen, SCKZCoreCom::STR_FALSE, SCKZCoreCom::STRLEN_FALSE))
        return TAKEN_BAD;
    flag = isTrue;
    return TAKEN_OK;
}

bool SCSpecXML::IsOnElement(const CXMLReader& reader, const char* name, DWORD nameLen) noexcept
{
    const char* current = nullptr;
    DWORD currentLen = 0;
    return reader.GetCurrentElementName(current, currentLen) &&
           IXMLIO::IsSameText(current, currentLen, name, nameLen);
}

} // namespace NSKZ::NSKZCore
