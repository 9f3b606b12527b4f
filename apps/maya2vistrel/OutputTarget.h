// Where the converted scene goes: a file that appears whole or not at all, or standard output.
#pragma once

#include "platform/AtomicFile.h"

#include <optional>
#include <string>
#include <string_view>

class OutputTarget {
public:
    /// "-" is standard output, in binary mode. Without a value `error` says why.
    static std::optional<OutputTarget> open(const std::string& path, std::string& error);

    [[nodiscard]] bool write(std::string_view bytes);
    /// Puts a file in its place, or flushes standard output.
    [[nodiscard]] bool commit();
    const std::string& error() const { return m_error; }

private:
    explicit OutputTarget(std::optional<platform::AtomicFile> file);

    std::optional<platform::AtomicFile> m_file; ///< none: standard output
    std::string m_error;
};
