// Turns the shapes of one kind into scene nodes, once each, and keeps them for every DAG path of
// the shape.
#pragma once

#include "plugins/maya/src/DirtyChecker.h"

#include <maya/MDagPath.h>
#include <maya/MObject.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

class MaterialProvider;
struct ProgressCounter;
namespace orv {
class LightGeometry;
class orvSceneapi_oo;
} // namespace orv

using GeometryList = std::vector<std::shared_ptr<orv::LightGeometry>>;

/// Construct, set what is needed, extractAll once, then getMesh any number of times.
class GeometryManager {
public:
    virtual ~GeometryManager();
    /// Extracts every shape of the manager's kind that is visible and dirty, by its first path.
    virtual void extractAll(IDirtyChecker& dirtyChecker) = 0;
    /// The nodes of one path, made anew.
    virtual GeometryList extractGeometry(const MDagPath& path) = 0;

    /// Not owned. Null: nothing is written while extracting.
    void setObjectLayer(orv::orvSceneapi_oo* objectLayer) { m_objectLayer = objectLayer; }
    /// Null: nodes keep the material that they were made with.
    void setMaterialProvider(std::shared_ptr<MaterialProvider> provider);
    /// Not owned. Null: no progress is reported.
    void setProgress(ProgressCounter* progress) { m_progress = progress; }

    /// Enters the geometry under every path of a shape and counts the shape as done.
    void addShape(const MObject& node, const GeometryList& geometry);
    /// The nodes of a path; empty for a path that was not extracted.
    GeometryList getMesh(const MDagPath& path) const;

protected:
    GeometryManager() = default;
    GeometryManager(const GeometryManager&) = delete;
    GeometryManager& operator=(const GeometryManager&) = delete;

    orv::orvSceneapi_oo* m_objectLayer = nullptr;
    std::shared_ptr<MaterialProvider> m_materialProvider;

private:
    ProgressCounter* m_progress = nullptr;
    std::map<std::string, GeometryList> m_pathCache; ///< by full path name
};
