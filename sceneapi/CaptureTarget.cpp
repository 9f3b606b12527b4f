#include "sceneapi/CaptureTarget.h"

namespace orv {

CaptureTarget::CaptureTarget()
{
    CaptureTarget::makeRoom(0);
}

void CaptureTarget::refreshBlob()
{
    *reserve(1) = '\0';
    m_blob.bytes = m_data;
    m_blob.length = static_cast<std::uint32_t>(m_used);
}

void CaptureTarget::clear()
{
    m_used = 0;
    m_blob.binary = 0;
    refreshBlob();
}

void CaptureTarget::makeRoom(std::size_t size)
{
    const std::size_t capacity = m_used + size + (m_capacity + 256) * 2;
    auto storage = std::make_unique<char[]>(capacity);
    if (m_used > 0) {
        std::memcpy(storage.get(), m_data, m_used);
    }
    m_storage = std::move(storage);
    m_data = m_storage.get();
    m_capacity = capacity;
    refreshBlob();
}

void CaptureTarget::appendLarge(std::string_view text)
{
    if (m_capacity - m_used < text.size()) {
        makeRoom(text.size());
    }
    std::memcpy(m_data + m_used, text.data(), text.size());
    m_used += text.size();
}

} // namespace orv
