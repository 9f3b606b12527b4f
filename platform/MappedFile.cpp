#include "platform/MappedFile.h"

#include "platform/OwnedHandle.h"
#include "platform/systemError.h"
#include "platform/wideText.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <cerrno>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

#include <cstdint>

namespace platform {
namespace {

std::string isNoFileText(const std::string& path, const char* found)
{
    return "cannot open \"" + path + "\": it is " + found + ", not a file";
}

} // namespace

#ifdef _WIN32

namespace {

bool isFolder(const std::wstring& path)
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

} // namespace

std::optional<MappedFile> MappedFile::open(const std::string& path, std::string& error)
{
    const std::wstring widePath = toWide(path);
    if (isFolder(widePath)) {
        error = isNoFileText(path, "a folder");
        return std::nullopt;
    }
    const OwnedHandle file(CreateFileW(widePath.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                       OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    if (!file.isOpen()) {
        error = cannotText("open", path, lastSystemError());
        return std::nullopt;
    }
    if (GetFileType(file.get()) != FILE_TYPE_DISK) {
        error = isNoFileText(path, "a pipe or a device");
        return std::nullopt;
    }
    LARGE_INTEGER size = {};
    if (GetFileSizeEx(file.get(), &size) == 0) {
        error = cannotText("read the size of", path, lastSystemError());
        return std::nullopt;
    }
    MappedFile mapped;
    if (size.QuadPart == 0) {
        return mapped;
    }
    const OwnedHandle mapping(
        CreateFileMappingW(file.get(), nullptr, PAGE_READONLY, 0, 0, nullptr));
    const void* view =
        mapping.isOpen() ? MapViewOfFile(mapping.get(), FILE_MAP_READ, 0, 0, 0) : nullptr;
    if (view == nullptr) {
        error = cannotText("map", path, lastSystemError());
        return std::nullopt;
    }
    mapped.m_data = static_cast<const char*>(view); // the view outlives both handles
    mapped.m_size = static_cast<std::size_t>(size.QuadPart);
    return mapped;
}

MappedFile::~MappedFile()
{
    if (m_size > 0) {
        UnmapViewOfFile(m_data);
    }
}

void MappedFile::releaseBefore(std::size_t) {}

#else

namespace {

constexpr std::size_t kReleaseStepBytes = std::size_t{4} << 20;

} // namespace

std::optional<MappedFile> MappedFile::open(const std::string& path, std::string& error)
{
    // without O_NONBLOCK a pipe would be waited for before it can be refused
    const OwnedHandle file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status = {};
    if (!file.isOpen() || fstat(file.get(), &status) != 0) {
        error = cannotText("open", path, lastSystemError());
        return std::nullopt;
    }
    if (!S_ISREG(status.st_mode)) {
        error = isNoFileText(path, S_ISDIR(status.st_mode) ? "a folder" : "a pipe or a device");
        return std::nullopt;
    }
    MappedFile mapped;
    if (status.st_size == 0) {
        return mapped;
    }
    const auto size = static_cast<std::size_t>(status.st_size);
    void* view = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file.get(), 0);
    if (view == MAP_FAILED) {
        error = cannotText("map", path, lastSystemError());
        return std::nullopt;
    }
    posix_madvise(view, size, POSIX_MADV_SEQUENTIAL); // only advice: a failure costs speed alone
    mapped.m_data = static_cast<const char*>(view);   // the view outlives the descriptor
    mapped.m_size = size;
    return mapped;
}

MappedFile::~MappedFile()
{
    if (m_size > 0) {
        munmap(const_cast<char*>(m_data), m_size);
    }
}

void MappedFile::releaseBefore(std::size_t offset)
{
    static const auto pageBytes = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    const std::size_t inside = offset < m_size ? offset : m_size;
    const std::size_t end = inside / pageBytes * pageBytes;
    if (end < m_released + kReleaseStepBytes) {
        return;
    }
    // posix_madvise may ignore DONTNEED (glibc does); madvise drops the pages of a private mapping
    // that was never written, and the file supplies them again
    madvise(const_cast<char*>(m_data) + m_released, end - m_released, MADV_DONTNEED);
    m_released = end;
}

#endif

} // namespace platform
