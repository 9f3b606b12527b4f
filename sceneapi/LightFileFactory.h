// Opens the output and makes the file writer on it.
#pragma once

#include "sceneapi/LightFactory.h"

#include <cstdio>
#include <memory>
#include <string>

class orvScene_api_file;

namespace orv {

class LightFileFactory : public LightFactory {
public:
    /// Opens `path` (UTF-8) for a scene with binary arrays. "-" is standard output: the scene goes
    /// to a duplicate of its descriptor in binary mode, and from then on everything else that the
    /// process prints there goes to standard error. Throws std::runtime_error, after a line on
    /// standard error, when the output cannot be opened.
    explicit LightFileFactory(const std::string& path);
    LightFileFactory(const LightFileFactory&) = delete;
    LightFileFactory& operator=(const LightFileFactory&) = delete;
    /// Closes what is still open; a failure is only reported on standard error. Call close() to
    /// hear of it.
    ~LightFileFactory() override;

    orvScene_api* sceneApi() override;
    void writeHeader() override;
    /// Destroys the scene API, then closes the stream. Throws std::runtime_error, after a line on
    /// standard error, when any write since the start fell short. A second call does nothing.
    void close() override;

private:
    bool finish();

    std::FILE* m_stream = nullptr;
    std::unique_ptr<orvScene_api_file> m_api;
};

} // namespace orv
