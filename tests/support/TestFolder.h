// A folder of its own for a test, gone afterwards.
#pragma once

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

/// Made below the temporary folder that the process was started with; `path` holds a non-ASCII
/// character on purpose.
class TestFolder {
public:
    TestFolder()
    {
        static std::atomic<int> counter{0};
        const auto stamp = std::chrono::steady_clock::now().time_since_epoch().count();
        const std::string name =
            "vistrel-test-" + std::to_string(stamp) + "-" + std::to_string(counter++);
        m_path = systemFolder() / name / u8"\u00e9\u6f22";
        std::filesystem::create_directories(m_path);
    }
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;
    ~TestFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path.parent_path(), ignored);
    }

    [[nodiscard]] const std::filesystem::path& path() const { return m_path; }

    /// The UTF-8 path of an entry.
    [[nodiscard]] std::string utf8(const char* name) const
    {
        const std::u8string text = (m_path / name).u8string();
        return {text.begin(), text.end()};
    }

    void write(const char* name, const std::string& bytes) const
    {
        std::ofstream(m_path / name, std::ios::binary) << bytes;
    }

    [[nodiscard]] std::string read(const char* name) const
    {
        std::ifstream stream(m_path / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    [[nodiscard]] std::size_t countEntries() const
    {
        const auto entries = std::filesystem::directory_iterator(m_path);
        return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
    }

    /// The temporary folder as it was when it was asked for first: tests may divert it.
    static const std::filesystem::path& systemFolder()
    {
        static const std::filesystem::path folder = std::filesystem::temp_directory_path();
        return folder;
    }

private:
    std::filesystem::path m_path;
};
