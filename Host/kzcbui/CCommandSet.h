#ifndef CCOMMANDSET_H
#define CCOMMANDSET_H

#include "SCommand.h"

#include <string>
#include <vector>

namespace NSKZ::Host {

// All commands of the program, in the order in which help lists them.
class CCommandSet
{
public:
    CCommandSet();

    // Throws std::logic_error if the name is taken.
    void Add(SCommand command);
    const std::vector<SCommand>& GetAll() const noexcept { return commands; }
    // Null if there is no command of that name.
    const SCommand* Find(const std::string& name) const noexcept;
    // The command whose name the words begin with. Throws ECCommandError if there is none.
    const SCommand& FindByWords(const std::vector<std::string>& words) const;
    // The commands whose names have `firstWord` and a further word.
    std::vector<const SCommand*> GetGroup(const std::string& firstWord) const;

private:
    std::vector<SCommand> commands;
};

} // namespace NSKZ::Host

#endif
