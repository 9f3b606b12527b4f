// A file of many GiB of which the disk holds only what was written.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>

#ifdef _WIN32
#include <windows.h>
#include <winioctl.h>
#else
#include <sys/stat.h>
#endif

namespace test {

class SparseFile {
public:
    /// Makes an empty file.
    explicit SparseFile(std::filesystem::path path) : m_path(std::move(path))
    {
        std::ofstream(m_path, std::ios::binary).flush();
#ifdef _WIN32
        const HANDLE file = CreateFileW(m_path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                                        FILE_ATTRIBUTE_NORMAL, nullptr);
        DWORD written = 0;
        m_isPossible =
            file != INVALID_HANDLE_VALUE &&
            DeviceIoControl(file, FSCTL_SET_SPARSE, nullptr, 0, nullptr, 0, &written, nullptr) != 0;
        if (file != INVALID_HANDLE_VALUE) {
            CloseHandle(file);
        }
#endif
    }

    /// Writes `bytes` at an offset, behind the end too.
    void write(std::uint64_t offset, const std::string& bytes)
    {
        if (!m_isPossible) {
            return;
        }
        std::fstream file(m_path, std::ios::binary | std::ios::in | std::ios::out);
        file.seekp(static_cast<std::streamoff>(offset));
        file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        m_isPossible = file.flush().good();
    }

    /// False where the file system has no files with holes, or none as long.
    bool isSparse() const
    {
#ifndef _WIN32
        constexpr std::int64_t kBlockBytes = 512;
        constexpr std::int64_t kMostBytes = 16 << 20;
        struct stat status = {};
        return m_isPossible && stat(m_path.c_str(), &status) == 0 &&
               status.st_blocks * kBlockBytes < kMostBytes;
#else
        return m_isPossible;
#endif
    }

private:
    std::filesystem::path m_path;
    bool m_isPossible = true;
};

} // namespace test
