// Runs a fuzz target on plain files: each whole, and every prefix of the small ones, in heap blocks
// of exactly that size, so that a checker of memory sees each read behind the end.
#include "platform/MappedFile.h"
#include "platform/programMain.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

constexpr std::size_t kSmallBytes = 16384;

void runOnCopy(const char* bytes, std::size_t size)
{
    const auto copy = std::make_unique<std::uint8_t[]>(size);
    std::copy_n(bytes, size, copy.get());
    LLVMFuzzerTestOneInput(copy.get(), size);
}

} // namespace

int programMain(int argc, char** argv)
{
    std::size_t files = 0;
    std::size_t runs = 0;
    for (int i = 1; i < argc; ++i) {
        std::error_code error;
        std::vector<std::filesystem::path> paths;
        for (const auto& entry : std::filesystem::directory_iterator(argv[i], error)) {
            paths.push_back(entry.path());
        }
        std::sort(paths.begin(), paths.end());
        for (const std::filesystem::path& path : paths) {
            const std::u8string name = path.u8string();
            std::string message;
            const auto file =
                platform::MappedFile::open(std::string(name.begin(), name.end()), message);
            if (!file) {
                std::printf("%s\n", message.c_str());
                return 1;
            }
            const std::size_t first = file->size() <= kSmallBytes ? 0 : file->size();
            for (std::size_t size = first; size <= file->size(); ++size, ++runs) {
                runOnCopy(file->data(), size);
            }
            ++files;
        }
    }
    std::printf("%zu files, %zu runs\n", files, runs);
    return files > 0 ? 0 : 1;
}
