// The scene as a graph: nodes, their plugs, connections in order, the DAG with several parents.
// Holds values; computes none.
#pragma once

#include "host/support/Expected.h"
#include "host/types/NodeType.h"
#include "host/types/NumericArray.h"
#include "host/types/Value.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace host::graph {

using NodeId = std::uint32_t; ///< position in creation order; the world is 0
inline constexpr NodeId kWorld = 0;
inline constexpr NodeId kNoNode = 0xffffffff;

using SlotId = std::uint32_t; ///< position in a node's list of plugs that hold something
inline constexpr SlotId kNoSlot = 0xffffffff;

/// A plug: an attribute of a node, inside the multi element `context` (a slot of the same node;
/// kNoSlot for none), and for a multi its logical index (-1: the array as a whole, or an attribute
/// that is no multi).
struct Plug {
    NodeId node = kNoNode;
    AttributeIndex attribute = kNoAttribute;
    SlotId context = kNoSlot;
    std::int32_t index = -1;
    explicit operator bool() const { return node != kNoNode; }
    friend bool operator==(const Plug&, const Plug&) = default;
};

/// What a node keeps of a plug. Only plugs that were set, connected or computed have one.
struct Slot {
    AttributeIndex attribute = kNoAttribute;
    bool isClean : 1 = false; ///< `value` is a computed one and still holds
    bool isUsed : 1 = false;  ///< it, or a plug inside it, was ever set, connected or computed
    // The evaluator's own marks:
    bool isInProgress : 1 = false; ///< is being evaluated
    bool usesTime : 1 = false;     ///< the computed value holds for one time only
    SlotId context = kNoSlot;
    std::int32_t index = -1;
    std::uint32_t input = 0xffffffff; ///< the connection that feeds it, or none
    std::uint32_t firstOutput =
        0xffffffff; ///< its connections as a source, a list in order of making
    std::uint32_t lastOutput = 0xffffffff;
    Value value; ///< stored or computed
    std::unique_ptr<NumericArray>
        array; ///< elements of a numeric multi that were set; index is -1 then
};

struct ConnectionRecord {
    Plug source;
    Plug destination;
    std::uint32_t nextOutput = 0xffffffff; ///< of the same source
    std::uint32_t previousOutput = 0xffffffff;
    bool isAlive = true;
};

struct Node {
    NodeType type;
    std::string name;        ///< leaf name with its namespace
    std::string unknownType; ///< the type word of an unknown node, else empty
    std::vector<Slot> slots;
    std::vector<NodeId> parents;  ///< DAG parents in order; the same parent at most once
    std::vector<NodeId> children; ///< DAG children in order
    std::unique_ptr<std::vector<Attribute>>
        dynamicAttributes; ///< their names live in the graph's text store
    bool isAlive = true;
    bool isDefault = false; ///< part of a new scene
    bool hasClean = false;  ///< some slot is clean
    bool isDag() const { return type.isDag(); }
};

/// Levels below the world that the DAG may have, and paths that instancing may multiply it to:
/// beyond them files attack.
inline constexpr std::size_t kMaxDagDepth = 1000;

class Graph {
public:
    Graph(); ///< holds the world only: a node of type dagNode named "world"

    // --- nodes
    /// A node at the end of the creation order. A name already taken among its rivals (the parent's
    /// children for DAG nodes, all non-DAG nodes else) gets its trailing number raised; an empty
    /// one is made of the type's. `parent` is ignored for types outside the DAG; where it is no DAG
    /// node the world stands in, where it lies as deep as the DAG may be its own parent does.
    NodeId createNode(NodeType type, std::string_view name, NodeId parent);
    /// Gives a node another name, with its number raised as `createNode` does.
    void renameNode(NodeId node, std::string_view name);
    std::size_t nodeCount() const { return m_nodes.size(); }
    const Node& node(NodeId id) const { return m_nodes[id]; }
    Node& node(NodeId id) { return m_nodes[id]; }
    /// The node of a name, partial path "a|b" or full path "|a|b" (a leading ':' pins the root
    /// namespace; "a|b->|c" enters the underworld); the first made where several fit. kNoNode:
    /// none. Also gives the instance that a path names, see `findPath`.
    NodeId findNode(std::string_view nameOrPath) const;
    /// As findNode, with the nodes from below the world down to the end node in `chain`; for a
    /// plain name the first path. `chain` is empty for a node outside the DAG. Bounded: a partial
    /// path that fits a great many places may be given up.
    NodeId findPath(std::string_view nameOrPath, std::vector<NodeId>& chain) const;

    // --- DAG
    /// Adds a parent at the end of `child`'s list. Fails (Limit, InvalidParameter) on a cycle,
    /// beyond kMaxDagDepth, on a second link of the same pair. A name that another child of the
    /// parent has gets its number raised.
    Expected<void> addParent(NodeId child, NodeId parent);
    /// Fails (InvalidParameter) when there is no such link or when it is the child's only one.
    Expected<void> removeParent(NodeId child, NodeId parent);
    /// Makes `parent` the only parent of `child`.
    Expected<void> setParent(NodeId child, NodeId parent);
    /// Takes extra parents away, in creation order of nodes and for each from its last one on,
    /// until the whole DAG has at most `maxPaths` paths or no instances; returns how many links
    /// went.
    std::size_t limitPaths(std::size_t maxPaths);
    /// Number of paths from the world to a node (1 without instancing), at most the highest size_t.
    std::size_t pathCount(NodeId node) const;

    // --- attributes and plugs
    AttributeIndex findAttribute(NodeId node, std::string_view name) const;
    Attribute attribute(NodeId node, AttributeIndex index) const;
    std::size_t attributeCount(NodeId node) const;
    /// Adds a dynamic attribute; an existing one of that long name is kept and returned. `parent`
    /// must be a dynamic one (else there is none); the links to children and siblings are made
    /// here. kNoAttribute when the node has as many as an index can tell apart.
    AttributeIndex addAttribute(NodeId node, const Attribute& attribute);

    SlotId findSlot(const Plug& plug) const;
    SlotId ensureSlot(const Plug& plug);
    /// The child of a compound plug (of its element, for a multi: `plug.index` >= 0; makes the
    /// element's slot).
    Plug child(const Plug& plug, AttributeIndex child);
    /// The element of a multi plug.
    Plug element(const Plug& array, std::int32_t index) const;
    /// The compound or multi element that a plug is part of: for a child its compound (element),
    /// for an element its array; null plug at the top.
    Plug parentPlug(const Plug& plug) const;
    /// Logical indices of the elements that exist (set, connected, or holding such children),
    /// ascending.
    std::vector<std::int32_t> elementIndices(const Plug& array) const;
    /// First element after the highest existing one.
    std::int32_t nextAvailable(const Plug& array);
    /// "attr[3].child" in long names, for messages and names; compounds that are no multi are left
    /// out ("translateX").
    std::string plugName(const Plug& plug) const;

    /// Stores a value and makes what depends on it dirty. A number of an element goes into the
    /// numeric array that holds its kind, if there is one.
    void setValue(const Plug& plug, Value value);
    /// The array that holds the elements of a numeric multi, made on first use; for writing call
    /// `touch` afterwards.
    NumericArray& numericArray(const Plug& array, NumberStorage storage, std::size_t width);
    const NumericArray* findNumericArray(const Plug& array) const;
    /// Value as stored (or computed and clean): of the slot, else of the numeric array that holds
    /// the element, else empty. A computed value goes when it gets dirty.
    Value storedValue(const Plug& plug) const;
    /// Makes everything downstream of a plug dirty: every computed value of its node, of the nodes
    /// that its node feeds, and of what lies below them in the DAG (its place depends on them).
    /// Free as long as nothing was computed.
    void touch(const Plug& plug);
    /// Keeps a computed value and marks it clean.
    void setComputed(const Plug& plug, Value value);

    // --- connections
    /// Connects; the destination's former input goes. Fails on kinds that cannot meet.
    Expected<void> connect(const Plug& source, const Plug& destination);
    bool disconnect(const Plug& source, const Plug& destination);
    const std::vector<ConnectionRecord>& connections() const { return m_connections; }
    /// Another number whenever a connection was made or has gone.
    std::uint32_t connectionRound() const { return m_connectionRound; }
    /// The source connected to exactly this plug, or a null plug.
    Plug inputOf(const Plug& plug) const;
    /// Destinations of exactly this plug, in order of connection.
    std::vector<Plug> outputsOf(const Plug& plug) const;

private:
    struct Index;
    struct NamePath;

    void nameNode(NodeId node, std::string_view name);
    void forgetName(NodeId node);
    std::string freeName(NodeId node, std::string_view name, std::span<const NodeId> rivals) const;
    bool isNameTaken(NodeId node, std::string_view name, NodeId parent) const;
    NodeId findChild(NodeId parent, std::string_view name) const;
    std::uint32_t findNameChain(std::string_view name) const;
    NodeId walkDown(const NamePath& path, std::size_t first, NodeId from,
                    std::vector<NodeId>& chain) const;
    bool walkUp(const NamePath& path, std::size_t last, NodeId from, std::vector<NodeId>& chain,
                std::size_t& budget) const;
    NodeId findPartial(const NamePath& path, std::vector<NodeId>& chain) const;
    void prependFirstPath(std::vector<NodeId>& chain) const;

    Expected<void> checkLink(NodeId child, NodeId parent) const;
    bool isAncestor(NodeId ancestor, NodeId node) const;
    void link(NodeId child, NodeId parent);
    void unlink(NodeId child, NodeId parent);
    bool updateDepths(NodeId from);
    std::vector<NodeId> parentsFirst() const;
    void cutParents(const std::vector<std::size_t>& kept, std::span<const NodeId> order);

    AttributeIndex usableParent(NodeId node, AttributeIndex parent) const;
    void indexAttribute(NodeId node, AttributeIndex index);
    bool isValid(const Plug& plug) const;
    void indexSlot(NodeId node, SlotId slot);
    SlotId markUsed(const Plug& plug);
    NumericArray* arrayHolding(const Plug& plug, std::uint32_t& index, std::size_t& component);
    const NumericArray* arrayHolding(const Plug& plug, std::uint32_t& index,
                                     std::size_t& component) const;
    std::size_t leafPosition(NodeId node, AttributeIndex compound, AttributeIndex leaf) const;
    void touchNode(NodeId node);
    void drop(std::uint32_t connection);
    Expected<void> checkKinds(const Plug& source, const Plug& destination) const;

    std::vector<Node> m_nodes;
    std::vector<ConnectionRecord> m_connections;
    std::uint32_t m_connectionRound = 0;
    std::shared_ptr<Index>
        m_index; ///< names, children by name, slots of large nodes, texts of dynamic attributes
};

} // namespace host::graph
