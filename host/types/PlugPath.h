// The text of a plug taken apart: "node.attr[3].child[0:17]", ".t", ":perspShape.ncp",
// "|a|b.iog[0].og[2]".
#pragma once

#include "host/support/Expected.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace host {

struct PlugStep {
    std::string_view name;   ///< long or short attribute name
    std::int64_t first = -1; ///< logical index, or first of a range; -1: no index was written
    std::int64_t last = -1;  ///< last of a range; equal to first for a single index
    bool isRange() const { return last != first; }
    bool hasIndex() const { return first >= 0; }
};

/// At most kMaxSteps steps (files have up to five). The views point into the parsed text.
struct PlugPath {
    static constexpr std::size_t kMaxSteps = 12;
    std::string_view node; ///< empty: the current node
    std::array<PlugStep, kMaxSteps> steps;
    std::size_t stepCount = 0;

    const PlugStep& last() const { return steps[stepCount - 1]; }
};

/// Indices lie in 0..2^31-2; "[-1]", used by some files for "any element", gives first = last = -1.
/// Fails on empty names, unbalanced brackets, reversed ranges and more steps than kMaxSteps.
Expected<PlugPath> parsePlugPath(std::string_view text);

} // namespace host
