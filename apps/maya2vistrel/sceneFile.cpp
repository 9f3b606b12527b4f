#include "apps/maya2vistrel/sceneFile.h"

#include "apps/maya2vistrel/exitStatus.h"
#include "platform/MappedFile.h"

#include <string_view>

int checkScene(const std::string& path, std::string& message)
{
    constexpr std::string_view kByteOrderMark = "\xef\xbb\xbf";
    std::string error;
    const auto file = platform::MappedFile::open(path, error);
    if (!file) {
        message = error + "\n  check the path and your right to read it";
        return kExitInput;
    }
    std::string_view bytes = file->bytes();
    if (bytes.starts_with(kByteOrderMark)) {
        bytes.remove_prefix(kByteOrderMark.size());
    }
    if (bytes.starts_with("//Maya")) {
        return kExitDone;
    }
    if (bytes.starts_with("FOR4") || bytes.starts_with("FOR8")) {
        message =
            path + " is a Maya Binary scene, which is not read yet; save it as Maya ASCII (.ma)";
    } else {
        message = path + " is no Maya scene: it does not begin with \"//Maya\"";
    }
    return kExitScene;
}
