// Finds sub-groups by name without searching the same groups again and again.
#pragma once

#include <memory>
#include <string_view>
#include <unordered_map>

namespace orv {
class OrvGroup;
}

/// Answers like OrvGroup::findGroup: the first sub-group of a name. The groups asked about must
/// neither change nor go while the index is in use.
class GroupIndex {
public:
    /// The first sub-group of exactly that name, or an empty pointer.
    std::shared_ptr<orv::OrvGroup> find(const orv::OrvGroup& parent, std::string_view name);

private:
    using SubGroups = std::unordered_map<std::string_view, const std::shared_ptr<orv::OrvGroup>*>;

    const SubGroups& subGroups(const orv::OrvGroup& parent);

    std::unordered_map<const orv::OrvGroup*, SubGroups> m_indexed;
};
