#include "SCDateCommands.h"

#include "CCommandArgs.h"
#include "CCommandSet.h"
#include "CTextOutput.h"
#include "CWorkspace.h"
#include "ECCommandError.h"
#include "SCDispForm.h"
#include "SCEnvChange.h"
#include "SCHeldChanges.h"
#include "SCHostText.h"
#include "SCNameWord.h"
#include "SCNumberText.h"
#include "SCTypedDate.h"
#include "SRecordList.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace NSKZ::Host {

namespace {

using NSKZCore::CBUIDataMngr;
using NSKZCore::CDateGroupMap;
using NSKZCore::SCBUICoreCom;
using NSKZCore::SCDeclareConstant;
using NSKZCore::SCDispForm;
using NSKZCore::SCKZCoreCom;
using NSKZCore::VCDate;

constexpr const char* STR_PATTERN = "--pattern";
constexpr const char* STR_STARTMONTH = "--start-month";
constexpr const char* STR_CUTOFFDAY = "--cut-off-day";
constexpr const char* STR_WEEKBEGINS = "--week-begins";
constexpr const char* STR_LIST = "--list";
constexpr const char* STR_MAX = "--max";

// In the order of the enumeration, from Sunday on.
const std::vector<std::string> NAMES_OF_DAYS = {"sunday",   "monday", "tuesday", "wednesday",
                                                "thursday", "friday", "saturday"};

struct SDateTypeName
{
    const char* name;
    VCDate::EDateType type;
};
constexpr SDateTypeName PARTS_OF_DATES[] = {
    {"year", VCDate::DATETYPE_GRGYEAR},
    {"japanese-year", VCDate::DATETYPE_JPNYEAR},
    {"month", VCDate::DATETYPE_MONTH},
    {"day", VCDate::DATETYPE_DAY},
    {"fiscal-year", VCDate::DATETYPE_FISCALGRGYEAR},
    {"japanese-fiscal-year", VCDate::DATETYPE_FISCALJPNYEAR},
    {"fiscal-month", VCDate::DATETYPE_FISCALMONTH},
    {"fiscal-half", VCDate::DATETYPE_HALFTERM},
    {"fiscal-quarter", VCDate::DATETYPE_QUARTERTERM},
    {"week-of-year", VCDate::DATETYPE_WEEKOFYEAR},
    {"week-of-month", VCDate::DATETYPE_WEEKOFMONTH},
    {"week-of-fiscal-year", VCDate::DATETYPE_WEEKOFFISCALYEAR},
    {"week-of-fiscal-month", VCDate::DATETYPE_WEEKOFFISCALMONTH},
    {"weekday", VCDate::DATETYPE_DAYSOFWEEK},
};
constexpr SDateTypeName PARTS_OF_TIMES[] = {
    {"hour", VCDate::DATETYPE_HOUR},
    {"minute", VCDate::DATETYPE_MINUTE},
    {"second", VCDate::DATETYPE_SECOND},
    {"morning-afternoon", VCDate::DATETYPE_TIMEBASEDONNOON},
};

struct SOperatorName
{
    const char* name;
    SCKZCoreCom::ECmpOperator cmpOperator;
};
constexpr SOperatorName OPERATORS[] = {
    {"=", SCKZCoreCom::CMPOPERATOR_EQUAL},   {"!=", SCKZCoreCom::CMPOPERATOR_NOTEQUAL},
    {"<", SCKZCoreCom::CMPOPERATOR_LESS},    {"<=", SCKZCoreCom::CMPOPERATOR_LESSEQUAL},
    {">", SCKZCoreCom::CMPOPERATOR_GREATER}, {">=", SCKZCoreCom::CMPOPERATOR_GREATEREQUAL},
};

template <class TNamed>
std::string JoinNames(const TNamed& named)
{
    std::string names;
    for (const auto& entry : named)
        names += (names.empty() ? "" : ", ") + std::string(entry.name);
    return names;
}

// What dates and times have in common for a command.
struct SDateForms
{
    using SDispForm = SCDeclareConstant::SDateDispForm;
    using STypeInfo = SCDeclareConstant::SDateTypeInfo;
    static constexpr const char* TYPE = "date";
    static auto GetForms() { return SCDispForm::GetDateForms(); }
    static bool Find(const std::string& name, SDispForm& form)
    {
        return SCDispForm::FindDateForm(name, form);
    }
    static bool FindName(const SDispForm& form, const char*& name)
    {
        return SCDispForm::FindNameOfDateForm(form, name);
    }
    static bool MakeOptional(const std::string& pattern, SDispForm& form, const char*& reason)
    {
        return SCDispForm::MakeOptionalDateForm(pattern, form, reason);
    }
    static bool Get(const CBUIDataMngr& env, DWORD itemID, SDispForm& form)
    {
        return env.GetDispFormOfDateBtnClass(itemID, form);
    }
    static bool Set(CBUIDataMngr& env, DWORD itemID, const SDispForm& form)
    {
        return env.SetDispFormOfDateBtnClass(itemID, form);
    }
    static DWORD GetOption(const SDispForm& form) { return form.option; }
};
struct STimeForms
{
    using SDispForm = SCDeclareConstant::STimeDispForm;
    using STypeInfo = SCDeclareConstant::STimeTypeInfo;
    static constexpr const char* TYPE = "time";
    static auto GetForms() { return SCDispForm::GetTimeForms(); }
    static bool Find(const std::string& name, SDispForm& form)
    {
        return SCDispForm::FindTimeForm(name, form);
    }
    static bool FindName(const SDispForm& form, const char*& name)
    {
        return SCDispForm::FindNameOfTimeForm(form, name);
    }
    static bool MakeOptional(const std::string& pattern, SDispForm& form, const char*& reason)
    {
        return SCDispForm::MakeOptionalTimeForm(pattern, form, reason);
    }
    static bool Get(const CBUIDataMngr& env, DWORD itemID, SDispForm& form)
    {
        return env.GetDispFormOfTimeBtnClass(itemID, form);
    }
    static bool Set(CBUIDataMngr& env, DWORD itemID, const SDispForm& form)
    {
        return env.SetDispFormOfTimeBtnClass(itemID, form);
    }
    static DWORD GetOption(const SDispForm&) { return 0; }
};

template <class TForms>
std::string MakeExample(const typename TForms::SDispForm& form)
{
    typename TForms::STypeInfo info;
    info.dispForm = form;
    return SCHostText::FromEngine(SCDispForm::MakeExample(info).c_str());
}

// Runs `run` with the SDateForms or STimeForms of an item; throws ECCommandError for one of another type.
template <class TRun>
CAnswer WithForms(const CWorkspace& workspace, DWORD itemID, const TRun& run)
{
    SCBUICoreCom::EBtnClassType type = SCBUICoreCom::BTNCLSTYPE_NORMAL;
    workspace.GetEnv().GetTypeOfBtnClass(itemID, type);
    if (type == SCBUICoreCom::BTNCLSTYPE_DATE)
        return run(SDateForms());
    if (type == SCBUICoreCom::BTNCLSTYPE_TIME)
        return run(STimeForms());
    throw ECCommandError("The item \"" + workspace.GetItemName(itemID) +
                         "\" is neither of dates nor of times.");
}

void RequireDates(const CWorkspace& workspace, DWORD itemID)
{
    SCBUICoreCom::EBtnClassType type = SCBUICoreCom::BTNCLSTYPE_NORMAL;
    workspace.GetEnv().GetTypeOfBtnClass(itemID, type);
    if (type != SCBUICoreCom::BTNCLSTYPE_DATE)
        throw ECCommandError("The item \"" + workspace.GetItemName(itemID) + "\" is not of dates.");
}

// ---- form

template <class TForms>
CAnswer DescribeForm(const CWorkspace& workspace, DWORD itemID)
{
    typename TForms::SDispForm form;
    TForms::Get(workspace.GetEnv(), itemID, form);
    const bool isSet = form.kind != SCDeclareConstant::UNSETTING;
    const char* name = nullptr;
    DWORD groupCount = 0;
    workspace.GetEnv().GetSystemMngrSpBtnCountOfBtnClass(itemID, groupCount);
    CAnswer answer;
    answer["item"] = itemID;
    answer["type"] = TForms::TYPE;
    answer["form"] = isSet && TForms::FindName(form, name) ? CAnswer(name) : CAnswer();
    answer["kind"] = isSet ? CAnswer(form.kind) : CAnswer();
    answer["code"] = isSet ? CAnswer(form.form) : CAnswer();
    answer["option"] = isSet ? CAnswer(TForms::GetOption(form)) : CAnswer();
    answer["pattern"] = SCHostText::FromEngine(form.optionalForm);
    answer["example"] = isSet ? CAnswer(MakeExample<TForms>(form)) : CAnswer();
    answer["groups"] = groupCount;
    return answer;
}

template <class TForms>
typename TForms::SDispForm ReadForm(const CWorkspace& workspace, const CCommandArgs& args)
{
    typename TForms::SDispForm form;
    if (args.Has(STR_PATTERN)) {
        const char* reason = nullptr;
        if (!TForms::MakeOptional(workspace.ReadBtnText(args.GetValue(STR_PATTERN, "")), form, reason))
            throw ECCommandError("The pattern is refused: " + std::string(reason));
        return form;
    }
    const std::string& name = args.GetWords()[1];
    if (!TForms::Find(name, form)) {
        throw ECCommandError("There is no form \"" + name + "\" for a " + TForms::TYPE +
                             "; \"forms\" lists them.");
    }
    return form;
}

CAnswer RunForm(SCommandContext& context, const CCommandArgs& args)
{
    const CWorkspace& workspace = context.workspace;
    const DWORD itemID = workspace.FindItem(args.GetWords()[0]);
    const bool hasName = args.GetWords().size() > 1;
    if (hasName && args.Has(STR_PATTERN))
        args.Refuse("A form and --pattern do not go together");
    return WithForms(workspace, itemID, [&](auto forms) {
        using TForms = decltype(forms);
        if (!hasName && !args.Has(STR_PATTERN))
            return DescribeForm<TForms>(workspace, itemID);
        const auto form = ReadForm<TForms>(workspace, args);
        const bool wasSelective = workspace.GetEnv().IsBtnSelectiveState();
        const bool isSet =
            SCEnvChange::Run(context, [&](CBUIDataMngr& env) { return TForms::Set(env, itemID, form); });
        if (!isSet)
            throw ECCommandError("The engine did not take the form.");
        CAnswer answer = DescribeForm<TForms>(workspace, itemID);
        answer["records"] = workspace.GetTargetRecs().size();
        answer["clearedSelection"] = wasSelective && !workspace.GetEnv().IsBtnSelectiveState();
        return answer;
    });
}

void ShowForm(SCommandContext& context, const CAnswer& answer, CTextOutput& output)
{
    const std::string name = context.workspace.GetItemName(answer.at("item"));
    if (answer.at("kind").is_null()) {
        output.WriteLine(name + " has no display form yet; \"forms\" lists them.");
        return;
    }
    const std::string pattern = answer.at("pattern");
    output.WriteTable(
        {{"item"}, {"form"}, {"pattern"}, CTextOutput::SColumn::Uncut("for example"), {"groups", true}},
        {{{name, answer.at("form").is_null() ? "-" : answer.at("form").get<std::string>(), pattern,
           answer.at("example"), SCNumberText::OfCount(answer.at("groups"))}}});
    if (answer.value("clearedSelection", false))
        output.WriteLine("All selections were cleared.");
}

// ---- forms

template <class TForms>
void AddForms(CAnswer& forms)
{
    for (const SCDispForm::SNamedForm& named : TForms::GetForms()) {
        typename TForms::SDispForm form;
        TForms::Find(named.name, form);
        CAnswer described;
        described["type"] = TForms::TYPE;
        described["form"] = named.name;
        described["kind"] = named.kind;
        described["code"] = named.form;
        described["option"] = named.option;
        described["pattern"] = named.optionalForm;
        described["example"] = MakeExample<TForms>(form);
        forms.push_back(std::move(described));
    }
}

CAnswer RunForms(SCommandContext&, const CCommandArgs& args)
{
    const std::string type = args.GetWords().empty() ? "" : args.GetWords()[0];
    if (!type.empty() && type != "date" && type != "time")
        args.Refuse("There are forms of date and of time, not of \"" + type + "\"");
    CAnswer forms = CAnswer::array();
    if (type != "time")
        AddForms<SDateForms>(forms);
    if (type != "date")
        AddForms<STimeForms>(forms);
    CAnswer answer;
    answer["forms"] = std::move(forms);
    return answer;
}

void ShowForms(SCommandContext&, const CAnswer& answer, CTextOutput& output)
{
    std::vector<CTextOutput::SRow> rows;
    for (const CAnswer& form : answer.at("forms"))
        rows.push_back({{form.at("type"), form.at("form"), form.at("pattern"), form.at("example")}});
    output.WriteTable({{""}, {"form"}, {"pattern"}, CTextOutput::SColumn::Uncut("for example")}, rows);
}

// ---- calendar

DWORD ReadNumberOption(const CCommandArgs& args, const char* option, DWORD present, DWORD last)
{
    if (!args.Has(option))
        return present;
    DWORD number = 0;
    const std::string word = args.GetValue(option, "");
    if (!SCNameWord::ReadNumber(word, number) || number < 1 || number > last) {
        args.Refuse(std::string(option) + " wants a number from 1 to " + std::to_string(last) + ", not \"" +
                    word + "\"");
    }
    return number;
}

CAnswer RunCalendar(SCommandContext& context, const CCommandArgs& args)
{
    CWorkspace& workspace = context.workspace;
    const CWorkspace::SCalendar present = workspace.GetCalendar();
    CWorkspace::SCalendar wanted = present;
    wanted.startMonth = ReadNumberOption(args, STR_STARTMONTH, present.startMonth, VCDate::MONTHCNT_OF_YEAR);
    wanted.cutOffDay = ReadNumberOption(args, STR_CUTOFFDAY, present.cutOffDay, VCDate::MAXDAY_OF_MONTH);
    if (args.Has(STR_WEEKBEGINS)) {
        const std::string day = args.GetChoice(STR_WEEKBEGINS, NAMES_OF_DAYS);
        wanted.firstDayOfWeek = static_cast<VCDate::EDaysOfTheWeek>(
            std::find(NAMES_OF_DAYS.begin(), NAMES_OF_DAYS.end(), day) - NAMES_OF_DAYS.begin());
    }
    const bool changes = args.Has(STR_STARTMONTH) || args.Has(STR_CUTOFFDAY) || args.Has(STR_WEEKBEGINS);
    const bool wasSelective = workspace.GetEnv().IsBtnSelectiveState();
    if (changes) {
        SCHeldChanges::RequireNone(workspace, "The calendar cannot change beside the table");
        workspace.SetCalendar(wanted, context.line);
        context.hasDone = true;
    }
    CAnswer answer;
    answer["startMonth"] = wanted.startMonth;
    answer["cutOffDay"] = wanted.cutOffDay;
    answer["weekBegins"] = NAMES_OF_DAYS[wanted.firstDayOfWeek];
    if (changes) {
        answer["records"] = workspace.GetTargetRecs().size();
        answer["clearedSelection"] = wasSelective;
    }
    return answer;
}

void ShowCalendar(SCommandContext&, const CAnswer& answer, CTextOutput& output)
{
    output.WriteTable({{""}, {""}},
                      {{{"fiscal years begin in month", SCNumberText::OfCount(answer.at("startMonth"))}},
                       {{"fiscal months end on day", SCNumberText::OfCount(answer.at("cutOffDay"))}},
                       {{"weeks begin on", answer.at("weekBegins")}}});
    if (answer.value("clearedSelection", false))
        output.WriteLine("All selections were cleared.");
}

// ---- groups

CAnswer RunGroups(SCommandContext& context, const CCommandArgs& args)
{
    const CWorkspace& workspace = context.workspace;
    const CBUIDataMngr& env = workspace.GetEnv();
    const std::size_t max = args.GetMax(context);
    const DWORD itemID = workspace.FindItem(args.GetWords()[0]);
    const std::string& name = args.GetWords()[1];
    SCBUICoreCom::EBtnClassType itemType = SCBUICoreCom::BTNCLSTYPE_NORMAL;
    env.GetTypeOfBtnClass(itemID, itemType);
    const bool isTime = itemType == SCBUICoreCom::BTNCLSTYPE_TIME;
    if (!isTime)
        RequireDates(workspace, itemID);
    const auto* const begin = isTime ? std::begin(PARTS_OF_TIMES) : std::begin(PARTS_OF_DATES);
    const auto* const end = isTime ? std::end(PARTS_OF_TIMES) : std::end(PARTS_OF_DATES);
    const auto* const part =
        std::find_if(begin, end, [&name](const SDateTypeName& known) { return name == known.name; });
    if (part == end) {
        throw ECCommandError("The item is grouped by " +
                             (isTime ? JoinNames(PARTS_OF_TIMES) : JoinNames(PARTS_OF_DATES)) +
                             ", not by \"" + name + "\".");
    }
    CDateGroupMap groups;
    if (isTime)
        env.GetGroupedBtnIDListsOfTimeBtnClass(itemID, part->type, groups);
    else
        env.GetGroupedBtnIDListsOfDateBtnClass(itemID, part->type, groups);
    CAnswer described = CAnswer::array();
    for (const auto& [number, group] : groups) {
        if (described.size() >= max)
            break;
        CAnswer entry;
        entry["number"] = number;
        entry["date"] = SCTypedDate::Write(*group.date);
        entry["buttons"] = group.btnIDList;
        entry["records"] = workspace.GetRecsOfBtns(itemID, group.btnIDList).size();
        described.push_back(std::move(entry));
    }
    CAnswer answer;
    answer["item"] = itemID;
    answer["by"] = name;
    answer["groups"] = std::move(described);
    answer["count"] = groups.size();
    return answer;
}

void ShowGroups(SCommandContext&, const CAnswer& answer, CTextOutput& output)
{
    std::vector<CTextOutput::SRow> rows;
    for (const CAnswer& group : answer.at("groups")) {
        rows.push_back({{group.at("date"), SCNumberText::OfCount(group.at("buttons").size()),
                         SCNumberText::OfCount(group.at("records"))}});
    }
    output.WriteTable({{answer.at("by").get<std::string>()}, {"buttons", true}, {"records", true}}, rows);
    output.WriteMore(answer.at("count").get<std::size_t>() - rows.size());
}

// ---- dates

CAnswer RunDates(SCommandContext& context, const CCommandArgs& args)
{
    const CWorkspace& workspace = context.workspace;
    const CBUIDataMngr& env = workspace.GetEnv();
    const DWORD itemID = workspace.FindItem(args.GetWords()[0]);
    RequireDates(workspace, itemID);
    const std::string& operatorWord = args.GetWords()[1];
    const auto* const known = std::find_if(
        std::begin(OPERATORS), std::end(OPERATORS),
        [&operatorWord](const SOperatorName& candidate) { return operatorWord == candidate.name; });
    if (known == std::end(OPERATORS))
        args.Refuse("A date is compared by " + JoinNames(OPERATORS) + ", not by \"" + operatorWord + "\"");
    const std::unique_ptr<VCDate> date = SCTypedDate::Read(args.GetWords()[2]);
    if (date == nullptr) {
        throw ECCommandError("\"" + args.GetWords()[2] + "\" is no date; expected is " +
                             SCTypedDate::EXPECTED + ".");
    }
    std::vector<DWORD> btnIDs;
    if (!env.GetGroupedBtnIDListOfDateBtnClass(itemID, *date, known->cmpOperator, btnIDs)) {
        throw ECCommandError("The dates of the item cannot be compared with " + args.GetWords()[2] +
                             ": there are none, or they do not tell as much.");
    }
    std::vector<DWORD> recs(workspace.GetRecCount());
    NSKZCore::SRecordList recList{recs.data(), 0};
    env.GetGroupedRecListOfDateBtnClass(itemID, *date, known->cmpOperator, recList);
    recs.resize(recList.recCount);
    CAnswer answer;
    answer["item"] = itemID;
    answer["operator"] = operatorWord;
    answer["date"] = SCTypedDate::Write(*date);
    answer["buttons"] = btnIDs;
    answer["count"] = recs.size();
    if (args.Has(STR_LIST))
        answer["list"] = recs;
    return answer;
}

void ShowDates(SCommandContext& context, const CAnswer& answer, CTextOutput& output)
{
    output.WriteLine(SCNumberText::OfThings(answer.at("buttons").size(), "button") + ", " +
                     SCNumberText::OfCount(answer.at("count")) + " of " +
                     SCNumberText::OfThings(context.workspace.GetRecCount(), "record"));
    if (!answer.contains("list"))
        return;
    std::string line;
    for (const CAnswer& rec : answer.at("list"))
        line += (line.empty() ? "" : " ") + std::to_string(rec.get<DWORD>());
    output.WriteLine(line);
}

// ---- latest

CAnswer RunLatest(SCommandContext& context, const CCommandArgs& args)
{
    const CWorkspace& workspace = context.workspace;
    const CBUIDataMngr& env = workspace.GetEnv();
    const DWORD itemID = workspace.FindItem(args.GetWords()[0]);
    RequireDates(workspace, itemID);
    std::vector<DWORD> recs = args.GetWords().size() > 1
                                  ? SCNameWord::ReadRecords(args.GetWordsFrom(1), workspace.GetRecCount())
                                  : workspace.GetTargetRecs();
    std::sort(recs.begin(), recs.end());
    recs.erase(std::unique(recs.begin(), recs.end()), recs.end());
    const VCDate* latest = nullptr;
    DWORD recNum = 0;
    unsigned long long number = 0;
    CAnswer answer;
    answer["item"] = itemID;
    answer["date"] =
        env.GetLatestDateOfDateBtnClass(itemID, latest) ? CAnswer(SCTypedDate::Write(*latest)) : CAnswer();
    const bool hasRec = env.GetLatestRecNumOfDateBtnClass(itemID, recs.data(),
                                                          static_cast<DWORD>(recs.size()), recNum, number);
    answer["record"] = hasRec ? CAnswer(recNum) : CAnswer();
    answer["number"] = hasRec ? CAnswer(number) : CAnswer();
    return answer;
}

void ShowLatest(SCommandContext&, const CAnswer& answer, CTextOutput& output)
{
    output.WriteLine(answer.at("date").is_null()
                         ? "The item has no date."
                         : "The latest date is " + answer.at("date").get<std::string>() + ".");
    output.WriteLine(answer.at("record").is_null()
                         ? "None of the records has a date."
                         : "The last record with the latest date among them is " +
                               std::to_string(answer.at("record").get<DWORD>()) + ".");
}

// ---- symbols

CAnswer RunSymbols(SCommandContext& context, const CCommandArgs&)
{
    std::map<DWORD, std::string> symbols;
    context.workspace.GetEnv().GetSymbolListOfDateBtnClasses(symbols);
    CAnswer described = CAnswer::array();
    for (const auto& [itemID, symbol] : symbols) {
        if (!context.workspace.IsItem(itemID))
            continue;
        CAnswer entry;
        entry["item"] = itemID;
        entry["symbol"] = symbol;
        described.push_back(std::move(entry));
    }
    CAnswer answer;
    answer["symbols"] = std::move(described);
    return answer;
}

void ShowSymbols(SCommandContext& context, const CAnswer& answer, CTextOutput& output)
{
    std::vector<CTextOutput::SRow> rows;
    for (const CAnswer& entry : answer.at("symbols"))
        rows.push_back({{entry.at("symbol"), context.workspace.GetItemName(entry.at("item"))}});
    output.WriteTable({{"symbol"}, {"item"}}, rows);
}

} // namespace

void SCDateCommands::AddTo(CCommandSet& commands)
{
    SCommand form;
    form.form = "form ITEM [FORM] [--pattern PATTERN]";
    form.summary = "shows or sets how the dates or times of an item are grouped and shown";
    form.explanation =
        "The engine makes a cll button for each group, which it manages itself. \"forms\" lists "
        "the forms, each with what it shows for 15 July 2024 or 13:05:09. --pattern: a text with "
        "placeholders in braces, as \"{yyyy}-{mm}\"; of dates {yyyy} {yy} {ggg} {gg} {g} {e} {ee} "
        "{E} {m} {mm} {d} {dd}, of times {h} {hh} {h12} {hh12} {AM/PM} {ap} {n} {nn} {s} {ss}.\n"
        "Setting another form clears all selections.";
    form.example = "form day fiscal-quarter";
    form.minWords = 1;
    form.maxWords = 2;
    form.options = {{STR_PATTERN, true}};
    form.run = RunForm;
    form.show = ShowForm;
    commands.Add(std::move(form));

    SCommand forms;
    forms.form = "forms [date|time]";
    forms.summary = "the forms in which dates and times are grouped and shown";
    forms.explanation = "With the text that each makes of Monday, 15 July 2024, or of 13:05:09; fiscal years "
                        "are from April there.";
    for (const SCDispForm::SNamedForm& named : SCDispForm::GetDateForms()) {
        SDateForms::SDispForm dispForm;
        SDateForms::Find(named.name, dispForm);
        forms.explanation += "\n  " + std::string(named.name) + ": " + MakeExample<SDateForms>(dispForm);
    }
    forms.explanation += "\nOf times:";
    for (const SCDispForm::SNamedForm& named : SCDispForm::GetTimeForms()) {
        STimeForms::SDispForm dispForm;
        STimeForms::Find(named.name, dispForm);
        forms.explanation += "\n  " + std::string(named.name) + ": " + MakeExample<STimeForms>(dispForm);
    }
    forms.example = "forms time";
    forms.maxWords = 1;
    forms.run = RunForms;
    forms.show = ShowForms;
    commands.Add(std::move(forms));

    SCommand calendar;
    calendar.form = "calendar [--start-month N] [--cut-off-day N] [--week-begins DAY]";
    calendar.summary = "shows or sets by what dates are counted into fiscal terms and weeks";
    calendar.explanation =
        "The month in which fiscal years begin (at first 4), the day on which fiscal months "
        "end (31, the last day), and the day that begins a week (sunday). Setting groups all "
        "dates anew and clears all selections; \"undo\" takes it back.";
    calendar.example = "calendar --start-month 10 --week-begins monday";
    calendar.options = {{STR_STARTMONTH, true}, {STR_CUTOFFDAY, true}, {STR_WEEKBEGINS, true}};
    calendar.run = RunCalendar;
    calendar.show = ShowCalendar;
    commands.Add(std::move(calendar));

    SCommand groups;
    groups.form = "groups ITEM PART [--max N]";
    groups.summary = "the buttons of dates or times by a part of these";
    groups.explanation = "Whatever the form. Of dates PART is one of " + JoinNames(PARTS_OF_DATES) +
                         "; of times one of " + JoinNames(PARTS_OF_TIMES) + ".";
    groups.example = "groups day weekday";
    groups.minWords = groups.maxWords = 2;
    groups.options = {{STR_MAX, true}};
    groups.run = RunGroups;
    groups.show = ShowGroups;
    commands.Add(std::move(groups));

    SCommand dates;
    dates.form = "dates ITEM OPERATOR DATE [--list]";
    dates.summary = "the buttons and records whose dates stand in a relation to a date";
    dates.explanation = "OPERATOR is one of " + JoinNames(OPERATORS) + "; DATE is " + SCTypedDate::EXPECTED +
                        ". A date is equal to the month, the year or the term that it lies in. --list: the "
                        "numbers of the records too.";
    dates.example = "dates day \">=\" 2024-07";
    dates.minWords = dates.maxWords = 3;
    dates.options = {{STR_LIST}};
    dates.run = RunDates;
    dates.show = ShowDates;
    commands.Add(std::move(dates));

    SCommand latest;
    latest.form = "latest ITEM [RECORD...]";
    latest.summary = "the latest date of an item, and the last record that has it";
    latest.explanation = "The record is looked for among the listed ones, or else among those in force.";
    latest.example = "latest day 0-9";
    latest.minWords = 1;
    latest.maxWords = SCommand::ANY_NUMBER;
    latest.run = RunLatest;
    latest.show = ShowLatest;
    commands.Add(std::move(latest));

    SCommand symbols;
    symbols.form = "symbols";
    symbols.summary = "the symbols of the items of dates";
    symbols.explanation = "By which other programs name them.";
    symbols.example = "symbols";
    symbols.run = RunSymbols;
    symbols.show = ShowSymbols;
    commands.Add(std::move(symbols));
}

} // namespace NSKZ::Host
