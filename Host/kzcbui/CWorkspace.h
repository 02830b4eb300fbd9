#ifndef CWORKSPACE_H
#define CWORKSPACE_H

#include "CAnalysis.h"
#include "CCSVLoader.h"
#include "CHostOptions.h"
#include "CTypedBtnCnd.h"

#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace NSKZ::Host {

// The opened table: the analysis of it, with what commands ask of that in the host's terms (items and buttons
// by the words of a command, texts in UTF-8), and the copies of it that a user keeps, of which one is the
// present one.
//
// The Find operations throw ECCommandError where a word names nothing, or more than one thing; the other
// operations take identifiers that the environment has.
class CWorkspace
{
public:
    // Reads the table that the options name and builds the environment. Sets the code page of the process.
    // Ctrl-C cancels it. `progressTerminal`, which may be null, is drawn on now and with later changes.
    // Throws ECHostError with EXITSTATUS_TABLE_UNREADABLE.
    CWorkspace(const CHostOptions& options, std::ostream* progressTerminal);
    CWorkspace(const CWorkspace&) = delete;
    CWorkspace& operator=(const CWorkspace&) = delete;

    CAnalysis& GetAnalysis() const noexcept { return *copies[present].analysis; }
    NSKZCore::CBUIDataMngr& GetEnv() const noexcept { return GetAnalysis().GetEnv(); }
    const NSKZCore::CSourceDataMngr& GetTable() const noexcept { return GetAnalysis().GetTable(); }
    DWORD GetRecCount() const noexcept { return GetEnv().GetRecCountOfSrcData(); }

    // How the table was read, but for its header and types: as other files of it are.
    NSKZCore::CCSVLoader::SOptions GetLoaderOptions() const;

    // A workspace over a copy of the table, with an environment that has no items yet, for a saved one to be
    // read into. Cost: a pointer a field.
    std::unique_ptr<CWorkspace> CreateUnread() const;
    // Takes the present analysis of another workspace in place of its own; the other is left with that.
    void TakeOver(CWorkspace& other) noexcept;

    // ---- Copies

    // What the analysis is called that a workspace begins with.
    static constexpr const char* NAME_OF_FIRST = "main";

    struct SCopy
    {
        std::string name;
        std::unique_ptr<CAnalysis> analysis; // never null
    };
    // All of them, the present one too, in the order in which they were made.
    const std::vector<SCopy>& GetCopies() const noexcept { return copies; }
    const SCopy& GetPresentCopy() const noexcept { return copies[present]; }
    // Makes a copy of the present one. Throws ECCommandError for a name that is empty or taken.
    void MakeCopy(const std::string& name);
    // Makes another one the present one, or removes one that is not the present one. Throw ECCommandError.
    void UseCopy(const std::string& name);
    void DropCopy(const std::string& name);

    // ---- Items and buttons

    // Whether this is an item: of a field of the table, or a virtual one. The engine keeps those of deleted
    // fields for a while; they are none.
    bool IsItem(DWORD itemID) const;
    // An item by its name or by @ and its identifier.
    DWORD FindItem(const std::string& word) const;
    // A field of the table with all held changes (CAnalysis), by its name or by @ and the identifier of its
    // item.
    DWORD FindFldWithHeld(const std::string& word) const;
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
    // Sets them, which are within their limits, in the table, and lets the environment follow: a change as
    // CAnalysis tells. `command` is how the user told it.
    void SetCalendar(const SCalendar& calendar, const std::string& command);
    // The same before there is anything that follows them: for a workspace of CreateUnread. False, with some
    // of them set, for what is beyond its limits.
    bool SetCalendarOfTable(const SCalendar& calendar);

    // Lists of records, ascending.
    // Those of the limitation; nothing where there is none.
    std::optional<std::vector<DWORD>> GetLimitedRecs() const { return GetAnalysis().GetLimitedRecs(); }
    std::vector<DWORD> GetTargetRecs() const { return GetAnalysis().GetTargetRecs(); }
    std::vector<DWORD> GetTargetRecsOfItem(DWORD itemID) const
    {
        return GetAnalysis().GetTargetRecsOfItem(itemID);
    }
    std::vector<DWORD> GetRecsOfBtns(DWORD itemID, const std::vector<DWORD>& btnIDs) const;

private:
    CWorkspace(const CWorkspace& other, std::unique_ptr<CAnalysis> analysis);
    NSKZCore::CSourceDataMngr Load(const CHostOptions& options);
    void RequireItemsOfTable() const;
    std::size_t FindCopy(const std::string& name) const;

    std::string tablePath;
    int codePage; // as the option told it
    char delimiter;
    std::vector<SCopy> copies;
    std::size_t present = 0;
};

} // namespace NSKZ::Host

#endif
