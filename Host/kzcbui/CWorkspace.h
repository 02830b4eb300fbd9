#ifndef CWORKSPACE_H
#define CWORKSPACE_H

#include "CBUIDataMngr.h"
#include "CCoreSumMngr.h"
#include "CHostOptions.h"
#include "CSourceDataMngr.h"
#include "CTypedBtnCnd.h"

#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace NSKZ::Host {

// The opened table: the source, its sums and the analysis environment over them, with what commands ask of
// them in the host's terms (items and buttons by the words of a command, texts in UTF-8).
//
// The Find operations throw ECCommandError where a word names nothing, or more than one thing; the other
// operations take identifiers that the environment has.
class CWorkspace
{
public:
    // Reads the table that the options name and builds the environment. Sets the code page of the process.
    // Ctrl-C cancels it. `progressTerminal` may be null. Throws ECHostError with EXITSTATUS_TABLE_UNREADABLE.
    CWorkspace(const CHostOptions& options, std::ostream* progressTerminal);
    CWorkspace(const CWorkspace&) = delete;
    CWorkspace& operator=(const CWorkspace&) = delete;

    NSKZCore::CBUIDataMngr& GetEnv() const noexcept { return *analysis->env; }
    const NSKZCore::CSourceDataMngr& GetTable() const noexcept { return analysis->table; }
    DWORD GetRecCount() const noexcept { return GetEnv().GetRecCountOfSrcData(); }

    // A workspace over a copy of the table, with an environment that has no items yet, for a saved one to be
    // read into. Cost: a pointer a field.
    std::unique_ptr<CWorkspace> CreateUnread() const;
    // Takes the table and the environment of another workspace in place of its own; the other is left with
    // these.
    void TakeOver(CWorkspace& other) noexcept;

    // An item by its name or by @ and its identifier.
    DWORD FindItem(const std::string& word) const;
    // A virtual item, named as FindItem takes it.
    DWORD FindVirItem(const std::string& word) const;
    // The item whose buttons are the members of a special button: its own, or the one that a virtual inc
    // button refers to. Throws ECCommandError if that is gone.
    DWORD GetItemOfMembers(DWORD itemID, DWORD btnID) const;
    // Buttons by their shown texts or by # and their identifiers, hidden ones too. Cost: texts are looked for
    // in one pass over the item's buttons.
    std::vector<DWORD> FindBtns(DWORD itemID, const std::vector<std::string>& words) const;
    // A special button, switched off ones too, named as FindBtns takes it.
    DWORD FindSpBtn(DWORD itemID, const std::string& word) const;
    // The field of a number item, named as FindItem takes it.
    DWORD FindNumFld(const std::string& word) const;

    // A condition as it is typed, over the items that there are. Throws ECCndError.
    CTypedBtnCnd ReadCnd(const std::string& text) const;

    // A text for a button in the engine's code page. Throws ECCommandError if that lacks a character of it.
    std::string ReadBtnText(const std::string& word) const;
    // Throws ECCommandError if a button of the item other than the ignored one shows the text, which is in
    // the engine's code page.
    void RequireNewBtnText(DWORD itemID, const std::string& text, DWORD ignoredBtnID) const;

    std::vector<DWORD> GetItemIDs() const;
    std::string GetItemName(DWORD itemID) const;
    std::string GetBtnText(DWORD itemID, DWORD btnID) const;
    // The word by which FindNumFld finds the field: its name, or @ and the identifier of its item where the
    // name holds control characters. Empty if there is no such field or it is not numeric.
    std::string GetWordOfNumFld(DWORD fldID) const;
    // What the empty value is called when it has no other name, in the engine's code page.
    const char* GetDefEmpValName() const { return GetTable().GetDefEmpValName(); }

    // By what dates are counted into fiscal terms and weeks.
    struct SCalendar
    {
        DWORD startMonth;
        DWORD cutOffDay;
        NSKZCore::VCDate::EDaysOfTheWeek firstDayOfWeek;

        bool operator==(const SCalendar&) const = default;
    };
    SCalendar GetCalendar() const;
    // Sets them in the table, where they are within their limits, and lets the environment follow. If memory
    // is exhausted the former ones are back in the table.
    bool SetCalendar(const SCalendar& calendar);
    // The same before there is anything that follows them: for a workspace of CreateUnread.
    bool SetCalendarOfTable(const SCalendar& calendar);

    // Lists of records, ascending.
    // Those of the limitation; nothing where there is none.
    std::optional<std::vector<DWORD>> GetLimitedRecs() const;
    std::vector<DWORD> GetTargetRecs() const;
    std::vector<DWORD> GetTargetRecsOfItem(DWORD itemID) const;
    std::vector<DWORD> GetRecsOfBtns(DWORD itemID, const std::vector<DWORD>& btnIDs) const;

private:
    // The table, and what stands on it and knows its place in memory.
    struct SAnalysis
    {
        explicit SAnalysis(NSKZCore::CSourceDataMngr tableOfUser) : table(std::move(tableOfUser)) {}

        NSKZCore::CSourceDataMngr table;
        NSKZCore::CCoreSumMngr sums{table};
        std::unique_ptr<NSKZCore::CBUIDataMngr> env;
    };

    CWorkspace(const std::string& tablePath, const NSKZCore::CSourceDataMngr& table);
    void Load(const CHostOptions& options);
    void Build(const CHostOptions& options, NSKZCore::CProgressStatus& progress);

    std::string tablePath;
    std::unique_ptr<SAnalysis> analysis;
};

} // namespace NSKZ::Host

#endif
