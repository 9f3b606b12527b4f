// The geometry half of the driver: managers, root group, and the walk that mirrors the DAG as
// groups.
#include "plugins/maya/src/maya2vistrel.h"

#include "importers/maya/src/Log.h"
#include "importers/maya/src/TraceCheck.h"
#include "plugins/maya/src/BetaExtractor.h"
#include "plugins/maya/src/BuildStamp.h"
#include "plugins/maya/src/CleanUpListener.h"
#include "plugins/maya/src/DirtyChecker.h"
#include "plugins/maya/src/GroupStack.h"
#include "plugins/maya/src/MaterialManager.h"
#include "plugins/maya/src/mayautil.h"
#include "scene/BezierCurves.h"
#include "scene/FBXAnimation.h"
#include "scene/NurbsSurface.h"
#include "scene/OrvGroup.h"
#include "scene/TriangleObject.h"
#include "sceneapi/orvScene_api.h"
#include "sceneapi/orvSceneapi_oo.h"

#include <maya/MAnimUtil.h>
#include <maya/MFileIO.h>
#include <maya/MFnDagNode.h>
#include <maya/MGlobal.h>
#include <maya/MItDag.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>

#include <sstream>

namespace {

constexpr const char* kMayaVersion = "2018";
constexpr int kFormatMajor = 7;
constexpr int kFormatMinor = 2;
constexpr int kFormatPatch = -1;

/// The number of shapes of the scene; -1 when it cannot be asked for.
std::int32_t countShapes()
{
    MStringArray shapes;
    if (!MGlobal::executeCommand("ls -shapes", shapes, false, false)) {
        return -1;
    }
    return static_cast<std::int32_t>(shapes.length());
}

/// The text after the last '/' up to, not including, the last '.' in it.
std::string sceneName(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    const std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    return name.substr(0, name.rfind('.'));
}

bool isGeometryType(const MString& type)
{
    return type == "mesh" || type == "nurbsSurface" || type == "pfxHair";
}

bool isTransformType(const MString& type)
{
    return type == "transform" || type == "joint";
}

} // namespace

MStatus Maya2Vistrel::exportGeometry(IDirtyChecker& dirtyChecker)
{
    prepareManagers(dirtyChecker);
    std::shared_ptr<orv::OrvGroup> root = createRoot();
    writeBanner();
    const MStatus status = walk(root, dirtyChecker);
    if (!status) {
        return status;
    }
    if (m_args.getBool(SPLIT_LAYERS, false)) {
        root = splitLayers(root);
    }
    root->setAttribute("source file", MFileIO::currentFile().asUTF8());
    m_objectLayer->writeNode(*root);
    return MStatus();
}

void Maya2Vistrel::prepareManagers(IDirtyChecker& dirtyChecker)
{
    m_progress = ProgressCounter{m_objectLayer, countShapes(), 0, -1.0f};
    if (!m_materialManager) {
        m_materialManager = std::make_shared<MaterialManager>();
    }
    if (m_bindsObjectLayer) {
        m_materialManager->setObjectLayer(m_objectLayer);
    }
    m_materialManager->setUniqueMaterials(m_args.getBool(UNIQUE_MATERIALS, false));
    m_materialManager->loadMaterials();

    if (m_bindsObjectLayer) {
        m_meshManager.setObjectLayer(m_objectLayer);
    }
    m_meshManager.setMaterialProvider(m_materialManager);
    m_meshManager.setProgress(&m_progress);
    if (m_args.getString(EXPERIMENTAL, "") == "beta") {
        m_meshManager.setExtractor(std::make_shared<BetaExtractor>());
    }
    m_meshManager.extractAll(dirtyChecker);

    if (m_bindsObjectLayer) {
        m_nurbsManager.setObjectLayer(m_objectLayer);
    }
    m_nurbsManager.setTessellate(m_args.getBool(TESSELLATE, true));
    m_nurbsManager.setMaterialProvider(m_materialManager);
    m_nurbsManager.setProgress(&m_progress);
    m_nurbsManager.extractAll(dirtyChecker);
}

std::shared_ptr<orv::OrvGroup> Maya2Vistrel::createRoot() const
{
    auto root = std::make_shared<orv::OrvGroup>(sceneName(MFileIO::currentFile().asUTF8()));
    root->addFlags(groupType());
    return root;
}

void Maya2Vistrel::writeBanner()
{
    std::ostringstream text;
    text << "Export geometry. Using Maya" << kMayaVersion << ". Vistrel " << kFormatMajor << "."
         << kFormatMinor << "." << kFormatPatch << " (built " << kBuildStamp << ")";
    FILE_LOG(DEBUG) << text.str();
    m_objectLayer->sceneApi()->printMessage(text.str().c_str());
}

MStatus Maya2Vistrel::walk(const std::shared_ptr<orv::OrvGroup>& root, IDirtyChecker& dirtyChecker)
{
    MStatus status;
    MItDag walker(MItDag::kDepthFirst, MFn::kInvalid, &status);
    TRACE_CHECK(status, "MItDag constructor");
    GroupStack stack;
    TypeCounts unhandled;
    for (; !walker.isDone(); walker.next()) {
        MDagPath path;
        status = walker.getPath(path);
        TRACE_CHECK(status, "MItDag::getPath");
        const MFnDagNode dagNode(path, &status);
        TRACE_CHECK(status, "MFnDagNode constructor");
        const unsigned int depth = walker.depth();
        stack.popTo(depth);
        FILE_LOG(DEBUG3) << "Handle node@" << depth << ": " << dagNode.name() << ": "
                         << dagNode.typeName() << "  dagPath: " << path.fullPathName()
                         << " Stack:" << stack;
        visit(path, dagNode, depth, root, stack, unhandled, dirtyChecker);
    }
    return MStatus();
}

void Maya2Vistrel::visit(const MDagPath& path, const MFnDagNode& dagNode, unsigned int depth,
                         const std::shared_ptr<orv::OrvGroup>& root, GroupStack& stack,
                         TypeCounts& unhandled, IDirtyChecker& dirtyChecker)
{
    const MString type = dagNode.typeName();
    if (isGeometryType(type)) {
        if (path.isVisible()) {
            visitGeometry(path, stack, dirtyChecker);
        }
        return;
    }
    if (depth == 0 && dagNode.name() == "world") {
        stack.push(root);
        return;
    }
    if (type == "camera") {
        return;
    }
    if (!isTransformType(type)) {
        reportUnhandled(path, dagNode, depth, unhandled);
    }
    stack.push(buildGroup(path));
}

void Maya2Vistrel::visitGeometry(const MDagPath& path, GroupStack& stack,
                                 IDirtyChecker& dirtyChecker)
{
    const bool isDirty = dirtyChecker.isDirty(path);
    FILE_LOG(DEBUG2) << path.fullPathName() << " is " << (isDirty ? "dirty" : "clean");
    if (isDirty) {
        for (const std::shared_ptr<orv::LightGeometry>& geometry : extractGeometry(path)) {
            stack.addToTop(geometry);
        }
        return;
    }
    const MFnDagNode dagNode(path);
    if (dagNode.typeName() == "nurbsSurface") {
        FILE_LOG(DEBUG3) << "Adding a empty body group for NURBS" << dagNode.name();
        auto placeholder = std::make_shared<orv::OrvGroup>(dagNode.name().asUTF8());
        placeholder->setFlags(groupType());
        stack.push(placeholder);
        stack.pop();
    }
}

void Maya2Vistrel::reportUnhandled(const MDagPath& path, const MFnDagNode& dagNode,
                                   unsigned int depth, TypeCounts& unhandled)
{
    const MString type = dagNode.typeName();
    if (unhandled[type.asUTF8()]++ > 0) {
        return;
    }
    std::ostringstream text;
    text << "Maya" << kMayaVersion << ":Unhandled node(" << depth << "): " << dagNode.name() << ": "
         << type << "  dagPath: " << path.fullPathName();
    m_objectLayer->sceneApi()->printMessage(text.str().c_str());
    FILE_LOG(DEBUG) << text.str();
}

std::shared_ptr<orv::OrvGroup> Maya2Vistrel::buildGroup(const MDagPath& path)
{
    const MObject node = path.node();
    auto group = std::make_shared<orv::OrvGroup>(nodeName(node));
    group->setTransform(getMatrix(node)); // the identity for a shape
    group->setFlags(groupType());
    if (isAnimationWanted() && MAnimUtil::isAnimated(path, false)) {
        group->setAnimation(sampleAnimation(path, false));
    }
    return group;
}

GeometryList Maya2Vistrel::extractGeometry(const MDagPath& path)
{
    MStatus status;
    const MFnDagNode dagNode(path, &status);
    TRACE_REPORT(status, "MFnDagNode constructor");
    const MString type = dagNode.typeName();
    FILE_LOG(DEBUG) << "extractGeometry(" << dagNode.name() << ") type: " << type;
    FILE_LOG(DEBUG3) << path.fullPathName() << "Shall be cleaned";
    if (ICleanUpListener* const listener = cleanUpListener()) {
        listener->cleanUp(path);
    }
    if (type == "mesh") {
        return m_meshManager.getMesh(path);
    }
    if (type == "nurbsSurface") {
        return extractSurface(path);
    }
    if (type == "pfxHair") {
        return {convertHair(path)};
    }
    return {std::make_shared<orv::TriangleObject>("no exportable geometry")};
}

/// The surface itself, or only its mesh, which is missing where surfaces are not tessellated. No
/// surface is known for a path whose shape was not extracted because its first path is hidden.
GeometryList Maya2Vistrel::extractSurface(const MDagPath& path) const
{
    GeometryList surfaces = m_nurbsManager.getMesh(path);
    if (surfaces.empty() || m_args.getBool(INCLUDE_NURBS, false)) {
        return surfaces;
    }
    const auto surface = std::dynamic_pointer_cast<orv::NurbsSurface>(surfaces.front());
    return {surface ? surface->getMesh() : nullptr};
}
