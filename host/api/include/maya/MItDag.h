// Walks the DAG from the world down, path by path: what is instanced comes once per path.
#pragma once

#include <maya/MDagPath.h>
#include <maya/MFn.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>

#include <memory>

class MItDag {
public:
    enum TraversalType { kInvalidType = 0, kDepthFirst = 1, kBreadthFirst = 2 };

    /// Stands on the first node that the filter takes; kInvalid takes all, the world first. A walk
    /// without any such node is done and no failure.
    explicit MItDag(TraversalType type = kDepthFirst, MFn::Type filter = MFn::kInvalid,
                    MStatus* ReturnStatus = nullptr);
    ~MItDag();
    MItDag(const MItDag&) = delete;
    MItDag& operator=(const MItDag&) = delete;

    /// Begins again, or begins below a path.
    MStatus reset();
    MStatus reset(const MDagPath& root, TraversalType type = kDepthFirst,
                  MFn::Type filter = MFn::kInvalid);

    bool isDone(MStatus* ReturnStatus = nullptr) const;
    MStatus next();
    /// Goes on without the nodes below the current one, which stays current until `next`.
    MStatus prune();
    MStatus getPath(MDagPath& path) const;
    MStatus getAllPaths(MDagPathArray& paths) const;
    MString fullPathName(MStatus* ReturnStatus = nullptr) const;
    /// Levels below the root of the walk, whatever the filter.
    unsigned int depth(MStatus* ReturnStatus = nullptr) const;
    MObject currentItem(MStatus* ReturnStatus = nullptr) const;
    /// What lies under a surface's parameter space is never walked: only false succeeds.
    MStatus traverseUnderWorld(bool wanted);

private:
    struct Walk;
    std::unique_ptr<Walk> m_walk;
};
