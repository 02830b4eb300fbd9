#include "SCBtnReason.h"

#include "VCBtn.h"

namespace NSKZ::Host {

std::vector<std::string> SCBtnReason::GetReasons(unsigned int visibleInfo)
{
    using namespace NSKZCore;
    static constexpr struct
    {
        unsigned int bit;
        const char* words;
    } REASONS[] = {
        {VISINFO_SELCLLMEMBER, "member of a collection button chosen by list"},
        {VISINFO_CNDCLLMEMBER, "member of a collection button chosen by condition"},
        {VISINFO_INCMEMBER, "member of an including button that does not show its members"},
        {VISINFO_NOMEMBER, "no member"},
        {VISINFO_NOLIVEMEMBER, "no member with records"},
        {VISINFO_RELATION, "not related to the selection"},
        {VISINFO_LIMITEDREC, "no record within the limitation"},
        {VISINFO_NOREC, "no record in the table"},
        {VISINFO_EMPVALNODISP, "the empty value is not shown"},
        {VISINFO_INEFFECTIVE, "switched off"},
    };
    std::vector<std::string> reasons;
    for (const auto& reason : REASONS) {
        if ((visibleInfo & reason.bit) != 0)
            reasons.emplace_back(reason.words);
    }
    return reasons;
}

} // namespace NSKZ::Host
