#include "host/geometry/tessellation/insertionOrder.h"

#include <algorithm>
#include <bit>

namespace host::geometry {
namespace {

constexpr int kCurveBits = 16; ///< finer neighbours need no order

struct Entry {
    std::uint64_t key = 0; ///< round, then distance along the curve
    std::uint32_t index = 0;
};

/// Distance along the Hilbert curve of 2^16 x 2^16 cells.
std::uint64_t alongCurve(const GridPlace& place)
{
    auto x = static_cast<std::uint32_t>(std::min(place.x, kGridSize - 1) >> (30 - kCurveBits));
    auto y = static_cast<std::uint32_t>(std::min(place.y, kGridSize - 1) >> (30 - kCurveBits));
    constexpr std::uint32_t kLast = (1U << kCurveBits) - 1;
    std::uint64_t distance = 0;
    for (std::uint32_t side = 1U << (kCurveBits - 1); side > 0; side >>= 1) {
        const std::uint32_t right = (x & side) != 0 ? 1 : 0;
        const std::uint32_t above = (y & side) != 0 ? 1 : 0;
        distance = 4 * distance + ((3 * right) ^ above);
        if (above == 0) {
            if (right == 1) {
                x = kLast - x;
                y = kLast - y;
            }
            std::swap(x, y);
        }
    }
    return distance;
}

/// The same shuffle on every system (the finishing steps of a multiplicative hash).
std::uint32_t scrambled(std::uint32_t index)
{
    std::uint64_t h = index + 0x9e3779b97f4a7c15U;
    h = (h ^ (h >> 30)) * 0xbf58476d1ce4e5b9U;
    h = (h ^ (h >> 27)) * 0x94d049bb133111ebU;
    return static_cast<std::uint32_t>(h >> 32);
}

} // namespace

std::vector<std::uint32_t> insertionOrder(std::span<const GridPlace> places)
{
    // Half of the points are in the last round, a quarter in the one before, and so on.
    std::vector<Entry> entries(places.size());
    for (std::uint32_t i = 0; i < entries.size(); ++i) {
        const auto fromLast = std::min(std::countl_zero(scrambled(i)), 15);
        const std::uint64_t round = 15 - static_cast<std::uint64_t>(fromLast);
        entries[i] = {round << (2 * kCurveBits) | alongCurve(places[i]), i};
    }
    std::sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) {
        return a.key != b.key ? a.key < b.key : a.index < b.index;
    });
    std::vector<std::uint32_t> order(entries.size());
    std::transform(entries.begin(), entries.end(), order.begin(),
                   [](const Entry& entry) { return entry.index; });
    return order;
}

} // namespace host::geometry
