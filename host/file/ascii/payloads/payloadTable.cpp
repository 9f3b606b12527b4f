#include "host/file/ascii/payloads/payloads.h"

#include <algorithm>

namespace host::file::ascii {
namespace {

using Kind = AttributeKind;
using Form = PayloadForm;
using Storage = NumberStorage;

// clang-format off
constexpr PayloadRow kPayloads[] = {
    {"Int32Array",         Kind::Int32Array,     Form::Values,  readInt32Array,     0, Storage::Double},
    {"attributeAlias",     Kind::AttributeAlias, Form::Values,  readAttributeAlias, 0, Storage::Double},
    {"componentList",      Kind::ComponentList,  Form::Values,  readComponentList,  0, Storage::Double},
    {"dataPolyComponent",  Kind::PolyComponent,  Form::Values,  readPolyComponent,  0, Storage::Double},
    {"dataReferenceEdits", Kind::ReferenceEdits, Form::Opaque,  nullptr,            0, Storage::Double},
    {"double2",            Kind::Compound,       Form::Numbers, nullptr,            2, Storage::Double},
    {"double3",            Kind::Compound,       Form::Numbers, nullptr,            3, Storage::Double},
    {"double4",            Kind::Compound,       Form::Numbers, nullptr,            4, Storage::Double},
    {"doubleArray",        Kind::DoubleArray,    Form::Values,  readDoubleArray,    0, Storage::Double},
    {"float2",             Kind::Compound,       Form::Numbers, nullptr,            2, Storage::Float},
    {"float3",             Kind::Compound,       Form::Numbers, nullptr,            3, Storage::Float},
    {"floatArray",         Kind::FloatArray,     Form::Values,  readDoubleArray,    0, Storage::Double},
    {"fltMatrix",          Kind::FloatMatrix,    Form::Values,  readMatrix,         0, Storage::Double},
    {"lattice",            Kind::Lattice,        Form::Values,  readLattice,        0, Storage::Double},
    {"long2",              Kind::Compound,       Form::Numbers, nullptr,            2, Storage::Int32},
    {"long3",              Kind::Compound,       Form::Numbers, nullptr,            3, Storage::Int32},
    {"matrix",             Kind::Matrix,         Form::Values,  readMatrix,         0, Storage::Double},
    {"mesh",               Kind::Mesh,           Form::Values,  readMesh,           0, Storage::Double},
    {"nurbsCurve",         Kind::NurbsCurve,     Form::Values,  readCurve,          0, Storage::Double},
    {"nurbsSurface",       Kind::NurbsSurface,   Form::Values,  readSurface,        0, Storage::Double},
    {"nurbsTrimface",      Kind::NurbsTrimface,  Form::Values,  readTrimRegion,     0, Storage::Double},
    {"pointArray",         Kind::PointArray,     Form::Values,  readPointArray,     0, Storage::Double},
    {"polyFaces",          Kind::PolyFaces,      Form::Faces,   nullptr,            0, Storage::Double},
    {"reflectanceRGB",     Kind::Compound,       Form::Numbers, nullptr,            3, Storage::Float},
    {"short2",             Kind::Compound,       Form::Numbers, nullptr,            2, Storage::Int32},
    {"short3",             Kind::Compound,       Form::Numbers, nullptr,            3, Storage::Int32},
    {"spectrumRGB",        Kind::Compound,       Form::Numbers, nullptr,            3, Storage::Float},
    {"string",             Kind::String,         Form::Values,  readString,         0, Storage::Double},
    {"stringArray",        Kind::StringArray,    Form::Values,  readStringArray,    0, Storage::Double},
    {"vectorArray",        Kind::VectorArray,    Form::Values,  readVectorArray,    0, Storage::Double},
};
// clang-format on

} // namespace

std::span<const PayloadRow> payloadTable()
{
    return kPayloads;
}

const PayloadRow* findPayload(std::string_view type)
{
    const auto found =
        std::lower_bound(std::begin(kPayloads), std::end(kPayloads), type,
                         [](const PayloadRow& row, std::string_view w) { return row.type < w; });
    return found != std::end(kPayloads) && found->type == type ? found : nullptr;
}

const PayloadRow* findPayload(AttributeKind kind)
{
    if (kind == Kind::Compound) {
        return nullptr; // many types share it
    }
    const auto found = std::find_if(std::begin(kPayloads), std::end(kPayloads),
                                    [&](const PayloadRow& row) { return row.kind == kind; });
    return found != std::end(kPayloads) ? found : nullptr;
}

} // namespace host::file::ascii
