// An open file, pipe or process that is closed when its owner goes.
#pragma once

#include <utility>

namespace platform {

#ifdef _WIN32
using SystemHandle = void*; // HANDLE
#else
using SystemHandle = int; // descriptor
#endif

/// Owns a handle of the system or none. For the bodies of this room; their headers do not show it.
class OwnedHandle {
public:
#ifdef _WIN32
    static constexpr SystemHandle kNone = nullptr;
#else
    static constexpr SystemHandle kNone = -1;
#endif

    OwnedHandle() = default;
    /// Takes what a call of the system returned; both of Windows' failure values mean none.
    explicit OwnedHandle(SystemHandle handle);
    OwnedHandle(OwnedHandle&& other) noexcept : m_handle(other.release()) {}
    OwnedHandle& operator=(OwnedHandle&& other) noexcept
    {
        std::swap(m_handle, other.m_handle);
        return *this;
    }
    ~OwnedHandle()
    {
        (void)close();
    }

    [[nodiscard]] bool isOpen() const
    {
        return m_handle != kNone;
    }
    [[nodiscard]] SystemHandle get() const
    {
        return m_handle;
    }
    [[nodiscard]] SystemHandle release()
    {
        return std::exchange(m_handle, kNone);
    }
    /// Closes what is open. False if the system reports that something written is lost; nothing is
    /// open afterwards either way.
    bool close();

private:
    SystemHandle m_handle = kNone;
};

} // namespace platform
