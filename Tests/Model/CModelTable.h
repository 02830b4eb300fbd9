#ifndef CMODELTABLE_H
#define CMODELTABLE_H

#include "CModelEnv.h"
#include "CSourceDataMngr.h"
#include "Support/CRandom.h"

#include <string>

namespace NSKZ::Test {

// A random source table, once as the table that an environment reads and once as plain texts. Its fields are
// text, numbers, dates and times, or no item at all; with few or many values, one value only, all values
// different, no value in some cells or in all; its records none, one, or up to `maxRecCount`. With
// `minValueCount` its first field is a text with at least so many values, and it has records for them.
class CModelTable
{
public:
    CModelTable(NSKZCore::CRandom& random, DWORD maxRecCount, DWORD minValueCount);

    const NSKZCore::CSourceDataMngr& GetSource() const { return source; }
    const SModelTable& GetTexts() const { return texts; }
    // The table for a reader of a failed test.
    std::string Describe() const;

private:
    void AddFld(NSKZCore::CRandom& random);
    void AddFldOfManyValues(NSKZCore::CRandom& random, DWORD minValueCount);
    void AddToSource(SModelFld& fld);

    NSKZCore::CSourceDataMngr source;
    SModelTable texts;
};

} // namespace NSKZ::Test

#endif
