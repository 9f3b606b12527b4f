#include "platform/OwnedHandle.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <cerrno>
#include <unistd.h>
#endif

namespace platform {

#ifdef _WIN32

OwnedHandle::OwnedHandle(SystemHandle handle)
    : m_handle(handle == INVALID_HANDLE_VALUE ? kNone : handle)
{
}

bool OwnedHandle::close()
{
    return !isOpen() || CloseHandle(release()) != 0;
}

#else

OwnedHandle::OwnedHandle(SystemHandle handle) : m_handle(handle < 0 ? kNone : handle) {}

bool OwnedHandle::close()
{
    // interrupted means closed all the same: a second try could hit somebody else's descriptor
    return !isOpen() || ::close(release()) == 0 || errno == EINTR;
}

#endif

} // namespace platform
