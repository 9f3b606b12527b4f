// A geometry of the scene: a node with a name and a material that can be written once as a
// definition and referred to by its id afterwards. What the geometry is made of is its subclass's.
#pragma once

#include "scene/LightNode.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace orv {

class Material;

/// Base of meshes, surfaces and curves. The order of the virtual functions is part of the contract.
class LightGeometry : public LightNode {
public:
    explicit LightGeometry(std::string name);

    LightGeometry(const LightGeometry&) = delete;
    LightGeometry& operator=(const LightGeometry&) = delete;

    void write(orvSceneapi_oo& oo) override = 0;
    void define(orvSceneapi_oo& oo) override = 0;
    bool isDefined() const override;
    ~LightGeometry() override;

    /// Bytes held in the data arrays: the sum of element count times element size.
    virtual std::size_t memorySize() const = 0;
    /// The material may be empty; the base starts without one.
    virtual void setMaterial(std::shared_ptr<Material> material);
    virtual std::shared_ptr<Material> getMaterial() const;
    virtual void setName(const std::string& name);
    virtual std::string getName() const;

    /// Marks the geometry as defined; nothing takes that back.
    void setDefinitionId(std::uint64_t id);
    /// The id that `define` got from the object layer, 0 before.
    std::uint64_t definitionId() const;

protected:
    /// The name without the copy that `getName` makes.
    const std::string& name() const { return m_name; }
    /// Writes the geometry block of a defined geometry: a reference to its definition.
    void writeInstance(orvSceneapi_oo& oo) const;

private:
    std::string m_name;
    std::shared_ptr<Material> m_material;
    bool m_defined = false;
    std::uint64_t m_definitionId = 0;
};

} // namespace orv
