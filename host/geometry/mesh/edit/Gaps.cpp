#include "host/geometry/mesh/edit/Gaps.h"

#include <cstring>
#include <iterator>

namespace host::geometry {
namespace {

/// Numbers that are worked on together, so that every gap finds them in the cache.
constexpr std::size_t kBlock = 1024;
/// More gaps than that are looked up.
constexpr std::size_t kMostFew = 8;

/// Takes each run out of the numbers, the last one first: those before it still have their old
/// numbers then.
template<class T, class Lower>
void lowerByRuns(std::span<T> numbers, std::span<const Gaps::Run> runs, const Lower& lower)
{
    for (std::size_t first = 0; first < numbers.size(); first += kBlock) {
        const auto block = numbers.subspan(first, std::min(kBlock, numbers.size() - first));
        for (std::size_t i = runs.size(); i-- > 0;) {
            const auto end = static_cast<T>(runs[i].end);
            const auto length = static_cast<T>(runs[i].end - runs[i].first);
            for (T& number : block) {
                number = lower(number, end, length);
            }
        }
    }
}

} // namespace

Gaps::Gaps(const std::vector<std::uint8_t>& isKept)
    : m_count(static_cast<std::uint32_t>(isKept.size()))
{
    for (std::size_t place = 0; place < isKept.size();) {
        const void* const gone = std::memchr(isKept.data() + place, 0, isKept.size() - place);
        if (gone == nullptr) {
            break;
        }
        const auto first =
            static_cast<std::size_t>(static_cast<const std::uint8_t*>(gone) - isKept.data());
        place = first;
        while (place < isKept.size() && isKept[place] == 0) {
            ++place;
        }
        add(static_cast<std::uint32_t>(first), static_cast<std::uint32_t>(place));
    }
}

void Gaps::add(std::uint32_t first, std::uint32_t end)
{
    if (first == end) {
        return;
    }
    if (!m_runs.empty() && m_runs.back().end == first) {
        m_runs.back().end = end;
    } else {
        m_runs.push_back({first, end, m_goneCount});
    }
    m_goneCount += end - first;
}

std::uint32_t Gaps::numberOf(std::uint32_t part) const
{
    const auto behind =
        std::upper_bound(m_runs.begin(), m_runs.end(), part,
                         [](std::uint32_t number, const Run& run) { return number < run.first; });
    if (behind == m_runs.begin()) {
        return part;
    }
    const Run& run = *std::prev(behind);
    return part < run.end ? kNone : part - run.goneBefore - (run.end - run.first);
}

std::vector<std::uint32_t> Gaps::kept(const std::vector<std::uint32_t>& ascending) const
{
    std::vector<std::uint32_t> kept;
    kept.reserve(ascending.size());
    auto from = ascending.begin();
    std::uint32_t gone = 0;
    const auto takeUntil = [&](auto end) {
        for (; from != end; ++from) {
            kept.push_back(*from - gone);
        }
    };
    for (const Run& run : m_runs) {
        takeUntil(std::lower_bound(from, ascending.end(), run.first));
        from = std::lower_bound(from, ascending.end(), run.end);
        gone += run.end - run.first;
    }
    takeUntil(ascending.end());
    return kept;
}

bool Gaps::areFew() const
{
    return m_runs.size() <= kMostFew;
}

/// How many parts before each one stay; one more entry for the end.
std::vector<std::uint32_t> Gaps::table() const
{
    std::vector<std::uint32_t> numbers(std::size_t{m_count} + 1);
    std::uint32_t next = 0;
    std::size_t place = 0;
    for (const Run& run : m_runs) {
        for (; place < run.first; ++place) {
            numbers[place] = next++;
        }
        for (; place < run.end; ++place) {
            numbers[place] = next;
        }
    }
    for (; place < numbers.size(); ++place) {
        numbers[place] = next++;
    }
    return numbers;
}

void Gaps::renumber(std::span<std::uint32_t> numbers) const
{
    if (areFew()) {
        lowerByRuns(numbers, m_runs,
                    [](std::uint32_t number, std::uint32_t end, std::uint32_t length) {
                        return number - (number >= end ? length : 0);
                    });
        return;
    }
    const std::vector<std::uint32_t> now = table();
    for (std::uint32_t& number : numbers) {
        number = number < now.size() ? now[number] : number;
    }
}

void Gaps::renumberIds(std::span<std::int32_t> ids) const
{
    if (areFew()) {
        lowerByRuns(ids, m_runs, [](std::int32_t id, std::int32_t end, std::int32_t length) {
            return id - (id >= end ? length : 0);
        });
        return;
    }
    const std::vector<std::uint32_t> now = table();
    for (std::int32_t& id : ids) {
        const auto place = static_cast<std::uint32_t>(id); // -1 lies beyond every table
        id = place < now.size() ? static_cast<std::int32_t>(now[place]) : id;
    }
}

void Gaps::renumberEnds(std::span<MeshEdge> edges) const
{
    if (isEmpty()) {
        return;
    }
    const std::vector<std::uint32_t> now = table();
    for (MeshEdge& edge : edges) {
        if (edge.start < m_count && edge.end < m_count) {
            edge = {now[edge.start], now[edge.end]};
        }
    }
}

void Gaps::renumberReferences(std::span<std::int32_t> references) const
{
    if (areFew()) {
        lowerByRuns(references, m_runs,
                    [](std::int32_t reference, std::int32_t end, std::int32_t length) {
                        const std::int32_t down = reference >= end ? length : 0;
                        const std::int32_t up = reference < -end ? length : 0; // edge -(r + 1)
                        return reference - down + up;
                    });
        return;
    }
    const std::vector<std::uint32_t> now = table();
    for (std::int32_t& reference : references) {
        if (edgeOf(reference) < now.size()) {
            reference = referenceTo(now[edgeOf(reference)], reference < 0);
        }
    }
}

} // namespace host::geometry
