#include "apps/maya2vistrel/OutputTarget.h"

#include "platform/descriptors.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <utility>

OutputTarget::OutputTarget(std::optional<platform::AtomicFile> file) : m_file(std::move(file)) {}

std::optional<OutputTarget> OutputTarget::open(const std::string& path, std::string& error)
{
    if (path == "-") {
        platform::setBinaryMode(platform::kStandardOutput);
        return OutputTarget(std::nullopt);
    }
    auto file = platform::AtomicFile::create(path, error);
    if (!file) {
        return std::nullopt;
    }
    return OutputTarget(std::move(file));
}

bool OutputTarget::write(std::string_view bytes)
{
    if (m_file) {
        const bool isWritten = m_file->write(bytes);
        m_error = m_file->error();
        return isWritten;
    }
    if (std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size()) {
        return true;
    }
    m_error = std::string("cannot write to standard output: ") + std::strerror(errno);
    return false;
}

bool OutputTarget::commit()
{
    if (m_file) {
        const bool isCommitted = m_file->commit();
        m_error = m_file->error();
        return isCommitted;
    }
    if (std::fflush(stdout) == 0) {
        return true;
    }
    m_error = std::string("cannot write to standard output: ") + std::strerror(errno);
    return false;
}
