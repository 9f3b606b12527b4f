#include "plugins/maya/src/GroupIndex.h"

#include "scene/OrvGroup.h"

#include <cstddef>

std::shared_ptr<orv::OrvGroup> GroupIndex::find(const orv::OrvGroup& parent, std::string_view name)
{
    constexpr std::size_t kFewGroups = 16; // quickly searched
    if (parent.groupCount() <= kFewGroups) {
        return parent.findGroup(name);
    }
    const SubGroups& known = subGroups(parent);
    const auto found = known.find(name);
    return found != known.end() ? *found->second : nullptr;
}

const GroupIndex::SubGroups& GroupIndex::subGroups(const orv::OrvGroup& parent)
{
    const auto [entry, isNew] = m_indexed.try_emplace(&parent);
    if (isNew) {
        entry->second.reserve(parent.groupCount());
        for (const std::shared_ptr<orv::OrvGroup>& group : parent.groups()) {
            entry->second.try_emplace(group->getName(), &group); // the first of a name stays
        }
    }
    return entry->second;
}
