#ifndef CFAULTENV_H
#define CFAULTENV_H

#include "CBUIDataMngr.h"
#include "CCoreSumMngr.h"
#include "CSourceDataMngr.h"

#include <memory>
#include <string>

namespace NSKZ::Test {

// A table of 50 records with items of all four data types, some cells empty: texts of few values (class 1),
// numbers and texts that are none (2), dates, some with a time behind them (3), times (4), texts that are all
// different (5).
const NSKZCore::CSourceDataMngr& GetFaultTable();

// The classes and the number field of that table.
constexpr DWORD CLASS_TEXT = 1;
constexpr DWORD CLASS_NUM = 2;
constexpr DWORD CLASS_DATE = 3;
constexpr DWORD CLASS_TIME = 4;
constexpr DWORD CLASS_DIFFERENT = 5;
constexpr DWORD FLD_NUM = 2;

// An environment over the table with sums of its own, so that all that it uses goes with it.
struct SFaultEnv
{
    NSKZCore::CCoreSumMngr sums;
    NSKZCore::CBUIDataMngr env;

    SFaultEnv();
};

std::unique_ptr<SFaultEnv> MakeFaultEnv();

// All that is to be seen of an environment, sums included, as text. Environments that answer alike have one
// text.
std::string TakeSnapshot(const NSKZCore::CBUIDataMngr& env);

} // namespace NSKZ::Test

#endif
