#include "host/session/rotationCurves.h"

#include "host/nodes/animation/keptCurve.h"
#include "host/nodes/wholeNumber.h"
#include "host/session/plugLookup.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>

namespace host::session {
namespace {

using geometry::RotationBlend;
using graph::Graph;
using graph::NodeId;
using graph::Plug;

constexpr std::array<std::string_view, 3> kChannels{"rotateX", "rotateY", "rotateZ"};

double storedNumber(const Graph& graph, NodeId node, std::string_view attribute, double fallback)
{
    return storedValue(graph, node, attribute).number(fallback);
}

std::optional<RotationBlend> blendOf(const Graph& graph, NodeId curve)
{
    const double number = storedNumber(graph, curve, "rotationInterpolation", 1);
    const bool isRotation = number == 3 || number == 4 || number == 5;
    return isRotation ? std::optional(static_cast<RotationBlend>(static_cast<int>(number)))
                      : std::nullopt;
}

const NumericArray* arrayOf(const Graph& graph, NodeId node, std::string_view attribute)
{
    const Plug plug = topPlug(graph, node, attribute);
    return plug ? graph.findNumericArray(plug) : nullptr;
}

geometry::CurveKeys keysOf(const Graph& graph, NodeId curve)
{
    nodes::StoredKeys stored;
    stored.timesAndValues = arrayOf(graph, curve, "keyTimeValue");
    stored.inTypes = arrayOf(graph, curve, "keyTanInType");
    stored.outTypes = arrayOf(graph, curve, "keyTanOutType");
    stored.tangentType = nodes::wholeNumber(storedNumber(graph, curve, "tangentType", 4), 4);
    stored.before = nodes::wholeNumber(storedNumber(graph, curve, "preInfinity", 0), 0);
    stored.after = nodes::wholeNumber(storedNumber(graph, curve, "postInfinity", 0), 0);
    return nodes::curveKeys(stored, {.isTimed = true, .givesTime = false});
}

using Axes = std::array<NodeId, 3>;
constexpr Axes kNoAxes{graph::kNoNode, graph::kNoNode, graph::kNoNode};

/// Enters a curve at the objects whose rotation it feeds.
void enter(const Graph& graph, NodeId curve, std::map<NodeId, Axes>& objects)
{
    for (const Plug& destination : graph.outputsOf(topPlug(graph, curve, "output"))) {
        if (!graph.node(destination.node).type.isTransform()) {
            continue;
        }
        const std::string_view name =
            graph.attribute(destination.node, destination.attribute).longName;
        for (std::size_t axis = 0; axis < kChannels.size(); ++axis) {
            if (name == kChannels[axis]) {
                objects.try_emplace(destination.node, kNoAxes).first->second[axis] = curve;
            }
        }
    }
}

void join(const Graph& graph, eval::Evaluator& evaluator, NodeId object, const Axes& axes)
{
    std::array<geometry::CurveKeys, 3> keys;
    for (std::size_t axis = 0; axis < axes.size(); ++axis) {
        if (axes[axis] == graph::kNoNode || blendOf(graph, axes[axis]) != blendOf(graph, axes[0])) {
            return;
        }
        keys[axis] = keysOf(graph, axes[axis]);
    }
    const auto order = rotationOrderFromNumber(storedNumber(graph, object, "rotateOrder", 0));
    const auto rotation = geometry::RotationCurves::join(keys, order, *blendOf(graph, axes[0]));
    for (std::size_t axis = 0; rotation != nullptr && axis < axes.size(); ++axis) {
        auto kept = std::make_shared<nodes::KeptCurve>();
        kept->rotation = rotation;
        kept->axis = axis;
        evaluator.keep(axes[axis], std::move(kept));
    }
}

} // namespace

void joinRotationCurves(const Graph& graph, eval::Evaluator& evaluator)
{
    const NodeType curveType = NodeType::find("animCurveTA");
    std::map<NodeId, Axes> objects;
    for (NodeId node = 0; node < graph.nodeCount(); ++node) {
        const graph::Node& curve = graph.node(node);
        if (curve.isAlive && curve.type == curveType && blendOf(graph, node)) {
            enter(graph, node, objects);
        }
    }
    std::map<NodeId, int> uses; // a curve that turns several objects stays independent
    for (const auto& [object, axes] : objects) {
        for (const NodeId curve : axes) {
            ++uses[curve];
        }
    }
    for (const auto& [object, axes] : objects) {
        if (std::all_of(axes.begin(), axes.end(), [&](NodeId curve) { return uses[curve] == 1; })) {
            join(graph, evaluator, object, axes);
        }
    }
}

} // namespace host::session
