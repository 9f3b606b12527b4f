#include "scene/OrvGroup.h"

#include "scene/Animation.h"
#include "scene/LightGeometry.h"
#include "scene/TriangleObject.h"
#include "sceneapi/orvScene_api.h"
#include "sceneapi/orvSceneapi_oo.h"

#include <iterator>
#include <ostream>
#include <utility>

namespace orv {

OrvGroup::OrvGroup(std::string name) : m_name(std::move(name)) {}

std::shared_ptr<OrvGroup> OrvGroup::create(const std::string& name)
{
    auto group = std::make_shared<OrvGroup>(name);
    group->setFlags(kCreatedFlag);
    return group;
}

std::shared_ptr<OrvGroup> OrvGroup::createModelSet(const std::string& name)
{
    auto group = std::make_shared<OrvGroup>(name);
    group->setFlags(kModelSetFlag);
    group->setAttribute("model set", group->getName());
    return group;
}

OrvGroup::~OrvGroup()
{
    // A chain of groups, each held by the one above only, would be destroyed by nested calls: take
    // the sub-groups away from a group before it goes, so that every destructor finds none.
    std::vector<std::shared_ptr<OrvGroup>> doomed = std::move(m_groups);
    while (!doomed.empty()) {
        const std::shared_ptr<OrvGroup> group = std::move(doomed.back());
        doomed.pop_back();
        if (group.use_count() == 1) {
            doomed.insert(doomed.end(), std::make_move_iterator(group->m_groups.begin()),
                          std::make_move_iterator(group->m_groups.end()));
            group->m_groups.clear();
        }
    }
}

void OrvGroup::write(orvSceneapi_oo& oo)
{
    if (oo.sceneApi() == nullptr) {
        return;
    }
    struct OpenGroup {
        const OrvGroup* group;
        std::size_t nextGroup;
    };

    std::vector<OpenGroup> open{{this, 0}};
    writeBeginning(oo);
    while (!open.empty()) {
        OpenGroup& top = open.back();
        if (top.nextGroup == top.group->m_groups.size()) {
            oo.endGroup();
            open.pop_back();
            continue;
        }
        const OrvGroup* next = top.group->m_groups[top.nextGroup++].get();
        next->writeBeginning(oo);
        open.push_back({next, 0});
    }
}

void OrvGroup::writeBeginning(orvSceneapi_oo& oo) const
{
    oo.beginGroup(m_name);
    if (m_flags != 0) {
        oo.flags(m_flags);
    }
    for (const auto& [name, value] : m_attributes) {
        oo.sceneApi()->attribute(name.c_str(), value.c_str());
    }
    if (m_animation) {
        oo.writeNode(*m_animation);
    } else if (m_hasTransform) {
        oo.transform(m_transform);
    }
    for (const auto& child : m_children) {
        child->write(oo);
    }
}

void OrvGroup::define(orvSceneapi_oo&) {}

bool OrvGroup::isDefined() const
{
    return false;
}

void OrvGroup::setName(const std::string& name)
{
    if (&name != &m_name) {
        m_name = name;
    }
}

void OrvGroup::setTransform(const Matrix4& transform)
{
    m_transform = transform;
    m_hasTransform = true;
}

void OrvGroup::setFlags(std::uint32_t flags)
{
    m_flags = flags;
}

void OrvGroup::addFlags(std::uint32_t flags)
{
    m_flags |= flags;
}

void OrvGroup::setAttribute(const std::string& name, const std::string& value)
{
    m_attributes.insert_or_assign(name, value);
}

void OrvGroup::setAnimation(std::shared_ptr<Animation> animation)
{
    m_animation = std::move(animation);
}

void OrvGroup::addChild(std::shared_ptr<LightGeometry> geometry)
{
    if (geometry) {
        m_children.push_back(std::move(geometry));
    }
}

void OrvGroup::addGroup(std::shared_ptr<OrvGroup> group)
{
    if (group) {
        m_groups.push_back(std::move(group));
    }
}

std::shared_ptr<OrvGroup> OrvGroup::createGroup(const std::string& name)
{
    auto group = std::make_shared<OrvGroup>(name);
    m_groups.push_back(group);
    return group;
}

std::shared_ptr<TriangleObject> OrvGroup::createTriangleObject(const std::string& name)
{
    auto mesh = std::make_shared<TriangleObject>(name);
    m_children.push_back(mesh);
    return mesh;
}

std::shared_ptr<OrvGroup> OrvGroup::findGroup(std::string_view name) const
{
    for (const auto& group : m_groups) {
        if (group->m_name == name) {
            return group;
        }
    }
    return {};
}

std::shared_ptr<OrvGroup> OrvGroup::clone() const
{
    auto copy = std::make_shared<OrvGroup>(m_name);
    if (m_hasTransform) {
        copy->setTransform(m_transform);
    }
    copy->m_flags = m_flags;
    copy->m_animation = m_animation;
    copy->m_attributes = m_attributes;
    copy->m_groups = m_groups;
    copy->m_children = m_children;
    return copy;
}

void OrvGroup::printTree(std::ostream& stream, std::size_t depth) const
{
    std::vector<std::pair<const OrvGroup*, std::size_t>> pending{{this, depth}};
    while (!pending.empty()) {
        const auto [group, tabs] = pending.back();
        pending.pop_back();
        stream << std::string(tabs, '\t') << group->m_name << '\n';
        for (auto below = group->m_groups.rbegin(); below != group->m_groups.rend(); ++below) {
            pending.emplace_back(below->get(), tabs + 1);
        }
    }
}

} // namespace orv
