#include "plugins/maya/src/NurbsManager.h"

#include "importers/maya/src/Log.h"
#include "importers/maya/src/TraceCheck.h"
#include "plugins/maya/src/HWMeshExtractor.h"
#include "plugins/maya/src/MaterialProvider.h"
#include "plugins/maya/src/surfaceConversion.h"
#include "scene/NurbsSurface.h"
#include "scene/TriangleObject.h"

#include <maya/MFnDagNode.h>
#include <maya/MFnNurbsSurface.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MString.h>

void NurbsManager::extractAll(IDirtyChecker& dirtyChecker)
{
    std::size_t count = 0;
    for (MItDependencyNodes nodes(MFn::kNurbsSurface); !nodes.isDone(); nodes.next()) {
        MObject node = nodes.thisNode();
        MStatus status;
        const MFnNurbsSurface surface(node, &status);
        TRACE_REPORT(status, "extracting nurbs");
        if (!status) {
            continue;
        }
        MDagPath path;
        surface.getPath(path);
        if (!dirtyChecker.isDirty(path) || !path.isVisible()) {
            continue;
        }
        addShape(path.node(), extractGeometry(path));
        ++count;
    }
    FILE_LOG(INFO) << "Loaded " << count << " NurbSurfaces"; // spelling is kept
}

GeometryList NurbsManager::extractGeometry(const MDagPath& path)
{
    MStatus status;
    const MFnDagNode dagNode(path, &status);
    TRACE_REPORT(status, "create dagnode");
    auto surface = std::make_shared<orv::NurbsSurface>(dagNode.name().asUTF8());
    GeometryList result{surface};

    MFnNurbsSurface maya(path, &status);
    TRACE_REPORT(status, "nurbs constructor");
    if (!status) {
        return result;
    }
    convertNurbsSurface(maya, surface);
    if (m_tessellate) {
        surface->setMesh(tessellation(path));
    }
    if (m_materialProvider) {
        surface->setMaterial(m_materialProvider->materialForPath(path));
    }
    if (m_objectLayer != nullptr) {
        surface->define(*m_objectLayer);
    }
    return result;
}

std::shared_ptr<orv::LightGeometry> NurbsManager::tessellation(const MDagPath& path) const
{
    auto mesh = std::make_shared<orv::TriangleObject>("tessellation");
    HWMeshExtractor().extract(path, mesh, MObject::kNullObj);
    if (m_materialProvider) {
        mesh->setMaterial(m_materialProvider->materialForPath(path));
    }
    return mesh;
}
