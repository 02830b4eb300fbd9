#ifndef CMODELTABLE_H
#define CMODELTABLE_H

#include "CModelEnv.h"
#include "CSourceDataMngr.h"
#include "Support/CRandom.h"

#include <string>

namespace NSKZ::Test {

// What a random table is to be like.
struct STableWish
{
    DWORD maxRecCount = 60;
    DWORD maxFldCount = 8;
    DWORD number = 0;        // a field of numbers, one in so many beside those that come anyway; 0 for none
    DWORD dates = 0;         // the same of dates or times
    DWORD minValueCount = 0; // of a first field that is a text; 0 for no such field
    bool mayBeTiny = true;   // no record at all, or one
};

// A random source table, once as the table that an environment reads and once as plain texts. Its fields are
// text, numbers, dates and times, or no item at all; with few or many values, one value only, all values
// different, no value in some cells or in all.
class CModelTable
{
public:
    CModelTable(NSKZCore::CRandom& random, const STableWish& wish);

    const NSKZCore::CSourceDataMngr& GetSource() const { return source; }
    // Other calendar criteria, now and then the same.
    const SModelCriteria& ChangeCriteria(NSKZCore::CRandom& random);
    // Another form of the data of a field: one in which many of its texts can be read as well, any, or the
    // one in which they were written.
    const SModelFld& ChangeDataForm(NSKZCore::CRandom& random, std::size_t position);
    // Records with values of the fields, now and then new ones.
    void InsertRecs(NSKZCore::CRandom& random, DWORD position, DWORD count);
    void DeleteRecs(DWORD position, DWORD count);
    // A field of its own behind the others; its identifier.
    DWORD InsertFld(NSKZCore::CRandom& random, const STableWish& wish);
    void DeleteFld(std::size_t position);
    // Other values for some records of a field, or for all.
    void ChangeData(NSKZCore::CRandom& random, std::size_t position);
    // Another type, now and then the same.
    void ChangeType(NSKZCore::CRandom& random, std::size_t position);
    // The fields and records as they were: the same table to who knows it. The criteria and the forms of
    // dates and times stay, since groups of dates do not follow a change of them that is taken back.
    void PutBack(const CModelTable& former);
    const SModelTable& GetTexts() const { return texts; }
    // The table for a reader of a failed test.
    std::string Describe() const;

private:
    void AddFld(NSKZCore::CRandom& random, const STableWish& wish);
    void AddFldOfManyValues(NSKZCore::CRandom& random, DWORD minValueCount);
    void AddToSource(SModelFld& fld);
    void SetCriteria(NSKZCore::CRandom& random);
    void TakeCriteriaIntoSource();
    void TakeFormsIntoSource(const SModelFld& fld);
    std::string ChooseValue(NSKZCore::CRandom& random, const SModelFld& fld) const;
    void PutTextsIntoSource(const SModelFld& fld);

    NSKZCore::CSourceDataMngr source;
    SModelTable texts;
    std::vector<SModelFld> fldsAsMade; // without their texts
};

} // namespace NSKZ::Test

#endif
