// Polygon meshes: one triangle object per renderable shading set of a shape.
#pragma once

#include "plugins/maya/src/GeometryManager.h"

class MeshExtractor;

class MeshManager final : public GeometryManager {
public:
    /// With an HWMeshExtractor.
    MeshManager();
    ~MeshManager() override;

    void extractAll(IDirtyChecker& dirtyChecker) override;
    /// The parts bear the shape's short name, in the order of its sets; none for a mesh without
    /// renderable sets.
    GeometryList extractGeometry(const MDagPath& path) override;

    void setExtractor(std::shared_ptr<MeshExtractor> extractor);

private:
    std::shared_ptr<orv::LightGeometry> extractPart(const MDagPath& path, const std::string& name,
                                                    const MObject& set, const MObject& faces);

    std::shared_ptr<MeshExtractor> m_extractor;
};
