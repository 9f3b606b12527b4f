#include "host/eval/EvaluatorContext.h"

#include "host/eval/plugSource.h"
#include "host/geometry/mesh/MeshData.h"

#include <algorithm>
#include <array>

namespace host::eval {

using graph::kNoSlot;
using graph::NodeId;
using graph::Plug;
using graph::SlotId;

namespace {

/// Compounds around an attribute.
constexpr std::size_t kMaxNesting = 12;

} // namespace

Evaluator::Context::Context(Evaluator& evaluator, const Plug& plug, const OutputEntry& entry)
    : m_evaluator(evaluator), m_plug(plug), m_entry(entry), m_inputs(evaluator.inputsOf(plug.node))
{
}

Value Evaluator::Context::input(std::size_t position)
{
    const AttributeIndex attribute = (*m_entry.inputs)[position].attribute;
    if (attribute == kNoAttribute) {
        return {};
    }
    return m_evaluator.fetch({m_plug.node, attribute, kNoSlot, -1}).value_or(Value());
}

bool Evaluator::Context::isConnected(std::size_t position)
{
    const InputEntry& entry = (*m_entry.inputs)[position];
    return m_inputs.connected.mayMeet(entry.ways) &&
           sourceOf(m_evaluator.m_graph, {m_plug.node, entry.attribute, kNoSlot, -1});
}

double Evaluator::Context::number(std::size_t position, double fallback)
{
    const InputEntry& entry = (*m_entry.inputs)[position];
    if (m_inputs.connected.mayMeet(entry.ways) || !entry.isPlainNumber) {
        return input(position).number(fallback);
    }
    if (!m_inputs.present.mayHave(entry.attribute)) {
        return entry.initial;
    }
    const SlotId slot = m_evaluator.m_graph.findSlot({m_plug.node, entry.attribute, kNoSlot, -1});
    return slot == kNoSlot
               ? entry.initial
               : m_evaluator.m_graph.node(m_plug.node).slots[slot].value.number(entry.initial);
}

const NumericArray* Evaluator::Context::array(std::size_t position,
                                              std::span<const std::int32_t> outer)
{
    const AttributeIndex attribute = (*m_entry.inputs)[position].attribute;
    if (attribute == kNoAttribute) {
        return nullptr;
    }
    const Plug plug =
        outer.empty() ? Plug{m_plug.node, attribute, kNoSlot, -1} : plugInside(position, outer);
    return m_evaluator.m_graph.findNumericArray(plug);
}

std::vector<InnerArray> Evaluator::Context::innerArrays(std::size_t position)
{
    const AttributeIndex attribute = (*m_entry.inputs)[position].attribute;
    return m_evaluator.innerArraysOf(m_plug.node, attribute);
}

std::vector<std::int32_t> Evaluator::Context::elementIndices(std::size_t position,
                                                             std::span<const std::int32_t> outer)
{
    const Plug plug = plugInside(position, outer);
    return plug ? m_evaluator.elementsOf(plug) : std::vector<std::int32_t>();
}

std::vector<std::int32_t> Evaluator::Context::connectedIndices(std::size_t position,
                                                               std::span<const std::int32_t> outer)
{
    const Plug plug = m_inputs.connected.isEmpty() ? Plug{} : plugInside(position, outer);
    return plug ? m_evaluator.connectedElementsOf(plug) : std::vector<std::int32_t>();
}

Value Evaluator::Context::element(std::size_t position, std::span<const std::int32_t> indices)
{
    const Plug plug = plugInside(position, indices);
    return plug ? m_evaluator.fetch(plug).value_or(Value()) : Value();
}

Matrix4 Evaluator::Context::worldMatrixOf(const geometry::ShapeMark& mark)
{
    const auto node = static_cast<NodeId>(mark.node - 1);
    return mark.node > 0 && node < m_evaluator.m_graph.nodeCount()
               ? worldMatrixAt(node, mark.instance)
               : Matrix4{};
}

Matrix4 Evaluator::Context::parentWorldMatrix()
{
    const auto instance = static_cast<std::uint32_t>(std::max(0, m_plug.index));
    const InstanceTable::Step above = m_evaluator.m_instances.above(m_plug.node, instance);
    if (above.parent == graph::kNoNode || above.parent == graph::kWorld) {
        return {};
    }
    return worldMatrixAt(above.parent, static_cast<std::int32_t>(above.instance));
}

std::int64_t Evaluator::Context::time()
{
    m_evaluator.m_currentUsesTime = true;
    return m_evaluator.m_time;
}

void Evaluator::Context::noteLack(Lack lack)
{
    m_isUncomputed = true;
    if (lack != Lack::Unsaid) {
        m_evaluator.m_lacks.emplace(m_plug.node, lack);
    }
    m_evaluator.noteUncomputed(m_plug.node);
}

Matrix4 Evaluator::Context::worldMatrixAt(NodeId node, std::int32_t instance)
{
    const AttributeIndex attribute = m_evaluator.m_graph.findAttribute(node, "worldMatrix");
    if (attribute == kNoAttribute) {
        return {};
    }
    const auto matrix =
        m_evaluator.fetch({node, attribute, kNoSlot, instance}).value_or(Value()).data<Matrix4>();
    return matrix != nullptr ? *matrix : Matrix4{};
}

/// The plug that one index per multi leads to on the way down to an input; where the indices end
/// early the multi at which they do; null plug when there are too many.
Plug Evaluator::Context::plugInside(std::size_t position, std::span<const std::int32_t> indices)
{
    const AttributeIndex attribute = (*m_entry.inputs)[position].attribute;
    if (attribute == kNoAttribute) {
        return {};
    }
    graph::Graph& graph = m_evaluator.m_graph;
    std::array<AttributeIndex, kMaxNesting> way{};
    std::size_t depth = 0;
    for (AttributeIndex at = attribute; at != kNoAttribute && depth < kMaxNesting;
         at = graph.attribute(m_plug.node, at).parent) {
        way[depth++] = at;
    }
    Plug plug;
    std::size_t used = 0;
    for (; depth > 0; --depth) {
        const AttributeIndex step = way[depth - 1];
        plug = plug ? graph.child(plug, step) : Plug{m_plug.node, step, kNoSlot, -1};
        if (graph.attribute(m_plug.node, step).isMulti) {
            if (used == indices.size()) {
                return plug;
            }
            plug = graph.element(plug, indices[used++]);
        }
    }
    return used == indices.size() ? plug : Plug{};
}

} // namespace host::eval
