#ifndef SCSHOWNTEXT_H
#define SCSHOWNTEXT_H

#include <cstddef>
#include <string>
#include <string_view>

namespace NSKZ::Host {

// UTF-8 text as a terminal shows it. Nothing here depends on the locale.
class SCShownText
{
public:
    SCShownText() = delete;

    // How many columns the text takes: two for a wide character of East Asia or a pictograph, none for a
    // combining one, one for any other.
    static std::size_t GetWidth(std::string_view text);

    // The text with its control characters made visible as in C: data must not steer the terminal.
    static std::string Escape(std::string_view text);

    // The text cut to `width` columns, with an ellipsis at its end where it was longer.
    static std::string Cut(std::string_view text, std::size_t width);
};

} // namespace NSKZ::Host

#endif
