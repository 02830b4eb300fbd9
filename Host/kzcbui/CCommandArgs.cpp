#include "CCommandArgs.h"

#include "ECCommandError.h"
#include "SCNameWord.h"
#include "SCommandContext.h"

#include <algorithm>

namespace NSKZ::Host {

CCommandArgs::CCommandArgs(const SCommand& command, std::vector<std::string> words) : form(command.form)
{
    bool takesOptions = true;
    for (std::size_t i = command.nameWords; i < words.size(); ++i) {
        const std::string& word = words[i];
        if (!takesOptions || !word.starts_with("--")) {
            plainWords.push_back(word);
            continue;
        }
        if (word == "--") {
            takesOptions = false;
            continue;
        }
        const std::size_t sign = word.find('=');
        const std::string name = word.substr(0, sign);
        const auto known =
            std::find_if(command.options.begin(), command.options.end(),
                         [&name](const SCommand::SOption& option) { return option.name == name; });
        if (known == command.options.end())
            Refuse("There is no option " + name +
                   " here (-- stands before words that begin with two hyphens)");
        if (!known->hasValue && sign != std::string::npos)
            Refuse("The option " + name + " takes no value");
        if (known->hasValue && sign == std::string::npos && i + 1 == words.size())
            Refuse("The option " + name + " lacks its value");
        options[name].push_back(!known->hasValue            ? ""
                                : sign != std::string::npos ? word.substr(sign + 1)
                                                            : words[++i]);
    }
    if (plainWords.size() < command.minWords)
        Refuse("Something is missing");
    if (plainWords.size() > command.maxWords)
        Refuse("There is more than can be understood, from \"" + plainWords[command.maxWords] +
               "\" on (quotes hold a name with blanks together)");
}

std::vector<std::string> CCommandArgs::GetWordsFrom(std::size_t first) const
{
    return {plainWords.begin() + static_cast<std::ptrdiff_t>(first), plainWords.end()};
}

bool CCommandArgs::ReadSwitch(std::size_t position) const
{
    const std::string& word = plainWords.at(position);
    if (word != "on" && word != "off")
        Refuse("\"" + word + "\" is neither on nor off");
    return word == "on";
}

std::vector<std::string> CCommandArgs::GetValues(const std::string& option) const
{
    const auto found = options.find(option);
    return found != options.end() ? found->second : std::vector<std::string>();
}

std::string CCommandArgs::GetValue(const std::string& option, const std::string& defaultValue) const
{
    const auto found = options.find(option);
    return found != options.end() ? found->second.back() : defaultValue;
}

std::string CCommandArgs::GetChoice(const std::string& option, const std::vector<std::string>& choices) const
{
    const std::string value = GetValue(option, choices.front());
    if (std::find(choices.begin(), choices.end(), value) == choices.end()) {
        std::string known;
        for (const std::string& choice : choices)
            known += (known.empty() ? "" : choice == choices.back() ? " or " : ", ") + choice;
        Refuse(option + " takes " + known + ", not \"" + value + "\"");
    }
    return value;
}

std::size_t CCommandArgs::GetMax(const SCommandContext& context) const
{
    DWORD max = 0;
    const bool isGiven = Has("--max");
    if (isGiven && !SCNameWord::ReadNumber(GetValue("--max", ""), max))
        Refuse("--max takes a number, 0 for all");
    if (isGiven)
        return max != 0 ? max : SCommand::ANY_NUMBER;
    return context.listsAll ? SCommand::ANY_NUMBER : DEFAULT_MAX;
}

void CCommandArgs::Refuse(const std::string& reason) const
{
    throw ECCommandError(reason + "; expected: " + form);
}

} // namespace NSKZ::Host
