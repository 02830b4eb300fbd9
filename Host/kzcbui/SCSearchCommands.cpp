#include "SCSearchCommands.h"

#include "CBtnLister.h"
#include "CCommandArgs.h"
#include "CCommandSet.h"
#include "CTextOutput.h"
#include "CWorkspace.h"
#include "ECCommandError.h"
#include "SCNumberText.h"
#include "SCommandContext.h"
#include "VCBtnClass.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace NSKZ::Host {

namespace {

using NSKZCore::VCBtnClass;

constexpr const char* STR_VAGUE = "--vague";
constexpr const char* STR_FIRST = "--first";
constexpr const char* STR_MAX = "--max";

struct SMatch
{
    const char* option; // of the command
    const char* name;   // in answers
    VCBtnClass::EOptionOfSearchBtnName searchOption;
};
// The first is the one without an option.
constexpr SMatch MATCHES[] = {
    {"--all-words", "all-words", VCBtnClass::SRCHBTNNAME_INCLUDE_ALL},
    {"--match", "match", VCBtnClass::SRCHBTNNAME_MATCH},
    {"--front", "front", VCBtnClass::SRCHBTNNAME_FRONT},
    {"--rear", "rear", VCBtnClass::SRCHBTNNAME_REAR},
};

struct SVagueness
{
    const char* name;
    unsigned int flag;
};
constexpr SVagueness VAGUENESSES[] = {
    {"width", VCBtnClass::SRCH_VAGUE_WIDTH},
    {"kana", VCBtnClass::SRCH_VAGUE_KANA},
    {"case", VCBtnClass::SRCH_VAGUE_CASE},
    {"macron", VCBtnClass::SRCH_VAGUE_MACRON},
};

const SMatch& ReadMatch(const CCommandArgs& args)
{
    const SMatch* chosen = nullptr;
    for (const SMatch& match : MATCHES) {
        if (!args.Has(match.option))
            continue;
        if (chosen != nullptr)
            args.Refuse(std::string(chosen->option) + " and " + match.option + " do not go together");
        chosen = &match;
    }
    return chosen != nullptr ? *chosen : MATCHES[0];
}

unsigned int ReadVagueness(const CCommandArgs& args)
{
    if (!args.Has(STR_VAGUE))
        return VCBtnClass::SRCH_NORMAL;
    const std::string list = args.GetValue(STR_VAGUE, "");
    if (list == "all")
        return VCBtnClass::SRCH_VAGUE_ALL;
    unsigned int flags = VCBtnClass::SRCH_NORMAL;
    for (std::size_t begin = 0; begin <= list.size();) {
        const std::size_t end = std::min(list.find(',', begin), list.size());
        const std::string name = list.substr(begin, end - begin);
        const auto known = std::find_if(std::begin(VAGUENESSES), std::end(VAGUENESSES),
                                        [&](const SVagueness& vagueness) { return name == vagueness.name; });
        if (known == std::end(VAGUENESSES))
            args.Refuse("A search is vague in width, kana, case, macron or all, not \"" + name + "\"");
        flags |= known->flag;
        begin = end + 1;
    }
    return flags;
}

CAnswer RunSearch(SCommandContext& context, const CCommandArgs& args)
{
    const CWorkspace& workspace = context.workspace;
    const std::size_t max = args.GetMax(context);
    const SMatch& match = ReadMatch(args);
    const unsigned int flags = ReadVagueness(args);
    if (match.searchOption != VCBtnClass::SRCHBTNNAME_INCLUDE_ALL && args.GetWords().size() > 2)
        args.Refuse("One word is searched for with " + std::string(match.option));
    const DWORD itemID = workspace.FindItem(args.GetWords()[0]);
    std::vector<std::string> texts;
    for (const std::string& word : args.GetWordsFrom(1))
        texts.push_back(workspace.ReadBtnText(word));
    std::vector<const char*> words;
    for (const std::string& text : texts)
        words.push_back(text.c_str());
    std::vector<DWORD> found;
    bool isDone = false;
    if (args.Has(STR_FIRST)) {
        std::vector<DWORD> btnIDs;
        workspace.GetEnv().GetAllBtnIDListOfBtnClass(itemID, btnIDs, true);
        isDone = workspace.GetEnv().SearchBtnsByAliasFromBtnClass(itemID, btnIDs, words, match.searchOption,
                                                                  flags, true, found);
        for (DWORD& position : found)
            position = btnIDs[position];
    } else {
        isDone =
            workspace.GetEnv().SearchBtnsByAliasFromBtnClass(itemID, words, match.searchOption, flags, found);
    }
    if (!isDone)
        throw ECCommandError("A text could not be made comparable.");
    CAnswer vague = CAnswer::array();
    for (const SVagueness& vagueness : VAGUENESSES) {
        if ((flags & vagueness.flag) != 0)
            vague.push_back(vagueness.name);
    }
    CAnswer answer;
    answer["item"] = itemID;
    answer["match"] = match.name;
    answer["vague"] = std::move(vague);
    CBtnLister(workspace, itemID).DescribeInto(answer, found, max);
    return answer;
}

void ShowSearch(SCommandContext&, const CAnswer& answer, CTextOutput& output)
{
    CBtnLister::Show(answer, output);
    output.WriteLine(SCNumberText::OfThings(answer.at("count"), "button") + " found");
}

} // namespace

void SCSearchCommands::AddTo(CCommandSet& commands)
{
    SCommand search;
    search.form = "search ITEM WORD... [--match|--front|--rear|--all-words] [--vague width,kana,case,macron] "
                  "[--first] [--max N]";
    search.summary = "the buttons of an item whose texts fit a word";
    search.explanation =
        "--all-words (so without it): every word stands somewhere in the text. --match, --front, --rear: the "
        "text is the word, begins or ends with it.\n"
        "--vague: what counts as the same: full and half width, hiragana and katakana, upper and lower case, "
        "minus signs and the long-vowel mark; several with commas, or all. With macron alone every button "
        "fits --match, --front and --rear; give it together with another one.\n"
        "Hidden buttons and those that are switched off are searched too, by identifier. --first: the first "
        "one that fits. At most 50 are shown (with --json all) unless --max tells another number (0: all).";
    search.example = "search shop \"eiyo\" --vague width,case";
    search.minWords = 2;
    search.maxWords = SCommand::ANY_NUMBER;
    search.options = {{"--match"},       {"--front"}, {"--rear"},     {"--all-words"},
                      {STR_VAGUE, true}, {STR_FIRST}, {STR_MAX, true}};
    search.run = RunSearch;
    search.show = ShowSearch;
    commands.Add(std::move(search));
}

} // namespace NSKZ::Host
