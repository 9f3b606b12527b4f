// One Maya shader node as a renderer material.
#pragma once

#include <memory>

class MObject;
namespace orv {
class Material;
}

/// The material of a Lambert-family shader: colour times diffuse weight, opacity, specular colour,
/// and the first file texture upstream of the colour. A null shader gives a plain diffuse material
/// of a fixed name.
std::shared_ptr<orv::Material> convertNodeToMaterial(const MObject& shader);
