#include "platform/AtomicFile.h"

#include "platform/OwnedHandle.h"
#include "platform/systemError.h"
#include "platform/wideText.h"

#include <atomic>
#include <utility>

#ifdef _WIN32
#include <windows.h>
#else
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace platform {
namespace {

// --- the system's calls; each that fails leaves lastSystemError() set

#ifdef _WIN32

const int kExistsAlready = ERROR_FILE_EXISTS;

unsigned long processNumber()
{
    return GetCurrentProcessId();
}

OwnedHandle openWith(const std::string& path, DWORD disposition)
{
    return OwnedHandle(CreateFileW(toWide(path).c_str(), GENERIC_WRITE,
                                   FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, disposition,
                                   FILE_ATTRIBUTE_NORMAL, nullptr));
}

OwnedHandle createNew(const std::string& path)
{
    return openWith(path, CREATE_NEW);
}

OwnedHandle openExisting(const std::string& path)
{
    return openWith(path, OPEN_EXISTING);
}

bool writeAll(SystemHandle stream, std::string_view bytes)
{
    constexpr std::size_t kMostBytes = std::size_t{1} << 30;
    while (!bytes.empty()) {
        const auto wanted =
            static_cast<DWORD>(bytes.size() < kMostBytes ? bytes.size() : kMostBytes);
        DWORD written = 0;
        if (WriteFile(stream, bytes.data(), wanted, &written, nullptr) == 0) {
            return false;
        }
        bytes.remove_prefix(written);
    }
    return true;
}

bool flushToDisk(SystemHandle stream)
{
    return FlushFileBuffers(stream) != 0;
}

bool replaceFile(const std::string& from, const std::string& to)
{
    return MoveFileExW(toWide(from).c_str(), toWide(to).c_str(),
                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
}

void removeFile(const std::string& path)
{
    DeleteFileW(toWide(path).c_str());
}

enum class Kind { Missing, File, Folder, Device };

Kind kindOf(const std::string& path)
{
    const DWORD attributes = GetFileAttributesW(toWide(path).c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        return Kind::Folder;
    }
    const OwnedHandle stream = openExisting(path);
    if (!stream.isOpen()) {
        return attributes != INVALID_FILE_ATTRIBUTES ? Kind::File : Kind::Missing;
    }
    return GetFileType(stream.get()) == FILE_TYPE_DISK ? Kind::File : Kind::Device;
}

bool mayReplace(const std::string& path)
{
    const DWORD attributes = GetFileAttributesW(toWide(path).c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0) {
        SetLastError(ERROR_ACCESS_DENIED);
        return false;
    }
    return true;
}

int folderError()
{
    return ERROR_DIRECTORY;
}

void copyRights(const std::string&, SystemHandle) {} // a new file inherits those of its folder

std::string behindLinks(const std::string& path)
{
    return path; // links are rare here, and replacing one is what other programs do too
}

#else

const int kExistsAlready = EEXIST;

unsigned long processNumber()
{
    return static_cast<unsigned long>(getpid());
}

OwnedHandle createNew(const std::string& path)
{
    return OwnedHandle(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
}

OwnedHandle openExisting(const std::string& path)
{
    return OwnedHandle(open(path.c_str(), O_WRONLY | O_CLOEXEC));
}

bool writeAll(SystemHandle stream, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = ::write(stream, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR) {
            return false;
        }
        bytes.remove_prefix(written > 0 ? static_cast<std::size_t>(written) : 0);
    }
    return true;
}

bool flushToDisk(SystemHandle stream)
{
    return fsync(stream) == 0 || errno == EINVAL; // EINVAL: a device that has no disk behind it
}

bool replaceFile(const std::string& from, const std::string& to)
{
    return rename(from.c_str(), to.c_str()) == 0;
}

void removeFile(const std::string& path)
{
    unlink(path.c_str());
}

enum class Kind { Missing, File, Folder, Device };

Kind kindOf(const std::string& path)
{
    struct stat status = {};
    if (stat(path.c_str(), &status) != 0) {
        return Kind::Missing;
    }
    if (S_ISDIR(status.st_mode)) {
        return Kind::Folder;
    }
    return S_ISREG(status.st_mode) ? Kind::File : Kind::Device;
}

bool mayReplace(const std::string& path)
{
    return access(path.c_str(), W_OK) == 0;
}

int folderError()
{
    return EISDIR;
}

void copyRights(const std::string& from, SystemHandle to)
{
    struct stat status = {};
    if (stat(from.c_str(), &status) == 0) {
        (void)fchmod(to, status.st_mode & 07777); // refused: the new file keeps the usual rights
    }
}

/// The file that a chain of links leads to, whether or not it exists; `path` itself if it is no
/// link.
std::string behindLinks(const std::string& path)
{
    constexpr int kMostLinks = 40;
    std::filesystem::path target(path);
    for (int i = 0; i < kMostLinks; ++i) {
        std::error_code isNoLink;
        const std::filesystem::path next = std::filesystem::read_symlink(target, isNoLink);
        if (isNoLink) {
            break;
        }
        target = target.parent_path() / next; // an absolute one stands alone
    }
    return target.string();
}

#endif

// --- the same on every system

/// A name for a new file beside `target`; another one for each call.
std::string nameBeside(const std::string& target)
{
    constexpr std::size_t kMostNameBytes =
        200; // leaves room for what is added, within the usual 255
    static std::atomic<unsigned> counter{0};
    const std::size_t separator = target.find_last_of("/\\");
    const std::size_t nameBegin = separator == std::string::npos ? 0 : separator + 1;
    std::string name = target;
    if (name.size() - nameBegin > kMostNameBytes) {
        name.resize(nameBegin + kMostNameBytes);
    }
    return name + "." + std::to_string(processNumber()) + "-" + std::to_string(counter++) + ".part";
}

} // namespace

struct AtomicFile::File {
    std::string target;
    std::string temporary; // empty: the target is written directly
    OwnedHandle stream;
    std::string error;

    File() = default;
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    ~File() { abandon(); }

    void openBeside()
    {
        constexpr int kMostTries = 100; // names that an earlier process of our number left behind
        for (int i = 0; i < kMostTries; ++i) {
            const std::string name = nameBeside(target);
            stream = createNew(name);
            if (stream.isOpen()) {
                temporary = name;
                return;
            }
            if (lastSystemError() != kExistsAlready) {
                return;
            }
        }
    }

    void abandon()
    {
        stream.close();
        if (!temporary.empty()) {
            removeFile(std::exchange(temporary, std::string()));
        }
    }

    bool fail(std::string_view verb)
    {
        error = cannotText(verb, target, lastSystemError());
        abandon();
        return false;
    }
};

std::optional<AtomicFile> AtomicFile::create(const std::string& target, std::string& error)
{
    auto file = std::make_unique<File>();
    file->target = behindLinks(target);
    const Kind kind = kindOf(file->target);
    if (kind == Kind::Folder) {
        error = cannotText("write", target, folderError());
        return std::nullopt;
    }
    if (kind == Kind::Device) {
        file->stream = openExisting(file->target);
    } else if (kind == Kind::Missing || mayReplace(file->target)) {
        file->openBeside();
    }
    if (!file->stream.isOpen()) {
        error = cannotText("write", target, lastSystemError());
        return std::nullopt;
    }
    if (kind == Kind::File) {
        copyRights(file->target, file->stream.get());
    }
    return AtomicFile(std::move(file));
}

AtomicFile::AtomicFile(std::unique_ptr<File> file) : m_file(std::move(file)) {}
AtomicFile::AtomicFile(AtomicFile&& other) noexcept = default;
AtomicFile& AtomicFile::operator=(AtomicFile&& other) noexcept = default;
AtomicFile::~AtomicFile() = default;

bool AtomicFile::write(std::string_view bytes)
{
    if (!m_file->stream.isOpen()) {
        return false;
    }
    return writeAll(m_file->stream.get(), bytes) || m_file->fail("write");
}

bool AtomicFile::commit(Flush flush)
{
    if (!m_file->stream.isOpen()) {
        return false;
    }
    if (flush == Flush::ToDisk && !flushToDisk(m_file->stream.get())) {
        return m_file->fail("flush");
    }
    if (!m_file->stream.close()) {
        return m_file->fail("close");
    }
    if (!m_file->temporary.empty() && !replaceFile(m_file->temporary, m_file->target)) {
        return m_file->fail("replace");
    }
    m_file->temporary.clear();
    return true;
}

const std::string& AtomicFile::error() const
{
    return m_file->error;
}

} // namespace platform
