// A listener that writes a binary scene (.mb) of a scene's commands, for tests that read one scene
// in both formats. Shares nothing with the reader.
#pragma once

#include "host/file/Command.h"
#include "host/file/runningStep.h"
#include "host/geometry/deform/LatticeData.h"
#include "host/geometry/nurbs/SurfaceData.h"
#include "host/math/units.h"
#include "tests/support/BinaryScene.h"
#include "tests/support/NodeTableSink.h"

#include <algorithm>
#include <array>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

namespace test {

/// Codes of node types by name.
using TypeCodes = std::map<std::string, std::uint32_t>;

class BinaryWriter : public host::file::CommandSink {
public:
    /// `defaults` are the nodes that every scene has and their types.
    BinaryWriter(const BinaryManner& manner, TypeCodes codes,
                 const std::map<std::string, std::string>& defaults)
        : m_mb(manner), m_codes(std::move(codes))
    {
        for (const auto& [name, type] : defaults) {
            host::file::CreateNode command;
            command.type = type;
            command.name = name;
            m_shapes.createNode(command);
        }
    }

    /// What has no place in a binary file here; the bytes lack it.
    const std::vector<std::string>& omissions() const { return m_omissions; }

    std::string bytes()
    {
        std::string groups = m_mb.header(m_header, m_linear, m_time) + m_references;
        for (Node& node : m_nodes) {
            if (node.mesh) {
                node.chunks += m_mb.mesh("o", finished(*node.mesh));
            }
            groups += node.isSelected ? m_mb.selected(node.name, node.chunks)
                                      : m_mb.group(node.code, created(node) + node.chunks);
        }
        return m_mb.file(groups + m_instances + m_mb.connections(m_connections) + m_mb.trailer());
    }

    void at(const host::file::Place&) override {}
    void requirePlugin(std::string_view plugin, std::string_view version,
                       std::span<const std::string_view> nodeTypes) override
    {
        if (plugin == "maya") { // the scene's own, whatever the manner
            m_version = version;
            m_mb.manner.version = m_version;
            return;
        }
        std::vector<std::pair<std::string, std::uint32_t>> types;
        for (const std::string_view type : nodeTypes) {
            const auto code = static_cast<std::uint32_t>(0x7f000000 + m_codes.size());
            types.emplace_back(type, m_codes.try_emplace(std::string(type), code).first->second);
        }
        m_header += m_mb.plugin(plugin, version, types);
    }
    void currentUnit(const host::file::Units& units) override
    {
        const auto linear = host::findLinearUnit(units.linear);
        m_linear = linear ? linear->shortName : "cm";
        m_time = units.time;
    }
    void fileInfo(std::string_view key, std::string_view value) override
    {
        m_header += m_mb.fileInfo(key, value);
    }
    void reference(const host::file::Reference& reference) override
    {
        m_references += reference.isTableOfContents
                            ? m_mb.listedReference(reference.path, reference.nameSpace,
                                                   reference.nodeName, reference.isDeferred)
                            : m_mb.reference(reference.path, reference.nameSpace,
                                             reference.nodeName, reference.isDeferred);
    }
    void createNode(const host::file::CreateNode& command) override
    {
        m_shapes.createNode(command);
        Node& node = m_nodes.emplace_back();
        node.name = command.name;
        node.parent = command.parent;
        node.isShared = command.isShared;
        node.isMesh = command.type == "mesh";
        const auto code = m_codes.find(std::string(command.type));
        if (code == m_codes.end()) {
            omit("a node of the type " + std::string(command.type));
        }
        node.code = BinaryBytes().u32(code == m_codes.end() ? 0 : code->second).bytes();
        m_current = &node;
        m_byName[node.name] = &node;
    }
    void renameNode(std::string_view) override { omit("rename"); }
    void uuid(std::string_view uuid) override { m_current->uuid = uuid; }
    void selectNode(std::string_view name) override
    {
        m_shapes.selectNode(name);
        m_current = findNode(name);
        if (m_current == nullptr) {
            m_current = &m_nodes.emplace_back();
            m_current->name = name;
            m_current->isSelected = true;
            m_byName[lastName(name)] = m_current;
        }
    }
    void parentNodes(const host::file::ParentNodes& command) override
    {
        for (const std::string_view node : command.nodes) {
            command.isAdded ? void(m_instances += m_mb.instance(node, command.parent))
                            : omit("parent");
        }
    }
    void lockNode(bool isLocked) override { m_current->isLocked = isLocked; }
    void addAttribute(const host::file::AddAttribute& command) override
    {
        m_shapes.addAttribute(command);
        BinaryDefinition definition;
        std::string type;
        std::tie(definition.kind, type) = definitionKind(command.kind);
        if (command.kind == host::AttributeKind::Compound) {
            definition.children = static_cast<std::uint32_t>(std::max(command.childCount, 1));
        }
        if (definition.kind.empty()) {
            omit("a dynamic attribute of kind " + std::to_string(static_cast<int>(command.kind)));
            return;
        }
        if (!type.empty()) {
            definition.types = {type};
        }
        definition.longName = command.longName;
        definition.shortName = command.shortName.empty() ? command.longName : command.shortName;
        definition.parent = command.parent;
        definition.flags |= command.isMulti ? 1u : 0u;
        if (command.initial != 0 && command.kind == host::AttributeKind::Time) {
            definition.initialBytes = "DBLE" + timeBytes(command.initial);
        } else if (command.initial != 0) {
            definition.initial = command.initial;
        }
        m_current->chunks += m_mb.definition(definition);
    }
    host::PlugShape shapeOf(const host::PlugPath& plug) override { return m_shapes.shapeOf(plug); }
    void setAttribute(const host::file::SetAttribute& command) override
    {
        using Payload = host::file::SetAttribute::Payload;
        Node* const node = command.plug.node.empty() ? m_current : findNode(command.plug.node);
        if (node == nullptr) {
            omit("a value of a node that is not there");
            return;
        }
        if (takesMeshList(*node, command)) {
            return;
        }
        switch (command.payload) {
        case Payload::None:
            node->chunks += m_mb.flags(plugOf(command, 0, -1));
            break;
        case Payload::Numbers:
            node->chunks += numbers(command);
            break;
        case Payload::SparseNumbers:
            node->chunks += sparse(command);
            break;
        case Payload::Faces:
            omit("faces of a node that is no mesh");
            break;
        case Payload::Value:
            for (std::size_t i = 0; i < command.values.size(); ++i) {
                node->chunks += value(command, i);
            }
            break;
        }
    }
    void connect(const host::file::Connection& command) override
    {
        m_connections +=
            m_mb.connection(command.source, command.destination, command.isNextAvailable ? 1 : 0);
    }
    void disconnect(const host::file::Connection&) override { omit("disconnectAttr"); }
    void unknown(std::string_view word) override { omit(word); }
    void damaged(std::string_view word, std::string_view) override { omit(word); }
    void endOfScene() override {}

private:
    struct Node {
        std::string name;
        std::string parent;
        std::string code;
        std::string uuid;
        std::string chunks;
        std::optional<BinaryMesh> mesh;
        bool isShared = false;
        bool isLocked = false;
        bool isSelected = false;
        bool isMesh = false;
    };

    void omit(std::string_view what) { m_omissions.emplace_back(what); }

    static std::string lastName(std::string_view path)
    {
        path.remove_prefix(std::min(path.size(), path.rfind('|') + 1));
        path.remove_prefix(path.starts_with(':') ? 1 : 0);
        return std::string(path);
    }

    Node* findNode(std::string_view name)
    {
        const auto found = m_byName.find(lastName(name));
        return found == m_byName.end() ? nullptr : found->second;
    }

    std::string created(const Node& node) const
    {
        BinaryScene mb = m_mb;
        mb.manner.hasIds = m_mb.manner.hasIds && !node.uuid.empty();
        BinaryNode record;
        record.name = node.name;
        record.parent = node.parent;
        record.flags =
            kMbDag | (node.isShared ? kMbShared : 0u) | (node.isLocked ? kMbLockedNode : 0u);
        if (mb.manner.hasIds) {
            record.id = idOf(node.uuid);
        }
        return mb.created(record);
    }

    /// Four words of eight digits, the lowest byte of each first.
    static std::array<std::uint8_t, 16> idOf(std::string uuid)
    {
        std::erase(uuid, '-');
        std::array<std::uint8_t, 16> id{};
        for (std::size_t i = 0; i < 16 && 2 * i + 1 < uuid.size(); ++i) {
            id[i / 4 * 4 + 3 - i % 4] =
                static_cast<std::uint8_t>(std::stoul(uuid.substr(2 * i, 2), nullptr, 16));
        }
        return id;
    }

    static std::pair<std::string, std::string> definitionKind(host::AttributeKind kind)
    {
        using enum host::AttributeKind;
        switch (kind) {
        case Bool:
            return {"aBOL", ""};
        case Short:
            return {"aSI1", ""};
        case Long:
            return {"aLI1", ""};
        case Enum:
            return {"aENM", ""};
        case Float:
            return {"aFLT", ""};
        case Double:
            return {"aDBL", ""};
        case DoubleLinear:
            return {"aLNR", ""};
        case DoubleAngle:
            return {"aAGL", ""};
        case Time:
            return {"aTIM", ""};
        case Compound:
            return {"aCPD", ""};
        case Message:
            return {"aMSG", ""};
        case String:
            return {"aTYP", "STR "};
        case StringArray:
            return {"aTYP", "STR#"};
        case DoubleArray:
            return {"aTYP", "DBL#"};
        case VectorArray:
            return {"aTYP", "VEC#"};
        case Int32Array:
            return {"aTYP", "I32#"};
        case AttributeAlias:
            return {"aTYP", "ATAL"};
        default:
            return {};
        }
    }

    /// `first` counts from the plug's own index; `count` < 0: the plug's own range.
    static BinaryPlug plugOf(const host::file::SetAttribute& command, std::size_t first,
                             std::int64_t count)
    {
        const std::size_t running = host::file::runningStep(command.plug);
        std::string name;
        for (std::size_t i = 0; i < command.plug.stepCount; ++i) {
            const host::PlugStep& step = command.plug.steps[i];
            name += name.empty() ? "" : ".";
            name += step.name;
            if (!step.hasIndex()) {
                continue;
            }
            const bool isMoved = i == running && count >= 0;
            const std::int64_t begin =
                step.first + (isMoved ? static_cast<std::int64_t>(first) : 0);
            const std::int64_t end = isMoved ? begin + count - 1 : step.last;
            name += "[" + std::to_string(begin);
            name += end > begin ? ":" + std::to_string(end) + "]" : "]";
        }
        BinaryPlug plug(name);
        plug.flags |= command.flags.isLocked == 1 ? kMbLocked : 0u;
        plug.flags |= command.flags.isKeyable == 1 ? kMbKeyable : 0u;
        plug.flags |= command.flags.isInChannelBox == 1 ? kMbChannelBox : 0u;
        if (command.sizeHint >= 0) {
            plug.size = static_cast<std::uint32_t>(command.sizeHint);
        }
        return plug;
    }

    std::string timeBytes(double ticks) const
    {
        constexpr double kOldTicks = 6000;
        const double scale =
            m_mb.manner.hasLongTime ? 1 : kOldTicks / static_cast<double>(host::kTicksPerSecond);
        return m_mb.time(static_cast<std::int64_t>(ticks * scale + (ticks < 0 ? -0.5 : 0.5)));
    }

    std::string numbers(const host::file::SetAttribute& command)
    {
        const host::file::NumberBlock& block = command.numbers;
        const host::PlugShape shape = shapeOf(command.plug);
        const auto isTime = [&](std::size_t k) {
            return shape.isNumbers && shape.units[k] == host::UnitKind::Time;
        };
        bool hasTime = false;
        for (std::size_t k = 0; k < block.width && k < host::PlugShape::kMaxWidth; ++k) {
            hasTime = hasTime || isTime(k);
        }
        const BinaryPlug plug = plugOf(command, 0, static_cast<std::int64_t>(block.count()));
        if (!block.floats.empty() && (block.width == 2 || block.width == 3)) {
            return m_mb.floats(plug, {block.floats.begin(), block.floats.end()}, block.width);
        }
        if (!block.integers.empty() && (block.width == 2 || block.width == 3)) {
            return m_mb.longs(plug, {block.integers.begin(), block.integers.end()}, block.width);
        }
        std::string payload;
        for (std::size_t i = 0; i < block.numberCount(); ++i) {
            const double number = !block.floats.empty()    ? static_cast<double>(block.floats[i])
                                  : !block.doubles.empty() ? block.doubles[i]
                                                           : block.integers[i];
            payload +=
                isTime(i % block.width) ? timeBytes(number) : BinaryBytes().f64(number).bytes();
        }
        const bool isPlain = !hasTime && !block.doubles.empty() && block.width <= 4;
        const std::string tag = block.width == 1 ? "DBLE"
                                : isPlain        ? "DBL" + std::to_string(block.width)
                                                 : "CMPD";
        return m_mb.value(tag, plug, payload);
    }

    /// Rows where versions have them, else one number a chunk.
    std::string sparse(const host::file::SetAttribute& command)
    {
        const std::size_t running = host::file::runningStep(command.plug);
        host::file::SetAttribute single = command;
        std::string chunks;
        std::map<std::uint32_t, std::vector<std::pair<std::uint32_t, double>>> rows;
        for (const host::file::SparseNumber& entry : command.sparse) {
            rows[entry.outer].emplace_back(entry.inner, entry.number);
        }
        host::PlugStep& outer = single.plug.steps[running];
        host::PlugStep& inner = single.plug.steps[single.plug.stepCount - 1];
        for (const auto& [index, row] : rows) {
            outer.first = outer.last = index;
            if (m_mb.manner.hasLongTime) {
                BinaryPlug plug = plugOf(single, 0, -1);
                // A range of one element.
                const std::string text = "[" + std::to_string(index) + "]";
                plug.name.replace(plug.name.rfind(text), text.size(),
                                  "[" + std::to_string(index) + ":" + std::to_string(index) + "]");
                chunks += m_mb.sparse(plug, {row});
                continue;
            }
            for (const auto& [at, number] : row) {
                inner.first = inner.last = at;
                chunks += m_mb.number(plugOf(single, 0, -1), number);
            }
            inner.first = inner.last = -1;
        }
        return chunks;
    }

    std::string value(const host::file::SetAttribute& command, std::size_t position)
    {
        const host::Value& value = command.values[position];
        const BinaryPlug plug = plugOf(command, position, 1);
        if (const auto text = value.data<std::string>()) {
            return m_mb.string(plug, *text);
        }
        if (const auto texts = value.data<std::vector<std::string>>()) {
            const bool isAlias = shapeOf(command.plug).kind == host::AttributeKind::AttributeAlias;
            return m_mb.strings(plug, *texts, isAlias ? "ATAL" : "STR#");
        }
        if (const auto matrix = value.data<host::Matrix4>()) {
            std::vector<double> numbers;
            for (const auto& row : matrix->m) {
                numbers.insert(numbers.end(), std::begin(row), std::end(row));
            }
            return m_mb.matrix(plug, numbers);
        }
        if (const auto numbers = value.data<std::vector<double>>()) {
            return m_mb.value("DBL#", plug, BinaryBytes().f64s(*numbers).bytes());
        }
        if (const auto integers = value.data<std::vector<std::int32_t>>()) {
            BinaryBytes bytes;
            for (const std::int32_t integer : *integers) {
                bytes.i32(integer);
            }
            return m_mb.value("I32#", plug, bytes.bytes());
        }
        if (const auto vectors = value.data<std::vector<host::Vec3d>>()) {
            BinaryBytes bytes;
            for (const host::Vec3d& v : *vectors) {
                bytes.f64s({v.x, v.y, v.z});
            }
            return m_mb.value("VEC#", plug, bytes.bytes());
        }
        if (const auto points = value.data<std::vector<std::array<double, 4>>>()) {
            BinaryBytes bytes;
            for (const auto& point : *points) {
                bytes.f64s({point.begin(), point.end()});
            }
            return m_mb.value("PNT#", plug, bytes.bytes());
        }
        return geometry(value, plug);
    }

    std::string geometry(const host::Value& value, const BinaryPlug& plug)
    {
        if (const auto list = value.data<host::ComponentList>()) {
            return components(*list, plug);
        }
        if (const auto curve = value.data<host::geometry::CurveData>()) {
            return m_mb.value("NRBC", plug, curveBytes(*curve));
        }
        if (const auto surface = value.data<host::geometry::SurfaceData>()) {
            return m_mb.value("NRBS", plug, surfaceBytes(*surface));
        }
        if (const auto trim = value.data<host::geometry::TrimRegion>()) {
            return m_mb.value("NRTF", plug, trimBytes(*trim)); // no file tells the tag
        }
        if (const auto lattice = value.data<host::geometry::LatticeData>()) {
            std::vector<double> points;
            for (const host::Vec3d& v : lattice->points) {
                points.insert(points.end(), {v.x, v.y, v.z, 1.0});
            }
            return m_mb.lattice(plug, static_cast<unsigned>(lattice->s),
                                static_cast<unsigned>(lattice->t),
                                static_cast<unsigned>(lattice->u), points);
        }
        if (const auto data = value.data<host::PolyComponentData>();
            data && data->indices.empty()) {
            return {};
        }
        omit("a value of " + plug.name);
        return {};
    }

    static std::string curveBytes(const host::geometry::CurveData& curve)
    {
        BinaryBytes bytes;
        bytes.i32(curve.degree).i32(curve.spans).u32(static_cast<unsigned>(curve.form));
        bytes.u8(curve.rational ? 1 : 0).i32(curve.dimension);
        bytes.u32(curve.knots.size()).f64s(curve.knots);
        return bytes.u32(curve.cvCount()).f64s(curve.poles);
    }

    static std::string surfaceBytes(const host::geometry::SurfaceData& surface)
    {
        const std::size_t u = surface.knotsU.size() + 1;
        const std::size_t v = surface.knotsV.size() + 1;
        BinaryBytes bytes;
        bytes.i32(surface.degreeU).i32(surface.degreeV);
        bytes.u32(u - 2 * static_cast<std::size_t>(surface.degreeU));
        bytes.u32(v - 2 * static_cast<std::size_t>(surface.degreeV));
        bytes.u32(static_cast<unsigned>(surface.formU)).u32(static_cast<unsigned>(surface.formV));
        bytes.u8(surface.rational ? 1 : 0).u32(3);
        bytes.u32(surface.knotsU.size()).f64s(surface.knotsU);
        bytes.u32(surface.knotsV.size()).f64s(surface.knotsV);
        return bytes.u32(surface.poles.size() / surface.stride()).f64s(surface.poles).raw("N");
    }

    /// As the reader takes trims to be; no file was seen that has any.
    static std::string trimBytes(const host::geometry::TrimRegion& trim)
    {
        BinaryBytes bytes;
        bytes.u8(trim.flipNormal ? 1 : 0).u32(trim.boundaries.size());
        for (const host::geometry::TrimBoundary& boundary : trim.boundaries) {
            bytes.i32(boundary.type).counted(boundary.edgeFlags);
            for (const host::geometry::TrimEdge& edge : boundary.edges) {
                bytes.u32(edge.curves3d.size());
                for (const host::geometry::CurveData& curve : edge.curves3d) {
                    bytes.raw(curveBytes(curve));
                }
                bytes.f64(edge.tolerance3d).u32(edge.reversed ? 1 : 0).i32(edge.continuity);
                bytes.u32(edge.curves2d.size());
                for (const host::geometry::CurveData& curve : edge.curves2d) {
                    bytes.raw(curveBytes(curve));
                }
                bytes.u32(edge.monotone ? 1 : 0).f64(edge.tolerance2d);
            }
        }
        return bytes;
    }

    /// One entry for each text: "vtx[0:7]", "cv[0:3][*]".
    std::string components(const host::ComponentList& list, const BinaryPlug& plug)
    {
        std::vector<BinaryComponents> entries;
        for (const std::string& text : list.components) {
            const std::string name = text.substr(0, text.find('['));
            const auto dimensions = std::count(text.begin(), text.end(), '[');
            BinaryComponents entry;
            entry.kind = name == "vtx"                     ? "CMDV"
                         : name == "e"                     ? "CMDE"
                         : name == "f"                     ? "CMDF"
                         : name == "map"                   ? "CMDM"
                         : name == "cv" && dimensions == 1 ? "CCCV"
                         : name == "cv"                    ? "CSCV"
                         : name == "pt"                    ? "CLAT"
                                                           : "";
            if (entry.kind.empty()) {
                omit("components " + text);
                return {};
            }
            entry.ranges.push_back(rangesOf(text));
            entries.push_back(entry);
        }
        return m_mb.components(plug, entries);
    }

    static std::vector<std::int32_t> rangesOf(const std::string& text)
    {
        std::vector<std::int32_t> ranges;
        for (std::size_t at = text.find('['); at != std::string::npos;
             at = text.find('[', at + 1)) {
            const std::size_t end = text.find(']', at);
            const std::string range = text.substr(at + 1, end - at - 1);
            const std::size_t colon = range.find(':');
            if (range == "*") {
                ranges.insert(ranges.end(), {-1, -1});
                continue;
            }
            ranges.push_back(std::stoi(range));
            ranges.push_back(colon == std::string::npos ? ranges.back()
                                                        : std::stoi(range.substr(colon + 1)));
        }
        return ranges;
    }

    // --- meshes

    /// True where the block at the node's end has the value, so that no chunk is written.
    bool takesMeshList(Node& node, const host::file::SetAttribute& command)
    {
        const std::string_view name = command.plug.steps[0].name;
        const host::file::NumberBlock& block = command.numbers;
        const bool isList = name == "vt" || name == "ed" || name == "n" || name == "fc";
        const bool isSet = name == "uvst" && command.plug.stepCount == 2;
        if (!node.isMesh || (!isList && !isSet)) {
            return false;
        }
        BinaryMesh& mesh = node.mesh ? *node.mesh : node.mesh.emplace();
        if (name == "vt") {
            mesh.points.insert(mesh.points.end(), block.floats.begin(), block.floats.end());
        } else if (name == "n") {
            mesh.normals.insert(mesh.normals.end(), block.floats.begin(), block.floats.end());
        } else if (name == "ed") {
            for (std::size_t i = 0; i + 2 < block.integers.size(); i += 3) {
                mesh.edges.push_back({static_cast<std::uint32_t>(block.integers[i]),
                                      static_cast<std::uint32_t>(block.integers[i + 1]),
                                      block.integers[i + 2] == 0});
            }
        } else if (name == "fc" && command.faces != nullptr) {
            addFaces(mesh, *command.faces);
        } else if (isSet) {
            addToSet(mesh, command);
        }
        return isList;
    }

    static void addToSet(BinaryMesh& mesh, const host::file::SetAttribute& command)
    {
        const auto index =
            static_cast<std::size_t>(std::max<std::int64_t>(command.plug.steps[0].first, 0));
        mesh.uvSets.resize(std::max(mesh.uvSets.size(), index + 1));
        BinaryMesh::Set& set = mesh.uvSets[index];
        const std::span<const float> floats = command.numbers.floats;
        set.numbers.insert(set.numbers.end(), floats.begin(), floats.end());
        if (!command.values.empty()) {
            const auto name = command.values[0].data<std::string>();
            set.name = name ? *name : set.name;
        }
    }

    static void addFaces(BinaryMesh& mesh, const host::PolyFaces& faces)
    {
        std::size_t before = 0;
        for (const BinaryMesh::Face& face : mesh.faces) {
            for (const auto& loop : face) {
                before += loop.size();
            }
        }
        for (const host::PolyFaces::UvIds& ids : faces.uvSets) {
            const auto index = static_cast<std::size_t>(ids.set);
            mesh.uvSets.resize(std::max(mesh.uvSets.size(), index + 1));
            std::vector<std::int32_t>& corners = mesh.uvSets[index].corners;
            corners.resize(before, -1);
            corners.insert(corners.end(), ids.ids.begin(), ids.ids.end());
        }
        auto corner = faces.corners.begin();
        auto size = faces.loopSizes.begin();
        for (const std::uint32_t loops : faces.faceLoopCounts) {
            BinaryMesh::Face& face = mesh.faces.emplace_back();
            for (std::uint32_t i = 0; i < loops; ++i, ++size) {
                face.emplace_back(corner, corner + *size);
                corner += *size;
            }
        }
    }

    static BinaryMesh finished(BinaryMesh mesh)
    {
        std::size_t corners = 0;
        for (const BinaryMesh::Face& face : mesh.faces) {
            for (const auto& loop : face) {
                corners += loop.size();
            }
        }
        for (BinaryMesh::Set& set : mesh.uvSets) {
            if (!set.corners.empty()) {
                set.corners.resize(corners, -1);
            }
        }
        return mesh;
    }

    BinaryScene m_mb;
    TypeCodes m_codes;
    NodeTableSink m_shapes;
    std::string m_version;
    std::string m_header;
    std::string m_linear = "cm";
    std::string m_time = "film";
    std::string m_references;
    std::string m_instances;
    std::string m_connections;
    std::deque<Node> m_nodes;
    std::map<std::string, Node*> m_byName; ///< the last one of a name
    Node* m_current = nullptr;
    std::vector<std::string> m_omissions;
};

} // namespace test
