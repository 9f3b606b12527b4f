#include "plugins/maya/src/CopyBudget.h"

#include "scene/OrvGroup.h"

#include <vector>

CopyBudget::CopyBudget(const orv::OrvGroup& root, std::size_t limit) : m_left(limit)
{
    struct Entry {
        const orv::OrvGroup* group;
        std::size_t parent; ///< position in the list; the root's is its own
    };
    std::vector<Entry> parentsFirst{{&root, 0}};
    for (std::size_t i = 0; i < parentsFirst.size(); ++i) {
        for (const auto& below : parentsFirst[i].group->groups()) {
            parentsFirst.push_back({below.get(), i});
        }
    }
    m_sizes.reserve(parentsFirst.size());
    for (std::size_t i = parentsFirst.size(); i-- > 0;) {
        const auto& [group, parent] = parentsFirst[i];
        const std::size_t size = m_sizes[group] += 1 + group->childCount();
        if (parent != i) {
            m_sizes[parentsFirst[parent].group] += size;
        }
    }
}

bool CopyBudget::take(const orv::OrvGroup& copy)
{
    std::size_t size = 1 + copy.childCount();
    for (const auto& below : copy.groups()) {
        const auto found = m_sizes.find(below.get());
        size += found != m_sizes.end() ? found->second : 1;
    }
    if (size > m_left) {
        return false;
    }
    m_left -= size;
    return true;
}
