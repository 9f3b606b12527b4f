// addAttr, connectAttr, disconnectAttr.
#include "host/file/ascii/statements/statements.h"

#include <algorithm>
#include <array>

namespace host::file::ascii {
namespace {

struct KindRow {
    std::string_view word;
    AttributeKind kind;
    std::int32_t childCount = 0; ///< of compounds whose word tells it
};

using enum AttributeKind;

// Types of addAttr -attributeType, sorted.
constexpr KindRow kAttributeTypes[] = {
    {"bool", Bool},
    {"byte", Byte},
    {"char", Char},
    {"compound", Compound},
    {"double", Double},
    {"double2", Compound, 2},
    {"double3", Compound, 3},
    {"double4", Compound, 4},
    {"doubleAngle", DoubleAngle},
    {"doubleLinear", DoubleLinear},
    {"enum", Enum},
    {"float", Float},
    {"float2", Compound, 2},
    {"float3", Compound, 3},
    {"floatAngle", FloatAngle},
    {"floatLinear", FloatLinear},
    {"fltMatrix", FloatMatrix},
    {"generic", Any},
    {"long", Long},
    {"long2", Compound, 2},
    {"long3", Compound, 3},
    {"matrix", Matrix},
    {"message", Message},
    {"reflectance", Compound, 3},
    {"short", Short},
    {"short2", Compound, 2},
    {"short3", Compound, 3},
    {"spectrum", Compound, 3},
    {"time", Time},
};

// Types of addAttr -dataType, sorted; what is missing is Any.
constexpr KindRow kDataTypes[] = {
    {"Int32Array", Int32Array},
    {"attributeAlias", AttributeAlias},
    {"componentList", ComponentList},
    {"dataPolyComponent", PolyComponent},
    {"dataReferenceEdits", ReferenceEdits},
    {"doubleArray", DoubleArray},
    {"floatArray", FloatArray},
    {"fltMatrix", FloatMatrix},
    {"lattice", Lattice},
    {"matrix", Matrix},
    {"mesh", Mesh},
    {"nurbsCurve", NurbsCurve},
    {"nurbsSurface", NurbsSurface},
    {"nurbsTrimface", NurbsTrimface},
    {"pointArray", PointArray},
    {"polyFaces", PolyFaces},
    {"string", String},
    {"stringArray", StringArray},
    {"vectorArray", VectorArray},
};

const KindRow* findKind(std::span<const KindRow> table, std::string_view word)
{
    const auto found =
        std::lower_bound(table.begin(), table.end(), word,
                         [](const KindRow& row, std::string_view w) { return row.word < w; });
    return found != table.end() && found->word == word ? &*found : nullptr;
}

Connection connectionOf(const Arguments& arguments)
{
    Connection connection;
    connection.source = arguments.object(0);
    connection.destination = arguments.object(1);
    connection.isNextAvailable = arguments.isSet("na");
    connection.isForced = arguments.isSet("f");
    return connection;
}

} // namespace

void addAttribute(Reader& reader, const Arguments& arguments)
{
    AddAttribute command;
    command.longName = arguments.text("ln", arguments.text("sn"));
    command.shortName = arguments.text("sn");
    command.parent = arguments.text("p");
    command.isMulti = arguments.isSet("m");
    if (command.longName.empty()) {
        reader.damaged("addAttr", "no attribute name is given");
        return;
    }
    if (!arguments.objects().empty() && arguments.object(0) != reader.currentNode) {
        reader.damaged("addAttr", "another node than the current one is named");
        return;
    }
    if (arguments.has("at")) {
        const KindRow* const row = findKind(kAttributeTypes, arguments.text("at"));
        command.kind = row != nullptr ? row->kind : Any;
        command.childCount = row != nullptr ? row->childCount : 0;
    } else if (arguments.has("dt")) {
        const KindRow* const row = findKind(kDataTypes, arguments.text("dt"));
        command.kind = row != nullptr ? row->kind : Any;
    }
    const auto initial = numberOfWord(arguments.text("dv"));
    command.initial = initial.value_or(0) * reader.scales.of(unitOf(command.kind));
    if (const auto children = numberOfWord(arguments.text("nc"))) {
        command.childCount = std::max(toInt32(*children), std::int32_t{0});
    }
    reader.sink.addAttribute(command);
}

void connectAttributes(Reader& reader, const Arguments& arguments)
{
    if (arguments.objects().size() < 2) {
        reader.damaged("connectAttr", "a source or a destination is missing");
        return;
    }
    reader.sink.connect(connectionOf(arguments));
}

void disconnectAttributes(Reader& reader, const Arguments& arguments)
{
    if (arguments.objects().size() < 2) {
        reader.damaged("disconnectAttr", "a source or a destination is missing");
        return;
    }
    reader.sink.disconnect(connectionOf(arguments));
}

} // namespace host::file::ascii
