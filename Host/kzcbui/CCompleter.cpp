#include "CCompleter.h"

#include "CCommandSet.h"
#include "CWorkspace.h"
#include "ECCommandError.h"
#include "SCNameWord.h"
#include "SCShownText.h"
#include "SCWordSplit.h"

#include <algorithm>

namespace NSKZ::Host {

namespace {

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

// The words that the command's form names, in the place of the plain word at `position`.
std::string GetPlaceholder(const SCommand& command, std::size_t position)
{
    std::vector<std::string> places = SCWordSplit::Split(command.form);
    places.erase(places.begin());
    std::erase_if(places, [](const std::string& place) { return place.starts_with("[--"); });
    if (places.empty())
        return {};
    if (position < places.size())
        return places[position];
    return places.back().ends_with("...") ? places.back() : std::string();
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
    std::vector<std::string> words;
    if (before.empty() || (before.size() == 1 && before.front() == "help")) {
        for (const SCommand& command : commands.GetAll())
            words.push_back(command.GetName());
        return words;
    }
    const SCommand* const command = commands.Find(before.front());
    if (command == nullptr)
        return {};
    if (line.compare(wordBegin, 2, "--") == 0) {
        for (const SCommand::SOption& option : command->options)
            words.push_back(option.name);
        return words;
    }
    std::erase_if(before, [](const std::string& word) { return word.starts_with("--"); });
    const char quote = GetQuote(line, wordBegin);
    const std::string place = GetPlaceholder(*command, before.size() - 1);
    if (place == "ITEM" || place == "[ITEM]")
        return GetItems(false, quote);
    if (place == "FIELD")
        return GetItems(true, quote);
    if (place.starts_with("BUTTON"))
        return GetBtns(before.at(1), quote);
    // The alternatives of "[none|or|and]".
    if (place.starts_with('[') && place.find('|') != std::string::npos) {
        std::string alternatives = place.substr(1, place.size() - 2);
        std::replace(alternatives.begin(), alternatives.end(), '|', ' ');
        return SCWordSplit::Split(alternatives);
    }
    return {};
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

std::vector<std::string> CCompleter::GetBtns(const std::string& itemWord, char quote) const
{
    std::vector<std::string> words;
    try {
        const DWORD itemID = workspace.FindItem(itemWord);
        std::vector<DWORD> btnIDs;
        workspace.GetEnv().GetDispBtnIDListOfBtnClass(itemID, btnIDs);
        for (const DWORD btnID : btnIDs) {
            words.push_back(
                WriteWord(workspace.GetBtnText(itemID, btnID), btnID, SCNameWord::MARK_OF_BTN, quote));
        }
    } catch (const ECCommandError&) {
        // The word names no item: there is nothing to offer.
    }
    return words;
}

} // namespace NSKZ::Host
