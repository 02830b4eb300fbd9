#ifndef VECEXCEPTION_H
#define VECEXCEPTION_H

#include "KzcCommonAPI.h"

#include <exception>
#include <memory>

namespace NSKZ::NSKZCore {

// Base of the exceptions that the libraries throw for what must not occur: a value outside its enumeration, a
// reference to nothing. Memory exhaustion is not among them: it arrives as std::bad_alloc.
//
// All texts are copied on construction (which may throw std::bad_alloc) and shared by copies (which may not).
// The kind and the message are Shift-JIS, whatever code page the host has set.
class KZCCOMMON_API VECException : public std::exception
{
public:
    VECException(const char* kind, const char* message, const char* file, const char* function, long line);
    VECException(const VECException& other) noexcept;
    VECException& operator=(const VECException& other) noexcept;
    ~VECException() override = 0;

    // The message.
    const char* what() const noexcept override;
    // What kind of exception it is, as a text to show.
    const char* GetKind() const noexcept;
    const char* GetMessageText() const noexcept;
    // Where it was thrown: the source from "Src/" on, the qualified function, the line.
    const char* GetFile() const noexcept;
    const char* GetFunction() const noexcept;
    long GetLine() const noexcept;

private:
    struct STexts;
    std::shared_ptr<const STexts> texts;
    long line;
};

} // namespace NSKZ::NSKZCore

#endif
