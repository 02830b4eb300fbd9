#include "VCDate.h"

#include "CDate.h"
#include "CDateSpec.h"
#include "CDaysOfTheWeek.h"
#include "CFiscalMonth.h"
#include "CFiscalYear.h"
#include "CFixedText.h"
#include "CHalfTerm.h"
#include "CQuarterTerm.h"
#include "CTimeBasedOnNoon.h"
#include "CWeekNum.h"
#include "SCCalendar.h"
#include "SCDateText.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace NSKZ::NSKZCore {

namespace {

constexpr long long SECONDS_OF_DAY = 24 * 60 * 60;
constexpr long EPOCH_DAY = 719163; // the number of 1970-01-01

// An element of two dates.
struct SElementPair
{
    enum EKind
    {
        NUMBER,
        JPNYEAR,
        DAYOFWEEK,
    };

    EKind kind = NUMBER;
    bool givenByLeft = false;
    DWORD left = 0;
    DWORD right = 0;
    VCDate::EEra leftEra = VCDate::ERA_UNSETTING;
    VCDate::EEra rightEra = VCDate::ERA_UNSETTING;
};

// The elements that the right one of two dates holds, from the greatest to the smallest, with what the left
// one gives for each.
class CElementPairs
{
public:
    CElementPairs(const VCDate& leftDate, const VCDate& rightDate, DWORD startMonthOfYear,
                  DWORD cutOffDateOfMonth, VCDate::EDaysOfTheWeek firstDayOfWeek) noexcept
        : left(leftDate), right(rightDate), startMonth(startMonthOfYear), cutOffDate(cutOffDateOfMonth),
          daysOfWeek(firstDayOfWeek)
    {
        switch (right.GetType()) {
        case VCDate::DATEOBJTYPE_DATE:
            AddDate();
            break;
        case VCDate::DATEOBJTYPE_FISCALYEAR:
            AddFiscalYear(static_cast<const CFiscalYear&>(right).GetEra());
            break;
        case VCDate::DATEOBJTYPE_FISCALMONTH:
            AddFiscalMonth(static_cast<const CFiscalMonth&>(right).GetEra());
            break;
        case VCDate::DATEOBJTYPE_HALFTERM:
            AddFiscalYear(static_cast<const CHalfTerm&>(right).GetEra());
            AddNumber([this](const VCDate& date, DWORD& value) {
                return date.GetHalfTerm(startMonth, cutOffDate, value);
            });
            break;
        case VCDate::DATEOBJTYPE_QUARTERTERM:
            AddFiscalYear(static_cast<const CQuarterTerm&>(right).GetEra());
            AddNumber([this](const VCDate& date, DWORD& value) {
                return date.GetQuarterTerm(startMonth, cutOffDate, value);
            });
            break;
        case VCDate::DATEOBJTYPE_WEEKNUM:
            AddWeekNum(static_cast<const CWeekNum&>(right));
            break;
        case VCDate::DATEOBJTYPE_DAYSOFWEEK:
            AddDaysOfTheWeek(static_cast<const CDaysOfTheWeek&>(right));
            break;
        case VCDate::DATEOBJTYPE_TIMEBASEDONNOON:
            AddNumber([](const VCDate& date, DWORD& value) {
                VCDate::ETimeBasedOnNoon time = VCDate::TIMEBASEDONNOON_UNSETTING;
                if (!date.GetTimeBasedOnNoon(time))
                    return false;
                value = time;
                return true;
            });
            break;
        }
    }

    const SElementPair* begin() const noexcept { return pairs.data(); }
    const SElementPair* end() const noexcept { return pairs.data() + count; }

private:
    void Add(const SElementPair& pair) noexcept { pairs[count++] = pair; }

    // `give` gets an element of a date. The right one counts only where it gives it.
    template <typename TGive>
    void AddNumber(TGive give) noexcept
    {
        SElementPair pair;
        if (!give(right, pair.right))
            return;
        pair.givenByLeft = give(left, pair.left);
        Add(pair);
    }

    template <typename TGive>
    void AddJpnYear(TGive give) noexcept
    {
        SElementPair pair;
        pair.kind = SElementPair::JPNYEAR;
        if (!give(right, pair.rightEra, pair.right))
            return;
        pair.givenByLeft = give(left, pair.leftEra, pair.left);
        Add(pair);
    }

    void AddYear(VCDate::EEra era) noexcept
    {
        if (era == VCDate::ERA_GREGORIAN)
            AddNumber([](const VCDate& date, DWORD& value) { return date.GetYearOfTheGrgCalendar(value); });
        else if (era != VCDate::ERA_UNSETTING)
            AddJpnYear([](const VCDate& date, VCDate::EEra& eraOfDate, DWORD& value) {
                return date.GetYearOfTheJpnCalendar(eraOfDate, value);
            });
    }

    void AddMonth() noexcept
    {
        AddNumber([](const VCDate& date, DWORD& value) { return date.GetMonth(value); });
    }

    void AddFiscalYear(VCDate::EEra era) noexcept
    {
        if (era == VCDate::ERA_GREGORIAN)
            AddNumber([this](const VCDate& date, DWORD& value) {
                return date.GetFiscalYearOfTheGrgCalendar(startMonth, cutOffDate, value);
            });
        else if (era != VCDate::ERA_UNSETTING)
            AddJpnYear([this](const VCDate& date, VCDate::EEra& eraOfDate, DWORD& value) {
                return date.GetFiscalYearOfTheJpnCalendar(startMonth, cutOffDate, eraOfDate, value);
            });
    }

    // A fiscal month with its year; without one it goes by its place in the fiscal year.
    void AddFiscalMonth(VCDate::EEra era) noexcept
    {
        if (era == VCDate::ERA_GREGORIAN)
            AddNumber([this](const VCDate& date, DWORD& value) {
                DWORD month = 0;
                return date.GetFiscalMonth(cutOffDate, value, month);
            });
        else if (era != VCDate::ERA_UNSETTING)
            AddJpnYear([this](const VCDate& date, VCDate::EEra& eraOfDate, DWORD& value) {
                DWORD month = 0;
                return date.GetFiscalMonth(cutOffDate, eraOfDate, value, month);
            });
        const bool hasYear = era != VCDate::ERA_UNSETTING;
        AddNumber([this, hasYear](const VCDate& date, DWORD& value) {
            DWORD month = 0;
            if (!date.GetFiscalMonth(cutOffDate, month))
                return false;
            value = hasYear ? month : SCCalendar::GetPlaceInFiscalYear(month, startMonth);
            return true;
        });
    }

    void AddDate() noexcept
    {
        AddYear(static_cast<const CDate&>(right).GetEra());
        AddMonth();
        AddNumber([](const VCDate& date, DWORD& value) { return date.GetDay(value); });
        AddNumber([](const VCDate& date, DWORD& value) { return date.GetHour(value); });
        AddNumber([](const VCDate& date, DWORD& value) { return date.GetMinute(value); });
        AddNumber([](const VCDate& date, DWORD& value) { return date.GetSecond(value); });
    }

    void AddWeekNum(const CWeekNum& week) noexcept
    {
        switch (week.GetWeekNumType()) {
        case CWeekNum::WEEKNUMTYPE_YEAR:
            AddYear(week.GetEra());
            AddNumber([this](const VCDate& date, DWORD& value) {
                return date.GetWeekOfTheYear(daysOfWeek, value);
            });
            break;
        case CWeekNum::WEEKNUMTYPE_MONTH:
            AddYear(week.GetEra());
            AddMonth();
            AddWeekOfTheMonth();
            break;
        case CWeekNum::WEEKNUMTYPE_FISCALYEAR:
            AddFiscalYear(week.GetEra());
            AddNumber([this](const VCDate& date, DWORD& value) {
                return date.GetWeekOfTheFiscalYear(startMonth, cutOffDate, daysOfWeek, value);
            });
            break;
        case CWeekNum::WEEKNUMTYPE_FISCALMONTH:
            AddFiscalMonth(week.GetEra());
            AddWeekOfTheFiscalMonth();
            break;
        }
    }

    void AddDaysOfTheWeek(const CDaysOfTheWeek& day) noexcept
    {
        if (day.GetDaysOfTheWeekType() == CDaysOfTheWeek::DAYSOFWEEKTYPE_MONTH) {
            AddMonth();
            AddWeekOfTheMonth();
        } else {
            AddFiscalMonth(VCDate::ERA_UNSETTING);
            AddWeekOfTheFiscalMonth();
        }
        AddNumber([](const VCDate& date, DWORD& value) {
            VCDate::EDaysOfTheWeek dayOfDate = VCDate::DAYSOFWEEK_UNSETTING;
            if (!date.GetDaysOfTheWeek(dayOfDate))
                return false;
            value = dayOfDate;
            return true;
        });
        if (count != 0 && day.HasDaysOfTheWeek())
            pairs[count - 1].kind = SElementPair::DAYOFWEEK;
    }

    void AddWeekOfTheMonth() noexcept
    {
        AddNumber(
            [this](const VCDate& date, DWORD& value) { return date.GetWeekOfTheMonth(daysOfWeek, value); });
    }

    void AddWeekOfTheFiscalMonth() noexcept
    {
        AddNumber([this](const VCDate& date, DWORD& value) {
            return date.GetWeekOfTheFiscalMonth(cutOffDate, daysOfWeek, value);
        });
    }

    static constexpr std::size_t MAX_COUNT = 6; // those of a date with a time

    const VCDate& left;
    const VCDate& right;
    DWORD startMonth;
    DWORD cutOffDate;
    VCDate::EDaysOfTheWeek daysOfWeek;
    std::array<SElementPair, MAX_COUNT> pairs{};
    std::size_t count = 0;
};

// The same relation by the numbers of the two, which are never those of equal dates here. What has no number
// is just not equal.
bool CompareNumbers(const VCDate& left, const VCDate& right, SCKZCoreCom::ECmpOperator cmpOperator,
                    DWORD startMonth, DWORD cutOffDate, VCDate::EDaysOfTheWeek daysOfWeek) noexcept
{
    unsigned long long leftNumber = 0;
    unsigned long long rightNumber = 0;
    if (!left.GetDateNumeric(startMonth, cutOffDate, daysOfWeek, leftNumber) ||
        !right.GetDateNumeric(startMonth, cutOffDate, daysOfWeek, rightNumber) || leftNumber == rightNumber)
        return cmpOperator == SCKZCoreCom::CMPOPERATOR_NOTEQUAL;
    const bool isBefore = leftNumber < rightNumber;
    return VCDate::CompareDate(DWORD{!isBefore}, DWORD{isBefore}, cmpOperator) == VCDate::CMPRESULT_TRUE;
}

// The parts of a moment, as the codes of its format.
struct SMoment
{
    static constexpr DWORD NONE = 4294967295;

    struct SPart
    {
        char code;
        std::size_t digits;
        DWORD value;
    };
    std::array<SPart, 6> parts = {
        {{'Y', 4, NONE}, {'m', 2, NONE}, {'d', 2, NONE}, {'H', 2, NONE}, {'M', 2, NONE}, {'S', 2, NONE}}};

    SPart* Find(char code) noexcept
    {
        for (SPart& part : parts) {
            if (part.code == code)
                return &part;
        }
        return nullptr;
    }
};

// Takes a number of so many digits off the front of a text.
bool TakeNumber(std::string_view& text, std::size_t digits, DWORD& number) noexcept
{
    DWORD taken = 0;
    if (text.size() < digits)
        return false;
    for (const char c : text.substr(0, digits)) {
        if (c < '0' || c > '9')
            return false;
        taken = taken * 10 + static_cast<DWORD>(c - '0');
    }
    text.remove_prefix(digits);
    number = taken;
    return true;
}

} // namespace

VCDate::~VCDate() = default;

bool VCDate::GetYearOfTheGrgCalendar(DWORD&) const noexcept
{
    return false;
}

bool VCDate::GetYearOfTheJpnCalendar(EEra&, DWORD&) const noexcept
{
    return false;
}

bool VCDate::GetMonth(DWORD&) const noexcept
{
    return false;
}

bool VCDate::GetDay(DWORD&) const noexcept
{
    return false;
}

bool VCDate::GetHour(DWORD&) const noexcept
{
    return false;
}

bool VCDate::GetMinute(DWORD&) const noexcept
{
    return false;
}

bool VCDate::GetSecond(DWORD&) const noexcept
{
    return false;
}

bool VCDate::GetFiscalYearOfTheGrgCalendar(DWORD, DWORD, DWORD&) const noexcept
{
    return false;
}

bool VCDate::GetFiscalYearOfTheJpnCalendar(DWORD, DWORD, EEra&, DWORD&) const noexcept
{
    return false;
}

bool VCDate::GetFiscalMonth(DWORD, EEra&, DWORD&, DWORD&) const noexcept
{
    return false;
}

bool VCDate::GetFiscalMonth(DWORD, DWORD&, DWORD&) const noexcept
{
    return false;
}

bool VCDate::GetFiscalMonth(DWORD, DWORD&) const noexcept
{
    return false;
}

bool VCDate::GetHalfTerm(DWORD, DWORD, DWORD&) const noexcept
{
    return false;
}

bool VCDate::GetQuarterTerm(DWORD, DWORD, DWORD&) const noexcept
{
    return false;
}

bool VCDate::GetWeekOfTheYear(EDaysOfTheWeek, DWORD&) const noexcept
{
    return false;
}

bool VCDate::GetWeekOfTheMonth(EDaysOfTheWeek, DWORD&) const noexcept
{
    return false;
}

bool VCDate::GetWeekOfTheFiscalYear(DWORD, DWORD, EDaysOfTheWeek, DWORD&) const noexcept
{
    return false;
}

bool VCDate::GetWeekOfTheFiscalMonth(DWORD, EDaysOfTheWeek, DWORD&) const noexcept
{
    return false;
}

bool VCDate::GetDaysOfTheWeek(EDaysOfTheWeek&) const noexcept
{
    return false;
}

bool VCDate::GetTimeBasedOnNoon(ETimeBasedOnNoon&) const noexcept
{
    return false;
}

bool VCDate::IsAppropriateYear(EEra era, DWORD year) noexcept
{
    // The last year of each era.
    switch (era) {
    case ERA_GREGORIAN:
        return year >= GRGYEAR_OF_MEIJI_FIRSTYEAR - 1 + MEIJIYEAR_OF_GRGCALENDAR_INTRO &&
               year <= MAX_GRGYEAR_VALUE;
    case ERA_MEIJI:
        return year >= 1 && year <= 45;
    case ERA_TAISHO:
        return year >= 1 && year <= 15;
    case ERA_SHOWA:
        return year >= 1 && year <= 64;
    case ERA_HEISEI:
        return year >= 1 && year <= 31;
    case ERA_REIWA:
        return year >= 1 && year <= MAX_GRGYEAR_VALUE - 2018; // Reiwa 1 was 2019
    case ERA_UNSETTING:
        break;
    }
    return false;
}

std::unique_ptr<VCDate> VCDate::CreateDateObject(const char* text, unsigned short len,
                                                 const SCDeclareConstant::SDateTypeInfo& typeInfo)
{
    CDate date;
    if (text == nullptr ||
        !SCDateText::ReadDate(std::string_view(text, len), typeInfo.form, typeInfo.delimiter, date))
        return nullptr;
    return std::make_unique<CDate>(date);
}

std::unique_ptr<VCDate> VCDate::CreateDateObject(const CXMLReader& reader)
{
    EDateObjType type = DATEOBJTYPE_DATE;
    if (CDateSpec::ReadType(reader, type) != CXMLReader::READXML_OK)
        return nullptr;
    std::unique_ptr<VCDate> date;
    switch (type) {
    case DATEOBJTYPE_DATE:
        date = std::make_unique<CDate>();
        break;
    case DATEOBJTYPE_FISCALYEAR:
        date = std::make_unique<CFiscalYear>();
        break;
    case DATEOBJTYPE_FISCALMONTH:
        date = std::make_unique<CFiscalMonth>();
        break;
    case DATEOBJTYPE_HALFTERM:
        date = std::make_unique<CHalfTerm>();
        break;
    case DATEOBJTYPE_QUARTERTERM:
        date = std::make_unique<CQuarterTerm>();
        break;
    case DATEOBJTYPE_WEEKNUM:
        date = std::make_unique<CWeekNum>(CWeekNum::WEEKNUMTYPE_YEAR);
        break;
    case DATEOBJTYPE_DAYSOFWEEK:
        date = std::make_unique<CDaysOfTheWeek>();
        break;
    case DATEOBJTYPE_TIMEBASEDONNOON:
        date = std::make_unique<CTimeBasedOnNoon>();
        break;
    }
    if (date->ReadSpecByXML(reader) != CXMLReader::READXML_OK)
        return nullptr;
    return date;
}

std::unique_ptr<VCDate> VCDate::CreateTimeObject(const char* text, unsigned short len,
                                                 const SCDeclareConstant::STimeTypeInfo& typeInfo)
{
    CDate time;
    if (text == nullptr || !SCDateText::ReadTime(std::string_view(text, len), typeInfo.form, time))
        return nullptr;
    return std::make_unique<CDate>(time);
}

VCDate::ECmpResult VCDate::CompareDate(DWORD left, DWORD right,
                                       SCKZCoreCom::ECmpOperator cmpOperator) noexcept
{
    const auto decide = [&](bool outcome) {
        if (left == right)
            return CMPRESULT_UNDECIDED;
        return outcome ? CMPRESULT_TRUE : CMPRESULT_FALSE;
    };
    switch (cmpOperator) {
    case SCKZCoreCom::CMPOPERATOR_EQUAL:
        return decide(false);
    case SCKZCoreCom::CMPOPERATOR_NOTEQUAL:
        return decide(true);
    case SCKZCoreCom::CMPOPERATOR_LESS:
    case SCKZCoreCom::CMPOPERATOR_LESSEQUAL:
        return decide(left < right);
    case SCKZCoreCom::CMPOPERATOR_GREATER:
    case SCKZCoreCom::CMPOPERATOR_GREATEREQUAL:
        return decide(left > right);
    }
    return CMPRESULT_FALSE;
}

VCDate::ECmpResult VCDate::CompareDate(EEra leftEra, DWORD leftYear, EEra rightEra, DWORD rightYear,
                                       SCKZCoreCom::ECmpOperator cmpOperator) noexcept
{
    const ECmpResult ofEra =
        CompareDate(static_cast<DWORD>(leftEra), static_cast<DWORD>(rightEra), cmpOperator);
    return ofEra == CMPRESULT_UNDECIDED ? CompareDate(leftYear, rightYear, cmpOperator) : ofEra;
}

VCDate::ECmpResult VCDate::CompareDate(EDaysOfTheWeek left, EDaysOfTheWeek right, EDaysOfTheWeek daysOfWeek,
                                       SCKZCoreCom::ECmpOperator cmpOperator) noexcept
{
    return CompareDate(SCCalendar::GetPlaceInWeek(left, daysOfWeek),
                       SCCalendar::GetPlaceInWeek(right, daysOfWeek), cmpOperator);
}

bool VCDate::IsTrueOfEqual(SCKZCoreCom::ECmpOperator cmpOperator) noexcept
{
    return cmpOperator == SCKZCoreCom::CMPOPERATOR_EQUAL ||
           cmpOperator == SCKZCoreCom::CMPOPERATOR_LESSEQUAL ||
           cmpOperator == SCKZCoreCom::CMPOPERATOR_GREATEREQUAL;
}

bool VCDate::CompareDate(const VCDate& left, const VCDate& right, SCKZCoreCom::ECmpOperator cmpOperator,
                         DWORD startMonth, DWORD cutOffDate, EDaysOfTheWeek daysOfWeek) noexcept
{
    for (const SElementPair& pair : CElementPairs(left, right, startMonth, cutOffDate, daysOfWeek)) {
        if (!pair.givenByLeft)
            return CompareNumbers(left, right, cmpOperator, startMonth, cutOffDate, daysOfWeek);
        ECmpResult result = CMPRESULT_UNDECIDED;
        switch (pair.kind) {
        case SElementPair::NUMBER:
            result = CompareDate(pair.left, pair.right, cmpOperator);
            break;
        case SElementPair::JPNYEAR:
            result = CompareDate(pair.leftEra, pair.left, pair.rightEra, pair.right, cmpOperator);
            break;
        case SElementPair::DAYOFWEEK:
            result = CompareDate(static_cast<EDaysOfTheWeek>(pair.left),
                                 static_cast<EDaysOfTheWeek>(pair.right), daysOfWeek, cmpOperator);
            break;
        }
        if (result != CMPRESULT_UNDECIDED)
            return result == CMPRESULT_TRUE;
    }
    return IsTrueOfEqual(cmpOperator);
}

bool VCDate::CheckDateInclusiveRelation(const VCDate& date, const VCDate& part) noexcept
{
    const CElementPairs pairs(date, part, 1, MAXDAY_OF_MONTH, DAYSOFWEEK_SUNDAY);
    for (const SElementPair& pair : pairs) {
        if (!pair.givenByLeft)
            return false;
    }
    return pairs.begin() != pairs.end();
}

bool VCDate::ConvertDateIntoStringOfGMT(long long time, const char* format, char* buffer, DWORD size) noexcept
{
    const long long first = (SCCalendar::GetDayNum(MIN_GRGYEAR_VALUE, 1, 1) - EPOCH_DAY) * SECONDS_OF_DAY;
    const long long behind =
        (SCCalendar::GetDayNum(MAX_GRGYEAR_VALUE + 1, 1, 1) - EPOCH_DAY) * SECONDS_OF_DAY;
    if (time < first || time >= behind)
        return false;
    const long long sinceFirst = time - first;
    long year = 0;
    SMoment moment;
    SCCalendar::GetDay(static_cast<long>(sinceFirst / SECONDS_OF_DAY) + 1, year, moment.Find('m')->value,
                       moment.Find('d')->value);
    const auto second = static_cast<DWORD>(sinceFirst % SECONDS_OF_DAY);
    moment.Find('Y')->value = static_cast<DWORD>(year);
    moment.Find('H')->value = second / 3600;
    moment.Find('M')->value = second / 60 % 60;
    moment.Find('S')->value = second % 60;

    CFixedText<256> text;
    for (const char* c = format; *c != '\0'; ++c) {
        if (*c != '%') {
            text.Append(std::string_view(c, 1));
            continue;
        }
        ++c;
        if (*c == '%') {
            text.Append("%");
        } else if (const SMoment::SPart* const part = moment.Find(*c)) {
            text.AppendNumber(part->value, part->digits);
        } else {
            return false;
        }
    }
    return text.CopyTo(buffer, size);
}

bool VCDate::ConvertStringOfGMTIntoDate(const char* text, DWORD len, const char* format,
                                        long long& time) noexcept
{
    if (text == nullptr)
        return false;
    std::string_view rest(text, len);
    SMoment moment;
    for (const char* c = format; *c != '\0'; ++c) {
        if (*c == '%' && *++c != '%') {
            SMoment::SPart* const part = moment.Find(*c);
            if (part == nullptr || part->value != SMoment::NONE ||
                !TakeNumber(rest, part->digits, part->value))
                return false;
            continue;
        }
        if (rest.empty() || rest.front() != *c)
            return false;
        rest.remove_prefix(1);
    }
    const auto get = [&moment](char code) { return moment.Find(code)->value; };
    if (!rest.empty() || !SCCalendar::IsRealDay(get('Y'), get('m'), get('d')) || get('H') > 23 ||
        get('M') > MAX_MINUTE_VALUE || get('S') > MAX_SECOND_VALUE)
        return false;
    const long days = SCCalendar::GetDayNum(static_cast<long>(get('Y')), get('m'), get('d')) - EPOCH_DAY;
    time = days * SECONDS_OF_DAY + get('H') * 3600LL + get('M') * 60LL + get('S');
    return true;
}

} // namespace NSKZ::NSKZCore
