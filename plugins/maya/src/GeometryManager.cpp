#include "plugins/maya/src/GeometryManager.h"

#include "importers/maya/src/Log.h"
#include "importers/maya/src/TraceCheck.h"
#include "plugins/maya/src/ProgressCounter.h"
#include "scene/LightGeometry.h"

#include <maya/MDagPathArray.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MString.h>

#include <utility>

GeometryManager::~GeometryManager()
{
    m_pathCache.clear();
    m_materialProvider.reset();
}

void GeometryManager::setMaterialProvider(std::shared_ptr<MaterialProvider> provider)
{
    m_materialProvider = std::move(provider);
}

void GeometryManager::addShape(const MObject& node, const GeometryList& geometry)
{
    MDagPathArray paths;
    MObject shape = node;
    const MStatus status = MDagPath::getAllPathsTo(shape, paths);
    TRACE_REPORT(status, "get all paths");
    for (unsigned int i = 0; i < paths.length(); ++i) {
        std::string name = paths[i].fullPathName().asUTF8();
        FILE_LOG(DEBUG3) << "Create map entry for:" << name;
        m_pathCache[std::move(name)] = geometry;
    }
    if (m_progress != nullptr) {
        m_progress->step(MFnDependencyNode(shape).name().asUTF8());
    }
}

GeometryList GeometryManager::getMesh(const MDagPath& path) const
{
    const std::string name = path.fullPathName().asUTF8();
    FILE_LOG(DEBUG2) << "Get mesh for " << name;
    const auto found = m_pathCache.find(name);
    return found != m_pathCache.end() ? found->second : GeometryList();
}
