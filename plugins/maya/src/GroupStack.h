// The chain of open groups that mirrors the walk's position in the DAG.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <vector>

namespace orv {
class LightGeometry;
class OrvGroup;
} // namespace orv

/// The last group is the current parent. A pushed group becomes a sub-group of the one below it.
class GroupStack {
public:
    void push(std::shared_ptr<orv::OrvGroup> group);
    /// Does nothing on an empty stack.
    void pop();
    /// Pops until at most `depth` groups are left; returns how many are.
    std::size_t popTo(std::size_t depth);
    /// Adds a geometry to the current parent; an empty pointer, or an empty stack, is ignored.
    void addToTop(std::shared_ptr<orv::LightGeometry> geometry);

private:
    friend std::ostream& operator<<(std::ostream& stream, const GroupStack& stack);
    std::vector<std::shared_ptr<orv::OrvGroup>> m_groups;
};

/// The groups' names from the outermost on, each after a '/'.
std::ostream& operator<<(std::ostream& stream, const GroupStack& stack);
