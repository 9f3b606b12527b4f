// Pulls values: a plug gets what its source gives, what its node computes, or what is stored.
#pragma once

#include "host/eval/ComputeTable.h"
#include "host/eval/InstanceTable.h"
#include "host/graph/Graph.h"
#include "host/support/Diagnostics.h"

#include <optional>
#include <unordered_map>
#include <vector>

namespace host::eval {

/// A node whose computation was left out on the way to a value.
struct PassedNode {
    graph::NodeId node = graph::kNoNode;
    bool isMissing = false; ///< nothing came through it: it has no geometry to pass on
};

/// Evaluates plugs of one graph, as far upstream as they are dirty, and keeps the results in it.
///
/// Order of sources: a connection (of the plug, else of a compound around it), the computation of
/// the plug's node, the stored value, the attribute's default. A node without a computation that is
/// asked for geometry hands on what its geometry inputs give; asked for anything else it gives
/// nothing, and the destination keeps its own value. A plug that is met again while it is being
/// evaluated gives its stored value. Where the meshes along histories take more memory than
/// `limitHeldBytes` says, those on the way are let go, and made anew if they are asked for. Nothing
/// here recurses: pending plugs stand on a stack of its own, so that chains may be as long as
/// memory allows.
class Evaluator {
public:
    /// All must outlive the evaluator; `rows` are the computations of all node types.
    Evaluator(graph::Graph& graph, const InstanceTable& instances,
              std::span<const NodeCompute* const> rows, Diagnostics& diagnostics);

    /// The value of a plug; empty where there is none.
    Value value(const graph::Plug& plug);
    /// The nodes that were passed by on the way to an evaluated plug, nearest first; of several
    /// branches the first.
    std::vector<PassedNode> passedNodes(const graph::Plug& plug) const;
    /// What a node said of why it was passed by: the first that it said.
    Lack lackOf(graph::NodeId node) const;
    /// Gives a node's computations what they will find kept.
    void keep(graph::NodeId node, std::shared_ptr<const void> made)
    {
        m_kept[node] = std::move(made);
    }
    /// Bytes of computed meshes up to which all of them are kept.
    void limitHeldBytes(std::size_t bytes) { m_mostHeldBytes = bytes; }
    std::size_t heldBytes() const { return m_heldBytes; }
    /// The node whose outTime and unwarpedTime are the time that is set, whatever is stored there.
    void setClock(graph::NodeId node);
    /// Sets the time and makes dirty what was computed from it.
    void setTime(std::int64_t ticks);
    std::int64_t time() const { return m_time; }

private:
    class Context;
    /// Which attributes of a node are connected, and which have slots at all.
    struct NodeInputs {
        std::uint32_t round = 0; ///< of the graph's connections, plus 1
        std::size_t slotCount = 0;
        AttributeBits connected;
        AttributeBits present;
    };
    struct Frame {
        graph::Plug plug;
        std::uint32_t attempts = 0;
    };
    struct Passed {
        PassedNode node;
        std::uint32_t next = 0; ///< position + 1 in m_passed; 0 ends the list
    };

    const NodeInputs& inputsOf(graph::NodeId node);
    std::optional<Value> fetch(const graph::Plug& plug);
    std::optional<Value> fetchConnected(const graph::Plug& plug, graph::SlotId slot);
    Value attempt(const graph::Plug& plug);
    Value fromSource(const graph::Plug& plug, const graph::Plug& source);
    Value fromNode(const graph::Plug& plug, const OutputEntry& entry);
    static bool isBlocking(ComputeContext& context, const OutputEntry& entry);
    Value passThrough(const graph::Plug& plug, const std::vector<graph::Plug>& inputs);
    Value plain(const graph::Plug& plug);
    Value storedValue(const graph::Plug& plug) const;
    void step();
    void finish(const graph::Plug& plug, graph::SlotId slot, Value value);
    void keepComputed(const graph::Plug& plug, graph::SlotId slot, Value value);
    void releaseInputs(const graph::Plug& plug, bool usesTime);
    bool isOnlyResult(const graph::Plug& plug);
    void release(graph::Slot& slot);
    void markTime(graph::NodeId node, graph::SlotId slot, bool usesTime);
    const TypeComputes& computesOf(graph::NodeId node);

    std::vector<std::int32_t> elementsOf(const graph::Plug& array);
    std::vector<std::int32_t> connectedElementsOf(const graph::Plug& array) const;
    std::vector<InnerArray> innerArraysOf(graph::NodeId node, AttributeIndex attribute) const;
    std::vector<graph::Plug> geometryInputs(const graph::Plug& output);
    std::vector<graph::Plug> unknownNodeInputs(const graph::Plug& output) const;
    bool isWithoutEffect(graph::NodeId node);
    void noteUncomputed(graph::NodeId node, std::string_view detail = {});
    void notePassed(graph::NodeId node, bool isMissing);

    graph::Graph& m_graph;
    const InstanceTable& m_instances;
    ComputeTable m_table;
    Diagnostics& m_diagnostics;
    std::int64_t m_time = 0;
    graph::NodeId m_clock = graph::kNoNode;
    AttributeIndex m_clockOut = kNoAttribute;
    AttributeIndex m_clockUnwarped = kNoAttribute;

    std::size_t m_mostHeldBytes = std::size_t{64} << 20;
    std::size_t m_heldBytes = 0; ///< of parts of computed meshes, each counted with its first mesh

    std::vector<Frame> m_stack;
    std::vector<graph::Plug> m_requests; ///< of the attempt that runs
    std::uint32_t m_currentPassed = 0;   ///< of the attempt that runs
    bool m_currentUsesTime = false;

    std::vector<Passed> m_passed;
    std::unordered_map<std::uint64_t, std::uint32_t> m_passedOf; ///< node and slot -> list
    std::vector<std::uint64_t> m_usesTime;       ///< node and slot of what goes with the time
    std::vector<const TypeComputes*> m_computes; ///< per node, null until it is asked for
    std::vector<NodeInputs> m_inputs;            ///< per node
    std::unordered_map<std::uint64_t, Value>
        m_stored; ///< values under computed ones; node and slot
    std::unordered_map<graph::NodeId, std::shared_ptr<const void>>
        m_kept;                  ///< what computations keep of their nodes
    std::vector<bool> m_isNoted; ///< nodes noted as uncomputed
    std::unordered_map<graph::NodeId, Lack> m_lacks;
};

} // namespace host::eval
