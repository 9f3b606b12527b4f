// The layer half of the driver: regroups the walked tree by Maya's display layers.
#include "plugins/maya/src/maya2vistrel.h"

#include "importers/maya/src/Log.h"
#include "importers/maya/src/TraceCheck.h"
#include "plugins/maya/src/CopyBudget.h"
#include "plugins/maya/src/GroupIndex.h"
#include "scene/OrvGroup.h"
#include "sceneapi/orvScene_api.h"
#include "sceneapi/orvSceneapi_oo.h"

#include <maya/MFnDependencyNode.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MPlugArray.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>

#include <iostream>
#include <string_view>

namespace {

constexpr const char* kDefaultLayer = "defaultLayer";

/// Groups and geometries that all layers together may repeat. Members inside of members repeat what
/// is below them again and again: a small scene could fill any disk.
constexpr std::size_t kMaxRepeated = 10'000'000;

/// Row vectors: the child's own transform comes first.
orv::Matrix4 multiply(const orv::Matrix4& child, const orv::Matrix4& parent)
{
    orv::Matrix4 product{};
    for (std::size_t row = 0; row < 4; ++row) {
        for (std::size_t column = 0; column < 4; ++column) {
            double sum = 0;
            for (std::size_t k = 0; k < 4; ++k) {
                sum += child[row * 4 + k] * parent[k * 4 + column];
            }
            product[row * 4 + column] = sum;
        }
    }
    return product;
}

/// Paths of the nodes that a layer's plugs feed, in the order of its connections; nodes outside the
/// DAG are left out.
std::vector<MDagPath> membersOf(const MFnDependencyNode& layer)
{
    std::vector<MDagPath> members;
    MPlugArray plugs;
    layer.getConnections(plugs);
    for (unsigned int i = 0; i < plugs.length(); ++i) {
        MPlugArray fed;
        plugs[i].connectedTo(fed, false, true);
        for (unsigned int k = 0; k < fed.length(); ++k) {
            const MObject node = fed[k].node();
            MDagPath path;
            if (node.hasFn(MFn::kDagNode) && MDagPath::getAPathTo(node, path)) {
                members.push_back(path);
            }
        }
    }
    return members;
}

} // namespace

struct Maya2Vistrel::LayerSplit {
    explicit LayerSplit(const orv::OrvGroup& walkedRoot)
        : root(walkedRoot), budget(walkedRoot, kMaxRepeated)
    {
    }

    const orv::OrvGroup& root;
    CopyBudget budget;
    GroupIndex index;
};

std::shared_ptr<orv::OrvGroup>
Maya2Vistrel::splitLayers(const std::shared_ptr<orv::OrvGroup>& root) const
{
    auto newRoot = std::make_shared<orv::OrvGroup>(root->getName());
    newRoot->addFlags(groupType());
    LayerSplit split(*root);
    std::size_t located = 0;
    for (MItDependencyNodes nodes(MFn::kDisplayLayer); !nodes.isDone(); nodes.next()) {
        MStatus status;
        MObject node = nodes.thisNode(&status);
        if (!TRACE_REPORT(status, "this node")) {
            continue;
        }
        const MFnDependencyNode layer(node);
        FILE_LOG(DEBUG2) << "Layer Name: " << layer.name();
        if (layer.name() == kDefaultLayer) {
            const std::shared_ptr<orv::OrvGroup> whole = root->clone();
            whole->setName(kDefaultLayer);
            newRoot->addGroup(whole);
        } else {
            located += addLayer(layer, split, *newRoot);
        }
    }
    if (located > 0) {
        return newRoot;
    }
    std::cerr << "no layers to day" << std::endl; // spelling is kept
    m_objectLayer->sceneApi()->printMessage("There were no layers to split");
    return root;
}

std::size_t Maya2Vistrel::addLayer(const MFnDependencyNode& layer, LayerSplit& split,
                                   orv::OrvGroup& newRoot) const
{
    const std::shared_ptr<orv::OrvGroup> group = newRoot.createGroup(layer.name().asUTF8());
    FILE_LOG(DEBUG2) << "Adding the layer: " << group->getName();
    for (const MDagPath& path : membersOf(layer)) {
        const std::shared_ptr<orv::OrvGroup> member = locateGroup(path, split.root, split.index);
        if (!member) {
            FILE_LOG(WARNING) << "could not locate the group: " << path.fullPathName();
            continue;
        }
        if (!split.budget.take(*member)) {
            FILE_LOG(WARNING) << "too much in the layers, left out: " << path.fullPathName();
            continue;
        }
        FILE_LOG(DEBUG3) << "Adding objs to layer: " << path.fullPathName();
        group->addGroup(member);
    }
    return group->groupCount();
}

std::shared_ptr<orv::OrvGroup>
Maya2Vistrel::locateGroup(const MDagPath& path, const orv::OrvGroup& root, GroupIndex& index) const
{
    MStringArray names;
    path.fullPathName().split('|', names);
    const orv::OrvGroup* current = &root;
    std::shared_ptr<orv::OrvGroup> below;
    orv::Matrix4 matrix = root.getTransform();
    for (unsigned int i = 0; i < names.length(); ++i) {
        const MString component = names[i];
        const std::string_view name = component.asUTF8();
        if (name.empty()) {
            continue; // before the leading '|' stands the root
        }
        below = index.find(*current, name);
        if (!below) {
            return {};
        }
        matrix = multiply(below->getTransform(), matrix);
        current = below.get();
    }
    std::shared_ptr<orv::OrvGroup> copy = current->clone();
    copy->setTransform(matrix);
    return copy;
}
