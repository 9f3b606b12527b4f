// Connections between plugs.
#include "host/graph/Graph.h"
#include "host/graph/GraphIndex.h"

#include <optional>
#include <utility>

namespace host::graph {
namespace {

constexpr std::size_t kMaxVector = 4; // numbers; compounds of more are records, met part by part

/// Kinds that can stand for each other.
enum class Family : std::uint8_t { Number, Text, Matrix, Numbers, Points, Geometry, Other };

Family familyOf(AttributeKind kind)
{
    if (isNumeric(kind)) {
        return Family::Number;
    }
    switch (kind) {
    case AttributeKind::String:
        return Family::Text;
    case AttributeKind::Matrix:
    case AttributeKind::FloatMatrix:
        return Family::Matrix;
    case AttributeKind::Int32Array:
    case AttributeKind::FloatArray:
    case AttributeKind::DoubleArray:
        return Family::Numbers;
    case AttributeKind::VectorArray:
    case AttributeKind::PointArray:
        return Family::Points;
    case AttributeKind::Mesh:
    case AttributeKind::NurbsCurve:
    case AttributeKind::NurbsSurface:
    case AttributeKind::NurbsTrimface:
    case AttributeKind::Lattice:
    case AttributeKind::Geometry:
        return Family::Geometry;
    default:
        return Family::Other;
    }
}

bool canMeet(AttributeKind source, AttributeKind destination)
{
    using Kind = AttributeKind;
    if (source == destination || source == Kind::Any || destination == Kind::Any) {
        return true;
    }
    const Family family = familyOf(source);
    if (source == Kind::Message || destination == Kind::Message || source == Kind::Compound ||
        destination == Kind::Compound) { // a reference to what is no number or text, or a mere part
        const Family other =
            source == Kind::Message || source == Kind::Compound ? familyOf(destination) : family;
        return other != Family::Number && other != Family::Text;
    }
    if (family == Family::Geometry && familyOf(destination) == Family::Geometry) {
        return source == Kind::Geometry || destination == Kind::Geometry;
    }
    return family != Family::Other && family == familyOf(destination);
}

/// How many numbers an attribute has in all; none where other things are among them, or where its
/// children are not known.
std::optional<std::size_t> countNumbers(const Graph& graph, NodeId node, AttributeIndex index)
{
    std::size_t count = 0;
    std::vector<AttributeIndex> open{index};
    while (!open.empty()) {
        const Attribute attribute = graph.attribute(node, open.back());
        open.pop_back();
        if (isNumeric(attribute.kind)) {
            ++count;
        } else if (attribute.kind != AttributeKind::Compound ||
                   attribute.firstChild == kNoAttribute) {
            return std::nullopt;
        }
        for (AttributeIndex child = attribute.firstChild; child != kNoAttribute;
             child = graph.attribute(node, child).nextSibling) {
            open.push_back(child);
        }
    }
    return count;
}

} // namespace

/// Numbers meet numbers, vectors those of equal length; data meets data of its family; messages and
/// parts of compounds meet all but numbers and text. Files are right more often than tables: what
/// is not known to be wrong passes.
Expected<void> Graph::checkKinds(const Plug& source, const Plug& destination) const
{
    const AttributeKind from = attribute(source.node, source.attribute).kind;
    const AttributeKind to = attribute(destination.node, destination.attribute).kind;
    bool isGood = canMeet(from, to);
    const bool areNumbers = (isNumeric(from) || from == AttributeKind::Compound) &&
                            (isNumeric(to) || to == AttributeKind::Compound);
    if (areNumbers && !(isNumeric(from) && isNumeric(to))) {
        const auto given = countNumbers(*this, source.node, source.attribute);
        const auto taken = countNumbers(*this, destination.node, destination.attribute);
        const bool areRecords = given > kMaxVector && taken > kMaxVector;
        isGood = !given || !taken || *given == *taken || areRecords;
    }
    if (isGood) {
        return {};
    }
    const std::string sourceName = m_nodes[source.node].name + '.' + plugName(source);
    return Error{ErrorCode::InvalidParameter, sourceName + " does not fit its destination",
                 m_nodes[destination.node].name + '.' + plugName(destination)};
}

Expected<void> Graph::connect(const Plug& source, const Plug& destination)
{
    if (!isValid(source) || !isValid(destination)) {
        return Error{ErrorCode::InvalidParameter, "no such plug", {}};
    }
    if (source == destination) {
        return Error{ErrorCode::InvalidParameter, "a plug cannot feed itself",
                     m_nodes[source.node].name + '.' + plugName(source)};
    }
    if (const auto check = checkKinds(source, destination); !check) {
        return check;
    }
    const SlotId from = markUsed(source);
    const SlotId to = markUsed(destination);
    const std::uint32_t former = m_nodes[destination.node].slots[to].input;
    if (former != kNoId) {
        if (m_connections[former].source == source) {
            return {};
        }
        drop(former);
    }
    const auto id = static_cast<std::uint32_t>(m_connections.size());
    ++m_connectionRound;
    ConnectionRecord& record = m_connections.emplace_back();
    record.source = source;
    record.destination = destination;
    Slot& output = m_nodes[source.node].slots[from];
    record.previousOutput = output.lastOutput;
    (output.lastOutput == kNoId ? output.firstOutput
                                : m_connections[output.lastOutput].nextOutput) = id;
    output.lastOutput = id;
    m_nodes[destination.node].slots[to].input = id;
    touch(destination);
    return {};
}

bool Graph::disconnect(const Plug& source, const Plug& destination)
{
    const SlotId to = findSlot(destination);
    const std::uint32_t id = to == kNoSlot ? kNoId : m_nodes[destination.node].slots[to].input;
    if (id == kNoId || m_connections[id].source != source) {
        return false;
    }
    drop(id);
    touch(destination);
    return true;
}

/// Takes a connection out of the lists at both ends.
void Graph::drop(std::uint32_t id)
{
    ++m_connectionRound;
    ConnectionRecord& record = m_connections[id];
    record.isAlive = false;
    const Plug& destination = record.destination;
    m_nodes[destination.node].slots[findSlot(destination)].input = kNoId;
    Slot& output = m_nodes[record.source.node].slots[findSlot(record.source)];
    const std::uint32_t before = record.previousOutput;
    const std::uint32_t after = record.nextOutput;
    (before == kNoId ? output.firstOutput : m_connections[before].nextOutput) = after;
    (after == kNoId ? output.lastOutput : m_connections[after].previousOutput) = before;
}

Plug Graph::inputOf(const Plug& plug) const
{
    const SlotId id = findSlot(plug);
    const std::uint32_t input = id == kNoSlot ? kNoId : m_nodes[plug.node].slots[id].input;
    return input == kNoId ? Plug() : m_connections[input].source;
}

std::vector<Plug> Graph::outputsOf(const Plug& plug) const
{
    std::vector<Plug> outputs;
    const SlotId id = findSlot(plug);
    if (id == kNoSlot) {
        return outputs;
    }
    for (std::uint32_t at = m_nodes[plug.node].slots[id].firstOutput; at != kNoId;
         at = m_connections[at].nextOutput) {
        outputs.push_back(m_connections[at].destination);
    }
    return outputs;
}

} // namespace host::graph
