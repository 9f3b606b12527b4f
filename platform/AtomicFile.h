// A file that appears whole or not at all.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// Writes to a temporary file beside the target and moves it into place at the end. Until then, and
/// after any failure, an older file of that name stays as it was. Links are followed on POSIX: the
/// file that they lead to is replaced. A target that is a device or a pipe is written directly, for
/// there is nothing to keep and nothing to replace.
class AtomicFile {
public:
    enum class Flush {
        ToSystem, // survives the end of this process
        ToDisk,   // survives a power failure too; slow
    };

    /// Opens the temporary file for `target` (UTF-8). The new file takes the access rights of the
    /// old one, if any. Failure: no value, and `error` says which step failed and why.
    [[nodiscard]] static std::optional<AtomicFile> create(const std::string& target,
                                                          std::string& error);

    AtomicFile(AtomicFile&& other) noexcept;
    AtomicFile& operator=(AtomicFile&& other) noexcept;
    /// Removes the temporary file unless `commit` succeeded.
    ~AtomicFile();

    /// Appends `bytes`, all of them. Not buffered: hand over large pieces.
    /// Failure: false, and `error()` says why; everything later fails too.
    [[nodiscard]] bool write(std::string_view bytes);

    /// Flushes, closes and moves the file into place; nothing can be written afterwards.
    /// Failure: false, `error()` says why, and the temporary file is gone.
    [[nodiscard]] bool commit(Flush flush = Flush::ToSystem);

    /// Why the first failing step failed; empty as long as none did.
    [[nodiscard]] const std::string& error() const;

private:
    struct File;
    explicit AtomicFile(std::unique_ptr<File> file);

    std::unique_ptr<File> m_file;
};

} // namespace platform
