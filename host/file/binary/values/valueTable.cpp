#include "host/file/binary/values/values.h"

#include <algorithm>
#include <iterator>

namespace host::file::binary {
namespace {

// clang-format off
constexpr ValueRow kValues[] = { // sorted by tag
    {"ATAL", readAttributeAlias},
    {"CHMP", readCharacterMap},
    {"CMP#", readComponents},
    {"CMPD", readNumbers},
    {"DBL#", readArray},
    {"DBL2", readNumbers},
    {"DBL3", readNumbers},
    {"DBL4", readNumbers},
    {"DBLE", readNumbers},
    {"FLT#", readArray},
    {"FLT2", readNumbers},
    {"FLT3", readNumbers},
    {"I32#", readArray},
    {"I64#", readArray},
    {"LATT", readLattice},
    {"LNG2", readNumbers},
    {"LNG3", readNumbers},
    {"MAT#", readArray},
    {"MATR", readMatrix},
    {"MESH", readMesh},
    {"NRBC", readCurve},
    {"NRBS", readSurface},
    {"PNT#", readArray},
    {"REFE", readReferenceEdits},
    {"SRT2", readNumbers},
    {"SRT3", readNumbers},
    {"STR ", readString},
    {"STR#", readStringArray},
    {"VEC#", readArray},
};
// clang-format on

constexpr bool isBefore(const ValueRow& a, const ValueRow& b)
{
    return a.tag < b.tag;
}
static_assert(std::is_sorted(std::begin(kValues), std::end(kValues), isBefore));

} // namespace

const ValueRow* findValue(Tag tag)
{
    const ValueRow* const found =
        std::lower_bound(std::begin(kValues), std::end(kValues), ValueRow{tag, nullptr}, isBefore);
    return found != std::end(kValues) && found->tag == tag ? found : nullptr;
}

ValueReader findValueByKind(AttributeKind kind)
{
    return kind == AttributeKind::NurbsTrimface ? readTrimRegion : nullptr;
}

} // namespace host::file::binary
