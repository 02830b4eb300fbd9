#ifndef CFORMATTEDMSG_H
#define CFORMATTEDMSG_H

#include "KzcPlatform.h"

#include <array>
#include <initializer_list>

namespace NSKZ::NSKZCore {

// A message with its placeholders filled, held in a buffer of its own: it lives on the stack and allocates
// nothing.
//
//     const CFormattedMsg message(SCBUICoreStrDef::MSG_NOTEXIST_SELBTN, {btnClassID, btnID});
//     throw ECAbnormalData(message.GetText(), "Src/CBUIDataMngr",
//                          "NSKZ::NSKZCore::CBUIDataMngr::ExecNarrowing", __LINE__);
class CFormattedMsg
{
public:
    // Replaces each "%d" in `format`, in order, by the next of `ids` as a signed decimal number: an
    // identifier above 2147483647 shows negative. A placeholder without a number and everything else stand as
    // they are. A text that outgrows the buffer is cut; no message of SCBUICoreStrDef does.
    CFormattedMsg(const char* format, std::initializer_list<DWORD> ids) noexcept;

    // The text, NUL-terminated; it lives as long as this object.
    const char* GetText() const noexcept { return text.data(); }

private:
    std::array<char, 512> text;
};

} // namespace NSKZ::NSKZCore

#endif
