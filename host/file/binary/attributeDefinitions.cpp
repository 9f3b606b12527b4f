// ATTR: the definition of a dynamic attribute.
#include "host/file/binary/Reader.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace host::file::binary {
namespace {

constexpr std::string_view kSection = "node";

enum DefinitionFlag : std::uint32_t {
    kMulti = 0x0001,
    kMinimum = 0x0002,
    kMaximum = 0x0004,
    kDefault = 0x0008,
    kCompound = 0x0010,
    kChild = 0x0020,
    kEnumNames = 0x0200,
    kSoftMinimum = 0x0800,
    kSoftMaximum = 0x1000,
    kNiceName = 0x8000
};

struct KindRow {
    Tag tag;
    AttributeKind kind;
    std::int32_t childCount = 0; ///< of compounds whose tag tells it
};

using enum AttributeKind;

// clang-format off
constexpr KindRow kKinds[] = {
    {"aAGL", DoubleAngle}, {"aBOL", Bool},        {"aBYT", Byte},        {"aCHR", Char},
    {"aCPD", Compound},    {"aDB2", Compound, 2}, {"aDB3", Compound, 3}, {"aDB4", Compound, 4},
    {"aDBL", Double},      {"aENM", Enum},        {"aFL2", Compound, 2}, {"aFL3", Compound, 3},
    {"aFLT", Float},       {"aFMX", FloatMatrix}, {"aLI1", Long},        {"aLI2", Compound, 2},
    {"aLI3", Compound, 3}, {"aLNR", DoubleLinear}, {"aMSG", Message},    {"aMTX", Matrix},
    {"aSI1", Short},       {"aSI2", Compound, 2}, {"aSI3", Compound, 3}, {"aTIM", Time},
};

// Data of the kind aTYP.
constexpr KindRow kDataTypes[] = {
    {"ATAL", AttributeAlias}, {"CMP#", ComponentList}, {"DBL#", DoubleArray},  {"FLT#", FloatArray},
    {"I32#", Int32Array},     {"LATT", Lattice},       {"MATR", Matrix},       {"MESH", Mesh},
    {"NRBC", NurbsCurve},     {"NRBS", NurbsSurface},  {"PNT#", PointArray},   {"REFE", ReferenceEdits},
    {"STR ", String},         {"STR#", StringArray},   {"VEC#", VectorArray},
};
// clang-format on

const KindRow* findKind(std::span<const KindRow> table, Tag tag)
{
    const auto found = std::find_if(table.begin(), table.end(),
                                    [tag](const KindRow& row) { return row.tag == tag; });
    return found != table.end() ? &*found : nullptr;
}

/// Names are raw bytes of the file.
struct Definition {
    Tag kind;
    Tag dataType; ///< the first one
    std::uint32_t flags = 0;
    std::uint32_t childCount = 0;
    std::string_view longName;
    std::string_view shortName;
    std::string_view parent;
    std::span<const char> initial; ///< of a DBLE
};

/// The bytes of a default: a DBLE of a number, or of a time in four bytes.
std::span<const char> takeDefault(Cursor& cursor)
{
    if (cursor.tag() != Tag("DBLE") || (cursor.left() != 4 && cursor.left() != 8)) {
        cursor.fail("a default that is no number");
    }
    return cursor.rest();
}

Definition takeDefinition(Cursor& cursor, bool hasWideFlags)
{
    Definition definition;
    definition.kind = cursor.tag();
    definition.flags = hasWideFlags ? cursor.u32() : cursor.u16();
    const auto has = [&definition](std::uint32_t flag) { return (definition.flags & flag) != 0; };
    definition.childCount = has(kCompound) ? cursor.u32() : 0;
    const std::size_t typeCount = cursor.count(sizeof(std::uint32_t));
    for (std::size_t i = 0; i < typeCount; ++i) {
        const Tag type = cursor.tag();
        definition.dataType = i == 0 ? type : definition.dataType;
    }
    definition.longName = cursor.text();
    definition.shortName = cursor.text();
    definition.parent = has(kChild) ? cursor.text() : std::string_view();
    if (has(kNiceName)) {
        cursor.text();
    }
    if (has(kEnumNames)) {
        cursor.text();
    }
    cursor.u32(); // left-over memory
    for (const std::uint32_t limit : {kMinimum, kMaximum, kSoftMinimum, kSoftMaximum}) {
        if (has(limit)) {
            cursor.f64();
        }
    }
    if (has(kDefault)) {
        definition.initial = takeDefault(cursor);
    }
    cursor.expectEnd();
    return definition;
}

double initialOf(const Reader& reader, const Definition& definition, AttributeKind kind)
{
    const char* const bytes = definition.initial.data();
    if (definition.initial.size() == sizeof(std::int32_t)) {
        return load<std::int32_t>(bytes) * reader.tickScale;
    }
    if (definition.initial.empty()) {
        return 0;
    }
    return kind == Time ? static_cast<double>(load<std::int64_t>(bytes)) * reader.tickScale
                        : load<double>(bytes);
}

void send(Reader& reader, const Definition& definition)
{
    AddAttribute command;
    command.longName = reader.text(definition.longName);
    command.shortName = reader.text(definition.shortName);
    command.parent = reader.text(definition.parent);
    command.isMulti = (definition.flags & kMulti) != 0;
    const bool isData = definition.kind == Tag("aTYP");
    const KindRow* const row =
        isData ? findKind(kDataTypes, definition.dataType) : findKind(kKinds, definition.kind);
    command.kind = row != nullptr ? row->kind : Any;
    command.childCount = row != nullptr ? row->childCount : 0;
    if (definition.kind == Tag("aCPD")) {
        constexpr std::uint32_t kMost = 0x7fffffff;
        command.childCount = static_cast<std::int32_t>(std::min(definition.childCount, kMost));
    }
    command.initial = initialOf(reader, definition, command.kind);
    reader.sink.addAttribute(command);
}

} // namespace

void readAttributeDefinition(Reader& reader, const Chunk& chunk)
{
    // The flags have four bytes since 2012 and two before: the form that fits to the last byte
    // holds.
    std::string reason;
    for (const bool hasWideFlags : {true, false}) {
        Cursor cursor(chunk.payload);
        const Definition definition = takeDefinition(cursor, hasWideFlags);
        if (cursor.hasFailed()) {
            reason = reason.empty() ? cursor.reason() : reason;
        } else if (definition.longName.empty()) {
            reason = "no attribute name is given";
        } else {
            send(reader, definition);
            reader.understood(kSection, chunk);
            return;
        }
    }
    reader.damaged(kSection, chunk, reason);
}

} // namespace host::file::binary
