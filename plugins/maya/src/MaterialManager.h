// Maya's Lambert-family shaders as materials: one definition per shader, served to the geometry
// managers.
#pragma once

#include "plugins/maya/src/MaterialProvider.h"

#include <maya/MObject.h>

#include <map>
#include <memory>
#include <string>

namespace orv {
class Material;
class orvSceneapi_oo;
} // namespace orv

/// Call setObjectLayer, setUniqueMaterials and loadMaterials, in this order, before asking for
/// materials.
class MaterialManager final : public MaterialProvider {
public:
    std::shared_ptr<orv::Material> materialForPath(const MDagPath& path) override;
    std::shared_ptr<orv::Material> materialForSet(const MObject& set,
                                                  const std::string& objectName) override;
    /// Fills the shader map and, unless materials are unique, writes the definition of each
    /// shader's material.
    void loadMaterials() override;

    /// Not owned. Null: nothing is defined.
    void setObjectLayer(orv::orvSceneapi_oo* objectLayer) { m_objectLayer = objectLayer; }
    /// Every object gets a material of its own, named "object:shader".
    void setUniqueMaterials(bool unique) { m_uniqueMaterials = unique; }

private:
    void fillShaderMap();
    void defineMaterials();
    MObject findShader(const MObject& set) const;
    MObject findShader(const MDagPath& path) const;
    MObject findMeshShader(const MDagPath& path) const;
    MObject findSurfaceShader(const MDagPath& path) const;
    std::shared_ptr<orv::Material> materialFor(const MObject& shader,
                                               const std::string& objectName);

    std::map<std::string, std::shared_ptr<orv::Material>> m_materials; ///< by shader name
    std::map<std::string, MObject> m_shaders; ///< by the name of the node that outColor is tied to
    orv::orvSceneapi_oo* m_objectLayer = nullptr;
    bool m_uniqueMaterials = false;
};
