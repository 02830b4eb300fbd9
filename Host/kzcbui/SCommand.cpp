#include "SCommand.h"

#include <algorithm>

namespace NSKZ::Host {

std::string SCommand::GetName() const
{
    std::size_t end = form.find(' ');
    for (std::size_t i = 1; i < nameWords && end != std::string::npos; ++i)
        end = form.find(' ', end + 1);
    return form.substr(0, end);
}

bool SCommand::TakesValue(const std::string& word) const
{
    return std::any_of(options.begin(), options.end(),
                       [&word](const SOption& option) { return option.hasValue && option.name == word; });
}

bool SCommand::IsNamedBy(const std::vector<std::string>& words) const
{
    std::size_t begin = 0;
    for (std::size_t i = 0; i < nameWords; ++i) {
        const std::size_t end = std::min(form.find(' ', begin), form.size());
        if (i == words.size() || form.compare(begin, end - begin, words[i]) != 0)
            return false;
        begin = end + 1;
    }
    return true;
}

} // namespace NSKZ::Host
