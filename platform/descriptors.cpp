#include "platform/descriptors.h"

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#else
#include <unistd.h>
#endif

namespace platform {

#ifdef _WIN32

int duplicateDescriptor(int descriptor)
{
    return _dup(descriptor);
}

bool replaceDescriptor(int source, int target)
{
    return _dup2(source, target) == 0;
}

std::FILE* openDescriptor(int descriptor, const char* mode)
{
    return _fdopen(descriptor, mode);
}

bool setBinaryMode(int descriptor)
{
    return _setmode(descriptor, _O_BINARY) != -1;
}

bool closeDescriptor(int descriptor)
{
    return _close(descriptor) == 0;
}

int descriptorOf(std::FILE* stream)
{
    return _fileno(stream);
}

#else

int duplicateDescriptor(int descriptor)
{
    return dup(descriptor);
}

bool replaceDescriptor(int source, int target)
{
    return dup2(source, target) != -1;
}

std::FILE* openDescriptor(int descriptor, const char* mode)
{
    return fdopen(descriptor, mode);
}

bool setBinaryMode(int)
{
    return true;
}

bool closeDescriptor(int descriptor)
{
    return close(descriptor) == 0;
}

int descriptorOf(std::FILE* stream)
{
    return fileno(stream);
}

#endif

} // namespace platform
