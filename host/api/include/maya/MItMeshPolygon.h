// The polygons of a mesh, or of a component of it. Offers the check that a component fits its mesh,
// and their number.
#pragma once

#include <maya/MDagPath.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>

class MItMeshPolygon {
public:
    /// All polygons of a mesh shape.
    explicit MItMeshPolygon(const MObject& mesh, MStatus* ReturnStatus = nullptr);
    /// Fails when the path is no mesh, or the component is neither null (all polygons) nor one of
    /// mesh polygons within the mesh. An empty component is no failure.
    explicit MItMeshPolygon(const MDagPath& mesh, MObject& component = MObject::kNullObj,
                            MStatus* ReturnStatus = nullptr);

    int count(MStatus* ReturnStatus = nullptr) const;

private:
    MStatus attach(const MDagPath& mesh, const MObject& component);

    int m_count = 0;
};
