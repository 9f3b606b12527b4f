#include "platform/clock.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <ctime>
#endif

namespace platform {

#ifdef _WIN32

std::optional<std::string> localTimeText()
{
    char text[200] = "";
    if (GetTimeFormatA(LOCALE_USER_DEFAULT, 0, nullptr, "HH':'mm':'ss", text, 200) == 0) {
        return std::nullopt;
    }
    return text;
}

std::uint32_t tickMilliseconds()
{
    return GetTickCount();
}

#else

std::optional<std::string> localTimeText()
{
    const std::time_t now = std::time(nullptr);
    std::tm local = {};
    char text[16] = "";
    if (localtime_r(&now, &local) == nullptr ||
        std::strftime(text, sizeof text, "%H:%M:%S", &local) == 0) {
        return std::nullopt;
    }
    return text;
}

std::uint32_t tickMilliseconds()
{
    std::timespec now = {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    const auto milliseconds = static_cast<std::uint64_t>(now.tv_sec) * 1000U +
                              static_cast<std::uint64_t>(now.tv_nsec) / 1000000U;
    return static_cast<std::uint32_t>(milliseconds);
}

#endif

} // namespace platform
