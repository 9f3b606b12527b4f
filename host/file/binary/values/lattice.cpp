// Lattices: three divisions, then points.
#include "host/file/binary/values/eachElement.h"

#include "host/geometry/deform/LatticeData.h"

namespace host::file::binary {
namespace {

constexpr std::size_t kPointBytes = 4 * sizeof(double); ///< x y z and a weight, which is not used

geometry::LatticeData takeLattice(Cursor& cursor)
{
    geometry::LatticeData lattice;
    lattice.s = cursor.u16();
    lattice.t = cursor.u16();
    lattice.u = cursor.u16();
    if (lattice.s == 0 || lattice.t == 0 || lattice.u == 0) {
        cursor.fail("a lattice without points");
        return lattice;
    }
    const std::size_t count = static_cast<std::size_t>(lattice.s) *
                              static_cast<std::size_t>(lattice.t) *
                              static_cast<std::size_t>(lattice.u);
    const std::span<const char> bytes = cursor.takeItems(count, kPointBytes);
    lattice.points.resize(bytes.size() / kPointBytes);
    for (std::size_t i = 0; i < lattice.points.size(); ++i) {
        const char* const p = bytes.data() + i * kPointBytes;
        lattice.points[i] = {load<double>(p), load<double>(p + 8), load<double>(p + 16)};
    }
    return lattice;
}

} // namespace

void readLattice(Reader& reader, ValueTask& task)
{
    sendEachElement(reader, task, takeLattice);
}

} // namespace host::file::binary
