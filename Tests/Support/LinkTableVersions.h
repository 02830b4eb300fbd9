#ifndef LINKTABLEVERSIONS_H
#define LINKTABLEVERSIONS_H

#include "CBnLink_MemSavVer.h"
#include "CBnLink_OnMemVer.h"
#include "CRpLink_MemSavVer.h"
#include "CRpLink_OnMemVer.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

// The versions of the link tables, for what is common to them.

namespace NSKZ::Test {

using BnLinkVersions = testing::Types<NSKZCore::CBnLink_OnMemVer, NSKZCore::CBnLink_MemSavVer>;
using RpLinkVersions = testing::Types<NSKZCore::CRpLink_OnMemVer, NSKZCore::CRpLink_MemSavVer>;
using LinkTables = testing::Types<NSKZCore::CBnLink_OnMemVer, NSKZCore::CRpLink_OnMemVer,
                                  NSKZCore::CBnLink_MemSavVer, NSKZCore::CRpLink_MemSavVer>;

template <class TTable>
inline constexpr bool IS_ON_MEMORY =
    std::is_same_v<TTable, NSKZCore::CBnLink_OnMemVer> || std::is_same_v<TTable, NSKZCore::CRpLink_OnMemVer>;
template <class TTable>
inline constexpr NSKZCore::SCBUICoreCom::ELinkTableVerType VERSION_OF =
    IS_ON_MEMORY<TTable> ? NSKZCore::SCBUICoreCom::LINKTBLVERTYPE_ONMEM
                         : NSKZCore::SCBUICoreCom::LINKTBLVERTYPE_MEMSAV;

// Names the tests of a suite by the table.
class CNameOfTable
{
public:
    template <class TTable>
    static std::string GetName(int)
    {
        return std::string(std::is_base_of_v<NSKZCore::IBnLink, TTable> ? "BnLink" : "RpLink") +
               (IS_ON_MEMORY<TTable> ? "OnMemory" : "MemorySaving");
    }
};

} // namespace NSKZ::Test

#endif
