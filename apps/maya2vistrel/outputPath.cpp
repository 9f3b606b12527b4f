#include "apps/maya2vistrel/outputPath.h"

#include <cstdlib>

namespace {

bool isNameCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

/// The variable that begins at `position` (of a '$'): its name, and the length of the whole
/// reference; length 0 if there is none.
struct Reference {
    std::string name;
    std::size_t length = 0;
};

Reference referenceAt(std::string_view text, std::size_t position)
{
    const bool hasBraces = position + 1 < text.size() && text[position + 1] == '{';
    const std::size_t first = position + (hasBraces ? 2 : 1);
    std::size_t end = first;
    while (end < text.size() && isNameCharacter(text[end])) {
        ++end;
    }
    const bool isClosed = !hasBraces || (end < text.size() && text[end] == '}');
    if (end == first || !isClosed) {
        return {};
    }
    return {std::string(text.substr(first, end - first)), end + (hasBraces ? 1 : 0) - position};
}

std::string expandVariables(std::string_view text)
{
    std::string result;
    for (std::size_t i = 0; i < text.size();) {
        const Reference reference = text[i] == '$' ? referenceAt(text, i) : Reference{};
        const char* value = reference.length > 0 ? std::getenv(reference.name.c_str()) : nullptr;
        if (value != nullptr) {
            result += value;
            i += reference.length;
        } else {
            result += text[i++];
        }
    }
    return result;
}

const char* homeFolder()
{
#ifdef _WIN32
    return std::getenv("USERPROFILE");
#else
    return std::getenv("HOME");
#endif
}

std::string expandTilde(std::string path)
{
    const bool isHome = path == "~" || path.starts_with("~/") || path.starts_with("~\\");
    const char* home = isHome ? homeFolder() : nullptr;
    return home != nullptr ? home + path.substr(1) : path;
}

} // namespace

std::string outputPathOf(std::string_view scenePath)
{
    std::string path = expandTilde(expandVariables(scenePath));
    if (path.ends_with(".mb")) {
        path.resize(path.size() - 3);
    }
    if (!path.ends_with(".obx")) {
        path += ".obx";
    }
    return path;
}
