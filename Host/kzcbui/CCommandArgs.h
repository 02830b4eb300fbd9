#ifndef CCOMMANDARGS_H
#define CCOMMANDARGS_H

#include "SCommand.h"

#include <map>
#include <string>
#include <vector>

namespace NSKZ::Host {

// The words behind a command's name, set apart into plain words and options. An option begins with two
// hyphens and stands anywhere; behind "--" all words are plain ones.
class CCommandArgs
{
public:
    // How many entries of a list are answered where it is to be short and --max tells nothing else.
    static constexpr std::size_t DEFAULT_MAX = 50;

    // `words` begin with the command's name. Throws ECCommandError for an option that the command does not
    // know or that lacks its value, and for too few or too many words.
    CCommandArgs(const SCommand& command, std::vector<std::string> words);

    const std::vector<std::string>& GetWords() const noexcept { return plainWords; }
    // The plain words from `first` on.
    std::vector<std::string> GetWordsFrom(std::size_t first) const;

    // Whether the plain word at `position` is "on"; throws ECCommandError unless it is "on" or "off".
    bool ReadSwitch(std::size_t position) const;

    bool Has(const std::string& option) const { return options.count(option) != 0; }
    // All values of an option that may be given several times.
    std::vector<std::string> GetValues(const std::string& option) const;
    // An option's value, the last one of several, or `defaultValue`.
    std::string GetValue(const std::string& option, const std::string& defaultValue) const;
    // The value, which must be one of `choices`; else the first of them. Throws ECCommandError.
    std::string GetChoice(const std::string& option, const std::vector<std::string>& choices) const;
    // How many entries of a list to answer: --max, of which 0 stands for all. Throws ECCommandError.
    std::size_t GetMax(const SCommandContext& context) const;

    // A refusal that tells the command's form.
    [[noreturn]] void Refuse(const std::string& reason) const;

private:
    std::string form;
    std::vector<std::string> plainWords;
    std::map<std::string, std::vector<std::string>> options;
};

} // namespace NSKZ::Host

#endif
