// Fills a triangle mesh with the triangles of a shape, or of one component of it.
#pragma once

#include <memory>

class MDagPath;
class MObject;
namespace orv {
class TriangleObject;
}

class MeshExtractor {
public:
    /// `component`: faces of the mesh, or MObject::kNullObj for the whole shape. Failures are
    /// logged and leave the object partly or wholly empty.
    virtual void extract(const MDagPath& path, const std::shared_ptr<orv::TriangleObject>& object,
                         const MObject& component) = 0;

protected:
    ~MeshExtractor() = default; // held by shared pointers that know the concrete type
};
