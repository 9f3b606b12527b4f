// Bytes on their way to a stdio stream. The stream stays its opener's.
#pragma once

#include "sceneapi/TextTarget.h"

#include <cstdio>
#include <memory>

namespace orv {

class FileTarget : public TextTarget {
public:
    explicit FileTarget(std::FILE* stream);
    /// Hands what is left to the stream, which may keep it in its own buffer.
    ~FileTarget() override;

    /// Hands everything to the stream.
    void drain();
    /// Hands everything to the stream, and the buffer of the stream to the system.
    void flush();
    /// 0, or the errno of the first write that fell short. What comes after that write is dropped.
    int errorNumber() const { return m_errorNumber; }

private:
    void makeRoom(std::size_t size) override;
    void appendLarge(std::string_view text) override;
    void hand(const char* bytes, std::size_t size);

    std::FILE* m_stream;
    std::unique_ptr<char[]> m_storage;
    int m_errorNumber = 0;
};

} // namespace orv
