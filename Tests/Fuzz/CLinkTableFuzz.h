#ifndef CLINKTABLEFUZZ_H
#define CLINKTABLEFUZZ_H

#include "FuzzTarget.h"

#include "Support/LinkTableFiles.h"
#include "Support/LinkTableUse.h"

#include <string>

namespace NSKZ::Test {

// Reads a table from files that the fuzzer has made. Either none comes of them, or one that writes itself and
// reads back the same, and survives being used.
template <class TTable>
class CLinkTableFuzz
{
public:
    // The file of a number; nothing is written if it has these bytes already.
    void SetFile(DWORD number, const std::string& bytes)
    {
        if (number >= files.size())
            files.resize(number + 1);
        if (files[number] == bytes && std::filesystem::exists(dir.GetFile(number)))
            return;
        dir.WriteFileBytes(number, bytes);
        files[number] = bytes;
    }
    // Removes the files from a number on.
    void RemoveFilesFrom(DWORD number)
    {
        for (; number < files.size(); files.pop_back())
            std::filesystem::remove(dir.GetFile(static_cast<DWORD>(files.size() - 1)));
    }

    void Try()
    {
        TTable table;
        SetLastError(ERROR_SUCCESS);
        if (!ReadFromDir(table, dir)) {
            Require(GetLastError() != ERROR_SUCCESS, "what is refused has a reason");
            Require(IsEmpty(table), "what is refused leaves the table empty");
            return;
        }
        Require(table.WriteTo(second.GetPath().c_str()), "what was read is written");
        // Entries may come in another order.
        Require(std::filesystem::file_size(second.GetFile(0)) == std::filesystem::file_size(dir.GetFile(0)),
                "all of the index was taken");
        TTable again;
        Require(ReadFromDir(again, second), "what was written is read");
        Require(again.WriteTo(third.GetPath().c_str()), "and written again");
        for (DWORD number = 0; std::filesystem::exists(third.GetFile(number)); ++number) {
            Require(ReadFileBytes(second.GetFile(number)) == ReadFileBytes(third.GetFile(number)),
                    "what was written twice is the same");
            Require(number == 0 ||
                        ReadFileBytes(dir.GetFile(number)) == ReadFileBytes(second.GetFile(number)),
                    "cells are written as they were read");
            std::filesystem::remove(third.GetFile(number));
        }
        Use(table);
    }

private:
    static constexpr DWORD CLASS_END = 4096;

    static bool IsEmpty(const NSKZCore::IBnLink& table)
    {
        return table.GetRecCount() == 0 && !table.ExistFld(1);
    }
    static bool IsEmpty(const NSKZCore::IRpLink& table)
    {
        std::vector<DWORD> btnClassIDs;
        table.GetBtnClassIDList(btnClassIDs);
        return btnClassIDs.empty();
    }
    static void Use(NSKZCore::IBnLink& table) { UseTable(table, CLASS_END); }
    static void Use(NSKZCore::IRpLink& table) { UseTable(table); }

    CLinkTableDir dir;
    CLinkTableDir second;
    CLinkTableDir third;
    std::vector<std::string> files;
};

} // namespace NSKZ::Test

#endif
