// The listener that carries a scene's commands out on a graph.
#pragma once

#include "host/file/Command.h"
#include "host/graph/Graph.h"
#include "host/session/PlaybackRange.h"
#include "host/session/Session.h"
#include "host/session/StoredMeshes.h"
#include "host/support/Diagnostics.h"

#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

namespace host::session {

/// What a scene says about itself besides its nodes.
struct SceneFacts {
    WorkingUnits units;
    std::vector<std::string> references; ///< paths of references that were left out, each once
};

/// Builds a scene command by command. Nothing fails: what cannot be carried out becomes a
/// diagnostic with its place, and the next command goes on. The work of a command does not grow
/// with the scene.
class SceneBuilder final : public file::CommandSink {
public:
    /// `isDefault`: the nodes are those of a new scene.
    SceneBuilder(graph::Graph& graph, Diagnostics& diagnostics, bool isDefault = false);

    const SceneFacts& facts() const { return m_facts; }

    void at(const file::Place& place) override { m_place = place; }
    void requirePlugin(std::string_view plugin, std::string_view version,
                       std::span<const std::string_view> nodeTypes) override;
    void currentUnit(const file::Units& units) override;
    void fileInfo(std::string_view key, std::string_view value) override;
    void reference(const file::Reference& reference) override;
    void createNode(const file::CreateNode& command) override;
    void renameNode(std::string_view newName) override;
    void uuid(std::string_view uuid) override;
    void selectNode(std::string_view name) override;
    void parentNodes(const file::ParentNodes& command) override;
    void lockNode(bool isLocked) override;
    void addAttribute(const file::AddAttribute& command) override;
    PlugShape shapeOf(const PlugPath& plug) override;
    void setAttribute(const file::SetAttribute& command) override;
    void connect(const file::Connection& command) override;
    void disconnect(const file::Connection& command) override;
    void unknown(std::string_view word) override;
    void damaged(std::string_view word, std::string_view reason) override;
    void endOfScene() override;

private:
    /// A node by its path, with the instance that the path names.
    struct FoundNode {
        graph::NodeId node = graph::kNoNode;
        std::int32_t instance = 0;
    };

    // --- nodes
    graph::NodeId findParent(const file::CreateNode& command);
    graph::NodeId replaceUnknown(graph::NodeId node);
    graph::NodeId claimDefault(const file::CreateNode& command, NodeType type);
    graph::NodeId findShared(const file::CreateNode& command, NodeType type, graph::NodeId parent);
    void setInitial(std::string_view attribute, double number);
    NodeType typeFor(const file::CreateNode& command, bool& isUnknown);
    FoundNode findInstance(std::string_view nameOrPath) const;
    std::int32_t instanceOf(const std::vector<graph::NodeId>& chain) const;
    void parentNode(const file::ParentNodes& command, std::string_view name, graph::NodeId parent);
    graph::NodeId nodeOf(const PlugPath& plug) const;

    // --- attributes
    void setNumbers(graph::NodeId node, const file::SetAttribute& command);
    void storeBlock(const graph::Plug& plug, const PlugStep& step, const file::NumberBlock& numbers,
                    std::size_t elementsAhead = 0);
    void storeElements(const graph::Plug& array, std::uint32_t first,
                       const file::NumberBlock& numbers, std::size_t elementsAhead);
    void storeSingle(const graph::Plug& plug, const file::NumberBlock& numbers, std::size_t from);
    void storeNumber(const graph::Plug& plug, double number);
    void setSparse(graph::NodeId node, const file::SetAttribute& command);
    void setValues(const graph::Plug& plug, const file::SetAttribute& command);
    void keepUnknown(graph::NodeId node, const file::SetAttribute& command);
    bool takeTransformAttribute(graph::NodeId node, const file::SetAttribute& command);
    graph::Plug makeUnknownPlug(graph::NodeId node, const PlugPath& path, AttributeKind kind);
    void noteUnknownAttribute(graph::NodeId node, const PlugPath& path);

    // --- connections
    struct End {
        graph::Plug plug;
        bool isOpenMulti = false; ///< a multi whose last index was left out
    };
    std::optional<End> findEnd(std::string_view text, std::string_view word, bool isSource);

    void note(DiagnosticKind kind, std::string_view subject, std::string_view detail = {});

    graph::Graph& m_graph;
    Diagnostics& m_diagnostics;
    bool m_isDefault;
    bool m_hasPlainNormals = false; ///< the file is from before normals were weighed
    bool m_hasNewCylinders = false; ///< the file is from after their texture coordinates changed
    file::Place m_place;
    SceneFacts m_facts;
    graph::NodeId m_current = graph::kNoNode;
    double m_linearScale = 1;  ///< centimetres in a working unit
    double m_angularScale = 1; ///< radians
    StoredMeshes m_meshes;
    std::unordered_set<std::string> m_referencesSeen;
};

/// Paths that a scene may have: instances multiply, and a short file can ask for more than any
/// machine can walk.
std::size_t maxPaths(std::size_t nodeCount);

} // namespace host::session
