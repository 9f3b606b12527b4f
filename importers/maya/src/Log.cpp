#include "importers/maya/src/Log.h"

#include "platform/clock.h"
#include "platform/files.h"
#include "platform/registry.h"
#include "platform/temporaryFolder.h"
#include "platform/wideText.h"

#include <cerrno>
#include <fstream>
#include <iterator>

namespace {

constexpr const char* kLevelNames[] = {"ERROR",  "WARNING", "INFO",   "DEBUG", "DEBUG1",
                                       "DEBUG2", "DEBUG3",  "DEBUG4", "NONE"};

/// The file's size; 0 if it is missing or unreadable.
std::uint64_t fileSize(const std::wstring& path)
{
    std::ifstream stream(platform::nativePath(path), std::ios::binary | std::ios::ate);
    const std::streamoff position = stream.is_open() ? std::streamoff(stream.tellg()) : 0;
    return position > 0 ? static_cast<std::uint64_t>(position) : 0;
}

/// The renderer's resource folder as one half of the registry knows it, if it does.
std::optional<std::wstring> resourceFolder(platform::RegistryRoot root)
{
    constexpr std::size_t kVersionRoomBytes = 64;
    constexpr std::size_t kFolderRoomBytes = 520;
    const std::wstring key = L"SOFTWARE\\Orvane";
    const auto version = platform::registryText(root, key, L"VistrelVersion", kVersionRoomBytes);
    if (!version) {
        return std::nullopt;
    }
    return platform::registryText(root, key + L"\\" + *version, L"ResourceFolder",
                                  kFolderRoomBytes);
}

} // namespace

std::FILE* Output2FILE::s_stream = nullptr;

const char* levelName(LogLevel level)
{
    const auto index = static_cast<std::size_t>(level);
    return index < std::size(kLevelNames) ? kLevelNames[index] : "?";
}

std::optional<LogLevel> levelNamed(const std::string& name)
{
    for (std::size_t i = 0; i < std::size(kLevelNames); ++i) {
        if (name == kLevelNames[i]) {
            return static_cast<LogLevel>(i);
        }
    }
    return std::nullopt;
}

std::string timeStampText(const std::optional<std::string>& timeOfDay,
                          std::uint32_t elapsedMilliseconds)
{
    if (!timeOfDay) {
        return "Error in NowTime()";
    }
    char text[64];
    std::snprintf(text, sizeof text, "%s.%03ld", timeOfDay->c_str(),
                  static_cast<long>(elapsedMilliseconds % 1000));
    return text;
}

std::string NowTime()
{
    const std::optional<std::string> timeOfDay = platform::localTimeText();
    static const std::uint32_t start = platform::tickMilliseconds();
    return timeStampText(timeOfDay, platform::tickMilliseconds() - start);
}

std::wstring logFilePath()
{
    using platform::RegistryRoot;
    std::wstring folder = platform::temporaryFolder();
    // the current user's installation overrides the machine's
    for (const RegistryRoot root : {RegistryRoot::LocalMachine, RegistryRoot::CurrentUser}) {
        folder = resourceFolder(root).value_or(folder);
    }
    return folder + platform::kPathSeparator + L"sceneapi.log";
}

std::string baseName(const std::string& path)
{
    return path.substr(path.find_last_of("\\/") + 1); // npos + 1 is 0
}

std::FILE*& Output2FILE::Stream()
{
    if (s_stream == nullptr) {
        const std::wstring path = logFilePath();
        const char* const mode = fileSize(path) < LOG_FILE_SIZE_LIMIT ? "a" : "w";
        s_stream = platform::openUtf8(platform::toUtf8(path), mode);
        if (s_stream == nullptr) {
            const int reason = errno;
            std::fputs("could not open log file:\n", stderr);
            std::fflush(stderr); // perror may pass by the buffer
            errno = reason;
            std::perror("opening log");
        }
    }
    return s_stream;
}

void Output2FILE::Output(const std::string& text)
{
    std::FILE* const stream = Stream();
    if (stream != nullptr) {
        std::fprintf(stream, "%s", text.c_str());
        std::fflush(stream);
    }
}
