#ifndef CANALYSIS_H
#define CANALYSIS_H

#include "CBUIDataMngr.h"
#include "CCoreSumMngr.h"
#include "CSourceDataMngr.h"

#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace NSKZ::Host {

// A table, its sums and the environment over it; the changes of the table, each of which can be taken back;
// and the changes that are held: made in a table of their own, which the environment does not know yet.
//
// A copy of the table is kept for every change that can be taken back. What a change did not touch they
// share: a change of a field costs that field, one of records the whole table.
//
// Ctrl-C cancels a change where the engine lets it. A change that fails, or is cancelled, is taken back
// before its operation throws: std::bad_alloc, or ECCommandError with a sentence. Where memory ran out in the
// midst of a change of records the earlier changes may not be there to be taken back any more. Only if
// taking back fails as well ECSessionLost comes out, and the analysis is of no more use.
class CAnalysis
{
public:
    using ELinkTableVerType = NSKZCore::SCBUICoreCom::ELinkTableVerType;

    // Over a table, with an item of every field that the engine can make one of until `progress` asks it to
    // stop. `progressTerminal`, which may be null, shows how far changes have come.
    CAnalysis(NSKZCore::CSourceDataMngr table, ELinkTableVerType linkTables,
              NSKZCore::CProgressStatus& progress, std::ostream* progressTerminal);
    CAnalysis(const CAnalysis&) = delete;
    CAnalysis& operator=(const CAnalysis&) = delete;

    // A copy with everything, what is held and what can be taken back too; `id` is that of its environment.
    // Cost: as much memory as the environment has; of the tables a pointer a field.
    std::unique_ptr<CAnalysis> CreateCopy(DWORD id) const;
    // One over the same table, without held changes and without items, for a saved one to be read into.
    std::unique_ptr<CAnalysis> CreateUnread() const;

    NSKZCore::CBUIDataMngr& GetEnv() const noexcept { return *env; }
    const NSKZCore::CSourceDataMngr& GetTable() const noexcept { return table; }
    // Changes the table where nothing follows it: before the environment has items.
    NSKZCore::CSourceDataMngr& GetTableToPrepare() noexcept { return table; }

    // Lists of records, ascending.
    // Those of the limitation; nothing where there is none.
    std::optional<std::vector<DWORD>> GetLimitedRecs() const;
    std::vector<DWORD> GetTargetRecs() const;
    std::vector<DWORD> GetTargetRecsOfItem(DWORD itemID) const;

    // ---- Changes

    // How an environment follows a change of its table; false if it could not.
    using CFollow = std::function<bool(NSKZCore::CBUIDataMngr&, NSKZCore::CProgressStatus&)>;

    // Puts `changed`, a copy of the table with a change, in the table's place and lets the environment follow
    // it. `command` is how the user told the change.
    void Change(NSKZCore::CSourceDataMngr changed, const std::string& command, const CFollow& follow);

    // A selected button of a group of dates or times. The engine makes these itself, and anew where they may
    // have changed: then it is found by its text.
    struct SSelectedGroup
    {
        NSKZCore::SBtnClassIDAndBtnID btn;
        std::string text; // in the engine's code page
    };
    struct SChange
    {
        std::string command;
        NSKZCore::CSourceDataMngr tableBefore;
        DWORD entriesBefore = 0; // of the engine's history
        std::optional<std::vector<DWORD>> limitation;
        std::vector<NSKZCore::SSelectBtnIDList> selection;
        std::vector<SSelectedGroup> selectedGroups;
        std::vector<DWORD> selectedItems;
        // Special buttons that the change has switched off.
        std::vector<NSKZCore::SBtnClassIDAndBtnID> switchedOff;
    };
    // What can be taken back, the newest at the end.
    const std::vector<SChange>& GetHistory() const noexcept { return history; }
    // Takes back the newest change, which there is: the table and everything on it, the selection, and the
    // limitation of that moment. What was done since then is kept where it still can be. The engine's own
    // answer: false if the selection could not be made again.
    bool Undo();
    // Forgets what could be taken back, in the engine too.
    void ClearHistory();

    // ---- Held changes

    // The table with all held changes.
    const NSKZCore::CSourceDataMngr& GetTableWithHeld() const noexcept { return held ? *held : table; }
    // How the user told them, in order.
    const std::vector<std::string>& GetHeldCommands() const noexcept { return heldCommands; }
    // Takes a copy of GetTableWithHeld with a further change.
    void Hold(NSKZCore::CSourceDataMngr changed, const std::string& command);
    // Lets the environment follow all of them at once; `info` becomes their summary. They are held on if that
    // fails.
    void FollowHeld(const std::string& command, NSKZCore::SCDataMngrCoreDef::SBtnRenewalInfo& info);
    void DropHeld() noexcept;

private:
    // With an environment that has no items yet.
    CAnalysis(NSKZCore::CSourceDataMngr table, DWORD id, ELinkTableVerType bnLinkVerType,
              ELinkTableVerType rpLinkVerType, std::ostream* progressTerminal);

    SChange DescribePresent(const std::string& command) const;
    void SetTable(NSKZCore::CSourceDataMngr next) noexcept;
    bool TakeBack(const SChange& change);
    void TakeBackFailed(const SChange& change);
    void RegroupDates(const std::vector<DWORD>& fldIDs, bool hasOtherCalendar);
    bool FindSelection(const SChange& change, std::vector<NSKZCore::SSelectBtnIDList>& selection) const;
    bool RestoreSelection(const SChange& change);

    std::ostream* progressTerminal;
    NSKZCore::CSourceDataMngr table;
    NSKZCore::CCoreSumMngr sums{table};
    std::unique_ptr<NSKZCore::CBUIDataMngr> env;
    std::vector<SChange> history;
    std::optional<NSKZCore::CSourceDataMngr> held;
    std::vector<std::string> heldCommands;
};

} // namespace NSKZ::Host

#endif
