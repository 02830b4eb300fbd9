#include "CModelTable.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace NSKZ::Test {

using NSKZCore::CFldValueList;
using NSKZCore::CRandom;
using NSKZCore::CSourceDataMngr;
using NSKZCore::SCDeclareConstant;

namespace {

std::string MakeText(CRandom& random, DWORD number)
{
    // With Shift-JIS characters whose second byte is a backslash, a half-width one, prefixes of each other,
    // blanks.
    static const std::string STEMS[] = {"",  "a",        "ab", "B",        "\x83\x5c", "\x83\x5c\x83\x5c",
                                        "z", "\xb1\xb2", " ",  "\x93\xfa", "~",        "-"};
    return number < std::size(STEMS) && number > 0 && random.IsOneOf(2) ? STEMS[number]
                                                                        : "v" + std::to_string(number);
}

std::string MakeNumber(CRandom& random, DWORD number)
{
    const std::string digits = std::to_string(number);
    switch (random.GetBelow(12)) {
    case 0:
        return digits + ".0"; // another text of the same number
    case 1:
        return "-" + digits + ".25";
    case 2:
        return digits + "e1";
    case 3:
        return " " + digits;
    case 4:
        return "n" + digits; // no number
    case 5:
        return "1," + std::to_string(100 + number % 900);
    case 6:
        return digits + ".1";
    default:
        return digits;
    }
}

std::string MakeDate(CRandom& random, DWORD number, const SCDeclareConstant::SDateTypeInfo& info)
{
    const std::string year = std::to_string(2020 + number / 336);
    const std::string month = std::to_string(number / 28 % 12 + 1);
    const std::string day = std::to_string(number % 28 + 1);
    std::string date = info.delimiter == SCDeclareConstant::DATEDELIM_KANJI
                           ? year + "\x94\x4e" + month + "\x8c\x8e" + day + "\x93\xfa"
                           : year + "-" + month + "-" + day;
    switch (random.GetBelow(12)) {
    case 0:
        return date + " 12:34:56"; // longer than a date: cut
    case 1:
        return date + "\x93\xfa\x93\xfa\x93\xfa";
    case 2:
        return date + " ";
    case 3:
        return "no date at all \x93\xfa";
    default:
        return date;
    }
}

std::string MakeTime(DWORD number)
{
    return std::to_string(number / 3600 % 24) + ":" + std::to_string(number / 60 % 60) + ":" +
           std::to_string(number % 60);
}

std::string MakeValue(CRandom& random, const SModelFld& fld, DWORD number)
{
    switch (fld.type) {
    case SCDeclareConstant::DATATYPE_NUM:
        return MakeNumber(random, number);
    case SCDeclareConstant::DATATYPE_DATE:
        return MakeDate(random, number, fld.dateTypeInfo);
    case SCDeclareConstant::DATATYPE_TIME:
        return MakeTime(number);
    default:
        return MakeText(random, number);
    }
}

} // namespace

CModelTable::CModelTable(CRandom& random, const STableWish& wish)
{
    const DWORD minRecCount = std::max<DWORD>(2, wish.minValueCount);
    if (wish.mayBeTiny && random.IsOneOf(8))
        texts.recCount = random.GetBelow(2);
    else
        texts.recCount = minRecCount + random.GetBelow(wish.maxRecCount - minRecCount + 1);
    if (random.IsOneOf(6))
        source.SetDefEmpValName(random.IsOneOf(2) ? "" : "v1"); // a name that values may have as well
    texts.empValName = source.GetDefEmpValName();
    if (wish.minValueCount != 0)
        AddFldOfManyValues(random, wish.minValueCount);
    for (DWORD left = 1 + random.GetBelow(wish.maxFldCount); left > 0; --left)
        AddFld(random, wish);
}

void CModelTable::AddFld(CRandom& random, const STableWish& wish)
{
    SModelFld fld;
    fld.name = "item " + std::to_string(texts.flds.size() + 1);
    fld.isItem = !random.IsOneOf(10);
    fld.type = static_cast<SCDeclareConstant::EDataType>(random.GetBelow(4));
    if (wish.number != 0 && random.IsOneOf(wish.number))
        fld.type = SCDeclareConstant::DATATYPE_NUM;
    if (random.IsOneOf(2))
        fld.dateTypeInfo.delimiter = SCDeclareConstant::DATEDELIM_KANJI;

    const bool allDifferent = random.IsOneOf(6);
    DWORD valueCount = 1 + random.GetBelow(random.IsOneOf(2) ? 4 : 30); // 1: one value only
    const DWORD emptyOneOf = random.IsOneOf(3) ? 1 + random.GetBelow(8) : 0;
    std::vector<std::string> values;
    for (DWORD number = 0; number < valueCount; ++number)
        values.push_back(MakeValue(random, fld, random.GetBelow(30)));
    for (DWORD rec = 0; rec < texts.recCount; ++rec) {
        if (emptyOneOf != 0 && random.IsOneOf(emptyOneOf))
            fld.texts.emplace_back();
        else if (allDifferent)
            fld.texts.push_back(fld.type == SCDeclareConstant::DATATYPE_TEXT ? "x" + std::to_string(rec)
                                                                             : std::to_string(rec));
        else
            fld.texts.push_back(values[random.GetBelow(valueCount)]);
    }
    AddToSource(fld);
    texts.flds.push_back(std::move(fld));
}

void CModelTable::AddFldOfManyValues(CRandom& random, DWORD minValueCount)
{
    SModelFld fld;
    fld.name = "many values";
    for (DWORD rec = 0; rec < texts.recCount; ++rec) {
        const DWORD number = rec < minValueCount ? rec : random.GetBelow(rec);
        const bool isEmpty = rec >= minValueCount && random.IsOneOf(8);
        fld.texts.push_back(isEmpty ? "" : "m" + std::to_string(number));
    }
    AddToSource(fld);
    texts.flds.push_back(std::move(fld));
}

void CModelTable::AddToSource(SModelFld& fld)
{
    CSourceDataMngr::SFldInfo info;
    info.name = fld.name;
    info.spec.dataKind = fld.isItem ? SCDeclareConstant::DATAKIND_ITEM : SCDeclareConstant::DATAKIND_HIDDEN;
    info.spec.dataType = fld.type;
    info.dateTypeInfo = fld.dateTypeInfo;
    CFldValueList values;
    bool good = true;
    for (const std::string& text : fld.texts)
        good = values.Append(text) && good;
    if (!good || !source.AddFld(info, std::move(values), fld.fldID))
        throw std::logic_error("a field of the random table was refused");
}

std::string CModelTable::Describe() const
{
    std::ostringstream out;
    out << texts.recCount << " records, empty value \"" << texts.empValName << "\"\n";
    for (const SModelFld& fld : texts.flds) {
        out << "field " << fld.fldID << " type " << fld.type << (fld.isItem ? ":" : " (no item):");
        for (const std::string& text : fld.texts)
            out << " \"" << text << '"';
        out << '\n';
    }
    return out.str();
}

} // namespace NSKZ::Test
