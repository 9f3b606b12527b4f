#include "plugins/maya/src/GroupStack.h"

#include "importers/maya/src/Log.h"
#include "scene/LightGeometry.h"
#include "scene/OrvGroup.h"

#include <ostream>
#include <utility>

void GroupStack::push(std::shared_ptr<orv::OrvGroup> group)
{
    if (!m_groups.empty()) {
        m_groups.back()->addGroup(group);
    }
    FILE_LOG(DEBUG4) << "push " << group->getName();
    m_groups.push_back(std::move(group));
}

void GroupStack::pop()
{
    if (m_groups.empty()) {
        return;
    }
    FILE_LOG(DEBUG4) << "pop " << m_groups.back()->getName();
    m_groups.pop_back();
}

std::size_t GroupStack::popTo(std::size_t depth)
{
    FILE_LOG(DEBUG4) << "pop to " << depth;
    while (m_groups.size() > depth) {
        pop();
    }
    return m_groups.size();
}

void GroupStack::addToTop(std::shared_ptr<orv::LightGeometry> geometry)
{
    if (!m_groups.empty()) {
        m_groups.back()->addChild(std::move(geometry));
    }
}

std::ostream& operator<<(std::ostream& stream, const GroupStack& stack)
{
    for (const std::shared_ptr<orv::OrvGroup>& group : stack.m_groups) {
        stream << '/' << group->getName();
    }
    return stream;
}
