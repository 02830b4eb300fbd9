#include "CCompleter.h"

#include "CCommandSet.h"
#include "CWorkspace.h"
#include "ECCommandError.h"
#include "SCDispForm.h"
#include "SCFldType.h"
#include "SCNameWord.h"
#include "SCShownText.h"
#include "SCWordSplit.h"

#include <algorithm>
#include <cctype>
#include <map>

namespace NSKZ::Host {

namespace {

using NSKZCore::SCDeclareConstant;
using NSKZCore::SCFldType;

// Where the last word of the line begins; the end of the line if a blank is there.
std::size_t FindLastWord(const std::string& line)
{
    std::size_t begin = 0;
    char quote = 0;
    for (std::size_t pos = 0; pos < line.size(); ++pos) {
        const char character = line[pos];
        if (character == '\\' && quote != '\'') {
            ++pos;
        } else if (quote != 0) {
            if (character == quote)
                quote = 0;
        } else if (character == '\'' || character == '"') {
            quote = character;
        } else if (character == ' ' || character == '\t') {
            begin = pos + 1;
        }
    }
    return begin;
}

// What a command's form says of the places of its plain words and of the values of its options.
struct SPlaces
{
    std::vector<std::string> ofWords;
    std::map<std::string, std::string> ofOptions;
};

SPlaces ReadForm(const SCommand& command)
{
    SPlaces places;
    const std::vector<std::string> words = SCWordSplit::Split(command.form);
    for (std::size_t i = command.nameWords; i < words.size(); ++i) {
        if (!words[i].starts_with("[--")) {
            places.ofWords.push_back(words[i]);
        } else if (!words[i].ends_with(']') && i + 1 < words.size()) {
            const std::string option = words[i].substr(1);
            places.ofOptions[option] = words[++i];
        }
    }
    return places;
}

// The form's word for the plain word at `position`.
std::string GetPlace(const SPlaces& places, std::size_t position)
{
    if (places.ofWords.empty())
        return {};
    if (position < places.ofWords.size())
        return places.ofWords[position];
    return places.ofWords.back().find("...") != std::string::npos ? places.ofWords.back() : std::string();
}

// "[BUTTON...|--none]" as "BUTTON" and "--none".
std::vector<std::string> GetAlternatives(std::string place)
{
    std::erase_if(place,
                  [](char character) { return character == '[' || character == ']' || character == '.'; });
    std::replace(place.begin(), place.end(), '|', ' ');
    return SCWordSplit::Split(place);
}

// Takes the options and their values out of the words.
void EraseOptions(const SCommand& command, std::vector<std::string>& words)
{
    std::vector<std::string> plainWords;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (!words[i].starts_with("--"))
            plainWords.push_back(words[i]);
        else if (command.TakesValue(words[i]))
            ++i;
    }
    words = std::move(plainWords);
}

// The quote that the word at `wordBegin` begins with, or 0.
char GetQuote(const std::string& line, std::size_t wordBegin)
{
    const char first = wordBegin < line.size() ? line[wordBegin] : '\0';
    return first == '\'' || first == '"' ? first : '\0';
}

// The word for what shows `text`: its identifier where the text holds control characters, which nobody can
// type.
std::string WriteWord(const std::string& text, DWORD id, char mark, char quote)
{
    return SCShownText::Escape(text) != text ? SCNameWord::WriteID(id, mark)
                                             : SCWordSplit::Quote(SCNameWord::Write(text, mark), quote);
}

} // namespace

CCompleter::CCompleter(const CWorkspace& workspaceOfHost, const CCommandSet& commandsOfHost)
    : workspace(workspaceOfHost), commands(commandsOfHost)
{}

std::vector<std::string> CCompleter::GetWords(const std::string& line, std::size_t& wordBegin) const
{
    wordBegin = FindLastWord(line);
    std::vector<std::string> before;
    try {
        before = SCWordSplit::Split(std::string_view(line).substr(0, wordBegin));
    } catch (const ECCommandError&) {
        return {};
    }
    const bool isBehindHelp = !before.empty() && before.front() == "help";
    if (isBehindHelp)
        before.erase(before.begin());
    if (before.empty())
        return GetFirstWords();
    std::vector<std::string> words;
    const auto command = std::find_if(commands.GetAll().begin(), commands.GetAll().end(),
                                      [&before](const SCommand& each) { return each.IsNamedBy(before); });
    if (command == commands.GetAll().end()) {
        if (before.size() == 1) {
            for (const SCommand* const ofGroup : commands.GetGroup(before.front()))
                words.push_back(ofGroup->GetName().substr(before.front().size() + 1));
        }
        return words;
    }
    if (isBehindHelp)
        return {};
    if (line.compare(wordBegin, 2, "--") == 0) {
        for (const SCommand::SOption& option : command->options)
            words.push_back(option.name);
        return words;
    }
    const SPlaces places = ReadForm(*command);
    const char quote = GetQuote(line, wordBegin);
    if (command->TakesValue(before.back())) {
        const auto place = places.ofOptions.find(before.back());
        return place != places.ofOptions.end() ? GetWordsOfPlace(place->second, {}, quote) : words;
    }
    before.erase(before.begin(), before.begin() + static_cast<std::ptrdiff_t>(command->nameWords));
    const auto of = std::find(before.begin(), before.end(), "--of");
    std::string itemOfBtns = of != before.end() && of + 1 != before.end() ? *(of + 1) : "";
    EraseOptions(*command, before);
    if (itemOfBtns.empty() && before.size() > 1 && places.ofWords.at(1) == "SPECIAL")
        itemOfBtns = GetItemOfMembers(before[0], before[1]);
    if (!itemOfBtns.empty() && GetPlace(places, before.size()).find("BUTTON") != std::string::npos)
        before[0] = itemOfBtns;
    return GetWordsOfPlace(GetPlace(places, before.size()), before, quote);
}

std::vector<std::string> CCompleter::GetFirstWords() const
{
    std::vector<std::string> words;
    for (const SCommand& command : commands.GetAll()) {
        const std::string name = command.GetName();
        std::string first = name.substr(0, name.find(' '));
        if (words.empty() || words.back() != first)
            words.push_back(std::move(first));
    }
    return words;
}

std::vector<std::string> CCompleter::GetWordsOfPlace(const std::string& place,
                                                     const std::vector<std::string>& before, char quote) const
{
    std::vector<std::string> words;
    for (const std::string& alternative : GetAlternatives(place)) {
        std::vector<std::string> offered;
        if (alternative == "ITEM")
            offered = GetItems(false, quote);
        else if (alternative == "FIELD")
            offered = GetItems(true, quote);
        else if (alternative == "BUTTON")
            offered = GetBtns(before.at(0), BTNS_DISPLAYED, quote);
        else if (alternative == "SPECIAL")
            offered = GetBtns(before.at(0), BTNS_SPECIAL, quote);
        else if (alternative == "MEMBER")
            offered = GetMembers(before.at(0), before.at(1), quote);
        else if (alternative == "FORM")
            offered = GetForms(before.at(0));
        else if (alternative == "DATAFORM")
            offered = GetDataForms(before.at(0));
        else if (alternative == "TYPE")
            offered = {"text", "number", "date", "time"};
        else if (alternative == "COPY")
            offered = GetCopies(quote);
        else if (std::none_of(alternative.begin(), alternative.end(),
                              [](unsigned char character) { return std::isupper(character); }))
            offered.push_back(alternative);
        words.insert(words.end(), offered.begin(), offered.end());
    }
    return words;
}

std::vector<std::string> CCompleter::GetItems(bool numbersOnly, char quote) const
{
    std::vector<std::string> words;
    for (const DWORD itemID : workspace.GetItemIDs()) {
        NSKZCore::SCBUICoreCom::EBtnClassType type = NSKZCore::SCBUICoreCom::BTNCLSTYPE_NORMAL;
        workspace.GetEnv().GetTypeOfBtnClass(itemID, type);
        if (numbersOnly && type != NSKZCore::SCBUICoreCom::BTNCLSTYPE_NUM)
            continue;
        words.push_back(WriteWord(workspace.GetItemName(itemID), itemID, SCNameWord::MARK_OF_ITEM, quote));
    }
    return words;
}

std::vector<std::string> CCompleter::GetBtns(const std::string& itemWord, EBtns which, char quote) const
{
    try {
        const DWORD itemID = workspace.FindItem(itemWord);
        std::vector<DWORD> btnIDs;
        if (which == BTNS_SPECIAL)
            workspace.GetEnv().GetAllSpBtnIDListOfBtnClass(itemID, btnIDs, true);
        else
            workspace.GetEnv().GetDispBtnIDListOfBtnClass(itemID, btnIDs);
        return WriteBtns(itemID, btnIDs, quote);
    } catch (const ECCommandError&) {
        return {}; // the word names no item
    }
}

std::vector<std::string> CCompleter::GetMembers(const std::string& itemWord, const std::string& spBtnWord,
                                                char quote) const
{
    try {
        const DWORD itemID = workspace.FindItem(itemWord);
        std::vector<DWORD> btnIDs;
        const DWORD spBtnID = workspace.FindSpBtn(itemID, spBtnWord);
        workspace.GetEnv().GetMemberBtnIDListOfSpBtn(itemID, spBtnID, btnIDs);
        return WriteBtns(workspace.GetItemOfMembers(itemID, spBtnID), btnIDs, quote);
    } catch (const ECCommandError&) {
        return {}; // the words name no special button
    }
}

std::string CCompleter::GetItemOfMembers(const std::string& itemWord, const std::string& spBtnWord) const
{
    try {
        const DWORD itemID = workspace.FindItem(itemWord);
        return SCNameWord::WriteID(workspace.GetItemOfMembers(itemID, workspace.FindSpBtn(itemID, spBtnWord)),
                                   SCNameWord::MARK_OF_ITEM);
    } catch (const ECCommandError&) {
        return {}; // the words name no special button
    }
}

std::vector<std::string> CCompleter::GetForms(const std::string& itemWord) const
{
    std::vector<std::string> words;
    try {
        NSKZCore::SCBUICoreCom::EBtnClassType type = NSKZCore::SCBUICoreCom::BTNCLSTYPE_NORMAL;
        workspace.GetEnv().GetTypeOfBtnClass(workspace.FindItem(itemWord), type);
        if (type == NSKZCore::SCBUICoreCom::BTNCLSTYPE_DATE) {
            for (const auto& form : NSKZCore::SCDispForm::GetDateForms())
                words.emplace_back(form.name);
        } else if (type == NSKZCore::SCBUICoreCom::BTNCLSTYPE_TIME) {
            for (const auto& form : NSKZCore::SCDispForm::GetTimeForms())
                words.emplace_back(form.name);
        }
    } catch (const ECCommandError&) { // the word names no item
    }
    return words;
}

std::vector<std::string> CCompleter::GetDataForms(const std::string& itemWord) const
{
    std::vector<std::string> words;
    SCFldType::SFldType type;
    type.hasForm = true;
    const auto addForm = [&] {
        const std::string written = SCFldType::Write(type);
        words.push_back(written.substr(written.find(':') + 1));
    };
    try {
        SCDeclareConstant::SDataSpec spec;
        workspace.GetAnalysis().GetTableWithHeld().GetDataSpec(workspace.FindFldWithHeld(itemWord), spec);
        type.dataType = spec.dataType;
        if (type.dataType == SCDeclareConstant::DATATYPE_DATE) {
            for (DWORD form = 0; form <= SCDeclareConstant::DATEFORM_LAST; ++form) {
                for (DWORD delimiter = 0; delimiter <= SCDeclareConstant::DATEDELIM_LAST; ++delimiter) {
                    type.dateTypeInfo = {static_cast<SCDeclareConstant::EDateDataForm>(form),
                                         static_cast<SCDeclareConstant::EDateDelimiter>(delimiter)};
                    addForm();
                }
            }
        } else if (type.dataType == SCDeclareConstant::DATATYPE_TIME) {
            for (DWORD form = 0; form <= SCDeclareConstant::TIMEFORM_LAST; ++form) {
                type.timeTypeInfo.form = static_cast<SCDeclareConstant::ETimeDataForm>(form);
                addForm();
            }
        }
    } catch (const ECCommandError&) { // the word names no field
    }
    return words;
}

std::vector<std::string> CCompleter::GetCopies(char quote) const
{
    std::vector<std::string> words;
    for (const CWorkspace::SCopy& copy : workspace.GetCopies())
        words.push_back(SCWordSplit::Quote(copy.name, quote));
    return words;
}

std::vector<std::string> CCompleter::WriteBtns(DWORD itemID, const std::vector<DWORD>& btnIDs,
                                               char quote) const
{
    std::vector<std::string> words;
    for (const DWORD btnID : btnIDs)
        words.push_back(
            WriteWord(workspace.GetBtnText(itemID, btnID), btnID, SCNameWord::MARK_OF_BTN, quote));
    return words;
}

} // namespace NSKZ::Host
