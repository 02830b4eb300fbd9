#ifndef CWORKSPACE_H
#define CWORKSPACE_H

#include "CBUIDataMngr.h"
#include "CCoreSumMngr.h"
#include "CHostOptions.h"
#include "CSourceDataMngr.h"

#include <memory>
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

    NSKZCore::CBUIDataMngr& GetEnv() const noexcept { return *env; }
    DWORD GetRecCount() const noexcept { return env->GetRecCountOfSrcData(); }

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
    const char* GetDefEmpValName() const { return table.GetDefEmpValName(); }

    // By what dates are counted into fiscal terms and weeks.
    struct SCalendar
    {
        DWORD startMonth;
        DWORD cutOffDay;
        NSKZCore::VCDate::EDaysOfTheWeek firstDayOfWeek;
    };
    SCalendar GetCalendar() const;
    // Sets them in the table, where they are within their limits, and lets the environment follow. If memory
    // is exhausted the former ones are back in the table.
    bool SetCalendar(const SCalendar& calendar);

    // Lists of records, ascending.
    std::vector<DWORD> GetTargetRecs() const;
    std::vector<DWORD> GetTargetRecsOfItem(DWORD itemID) const;
    std::vector<DWORD> GetRecsOfBtns(DWORD itemID, const std::vector<DWORD>& btnIDs) const;

private:
    void Load(const CHostOptions& options);
    void Build(const CHostOptions& options, NSKZCore::CProgressStatus& progress);

    std::string tablePath;
    NSKZCore::CSourceDataMngr table;
    NSKZCore::CCoreSumMngr sums;
    std::unique_ptr<NSKZCore::CBUIDataMngr> env;
};

} // namespace NSKZ::Host

#endif
