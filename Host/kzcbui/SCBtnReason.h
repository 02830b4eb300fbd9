#ifndef SCBTNREASON_H
#define SCBTNREASON_H

#include <string>
#include <vector>

namespace NSKZ::Host {

// Why a button is hidden, in words.
class SCBtnReason
{
public:
    SCBtnReason() = delete;

    // A text for each reason in a button's visible info.
    static std::vector<std::string> GetReasons(unsigned int visibleInfo);
};

} // namespace NSKZ::Host

#endif
