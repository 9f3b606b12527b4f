#include "platform/files.h"

#ifdef _WIN32
#include "platform/wideText.h"
#endif

namespace platform {

std::FILE* openUtf8(const std::string& path, const char* mode)
{
#ifdef _WIN32
    return _wfopen(toWide(path).c_str(), toWide(mode).c_str());
#else
    return std::fopen(path.c_str(), mode);
#endif
}

} // namespace platform
