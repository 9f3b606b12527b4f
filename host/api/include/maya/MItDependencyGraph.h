// Walks the connections upstream of a plug, node by node and breadth first.
#pragma once

#include <maya/MFn.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MStatus.h>

#include <cstddef>
#include <cstdint>
#include <vector>

class MItDependencyGraph {
public:
    enum Direction { kDownstream = 0, kUpstream = 1 };
    enum Traversal { kDepthFirst = 0, kBreadthFirst = 1 };
    enum Level { kNodeLevel = 0, kPlugLevel = 1 };

    /// Stands on the first node that the filter takes. The plug's own node comes first if it is
    /// taken; connections into a compound's children are followed, every node comes once. Without
    /// any such node the walk is done and the status kFailure. Upstream, breadth first, node level
    /// is what is offered; other ways fail.
    explicit MItDependencyGraph(MPlug& rootPlug, MFn::Type filter = MFn::kInvalid,
                                Direction direction = kDownstream,
                                Traversal traversal = kDepthFirst, Level level = kPlugLevel,
                                MStatus* ReturnStatus = nullptr);

    /// Walk on beyond nodes that the filter takes: so it is from the beginning.
    MStatus disablePruningOnFilter();
    bool isDone(MStatus* ReturnStatus = nullptr) const;
    MStatus next();
    MObject currentItem(MStatus* ReturnStatus = nullptr) const;
    MObject thisNode(MStatus* ReturnStatus = nullptr) const;

private:
    std::uint32_t m_generation = 0;
    std::vector<std::uint32_t> m_nodes;
    std::size_t m_current = 0;
};
