#include "SCTypedDate.h"

#include "CFiscalYear.h"
#include "CHalfTerm.h"
#include "CQuarterTerm.h"
#include "CWeekNum.h"
#include "SCNameWord.h"

namespace NSKZ::Host {

namespace {

using NSKZCore::CFiscalYear;
using NSKZCore::CHalfTerm;
using NSKZCore::CQuarterTerm;
using NSKZCore::CWeekNum;
using NSKZCore::SCDeclareConstant;
using NSKZCore::VCDate;

// A number of at most four figures; false for anything else.
bool ReadFigures(std::string_view text, DWORD& number)
{
    return text.size() <= 4 && SCNameWord::ReadNumber(text, number);
}

std::unique_ptr<VCDate> ReadPart(std::string_view text, SCDeclareConstant::EDateDataForm form)
{
    SCDeclareConstant::SDateTypeInfo info;
    info.form = form;
    info.delimiter = SCDeclareConstant::DATEDELIM_HYPHEN;
    if (text.size() > 0xFFFF)
        return nullptr;
    return VCDate::CreateDateObject(text.data(), static_cast<unsigned short>(text.size()), info);
}

// A term of a fiscal year: what stands behind "FY2024-".
std::unique_ptr<VCDate> ReadTerm(DWORD year, char kind, DWORD number)
{
    if (kind == 'H') {
        auto half = std::make_unique<CHalfTerm>();
        if (half->SetFiscalYearOfTheGrgCalendar(year) && half->SetHalfTerm(number))
            return half;
    } else if (kind == 'Q') {
        auto quarter = std::make_unique<CQuarterTerm>();
        if (quarter->SetFiscalYearOfTheGrgCalendar(year) && quarter->SetQuarterTerm(number))
            return quarter;
    } else if (kind == 'W') {
        auto week = std::make_unique<CWeekNum>(CWeekNum::WEEKNUMTYPE_FISCALYEAR);
        if (week->SetFiscalYearOfTheGrgCalendar(year) && week->SetWeekNum(number))
            return week;
    }
    return nullptr;
}

} // namespace

std::unique_ptr<VCDate> SCTypedDate::Read(std::string_view word)
{
    const bool isFiscal = word.starts_with("FY");
    const std::string_view rest = isFiscal ? word.substr(2) : word;
    const std::size_t hyphen = rest.find('-');
    DWORD year = 0;
    DWORD number = 0;
    const bool hasTerm = hyphen != std::string_view::npos && hyphen + 2 <= rest.size() &&
                         ReadFigures(rest.substr(hyphen + 2), number);
    const char kind = hasTerm ? rest[hyphen + 1] : '\0';
    if (isFiscal) {
        if (!ReadFigures(rest.substr(0, hyphen), year))
            return nullptr;
        if (hyphen != std::string_view::npos)
            return ReadTerm(year, kind, number);
        auto fiscalYear = std::make_unique<CFiscalYear>();
        return fiscalYear->SetFiscalYearOfTheGrgCalendar(year) ? std::move(fiscalYear) : nullptr;
    }
    if (kind == 'W') {
        auto week = std::make_unique<CWeekNum>(CWeekNum::WEEKNUMTYPE_YEAR);
        const bool isWeek = ReadFigures(rest.substr(0, hyphen), year) &&
                            week->SetYearOfTheGrgCalendar(year) && week->SetWeekNum(number);
        return isWeek ? std::move(week) : nullptr;
    }
    for (const auto form : {SCDeclareConstant::DATEFORM_YMD, SCDeclareConstant::DATEFORM_YM,
                            SCDeclareConstant::DATEFORM_Y, SCDeclareConstant::DATEFORM_JYMD,
                            SCDeclareConstant::DATEFORM_JYM, SCDeclareConstant::DATEFORM_JY}) {
        if (std::unique_ptr<VCDate> date = ReadPart(word, form))
            return date;
    }
    return nullptr;
}

std::string SCTypedDate::Write(const VCDate& date)
{
    char text[VCDate::MAX_DATESTRING_SIZE];
    return date.GetDateString(text, sizeof text) ? text : "";
}

} // namespace NSKZ::Host
