#include "host/eval/Evaluator.h"

#include "host/eval/EvaluatorContext.h"
#include "host/eval/convertValue.h"
#include "host/eval/outputNames.h"
#include "host/eval/plugSource.h"
#include "host/geometry/mesh/MeshData.h"

#include <algorithm>

namespace host::eval {

using graph::kNoSlot;
using graph::Node;
using graph::NodeId;
using graph::Plug;
using graph::Slot;
using graph::SlotId;

namespace {

/// Times that one plug is begun anew before its stored value is taken: more than any node has
/// inputs, and an end for every case that nobody thought of.
constexpr std::uint32_t kMaxAttempts = 100000;

/// Inputs that are tried in turn where a node joins several geometries.
constexpr std::size_t kMaxPassedInputs = 64;

constexpr std::uint32_t kNoConnection = 0xffffffff;

std::uint64_t keyOf(NodeId node, SlotId slot)
{
    return std::uint64_t{node} << 32 | slot;
}

bool mayBeGeometry(AttributeKind kind)
{
    return kind == AttributeKind::Mesh || kind == AttributeKind::NurbsCurve ||
           kind == AttributeKind::NurbsSurface || kind == AttributeKind::Geometry ||
           kind == AttributeKind::Any;
}

bool isGeometry(const Value& value)
{
    return value.data<geometry::MeshData>() != nullptr ||
           value.data<geometry::SurfaceData>() != nullptr ||
           value.data<geometry::CurveData>() != nullptr;
}

std::string_view typeWord(const Node& node)
{
    return node.unknownType.empty() ? node.type.name() : std::string_view(node.unknownType);
}

} // namespace

Evaluator::Evaluator(graph::Graph& graph, const InstanceTable& instances,
                     std::span<const NodeCompute* const> rows, Diagnostics& diagnostics)
    : m_graph(graph)
    , m_instances(instances)
    , m_table(rows)
    , m_diagnostics(diagnostics)
    , m_isNoted(graph.nodeCount(), false)
{
}

Value Evaluator::value(const Plug& plug)
{
    if (!plug) {
        return {};
    }
    m_requests.clear();
    if (const std::optional<Value> ready = fetch(plug)) {
        return *ready;
    }
    m_stack.push_back({plug, 0});
    while (!m_stack.empty()) {
        step();
    }
    m_requests.clear();
    return m_graph.storedValue(plug);
}

/// One attempt at the plug on top of the stack: it is finished, or what it waits for goes on top.
void Evaluator::step()
{
    const Plug plug = m_stack.back().plug;
    const SlotId slot = m_graph.ensureSlot(plug);
    if (m_stack.back().attempts == 0) {
        if (m_graph.node(plug.node).slots[slot].isClean) {
            m_stack.pop_back(); // two waited for it
            return;
        }
        m_graph.node(plug.node).slots[slot].isInProgress = true;
    }
    const bool isStuck = ++m_stack.back().attempts > kMaxAttempts;
    m_requests.clear();
    m_currentPassed = 0;
    m_currentUsesTime = false;
    Value value = isStuck ? plain(plug) : attempt(plug);
    if (m_requests.empty() || isStuck) {
        finish(plug, slot, std::move(value));
        return;
    }
    for (auto request = m_requests.rbegin(); request != m_requests.rend(); ++request) {
        m_stack.push_back({*request, 0});
    }
}

void Evaluator::finish(const Plug& plug, SlotId slotId, Value value)
{
    if (const auto mesh = value.data<geometry::MeshData>();
        mesh != nullptr && mesh.use_count() <= 2) { // this value's and this function's
        m_heldBytes += geometry::ownedBytes(*mesh);
    }
    keepComputed(plug, slotId, std::move(value));
    if (m_heldBytes > m_mostHeldBytes) {
        releaseInputs(plug, m_currentUsesTime);
    }
    const std::uint64_t key = keyOf(plug.node, slotId);
    if (m_currentPassed != 0) {
        m_passedOf[key] = m_currentPassed;
    } else if (!m_passedOf.empty()) {
        m_passedOf.erase(key);
    }
    markTime(plug.node, slotId, m_currentUsesTime);
    m_graph.node(plug.node).slots[slotId].isInProgress = false;
    m_stack.pop_back();
}

/// Puts a computed value in its slot; what is stored there moves aside.
void Evaluator::keepComputed(const Plug& plug, SlotId slotId, Value value)
{
    Node& node = m_graph.node(plug.node);
    Slot& slot = node.slots[slotId];
    if (!slot.isClean && !slot.value.isEmpty()) {
        m_stored.emplace(keyOf(plug.node, slotId), slot.value);
    }
    if (slot.isUsed && node.hasClean) { // the graph knows of both
        slot.value = std::move(value);
        slot.isClean = true;
    } else {
        m_graph.setComputed(plug, std::move(value));
    }
}

/// Lets go of the meshes that a node has made its result of, where nobody else reads them. What
/// holds for all times stays while the result is made anew for each.
void Evaluator::releaseInputs(const Plug& plug, bool usesTime)
{
    if (!isOnlyResult(plug)) {
        return;
    }
    for (Slot& slot : m_graph.node(plug.node).slots) {
        if (slot.input == kNoConnection || !slot.isClean ||
            slot.value.data<geometry::MeshData>() == nullptr) {
            continue;
        }
        const Plug& source = m_graph.connections()[slot.input].source;
        const SlotId sourceId = m_graph.findSlot(source);
        if (sourceId == kNoSlot || source.node == plug.node) {
            continue;
        }
        Slot& given = m_graph.node(source.node).slots[sourceId];
        if (given.isClean && given.firstOutput == given.lastOutput && given.usesTime == usesTime &&
            isOnlyResult(source)) {
            release(slot);
            release(given);
        }
    }
}

/// Whether a node computes one geometry and no more: another one would ask for the inputs again.
bool Evaluator::isOnlyResult(const Plug& plug)
{
    std::size_t results = 0;
    bool isAmong = false;
    for (const OutputEntry& entry : computesOf(plug.node).outputs) {
        const Attribute attribute = m_graph.attribute(plug.node, entry.attribute);
        if (mayBeGeometry(attribute.kind)) {
            results += attribute.isMulti ? 2 : 1;
            isAmong |= entry.attribute == plug.attribute;
        }
    }
    return isAmong && results == 1;
}

void Evaluator::release(Slot& slot)
{
    const Value value = std::move(slot.value);
    slot.value = Value();
    slot.isClean = false;
    const auto mesh = value.data<geometry::MeshData>();
    if (mesh != nullptr && mesh.use_count() <= 2) {
        m_heldBytes -= std::min(m_heldBytes, geometry::ownedBytes(*mesh));
    }
}

void Evaluator::markTime(NodeId node, SlotId slotId, bool usesTime)
{
    Slot& slot = m_graph.node(node).slots[slotId];
    if (usesTime && !slot.usesTime) {
        m_usesTime.push_back(keyOf(node, slotId));
    }
    slot.usesTime = usesTime;
}

const TypeComputes& Evaluator::computesOf(NodeId node)
{
    if (node >= m_computes.size()) {
        m_computes.resize(m_graph.nodeCount(), nullptr);
    }
    const TypeComputes*& known = m_computes[node];
    if (known == nullptr) {
        known = &m_table.of(m_graph.node(node).type);
    }
    return *known;
}

const Evaluator::NodeInputs& Evaluator::inputsOf(NodeId node)
{
    if (node >= m_inputs.size()) {
        m_inputs.resize(m_graph.nodeCount());
    }
    NodeInputs& inputs = m_inputs[node];
    const std::vector<Slot>& slots = m_graph.node(node).slots;
    const std::uint32_t round = m_graph.connectionRound() + 1;
    if (inputs.round == round && inputs.slotCount == slots.size()) {
        return inputs;
    }
    if (inputs.round != round || inputs.slotCount > slots.size()) {
        inputs = NodeInputs{};
        inputs.round = round;
    }
    // Slots are only ever added at the end; those that were there have no other connections now.
    for (std::size_t i = inputs.slotCount; i < slots.size(); ++i) {
        inputs.present.add(slots[i].attribute);
        if (slots[i].input != kNoConnection) {
            inputs.connected.add(slots[i].attribute);
        }
    }
    inputs.slotCount = slots.size();
    return inputs;
}

/// The value of a plug as far as it is there; else it is put on the list of requests.
std::optional<Value> Evaluator::fetch(const Plug& plug)
{
    const SlotId slotId = m_graph.findSlot(plug);
    if (slotId != kNoSlot) {
        const std::uint64_t key = keyOf(plug.node, slotId);
        const Slot& slot = m_graph.node(plug.node).slots[slotId];
        if (slot.isClean) {
            const auto passed = m_passedOf.empty() ? m_passedOf.end() : m_passedOf.find(key);
            if (passed != m_passedOf.end() && m_currentPassed == 0) {
                m_currentPassed = passed->second;
            }
            m_currentUsesTime |= slot.usesTime;
            return slot.value;
        }
        if (slot.isInProgress) {
            m_currentUsesTime = true; // what was made inside a cycle is made anew at the next time
            return plain(plug);
        }
    }
    if (slotId != kNoSlot && m_graph.node(plug.node).slots[slotId].input != kNoConnection) {
        return fetchConnected(plug, slotId);
    }
    const bool isPending = sourceOf(m_graph, plug) ||
                           computesOf(plug.node).find(plug.attribute) != nullptr ||
                           !geometryInputs(plug).empty();
    if (!isPending) {
        return plain(plug);
    }
    m_requests.push_back(plug);
    return std::nullopt;
}

/// The value of a plug that has a connection of its own: at once where its source is there. A
/// source that its node computes is asked for directly, so that the plug needs no turn of its own.
std::optional<Value> Evaluator::fetchConnected(const Plug& plug, SlotId slotId)
{
    const Plug source = m_graph.connections()[m_graph.node(plug.node).slots[slotId].input].source;
    const SlotId sourceId = m_graph.findSlot(source);
    const Slot* slot = sourceId != kNoSlot ? &m_graph.node(source.node).slots[sourceId] : nullptr;
    const bool isPassed =
        !m_passedOf.empty() && (m_passedOf.count(keyOf(source.node, sourceId)) != 0 ||
                                m_passedOf.count(keyOf(plug.node, slotId)) != 0);
    if (slot != nullptr && slot->isClean && !isPassed) {
        const bool usesTime = slot->usesTime;
        Value value = convertValue(slot->value, m_graph.attribute(plug.node, plug.attribute).kind);
        if (!value.isEmpty()) {
            m_currentUsesTime |= usesTime;
            keepComputed(plug, slotId, value);
            markTime(plug.node, slotId, usesTime);
            return value;
        }
    }
    const bool isComputed = slot != nullptr && !slot->isClean && !slot->isInProgress &&
                            slot->input == kNoConnection &&
                            computesOf(source.node).find(source.attribute) != nullptr;
    m_requests.push_back(isComputed ? source : plug);
    return std::nullopt;
}

/// The elements that a multi has: its own, and those of a multi that is connected to it as a whole.
std::vector<std::int32_t> Evaluator::elementsOf(const Plug& array)
{
    std::vector<std::int32_t> indices = m_graph.elementIndices(array);
    const Plug source = sourceOf(m_graph, array);
    if (!source || !m_graph.attribute(source.node, source.attribute).isMulti) {
        return indices;
    }
    for (const std::int32_t index : m_graph.elementIndices(source)) {
        indices.push_back(index);
    }
    std::sort(indices.begin(), indices.end());
    indices.erase(std::unique(indices.begin(), indices.end()), indices.end());
    return indices;
}

/// The elements of a multi at which something is connected to them or to a part of them.
std::vector<std::int32_t> Evaluator::connectedElementsOf(const Plug& array) const
{
    std::vector<std::int32_t> indices;
    const std::vector<Slot>& slots = m_graph.node(array.node).slots;
    for (const Slot& slot : slots) {
        const Slot* at = slot.input != kNoConnection ? &slot : nullptr;
        while (at != nullptr && !(at->attribute == array.attribute &&
                                  at->context == array.context && at->index >= 0)) {
            at = at->context != kNoSlot ? &slots[at->context] : nullptr;
        }
        if (at != nullptr) {
            indices.push_back(at->index);
        }
    }
    std::sort(indices.begin(), indices.end());
    indices.erase(std::unique(indices.begin(), indices.end()), indices.end());
    return indices;
}

/// The arrays of a multi inside elements of multis, in one pass over the node's slots.
std::vector<InnerArray> Evaluator::innerArraysOf(NodeId node, AttributeIndex attribute) const
{
    std::vector<InnerArray> found;
    const std::vector<Slot>& slots = m_graph.node(node).slots;
    for (const Slot& slot : slots) {
        if (slot.attribute != attribute || slot.array == nullptr || slot.array->empty()) {
            continue;
        }
        InnerArray inner;
        inner.numbers = slot.array.get();
        std::size_t depth = 0;
        for (SlotId at = slot.context; at != kNoSlot; at = slots[at].context) {
            if (depth < InnerArray::kMaxDepth) {
                inner.way[depth] = slots[at].index;
            }
            ++depth;
        }
        if (depth <= InnerArray::kMaxDepth) {
            std::reverse(inner.way.begin(), inner.way.begin() + static_cast<std::ptrdiff_t>(depth));
            found.push_back(inner);
        }
    }
    const auto byWay = [](const InnerArray& a, const InnerArray& b) { return a.way < b.way; };
    if (!std::is_sorted(found.begin(), found.end(), byWay)) {
        std::sort(found.begin(), found.end(), byWay);
    }
    return found;
}

Value Evaluator::attempt(const Plug& plug)
{
    if (const Plug source = sourceOf(m_graph, plug)) {
        return fromSource(plug, source);
    }
    if (const OutputEntry* entry = computesOf(plug.node).find(plug.attribute)) {
        return fromNode(plug, *entry);
    }
    return passThrough(plug, geometryInputs(plug));
}

Value Evaluator::fromSource(const Plug& plug, const Plug& source)
{
    const std::optional<Value> given = fetch(source);
    if (!given) {
        return {};
    }
    const AttributeKind kind = m_graph.attribute(plug.node, plug.attribute).kind;
    Value converted = convertValue(*given, kind);
    return converted.isEmpty() ? plain(plug) : converted;
}

/// A blocking operation computes nothing: its result is what is stored.
bool Evaluator::isBlocking(ComputeContext& context, const OutputEntry& entry)
{
    constexpr double kBlocking = 2;
    return entry.state != OutputEntry::kNoState && context.number(entry.state, 0) == kBlocking;
}

Value Evaluator::fromNode(const Plug& plug, const OutputEntry& entry)
{
    Context context(*this, plug, entry);
    if (isBlocking(context, entry)) {
        return plain(plug);
    }
    Expected<Value> result = entry.row->compute(context);
    if (!m_requests.empty()) {
        return {};
    }
    if (!result) {
        noteUncomputed(plug.node, result.error().message);
        return storedValue(plug);
    }
    const AttributeKind kind = m_graph.attribute(plug.node, plug.attribute).kind;
    if (context.isUncomputed() && mayBeGeometry(kind)) {
        notePassed(plug.node, !isGeometry(*result));
    }
    return std::move(*result);
}

Value Evaluator::passThrough(const Plug& plug, const std::vector<Plug>& inputs)
{
    const bool isExact = isWithoutEffect(plug.node);
    for (const Plug& input : inputs) {
        const std::optional<Value> given = fetch(input);
        if (!given) {
            return {};
        }
        if (isGeometry(*given)) {
            if (!isExact) {
                noteUncomputed(plug.node);
                notePassed(plug.node, false);
            }
            return *given;
        }
    }
    Value stored = storedValue(plug);
    if (stored.isEmpty()) {
        noteUncomputed(plug.node);
        notePassed(plug.node, true);
    }
    return stored;
}

/// The value that a plug had before a computed one took its place.
Value Evaluator::storedValue(const Plug& plug) const
{
    if (!m_stored.empty()) {
        const SlotId slot = m_graph.findSlot(plug);
        const auto kept = slot == kNoSlot ? m_stored.end() : m_stored.find(keyOf(plug.node, slot));
        if (kept != m_stored.end()) {
            return kept->second;
        }
    }
    return m_graph.storedValue(plug);
}

/// What a plug has without its sources: the stored value, else the default. Empty for a result
/// that nothing computes.
Value Evaluator::plain(const Plug& plug)
{
    if (plug.node == m_clock && plug.attribute != kNoAttribute &&
        (plug.attribute == m_clockOut || plug.attribute == m_clockUnwarped)) {
        m_currentUsesTime = true;
        return Value(static_cast<double>(m_time));
    }
    Value stored = storedValue(plug);
    if (!stored.isEmpty()) {
        return stored;
    }
    const Node& node = m_graph.node(plug.node);
    const Attribute attribute = m_graph.attribute(plug.node, plug.attribute);
    const TypeComputes& computes = computesOf(plug.node);
    const bool isDynamic = plug.attribute >= computes.isResult.size();
    const bool isResultOfNode =
        isDynamic ? !node.unknownType.empty() && isResult(node.type, attribute.longName)
                  : computes.isResult[plug.attribute];
    if (isResultOfNode) {
        noteUncomputed(plug.node);
        notePassed(plug.node, true);
        return {};
    }
    return isNumeric(attribute.kind) ? Value(attribute.initial) : Value();
}

/// The plugs through which geometry for an output comes in: those of its own index first choice.
std::vector<Plug> Evaluator::geometryInputs(const Plug& output)
{
    const Node& node = m_graph.node(output.node);
    const Attribute attribute = m_graph.attribute(output.node, output.attribute);
    if (!mayBeGeometry(attribute.kind) || isGeometryInput(attribute.longName)) {
        return {};
    }
    if (!node.unknownType.empty()) {
        return unknownNodeInputs(output);
    }
    std::vector<Plug> inputs;
    for (const AttributeIndex input : computesOf(output.node).geometryInputs) {
        const Attribute row = node.type.attribute(input);
        const bool isInMulti =
            row.parent != kNoAttribute && node.type.attribute(row.parent).isMulti;
        if (!isInMulti && !row.isMulti) {
            inputs.push_back({output.node, input, kNoSlot, -1});
            continue;
        }
        const Plug array{output.node, isInMulti ? row.parent : input, kNoSlot, -1};
        for (const std::int32_t index : m_graph.elementIndices(array)) {
            if (output.index >= 0 && index != output.index) {
                continue;
            }
            const Plug element = m_graph.element(array, index);
            inputs.push_back(isInMulti ? m_graph.child(element, input) : element);
            if (inputs.size() == kMaxPassedInputs) {
                return inputs;
            }
        }
    }
    return inputs;
}

/// A node of an unknown type tells nothing of its attributes: whatever is connected may be
/// geometry, what has the output's index first.
std::vector<Plug> Evaluator::unknownNodeInputs(const Plug& output) const
{
    std::vector<Plug> inputs;
    for (const Slot& slot : m_graph.node(output.node).slots) {
        const Plug plug{output.node, slot.attribute, slot.context, slot.index};
        const Plug source = m_graph.inputOf(plug);
        if (source && !(plug == output) && inputs.size() < kMaxPassedInputs &&
            mayBeGeometry(m_graph.attribute(source.node, source.attribute).kind)) {
            inputs.push_back(plug);
        }
    }
    std::stable_partition(inputs.begin(), inputs.end(),
                          [&](const Plug& plug) { return plug.index == output.index; });
    return inputs;
}

/// True for a node that is switched off: its state is "has no effect", or its envelope is zero.
bool Evaluator::isWithoutEffect(NodeId node)
{
    const auto stored = [&](std::string_view name, double fallback) {
        const AttributeIndex attribute = m_graph.findAttribute(node, name);
        if (attribute == kNoAttribute) {
            return fallback;
        }
        const Plug plug{node, attribute, kNoSlot, -1};
        return m_graph.inputOf(plug) ? fallback : m_graph.storedValue(plug).number(fallback);
    };
    return stored("nodeState", 0) == 1 || stored("envelope", 1) == 0;
}

void Evaluator::noteUncomputed(NodeId node, std::string_view detail)
{
    if (node >= m_isNoted.size()) {
        m_isNoted.resize(m_graph.nodeCount(), false);
    }
    if (m_isNoted[node]) {
        return;
    }
    m_isNoted[node] = true;
    const Node& noted = m_graph.node(node);
    m_diagnostics.note(DiagnosticKind::UncomputedNode, typeWord(noted),
                       detail.empty() ? std::string_view(noted.name) : detail);
}

Lack Evaluator::lackOf(NodeId node) const
{
    const auto found = m_lacks.find(node);
    return found == m_lacks.end() ? Lack::Unsaid : found->second;
}

void Evaluator::notePassed(NodeId node, bool isMissing)
{
    m_passed.push_back({{node, isMissing}, m_currentPassed});
    m_currentPassed = static_cast<std::uint32_t>(m_passed.size());
}

std::vector<PassedNode> Evaluator::passedNodes(const Plug& plug) const
{
    std::vector<PassedNode> nodes;
    const SlotId slot = m_graph.findSlot(plug);
    const auto found = slot == kNoSlot ? m_passedOf.end() : m_passedOf.find(keyOf(plug.node, slot));
    std::uint32_t at = found == m_passedOf.end() ? 0 : found->second;
    for (; at != 0; at = m_passed[at - 1].next) {
        nodes.push_back(m_passed[at - 1].node);
    }
    return nodes;
}

void Evaluator::setClock(NodeId node)
{
    m_clock = node;
    m_clockOut = node == graph::kNoNode ? kNoAttribute : m_graph.findAttribute(node, "outTime");
    m_clockUnwarped =
        node == graph::kNoNode ? kNoAttribute : m_graph.findAttribute(node, "unwarpedTime");
}

void Evaluator::setTime(std::int64_t ticks)
{
    m_time = ticks;
    for (const std::uint64_t key : m_usesTime) {
        Slot& slot = m_graph.node(static_cast<NodeId>(key >> 32)).slots[key & 0xffffffffU];
        if (slot.usesTime) {
            slot.usesTime = false;
            release(slot);
        }
    }
    m_usesTime.clear();
}

} // namespace host::eval
