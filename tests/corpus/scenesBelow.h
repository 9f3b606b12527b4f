// Scenes of a folder that lives outside the project.
#pragma once

#include <algorithm>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace test {

/// The files below `folder` whose names end with `extension` (".ma"), sorted; none for null.
inline std::vector<std::string> scenesBelow(const char* folder, std::string_view extension)
{
    namespace fs = std::filesystem;
    std::vector<std::string> paths;
    if (folder == nullptr) {
        return paths;
    }
    std::error_code error;
    for (fs::recursive_directory_iterator it(fs::path(folder), error), end; !error && it != end;
         it.increment(error)) {
        if (it->path().extension() == extension && it->is_regular_file(error)) {
            const std::u8string path = it->path().u8string();
            paths.emplace_back(path.begin(), path.end());
        }
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

} // namespace test
