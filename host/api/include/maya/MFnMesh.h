// Polygon meshes.
#pragma once

#include <maya/MFnDagNode.h>

class MFnMesh : public MFnDagNode {
public:
    static constexpr int kMFnMeshInstanceUnspecified = -1;

    MFnMesh() = default;
    explicit MFnMesh(const MObject& object, MStatus* ReturnStatus = nullptr);
    explicit MFnMesh(const MDagPath& path, MStatus* ReturnStatus = nullptr);

    MFn::Type type() const override;

    /// Meshes are evaluated when asked for: fails without an object, else does nothing.
    MStatus syncObject();
    /// 0 for a mesh without geometry.
    int numPolygons(MStatus* ReturnStatus = nullptr) const;
    int numVertices(MStatus* ReturnStatus = nullptr) const;
    /// Empty when the mesh has no uv set.
    MString currentUVSetName(MStatus* ReturnStatus = nullptr,
                             int instance = kMFnMeshInstanceUnspecified) const;
};
