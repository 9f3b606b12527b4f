// Whole-number places in a plane and the questions about them, all answered exactly.
#pragma once

#include <cstdint>

namespace host::geometry {

/// A place of the grid: coordinates from 0 to kGridSize.
struct GridPlace {
    std::int64_t x = 0;
    std::int64_t y = 0;
    friend bool operator==(const GridPlace&, const GridPlace&) = default;
};

/// With 30 bits an area fits 64 bits and the test of a circle fits 128.
constexpr std::int64_t kGridSize = std::int64_t{1} << 30;

__extension__ typedef __int128 Int128;

/// Twice the signed area of a triangle; positive when a, b, c turn counter-clockwise.
inline std::int64_t turnArea(const GridPlace& a, const GridPlace& b, const GridPlace& c)
{
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

/// Whether d lies inside the circle through a, b, c, which turn counter-clockwise.
inline bool isInCircle(const GridPlace& a, const GridPlace& b, const GridPlace& c,
                       const GridPlace& d)
{
    const std::int64_t ax = a.x - d.x, ay = a.y - d.y;
    const std::int64_t bx = b.x - d.x, by = b.y - d.y;
    const std::int64_t cx = c.x - d.x, cy = c.y - d.y;
    const Int128 sum = Int128{ax * ax + ay * ay} * (bx * cy - by * cx) +
                       Int128{bx * bx + by * by} * (cx * ay - cy * ax) +
                       Int128{cx * cx + cy * cy} * (ax * by - ay * bx);
    return sum > 0;
}

/// numerator / denominator to the nearest whole number; denominator > 0.
inline std::int64_t roundedQuotient(Int128 numerator, Int128 denominator)
{
    const Int128 half = denominator / 2;
    return static_cast<std::int64_t>(numerator >= 0 ? (numerator + half) / denominator
                                                    : -((half - numerator) / denominator));
}

/// The place nearest to where the segments a b and c d cross. Precondition: they do, away from
/// their ends.
inline GridPlace crossingPlace(const GridPlace& a, const GridPlace& b, const GridPlace& c,
                               const GridPlace& d)
{
    const std::int64_t atA = turnArea(c, d, a);
    const std::int64_t atB = turnArea(c, d, b);
    const Int128 share = atA < 0 ? -Int128{atA} : Int128{atA};
    const Int128 whole = share + (atB < 0 ? -Int128{atB} : Int128{atB});
    return {a.x + roundedQuotient(share * (b.x - a.x), whole),
            a.y + roundedQuotient(share * (b.y - a.y), whole)};
}

} // namespace host::geometry
