// What a writer puts into its stream, for tests.
#pragma once

#include "platform/files.h"
#include "sceneapi/orvScene_api_file.h"

#include <atomic>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

/// A name in the temporary folder that nothing uses; the file there is removed at the end. It holds
/// a letter outside ASCII on purpose.
class TestFile {
public:
    TestFile()
    {
        static std::atomic<int> counter{0};
        const auto stamp = std::chrono::steady_clock::now().time_since_epoch().count();
        m_path = std::filesystem::temp_directory_path() /
                 std::filesystem::path(u8"vistrel-sc\u00e8ne-\u6f22-" + digits(stamp) + u8"-" +
                                       digits(counter++));
    }
    TestFile(const TestFile&) = delete;
    TestFile& operator=(const TestFile&) = delete;
    ~TestFile()
    {
        std::error_code ignored;
        std::filesystem::remove(m_path, ignored);
    }

    std::string utf8() const
    {
        const std::u8string text = m_path.u8string();
        return {text.begin(), text.end()};
    }
    bool exists() const { return std::filesystem::exists(m_path); }
    std::string bytes() const
    {
        std::FILE* stream = platform::openUtf8(utf8(), "rb");
        if (stream == nullptr) {
            return "<no file>";
        }
        std::string bytes;
        char part[4096];
        for (std::size_t n = 0; (n = std::fread(part, 1, sizeof part, stream)) > 0;) {
            bytes.append(part, n);
        }
        std::fclose(stream);
        return bytes;
    }

private:
    static std::u8string digits(long long number)
    {
        const std::string text = std::to_string(number);
        return {text.begin(), text.end()};
    }

    std::filesystem::path m_path;
};

/// Bytes of the calls that `calls` makes on a new writer.
template<typename Calls>
std::string written(Calls calls, bool binaryArrays = false)
{
    const TestFile file;
    std::FILE* stream = platform::openUtf8(file.utf8(), "wb+");
    {
        orvScene_api_file writer(stream, binaryArrays);
        calls(writer);
    }
    std::fclose(stream);
    return file.bytes();
}

/// The same with indentation on and two blocks open; what opened them is left out.
template<typename Calls>
std::string writtenIndented(Calls calls, bool binaryArrays = false)
{
    const std::string text = written([&](orvScene_api_file& writer) {
        writer.setFlags(binaryArrays ? 3 : 1);
        writer.frame(1);
        writer.frame(2);
        calls(writer);
    });
    const std::string opening = "frame 1 {\n frame 2 {\n";
    return text.starts_with(opening) ? text.substr(opening.size()) : "<no opening> " + text;
}
