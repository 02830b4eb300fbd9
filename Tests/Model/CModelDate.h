#ifndef CMODELDATE_H
#define CMODELDATE_H

#include "SCDeclareConstant.h"
#include "VCDate.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace NSKZ::Test {

// The calendar criteria of a table.
struct SModelCriteria
{
    int startMonth = 4;
    int cutOffDate = 31;
    int firstDayOfWeek = 0; // 0 is Sunday
};

// A year of an era of Japan.
struct SModelEraYear
{
    int era = 0; // as VCDate::EEra; 0 for none
    int year = 0;

    auto operator<=>(const SModelEraYear&) const = default;
};

// A date, a time of the day, or a stretch of dates, of which any part may be missing; and the calendar by
// which one follows from the other.
struct SModelDate
{
    enum EKind
    {
        KIND_DATE, // or a time
        KIND_FISCALYEAR,
        KIND_FISCALMONTH,
        KIND_HALFTERM,
        KIND_QUARTERTERM,
        KIND_WEEK,
        KIND_DAYOFWEEK,
        KIND_NOON,
    };
    enum EWeekOf // as CWeekNum::EWeekNumType
    {
        WEEKOF_YEAR = 1,
        WEEKOF_MONTH = 2,
        WEEKOF_FISCALYEAR = 256,
        WEEKOF_FISCALMONTH = 512,
    };
    using Part = std::optional<int>;

    EKind kind = KIND_DATE;
    EWeekOf weekOf = WEEKOF_MONTH; // of a week and a day of the week
    Part year;                     // of the Gregorian calendar; the fiscal year where there is one
    SModelEraYear eraYear;         // where the year is counted by eras; `year` is set too
    Part month;                    // the fiscal month where there is one
    Part day;
    Part hour;
    Part minute;
    Part second;
    Part term; // half or quarter
    Part week;
    Part dayOfWeek;
    Part noon; // 1 morning, 2 afternoon

    bool operator==(const SModelDate&) const = default;

    // Those of a text; none if it is no such text.
    static std::optional<SModelDate> ReadDate(const std::string& text,
                                              const NSKZCore::SCDeclareConstant::SDateTypeInfo& info);
    static std::optional<SModelDate> ReadTime(const std::string& text,
                                              const NSKZCore::SCDeclareConstant::STimeTypeInfo& info);

    // What orders dates: none for one that holds nothing.
    std::optional<std::vector<long>> GetOrder(const SModelCriteria& criteria) const;

    // What follows from a date; none if it does not.
    std::optional<SModelEraYear> GetEraYear() const;
    Part GetFiscalMonth(const SModelCriteria& criteria) const;
    Part GetYearOfFiscalMonth(const SModelCriteria& criteria) const;
    std::optional<SModelEraYear> GetEraYearOfFiscalMonth(const SModelCriteria& criteria) const;
    Part GetFiscalYear(const SModelCriteria& criteria) const;
    std::optional<SModelEraYear> GetFiscalEraYear(const SModelCriteria& criteria) const;
    Part GetHalfTerm(const SModelCriteria& criteria) const;
    Part GetQuarterTerm(const SModelCriteria& criteria) const;
    Part GetWeek(EWeekOf stretch, const SModelCriteria& criteria) const;
    Part GetDayOfWeek() const;
    Part GetNoon() const;

    // The group that the date is in under a display form, and by one part of it; none if it joins none.
    std::optional<SModelDate> GetGroup(const NSKZCore::SCDeclareConstant::SDateDispForm& form,
                                       const SModelCriteria& criteria) const;
    std::optional<SModelDate> GetGroup(const NSKZCore::SCDeclareConstant::STimeDispForm& form) const;
    std::optional<SModelDate> GetGroup(NSKZCore::VCDate::EDateType type,
                                       const SModelCriteria& criteria) const;

    // Whether the date gives all that `part` holds, which is something; and whether it is in that relation to
    // the stretch that `part` is.
    bool Includes(const SModelDate& part) const;
    bool Compares(NSKZCore::SCKZCoreCom::ECmpOperator cmpOperator, const SModelDate& part,
                  const SModelCriteria& criteria) const;

    // The same as an object of the library.
    std::unique_ptr<NSKZCore::VCDate> Make() const;

private:
    struct SElement
    {
        std::optional<std::vector<int>> mine; // none: not to be had
        std::vector<int> ofPart;
    };
    std::vector<SElement> ListElements(const SModelDate& part, const SModelCriteria& criteria) const;
    bool IsDay() const { return year && month && day; }
    void TakeYear(Part grgYear);
    void TakeYear(const SModelEraYear& yearOfEra);
    bool TakeCalendarYear(const SModelDate& date, bool byEra);
    bool TakeFiscalYear(const SModelDate& date, bool byEra, const SModelCriteria& criteria);
    bool TakeFiscalMonth(const SModelDate& date, bool withYear, bool byEra, const SModelCriteria& criteria);
};

} // namespace NSKZ::Test

#endif
