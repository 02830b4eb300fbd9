#include "CCommandSet.h"

#include "SCItemCommands.h"
#include "SCRecordCommands.h"
#include "SCSelectionCommands.h"
#include "SCSessionCommands.h"

#include <algorithm>
#include <stdexcept>

namespace NSKZ::Host {

CCommandSet::CCommandSet()
{
    SCItemCommands::AddTo(*this);
    SCSelectionCommands::AddTo(*this);
    SCRecordCommands::AddTo(*this);
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

} // namespace NSKZ::Host
