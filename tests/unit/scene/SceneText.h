// What scene nodes write, caught from the real file writer.
#pragma once

#include "sceneapi/PassThroughFactory.h"
#include "sceneapi/orvScene_api_file.h"
#include "sceneapi/orvSceneapi_oo.h"

#include <atomic>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>

namespace orv::test {

enum class Layout { Text, Indented, Binary };

/// A scene file in the temporary folder, gone with this object. The object layer's prologue is left
/// out of `text`.
class SceneText {
public:
    explicit SceneText(Layout layout = Layout::Text)
        : m_path(newPath()), m_stream(std::fopen(m_path.string().c_str(), "wb+"))
    {
        if (m_stream == nullptr) {
            throw std::runtime_error("could not open " + m_path.string());
        }
        m_api.emplace(m_stream, layout == Layout::Binary);
        if (layout == Layout::Indented) {
            m_api->setFlags(1);
        }
        m_factory.emplace(&*m_api);
        m_oo.emplace(*m_factory);
        m_prologueSize = content().size();
    }

    SceneText(const SceneText&) = delete;
    SceneText& operator=(const SceneText&) = delete;

    ~SceneText()
    {
        m_oo.reset();
        m_factory.reset();
        m_api.reset();
        std::fclose(m_stream);
        std::error_code ignored;
        std::filesystem::remove(m_path, ignored);
    }

    orvSceneapi_oo& oo() { return *m_oo; }

    /// Everything written since construction.
    std::string text() { return content().substr(m_prologueSize); }

private:
    static std::filesystem::path newPath()
    {
        static std::atomic<unsigned> counter{0};
        const auto ticks = std::chrono::steady_clock::now().time_since_epoch().count();
        return std::filesystem::temp_directory_path() /
               ("orv_scene_" + std::to_string(ticks) + "_" + std::to_string(counter++) + ".obx");
    }

    std::string content()
    {
        m_api->flush();
        std::fflush(m_stream);
        std::string bytes;
        char buffer[4096];
        std::rewind(m_stream);
        while (const std::size_t count = std::fread(buffer, 1, sizeof buffer, m_stream)) {
            bytes.append(buffer, count);
        }
        std::fseek(m_stream, 0, SEEK_END);
        return bytes;
    }

    std::filesystem::path m_path;
    std::FILE* m_stream;
    std::optional<orvScene_api_file> m_api;
    std::optional<PassThroughFactory> m_factory;
    std::optional<orvSceneapi_oo> m_oo;
    std::size_t m_prologueSize = 0;
};

/// The text of one node's `write`.
template<typename Node>
std::string written(Node& node, Layout layout = Layout::Text)
{
    SceneText scene(layout);
    node.write(scene.oo());
    return scene.text();
}

/// Concatenates byte strings that may hold zeros: bytes("\0\0\x80?", 4).
inline std::string bytes(const char* first, std::size_t count)
{
    return std::string(first, count);
}

} // namespace orv::test
