#include "CBuildProgress.h"

#include <string>

namespace NSKZ::Host {

namespace {

constexpr DWORD BAR_WIDTH = 40;
constexpr DWORD NOTHING_SHOWN = 101;
constexpr const char* WIPE_LINE = "\r\x1B[K";

} // namespace

CBuildProgress::CBuildProgress(std::ostream* terminalOfHost)
    : terminal(terminalOfHost), shownPercent(NOTHING_SHOWN)
{}

CBuildProgress::~CBuildProgress()
{
    if (terminal != nullptr && shownPercent != NOTHING_SHOWN)
        *terminal << WIPE_LINE << std::flush;
}

void CBuildProgress::OnProgress() noexcept
{
    if (terminal == nullptr)
        return;
    const auto percent =
        static_cast<DWORD>(static_cast<unsigned long long>(presentValue) * 100 / GetMaxValueOfPresentProc());
    if (percent == shownPercent)
        return;
    shownPercent = percent;
    try {
        const DWORD filled = percent * BAR_WIDTH / 100;
        std::string line = "\rBuilding [";
        line.append(filled, '#').append(BAR_WIDTH - filled, '.').append("] ").append(std::to_string(percent));
        *terminal << line << "% (Ctrl-C cancels)" << std::flush;
    } catch (...) {
        shownPercent = NOTHING_SHOWN; // a bar that cannot be drawn is no reason to stop
    }
}

} // namespace NSKZ::Host
