// The default extractor: each triangle object gets the vertices that its triangles use, in the
// order of first use.
#pragma once

#include "plugins/maya/src/MeshExtractor.h"

class HWMeshExtractor final : public MeshExtractor {
public:
    void extract(const MDagPath& path, const std::shared_ptr<orv::TriangleObject>& object,
                 const MObject& component) override;
};
