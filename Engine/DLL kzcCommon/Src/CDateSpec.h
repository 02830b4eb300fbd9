#ifndef CDATESPEC_H
#define CDATESPEC_H

#include "CEraYear.h"
#include "VCDate.h"

#include <array>
#include <initializer_list>

namespace NSKZ::NSKZCore {

// The parts of a date object as the attributes of its XML element.
class CDateSpec
{
public:
    static constexpr char STR_ELENAME_DATE[] = "Date";

    enum EPart : BYTE
    {
        PART_KIND,
        PART_MONTH,
        PART_HALFTERM,
        PART_QUARTERTERM,
        PART_WEEK,
        PART_DAYOFWEEK,
        PART_DAY,
        PART_HOUR,
        PART_MINUTE,
        PART_SECOND,
        PART_NOON,
        PART_COUNT,
    };

    CDateSpec() noexcept { parts.fill(VCDate::DATE_UNSETTING); }

    void SetPart(EPart part, DWORD value) noexcept { parts[part] = value; }
    // DATE_UNSETTING for what is not there.
    DWORD GetPart(EPart part) const noexcept { return parts[part]; }

    CEraYear year;

    // Writes the element of an object of that class.
    bool Write(VCDate::EDateObjType type, CXMLWriter& writer) const;

    // The class of the object of the element on which the reader stands.
    static CXMLReader::EMthRetOfReadXML ReadType(const CXMLReader& reader,
                                                 VCDate::EDateObjType& type) noexcept;
    // Reads the attributes of that element, which is of an object of that class. READXML_BADFORMAT, with the
    // object as far as it came, for another class, an attribute that is unknown or stands there twice, a
    // value that is no number, a year without era or that does not exist.
    CXMLReader::EMthRetOfReadXML Read(VCDate::EDateObjType type, const CXMLReader& reader) noexcept;
    // Whether no part but these is there, and the year only if it may be.
    bool HasOnly(std::initializer_list<EPart> allowed, bool yearAllowed) const noexcept;

private:
    std::array<DWORD, PART_COUNT> parts;
};

} // namespace NSKZ::NSKZCore

#endif
