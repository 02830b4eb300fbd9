#ifndef SCOMMAND_H
#define SCOMMAND_H

#include <nlohmann/json_fwd.hpp>

#include <functional>
#include <limits>
#include <string>
#include <vector>

namespace NSKZ::Host {

class CCommandArgs;
class CTextOutput;
struct SCommandContext;

// The answer of a command: an object whose keys keep their order. "ok" and "error" are added where it is
// written.
using CAnswer = nlohmann::ordered_json;

// A command: its name, what help tells of it, what words it takes, what it does and how its answer is shown.
// To add one to the program is to add one of these to the CCommandSet.
struct SCommand
{
    struct SOption
    {
        std::string name; // with its two hyphens
        bool hasValue = false;
    };
    static constexpr std::size_t ANY_NUMBER = std::numeric_limits<std::size_t>::max();

    std::string form;          // "press ITEM BUTTON... [--hidden]": it begins with the name
    std::size_t nameWords = 1; // of the form: two for "special list", which belongs to the group "special"
    std::string summary;       // one line
    std::string explanation;
    std::string example;
    std::size_t minWords = 0; // beside the name and the options
    std::size_t maxWords = 0;
    std::vector<SOption> options;
    // Throws ECCommandError, with nothing changed, for words that name nothing.
    std::function<CAnswer(SCommandContext&, const CCommandArgs&)> run;
    // For people; what `run` answered.
    std::function<void(SCommandContext&, const CAnswer&, CTextOutput&)> show;

    std::string GetName() const;
    // Whether the word is an option whose value is the word behind it.
    bool TakesValue(const std::string& word) const;
    // Whether `words` begin with the name, each word of it a word of its own.
    bool IsNamedBy(const std::vector<std::string>& words) const;
};

} // namespace NSKZ::Host

#endif
