// How much of a tree shallow copies of its groups may repeat in the output.
#pragma once

#include <cstddef>
#include <unordered_map>

namespace orv {
class OrvGroup;
}

/// Sizes are counted once for a whole tree, which must not change afterwards. A size is the number
/// of groups and geometries of a group, itself included.
class CopyBudget {
public:
    /// All copies together may be of size `limit`.
    CopyBudget(const orv::OrvGroup& root, std::size_t limit);
    /// Takes the size of a copy of one of the tree's groups; false, and nothing taken, when too
    /// little is left.
    bool take(const orv::OrvGroup& copy);

private:
    std::unordered_map<const orv::OrvGroup*, std::size_t> m_sizes;
    std::size_t m_left;
};
