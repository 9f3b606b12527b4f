#include "host/graph/IdTable.h"

namespace host::graph {

void IdTable::place(std::uint64_t hash, std::uint32_t owner, std::uint32_t id)
{
    std::size_t at = hash & mask();
    while (m_entries[at].id != kNoId) {
        at = (at + 1) & mask();
    }
    m_entries[at] = {hash, owner, id};
}

void IdTable::insert(std::uint64_t hash, std::uint32_t owner, std::uint32_t id)
{
    if (2 * (m_count + 1) > m_entries.size()) {
        grow();
    }
    place(hash, owner, id);
    ++m_count;
}

void IdTable::grow()
{
    constexpr std::size_t kSmallest = 16;
    std::vector<Entry> old(m_entries.empty() ? kSmallest : m_entries.size() * 2);
    old.swap(m_entries);
    for (const Entry& entry : old) {
        if (entry.id != kNoId) {
            place(entry.hash, entry.owner, entry.id);
        }
    }
}

void IdTable::erase(std::uint64_t hash, std::uint32_t owner, std::uint32_t id)
{
    if (m_entries.empty()) {
        return;
    }
    std::size_t hole = hash & mask();
    while (m_entries[hole].owner != owner || m_entries[hole].id != id) {
        if (m_entries[hole].id == kNoId) {
            return;
        }
        hole = (hole + 1) & mask();
    }
    // Entries behind the hole move up, unless they would stand before their home.
    for (std::size_t at = (hole + 1) & mask(); m_entries[at].id != kNoId; at = (at + 1) & mask()) {
        const std::size_t home = m_entries[at].hash & mask();
        if (((at - home) & mask()) >= ((at - hole) & mask())) {
            m_entries[hole] = m_entries[at];
            hole = at;
        }
    }
    m_entries[hole] = {};
    --m_count;
}

} // namespace host::graph
