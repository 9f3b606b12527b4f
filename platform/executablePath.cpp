#include "platform/executablePath.h"

#ifdef _WIN32
#include "platform/wideText.h"

#include <windows.h>
#else
#include <filesystem>
#include <system_error>
#include <unistd.h>
#endif

namespace platform {

#ifdef _WIN32

std::string executablePath()
{
    constexpr DWORD kLongestPath = 32768;
    std::wstring path(kLongestPath, L'\0');
    const DWORD length = GetModuleFileNameW(nullptr, path.data(), kLongestPath);
    path.resize(length < kLongestPath ? length : 0);
    return toUtf8(path);
}

unsigned long processId()
{
    return GetCurrentProcessId();
}

#else

std::string executablePath()
{
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).string();
}

unsigned long processId()
{
    return static_cast<unsigned long>(getpid());
}

#endif

} // namespace platform
