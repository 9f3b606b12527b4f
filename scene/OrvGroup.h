// A named group of geometry and of further groups, with flags, attributes and either an animation
// or a fixed transform. The groups of a scene form a tree that shares nodes: an instance is the
// same geometry (or group) held by several groups. No group is its own ancestor.
#pragma once

#include "scene/LightNode.h"
#include "sceneapi/orvSceneValues.h"

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orv {

class Animation;
class LightGeometry;
class TriangleObject;

/// Writing, printing and destroying walk the tree with a stack of their own, so the depth of a
/// scene's hierarchy is bounded by memory only. Final, so that a sub-group is written by this
/// class.
class OrvGroup final : public LightNode {
public:
    /// Flags of a group that was made by `create`.
    static constexpr std::uint32_t kCreatedFlag = 0x10000;
    /// Flags of a model set.
    static constexpr std::uint32_t kModelSetFlag = 0x20000;

    /// Flags 0, no transform (the matrix is the identity), nothing inside.
    explicit OrvGroup(std::string name);
    /// A new group whose flags are `kCreatedFlag`.
    static std::shared_ptr<OrvGroup> create(const std::string& name);
    /// A new group whose flags are `kModelSetFlag` and whose attribute "model set" is its name.
    static std::shared_ptr<OrvGroup> createModelSet(const std::string& name);

    OrvGroup(const OrvGroup&) = delete;
    OrvGroup& operator=(const OrvGroup&) = delete;

    /// Flags (unless 0), attributes by name, animation or else transform, children, then
    /// sub-groups.
    void write(orvSceneapi_oo& oo) override;
    /// Groups have no definition form: does nothing.
    void define(orvSceneapi_oo& oo) override;
    bool isDefined() const override;
    ~OrvGroup() override;

    void setName(const std::string& name);
    const std::string& getName() const { return m_name; }

    void setTransform(const Matrix4& transform);
    const Matrix4& getTransform() const { return m_transform; }
    /// True once a transform was set, the identity included.
    bool hasTransform() const { return m_hasTransform; }

    /// Replaces all flags.
    void setFlags(std::uint32_t flags);
    /// Sets the given bits and keeps the others.
    void addFlags(std::uint32_t flags);
    std::uint32_t getFlags() const { return m_flags; }

    /// The last value given for a name stays.
    void setAttribute(const std::string& name, const std::string& value);
    /// An animation is written in place of the transform; empty takes it away again.
    void setAnimation(std::shared_ptr<Animation> animation);

    /// An empty pointer is ignored.
    void addChild(std::shared_ptr<LightGeometry> geometry);
    /// An empty pointer is ignored.
    void addGroup(std::shared_ptr<OrvGroup> group);
    /// Appends a new group with flags 0.
    std::shared_ptr<OrvGroup> createGroup(const std::string& name);
    /// Appends a new, empty mesh.
    std::shared_ptr<TriangleObject> createTriangleObject(const std::string& name);

    /// The first direct sub-group of exactly that name, or an empty pointer.
    std::shared_ptr<OrvGroup> findGroup(std::string_view name) const;
    /// A shallow copy: it shares the animation, the children and the sub-groups.
    std::shared_ptr<OrvGroup> clone() const;

    const std::vector<std::shared_ptr<LightGeometry>>& children() const { return m_children; }
    const std::vector<std::shared_ptr<OrvGroup>>& groups() const { return m_groups; }
    std::size_t childCount() const { return m_children.size(); }
    std::size_t groupCount() const { return m_groups.size(); }
    /// Without children and sub-groups, whatever else is set.
    bool isEmpty() const { return m_children.empty() && m_groups.empty(); }

    /// A debugging aid: one line a group, its name after `depth` tab characters.
    void printTree(std::ostream& stream, std::size_t depth) const;

private:
    static constexpr Matrix4 kIdentity{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

    /// Opens the block and writes all but the sub-groups and the end.
    void writeBeginning(orvSceneapi_oo& oo) const;

    std::string m_name;
    bool m_hasTransform = false;
    Matrix4 m_transform = kIdentity;
    std::uint32_t m_flags = 0;
    std::vector<std::shared_ptr<LightGeometry>> m_children;
    std::vector<std::shared_ptr<OrvGroup>> m_groups;
    std::shared_ptr<Animation> m_animation;
    std::map<std::string, std::string> m_attributes;
};

} // namespace orv
