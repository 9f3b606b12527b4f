// lattice: three divisions, a count, points.
#include "host/file/ascii/payloads/Cursor.h"
#include "host/file/ascii/payloads/payloads.h"

#include "host/geometry/deform/LatticeData.h"

#include <limits>

namespace host::file::ascii {
namespace {

bool fits(const geometry::LatticeData& lattice, std::size_t count)
{
    const std::size_t s = static_cast<std::size_t>(lattice.s);
    const std::size_t t = static_cast<std::size_t>(lattice.t);
    const std::size_t u = static_cast<std::size_t>(lattice.u);
    return count / s / t == u && count % s == 0 && count / s % t == 0;
}

} // namespace

Expected<Value> readLattice(Reader& reader)
{
    Cursor cursor(reader);
    constexpr std::int64_t kMaxDivisions = std::numeric_limits<std::int32_t>::max();
    geometry::LatticeData lattice;
    lattice.s = static_cast<std::int32_t>(cursor.integer(1, kMaxDivisions));
    lattice.t = static_cast<std::int32_t>(cursor.integer(1, kMaxDivisions));
    lattice.u = static_cast<std::int32_t>(cursor.integer(1, kMaxDivisions));
    const std::size_t count = cursor.count(3);
    if (!cursor.hasFailed() && !fits(lattice, count)) {
        cursor.fail("the count of lattice points is not the product of its divisions");
    }
    const double factor = reader.scales.linear;
    for (std::size_t i = 0; i < count && !cursor.hasFailed(); ++i) {
        const double x = cursor.number() * factor;
        const double y = cursor.number() * factor;
        lattice.points.push_back({x, y, cursor.number() * factor});
    }
    if (cursor.hasFailed()) {
        return cursor.error();
    }
    return Value::of(std::move(lattice));
}

} // namespace host::file::ascii
