// What a Session keeps besides its graph; for the session's own sources only.
#pragma once

#include "host/eval/Evaluator.h"
#include "host/eval/InstanceTable.h"
#include "host/session/SceneBuilder.h"
#include "host/session/Session.h"

#include <cstdint>
#include <map>
#include <unordered_map>
#include <vector>

namespace host::session {

/// How a shape whose geometry was asked for came out.
enum class ShapeOutcome : std::uint8_t {
    Exact,        ///< as the file stores it
    Computed,     ///< by its history, whole
    Approximated, ///< something on the way was passed by
    TexturesOnly, ///< the same, but it concerns nothing but texture coordinates
    Missing,      ///< its history gave nothing
    Empty         ///< it has neither history nor stored geometry
};

inline constexpr std::size_t kShapeOutcomes = 6;

/// A shape that its history makes, as the report tells it.
struct HistoryShape {
    NodeId shape = kNoNode;
    ShapeOutcome outcome = ShapeOutcome::Computed;
    std::vector<NodeId> passed; ///< nodes passed by, at most kMaxReportedPasses
};

/// How many shapes with a history the report names, and how many nodes for each; the rest is only
/// counted.
inline constexpr std::size_t kMaxReportedShapes = 10000;
inline constexpr std::size_t kMaxReportedPasses = 100;

/// Positions of the attributes that decide whether a node of one type is drawn.
struct VisibilityAttributes {
    AttributeIndex visibility = kNoAttribute;
    AttributeIndex lodVisibility = kNoAttribute;
    AttributeIndex intermediateObject = kNoAttribute;
    AttributeIndex overrideEnabled = kNoAttribute;
    AttributeIndex overrideVisibility = kNoAttribute;
};

struct Session::Evaluation {
    Evaluation(graph::Graph& graph, Diagnostics& diagnostics, SceneFacts sceneFacts);

    SceneFacts facts;
    eval::InstanceTable instances;
    eval::Evaluator evaluator;
    bool isFile = false; ///< the scene was opened, not begun

    /// Whether a node is drawn, as known since the round in which it was asked for.
    struct Visibility {
        std::uint32_t round = 0;
        bool isVisible = false;
    };
    std::vector<Visibility> visibility; ///< per node
    std::uint32_t visibilityRound = 1;  ///< a new time begins a new one
    std::unordered_map<std::string_view, VisibilityAttributes> visibilityOfType;
    std::map<NodeId, ShapeOutcome> shapes;
    std::vector<HistoryShape> history; ///< in the order in which they were asked for
    std::uint32_t fedRound = 0;        ///< of the graph's connections, plus 1
    std::vector<bool> fedByCurves;     ///< per node
    DagPath lastPath;                ///< whose world matrix was asked for last, at the current time
    std::vector<Matrix4> lastWorlds; ///< of each of its nodes
};

} // namespace host::session
