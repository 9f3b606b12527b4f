// What a caller may ask of a reader of scenes.
#pragma once

#include <cstddef>
#include <functional>

namespace host::file {

struct ReadOptions {
    /// Called with the number of bytes that are done with, every few MiB; may be empty.
    std::function<void(std::size_t)> progress;
};

} // namespace host::file
