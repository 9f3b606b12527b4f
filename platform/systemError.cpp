#include "platform/systemError.h"

#include "platform/wideText.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <cerrno>
#include <system_error>
#endif

namespace platform {

#ifdef _WIN32

int lastSystemError()
{
    return static_cast<int>(GetLastError());
}

std::string systemErrorText(int number)
{
    wchar_t text[512] = L"";
    const DWORD flags = FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
    DWORD length =
        FormatMessageW(flags, nullptr, static_cast<DWORD>(number), 0, text, 512, nullptr);
    while (length > 0 && text[length - 1] <= L' ') {
        --length;
    }
    if (length == 0) {
        return "system error " + std::to_string(number);
    }
    return toUtf8({text, length});
}

#else

int lastSystemError()
{
    return errno;
}

std::string systemErrorText(int number)
{
    return std::generic_category().message(number);
}

#endif

std::string cannotText(std::string_view verb, std::string_view path, int number)
{
    std::string text = "cannot ";
    text.append(verb).append(" \"").append(path).append("\": ");
    return text + systemErrorText(number);
}

} // namespace platform
