#include "SCRecordCommands.h"

#include "CBtnLister.h"
#include "CCommandArgs.h"
#include "CCommandSet.h"
#include "CSumChart.h"
#include "CTextOutput.h"
#include "CWorkspace.h"
#include "SCNameWord.h"
#include "SCNumberText.h"
#include "SCommandContext.h"
#include "VCBtnClass.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>

namespace NSKZ::Host {

namespace {

using NSKZCore::CBUIDataMngr;
using NSKZCore::CSumValueCacheMngr;
using NSKZCore::VCBtnClass;

constexpr const char* STR_LIST = "--list";
constexpr const char* STR_CLEAR = "--clear";
const std::vector<std::string> METHODS = {"sum", "count", "average"};

// ---- records, records-of

CAnswer AnswerRecs(const SCommandContext& context, const CCommandArgs& args, std::vector<DWORD> recs)
{
    const std::size_t max = args.GetMax(context);
    CAnswer answer;
    answer["count"] = recs.size();
    if (args.Has(STR_LIST)) {
        recs.resize(std::min(recs.size(), max));
        answer["list"] = recs;
    }
    return answer;
}

void ShowRecs(SCommandContext& context, const CAnswer& answer, CTextOutput& output)
{
    const std::size_t count = answer.at("count");
    output.WriteLine(SCNumberText::OfCount(count) + " of " +
                     SCNumberText::OfThings(context.workspace.GetRecCount(), "record"));
    if (!answer.contains("list"))
        return;
    std::string line;
    for (const DWORD rec : answer.at("list")) {
        const std::string number = std::to_string(rec);
        if (!line.empty() && line.size() + 1 + number.size() > output.GetLineWidth()) {
            output.WriteLine(line);
            line.clear();
        }
        line += (line.empty() ? "" : " ") + number;
    }
    if (!line.empty())
        output.WriteLine(line);
    output.WriteMore(count - answer.at("list").size());
}

CAnswer RunRecs(SCommandContext& context, const CCommandArgs& args)
{
    const CWorkspace& workspace = context.workspace;
    return AnswerRecs(context, args,
                      args.GetWords().empty()
                          ? workspace.GetTargetRecs()
                          : workspace.GetTargetRecsOfItem(workspace.FindItem(args.GetWords()[0])));
}

CAnswer RunRecsOf(SCommandContext& context, const CCommandArgs& args)
{
    const CWorkspace& workspace = context.workspace;
    const DWORD itemID = workspace.FindItem(args.GetWords()[0]);
    return AnswerRecs(context, args,
                      workspace.GetRecsOfBtns(itemID, workspace.FindBtns(itemID, args.GetWordsFrom(1))));
}

// ---- related

CAnswer RunRelated(SCommandContext& context, const CCommandArgs& args)
{
    const CWorkspace& workspace = context.workspace;
    const std::size_t max = args.GetMax(context);
    const DWORD itemID = workspace.FindItem(args.GetWords()[0]);
    const std::vector<DWORD> recs = SCNameWord::ReadRecords(args.GetWordsFrom(1), workspace.GetRecCount());
    std::vector<DWORD> btnIDs;
    workspace.GetEnv().GetBtnIDListThatRelatesToRecListFromBtnClass(itemID, static_cast<DWORD>(recs.size()),
                                                                    recs.data(), btnIDs);
    CAnswer answer;
    answer["item"] = itemID;
    CBtnLister(workspace, itemID).DescribeInto(answer, btnIDs, max);
    return answer;
}

void ShowRelated(SCommandContext&, const CAnswer& answer, CTextOutput& output)
{
    CBtnLister::Show(answer, output);
}

// ---- limit

CAnswer RunLimit(SCommandContext& context, const CCommandArgs& args)
{
    CBUIDataMngr& env = context.workspace.GetEnv();
    if (args.Has(STR_CLEAR) == !args.GetWords().empty())
        args.Refuse("Either records or --clear must be there");
    if (args.Has(STR_CLEAR)) {
        env.ClearLimitedRecList();
    } else {
        std::vector<DWORD> recs = SCNameWord::ReadRecords(args.GetWords(), context.workspace.GetRecCount());
        std::sort(recs.begin(), recs.end());
        recs.erase(std::unique(recs.begin(), recs.end()), recs.end());
        env.SetLimitedRecList(recs.data(), static_cast<DWORD>(recs.size()));
    }
    CAnswer answer;
    answer["records"] = context.workspace.GetTargetRecs().size();
    answer["limited"] = env.IsRecListLimitationExecuted();
    return answer;
}

void ShowLimit(SCommandContext& context, const CAnswer& answer, CTextOutput& output)
{
    output.WriteLine(SCNumberText::OfCount(answer.at("records")) + " of " +
                     SCNumberText::OfThings(context.workspace.GetRecCount(), "record"));
}

// ---- sum

CAnswer NumberOrNull(bool isThere, double number)
{
    return isThere && std::isfinite(number) ? CAnswer(number) : CAnswer();
}

CAnswer GetValue(const CSumValueCacheMngr& sums, const std::string& method, DWORD itemID, DWORD btnID,
                 DWORD fldID)
{
    if (method == "count") {
        DWORD count = 0;
        return sums.GetCountValue(itemID, btnID, fldID, count) ? CAnswer(count) : CAnswer();
    }
    double value = 0;
    const bool isThere = method == "sum" ? sums.GetSumValue(itemID, btnID, fldID, value)
                                         : sums.GetAverageValue(itemID, btnID, fldID, value);
    return NumberOrNull(isThere, value);
}

CAnswer RunSum(SCommandContext& context, const CCommandArgs& args)
{
    const CWorkspace& workspace = context.workspace;
    CSumValueCacheMngr& sums = workspace.GetEnv().GetSumValueCacheMngrObjRef();
    const std::string method = args.GetChoice("--method", METHODS);
    const std::size_t max = args.GetMax(context);
    const DWORD itemID = workspace.FindItem(args.GetWords()[0]);
    const DWORD fldID = workspace.FindNumFld(args.GetWords()[1]);

    std::vector<DWORD> btnIDs;
    workspace.GetEnv().GetBtnAppOrdListOfBtnClass(itemID, VCBtnClass::ORDLIST_NORMAL, btnIDs);
    CAnswer values = CAnswer::array();
    for (std::size_t i = 0; i < btnIDs.size() && i < max; ++i) {
        CAnswer value;
        value["id"] = btnIDs[i];
        value["text"] = workspace.GetBtnText(itemID, btnIDs[i]);
        value["value"] = GetValue(sums, method, itemID, btnIDs[i], fldID);
        values.push_back(std::move(value));
    }
    double total = 0;
    double totalAbsolute = 0;
    sums.ClearTotalValue(itemID); // the engine keeps totals of another display; a user wants that of the list
    const bool isTotalThere = sums.GetTotalValue(itemID, fldID, total);
    const bool isTotalAbsoluteThere = sums.GetTotalAbsoluteValue(itemID, fldID, totalAbsolute);
    CAnswer answer;
    answer["item"] = itemID;
    answer["field"] = fldID;
    answer["method"] = method;
    answer["values"] = std::move(values);
    answer["count"] = btnIDs.size();
    answer["total"] = NumberOrNull(isTotalThere, total);
    answer["totalAbsolute"] = NumberOrNull(isTotalAbsoluteThere, totalAbsolute);
    return answer;
}

void ShowSum(SCommandContext&, const CAnswer& answer, CTextOutput& output)
{
    const auto numberOf = [](const CAnswer& value) {
        return value.is_null() ? std::nan("") : value.get<double>();
    };
    CSumChart chart;
    for (const CAnswer& value : answer.at("values"))
        chart.Add(value.at("text"), numberOf(value.at("value")));
    chart.Write(output);
    output.WriteMore(answer.at("count").get<std::size_t>() - answer.at("values").size());

    const double total = numberOf(answer.at("total"));
    const double totalAbsolute = numberOf(answer.at("totalAbsolute"));
    const int decimals = SCNumberText::GetDecimals({total, totalAbsolute});
    std::string line = answer.at("method") == METHODS.front() ? "total " : "total of the sums ";
    line += SCNumberText::OfNumber(total, decimals);
    if (total != totalAbsolute)
        line += ", of the absolute values " + SCNumberText::OfNumber(totalAbsolute, decimals);
    output.WriteLine(line);
}

} // namespace

void SCRecordCommands::AddTo(CCommandSet& commands)
{
    SCommand recs;
    recs.form = "records [ITEM] [--list] [--max N]";
    recs.summary = "how many records are in force, for the whole or as one item sees them";
    recs.explanation = "An item is not narrowed by its own level: it sees the records of the level before.\n"
                       "--list: their numbers, from 0 on, in the order of the table; at most 50 (with --json "
                       "all) unless --max tells "
                       "another number (0: all).";
    recs.example = "records --list --max 10";
    recs.maxWords = 1;
    recs.options = {{STR_LIST}, {"--max", true}};
    recs.run = RunRecs;
    recs.show = ShowRecs;
    commands.Add(std::move(recs));

    SCommand recsOf;
    recsOf.form = "records-of ITEM BUTTON... [--list] [--max N]";
    recsOf.summary = "the records of buttons, whatever is selected";
    recsOf.explanation = "Those of all the buttons together. --list: their numbers.";
    recsOf.example = "records-of region East West --list";
    recsOf.minWords = 2;
    recsOf.maxWords = SCommand::ANY_NUMBER;
    recsOf.options = {{STR_LIST}, {"--max", true}};
    recsOf.run = RunRecsOf;
    recsOf.show = ShowRecs;
    commands.Add(std::move(recsOf));

    SCommand related;
    related.form = "related ITEM RECORD... [--max N]";
    related.summary = "the buttons of an item that records carry";
    related.explanation =
        "Each button once, in the order of the records. A stretch of records is written as 10-19.";
    related.example = "related region 0 5 10-19";
    related.minWords = 2;
    related.maxWords = SCommand::ANY_NUMBER;
    related.options = {{"--max", true}};
    related.run = RunRelated;
    related.show = ShowRelated;
    commands.Add(std::move(related));

    SCommand limit;
    limit.form = "limit RECORD...|--clear";
    limit.summary = "limits everything to some records, or lifts the limitation";
    limit.explanation =
        "Buttons without a record among them are hidden, and every selection starts from them. All "
        "selections are cleared. Records are numbered from 0; a stretch of them is written as 10-19.";
    limit.example = "limit 0-999 1500";
    limit.maxWords = SCommand::ANY_NUMBER;
    limit.options = {{STR_CLEAR}};
    limit.run = RunLimit;
    limit.show = ShowLimit;
    commands.Add(std::move(limit));

    SCommand sum;
    sum.form = "sum ITEM FIELD [--method sum|count|average] [--max N]";
    sum.summary = "what a number item holds for each displayed button, with bars";
    sum.explanation =
        "Over the records of the button that the item stands on. FIELD is an item of type number. "
        "count: how many numbers there are; average: the sum divided by the count. Empty cells take no "
        "part.\n"
        "The totals are those of the sums of all displayed buttons, and of their absolute values, with "
        "each method.";
    sum.example = "sum region amount --method average";
    sum.minWords = sum.maxWords = 2;
    sum.options = {{"--method", true}, {"--max", true}};
    sum.run = RunSum;
    sum.show = ShowSum;
    commands.Add(std::move(sum));
}

} // namespace NSKZ::Host
