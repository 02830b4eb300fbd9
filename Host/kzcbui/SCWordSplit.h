#ifndef SCWORDSPLIT_H
#define SCWORDSPLIT_H

#include <string>
#include <string_view>
#include <vector>

namespace NSKZ::Host {

// The words of a command line, as a shell splits them.
class SCWordSplit
{
public:
    SCWordSplit() = delete;

    // Words are set apart by spaces and tabs. Within single quotes every character stands for itself; within
    // double quotes a backslash takes away the meaning of a double quote, a backslash, a dollar or a
    // backquote behind it and stands for itself before anything else; elsewhere it takes away the meaning of
    // any character. Nothing is expanded. An empty pair of quotes is an empty word. Throws ECCommandError for
    // a quote that is never closed and for a backslash with nothing behind it.
    static std::vector<std::string> Split(std::string_view line);

    // `text` written so that Split reads it as one word: between `quote`s (a single or a double one), or with
    // 0 by backslashes where they are needed.
    static std::string Quote(std::string_view text, char quote);
};

} // namespace NSKZ::Host

#endif
