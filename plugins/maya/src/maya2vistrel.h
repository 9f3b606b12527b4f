// The driver of one import: opens the Maya scene and hands it, converted, to the object layer.
#pragma once

#include "importers/maya/src/ImportArgs.h"
#include "plugins/maya/src/MeshManager.h"
#include "plugins/maya/src/NurbsManager.h"
#include "plugins/maya/src/ProgressCounter.h"

#include <maya/MDagPath.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>

class GroupIndex;
class GroupStack;
class IDirtyChecker;
class MFnDagNode;
class MFnDependencyNode;
class MTime;
class MaterialManager;
namespace orv {
class BezierCurves;
class FBXAnimation;
class LightCamera;
class OrvGroup;
class orvSceneapi_oo;
} // namespace orv

/// Made after Maya has started; destroyed before the object layer.
class Maya2Vistrel {
public:
    /// The layer is not owned; the arguments are copied.
    Maya2Vistrel(orv::orvSceneapi_oo* objectLayer, const ImportArgs& args);
    Maya2Vistrel(const Maya2Vistrel&) = delete;
    Maya2Vistrel& operator=(const Maya2Vistrel&) = delete;
    ~Maya2Vistrel();

    /// Opens the file of "import_filename", writes the import module and exports the scene. Fails
    /// with the first failing step; what was written until then stays.
    MStatus openAndExport();
    /// Shows the requested frame and exports cameras, then geometry.
    MStatus exportFullScene(IDirtyChecker& dirtyChecker);
    /// Writes every camera but the default orthographic views; none when the walk fails.
    MStatus exportCameras();
    /// Extracts all geometry, walks the DAG once and writes the tree of groups.
    MStatus exportGeometry(IDirtyChecker& dirtyChecker);

private:
    using TypeCounts = std::map<std::string, std::size_t>;

    void showFrame();
    void writeModule();
    std::shared_ptr<orv::LightCamera> constructCamera(const MDagPath& path);

    /// True unless a single frame was asked for.
    bool isAnimationWanted() const;
    /// The path's matrices, world or local, over the playback range; leaves the scene at the last
    /// frame. Empty once the scene has more keys than anybody needs.
    std::shared_ptr<orv::FBXAnimation> sampleAnimation(const MDagPath& path, bool useWorldMatrix);
    static void addKeys(const MDagPath& path, bool useWorldMatrix, const MTime& begin,
                        const MTime& end, orv::FBXAnimation& track);

    void prepareManagers(IDirtyChecker& dirtyChecker);
    std::shared_ptr<orv::OrvGroup> createRoot() const;
    void writeBanner();
    MStatus walk(const std::shared_ptr<orv::OrvGroup>& root, IDirtyChecker& dirtyChecker);
    void visit(const MDagPath& path, const MFnDagNode& dagNode, unsigned int depth,
               const std::shared_ptr<orv::OrvGroup>& root, GroupStack& stack, TypeCounts& unhandled,
               IDirtyChecker& dirtyChecker);
    void visitGeometry(const MDagPath& path, GroupStack& stack, IDirtyChecker& dirtyChecker);
    void reportUnhandled(const MDagPath& path, const MFnDagNode& dagNode, unsigned int depth,
                         TypeCounts& unhandled);
    std::shared_ptr<orv::OrvGroup> buildGroup(const MDagPath& path);
    GeometryList extractGeometry(const MDagPath& path);
    GeometryList extractSurface(const MDagPath& path) const;
    std::shared_ptr<orv::BezierCurves> convertHair(const MDagPath& path) const;

    /// The walked tree by display layers, each with flat copies of its members' groups; the tree as
    /// it is when no layer but the default one has any.
    std::shared_ptr<orv::OrvGroup> splitLayers(const std::shared_ptr<orv::OrvGroup>& root) const;
    struct LayerSplit; ///< what one split looks up and counts
    /// Adds one layer's group; returns the number of members in it.
    std::size_t addLayer(const MFnDependencyNode& layer, LayerSplit& split,
                         orv::OrvGroup& newRoot) const;
    /// A copy of a path's group that bears the path's whole transform; empty where there is none.
    std::shared_ptr<orv::OrvGroup> locateGroup(const MDagPath& path, const orv::OrvGroup& root,
                                               GroupIndex& index) const;
    std::uint32_t groupType() const;

    orv::orvSceneapi_oo* m_objectLayer;
    // Destroyed in the opposite order: managers before the materials that they share, the arguments
    // last.
    ImportArgs m_args;
    std::shared_ptr<MaterialManager> m_materialManager;
    ProgressCounter m_progress;
    MeshManager m_meshManager;
    NurbsManager m_nurbsManager;
    std::size_t m_sampledKeys = 0;
    bool m_bindsObjectLayer = true;
};
