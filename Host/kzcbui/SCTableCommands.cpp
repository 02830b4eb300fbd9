#include "SCTableCommands.h"

#include "CCommandArgs.h"
#include "CCommandSet.h"
#include "CTextOutput.h"
#include "CWorkspace.h"
#include "ECCommandError.h"
#include "SCFldTypeText.h"
#include "SCHeldChanges.h"
#include "SCHostText.h"
#include "SCNameWord.h"
#include "SCNumberText.h"
#include "SCommandContext.h"
#include "SCShownText.h"
#include "SCTableFile.h"
#include "SCWordSplit.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <limits>

namespace NSKZ::Host {

namespace {

using NSKZCore::CBUIDataMngr;
using NSKZCore::CCSVLoader;
using NSKZCore::CFldValueList;
using NSKZCore::CProgressStatus;
using NSKZCore::CSourceDataMngr;
using NSKZCore::SCDataMngrCoreDef;
using NSKZCore::SCDeclareConstant;
using NSKZCore::SCFldType;

constexpr const char* STR_HOLD = "--hold";
constexpr const char* STR_DELIMITER = "--delimiter";
constexpr const char* STR_CODEPAGE = "--code-page";
constexpr const char* STR_NOHEADER = "--no-header";
constexpr const char* STR_TYPE = "--type";
constexpr const char* STR_POSITION = "--position";
constexpr const char* STR_COLUMN = "--column";
constexpr const char* STR_REPLACE = "--replace";
constexpr const char* WORD_END = "end";
constexpr const char* WORD_CLEAR = "clear";
constexpr const char* WORD_DROP = "drop";

constexpr const char* FORM_OF_FILE_OPTIONS = " [--no-header] [--delimiter C] [--code-page auto|932|65001]";
constexpr const char* FORM_OF_HOLD = " [--hold]";
constexpr const char* EXPLANATION_OF_FILE =
    "The file is read as the table was, in the same encoding and with the same delimiter unless the options "
    "tell others. ";
constexpr const char* EXPLANATION_OF_HOLD =
    "Clears all selections; \"undo\" takes it back. --hold: the items learn of it with the next \"refresh\" "
    "only.";

std::string InQuotes(const std::string& text)
{
    return "\"" + text + "\"";
}

std::string InQuotesFromEngine(const std::string& text)
{
    return InQuotes(SCHostText::FromEngine(text.c_str()));
}

std::vector<DWORD> GetFldIDs(const CSourceDataMngr& table)
{
    std::vector<DWORD> fldIDs;
    table.GetSrcFrmDataFldID(fldIDs);
    return fldIDs;
}

CSourceDataMngr::SFldInfo GetFldInfo(const CSourceDataMngr& table, DWORD fldID)
{
    CSourceDataMngr::SFldInfo info;
    table.GetFldInfo(fldID, info);
    return info;
}

// ---- Changes in common

// Where a change begins: the present table, or with --hold that with what is held already.
CSourceDataMngr CopyTableToChange(const SCommandContext& context, const CCommandArgs& args)
{
    if (!args.Has(STR_HOLD)) {
        SCHeldChanges::RequireNone(context.workspace,
                                   "Changes are held, and this one would not come after them (--hold does)");
    }
    return context.workspace.GetAnalysis().GetTableWithHeld();
}

// Makes a change, or holds it; returns the answer as far as all changes have it in common.
CAnswer MakeChange(SCommandContext& context, const CCommandArgs& args, CSourceDataMngr changed,
                   const CAnalysis::CFollow& follow)
{
    CAnalysis& analysis = context.workspace.GetAnalysis();
    const bool wasSelective = analysis.GetEnv().IsBtnSelectiveState();
    if (args.Has(STR_HOLD))
        analysis.Hold(std::move(changed), context.line);
    else
        analysis.Change(std::move(changed), context.line, follow);
    context.hasDone = true;
    CAnswer answer;
    answer["result"] = true;
    answer["tableRecords"] = analysis.GetTableWithHeld().GetRecCount();
    answer["records"] = analysis.GetTargetRecs().size();
    answer["clearedSelection"] = wasSelective && !analysis.GetEnv().IsBtnSelectiveState();
    answer["held"] = analysis.GetHeldCommands().size();
    return answer;
}

void ShowTable(const CAnswer& answer, CTextOutput& output)
{
    const std::size_t held = answer.at("held");
    output.WriteLine("The table has " + SCNumberText::OfThings(answer.at("tableRecords"), "record") +
                     (held != 0 ? " with " + SCNumberText::OfThings(held, "held change") +
                                      "; \"refresh\" lets the items follow."
                                : "."));
    if (answer.at("clearedSelection").get<bool>())
        output.WriteLine("All selections were cleared.");
}

// The item of a field, or null where its change is held and it has none yet.
CAnswer DescribeItem(const CWorkspace& workspace, DWORD fldID)
{
    DWORD itemID = 0;
    return workspace.GetEnv().GetBtnClassID(fldID, itemID) ? CAnswer(itemID) : CAnswer();
}

void AddFld(CAnswer& answer, const CWorkspace& workspace, DWORD fldID)
{
    const CSourceDataMngr::SFldInfo info = GetFldInfo(workspace.GetAnalysis().GetTableWithHeld(), fldID);
    answer["item"] = DescribeItem(workspace, fldID);
    answer["name"] = SCHostText::FromEngine(info.name.c_str());
    answer["type"] = SCFldTypeText::Write(info);
}

// ---- Files

std::vector<SCommand::SOption> GetFileOptions()
{
    return {{STR_NOHEADER}, {STR_DELIMITER, true}, {STR_CODEPAGE, true}, {STR_HOLD}};
}

CCSVLoader::SOptions ReadLoaderOptions(const CWorkspace& workspace, const CCommandArgs& args)
{
    CCSVLoader::SOptions options = workspace.GetLoaderOptions();
    options.hasHeader = !args.Has(STR_NOHEADER);
    if (args.Has(STR_DELIMITER) &&
        !CHostOptions::ReadDelimiter(args.GetValue(STR_DELIMITER, ""), options.delimiter)) {
        args.Refuse(std::string(STR_DELIMITER) + " takes " + CHostOptions::EXPECTED_DELIMITER + ", not " +
                    InQuotes(args.GetValue(STR_DELIMITER, "")));
    }
    if (args.Has(STR_CODEPAGE)) {
        const std::string codePage = args.GetChoice(STR_CODEPAGE, {"auto", "932", "65001"});
        options.codePage = codePage == "auto"  ? CCSVLoader::CODEPAGE_AUTO
                           : codePage == "932" ? _KANJI_CP
                                               : CP_UTF8;
    }
    return options;
}

// The columns of a file in the order of the fields of the table: told by their names, or without a header by
// their places. Borrowed from the file.
std::vector<const CFldValueList*> MatchColumns(const CSourceDataMngr& table, const CSourceDataMngr& file,
                                               const std::string& path, bool hasHeader)
{
    const std::vector<DWORD> columnIDs = GetFldIDs(file);
    const std::vector<DWORD> fldIDs = GetFldIDs(table);
    std::vector<const CFldValueList*> columns;
    if (!hasHeader) {
        if (columnIDs.size() != fldIDs.size()) {
            throw ECCommandError(
                path + ": The file has " + SCNumberText::OfThings(columnIDs.size(), "column") +
                " where the table has " + SCNumberText::OfThings(fldIDs.size(), "field") + ".");
        }
        for (const DWORD columnID : columnIDs)
            columns.push_back(file.GetFldData(columnID));
        return columns;
    }
    for (const DWORD columnID : columnIDs) {
        const std::string name = GetFldInfo(file, columnID).name;
        DWORD fldID = 0;
        if (!table.GetFldIDOfName(name, fldID)) {
            throw ECCommandError(path + ": The file has a column " + InQuotesFromEngine(name) +
                                 ", and the table no field of that name (--no-header tells the columns by "
                                 "their places).");
        }
    }
    for (const DWORD fldID : fldIDs) {
        const std::string name = GetFldInfo(table, fldID).name;
        DWORD columnID = 0;
        if (!file.GetFldIDOfName(name, columnID))
            throw ECCommandError(path + ": The file has no column for the field " + InQuotesFromEngine(name) +
                                 ".");
        columns.push_back(file.GetFldData(columnID));
    }
    return columns;
}

void RequireRecCountOfTable(const CSourceDataMngr& table, const CSourceDataMngr& file,
                            const std::string& path)
{
    if (file.GetRecCount() != table.GetRecCount()) {
        throw ECCommandError(path + ": The file has " + SCNumberText::OfThings(file.GetRecCount(), "record") +
                             " where the table has " + SCNumberText::OfThings(table.GetRecCount(), "record") +
                             ".");
    }
}

// ---- rows

DWORD ReadPosition(const CCommandArgs& args, const std::string& word, DWORD end, const std::string& things)
{
    DWORD position = 0;
    if (word == WORD_END)
        return end;
    if (!SCNameWord::ReadNumber(word, position))
        args.Refuse(InQuotes(word) + " is no position: a number from 0 on is expected, or end");
    if (position > end) {
        throw ECCommandError("The position " + word + " is past the end: the table has " +
                             SCNumberText::OfThings(end, things) + ".");
    }
    return position;
}

CAnswer RunInsertRows(SCommandContext& context, const CCommandArgs& args)
{
    CSourceDataMngr table = CopyTableToChange(context, args);
    const DWORD position = ReadPosition(args, args.GetWords()[0], table.GetRecCount(), "record");
    const std::string& path = args.GetWords()[1];
    CCSVLoader::SOptions options = ReadLoaderOptions(context.workspace, args);
    options.maxRecCount = std::numeric_limits<DWORD>::max() - table.GetRecCount();
    const CSourceDataMngr file = SCTableFile::Read(path, options);
    const std::vector<const CFldValueList*> columns = MatchColumns(table, file, path, options.hasHeader);
    const DWORD count = file.GetRecCount();
    if (count == 0)
        throw ECCommandError(path + ": The file has no records to insert.");
    if (!table.InsertRecsByFld(position, columns))
        throw ECCommandError(path + ": The table does not take these records.");
    CAnswer answer = MakeChange(context, args, std::move(table), [=](CBUIDataMngr& env, CProgressStatus&) {
        return env.AdjstAccordingToInsertRec(position, count);
    });
    answer["position"] = position;
    answer["rows"] = count;
    return answer;
}

CAnswer RunDeleteRows(SCommandContext& context, const CCommandArgs& args)
{
    CSourceDataMngr table = CopyTableToChange(context, args);
    const DWORD position = ReadPosition(args, args.GetWords()[0], table.GetRecCount(), "record");
    DWORD count = 0;
    if (!SCNameWord::ReadNumber(args.GetWords()[1], count) || count == 0)
        args.Refuse(InQuotes(args.GetWords()[1]) + " is no count: a number from 1 on is expected");
    if (count > table.GetRecCount() - position) {
        throw ECCommandError("From position " + std::to_string(position) + " on there are only " +
                             SCNumberText::OfThings(table.GetRecCount() - position, "record") + ".");
    }
    table.DeleteRecs(position, count);
    CAnswer answer = MakeChange(context, args, std::move(table), [=](CBUIDataMngr& env, CProgressStatus&) {
        return env.AdjstAccordingToDeleteRec(position, count);
    });
    answer["position"] = position;
    answer["rows"] = count;
    return answer;
}

void ShowInsertRows(SCommandContext&, const CAnswer& answer, CTextOutput& output)
{
    output.WriteLine(SCNumberText::OfThings(answer.at("rows"), "record") + " inserted before " +
                     std::to_string(answer.at("position").get<DWORD>()) + ".");
    ShowTable(answer, output);
}

void ShowDeleteRows(SCommandContext&, const CAnswer& answer, CTextOutput& output)
{
    output.WriteLine(SCNumberText::OfThings(answer.at("rows"), "record") + " deleted from " +
                     std::to_string(answer.at("position").get<DWORD>()) + " on.");
    ShowTable(answer, output);
}

// ---- field insert

void RequireNewName(const CWorkspace& workspace, const CSourceDataMngr& table, const std::string& name,
                    const std::string& path)
{
    DWORD fldID = 0;
    const std::vector<DWORD> itemIDs = workspace.GetItemIDs();
    const std::string shown = SCHostText::FromEngine(name.c_str());
    const bool isOfVirItem = std::any_of(itemIDs.begin(), itemIDs.end(), [&](DWORD itemID) {
        return NSKZCore::SCBUICoreCom::IsVirBtnClass(itemID) && workspace.GetItemName(itemID) == shown;
    });
    if (isOfVirItem || table.GetFldIDOfName(name, fldID)) {
        throw ECCommandError(path + ": There is an item " + InQuotes(shown) +
                             " already; names must tell items apart.");
    }
}

// The names of columns without a header: F and a number, from that of the next field on, which is free.
void NameColumns(const CSourceDataMngr& table, CSourceDataMngr& file)
{
    DWORD number = table.GetFldCount();
    for (const DWORD columnID : GetFldIDs(file)) {
        CSourceDataMngr::SFldInfo info = GetFldInfo(file, columnID);
        DWORD ignored = 0;
        do
            info.name = "F" + std::to_string(++number);
        while (table.GetFldIDOfName(info.name, ignored));
        file.SetFldInfo(columnID, info);
    }
}

CAnswer RunInsertFld(SCommandContext& context, const CCommandArgs& args)
{
    CWorkspace& workspace = context.workspace;
    CSourceDataMngr table = CopyTableToChange(context, args);
    const std::string& path = args.GetWords()[0];
    DWORD position = ReadPosition(args, args.GetValue(STR_POSITION, WORD_END), table.GetFldCount(), "field");
    CCSVLoader::SOptions options = ReadLoaderOptions(workspace, args);
    for (const std::string& text : args.GetValues(STR_TYPE)) {
        std::pair<std::string, SCFldType::SFldType> type;
        if (!CHostOptions::ReadType(text, type)) {
            args.Refuse(std::string(STR_TYPE) + " takes COLUMN=" + CHostOptions::EXPECTED_TYPE + ", not " +
                        InQuotes(text));
        }
        options.types.emplace_back(workspace.ReadBtnText(type.first), type.second);
    }
    CSourceDataMngr file = SCTableFile::Read(path, options);
    RequireRecCountOfTable(table, file, path);
    if (!options.hasHeader)
        NameColumns(table, file);

    std::vector<DWORD> fldIDs;
    for (const DWORD columnID : GetFldIDs(file)) {
        CSourceDataMngr::SFldInfo info = GetFldInfo(file, columnID);
        RequireNewName(workspace, table, info.name, path);
        DWORD fldID = 0;
        if (!table.InsertFld(position++, std::move(info), *file.GetFldData(columnID), fldID))
            throw ECCommandError(path + ": The table does not take a further field.");
        fldIDs.push_back(fldID);
    }
    CAnswer answer =
        MakeChange(context, args, std::move(table), [&fldIDs](CBUIDataMngr& env, CProgressStatus& progress) {
            return env.AdjstAccordingToInsertFld(fldIDs.data(), static_cast<unsigned int>(fldIDs.size()),
                                                 &progress) == CBUIDataMngr::CREATESRC_OK;
        });
    CAnswer fields = CAnswer::array();
    for (const DWORD fldID : fldIDs) {
        CAnswer field;
        AddFld(field, workspace, fldID);
        fields.push_back(std::move(field));
    }
    answer["fields"] = std::move(fields);
    return answer;
}

void ShowInsertFld(SCommandContext&, const CAnswer& answer, CTextOutput& output)
{
    std::vector<CTextOutput::SRow> rows;
    for (const CAnswer& field : answer.at("fields")) {
        rows.push_back(
            {{field.at("item").is_null() ? "-"
                                         : SCNameWord::WriteID(field.at("item"), SCNameWord::MARK_OF_ITEM),
              field.at("name"), field.at("type")}});
    }
    output.WriteTable({{"item"}, {"name"}, {"type"}}, rows);
    ShowTable(answer, output);
}

// ---- field delete

CAnswer RunDeleteFld(SCommandContext& context, const CCommandArgs& args)
{
    CWorkspace& workspace = context.workspace;
    CSourceDataMngr table = CopyTableToChange(context, args);
    const DWORD fldID = workspace.FindFldWithHeld(args.GetWords()[0]);
    if (table.GetFldCount() == 1)
        throw ECCommandError("This is the last field, and a table has at least one.");
    CAnswer fld;
    AddFld(fld, workspace, fldID);
    table.DeleteFld(fldID);
    CAnswer answer =
        MakeChange(context, args, std::move(table), [fldID](CBUIDataMngr& env, CProgressStatus&) {
            return env.AdjstAccordingToDeleteFld(&fldID, 1);
        });
    answer.update(fld);
    return answer;
}

void ShowDeleteFld(SCommandContext&, const CAnswer& answer, CTextOutput& output)
{
    output.WriteLine("The field " + SCShownText::Escape(answer.at("name").get<std::string>()) +
                     " is deleted.");
    ShowTable(answer, output);
}

// ---- field data

DWORD FindColumn(const CWorkspace& workspace, const CCommandArgs& args, const CSourceDataMngr& file,
                 const std::string& path)
{
    if (!args.Has(STR_COLUMN))
        return GetFldIDs(file).front();
    DWORD columnID = 0;
    const std::string name = args.GetValue(STR_COLUMN, "");
    if (!file.GetFldIDOfName(workspace.ReadBtnText(name), columnID))
        throw ECCommandError(path + ": The file has no column " + InQuotes(name) + ".");
    return columnID;
}

CAnswer RunFldData(SCommandContext& context, const CCommandArgs& args)
{
    CWorkspace& workspace = context.workspace;
    CSourceDataMngr table = CopyTableToChange(context, args);
    const DWORD fldID = workspace.FindFldWithHeld(args.GetWords()[0]);
    const std::string& path = args.GetWords()[1];
    const CSourceDataMngr file = SCTableFile::Read(path, ReadLoaderOptions(workspace, args));
    const DWORD columnID = FindColumn(workspace, args, file, path);
    RequireRecCountOfTable(table, file, path);
    if (!table.SetFldData(fldID, *file.GetFldData(columnID)))
        throw ECCommandError(path + ": The table does not take these values.");
    CAnswer answer =
        MakeChange(context, args, std::move(table), [fldID](CBUIDataMngr& env, CProgressStatus& progress) {
            return env.AdjstAccordingToChangeFldData(&fldID, 1, &progress);
        });
    AddFld(answer, workspace, fldID);
    return answer;
}

void ShowFldData(SCommandContext&, const CAnswer& answer, CTextOutput& output)
{
    output.WriteLine("The field " + SCShownText::Escape(answer.at("name").get<std::string>()) +
                     " has other values.");
    ShowTable(answer, output);
}

// ---- field type, field form

CAnswer ChangeType(SCommandContext& context, const CCommandArgs& args, CSourceDataMngr table, DWORD fldID,
                   SCFldType::SFldType type)
{
    CWorkspace& workspace = context.workspace;
    SCFldType::SettleForm(*table.GetFldData(fldID), type);
    const CSourceDataMngr::SFldInfo former = GetFldInfo(table, fldID);
    const CSourceDataMngr::SFldInfo wanted = SCFldTypeText::WithType(former, type);
    if (SCFldTypeText::Write(wanted) == SCFldTypeText::Write(former)) {
        throw ECCommandError("The field " + InQuotesFromEngine(former.name) + " is of type " +
                             SCFldTypeText::Write(former) + " already.");
    }
    table.SetFldInfo(fldID, wanted);
    const bool isOtherType = wanted.spec.dataType != former.spec.dataType;
    CAnswer answer =
        MakeChange(context, args, std::move(table), [=](CBUIDataMngr& env, CProgressStatus& progress) {
            if (isOtherType)
                return env.AdjstAccordingToChangeFldDataSpec(&fldID, 1, &progress);
            return env.AdjstAccordingToChangeFldData(&fldID, 1, &progress) &&
                   env.AdjstAccordingToChangeFldDataForm(&fldID, 1);
        });
    AddFld(answer, workspace, fldID);
    return answer;
}

CAnswer RunFldType(SCommandContext& context, const CCommandArgs& args)
{
    CSourceDataMngr table = CopyTableToChange(context, args);
    const DWORD fldID = context.workspace.FindFldWithHeld(args.GetWords()[0]);
    SCFldType::SFldType type;
    if (!SCFldType::Parse(args.GetWords()[1], type)) {
        args.Refuse("A type is " + std::string(CHostOptions::EXPECTED_TYPE) + ", not " +
                    InQuotes(args.GetWords()[1]));
    }
    return ChangeType(context, args, std::move(table), fldID, type);
}

CAnswer RunFldForm(SCommandContext& context, const CCommandArgs& args)
{
    CSourceDataMngr table = CopyTableToChange(context, args);
    const DWORD fldID = context.workspace.FindFldWithHeld(args.GetWords()[0]);
    const CSourceDataMngr::SFldInfo info = GetFldInfo(table, fldID);
    const bool isDate = info.spec.dataType == SCDeclareConstant::DATATYPE_DATE;
    if (!isDate && info.spec.dataType != SCDeclareConstant::DATATYPE_TIME) {
        throw ECCommandError("The field " + InQuotesFromEngine(info.name) + " is of type " +
                             SCFldTypeText::Write(info) + "; dates and times alone have forms.");
    }
    SCFldType::SFldType type;
    if (!SCFldType::Parse((isDate ? "date:" : "time:") + args.GetWords()[1], type)) {
        args.Refuse(InQuotes(args.GetWords()[1]) + (isDate ? " is no form of dates, as ymd-slash is"
                                                           : " is no form of times: hms, hm, hms-12, hm-12"));
    }
    return ChangeType(context, args, std::move(table), fldID, type);
}

void ShowFldType(SCommandContext&, const CAnswer& answer, CTextOutput& output)
{
    output.WriteLine("The field " + SCShownText::Escape(answer.at("name").get<std::string>()) +
                     " is of type " + answer.at("type").get<std::string>() + ".");
    ShowTable(answer, output);
}

// ---- refresh, pending

std::vector<std::string> NameItems(const CWorkspace& workspace, const std::vector<DWORD>& fldIDs)
{
    std::vector<std::string> names;
    for (const DWORD fldID : fldIDs)
        names.push_back(
            SCHostText::FromEngine(GetFldInfo(workspace.GetAnalysis().GetTable(), fldID).name.c_str()));
    return names;
}

CAnswer RunRefresh(SCommandContext& context, const CCommandArgs&)
{
    CAnalysis& analysis = context.workspace.GetAnalysis();
    const std::size_t heldCount = analysis.GetHeldCommands().size();
    if (heldCount == 0)
        throw ECCommandError("No change is held that the items could follow.");
    const bool wasSelective = analysis.GetEnv().IsBtnSelectiveState();
    const CSourceDataMngr before(analysis.GetTable());
    SCDataMngrCoreDef::SBtnRenewalInfo info;
    analysis.FollowHeld(context.line, info);
    context.hasDone = true;
    CAnswer answer;
    answer["result"] = true;
    answer["changes"] = heldCount;
    CAnswer deleted = CAnswer::array();
    for (const DWORD fldID : info.deletedFldIDs)
        deleted.push_back(SCHostText::FromEngine(GetFldInfo(before, fldID).name.c_str()));
    CAnswer& summary = answer["summary"];
    summary["newRecords"] = info.newRecCount;
    summary["oldRecords"] = info.oldRecCount;
    summary["deleted"] = std::move(deleted);
    summary["inserted"] = NameItems(context.workspace, info.insertedFldIDs);
    summary["otherType"] = NameItems(context.workspace, info.specChangedFldIDs);
    summary["otherData"] = NameItems(context.workspace, info.dataChangedFldIDs);
    summary["otherForm"] = NameItems(context.workspace, info.formChangedFldIDs);
    answer["tableRecords"] = analysis.GetTable().GetRecCount();
    answer["records"] = analysis.GetTargetRecs().size();
    answer["clearedSelection"] = wasSelective && !analysis.GetEnv().IsBtnSelectiveState();
    answer["held"] = analysis.GetHeldCommands().size();
    return answer;
}

void ShowRefresh(SCommandContext&, const CAnswer& answer, CTextOutput& output)
{
    const CAnswer& summary = answer.at("summary");
    std::vector<CTextOutput::SRow> rows = {
        {{"records before", SCNumberText::OfCount(summary.at("oldRecords"))}},
        {{"records now", SCNumberText::OfCount(summary.at("newRecords"))}}};
    constexpr std::pair<const char*, const char*> LISTS[] = {{"deleted", "fields deleted"},
                                                             {"inserted", "fields inserted"},
                                                             {"otherType", "of another type"},
                                                             {"otherData", "with other values"},
                                                             {"otherForm", "in another form"}};
    for (const auto& [key, title] : LISTS) {
        std::string names;
        for (const std::string name : summary.at(key))
            names += (names.empty() ? "" : ", ") + name;
        if (!names.empty())
            rows.push_back({{title, names}});
    }
    output.WriteLine("The items follow " + SCNumberText::OfThings(answer.at("changes"), "held change") + ":");
    output.WriteTable({{""}, CTextOutput::SColumn::Uncut("")}, rows);
    ShowTable(answer, output);
}

CAnswer RunPending(SCommandContext& context, const CCommandArgs& args)
{
    CAnalysis& analysis = context.workspace.GetAnalysis();
    CAnswer answer;
    if (args.GetWords().empty()) {
        answer["changes"] = analysis.GetHeldCommands();
        answer["tableRecords"] = analysis.GetTableWithHeld().GetRecCount();
        return answer;
    }
    if (args.GetWords()[0] != WORD_DROP)
        args.Refuse(InQuotes(args.GetWords()[0]) + " is not understood");
    answer["changes"] = CAnswer::array();
    answer["dropped"] = analysis.GetHeldCommands().size();
    analysis.DropHeld();
    answer["tableRecords"] = analysis.GetTable().GetRecCount();
    return answer;
}

void ShowPending(SCommandContext&, const CAnswer& answer, CTextOutput& output)
{
    if (answer.contains("dropped"))
        output.WriteLine(SCNumberText::OfThings(answer.at("dropped"), "held change") + " dropped.");
    else if (answer.at("changes").empty())
        output.WriteLine("No change is held.");
    for (const std::string command : answer.at("changes"))
        output.WriteLine(SCShownText::Escape(command));
}

// ---- undo, history

CAnswer RunUndo(SCommandContext& context, const CCommandArgs&)
{
    CAnalysis& analysis = context.workspace.GetAnalysis();
    SCHeldChanges::RequireNone(context.workspace, "The table cannot change beside what is held");
    if (analysis.GetHistory().empty())
        throw ECCommandError("There is no change of the table to take back.");
    CAnswer answer;
    const std::string command = analysis.GetHistory().back().command;
    const bool result = analysis.Undo();
    context.hasDone = true;
    answer["result"] = result;
    answer["command"] = command;
    answer["left"] = analysis.GetHistory().size();
    answer["tableRecords"] = analysis.GetTable().GetRecCount();
    answer["records"] = analysis.GetTargetRecs().size();
    return answer;
}

void ShowUndo(SCommandContext&, const CAnswer& answer, CTextOutput& output)
{
    output.WriteLine("Taken back: " + SCShownText::Escape(answer.at("command").get<std::string>()));
    if (!answer.at("result").get<bool>())
        output.WriteLine("The selection of that time could not be made again.");
    output.WriteLine("The table has " + SCNumberText::OfThings(answer.at("tableRecords"), "record") + "; " +
                     SCNumberText::OfThings(answer.at("left"), "change") + " more can be taken back.");
}

CAnswer RunHistory(SCommandContext& context, const CCommandArgs& args)
{
    CAnalysis& analysis = context.workspace.GetAnalysis();
    CAnswer answer;
    if (!args.GetWords().empty()) {
        if (args.GetWords()[0] != WORD_CLEAR)
            args.Refuse(InQuotes(args.GetWords()[0]) + " is not understood");
        const std::size_t cleared = analysis.GetHistory().size();
        analysis.ClearHistory();
        answer["changes"] = CAnswer::array();
        answer["cleared"] = cleared;
        return answer;
    }
    answer["changes"] = CAnswer::array();
    for (const CAnalysis::SChange& change : analysis.GetHistory())
        answer["changes"].push_back(change.command);
    return answer;
}

void ShowHistory(SCommandContext&, const CAnswer& answer, CTextOutput& output)
{
    if (answer.contains("cleared"))
        output.WriteLine(SCNumberText::OfThings(answer.at("cleared"), "change") + " forgotten.");
    else if (answer.at("changes").empty())
        output.WriteLine("No change of the table can be taken back.");
    for (const std::string command : answer.at("changes"))
        output.WriteLine(SCShownText::Escape(command));
}

// ---- table save

CAnswer RunSaveTable(SCommandContext& context, const CCommandArgs& args)
{
    const CWorkspace& workspace = context.workspace;
    const CSourceDataMngr& table = workspace.GetTable();
    const std::string& path = args.GetWords()[0];
    if (path.empty())
        args.Refuse("The name of a file is empty");
    const char delimiter = workspace.GetLoaderOptions().delimiter;
    const std::string content = SCTableFile::Write(table, delimiter);
    SCTableFile::WriteFile(path, content, args.Has(STR_REPLACE));
    // What the program is to be called with for the very same table.
    std::vector<std::string> options = {STR_CODEPAGE, std::to_string(_getmbcp())};
    if (delimiter != CHostOptions().delimiter)
        options.insert(options.end(), {STR_DELIMITER, delimiter == '\t' ? "tab" : std::string(1, delimiter)});
    for (const DWORD fldID : GetFldIDs(table)) {
        const CSourceDataMngr::SFldInfo info = GetFldInfo(table, fldID);
        options.insert(options.end(), {STR_TYPE, SCHostText::FromEngine(info.name.c_str()) + "=" +
                                                     SCFldTypeText::Write(info)});
    }
    CAnswer answer;
    answer["result"] = true;
    answer["file"] = path;
    answer["bytes"] = content.size();
    answer["tableRecords"] = table.GetRecCount();
    answer["options"] = std::move(options);
    return answer;
}

void ShowSaveTable(SCommandContext&, const CAnswer& answer, CTextOutput& output)
{
    output.WriteLine(SCNumberText::OfThings(answer.at("tableRecords"), "record") + ", " +
                     SCNumberText::OfThings(answer.at("bytes"), "byte") + ". To open it as it is:");
    std::string command = "kzcbui";
    for (const std::string option : answer.at("options"))
        command += " " + SCWordSplit::Quote(option, 0);
    output.WriteLine(
        SCShownText::Escape(command + " " + SCWordSplit::Quote(answer.at("file").get<std::string>(), 0)));
}

} // namespace

void SCTableCommands::AddTo(CCommandSet& commands)
{
    SCommand insertRows;
    insertRows.form = std::string("rows insert POSITION FILE.csv") + FORM_OF_FILE_OPTIONS + FORM_OF_HOLD;
    insertRows.nameWords = 2;
    insertRows.summary = "inserts records from a file before the one at a position";
    insertRows.explanation = std::string("POSITION counts from 0; end is behind all. The header of the file "
                                         "names the fields of the table, all of them "
                                         "in any order; with --no-header its columns are the fields in their "
                                         "order. ") +
                             EXPLANATION_OF_FILE + EXPLANATION_OF_HOLD;
    insertRows.example = "rows insert 0 more.csv";
    insertRows.minWords = insertRows.maxWords = 2;
    insertRows.options = GetFileOptions();
    insertRows.run = RunInsertRows;
    insertRows.show = ShowInsertRows;
    commands.Add(std::move(insertRows));

    SCommand deleteRows;
    deleteRows.form = std::string("rows delete POSITION COUNT") + FORM_OF_HOLD;
    deleteRows.nameWords = 2;
    deleteRows.summary = "deletes a stretch of records";
    deleteRows.explanation = std::string("COUNT records from POSITION on, which counts from 0. The records "
                                         "behind them move up. ") +
                             EXPLANATION_OF_HOLD;
    deleteRows.example = "rows delete 2 3";
    deleteRows.minWords = deleteRows.maxWords = 2;
    deleteRows.options = {{STR_HOLD}};
    deleteRows.run = RunDeleteRows;
    deleteRows.show = ShowDeleteRows;
    commands.Add(std::move(deleteRows));

    SCommand insertFld;
    insertFld.form = std::string("field insert FILE.csv [--position N] [--type COLUMN=TYPE]") +
                     FORM_OF_FILE_OPTIONS + FORM_OF_HOLD;
    insertFld.nameWords = 2;
    insertFld.summary = "makes new items of the columns of a file";
    insertFld.explanation = std::string("The file has as many records as the table. The new fields stand at "
                                        "the end of the table, or before the N-th field, counted from 0. "
                                        "Types are inferred unless --type, which may be given several times, "
                                        "tells them. Without a header the items are called F and a number. "
                                        "Ctrl-C cancels. ") +
                            EXPLANATION_OF_FILE + EXPLANATION_OF_HOLD;
    insertFld.example = "field insert margins.csv --type margin=number";
    insertFld.minWords = insertFld.maxWords = 1;
    insertFld.options = GetFileOptions();
    insertFld.options.push_back({STR_POSITION, true});
    insertFld.options.push_back({STR_TYPE, true});
    insertFld.run = RunInsertFld;
    insertFld.show = ShowInsertFld;
    commands.Add(std::move(insertFld));

    SCommand deleteFld;
    deleteFld.form = std::string("field delete ITEM") + FORM_OF_HOLD;
    deleteFld.nameWords = 2;
    deleteFld.summary = "deletes the field of an item from the table";
    deleteFld.explanation = std::string("The item and the special buttons on it come back if it is taken "
                                        "back. The last field stays. ") +
                            EXPLANATION_OF_HOLD;
    deleteFld.example = "field delete shop";
    deleteFld.minWords = deleteFld.maxWords = 1;
    deleteFld.options = {{STR_HOLD}};
    deleteFld.run = RunDeleteFld;
    deleteFld.show = ShowDeleteFld;
    commands.Add(std::move(deleteFld));

    SCommand fldData;
    fldData.form =
        std::string("field data ITEM FILE.csv [--column NAME]") + FORM_OF_FILE_OPTIONS + FORM_OF_HOLD;
    fldData.nameWords = 2;
    fldData.summary = "replaces the values of an item by those of a file";
    fldData.explanation = std::string("By the first column, or that of the header's NAME; the file has as "
                                      "many records as the table. The type of the item stays. ") +
                          EXPLANATION_OF_FILE + EXPLANATION_OF_HOLD;
    fldData.example = "field data amount amounts.csv";
    fldData.minWords = fldData.maxWords = 2;
    fldData.options = GetFileOptions();
    fldData.options.push_back({STR_COLUMN, true});
    fldData.run = RunFldData;
    fldData.show = ShowFldData;
    commands.Add(std::move(fldData));

    SCommand fldType;
    fldType.form = std::string("field type ITEM TYPE") + FORM_OF_HOLD;
    fldType.nameWords = 2;
    fldType.summary = "reads the values of an item as another type";
    fldType.explanation =
        std::string("TYPE is ") + CHostOptions::EXPECTED_TYPE +
        ". An item of another type is a new one: it has another identifier, and none of the special buttons, "
        "which come back with the former item if the change is taken back. " +
        EXPLANATION_OF_HOLD;
    fldType.example = "field type amount text";
    fldType.minWords = fldType.maxWords = 2;
    fldType.options = {{STR_HOLD}};
    fldType.run = RunFldType;
    fldType.show = ShowFldType;
    commands.Add(std::move(fldType));

    SCommand fldForm;
    fldForm.form = std::string("field form ITEM DATAFORM") + FORM_OF_HOLD;
    fldForm.nameWords = 2;
    fldForm.summary = "reads the dates or times of an item in another form";
    fldForm.explanation = std::string("The form in which they stand in the table: what is behind date: or "
                                      "time: in a TYPE, as ymd-slash or hm. How they are shown is what "
                                      "\"form\" tells. Cll buttons with listed members on them are switched "
                                      "off. ") +
                          EXPLANATION_OF_HOLD;
    fldForm.example = "field form day dmy-hyphen";
    fldForm.minWords = fldForm.maxWords = 2;
    fldForm.options = {{STR_HOLD}};
    fldForm.run = RunFldForm;
    fldForm.show = ShowFldType;
    commands.Add(std::move(fldForm));

    SCommand pending;
    pending.form = "pending [drop]";
    pending.summary = "lists or drops the changes that are held";
    pending.explanation =
        "Changes of the table with --hold are made in a table of their own: the items go on "
        "as they are until \"refresh\".";
    pending.example = "pending";
    pending.maxWords = 1;
    pending.run = RunPending;
    pending.show = ShowPending;
    commands.Add(std::move(pending));

    SCommand refresh;
    refresh.form = "refresh";
    refresh.summary = "lets the items follow all held changes at once";
    refresh.explanation =
        "All of them are summed up and are one change, which \"undo\" takes back as a whole. "
        "Clears all selections. Ctrl-C cancels it where new items are made; the changes are "
        "held on then.";
    refresh.example = "refresh";
    refresh.run = RunRefresh;
    refresh.show = ShowRefresh;
    commands.Add(std::move(refresh));

    SCommand undo;
    undo.form = "undo";
    undo.summary = "takes back the last change of the table";
    undo.explanation = "That of a \"rows\", \"field\", \"refresh\" or \"calendar\" command, with the "
                       "selection and the limitation of the moment before it. Again takes back the change "
                       "before that.";
    undo.example = "undo";
    undo.run = RunUndo;
    undo.show = ShowUndo;
    commands.Add(std::move(undo));

    SCommand history;
    history.form = "history [clear]";
    history.summary = "lists the changes that can be taken back, or forgets them";
    history.explanation =
        "The oldest first. A change of records keeps a copy of the table, one of a field the "
        "values of that: clear gives the memory back. Saves do not keep them.";
    history.example = "history";
    history.maxWords = 1;
    history.run = RunHistory;
    history.show = ShowHistory;
    commands.Add(std::move(history));

    SCommand saveTable;
    saveTable.form = "table save FILE.csv [--replace]";
    saveTable.nameWords = 2;
    saveTable.summary = "writes the table as it is now to a file";
    saveTable.explanation =
        "Without held changes; with a header, in the code page and with the delimiter in which the table was "
        "read. The answer tells the options with which the program opens it as it is; a session that is "
        "saved "
        "now can be loaded there. A file that is there already is replaced with --replace only, in one step.";
    saveTable.example = "table save changed.csv";
    saveTable.minWords = saveTable.maxWords = 1;
    saveTable.options = {{STR_REPLACE}};
    saveTable.run = RunSaveTable;
    saveTable.show = ShowSaveTable;
    commands.Add(std::move(saveTable));
}

} // namespace NSKZ::Host
