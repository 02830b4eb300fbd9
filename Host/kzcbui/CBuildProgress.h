#ifndef CBUILDPROGRESS_H
#define CBUILDPROGRESS_H

#include "CProgressStatus.h"

#include <ostream>

namespace NSKZ::Host {

// Draws how far the building has come as a bar on a line of a terminal, and wipes it away at its end.
class CBuildProgress : public NSKZCore::CProgressStatus
{
public:
    // `terminal` is borrowed; null: nothing is drawn.
    explicit CBuildProgress(std::ostream* terminal);
    ~CBuildProgress() override;

protected:
    void OnProgress() noexcept override;

private:
    std::ostream* terminal;
    DWORD shownPercent;
};

} // namespace NSKZ::Host

#endif
