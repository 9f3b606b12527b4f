// All nodes of a kind, in the order of their creation: those of a new scene first.
#pragma once

#include <maya/MFn.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>

#include <cstdint>

class MItDependencyNodes {
public:
    /// Delivers what `hasFn(filter)` is true of; kInvalid delivers every node.
    explicit MItDependencyNodes(MFn::Type filter = MFn::kInvalid, MStatus* ReturnStatus = nullptr);

    MObject thisNode(MStatus* ReturnStatus = nullptr) const;
    MStatus next();
    bool isDone(MStatus* ReturnStatus = nullptr) const;
    MStatus reset(MFn::Type filter = MFn::kInvalid);

private:
    void findFrom(std::uint32_t node);

    MFn::Type m_filter = MFn::kInvalid;
    std::uint32_t m_generation = 0;
    std::uint32_t m_node = 0;
};
