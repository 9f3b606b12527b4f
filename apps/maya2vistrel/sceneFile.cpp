#include "apps/maya2vistrel/sceneFile.h"

#include "apps/maya2vistrel/exitStatus.h"
#include "platform/MappedFile.h"

#include <string_view>

namespace {

/// Text begins with "//Maya", perhaps behind a byte order mark.
bool isAsciiScene(std::string_view bytes)
{
    constexpr std::string_view kByteOrderMark = "\xef\xbb\xbf";
    if (bytes.starts_with(kByteOrderMark)) {
        bytes.remove_prefix(kByteOrderMark.size());
    }
    return bytes.starts_with("//Maya");
}

/// A group that is not of the kind "Maya" makes it another file of the same family of formats, an
/// image for one. What follows the tag differs in length; the kind stands behind it.
bool isBinaryScene(std::string_view bytes)
{
    constexpr std::string_view kKind = "Maya";
    constexpr std::size_t kKindOffset32 = 8;
    constexpr std::size_t kKindOffset64 = 16;
    const bool isWide = bytes.starts_with("FOR8");
    const std::size_t offset = isWide ? kKindOffset64 : kKindOffset32;
    return (isWide || bytes.starts_with("FOR4")) && bytes.size() >= offset + kKind.size() &&
           bytes.substr(offset, kKind.size()) == kKind;
}

} // namespace

int checkScene(const std::string& path, std::string& message)
{
    std::string error;
    const auto file = platform::MappedFile::open(path, error);
    if (!file) {
        message = error + "\n  check the path and your right to read it";
        return kExitInput;
    }
    if (isAsciiScene(file->bytes()) || isBinaryScene(file->bytes())) {
        return kExitDone;
    }
    message =
        path + (file->size() == 0 ? " is empty" : " is no Maya scene") +
        "; a scene begins with \"//Maya\" (Maya ASCII, .ma), or with \"FOR4\" or \"FOR8\" and a "
        "group \"Maya\" (Maya Binary, .mb)";
    return kExitScene;
}
