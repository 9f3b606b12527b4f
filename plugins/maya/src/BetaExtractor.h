// The alternative extractor: whole vertex buffers as they come, whatever part of the mesh is asked
// for.
#pragma once

#include "plugins/maya/src/MeshExtractor.h"

class BetaExtractor final : public MeshExtractor {
public:
    void extract(const MDagPath& path, const std::shared_ptr<orv::TriangleObject>& object,
                 const MObject& component) override;
};
