#include "platform/dllFolder.h"

#ifdef _WIN32
#include <windows.h>

#include <algorithm>
#include <cstring>
#include <vector>
#endif

namespace platform {

#ifdef _WIN32

void formatDllFolder(wchar_t* buffer, std::size_t room, const char* location)
{
    constexpr std::size_t kTailLength = 5;        // "\bin" and the zero
    constexpr std::size_t kFormatterLimit = 1024; // wsprintfW never writes more characters
    if (location == nullptr) {
        wsprintfW(buffer, L"%s\\bin", static_cast<const wchar_t*>(nullptr));
        return;
    }
    const std::size_t most = std::min(room, kFormatterLimit) - kTailLength;
    std::vector<wchar_t> padded(most + 1, L'\0'); // zeros behind the bytes end the wide text
    std::memcpy(padded.data(), location, std::min(std::strlen(location), most * sizeof(wchar_t)));
    wsprintfW(buffer, L"%s\\bin", padded.data());
}

bool setDllFolder(const wchar_t* folder)
{
    return SetDllDirectoryW(folder) != 0;
}

#else

void formatDllFolder(wchar_t* buffer, std::size_t, const char*)
{
    buffer[0] = L'\0';
}

bool setDllFolder(const wchar_t*)
{
    return true;
}

#endif

} // namespace platform
