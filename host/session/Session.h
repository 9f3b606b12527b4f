// The hall: one open scene and everything that may be asked of it. The API's classes hand their
// questions to a Session and turn its answers into their own types; nothing else of the host is
// visible to them.
#pragma once

#include "host/geometry/hair/RenderLines.h"
#include "host/geometry/mesh/MeshData.h"
#include "host/geometry/mesh/renderMesh.h"
#include "host/geometry/nurbs/SurfaceData.h"
#include "host/graph/Graph.h"
#include "host/math/Matrix4.h"
#include "host/support/Diagnostics.h"
#include "host/support/Expected.h"
#include "host/types/Value.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace host::session {

using graph::kNoNode;
using graph::kWorld;
using graph::NodeId;
using graph::Plug;

/// A path in the DAG: the nodes below the world down to the end node; empty: the world itself.
struct DagPath {
    std::vector<NodeId> nodes;
    NodeId end() const { return nodes.empty() ? kWorld : nodes.back(); }
    friend bool operator==(const DagPath&, const DagPath&) = default;
};

/// A set that a shape's instance is a member of. No `faces`: the whole object.
struct SetMembership {
    NodeId set = kNoNode;
    std::shared_ptr<const std::vector<std::uint32_t>> faces; ///< ascending, possibly empty
    bool isOfOtherComponents = false; ///< the set has vertices, edges or the like of it, no faces
};

/// The scene's working units, as its file gives them: what queries answer, not what coordinates are
/// in.
struct WorkingUnits {
    std::string linear = "cm"; ///< short name
    std::string angular = "deg";
    std::string time = "film"; ///< file name of the unit
    std::int64_t ticksPerFrame = 5880000;
};

/// What is shown of a mesh shape: its mesh, or a subdivided one. In that each face of the shape's
/// mesh, of n corners, gave n * 4^(divisions - 1) faces, which follow one another in its order.
struct ShownMesh {
    std::shared_ptr<const geometry::MeshData> mesh; ///< null when the shape has no geometry
    std::uint32_t divisions = 0;
};

class Session {
public:
    Session(); ///< an open new scene
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// Number of scenes opened or begun so far: handles of an earlier one are void.
    std::uint32_t generation() const { return m_generation; }
    void newScene();
    /// Replaces the scene by a file's. Fails (Io, BadInput) when the file cannot be read, is of no
    /// known format or is cut short before any node; then a new scene is open. Everything else
    /// degrades and is noted in `diagnostics()`.
    Expected<void> open(std::string_view utf8Path);
    /// Absolute path of the open file with forward slashes; ends in "untitled" for a new scene.
    const std::string& currentFile() const { return m_currentFile; }

    const graph::Graph& graph() const { return *m_graph; }
    Diagnostics& diagnostics() { return m_diagnostics; }
    const WorkingUnits& units() const { return m_units; }
    bool isZUp() const { return m_isZUp; }

    // --- time, in ticks
    std::int64_t currentTime() const { return m_time; }
    void setCurrentTime(std::int64_t ticks); ///< makes what depends on time dirty
    std::int64_t playbackStart() const { return m_playbackStart; }
    std::int64_t playbackEnd() const { return m_playbackEnd; }
    /// Makes another unit of time the working one ("film", "90fps"); no moment changes by it. Fails
    /// (InvalidParameter) for an unknown word.
    Expected<void> setTimeUnit(std::string_view name);
    /// True when a plug of the node (of an ancestor on the path too, with `checkParents`) is fed by
    /// an animation curve, directly or through conversion, blend, mute or character nodes.
    bool isAnimated(NodeId node) const;
    bool isAnimated(const DagPath& path, bool checkParents) const;

    // --- DAG
    /// All paths of a node in instance-number order: for each parent in order, for each path of
    /// that parent.
    std::vector<DagPath> pathsTo(NodeId node) const;
    DagPath firstPathTo(NodeId node) const;
    std::uint32_t instanceNumber(const DagPath& path) const;
    bool isInstanced(const DagPath& path) const;
    std::string fullPathName(const DagPath& path) const; ///< "|a|b"; empty for the world
    /// Every node of the path: visibility, lodVisibility, no intermediate object, and no enabled
    /// override that hides.
    bool isVisible(const DagPath& path);
    /// World matrix of the path's last transform (of the end node if it is one).
    Matrix4 inclusiveMatrix(const DagPath& path);
    /// Local matrix; fails (InvalidParameter) for a node that is no transform.
    Expected<Matrix4> localMatrix(NodeId node);

    // --- plugs
    /// The plug of a top-level or nested attribute by long or short name ("translateX", "color");
    /// null plug if the node has none.
    Plug findPlug(NodeId node, std::string_view attributeName);
    /// The element of a multi plug (made if absent).
    Plug element(const Plug& array, std::int32_t logicalIndex);
    /// The children of a compound plug in order; empty for others.
    std::vector<Plug> children(const Plug& plug);
    /// The evaluated value; empty where there is none.
    Value value(const Plug& plug);
    double number(const Plug& plug, double fallback);
    std::string text(const Plug& plug); ///< string attributes
    /// "node.attribute[3].child" in long names.
    std::string plugName(const Plug& plug) const;
    Plug source(const Plug& plug) const;
    std::vector<Plug> destinations(const Plug& plug) const;
    /// All plugs of the node that have any connection, in attribute order.
    std::vector<Plug> connectedPlugs(NodeId node) const;
    /// Nodes upstream of a plug (connections into its children too), breadth first, each once, the
    /// plug's own node first.
    std::vector<NodeId> upstreamNodes(const Plug& plug) const;

    // --- shapes and shading
    /// The evaluated mesh of a mesh shape, with its tweaks; null when it has no geometry.
    std::shared_ptr<const geometry::MeshData> mesh(NodeId shape);
    /// The same as it is shown: subdivided where the shape is in smooth-mesh preview.
    ShownMesh shownMesh(NodeId shape);
    /// Sets that an instance of a shape is a member of: the whole-object connection first, then
    /// face groups by ascending index. A set met twice is one entry with the faces of both.
    /// `renderableOnly`: shading groups only. Fails (InvalidParameter) for an instance number out
    /// of range.
    Expected<std::vector<SetMembership>> connectedSets(NodeId shape, std::uint32_t instance,
                                                       bool renderableOnly);
    bool isShadingGroup(NodeId set) const;

    // --- curves and surfaces
    /// The evaluated surface of a nurbsSurface shape, with its trims; null when it has no geometry.
    std::shared_ptr<const geometry::SurfaceData> surface(NodeId shape);
    /// The evaluated curve of a nurbsCurve shape; null when it has no geometry.
    std::shared_ptr<const geometry::CurveData> curve(NodeId shape);
    /// The triangles of a nurbsSurface shape as the shape asks to be shown, positions in object
    /// space; null when it has no geometry.
    std::shared_ptr<const geometry::RenderMesh> tessellation(NodeId shape);
    /// The strands of a pfxHair shape (lines of a stroke or pfxToon shape) at the current time, in
    /// object space; null when nothing is known of them.
    std::shared_ptr<const geometry::RenderLines> renderLines(NodeId shape);

    // --- commands
    /// The answers of "ls -shapes" and "currentUnit -query -linear"; fails (InvalidParameter) for
    /// anything else. Nothing is ever executed.
    Expected<std::vector<std::string>> executeCommand(std::string_view command);

    /// The report of the open scene as JSON text: counts, unknown and uncomputed node types,
    /// textures, references left out.
    std::string report() const;
    /// The report of the scene that was opened last, also when a new one was begun since; of the
    /// new scene when none was opened.
    std::string lastReport() const
    {
        return isOpened() || m_lastReport.empty() ? report() : m_lastReport;
    }

private:
    struct Evaluation;
    void beginScene();
    void finishScene(std::unique_ptr<Evaluation> evaluation);
    bool isOpened() const;
    bool isNodeVisible(NodeId node);
    Matrix4 worldMatrix(NodeId node, const Matrix4& above);
    std::vector<std::string> shortestNames(const std::vector<NodeId>& nodes) const;
    template<class T>
    std::shared_ptr<const T> geometryOf(NodeId shape, std::string_view type,
                                        std::string_view output, std::string_view input);
    void noteShape(NodeId shape, const Plug& output, std::string_view input, bool hasGeometry);

    std::uint32_t m_generation = 0;
    std::string m_currentFile;
    std::unique_ptr<graph::Graph> m_graph;
    std::unique_ptr<Evaluation> m_evaluation;
    Diagnostics m_diagnostics;
    WorkingUnits m_units;
    bool m_isZUp = false;
    std::int64_t m_time = 0;
    std::int64_t m_playbackStart = 0;
    std::int64_t m_playbackEnd = 0;
    std::string m_lastReport;
};

/// The process's session: null before `startSession` and after `endSession`.
Session* currentSession();
void startSession();
void endSession();

} // namespace host::session
