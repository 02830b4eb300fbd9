#include "CDateSpec.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <vector>

namespace NSKZ::NSKZCore {

namespace {

constexpr std::string_view ATTRNAME_TYPE = "type";
constexpr std::string_view ATTRNAME_ERA = "era";
constexpr std::string_view ATTRNAME_YEAR = "year";
constexpr std::array<std::string_view, CDateSpec::PART_COUNT> ATTRNAMES = {
    "kind", "month", "halfTerm", "quarterTerm", "week", "dayOfWeek",
    "day",  "hour",  "minute",   "second",      "noon"};

struct STypeWord
{
    VCDate::EDateObjType type;
    std::string_view word;
};
constexpr std::array<STypeWord, 8> TYPES = {{
    {VCDate::DATEOBJTYPE_DATE, "Date"},
    {VCDate::DATEOBJTYPE_FISCALYEAR, "FiscalYear"},
    {VCDate::DATEOBJTYPE_FISCALMONTH, "FiscalMonth"},
    {VCDate::DATEOBJTYPE_HALFTERM, "HalfTerm"},
    {VCDate::DATEOBJTYPE_QUARTERTERM, "QuarterTerm"},
    {VCDate::DATEOBJTYPE_WEEKNUM, "WeekNum"},
    {VCDate::DATEOBJTYPE_DAYSOFWEEK, "DaysOfTheWeek"},
    {VCDate::DATEOBJTYPE_TIMEBASEDONNOON, "TimeBasedOnNoon"},
}};

struct SEraWord
{
    VCDate::EEra era;
    std::string_view word;
};
constexpr std::array<SEraWord, 6> ERAS = {{
    {VCDate::ERA_GREGORIAN, "Gregorian"},
    {VCDate::ERA_MEIJI, "Meiji"},
    {VCDate::ERA_TAISHO, "Taisho"},
    {VCDate::ERA_SHOWA, "Showa"},
    {VCDate::ERA_HEISEI, "Heisei"},
    {VCDate::ERA_REIWA, "Reiwa"},
}};

std::string_view GetName(const IXMLIO::SAttribute& attribute) noexcept
{
    return std::string_view(attribute.name, attribute.nameLen);
}

std::string_view GetValue(const IXMLIO::SAttribute& attribute) noexcept
{
    return std::string_view(attribute.value, attribute.valueLen);
}

IXMLIO::SAttribute MakeAttribute(std::string_view name, std::string_view value) noexcept
{
    return {name.data(), static_cast<DWORD>(name.size()), value.data(), static_cast<DWORD>(value.size())};
}

// Numbers as texts, one behind the other.
class CNumberTexts
{
public:
    std::string_view Add(DWORD number) noexcept
    {
        char* const text = texts[count++].data();
        DWORD len = 0;
        SCKZCoreCom::ConvertNumericValueIntoString(number, text, SIZE, len);
        return std::string_view(text, len);
    }

private:
    static constexpr DWORD SIZE = 16;

    std::array<std::array<char, SIZE>, CDateSpec::PART_COUNT + 1> texts;
    std::size_t count = 0;
};

// A number that is not there yet.
bool ReadNumber(const IXMLIO::SAttribute& attribute, DWORD& number) noexcept
{
    return number == VCDate::DATE_UNSETTING &&
           SCKZCoreCom::ConvertStringIntoNumericValue(attribute.value, attribute.valueLen, number) &&
           number != VCDate::DATE_UNSETTING;
}

} // namespace

bool CDateSpec::Write(VCDate::EDateObjType type, CXMLWriter& writer) const
{
    const auto typeWord =
        std::find_if(TYPES.begin(), TYPES.end(), [type](const STypeWord& each) { return each.type == type; });
    CNumberTexts texts;
    std::vector<IXMLIO::SAttribute> attributes;
    attributes.reserve(PART_COUNT + 3);
    attributes.push_back(MakeAttribute(ATTRNAME_TYPE, typeWord->word));
    if (year.IsSet()) {
        const auto eraWord = std::find_if(ERAS.begin(), ERAS.end(),
                                          [this](const SEraWord& each) { return each.era == year.GetEra(); });
        attributes.push_back(MakeAttribute(ATTRNAME_ERA, eraWord->word));
        attributes.push_back(MakeAttribute(ATTRNAME_YEAR, texts.Add(year.GetYear())));
    }
    for (std::size_t part = 0; part < PART_COUNT; ++part) {
        if (parts[part] != VCDate::DATE_UNSETTING)
            attributes.push_back(MakeAttribute(ATTRNAMES[part], texts.Add(parts[part])));
    }
    return writer.PutEmptyElement(STR_ELENAME_DATE, sizeof STR_ELENAME_DATE - 1, attributes);
}

CXMLReader::EMthRetOfReadXML CDateSpec::ReadType(const CXMLReader& reader,
                                                 VCDate::EDateObjType& type) noexcept
{
    const char* name = nullptr;
    DWORD nameLen = 0;
    if (!reader.GetCurrentElementName(name, nameLen) ||
        !IXMLIO::IsSameText(name, nameLen, STR_ELENAME_DATE, sizeof STR_ELENAME_DATE - 1))
        return CXMLReader::READXML_NOELEMENT;

    for (const IXMLIO::SAttribute& attribute : reader.GetAttributes()) {
        if (GetName(attribute) != ATTRNAME_TYPE)
            continue;
        for (const STypeWord& each : TYPES) {
            if (each.word == GetValue(attribute)) {
                type = each.type;
                return CXMLReader::READXML_OK;
            }
        }
    }
    return CXMLReader::READXML_BADFORMAT;
}

CXMLReader::EMthRetOfReadXML CDateSpec::Read(VCDate::EDateObjType type, const CXMLReader& reader) noexcept
{
    VCDate::EDateObjType typeRead = type;
    const CXMLReader::EMthRetOfReadXML result = ReadType(reader, typeRead);
    if (result != CXMLReader::READXML_OK)
        return result;
    if (typeRead != type)
        return CXMLReader::READXML_BADFORMAT;

    VCDate::EEra era = VCDate::ERA_UNSETTING;
    DWORD yearOfEra = VCDate::DATE_UNSETTING;
    for (const IXMLIO::SAttribute& attribute : reader.GetAttributes()) {
        const std::string_view name = GetName(attribute);
        if (name == ATTRNAME_TYPE)
            continue;
        bool good = false;
        if (name == ATTRNAME_ERA) {
            for (const SEraWord& each : ERAS) {
                if (each.word == GetValue(attribute)) {
                    era = each.era;
                    good = true;
                }
            }
        } else if (name == ATTRNAME_YEAR) {
            good = ReadNumber(attribute, yearOfEra);
        } else {
            const auto part = std::find(ATTRNAMES.begin(), ATTRNAMES.end(), name);
            good = part != ATTRNAMES.end() &&
                   ReadNumber(attribute, parts[static_cast<std::size_t>(part - ATTRNAMES.begin())]);
        }
        if (!good)
            return CXMLReader::READXML_BADFORMAT;
    }
    if ((era == VCDate::ERA_UNSETTING) != (yearOfEra == VCDate::DATE_UNSETTING))
        return CXMLReader::READXML_BADFORMAT;
    const bool good = era == VCDate::ERA_GREGORIAN ? year.SetGrg(yearOfEra) : year.SetJpn(era, yearOfEra);
    return good ? CXMLReader::READXML_OK : CXMLReader::READXML_BADFORMAT;
}

bool CDateSpec::HasOnly(std::initializer_list<EPart> allowed, bool yearAllowed) const noexcept
{
    if (year.IsSet() && !yearAllowed)
        return false;
    for (std::size_t part = 0; part < PART_COUNT; ++part) {
        if (parts[part] != VCDate::DATE_UNSETTING &&
            std::find(allowed.begin(), allowed.end(), static_cast<EPart>(part)) == allowed.end())
            return false;
    }
    return true;
}

} // namespace NSKZ::NSKZCore
