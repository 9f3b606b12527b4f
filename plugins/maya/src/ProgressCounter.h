// How far the extraction of shapes is, reported to the scene file at most once per percent.
#pragma once

#include <cstdint>
#include <string>

namespace orv {
class orvSceneapi_oo;
}

/// A total of 0 or below (no shapes, or a count that could not be had) never divides: the fraction
/// is then 1.
struct ProgressCounter {
    orv::orvSceneapi_oo* reporter = nullptr; ///< not owned; null reports nothing
    std::int32_t total = 0;
    std::int32_t done = 0;
    float lastReported = -1.0f;

    /// One more item, of this name, is done.
    void step(const std::string& itemName);
};
