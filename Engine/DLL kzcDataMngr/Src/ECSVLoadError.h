#ifndef ECSVLOADERROR_H
#define ECSVLOADERROR_H

#include "KzcDataMngrAPI.h"

#include <memory>
#include <stdexcept>
#include <string>

namespace NSKZ::NSKZCore {

// Why a CSV file could not be read. what() is one line of UTF-8: the file, the line where there is one, the
// reason.
class KZCDATAMNGR_API ECSVLoadError : public std::runtime_error
{
public:
    // `file` and `reason` are UTF-8.
    ECSVLoadError(const std::string& file, unsigned long long line, const std::string& reason);
    ECSVLoadError(const ECSVLoadError& other) noexcept;
    ECSVLoadError& operator=(const ECSVLoadError& other) noexcept;
    ~ECSVLoadError() override;

    // The file as it was named to the loader, in UTF-8; a control character, and a byte that is no text of
    // the host's code page, is shown as "?".
    const char* GetFile() const noexcept;
    // The line, from 1, in which the record concerned begins; 0 where the reason concerns no line.
    unsigned long long GetLine() const noexcept;
    // A sentence in English, in UTF-8.
    const char* GetReason() const noexcept;

private:
    struct STexts;
    std::shared_ptr<const STexts> texts;
    unsigned long long line;
};

} // namespace NSKZ::NSKZCore

#endif
