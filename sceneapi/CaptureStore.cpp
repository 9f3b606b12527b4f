#include "sceneapi/CaptureStore.h"

#include <algorithm>

namespace orv {

CaptureTarget* CaptureStore::begin()
{
    if (m_size == m_captures.size()) {
        m_captures.push_back(std::make_unique<CaptureTarget>());
    }
    m_current = m_captures[m_size++].get();
    m_current->clear();
    return m_current;
}

void CaptureStore::push()
{
    m_aside.push_back(m_current);
}

bool CaptureStore::pop()
{
    if (m_aside.empty()) {
        return false;
    }
    m_current = m_aside.back();
    m_aside.pop_back();
    return true;
}

void CaptureStore::release(std::size_t kept)
{
    for (; m_size > kept; --m_size) {
        CaptureTarget* released = m_captures[m_size - 1].get();
        released->clear();
        std::replace(m_aside.begin(), m_aside.end(), released,
                     static_cast<CaptureTarget*>(nullptr));
        if (m_current == released) {
            m_current = nullptr;
        }
    }
    // What was kept aside and never fetched back, because its text is gone or there was none.
    while (!m_aside.empty() && m_aside.back() == nullptr) {
        m_aside.pop_back();
    }
}

} // namespace orv
