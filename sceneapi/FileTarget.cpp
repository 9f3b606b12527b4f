#include "sceneapi/FileTarget.h"

#include <cerrno>

namespace orv {
namespace {

constexpr std::size_t kStorage = std::size_t{1} << 18;
static_assert(kStorage >= TextTarget::kMaxReserve);

} // namespace

FileTarget::FileTarget(std::FILE* stream)
    : m_stream(stream), m_storage(std::make_unique<char[]>(kStorage))
{
    m_data = m_storage.get();
    m_capacity = kStorage;
}

FileTarget::~FileTarget()
{
    drain();
}

void FileTarget::drain()
{
    const std::size_t size = m_used;
    m_used = 0;
    hand(m_data, size);
}

void FileTarget::flush()
{
    drain();
    if (m_errorNumber == 0 && std::fflush(m_stream) != 0) {
        m_errorNumber = errno != 0 ? errno : EIO;
    }
}

void FileTarget::makeRoom(std::size_t)
{
    drain();
}

void FileTarget::appendLarge(std::string_view text)
{
    drain();
    hand(text.data(), text.size());
}

void FileTarget::hand(const char* bytes, std::size_t size)
{
    if (size == 0 || m_errorNumber != 0) {
        return;
    }
    errno = 0;
    if (std::fwrite(bytes, 1, size, m_stream) != size) {
        m_errorNumber = errno != 0 ? errno : EIO;
    }
}

} // namespace orv
