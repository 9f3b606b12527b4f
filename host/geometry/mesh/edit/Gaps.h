// Parts taken out of a list: what is left closes up in order.
#pragma once

#include "host/geometry/mesh/edit/MeshLinks.h"

#include <algorithm>
#include <cstdint>
#include <span>
#include <vector>

namespace host::geometry {

/// Which parts are taken out, as runs, and what becomes of the numbers of the others. Few gaps cost
/// about a copy of what they are taken out of, many a table of the numbers.
class Gaps {
public:
    struct Run {
        std::uint32_t first = 0;
        std::uint32_t end = 0;
        std::uint32_t goneBefore = 0; ///< in the runs before
    };

    Gaps() = default;
    /// Nothing is taken out of `count` parts.
    explicit Gaps(std::uint32_t count) : m_count(count) {}
    /// The parts whose mark is 0.
    explicit Gaps(const std::vector<std::uint8_t>& isKept);

    /// Ascending and apart; runs without a part are left out.
    void add(std::uint32_t first, std::uint32_t end);

    bool isEmpty() const { return m_runs.empty(); }
    std::span<const Run> runs() const { return m_runs; }
    std::uint32_t keptCount() const { return m_count - m_goneCount; }

    /// What is left of a list with one entry a part (or more behind the last).
    template<class T>
    std::vector<T> closed(const std::vector<T>& parts) const
    {
        std::vector<T> kept;
        kept.reserve(parts.size() - m_goneCount);
        forKept(parts.size(), [&](std::size_t first, std::size_t end) {
            kept.insert(kept.end(), parts.begin() + static_cast<std::ptrdiff_t>(first),
                        parts.begin() + static_cast<std::ptrdiff_t>(end));
        });
        return kept;
    }
    /// The same in place.
    template<class T>
    void close(std::vector<T>& parts) const
    {
        std::size_t kept = 0;
        forKept(parts.size(), [&](std::size_t first, std::size_t end) {
            if (kept != first) {
                std::copy(parts.begin() + static_cast<std::ptrdiff_t>(first),
                          parts.begin() + static_cast<std::ptrdiff_t>(end),
                          parts.begin() + static_cast<std::ptrdiff_t>(kept));
            }
            kept += end - first;
        });
        parts.resize(kept);
    }

    /// The new number of a part; kNone where it is taken out.
    std::uint32_t numberOf(std::uint32_t part) const;
    /// New numbers of an ascending list, without those that are taken out.
    std::vector<std::uint32_t> kept(const std::vector<std::uint32_t>& ascending) const;

    // --- new numbers in place, of lists that name no part that is taken out
    void renumber(std::span<std::uint32_t> numbers) const;
    /// -1 stays.
    void renumberIds(std::span<std::int32_t> ids) const;
    /// The vertices of edges; those that there are not stay.
    void renumberEnds(std::span<MeshEdge> edges) const;
    /// Signed references to edges.
    void renumberReferences(std::span<std::int32_t> references) const;

private:
    template<class Visit>
    void forKept(std::size_t size, const Visit& visit) const
    {
        std::size_t next = 0;
        for (const Run& run : m_runs) {
            visit(next, std::size_t{run.first});
            next = run.end;
        }
        visit(next, size);
    }
    bool areFew() const;
    std::vector<std::uint32_t> table() const;

    std::uint32_t m_count = 0;
    std::uint32_t m_goneCount = 0;
    std::vector<Run> m_runs;
};

} // namespace host::geometry
