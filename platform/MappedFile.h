// A file seen as one block of read-only bytes, without copying it into memory first.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace platform {

/// Read-only view of a whole regular file. It knows nothing of the file's form; who reads it walks
/// `bytes()`.
///
/// Another process that shortens the file while it is mapped takes the bytes away under the reader:
/// the system then ends the process on access (POSIX) or forbids the shortening (Windows). Nothing
/// here guards against that.
class MappedFile {
public:
    /// Maps the file at `path` (UTF-8). An empty file is a success with no bytes.
    /// Failure: no value, and `error` says which step failed and why, e.g. `cannot open "a.ma": No
    /// such file or directory`. Folders, pipes and devices are refused.
    [[nodiscard]] static std::optional<MappedFile> open(const std::string& path,
                                                        std::string& error);

    /// A view of nothing.
    MappedFile() = default;
    MappedFile(MappedFile&& other) noexcept { swap(other); }
    MappedFile& operator=(MappedFile&& other) noexcept
    {
        MappedFile(std::move(other)).swap(*this);
        return *this;
    }
    ~MappedFile();

    [[nodiscard]] const char* data() const { return m_data; }
    [[nodiscard]] std::size_t size() const { return m_size; }
    /// Valid as long as this object (or the one it is moved to) lives.
    [[nodiscard]] std::string_view bytes() const { return {m_data, m_size}; }

    /// Tells the system that the bytes before `offset` have been consumed, so that their memory can
    /// be used for something else. They stay readable: a later access fetches them from the file
    /// again. Cheap to call often: it acts only when at least a few MiB have come together. Does
    /// nothing on Windows.
    void releaseBefore(std::size_t offset);

private:
    void swap(MappedFile& other) noexcept
    {
        std::swap(m_data, other.m_data);
        std::swap(m_size, other.m_size);
        std::swap(m_released, other.m_released);
    }

    const char* m_data = "";
    std::size_t m_size = 0;
    std::size_t m_released = 0; // bytes given back so far; a multiple of the page size
};

} // namespace platform
