// Writes the seeds of the fuzz targets of link tables, as the tables themselves write their files:
//
//     make_link_table_corpus [--check] DIRECTORY        the directory is Tests/Fuzz/Corpus
//
// With --check nothing is written: the program fails where a seed is missing or is not what would be
// written. It is a test; after a change of the files' format the seeds are to be written anew.

#include "CCellTable.h"
#include "CSeedFiles.h"
#include "Support/LinkTableContent.h"
#include "Support/LinkTableFiles.h"
#include "Support/LinkTableVersions.h"

#include <cstdlib>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

constexpr DWORD INC = SCBUICoreCom::BTN_ID_INC_BEGIN;
constexpr DWORD CLL = SCBUICoreCom::BTN_ID_CLL_BEGIN;
constexpr DWORD VIRINC = SCBUICoreCom::BTN_ID_VIRINC_BEGIN;
constexpr DWORD COMMON_VIR = SCBUICoreCom::BTNCLS_ID_VIR_COMMON_BEGIN;
constexpr DWORD FIXED_VIR = SCBUICoreCom::BTNCLS_ID_VIR_FIXED_BEGIN;

// Adds the seeds that a table gives: its index, which both versions write alike, to the target of the index,
// all files to link_table_files.
template <class TTable>
void Add(const CSeedFiles& seeds, const TTable& table, const char* indexTarget, char kind,
         const std::string& name)
{
    const CLinkTableDir dir;
    if (!table.WriteTo(dir.GetPath().c_str()))
        std::exit(1);
    const std::string index = ReadFileBytes(dir.GetFile(0));
    if (IS_ON_MEMORY<TTable>)
        seeds.Write(indexTarget, name, index);
    std::string lengths;
    std::string flds;
    for (DWORD number = 1; std::filesystem::exists(dir.GetFile(number)); ++number) {
        const std::string fld = ReadFileBytes(dir.GetFile(number));
        lengths += static_cast<char>(fld.size());
        flds += fld;
    }
    const std::string header = {static_cast<char>(kind + (IS_ON_MEMORY<TTable> ? 0 : 2)),
                                static_cast<char>(lengths.size())};
    const std::string version = IS_ON_MEMORY<TTable> ? "" : "_packed";
    seeds.Write("link_table_files", indexTarget + ("_" + name) + version, header + lengths + flds + index);
}

template <class TBnLink>
void AddBnLinks(const CSeedFiles& seeds)
{
    const auto add = [&](const TBnLink& table, const char* name) {
        Add(seeds, table, "bnlink_index", 0, name);
    };
    TBnLink table;
    add(table, "empty");
    table.InsertRec(0, 3);
    add(table, "records_without_column");
    InsertFld(table, 2, {2, 3, 2, 1});
    add(table, "one_column");
    InsertFld(table, 1, {5, 2, 4, 3});
    InsertFld(table, 4, {1, 1, 1, 1});
    InsertFld(table, 9, {2, 2, 3, 2});
    add(table, "four_columns");
    table.DeleteFld(9);
    table.DeleteFld(2);
    add(table, "columns_deleted");
}

template <class TRpLink>
void AddRpLinks(const CSeedFiles& seeds)
{
    const auto add = [&](const TRpLink& table, const char* name) {
        Add(seeds, table, "rplink_index", 1, name);
    };
    TRpLink table;
    add(table, "empty");
    table.InsertFld(1);
    add(table, "empty_field");
    InsertFld(table, 2, {{1, {3}}, {2, {0, 2}}, {3, {1}}});
    add(table, "source_buttons");
    SetRecList(table, 2, INC, {0, 1, 2});
    SetRecList(table, 2, CLL + 1, {3});
    SetRecList(table, 2, VIRINC, {0, 3});
    InsertFld(table, COMMON_VIR, {{VIRINC + 3, {1, 2}}});
    InsertFld(table, FIXED_VIR + 1, {{VIRINC, {0}}, {VIRINC + 1, {2, 3}}});
    add(table, "all_kinds");
    SetRecList(table, 2, 1, {});
    SetRecList(table, 2, 7, {1});
    SetRecList(table, 2, 1, {0, 1, 2, 3}); // its slice is behind those of later buttons
    table.DeleteFld(1);
    add(table, "changed");
}

// Fields of packed cells, with groups of every manner.
void AddPackedCells(const CSeedFiles& seeds)
{
    const auto add = [&](char kind, const char* name, const auto& getCell, DWORD count) {
        CCellTable table(kind == 0 ? CCellTable::BTNS_OF_GROUP : CCellTable::RECS_OF_GROUP);
        List cells(count);
        for (DWORD i = 0; i < count; ++i)
            cells[i] = getCell(i);
        const CLinkTableDir dir;
        if (!table.InsertFld(0, count, CCellTable::GetBytes(cells.data())) ||
            !table.WriteFldData(0, dir.GetFile(1).string().c_str()))
            std::exit(1);
        seeds.Write("packed_cells", name, kind + ReadFileBytes(dir.GetFile(1)));
    };
    add(
        0, "none", [](DWORD) { return 0; }, 0);
    add(
        0, "even", [](DWORD i) { return 1000 + i * 7 % 13; }, 300);
    add(
        0, "rising", [](DWORD i) { return 2 + i + i % 3; }, 200);
    add(
        0, "two_blocks", [](DWORD i) { return i / 4000; }, 4200);
    add(
        1, "ascending", [](DWORD i) { return i * 9 + i % 5; }, 300);
    add(
        1, "rounds", [](DWORD i) { return i * 1000 % 60000; }, 300);
    add(
        1, "of_each_manner", [](DWORD i) { return i < 256   ? i
                                                  : i < 512 ? i * i
                                                            : i * 7919 % 64; }, 700);
}

} // namespace

int main(int argc, char** argv)
{
    return CSeedFiles::Run(argc, argv, [](const CSeedFiles& seeds) {
        AddBnLinks<CBnLink_OnMemVer>(seeds);
        AddBnLinks<CBnLink_MemSavVer>(seeds);
        AddRpLinks<CRpLink_OnMemVer>(seeds);
        AddRpLinks<CRpLink_MemSavVer>(seeds);
        AddPackedCells(seeds);
    });
}
