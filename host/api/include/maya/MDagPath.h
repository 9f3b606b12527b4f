// One way from the world down to a node: tells the instances of a node apart.
#pragma once

#include <maya/MFn.h>
#include <maya/MMatrix.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include <memory>

class MDagPathArray;

class MDagPath {
public:
    /// No path; every question to it fails.
    MDagPath() = default;

    bool isValid(MStatus* ReturnStatus = nullptr) const;
    /// "|a|b"; empty for the world.
    MString fullPathName(MStatus* ReturnStatus = nullptr) const;
    /// Whether nothing on the path hides it: visibility and level-of-detail visibility are on, no
    /// node is an intermediate object, and no enabled override (a display layer's too) is off.
    bool isVisible(MStatus* ReturnStatus = nullptr) const;
    /// Whether more than one path leads to the node.
    bool isInstanced(MStatus* ReturnStatus = nullptr) const;
    /// This path's position in `getAllPathsTo`.
    unsigned int instanceNumber(MStatus* ReturnStatus = nullptr) const;
    MObject node(MStatus* ReturnStatus = nullptr) const;
    /// The product of all transforms of the path, the end node's included if it is one.
    MMatrix inclusiveMatrix(MStatus* ReturnStatus = nullptr) const;
    /// Of the end node.
    bool hasFn(MFn::Type type, MStatus* ReturnStatus = nullptr) const;
    MFn::Type apiType(MStatus* ReturnStatus = nullptr) const;

    /// Nodes on the path, the world not counted.
    unsigned int length(MStatus* ReturnStatus = nullptr) const;
    unsigned int childCount(MStatus* ReturnStatus = nullptr) const;
    MObject child(unsigned int index, MStatus* ReturnStatus = nullptr) const;
    /// Adds a child of the end node.
    MStatus push(const MObject& child);
    /// Takes nodes off the end.
    MStatus pop(unsigned int count = 1);

    /// The first path in the order of instance numbers; fails for what is not in the DAG.
    static MStatus getAPathTo(const MObject& node, MDagPath& path);
    static MStatus getAllPathsTo(const MObject& node, MDagPathArray& paths);

    bool operator==(const MDagPath& other) const;

private:
    friend struct host::api::Inside;
    struct Content;
    std::shared_ptr<const Content> m_content;
};
