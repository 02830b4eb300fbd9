#include "CHostProgram.h"

#include "CCommandRunner.h"
#include "CCommandSet.h"
#include "CCompleter.h"
#include "CHostOptions.h"
#include "CJSONAnswerWriter.h"
#include "CListSource.h"
#include "CPromptSource.h"
#include "CStreamSource.h"
#include "CTextAnswerWriter.h"
#include "CWorkspace.h"
#include "ECHostError.h"
#include "SCNumberText.h"
#include "SCShownText.h"

#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <string_view>

#include <sys/ioctl.h>
#include <unistd.h>

namespace NSKZ::Host {

namespace {

constexpr std::size_t DEFAULT_LINE_WIDTH = 80;

bool IsTerminal(int file)
{
    return isatty(file) != 0;
}

bool IsColoured()
{
    const char* const noColor = std::getenv("NO_COLOR");
    const char* const term = std::getenv("TERM");
    return IsTerminal(STDOUT_FILENO) && (noColor == nullptr || *noColor == '\0') &&
           (term == nullptr || std::string_view(term) != "dumb");
}

std::size_t GetLineWidth()
{
    winsize size = {};
    return ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col != 0 ? size.ws_col
                                                                            : DEFAULT_LINE_WIDTH;
}

std::ifstream OpenScript(const std::string& path)
{
    std::ifstream script(path, std::ios::binary);
    std::error_code ignored;
    if (!script || std::filesystem::is_directory(path, ignored))
        throw ECHostError(EXITSTATUS_WRONG_USAGE, path + ": The script cannot be read.");
    return script;
}

} // namespace

EExitStatus CHostProgram::Run(int argc, const char* const* argv) noexcept
{
    try {
        std::string answer;
        const std::optional<CHostOptions> options = CHostOptions::Read(argc, argv, answer);
        if (options)
            return RunWithOptions(*options);
        std::cout << answer << std::flush;
        return EXITSTATUS_OK;
    } catch (const ECHostError& error) {
        std::cerr << "kzcbui: " << SCShownText::Escape(error.what()) << std::endl;
        return error.GetStatus();
    } catch (const std::exception& error) {
        std::cerr << "kzcbui: The program cannot go on: " << error.what() << std::endl;
        return EXITSTATUS_COMMAND_FAILED;
    }
}

EExitStatus CHostProgram::RunWithOptions(const CHostOptions& options)
{
    const bool readsStandardInput =
        options.scriptPath ? *options.scriptPath == "-" : options.commands.empty();
    std::ifstream script;
    if (options.scriptPath && !readsStandardInput)
        script = OpenScript(*options.scriptPath);
    const bool prompts = !options.scriptPath && readsStandardInput && IsTerminal(STDIN_FILENO);

    const bool showsProgress = options.showsProgress && IsTerminal(STDERR_FILENO);
    CWorkspace workspace(options, showsProgress ? &std::cerr : nullptr);
    const CCommandSet commands;
    std::unique_ptr<VCAnswerWriter> writer;
    if (options.json) {
        writer = std::make_unique<CJSONAnswerWriter>(std::cout);
    } else {
        writer = std::make_unique<CTextAnswerWriter>(std::cout, std::cerr, IsColoured(), GetLineWidth(),
                                                     options.echo && !prompts);
    }
    const CCompleter completer(workspace, commands);
    std::unique_ptr<VCCommandSource> source;
    if (prompts) {
        // Answers alone go to a standard output that is read by a program.
        const bool answersGoElsewhere = options.json || !IsTerminal(STDOUT_FILENO);
        source =
            std::make_unique<CPromptSource>(answersGoElsewhere ? stderr : stdout,
                                            [&completer](const std::string& line, std::size_t& wordBegin) {
                                                return completer.GetWords(line, wordBegin);
                                            });
        (answersGoElsewhere ? std::cerr : std::cout)
            << SCShownText::Escape(options.tablePath) << ": "
            << SCNumberText::OfThings(workspace.GetRecCount(), "record") << ", "
            << SCNumberText::OfThings(workspace.GetItemIDs().size(), "item")
            << ".\n\"items\" lists them, \"help\" the commands; Ctrl-D ends." << std::endl;
    } else if (!options.commands.empty()) {
        source = std::make_unique<CListSource>(options.commands);
    } else if (readsStandardInput) {
        source = std::make_unique<CStreamSource>(std::cin, "standard input");
    } else {
        source = std::make_unique<CStreamSource>(script, *options.scriptPath);
    }

    CCommandRunner runner(workspace, commands, *writer);
    std::string line;
    while (source->ReadLine(line) && runner.RunLine(line, source->GetPlace())) {
        if (!writer->IsGood())
            break;
    }
    if (!writer->IsGood()) {
        std::cerr << "kzcbui: The answers cannot be written." << std::endl;
        return EXITSTATUS_COMMAND_FAILED;
    }
    return runner.HasFailed() ? EXITSTATUS_COMMAND_FAILED : EXITSTATUS_OK;
}

} // namespace NSKZ::Host
