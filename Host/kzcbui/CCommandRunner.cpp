#include "CCommandRunner.h"

#include "CCommandArgs.h"
#include "ECCndError.h"
#include "ECSessionLost.h"
#include "SCHostText.h"
#include "SCWordSplit.h"
#include "VCAnswerWriter.h"
#include "VECException.h"

#include <nlohmann/json.hpp>

#include <new>

namespace NSKZ::Host {

CCommandRunner::CCommandRunner(CWorkspace& workspace, const CCommandSet& commands,
                               VCAnswerWriter& writerOfHost)
    : context{workspace, commands, writerOfHost.WantsAll(), false, {}, false}, writer(writerOfHost)
{}

bool CCommandRunner::RunLine(const std::string& line, const std::string& place)
{
    const std::size_t begin = line.find_first_not_of(" \t");
    if (begin == std::string::npos || line[begin] == '#')
        return true;
    try {
        RunWords(line);
    } catch (const ECCndError& error) {
        hasFailed = true;
        writer.WriteCndError(place, error);
    } catch (const ECCommandError& error) {
        WriteError(place, error.what());
    } catch (const ECSessionLost& error) {
        WriteError(place, std::string(error.what()) + " The session ends.");
        return false;
    } catch (const std::bad_alloc&) {
        WriteError(place, context.hasDone
                              ? "The command is done, but there is not enough memory for its answer."
                              : "There is not enough memory for this command.");
    } catch (const NSKZCore::VECException& error) {
        // The environment cannot be relied on any more.
        WriteError(place, "The engine found itself damaged, and the session ends: " +
                              SCHostText::FromException(error.GetMessageText()));
        return false;
    }
    return !context.quits;
}

void CCommandRunner::RunWords(const std::string& line)
{
    if (!SCHostText::IsUTF8(line) || line.find('\0') != std::string::npos)
        throw ECCommandError("The command is no text in UTF-8.");
    writer.WriteCommand(line);
    context.line = line;
    context.hasDone = false;
    std::vector<std::string> words = SCWordSplit::Split(line);
    const SCommand& command = context.commands.FindByWords(words);
    const CCommandArgs args(command, std::move(words));
    const CAnswer answer = command.run(context, args);
    writer.WriteAnswer(command, context, answer);
}

void CCommandRunner::WriteError(const std::string& place, const std::string& sentence)
{
    hasFailed = true;
    writer.WriteError(place, sentence);
}

} // namespace NSKZ::Host
