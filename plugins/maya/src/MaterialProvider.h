// Answers which material a shape, or one shading set of it, wears.
#pragma once

#include <memory>
#include <string>

class MDagPath;
class MObject;
namespace orv {
class Material;
}

/// The order of the virtual functions is part of the contract; there is no virtual destructor.
class MaterialProvider {
public:
    /// The material of a path: NURBS surfaces and their tessellation.
    virtual std::shared_ptr<orv::Material> materialForPath(const MDagPath& path) = 0;
    /// The material of one shading set; `objectName` names the object where materials are not
    /// shared.
    virtual std::shared_ptr<orv::Material> materialForSet(const MObject& set,
                                                          const std::string& objectName) = 0;
    /// Scans the scene's shaders.
    virtual void loadMaterials() = 0;

protected:
    ~MaterialProvider() = default;
};
