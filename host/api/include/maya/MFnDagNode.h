// Nodes of the DAG. Attached to a path, the function set knows which instance is meant.
#pragma once

#include <maya/MDagPath.h>
#include <maya/MFnDependencyNode.h>

class MObjectArray;

class MFnDagNode : public MFnDependencyNode {
public:
    MFnDagNode() = default;
    explicit MFnDagNode(const MObject& object, MStatus* ReturnStatus = nullptr);
    explicit MFnDagNode(const MDagPath& path, MStatus* ReturnStatus = nullptr);

    MFn::Type type() const override;
    MStatus setObject(const MObject& object) override;
    MStatus setObject(const MDagPath& path);

    /// The path attached to, or else the first one to the node.
    MStatus getPath(MDagPath& path) const;
    /// The path attached to; fails when there is none.
    MDagPath dagPath(MStatus* ReturnStatus = nullptr) const;
    MString fullPathName(MStatus* ReturnStatus = nullptr) const;
    bool isIntermediateObject(MStatus* ReturnStatus = nullptr) const;
    /// Whether more than one path leads to the node; without `indirect`: whether it has more than
    /// one parent.
    bool isInstanced(bool indirect = true, MStatus* ReturnStatus = nullptr) const;
    /// Paths to the node; without `total`: its parents.
    unsigned int instanceCount(bool total, MStatus* ReturnStatus = nullptr) const;
    unsigned int parentCount(MStatus* ReturnStatus = nullptr) const;
    MObject parent(unsigned int index, MStatus* ReturnStatus = nullptr) const;
    unsigned int childCount(MStatus* ReturnStatus = nullptr) const;
    MObject child(unsigned int index, MStatus* ReturnStatus = nullptr) const;

    /// The sets that an instance is in, and what of it: a null component is the whole object, else
    /// it holds the faces, possibly none. The whole object's set comes first, then the face groups'
    /// by index; a set met twice is one entry. `renderableSetsOnly`: shading groups only. Fails for
    /// an instance that does not exist.
    MStatus getConnectedSetsAndMembers(unsigned int instanceNumber, MObjectArray& sets,
                                       MObjectArray& components, bool renderableSetsOnly) const;

protected:
    MDagPath m_path; // not valid when attached to an object
};
