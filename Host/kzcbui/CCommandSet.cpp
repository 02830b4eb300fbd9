#include "CCommandSet.h"

#include "ECCommandError.h"
#include "SCCopyCommands.h"
#include "SCDateCommands.h"
#include "SCItemCommands.h"
#include "SCRecordCommands.h"
#include "SCSaveCommands.h"
#include "SCSearchCommands.h"
#include "SCSelectionCommands.h"
#include "SCSessionCommands.h"
#include "SCSpecialCommands.h"
#include "SCTableCommands.h"
#include "SCVirtualCommands.h"

#include <algorithm>
#include <stdexcept>

namespace NSKZ::Host {

CCommandSet::CCommandSet()
{
    SCItemCommands::AddTo(*this);
    SCSearchCommands::AddTo(*this);
    SCSelectionCommands::AddTo(*this);
    SCRecordCommands::AddTo(*this);
    SCDateCommands::AddTo(*this);
    SCSpecialCommands::AddTo(*this);
    SCVirtualCommands::AddTo(*this);
    SCTableCommands::AddTo(*this);
    SCCopyCommands::AddTo(*this);
    SCSaveCommands::AddTo(*this);
    SCSessionCommands::AddTo(*this);
}

void CCommandSet::Add(SCommand command)
{
    if (Find(command.GetName()) != nullptr)
        throw std::logic_error("The command " + command.GetName() + " is there twice.");
    commands.push_back(std::move(command));
}

const SCommand* CCommandSet::Find(const std::string& name) const noexcept
{
    const auto found = std::find_if(commands.begin(), commands.end(), [&name](const SCommand& command) {
        return command.form.starts_with(name) && command.GetName() == name;
    });
    return found != commands.end() ? &*found : nullptr;
}

const SCommand& CCommandSet::FindByWords(const std::vector<std::string>& words) const
{
    const auto found = std::find_if(commands.begin(), commands.end(),
                                    [&words](const SCommand& command) { return command.IsNamedBy(words); });
    if (found != commands.end())
        return *found;
    const std::string first = words.empty() ? std::string() : words.front();
    if (GetGroup(first).empty())
        throw ECCommandError("There is no command \"" + first + "\"; \"help\" lists them.");
    throw ECCommandError(words.size() == 1 ? "Several commands begin with \"" + first + "\"; \"help " +
                                                 first + "\" lists them."
                                           : "There is no command \"" + first + " " + words[1] +
                                                 "\"; \"help " + first + "\" lists those that begin so.");
}

std::vector<const SCommand*> CCommandSet::GetGroup(const std::string& firstWord) const
{
    std::vector<const SCommand*> group;
    for (const SCommand& command : commands) {
        if (command.nameWords > 1 && command.form.starts_with(firstWord) &&
            command.form.find(' ') == firstWord.size())
            group.push_back(&command);
    }
    return group;
}

} // namespace NSKZ::Host
