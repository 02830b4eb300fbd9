#ifndef CPROMPTSOURCE_H
#define CPROMPTSOURCE_H

#include "VCCommandSource.h"

#include <cstdio>
#include <functional>
#include <memory>
#include <vector>

namespace NSKZ::Host {

// A prompt on a terminal, with line editing, history and completion. Ctrl-C drops the line, Ctrl-D on an
// empty one ends the input, the tabulator completes the last word. One object at a time.
class CPromptSource : public VCCommandSource
{
public:
    // The words that may stand at the end of `line`, each as it is to be written; those that continue its
    // last word are offered. `wordBegin` becomes the position at which the last word begins.
    using CCompletion =
        std::function<std::vector<std::string>(const std::string& line, std::size_t& wordBegin)>;

    // Reads from standard input; `output` is the terminal to write to.
    CPromptSource(std::FILE* output, CCompletion completion);
    ~CPromptSource() override;
    bool ReadLine(std::string& line) override;

private:
    struct SEditor;
    std::unique_ptr<SEditor> editor;
};

} // namespace NSKZ::Host

#endif
