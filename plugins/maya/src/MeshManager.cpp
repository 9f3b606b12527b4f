#include "plugins/maya/src/MeshManager.h"

#include "importers/maya/src/Log.h"
#include "importers/maya/src/TraceCheck.h"
#include "plugins/maya/src/HWMeshExtractor.h"
#include "plugins/maya/src/MaterialProvider.h"
#include "scene/TriangleObject.h"

#include <maya/MFnDagNode.h>
#include <maya/MFnMesh.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MItMeshPolygon.h>
#include <maya/MObjectArray.h>
#include <maya/MString.h>

#include <utility>

MeshManager::MeshManager() : m_extractor(std::make_shared<HWMeshExtractor>()) {}

MeshManager::~MeshManager()
{
    m_extractor.reset();
}

void MeshManager::setExtractor(std::shared_ptr<MeshExtractor> extractor)
{
    m_extractor = std::move(extractor);
}

void MeshManager::extractAll(IDirtyChecker& dirtyChecker)
{
    std::size_t count = 0;
    for (MItDependencyNodes nodes(MFn::kMesh); !nodes.isDone(); nodes.next()) {
        MObject node = nodes.thisNode();
        MStatus status;
        const MFnMesh mesh(node, &status);
        TRACE_REPORT(status, "extracting mesh");
        if (!status) {
            continue;
        }
        MDagPath path;
        mesh.getPath(path);
        if (!dirtyChecker.isDirty(path) || !path.isVisible()) {
            continue;
        }
        addShape(path.node(), extractGeometry(path));
        ++count;
    }
    FILE_LOG(INFO) << "Loaded " << count << " meshes";
}

GeometryList MeshManager::extractGeometry(const MDagPath& path)
{
    FILE_LOG(DEBUG3) << "extract geometry for " << path.fullPathName();
    MStatus status;
    const MFnDagNode dagNode(path, &status);
    TRACE_REPORT(status, "create dagnode");
    GeometryList result;

    MFnMesh mesh(path);
    mesh.syncObject();
    const unsigned int instance = path.isInstanced() ? path.instanceNumber() : 0;
    FILE_LOG(DEBUG2) << "MFnMesh::getConnectedSetsAndMembers:"
                     << " instanceNum:" << instance;

    MObjectArray sets;
    MObjectArray components;
    status = mesh.getConnectedSetsAndMembers(instance, sets, components, true);
    if (!status) {
        FILE_LOG(DEBUG2) << "MFnMesh::getConnectedSetsAndMembers";
    } else {
        FILE_LOG(DEBUG2) << "MFnMesh::getConnectedSetsAndMembers:"
                         << " instanceNum:" << instance << " fPolygonSets:" << sets.length()
                         << " fPolygonComponents:" << components.length();
    }
    FILE_LOG(DEBUG4) << "PolyWriter output setcount:" << sets.length();

    const std::string name = dagNode.name().asUTF8();
    for (unsigned int i = 0; i < sets.length(); ++i) {
        MStatus validity;
        const MItMeshPolygon polygons(path, components[i], &validity);
        if (!validity) {
            FILE_LOG(ERROR) << "MItMeshPolygon::MItMeshPolygon";
            continue;
        }
        result.push_back(extractPart(path, name, sets[i], components[i]));
    }
    return result;
}

std::shared_ptr<orv::LightGeometry> MeshManager::extractPart(const MDagPath& path,
                                                             const std::string& name,
                                                             const MObject& set,
                                                             const MObject& faces)
{
    auto object = std::make_shared<orv::TriangleObject>(name);
    m_extractor->extract(path, object, faces);
    if (m_materialProvider) {
        object->setMaterial(m_materialProvider->materialForSet(set, object->getName()));
    }
    if (m_objectLayer != nullptr) {
        object->define(*m_objectLayer);
        FILE_LOG(DEBUG2) << "instantiate :" << object->getName();
    }
    return object;
}
