#ifndef VCDATE_H
#define VCDATE_H

#include "CXMLReader.h"
#include "CXMLWriter.h"
#include "SCDeclareConstant.h"
#include "SCKZCoreCom.h"

#include <memory>

namespace NSKZ::NSKZCore {

// A date, a time of the day, or a stretch of dates (a fiscal year, a quarter, a week, ...) of which any part
// may be missing: "July 2024" holds no day, "15 July" no year.
//
// Each getter gives one part, and false, with its outputs untouched, where the object does not hold it and it
// does not follow from what it holds. Parts that depend on the calendar criteria take those that they need:
//   - `startMonth`, 1 to 12: the month whose fiscal month begins the fiscal year;
//   - `cutOffDate`, 1 to 31: the day that ends a fiscal month;
//   - `daysOfWeek`: the day that begins a week.
// A criterion outside its range gives false. What each of them makes of a day (fiscal years, fiscal months,
// halves, quarters, weeks, eras) is defined in SCCalendar.
//
// An object has 24 bytes at most. No getter allocates or throws; copying and assigning do not either.
class KZCCOMMON_API VCDate
{
public:
    // What a part has that is not held. A setter that is given it takes the part away.
    static constexpr DWORD DATE_UNSETTING = 4294967295;

    static constexpr DWORD MONTHCNT_OF_YEAR = 12;
    static constexpr DWORD MAXDAY_OF_MONTH = 31;
    static constexpr DWORD MIN_GRGYEAR_VALUE = 1;
    static constexpr DWORD MAX_GRGYEAR_VALUE = 9999;
    // 1868 was Meiji 1, and Meiji 6 (1873) is the first year in which Japan used the Gregorian calendar.
    static constexpr DWORD GRGYEAR_OF_MEIJI_FIRSTYEAR = 1868;
    static constexpr DWORD MEIJIYEAR_OF_GRGCALENDAR_INTRO = 6;
    // Hours go on past midnight, as time tables of the night have them: 25:30 is half past one.
    static constexpr DWORD MAX_HOUR_VALUE = 47;
    static constexpr DWORD MAX_MINUTE_VALUE = 59;
    static constexpr DWORD MAX_SECOND_VALUE = 59;
    static constexpr DWORD HALFTERMCNT_OF_YEAR = 2;
    static constexpr DWORD QUARTERTERMCNT_OF_YEAR = 4;
    static constexpr DWORD MAXWEEK_OF_YEAR = 54;
    static constexpr DWORD MAXWEEK_OF_MONTH = 6;

    // How years are counted. The eras of Japan ascend in time.
    enum EEra : BYTE
    {
        ERA_UNSETTING = 0,
        ERA_MEIJI = 1,
        ERA_TAISHO = 2,
        ERA_SHOWA = 3,
        ERA_GREGORIAN = 4, // no era: the Gregorian calendar
        ERA_HEISEI = 5,
        ERA_REIWA = 6,
    };

    enum EDaysOfTheWeek : DWORD
    {
        DAYSOFWEEK_SUNDAY = 0,
        DAYSOFWEEK_MONDAY = 1,
        DAYSOFWEEK_TUESDAY = 2,
        DAYSOFWEEK_WEDNESDAY = 3,
        DAYSOFWEEK_THURSDAY = 4,
        DAYSOFWEEK_FRIDAY = 5,
        DAYSOFWEEK_SATURDAY = 6,
        DAYSOFWEEK_UNSETTING = DATE_UNSETTING,
    };

    enum ETimeBasedOnNoon : DWORD
    {
        TIMEBASEDONNOON_MORNING = 1,   // from midnight until noon
        TIMEBASEDONNOON_AFTERNOON = 2, // from noon on
        TIMEBASEDONNOON_UNSETTING = DATE_UNSETTING,
    };

    // The parts of a date by which dates can be grouped.
    enum EDateType : DWORD
    {
        DATETYPE_GRGYEAR = 1,
        DATETYPE_JPNYEAR = 2,
        DATETYPE_MONTH = 3,
        DATETYPE_DAY = 4,
        DATETYPE_HOUR = 5,
        DATETYPE_MINUTE = 6,
        DATETYPE_SECOND = 7,
        DATETYPE_FISCALGRGYEAR = 268435456,
        DATETYPE_FISCALJPNYEAR = 268435457,
        DATETYPE_FISCALMONTH = 268435458,
        DATETYPE_HALFTERM = 268435459,
        DATETYPE_QUARTERTERM = 268435460,
        DATETYPE_WEEKOFYEAR = 268435461,
        DATETYPE_WEEKOFMONTH = 268435462,
        DATETYPE_WEEKOFFISCALYEAR = 268435463,
        DATETYPE_WEEKOFFISCALMONTH = 268435464,
        DATETYPE_DAYSOFWEEK = 268435465,
        DATETYPE_TIMEBASEDONNOON = 268435466,
    };

    // The class of an object.
    enum EDateObjType : DWORD
    {
        DATEOBJTYPE_DATE = 1, // CDate: a date, or a time of the day
        DATEOBJTYPE_FISCALYEAR = 2,
        DATEOBJTYPE_FISCALMONTH = 3,
        DATEOBJTYPE_HALFTERM = 4,
        DATEOBJTYPE_QUARTERTERM = 5,
        DATEOBJTYPE_WEEKNUM = 6,
        DATEOBJTYPE_DAYSOFWEEK = 7,
        DATEOBJTYPE_TIMEBASEDONNOON = 8,
    };

    virtual ~VCDate();

    // ---- The parts. Where a class does not redefine one it gives false ----

    // The year. Of a Japanese year always; of a Gregorian year the Japanese one follows from the day. Where
    // the day, or the month, is not held, the last day of the month, or of the year, is taken for it: 2019
    // alone is Reiwa 1, 2019-04 is Heisei 31.
    virtual bool GetYearOfTheGrgCalendar(DWORD& year) const noexcept;
    virtual bool GetYearOfTheJpnCalendar(EEra& era, DWORD& year) const noexcept;
    virtual bool GetMonth(DWORD& month) const noexcept;   // 1 to 12
    virtual bool GetDay(DWORD& day) const noexcept;       // 1 to 31
    virtual bool GetHour(DWORD& hour) const noexcept;     // 0 to MAX_HOUR_VALUE
    virtual bool GetMinute(DWORD& minute) const noexcept; // 0 to 59
    virtual bool GetSecond(DWORD& second) const noexcept; // 0 to 59

    // The fiscal year. A date without day is taken for the fiscal month of its name.
    virtual bool GetFiscalYearOfTheGrgCalendar(DWORD startMonth, DWORD cutOffDate,
                                               DWORD& year) const noexcept;
    virtual bool GetFiscalYearOfTheJpnCalendar(DWORD startMonth, DWORD cutOffDate, EEra& era,
                                               DWORD& year) const noexcept;

    // The fiscal month, 1 to 12, with the calendar year that it is named by, which is not the fiscal year:
    // with 31 December 2023 and a cut-off day of 20 it is January 2024.
    virtual bool GetFiscalMonth(DWORD cutOffDate, EEra& era, DWORD& year, DWORD& month) const noexcept;
    virtual bool GetFiscalMonth(DWORD cutOffDate, DWORD& year, DWORD& month) const noexcept;
    virtual bool GetFiscalMonth(DWORD cutOffDate, DWORD& month) const noexcept;

    // The half (1, 2) and the quarter (1 to 4) of the fiscal year. No year is needed.
    virtual bool GetHalfTerm(DWORD startMonth, DWORD cutOffDate, DWORD& halfTerm) const noexcept;
    virtual bool GetQuarterTerm(DWORD startMonth, DWORD cutOffDate, DWORD& quarterTerm) const noexcept;

    // The week, from 1 on. Of a date they need year, month and day.
    virtual bool GetWeekOfTheYear(EDaysOfTheWeek daysOfWeek, DWORD& week) const noexcept;
    virtual bool GetWeekOfTheMonth(EDaysOfTheWeek daysOfWeek, DWORD& week) const noexcept;
    virtual bool GetWeekOfTheFiscalYear(DWORD startMonth, DWORD cutOffDate, EDaysOfTheWeek daysOfWeek,
                                        DWORD& week) const noexcept;
    virtual bool GetWeekOfTheFiscalMonth(DWORD cutOffDate, EDaysOfTheWeek daysOfWeek,
                                         DWORD& week) const noexcept;

    virtual bool GetDaysOfTheWeek(EDaysOfTheWeek& day) const noexcept;
    // Hours from 24 on count as those of the day after.
    virtual bool GetTimeBasedOnNoon(ETimeBasedOnNoon& time) const noexcept;

    // One number that orders and identifies the date under these criteria:
    //   - what has a year orders by its first day in time, however its year is counted and whatever it is a
    //     stretch of: 2019-04-30, Reiwa 1, Reiwa 1-05-01 have ascending numbers;
    //   - of stretches with the same first day the longer kind comes first: fiscal year, year, half, quarter,
    //     fiscal month, month, week, day;
    //   - what has no year comes before all that has one, and orders by its parts from the greatest to the
    //     smallest; a part that is not held comes before all values of it. Fiscal months without year order
    //     from the start month on, days of the week from the first day of the week on;
    //   - two objects of one class that hold the same parts, with years counted in the same way, have the
    //   same
    //     number exactly if the parts are equal. One with a Gregorian and one with a Japanese year have the
    //     same number if their first day is the same: 2019 and Heisei 31 begin together.
    // False if the object holds nothing, or what there is not: 30 February, week 54 of a year that has 53,
    // Reiwa 1 January.
    virtual bool GetDateNumeric(DWORD startMonth, DWORD cutOffDate, EDaysOfTheWeek daysOfWeek,
                                unsigned long long& numeric) const noexcept = 0;

    // Writes the parts held as a plain ASCII text with a NUL behind it, for messages and protocols:
    // "2024-07-15", "R6-07", "13:05", "FY2024 Q2", "2024-07 W3", "PM"; what is not held is left out. False,
    // with `buffer` untouched, if it does not fit; MAX_DATESTRING_SIZE bytes are always enough.
    static constexpr DWORD MAX_DATESTRING_SIZE = 32;
    virtual bool GetDateString(char* buffer, DWORD size) const noexcept = 0;

    virtual EDateObjType GetType() const noexcept = 0;

    // A copy. Throws std::bad_alloc.
    virtual std::unique_ptr<VCDate> CreateClone() const = 0;

    // Writes the object as one empty element "Date": the attribute "type" tells its class, the others its
    // parts. False as CXMLWriter tells. Doc/dates.md has the attributes.
    virtual bool WriteSpecByXML(CXMLWriter& writer) const = 0;
    // Takes over what the element has on which the reader stands; the reader stays there.
    // READXML_NOELEMENT if it stands on none or on one of another name; READXML_BADFORMAT, with the object
    // unchanged, if the type is that of another class, or an attribute is unknown, out of its limits, or
    // without another that it needs.
    virtual CXMLReader::EMthRetOfReadXML ReadSpecByXML(const CXMLReader& reader) = 0;

    // ---- Making objects. They throw std::bad_alloc ----

    // Reads the text of a date in the form that the type information tells; its display form plays no part.
    // `text` is `len` bytes in the code page in force. Null if it is no such text through and through, or no
    // real day; SCDateText has the exact forms. A Japanese date is kept with its era.
    static std::unique_ptr<VCDate> CreateDateObject(const char* text, unsigned short len,
                                                    const SCDeclareConstant::SDateTypeInfo& typeInfo);
    // Makes the object that the element "Date" on which the reader stands tells; the reader stays there. Null
    // where ReadSpecByXML would refuse it, or for an unknown type.
    static std::unique_ptr<VCDate> CreateDateObject(const CXMLReader& reader);
    // Reads the text of a time of the day: a CDate that holds hour and minute, and a second where the form
    // has it.
    static std::unique_ptr<VCDate> CreateTimeObject(const char* text, unsigned short len,
                                                    const SCDeclareConstant::STimeTypeInfo& typeInfo);

    // ---- Comparing ----

    // What the comparison of one element says about the whole.
    enum ECmpResult : DWORD
    {
        CMPRESULT_UNDECIDED = 0, // equal: the next smaller element decides
        CMPRESULT_TRUE = 1,
        CMPRESULT_FALSE = 2,
    };

    // Compares one element of two dates, `left` `cmpOperator` `right`; Equal and NotEqual too are undecided
    // where the elements are equal. When all elements are undecided IsTrueOfEqual tells the outcome. An
    // operator that is none gives CMPRESULT_FALSE.
    // Years, months, days, halves, quarters, weeks, parts of a time:
    static ECmpResult CompareDate(DWORD left, DWORD right, SCKZCoreCom::ECmpOperator cmpOperator) noexcept;
    // Japanese years:
    static ECmpResult CompareDate(EEra leftEra, DWORD leftYear, EEra rightEra, DWORD rightYear,
                                  SCKZCoreCom::ECmpOperator cmpOperator) noexcept;
    // Days of a week that begins with `daysOfWeek`:
    static ECmpResult CompareDate(EDaysOfTheWeek left, EDaysOfTheWeek right, EDaysOfTheWeek daysOfWeek,
                                  SCKZCoreCom::ECmpOperator cmpOperator) noexcept;
    static bool IsTrueOfEqual(SCKZCoreCom::ECmpOperator cmpOperator) noexcept;

    // Compares two dates by the elements that `right` holds, from the greatest to the smallest, each by one
    // of the operations above: `left` is in the relation to the stretch that `right` is. 2024-07-15 is equal
    // to July 2024 and to week 3 of July, not less than either, and greater than June 2024. Fiscal months
    // without year compare by their place behind the start month. Every element of a week, a half or a
    // quarter counts: year, then the month of the week, then its number.
    // At an element that `left` does not give the numbers of the two (GetDateNumeric) decide, and without
    // those they are just not equal. Where CheckDateInclusiveRelation holds for a date of the same form,
    // that comes about for days before Meiji compared with a Japanese year, and for the first and the last
    // days of all years, which may lie in a fiscal year that there is not: they lie before or behind.
    static bool CompareDate(const VCDate& left, const VCDate& right, SCKZCoreCom::ECmpOperator cmpOperator,
                            DWORD startMonth, DWORD cutOffDate, EDaysOfTheWeek daysOfWeek) noexcept;

    // Whether `date` gives every element that `part` holds, whatever the criteria, so that the two can be
    // compared: a day includes a month, a week, a quarter; a year-month includes a quarter and no day.
    static bool CheckDateInclusiveRelation(const VCDate& date, const VCDate& part) noexcept;

    // ---- Years ----

    // Whether there is such a year: of an era one from 1 to its last (Meiji 45, Taisho 15, Showa 64, Heisei
    // 31, Reiwa as long as the Gregorian year is no greater than MAX_GRGYEAR_VALUE); of ERA_GREGORIAN one
    // from the introduction of that calendar (1873) to MAX_GRGYEAR_VALUE.
    static bool IsAppropriateYear(EEra era, DWORD year) noexcept;

    // ---- Moments ----

    // The form in which the libraries save a moment.
    static constexpr char STR_FORMAT_DATE[] = "%Y/%m/%d %H:%M:%S";

    // Writes a moment, in seconds since the beginning of 1970, as UTC text with a NUL behind it. `format` may
    // hold %Y (four digits), %m, %d, %H, %M, %S (two digits each), and %% for a percent sign; all other bytes
    // stand for themselves. False, with `buffer` untouched, for another code, for a moment outside the years
    // 1 to 9999, and if the text does not fit or has more than 256 bytes. The time zone and the locale of the
    // system play no part.
    static bool ConvertDateIntoStringOfGMT(long long time, const char* format, char* buffer,
                                           DWORD size) noexcept;
    // The reverse: the whole of `len` bytes is a text of that format; each code stands in it once, %% aside.
    // False, with `time` untouched, if it is not, or tells no real day or time of the day.
    static bool ConvertStringOfGMTIntoDate(const char* text, DWORD len, const char* format,
                                           long long& time) noexcept;

protected:
    VCDate() = default;
    VCDate(const VCDate&) = default;
    VCDate& operator=(const VCDate&) = default;
};

} // namespace NSKZ::NSKZCore

#endif
