#include "SCSaveCommands.h"

#include "CCommandArgs.h"
#include "CCommandSet.h"
#include "CEngineFiles.h"
#include "CSaveDirectory.h"
#include "CTextOutput.h"
#include "ECCommandError.h"
#include "SCHeldChanges.h"
#include "SCHostText.h"
#include "SCNumberText.h"
#include "SCommandContext.h"
#include "SCSessionFile.h"
#include "SCSessionState.h"
#include "SCShownText.h"
#include "SCSystemFile.h"
#include "VECException.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace NSKZ::Host {

namespace {

using NSKZCore::CSourceDataMngr;

// What the host itself keeps of a session, beside the engine's files.
constexpr const char* NAME_OF_SESSION = "host.json";

std::uint64_t CountBytes(const std::vector<SSavedFile>& files)
{
    std::uint64_t bytes = 0;
    for (const SSavedFile& file : files)
        bytes += file.size;
    return bytes;
}

const std::string& GetDirectory(const CCommandArgs& args)
{
    const std::string& path = args.GetWords()[0];
    if (path.empty())
        args.Refuse("The name of a directory is empty");
    return path;
}

// ---- save

CAnswer RunSave(SCommandContext& context, const CCommandArgs& args)
{
    const CWorkspace& workspace = context.workspace;
    const std::string& path = GetDirectory(args);
    const CEngineFiles nameable(SCSystemFile::FromUTF8(path)); // or nothing is made
    CSaveDirectory directory(path, CSaveDirectory::USE_TO_SAVE);
    const std::filesystem::path begun = directory.Begin();
    CEngineFiles(begun).Write(workspace.GetEnv());
    SSavedSession session = SCSessionState::Collect(workspace);
    session.files = SCSavedFiles::List(begun);
    const std::string sessionText = SCSessionFile::Write(session);
    if (const std::error_code error = SCSystemFile::WriteNew(begun / NAME_OF_SESSION, sessionText)) {
        throw ECCommandError("\"" + std::string(NAME_OF_SESSION) +
                             "\" cannot be written: " + error.message() + ".");
    }
    directory.Publish();

    const SCSessionState::SLeftOut leftOut = SCSessionState::CountLeftOut(workspace);
    CAnswer answer;
    answer["result"] = true;
    answer["directory"] = path;
    answer["generation"] = directory.GetName();
    answer["bytes"] = CountBytes(session.files) + sessionText.size();
    answer["leftOut"]["items"] = leftOut.items;
    answer["leftOut"]["buttons"] = leftOut.btns;
    return answer;
}

void ShowSave(SCommandContext&, const CAnswer& answer, CTextOutput& output)
{
    const std::size_t items = answer.at("leftOut").at("items");
    const std::size_t btns = answer.at("leftOut").at("buttons");
    std::string leftOut;
    if (items != 0)
        leftOut = SCNumberText::OfThings(items, "item");
    if (btns != 0)
        leftOut += (leftOut.empty() ? "" : " and ") + SCNumberText::OfThings(btns, "button");
    output.WriteLine("Saved in " + SCShownText::Escape(answer.at("directory").get<std::string>()) + ": " +
                     SCNumberText::OfThings(answer.at("bytes"), "byte") +
                     (leftOut.empty() ? "." : "; switched off and left out: " + leftOut + "."));
}

// ---- load

struct SOutcome
{
    bool isAsSaved = false;            // whether everything shows as it did
    bool areLinkTablesRebuilt = false; // from the table
};

// Reads a save into a workspace of its own, so that the present one is as it was if this throws.
std::unique_ptr<CWorkspace> Read(const CWorkspace& present, const std::filesystem::path& saved,
                                 SOutcome& outcome)
{
    std::string sessionText;
    const std::vector<SSavedFile> files = SCSavedFiles::List(saved);
    if (const std::error_code error = SCSystemFile::ReadInPieces(
            saved / NAME_OF_SESSION, [&](std::string_view piece) { sessionText += piece; })) {
        throw ECCommandError("\"" + std::string(NAME_OF_SESSION) + "\" cannot be read: " + error.message() +
                             ".");
    }
    SSavedSession session;
    try {
        session = SCSessionFile::Read(sessionText);
    } catch (const ECCommandError& error) {
        throw ECCommandError("\"" + std::string(NAME_OF_SESSION) + "\" is damaged: " + error.what());
    }
    SCSessionState::RequireSameTable(session, present);
    const auto isLinkTable = [](const SSavedFile& file) { return CEngineFiles::IsLinkTable(file.name); };
    const auto firstOfTables =
        std::stable_partition(session.files.begin(), session.files.end(),
                              [&](const SSavedFile& file) { return !isLinkTable(file); });
    SCSavedFiles::RequireWhole({session.files.begin(), firstOfTables}, files);
    const bool areLinkTablesWhole = SCSavedFiles::IsWhole({firstOfTables, session.files.end()}, files);

    std::unique_ptr<CWorkspace> read = present.CreateUnread();
    CSourceDataMngr& table = read->GetAnalysis().GetTableToPrepare();
    read->SetCalendarOfTable(session.calendar);
    std::vector<DWORD> fldIDs;
    for (const SSavedSession::SField& field : session.fields)
        fldIDs.push_back(field.fldID);
    if (!table.SetFldIDs(fldIDs)) {
        throw ECCommandError("\"" + std::string(NAME_OF_SESSION) +
                             "\" is damaged: its fields do not have identifiers of their own.");
    }
    outcome.areLinkTablesRebuilt =
        CEngineFiles(saved).Read(*read, SCSessionState::ReadLimitation(session), areLinkTablesWhole);
    outcome.isAsSaved = SCSessionState::Restore(session, *read);
    return read;
}

CAnswer RunLoad(SCommandContext& context, const CCommandArgs& args)
{
    const std::string& path = GetDirectory(args);
    SCHeldChanges::RequireNone(context.workspace, "A load replaces the table with what is held");
    const CSaveDirectory directory(path, CSaveDirectory::USE_TO_LOAD);
    SOutcome outcome;
    try {
        std::unique_ptr<CWorkspace> read = Read(context.workspace, directory.GetPath(), outcome);
        context.workspace.TakeOver(*read);
        context.hasDone = true;
    } catch (const NSKZCore::VECException& error) {
        // Of the environment that was being read, not of the present one.
        throw ECCommandError("The save is damaged: " + SCHostText::FromException(error.GetMessageText()));
    }
    CAnswer answer;
    answer["result"] = true;
    answer["directory"] = path;
    answer["generation"] = directory.GetName();
    answer["records"] = context.workspace.GetTargetRecs().size();
    answer["asSaved"] = outcome.isAsSaved;
    answer["rebuilt"] = outcome.areLinkTablesRebuilt;
    return answer;
}

void ShowLoad(SCommandContext& context, const CAnswer& answer, CTextOutput& output)
{
    output.WriteLine("Loaded from " + SCShownText::Escape(answer.at("directory").get<std::string>()) + ": " +
                     SCNumberText::OfCount(answer.at("records")) + " of " +
                     SCNumberText::OfThings(context.workspace.GetRecCount(), "record") + " in force" +
                     (answer.at("asSaved").get<bool>() ? "." : "; what is displayed differs from the save."));
    if (answer.at("rebuilt").get<bool>())
        output.WriteLine("Its link tables were lost or damaged, and were built anew from the table.");
}

} // namespace

void SCSaveCommands::AddTo(CCommandSet& commands)
{
    SCommand save;
    save.form = "save DIRECTORY";
    save.summary = "keeps the session in a directory, all or nothing";
    save.explanation =
        "With its selection, limitation, special buttons and their conditions, virtual items, texts, forms "
        "and calendar; without the values of the table, held changes and what \"undo\" takes back. A "
        "directory that is missing is made; a save that it holds already is replaced, and is "
        "whole whatever interrupts this one. Special buttons and virtual items that are switched off are "
        "left "
        "out; the answer tells how many. Other files in the directory are left alone.";
    save.example = "save work";
    save.minWords = save.maxWords = 1;
    save.run = RunSave;
    save.show = ShowSave;
    commands.Add(std::move(save));

    SCommand load;
    load.form = "load DIRECTORY";
    load.summary = "brings back the session that was saved in a directory";
    load.explanation =
        "In place of the present one. The table must be the one that was open then, with the same values in "
        "the same order; of a changed one \"table save\" makes a file. If anything is not as it was written, "
        "nothing changes; the engine's tables of records and buttons alone are built anew. What \"undo\" "
        "could "
        "take back is gone. A selection that was made in "
        "several steps with hidden buttons may come back otherwise; the answer tells that.";
    load.example = "load work";
    load.minWords = load.maxWords = 1;
    load.run = RunLoad;
    load.show = ShowLoad;
    commands.Add(std::move(load));
}

} // namespace NSKZ::Host
