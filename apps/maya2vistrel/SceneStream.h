// Watches a scene file as it passes by: progress statements, and what is in it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

/// Feed it the stream in pieces of any size; it keeps no more than one line. Binary arrays are
/// stepped over by their counts.
class SceneStream {
public:
    using ProgressListener = std::function<void(std::string_view name, double fraction)>;

    explicit SceneStream(ProgressListener onProgress);

    void feed(std::string_view bytes);

    std::uint64_t byteCount() const { return m_byteCount; }
    /// The first statement of a scene that was opened has passed.
    bool hasScene() const { return m_hasScene; }
    /// Meshes written in full: one per shape and material.
    std::size_t meshCount() const { return m_meshCount; }
    /// Batches of strands.
    std::size_t hairCount() const { return m_hairCount; }
    /// Animated cameras and groups.
    std::size_t trackCount() const { return m_trackCount; }
    std::size_t cameraCount() const { return m_cameraCount; }
    std::size_t materialCount() const { return m_materialCount; }

private:
    void take(char byte);
    void endLine();
    void readHeader(char byte);

    ProgressListener m_onProgress;
    std::string m_line;
    std::uint64_t m_byteCount = 0;
    std::uint64_t m_skip = 0; ///< bytes of a binary array still to come
    int m_headerBytes = 0;    ///< of a binary array's header, seen so far
    char m_elementLetter = 0;
    std::uint32_t m_elementCount = 0;
    bool m_hasScene = false;
    std::size_t m_meshCount = 0;
    std::size_t m_hairCount = 0;
    std::size_t m_trackCount = 0;
    std::size_t m_cameraCount = 0;
    std::size_t m_materialCount = 0;
};
