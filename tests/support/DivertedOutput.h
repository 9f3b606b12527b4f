// What a test prints to a standard stream meanwhile, gathered in a file.
#pragma once

#include "platform/descriptors.h"
#include "platform/files.h"
#include "tests/support/TestFolder.h"

#include <cstdio>
#include <iostream>
#include <string>

/// Diverts the stream from construction to `text` or destruction, whichever comes first.
class DivertedOutput {
public:
    explicit DivertedOutput(std::FILE* stream)
        : m_stream(stream), m_descriptor(platform::descriptorOf(stream))
    {
        flush();
        m_saved = platform::duplicateDescriptor(m_descriptor);
        std::FILE* const target = platform::openUtf8(m_folder.utf8("output"), "wb");
        platform::replaceDescriptor(platform::descriptorOf(target), m_descriptor);
        std::fclose(target);
    }
    DivertedOutput(const DivertedOutput&) = delete;
    DivertedOutput& operator=(const DivertedOutput&) = delete;
    ~DivertedOutput() { end(); }

    /// What was printed, line ends as "\n".
    std::string text()
    {
        end();
        std::string text = m_folder.read("output");
        std::erase(text, '\r');
        return text;
    }

private:
    void flush()
    {
        std::cout.flush();
        std::fflush(m_stream);
    }

    void end()
    {
        if (m_saved < 0) {
            return;
        }
        flush();
        platform::replaceDescriptor(m_saved, m_descriptor);
        platform::closeDescriptor(m_saved);
        m_saved = -1;
    }

    TestFolder m_folder;
    std::FILE* m_stream;
    int m_descriptor;
    int m_saved = -1;
};
