#ifndef CSOURCEDATAMNGR_H
#define CSOURCEDATAMNGR_H

#include "CFldValueList.h"
#include "KzcDataMngrAPI.h"
#include "SCDataMngrCoreDef.h"
#include "SCDeclareConstant.h"
#include "VCDate.h"

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace NSKZ::NSKZCore {

// The source table: fields side by side, each with one value a record. A value is a text in the host's code
// page; the empty text is the empty value. Records are told by their position, from 0; fields by an
// identifier that stays theirs whatever happens to the others. Identifiers ascend from 1, and one that has
// been given is not given again by the same table, nor after another one was assigned to it.
//
// The engine reads the table through the virtual operations of the first group alone, so a host may put a
// table of its own in their place. The others fill and change it; the engine is told of a change by its
// operations for following the source data.
//
// A change goes through whole or leaves the table as it was: where it is refused (false) as where memory is
// exhausted (std::bad_alloc). An operation given an identifier that no field has returns false with its
// outputs untouched.
//
// A copy of a table shares the unchanged fields with it, so it costs a pointer a field. To take a change
// back, keep a copy made before it and assign it. One thread at a time may use a table and its copies.
class KZCDATAMNGR_API CSourceDataMngr
{
public:
    // All there is to a field beside its values. `dateTypeInfo` counts where the type is DATATYPE_DATE,
    // `timeTypeInfo` where it is DATATYPE_TIME. The name is text in the host's code page.
    struct SFldInfo
    {
        std::string name;
        SCDeclareConstant::SDataSpec spec{SCDeclareConstant::DATAKIND_ITEM, SCDeclareConstant::DATATYPE_TEXT};
        SCDeclareConstant::SDateTypeInfo dateTypeInfo;
        SCDeclareConstant::STimeTypeInfo timeTypeInfo;
    };

    // An empty table. The name for the empty value is made for the code page in force.
    CSourceDataMngr();
    CSourceDataMngr(const CSourceDataMngr& other);
    CSourceDataMngr(CSourceDataMngr&& other) noexcept;
    CSourceDataMngr& operator=(const CSourceDataMngr& other);
    CSourceDataMngr& operator=(CSourceDataMngr&& other) noexcept;
    virtual ~CSourceDataMngr();

    // ---- What the engine reads ----

    virtual DWORD GetRecCount() const;
    virtual DWORD GetFldCount() const;

    // Stores the identifiers of all fields in the order of the table, those that are no item among them.
    // Always true.
    virtual bool GetSrcFrmDataFldID(std::vector<DWORD>& fldIDs) const;

    virtual bool GetDataSpec(DWORD fldID, SCDeclareConstant::SDataSpec& spec) const;

    // The bytes that GetData needs for the values of `recCount` records from `firstRec` on: each with its
    // NUL. `size` is the true number; `size32` the same, or 4294967295 where it does not fit 32 bits, in
    // which case GetData cannot read the stretch in one call. False if the stretch goes past the end of the
    // table.
    virtual bool GetDataSize(DWORD fldID, DWORD firstRec, DWORD recCount, DWORD& size32,
                             unsigned long long& size) const;

    // Writes the values of a stretch of records to `buffer`, one behind the other, each with its NUL. For
    // each record `lengths` gets the bytes of its value without the NUL, and `values` its place in `buffer`;
    // an empty value is an empty string there, never null. `size32` becomes the bytes written. False, with
    // everything untouched, if the stretch goes past the end of the table or `bufferSize` is less than
    // GetDataSize tells. Cost: one block copy and a pointer a record.
    virtual bool GetData(DWORD fldID, DWORD firstRec, DWORD recCount, DWORD& size32, char* buffer,
                         DWORD bufferSize, unsigned short* lengths, char** values) const;

    // The form of a field's dates, or of its times. False for a field of another type.
    virtual bool GetDateTypeInfo(DWORD fldID, SCDeclareConstant::SDateTypeInfo& info) const;
    virtual bool GetTimeTypeInfo(DWORD fldID, SCDeclareConstant::STimeTypeInfo& info) const;

    // The shown name of the empty value; borrowed until it is set.
    virtual const char* GetDefEmpValName() const;

    // The name of a field; borrowed until that field's name or form changes or it is deleted.
    virtual bool GetItemName(DWORD fldID, const char*& name) const;

    // The calendar criteria by which dates are grouped; SCCalendar has their meaning. At first the fiscal
    // year begins in April, fiscal months end with the month (31) and weeks begin on Sunday.
    virtual DWORD GetCutOffDate() const;
    virtual DWORD GetStartMonth() const;
    virtual VCDate::EDaysOfTheWeek GetDaysOfTheWeek() const;

    // ---- Fields ----

    // Inserts a field before the one at `position`, or behind all others where that is the number of fields,
    // and stores its identifier. The first field of a table settles the number of its records. False if the
    // position is greater, if the number of values is not that of the records, if the spec is unset or of an
    // unknown type, if a form or delimiter is unknown, if the name holds a NUL, or if all identifiers are
    // used up. Names may be empty and may repeat.
    bool InsertFld(DWORD position, SFldInfo info, CFldValueList values, DWORD& fldID);
    // InsertFld behind all others.
    bool AddFld(SFldInfo info, CFldValueList values, DWORD& fldID);

    // Takes a field out. A table without fields has no records.
    bool DeleteFld(DWORD fldID);

    // Puts other values in a field's place. False if their number is not that of the records.
    bool SetFldData(DWORD fldID, CFldValueList values);

    // Changes all there is to a field beside its values: its name, its type, the form of its dates or times.
    // False where InsertFld would refuse it.
    bool SetFldInfo(DWORD fldID, SFldInfo info);
    bool GetFldInfo(DWORD fldID, SFldInfo& info) const;

    // The first field in the order of the table that has this name. False if there is none.
    bool GetFldIDOfName(std::string_view name, DWORD& fldID) const;

    // Gives the fields other identifiers, in the order of the table: those by which they are known elsewhere,
    // when a table is read from a file anew. False unless there is one for each field, none twice, each from
    // 1 to 4294967294. Identifiers given from then on are greater than all of them.
    bool SetFldIDs(const std::vector<DWORD>& fldIDs);

    // A field's values, borrowed until they change; null for an unknown field.
    const CFldValueList* GetFldData(DWORD fldID) const;

    // ---- Records ----

    // Inserts records before the one at `position`, or behind all others where that is the number of records.
    // `cells` holds their values record by record, in each a value for every field in the order of the table.
    // False if the position is greater, if the number of cells is no multiple of the number of fields or
    // there is no field, if a value is longer than CFldValueList::MAX_VALUE_LEN or holds a NUL, or if there
    // would be more records than 4294967295. Cost: the whole table is copied once.
    bool InsertRecs(DWORD position, std::span<const std::string_view> cells);

    // The same with the values field by field: a list for every field in the order of the table, which may be
    // those of the table itself. False also if they are not as many as the fields, or not of one length.
    bool InsertRecsByFld(DWORD position, std::span<const CFldValueList* const> values);

    // Deletes a stretch of records. False if it goes past the end of the table. Cost: as InsertRecs.
    bool DeleteRecs(DWORD firstRec, DWORD recCount);

    // ---- The whole ----

    // Sums up what has changed since `before`, an earlier copy of the table, for those who follow it
    // (SCDataMngrCoreDef tells how); replaces what `info` held. Each list has its fields in the order of the
    // table, that of the deleted ones in the order of `before`. A field that is in both tables stands in the
    // list of
    // - changed specs, if its kind or type is another one, and then in no other list: it is read anew whole;
    // - changed forms, if it is of dates or times in another form;
    // - changed data, if it has not, behind as many new records or without as many of the first ones as the
    //   numbers of records differ by, the values that it had.
    // Names, the order of the fields, the name of the empty value and the calendar criteria are no part of
    // it. Cost: a pointer a field, and for those that were changed a comparison of their values.
    void GetRenewalInfo(const CSourceDataMngr& before, SCDataMngrCoreDef::SBtnRenewalInfo& info) const;

    // Sets the shown name of the empty value, text in the host's code page. At first it is "(", the two kanji
    // for blank, ")".
    void SetDefEmpValName(const std::string& name);

    // Set the calendar criteria: the day that ends a fiscal month, 1 to 31; the month that begins the fiscal
    // year, 1 to 12; the day that begins a week. False, with nothing changed, for another value.
    bool SetCutOffDate(DWORD day) noexcept;
    bool SetStartMonth(DWORD month) noexcept;
    bool SetDaysOfTheWeek(VCDate::EDaysOfTheWeek day) noexcept;

    // Takes all fields, and with them all records, out. The name of the empty value and the criteria stay.
    void Clear() noexcept;

private:
    struct SFld;
    using CFldPtr = std::shared_ptr<const SFld>;

    const SFld* FindFld(DWORD fldID) const noexcept;
    bool HasValuesOf(const SFld& fld, const SFld& formerFld, DWORD formerRecCount) const noexcept;
    std::size_t GetPosOfFld(DWORD fldID) const noexcept;

    std::vector<CFldPtr> flds;
    DWORD totalRecCount = 0;
    DWORD nextFldID = 1;
    std::shared_ptr<const std::string> defEmpValName;
    DWORD cutOffDate = VCDate::MAXDAY_OF_MONTH;
    DWORD startMonth = 4;
    VCDate::EDaysOfTheWeek daysOfWeek = VCDate::DAYSOFWEEK_SUNDAY;
};

} // namespace NSKZ::NSKZCore

#endif
