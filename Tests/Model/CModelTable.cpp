#include "CModelTable.h"

#include <algorithm>
#include <chrono>
#include <iterator>
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

using std::chrono::days;
using std::chrono::sys_days;

// Where something in the calendar begins or ends.
sys_days ChooseTurn(CRandom& random)
{
    constexpr int TURNS[][3] = {{1868, 10, 23}, {1872, 12, 31}, {1912, 7, 30}, {1926, 12, 25},
                                {1989, 1, 8},   {2019, 5, 1},   {2020, 2, 29}, {2024, 3, 31},
                                {2023, 12, 25}, {9999, 12, 20}, {2001, 1, 1},  {2021, 6, 20}};
    const auto& turn = TURNS[random.GetBelow(std::size(TURNS))];
    return std::chrono::year{turn[0]} / turn[1] / turn[2];
}

sys_days ChooseDay(CRandom& random, sys_days turn)
{
    const int reach = random.IsOneOf(3) ? 800 : random.IsOneOf(2) ? 40 : 3;
    const sys_days day =
        turn + days{static_cast<int>(random.GetBelow(static_cast<DWORD>(2 * reach + 1))) - reach};
    return std::min(day, sys_days{std::chrono::year{9999} / 12 / 31});
}

std::string Pad(int number, int digits)
{
    const std::string text = std::to_string(number);
    const auto wanted = static_cast<std::size_t>(digits);
    return text.size() >= wanted ? text : std::string(wanted - text.size(), '0') + text;
}

// The year of the era that the day lies in; a Gregorian year before all of them.
std::string WriteEraYear(CRandom& random, sys_days day, bool withoutDelimiter)
{
    struct SEra
    {
        sys_days first;
        const char* words[4];
    };
    const SEra eras[] = {
        {std::chrono::year{2019} / 5 / 1, {"R", "r", "\x97\xdf\x98\x61", "\x97\xdf"}},
        {std::chrono::year{1989} / 1 / 8, {"H", "h", "\x95\xbd\x90\xac", "\x95\xbd"}},
        {std::chrono::year{1926} / 12 / 25, {"S", "s", "\x8f\xba\x98\x61", "\x8f\xba"}},
        {std::chrono::year{1912} / 7 / 30, {"T", "t", "\x91\xe5\x90\xb3", "\x91\xe5"}},
        {std::chrono::year{1868} / 10 / 23, {"M", "m", "\x96\xbe\x8e\xa1", "\x96\xbe"}},
    };
    const int year = static_cast<int>(std::chrono::year_month_day(day).year());
    for (const SEra& era : eras) {
        if (era.first > day)
            continue;
        const int yearOfEra = year - static_cast<int>(std::chrono::year_month_day(era.first).year()) + 1;
        const std::string word = era.words[random.GetBelow(4)];
        if (yearOfEra == 1 && random.IsOneOf(2))
            return word + "\x8c\xb3";
        return word + Pad(yearOfEra, withoutDelimiter ? 2 : 1 + static_cast<int>(random.GetBelow(2)));
    }
    return std::to_string(year);
}

// In one of the ways in which the form lets it be written.
std::string WriteDate(CRandom& random, sys_days day, const SCDeclareConstant::SDateTypeInfo& info)
{
    const std::chrono::year_month_day parts(day);
    const int year = static_cast<int>(parts.year());
    const bool isKanji = info.delimiter == SCDeclareConstant::DATEDELIM_KANJI;
    const bool isBare = info.delimiter == SCDeclareConstant::DATEDELIM_NONE;
    const int digits = isBare || random.IsOneOf(4) ? 2 : 1;
    const char* const ELEMENTS[] = {"ymd", "mdy", "dmy", "ym",  "md",  "jmd", "y",
                                    "jm",  "j",   "zmd", "mdz", "dmz", "zm"};
    const char* const DELIMITERS[] = {"", "/", "-", ".", ""};
    std::string text;
    for (const char* element = ELEMENTS[info.form]; *element != '\0'; ++element) {
        if (!text.empty())
            text += DELIMITERS[info.delimiter];
        switch (*element) {
        case 'j':
            text += WriteEraYear(random, day, isBare);
            break;
        case 'z':
            text += Pad(year % 100, 2);
            break;
        case 'y':
            text += !isBare && year >= 1950 && year < 2050 && random.IsOneOf(6) ? Pad(year % 100, 2)
                                                                                : Pad(year, 4);
            break;
        case 'm':
            text += Pad(static_cast<int>(static_cast<unsigned>(parts.month())), digits);
            break;
        default:
            text += Pad(static_cast<int>(static_cast<unsigned>(parts.day())), digits);
        }
        if (isKanji)
            text += *element == 'm' ? "\x8c\x8e" : *element == 'd' ? "\x93\xfa" : "\x94\x4e";
    }
    return text;
}

// A date or almost one.
std::string MakeDate(CRandom& random, sys_days turn, const SCDeclareConstant::SDateTypeInfo& info)
{
    sys_days day = ChooseDay(random, turn);
    if (random.IsOneOf(3)) { // month and day may change places
        const std::chrono::year_month_day parts(day);
        day = parts.year() / parts.month() / (static_cast<unsigned>(parts.day()) % 12 + 1);
    }
    const std::string date = WriteDate(random, day, info);
    switch (random.GetBelow(24)) {
    case 0:
        return date + " 12:34:56"; // longer than a date: cut
    case 1:
        return date + "\x93\xfa\x93\xfa\x93\xfa";
    case 2:
        return date + " ";
    case 3:
        return "no date at all \x93\xfa";
    case 4:
        return "2023-02-29";
    case 5:
        return "13" + date;
    default:
        return date;
    }
}

std::string MakeTime(CRandom& random, DWORD number, const SCDeclareConstant::STimeTypeInfo& info)
{
    const bool has12Hours =
        info.form == SCDeclareConstant::TIMEFORM_HMS_12 || info.form == SCDeclareConstant::TIMEFORM_HM_12;
    const bool hasSecond =
        info.form == SCDeclareConstant::TIMEFORM_HMS || info.form == SCDeclareConstant::TIMEFORM_HMS_12;
    const int hour =
        static_cast<int>(has12Hours ? random.GetBelow(13) : random.GetBelow(random.IsOneOf(5) ? 48 : 24));
    const int minute = static_cast<int>((number * 7) % 60);
    const int second = static_cast<int>(random.IsOneOf(2) ? 0 : (number * 13) % 60);
    const bool isKanji = random.IsOneOf(4);
    std::string text = Pad(hour, 1 + static_cast<int>(random.GetBelow(2)));
    text += isKanji ? "\x8e\x9e" : ":";
    text += Pad(minute, 2) + (isKanji ? "\x95\xaa" : hasSecond ? ":" : "");
    if (hasSecond)
        text += Pad(second, 2) + (isKanji ? "\x95\x62" : "");
    if (has12Hours) {
        const char* const HALVES[] = {"AM", "pm", "\x8c\xdf\x91\x4f", "\x8c\xdf\x8c\xe3"};
        const std::string half = HALVES[random.GetBelow(4)];
        const std::string space = random.IsOneOf(2) ? " " : "";
        text = random.IsOneOf(2) ? half + space + text : text + space + half;
    }
    switch (random.GetBelow(16)) {
    case 0:
        return text + "x";
    case 1:
        return "48:00:00";
    case 2:
        return std::to_string(number);
    default:
        return text;
    }
}

std::string MakeValue(CRandom& random, const SModelFld& fld, sys_days turn, DWORD number)
{
    switch (fld.type) {
    case SCDeclareConstant::DATATYPE_NUM:
        return MakeNumber(random, number);
    case SCDeclareConstant::DATATYPE_DATE:
        return MakeDate(random, turn, fld.dateTypeInfo);
    case SCDeclareConstant::DATATYPE_TIME:
        return MakeTime(random, number, fld.timeTypeInfo);
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
    if (!random.IsOneOf(3))
        SetCriteria(random);
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
    if (wish.dates != 0 && random.IsOneOf(wish.dates))
        fld.type = random.IsOneOf(3) ? SCDeclareConstant::DATATYPE_TIME : SCDeclareConstant::DATATYPE_DATE;
    if (random.IsOneOf(2)) // else the commonest
        fld.dateTypeInfo.form = static_cast<SCDeclareConstant::EDateDataForm>(
            random.GetBelow(SCDeclareConstant::DATEFORM_LAST + 1));
    if (random.IsOneOf(2))
        fld.dateTypeInfo.delimiter = static_cast<SCDeclareConstant::EDateDelimiter>(
            random.GetBelow(SCDeclareConstant::DATEDELIM_LAST + 1));
    if (random.IsOneOf(2))
        fld.timeTypeInfo.form = static_cast<SCDeclareConstant::ETimeDataForm>(
            random.GetBelow(SCDeclareConstant::TIMEFORM_LAST + 1));
    const sys_days turn = ChooseTurn(random);

    const bool allDifferent = random.IsOneOf(6);
    DWORD valueCount = 1 + random.GetBelow(random.IsOneOf(2) ? 4 : 30); // 1: one value only
    const DWORD emptyOneOf = random.IsOneOf(3) ? 1 + random.GetBelow(8) : 0;
    std::vector<std::string> values;
    for (DWORD number = 0; number < valueCount; ++number)
        values.push_back(MakeValue(random, fld, turn, random.GetBelow(30)));
    for (DWORD rec = 0; rec < texts.recCount; ++rec) {
        if (emptyOneOf != 0 && random.IsOneOf(emptyOneOf))
            fld.texts.emplace_back();
        else if (allDifferent && fld.type == SCDeclareConstant::DATATYPE_DATE)
            fld.texts.push_back(WriteDate(random, turn - days{static_cast<int>(rec)}, fld.dateTypeInfo));
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
    info.timeTypeInfo = fld.timeTypeInfo;
    CFldValueList values;
    bool good = true;
    for (const std::string& text : fld.texts)
        good = values.Append(text) && good;
    if (!good || !source.AddFld(info, std::move(values), fld.fldID))
        throw std::logic_error("a field of the random table was refused");
    fldsAsMade.push_back(fld);
    fldsAsMade.back().texts.clear();
}

void CModelTable::SetCriteria(CRandom& random)
{
    SModelCriteria& criteria = texts.criteria;
    if (random.IsOneOf(2))
        criteria.startMonth = 1 + static_cast<int>(random.GetBelow(12));
    if (random.IsOneOf(2))
        criteria.cutOffDate = random.IsOneOf(3) ? 31 : 1 + static_cast<int>(random.GetBelow(31));
    if (random.IsOneOf(2))
        criteria.firstDayOfWeek = static_cast<int>(random.GetBelow(7));
    TakeCriteriaIntoSource();
}

void CModelTable::TakeCriteriaIntoSource()
{
    const SModelCriteria& criteria = texts.criteria;
    if (!source.SetStartMonth(static_cast<DWORD>(criteria.startMonth)) ||
        !source.SetCutOffDate(static_cast<DWORD>(criteria.cutOffDate)) ||
        !source.SetDaysOfTheWeek(static_cast<NSKZCore::VCDate::EDaysOfTheWeek>(criteria.firstDayOfWeek)))
        throw std::logic_error("criteria of the random table were refused");
}

const SModelCriteria& CModelTable::ChangeCriteria(CRandom& random)
{
    SetCriteria(random);
    return texts.criteria;
}

const SModelFld& CModelTable::ChangeDataForm(CRandom& random, std::size_t position)
{
    using FormList = std::vector<SCDeclareConstant::EDateDataForm>;
    static const FormList ALIKE[] = {{SCDeclareConstant::DATEFORM_MDY, SCDeclareConstant::DATEFORM_DMY},
                                     {SCDeclareConstant::DATEFORM_YMD_2, SCDeclareConstant::DATEFORM_MDY_2,
                                      SCDeclareConstant::DATEFORM_DMY_2, SCDeclareConstant::DATEFORM_YMD},
                                     {SCDeclareConstant::DATEFORM_MD, SCDeclareConstant::DATEFORM_YM_2}};
    SModelFld& fld = texts.flds.at(position);
    fld.dateTypeInfo = fldsAsMade.at(position).dateTypeInfo;
    fld.timeTypeInfo = fldsAsMade.at(position).timeTypeInfo;
    for (const FormList& alike : ALIKE) {
        if (random.IsOneOf(2) && std::find(alike.begin(), alike.end(), fld.dateTypeInfo.form) != alike.end())
            fld.dateTypeInfo.form = alike[random.GetBelow(static_cast<DWORD>(alike.size()))];
    }
    if (random.IsOneOf(4)) {
        fld.dateTypeInfo.form = static_cast<SCDeclareConstant::EDateDataForm>(
            random.GetBelow(SCDeclareConstant::DATEFORM_LAST + 1));
        fld.timeTypeInfo.form = static_cast<SCDeclareConstant::ETimeDataForm>(
            random.GetBelow(SCDeclareConstant::TIMEFORM_LAST + 1));
    }
    TakeFormsIntoSource(fld);
    return fld;
}

// ---- Changes

std::string CModelTable::ChooseValue(CRandom& random, const SModelFld& fld) const
{
    if (!fld.texts.empty() && !random.IsOneOf(4))
        return fld.texts[random.GetBelow(static_cast<DWORD>(fld.texts.size()))];
    return random.IsOneOf(6) ? "" : MakeValue(random, fld, ChooseTurn(random), random.GetBelow(40));
}

void CModelTable::InsertRecs(CRandom& random, DWORD position, DWORD count)
{
    std::vector<std::string> values;
    for (DWORD rec = 0; rec < count; ++rec) {
        for (const SModelFld& fld : texts.flds)
            values.push_back(ChooseValue(random, fld));
    }
    for (std::size_t i = 0; i < texts.flds.size(); ++i) {
        std::vector<std::string>& ofFld = texts.flds[i].texts;
        for (DWORD rec = 0; rec < count; ++rec)
            ofFld.insert(ofFld.begin() + static_cast<std::ptrdiff_t>(position + rec),
                         values[rec * texts.flds.size() + i]);
    }
    texts.recCount += count;
    const std::vector<std::string_view> cells(values.begin(), values.end());
    if (!source.InsertRecs(position, cells))
        throw std::logic_error("records of the random table were refused");
}

void CModelTable::DeleteRecs(DWORD position, DWORD count)
{
    for (SModelFld& fld : texts.flds) {
        const auto first = fld.texts.begin() + static_cast<std::ptrdiff_t>(position);
        fld.texts.erase(first, first + static_cast<std::ptrdiff_t>(count));
    }
    texts.recCount -= count;
    if (!source.DeleteRecs(position, count))
        throw std::logic_error("records of the random table were not deleted");
}

DWORD CModelTable::InsertFld(CRandom& random, const STableWish& wish)
{
    AddFld(random, wish);
    return texts.flds.back().fldID;
}

void CModelTable::DeleteFld(std::size_t position)
{
    if (!source.DeleteFld(texts.flds.at(position).fldID))
        throw std::logic_error("a field of the random table was not deleted");
    texts.flds.erase(texts.flds.begin() + static_cast<std::ptrdiff_t>(position));
    fldsAsMade.erase(fldsAsMade.begin() + static_cast<std::ptrdiff_t>(position));
}

void CModelTable::PutTextsIntoSource(const SModelFld& fld)
{
    CFldValueList values;
    bool good = true;
    for (const std::string& text : fld.texts)
        good = values.Append(text) && good;
    if (!good || !source.SetFldData(fld.fldID, std::move(values)))
        throw std::logic_error("data of the random table was refused");
}

void CModelTable::ChangeData(CRandom& random, std::size_t position)
{
    SModelFld& fld = texts.flds.at(position);
    const DWORD oneOf = 1 + random.GetBelow(4);
    std::vector<std::string> changed(fld.texts);
    for (std::string& text : changed) {
        if (random.IsOneOf(oneOf))
            text = ChooseValue(random, fld);
    }
    fld.texts = std::move(changed);
    PutTextsIntoSource(fld);
}

void CModelTable::ChangeType(CRandom& random, std::size_t position)
{
    SModelFld& fld = texts.flds.at(position);
    fld.type = static_cast<SCDeclareConstant::EDataType>(random.GetBelow(4));
    TakeFormsIntoSource(fld);
}

void CModelTable::PutBack(const CModelTable& former)
{
    const SModelTable present(texts);
    *this = former;
    texts.criteria = present.criteria;
    TakeCriteriaIntoSource();
    for (SModelFld& fld : texts.flds) {
        const auto found = std::find_if(present.flds.begin(), present.flds.end(),
                                        [&](const SModelFld& other) { return other.fldID == fld.fldID; });
        if (found == present.flds.end())
            continue;
        fld.dateTypeInfo = found->dateTypeInfo;
        fld.timeTypeInfo = found->timeTypeInfo;
        TakeFormsIntoSource(fld);
    }
}

void CModelTable::TakeFormsIntoSource(const SModelFld& fld)
{
    CSourceDataMngr::SFldInfo info;
    if (!source.GetFldInfo(fld.fldID, info))
        throw std::logic_error("a field of the random table is missing");
    info.spec.dataType = fld.type;
    info.dateTypeInfo = fld.dateTypeInfo;
    info.timeTypeInfo = fld.timeTypeInfo;
    if (!source.SetFldInfo(fld.fldID, info))
        throw std::logic_error("a form of the random table was refused");
}

std::string CModelTable::Describe() const
{
    std::ostringstream out;
    out << texts.recCount << " records, empty value \"" << texts.empValName << "\"\n";
    out << "start month " << texts.criteria.startMonth << ", cut-off day " << texts.criteria.cutOffDate
        << ", weeks from " << texts.criteria.firstDayOfWeek << " in the end\n";
    for (const SModelFld& fld : texts.flds) {
        out << "field " << fld.fldID << " type " << fld.type;
        if (fld.type == SCDeclareConstant::DATATYPE_DATE)
            out << " form " << fld.dateTypeInfo.form << " delimiter " << fld.dateTypeInfo.delimiter;
        if (fld.type == SCDeclareConstant::DATATYPE_TIME)
            out << " form " << fld.timeTypeInfo.form;
        out << (fld.isItem ? ":" : " (no item):");
        for (const std::string& text : fld.texts)
            out << " \"" << text << '"';
        out << '\n';
    }
    return out.str();
}

} // namespace NSKZ::Test
