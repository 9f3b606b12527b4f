#include "platform/temporaryFolder.h"

#ifdef _WIN32
#include <windows.h>
#else
#include "platform/wideText.h"

#include <cstdlib>
#endif

namespace platform {

#ifdef _WIN32

std::wstring temporaryFolder()
{
    wchar_t folder[MAX_PATH + 1] = L"";
    const DWORD length = GetTempPathW(MAX_PATH + 1, folder);
    return length <= MAX_PATH ? std::wstring(folder, length) : std::wstring();
}

#else

std::wstring temporaryFolder()
{
    const char* variable = std::getenv("TMPDIR");
    std::wstring folder = toWide(variable != nullptr && *variable != '\0' ? variable : "/tmp");
    if (folder.back() != kPathSeparator) {
        folder += kPathSeparator;
    }
    return folder;
}

#endif

} // namespace platform
