#include "plugins/maya/src/MaterialManager.h"

#include "importers/maya/src/Log.h"
#include "importers/maya/src/TraceCheck.h"
#include "plugins/maya/src/shaderConversion.h"
#include "scene/Material.h"

#include <maya/MDagPath.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnLambertShader.h>
#include <maya/MFnMesh.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MObjectArray.h>
#include <maya/MPlug.h>
#include <maya/MPlugArray.h>
#include <maya/MString.h>

namespace {

/// The name of a node; empty for the null object.
std::string nameOf(const MObject& node)
{
    return node.isNull() ? std::string() : MFnDependencyNode(node).name().asUTF8();
}

} // namespace

void MaterialManager::loadMaterials()
{
    m_shaders.clear();
    FILE_LOG(INFO) << "loading materials";
    fillShaderMap();
    FILE_LOG(INFO) << "Loaded " << m_shaders.size() << " shader nodes";
    defineMaterials();
}

void MaterialManager::fillShaderMap()
{
    MStatus status;
    MItDependencyNodes nodes(MFn::kLambert, &status);
    TRACE_REPORT(status, "shader map iterator");
    for (; !nodes.isDone(); nodes.next()) {
        const MObject node = nodes.thisNode();
        const MFnLambertShader shader(node, &status);
        TRACE_REPORT(status, "MFnLambertShader");
        const MPlug outColor(node, shader.attribute("outColor"));
        MPlugArray connected;
        outColor.connectedTo(connected, true, true, &status);
        TRACE_REPORT(status, "connected to outColor");
        for (unsigned int i = 0; i < connected.length(); ++i) {
            const std::string key = nameOf(connected[i].node());
            m_shaders[key] = node;
            FILE_LOG(DEBUG3) << key << ": " << connected[i].name() << "->" << shader.typeName();
        }
    }
}

void MaterialManager::defineMaterials()
{
    for (const auto& [group, shader] : m_shaders) {
        const std::string name = nameOf(shader);
        if (m_materials.contains(name)) {
            continue;
        }
        const std::shared_ptr<orv::Material> material = convertNodeToMaterial(shader);
        if (m_objectLayer != nullptr && !m_uniqueMaterials) {
            material->define(*m_objectLayer);
        }
        m_materials[name] = material;
        FILE_LOG(DEBUG2) << "Defined a material for: " << name;
    }
}

MObject MaterialManager::findShader(const MObject& set) const
{
    const std::string key = nameOf(set);
    FILE_LOG(DEBUG2) << "shader we are looking for " << key;
    const auto found = m_shaders.find(key);
    if (found != m_shaders.end()) {
        return found->second;
    }
    FILE_LOG(DEBUG2) << "shader was not in material map: " << key;
    return MObject::kNullObj;
}

MObject MaterialManager::findShader(const MDagPath& path) const
{
    if (path.hasFn(MFn::kMesh)) {
        return findMeshShader(path);
    }
    if (path.hasFn(MFn::kNurbsSurface)) {
        return findSurfaceShader(path);
    }
    FILE_LOG(WARNING) << "Do not know how to extract material for this type for node: "
                      << path.fullPathName();
    return MObject::kNullObj;
}

MObject MaterialManager::findMeshShader(const MDagPath& path) const
{
    MStatus status;
    const MFnMesh mesh(path, &status);
    TRACE_REPORT(status, "creating a mesh");
    MObjectArray sets;
    MObjectArray components;
    mesh.getConnectedSetsAndMembers(path.instanceNumber(), sets, components, true);
    for (unsigned int i = 0; i < sets.length(); ++i) {
        FILE_LOG(DEBUG2) << "Shading Group: " << nameOf(sets[i]) << '\n';
        const MObject shader = findShader(sets[i]);
        if (!shader.isNull()) {
            return shader;
        }
    }
    return MObject::kNullObj;
}

MObject MaterialManager::findSurfaceShader(const MDagPath& path) const
{
    MStatus status;
    const MFnDependencyNode node(path.node(), &status);
    TRACE_REPORT(status, "create node");
    // The three records carry a line end of their own: an empty line follows them in the log.
    const MObject groupsAttribute = node.attribute("instObjGroups", &status);
    if (!status) {
        FILE_LOG(WARNING) << node.name() << ": is not a renderable object, skipping\n";
        return MObject::kNullObj;
    }
    const MPlug groups(path.node(), groupsAttribute);
    MPlugArray connected;
    groups.elementByLogicalIndex(0).connectedTo(connected, false, true, &status);
    if (!status) {
        FILE_LOG(WARNING) << node.name() << ": is not in a shading group, skipping\n";
        return MObject::kNullObj;
    }
    if (connected.length() == 0) {
        FILE_LOG(WARNING) << node.name() << ": is not in connected, skipping\n";
        return MObject::kNullObj;
    }
    return findShader(connected[0].node());
}

std::shared_ptr<orv::Material> MaterialManager::materialFor(const MObject& shader,
                                                            const std::string& objectName)
{
    if (m_uniqueMaterials) {
        std::shared_ptr<orv::Material> material = convertNodeToMaterial(shader);
        material->setName(objectName + ":" + material->getName());
        return material;
    }
    const std::string key = nameOf(shader);
    FILE_LOG(DEBUG4) << "looking for a material for: " << key;
    std::shared_ptr<orv::Material>& entry = m_materials[key];
    if (!entry) {
        entry = convertNodeToMaterial(shader);
    }
    return entry;
}

std::shared_ptr<orv::Material> MaterialManager::materialForPath(const MDagPath& path)
{
    FILE_LOG(DEBUG3) << "looking for a material for " << path.fullPathName();
    const std::string objectName = nameOf(path.node());
    return materialFor(findShader(path), objectName);
}

std::shared_ptr<orv::Material> MaterialManager::materialForSet(const MObject& set,
                                                               const std::string& objectName)
{
    FILE_LOG(DEBUG3) << "The shader set node: " << nameOf(set);
    return materialFor(findShader(set), objectName);
}
