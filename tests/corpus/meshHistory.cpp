// Tells of every mesh shape with a history what its operations got, named and gave, as JSON.
//
//   mesh_history SCENE...            one line a scene, see below
//   mesh_history --meshes SCENE...   with the meshes themselves: points, faces, texture coordinates
//
// {"scene", "computedTypes": node types that have a computation,
//  "shapes": [{"shape", "parent", "isVisible", "points", "faces", "edges", "uvs", "highestTweak",
//              "shading": [[set, [faces]]], "chain": [{"node", "type", "kind", "named", "lacking",
//              "points", "faces", "edges", "uvs"}]}],
//  "report": the session's report}
//
// A chain lists the nodes upstream of a shape that meshes flow through, nearest first. `kind` is
// that of the components a node names in the mesh that comes in ("f", "e", "vtx", "map"; "tweak":
// indices of moved points, "uv": of moved texture coordinates), `named` how many texts or indices
// there are ("f[*]" is not counted), `lacking` how many of them the mesh does not have; the counts
// are those of the mesh that comes in, all 0 where none does.
#include "host/geometry/mesh/componentList.h"
#include "host/geometry/mesh/normals.h"
#include "host/nodes/allNodeTypes.h"
#include "host/session/Session.h"
#include "platform/programMain.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdio>
#include <limits>
#include <string>
#include <unordered_set>
#include <vector>

namespace {

using nlohmann::json;
using namespace host;
using session::NodeId;
using session::Plug;
using session::Session;
using MeshPointer = std::shared_ptr<const geometry::MeshData>;

std::string typeOf(const Session& scene, NodeId id)
{
    const graph::Node& node = scene.graph().node(id);
    return node.unknownType.empty() ? std::string(node.type.name()) : node.unknownType;
}

/// The first texture coordinates that a mesh has; 0 where it has none.
std::size_t uvCount(const geometry::MeshData& mesh)
{
    for (const geometry::UvSet& set : mesh.uvSets) {
        if (set.name == mesh.currentUvSet || mesh.currentUvSet.empty()) {
            return set.points != nullptr ? set.points->size() : 0;
        }
    }
    return 0;
}

void tellCounts(json& entry, const MeshPointer& mesh)
{
    entry["points"] = mesh == nullptr ? 0 : mesh->topology->vertexCount;
    entry["faces"] = mesh == nullptr ? 0 : mesh->topology->faceCount();
    entry["edges"] = mesh == nullptr ? 0 : mesh->topology->edges.size();
    entry["uvs"] = mesh == nullptr ? 0 : uvCount(*mesh);
}

std::size_t countOf(const json& entry, const std::string& kind)
{
    const char* key = kind == geometry::kFaceComponents     ? "faces"
                      : kind == geometry::kEdgeComponents   ? "edges"
                      : kind == geometry::kVertexComponents ? "points"
                      : kind == geometry::kUvComponents     ? "uvs"
                                                            : "";
    return *key == '\0' ? std::numeric_limits<std::uint32_t>::max() : entry[key].get<std::size_t>();
}

/// Which components the texts of a list name, each against the kind that it begins with.
void tellComponents(json& entry, const ComponentList& list)
{
    std::size_t named = 0;
    std::size_t lacking = 0;
    for (const std::string& text : list.components) {
        const std::string kind = text.substr(0, text.find('['));
        if (text.find('*') != std::string::npos) {
            continue;
        }
        const std::string single[]{text};
        ++named;
        entry["kind"] = kind;
        const auto count = static_cast<std::uint32_t>(countOf(entry, kind));
        lacking += geometry::doComponentsExist(single, kind, count) ? 0U : 1U;
    }
    entry["named"] = named;
    entry["lacking"] = lacking;
}

void tellIndices(json& entry, const std::vector<std::int32_t>& indices, const char* kind,
                 std::size_t count)
{
    if (!indices.empty()) {
        entry["kind"] = kind;
        entry["named"] = indices.size();
        entry["lacking"] = std::count_if(indices.begin(), indices.end(), [&](std::int32_t index) {
            return static_cast<std::size_t>(index) >= count;
        });
    }
}

class Teller {
public:
    Teller(Session& scene, bool withMeshes) : m_scene(scene), m_withMeshes(withMeshes) {}

    json shapes()
    {
        json result = json::array();
        const graph::Graph& graph = m_scene.graph();
        for (NodeId id = 1; id < graph.nodeCount(); ++id) {
            if (graph.node(id).isAlive && graph.node(id).type.isA("mesh") &&
                m_scene.source(m_scene.findPlug(id, "inMesh"))) {
                result.push_back(shape(id));
            }
        }
        return result;
    }

private:
    json shape(NodeId id)
    {
        const auto path = m_scene.firstPathTo(id);
        const auto mesh = m_scene.mesh(id);
        json entry{{"shape", m_scene.fullPathName(path)}, {"isVisible", isSeen(id)}};
        tellCounts(entry, mesh);
        const auto tweaks = m_scene.graph().elementIndices(m_scene.findPlug(id, "pnts"));
        entry["highestTweak"] = tweaks.empty() ? -1 : tweaks.back();
        if (mesh != nullptr) {
            if (!mesh->points->empty()) {
                const Vec3f& point = mesh->points->front();
                entry["firstPoint"] = {point.x, point.y, point.z};
            }
            tellShading(entry, id);
            if (m_withMeshes) {
                tellMesh(entry, *mesh);
            }
        }
        entry["chain"] = chain(id);
        return entry;
    }

    bool isSeen(NodeId id)
    {
        const auto paths = m_scene.pathsTo(id);
        return std::any_of(paths.begin(), paths.end(),
                           [&](const auto& path) { return m_scene.isVisible(path); });
    }

    /// The plugs of a node through which meshes come in.
    std::vector<Plug> meshInputs(NodeId id)
    {
        std::vector<Plug> found;
        for (const Plug& plug : m_scene.connectedPlugs(id)) {
            const Plug source = m_scene.source(plug);
            if (source && mayGiveMesh(source)) {
                found.push_back(plug);
            }
        }
        return found;
    }

    bool mayGiveMesh(const Plug& source)
    {
        const auto kind = m_scene.graph().attribute(source.node, source.attribute).kind;
        return kind == AttributeKind::Mesh ||
               ((kind == AttributeKind::Any || kind == AttributeKind::Geometry) &&
                m_scene.value(source).data<geometry::MeshData>() != nullptr);
    }

    /// The shading groups with the faces that carry them.
    void tellShading(json& entry, NodeId id)
    {
        const auto sets = m_scene.connectedSets(id, 0, true);
        for (const session::SetMembership& set : *sets) {
            if (set.faces != nullptr) {
                entry["shading"].push_back({m_scene.graph().node(set.set).name, *set.faces});
            }
        }
    }

    json chain(NodeId shape)
    {
        json nodes = json::array();
        std::unordered_set<NodeId> known{shape};
        std::vector<NodeId> waiting{shape};
        for (std::size_t at = 0; at < waiting.size(); ++at) {
            for (const Plug& input : meshInputs(waiting[at])) {
                if (known.insert(m_scene.source(input).node).second) {
                    waiting.push_back(m_scene.source(input).node);
                }
            }
            if (at > 0) {
                nodes.push_back(operation(waiting[at]));
            }
        }
        return nodes;
    }

    json operation(NodeId id)
    {
        json entry{{"node", m_scene.graph().node(id).name}, {"type", typeOf(m_scene, id)}};
        const auto inputs = meshInputs(id);
        tellCounts(entry, inputs.empty()
                              ? nullptr
                              : m_scene.value(inputs.front()).data<geometry::MeshData>());
        if (!inputs.empty()) {
            for (const char* name : {"inputComponents", "deleteComponents"}) {
                const Plug plug = m_scene.findPlug(id, name);
                const auto list = plug ? m_scene.value(plug).data<ComponentList>() : nullptr;
                if (list != nullptr && !list->components.empty()) {
                    tellComponents(entry, *list);
                }
            }
            tellTweaks(entry, id);
        }
        return entry;
    }

    void tellTweaks(json& entry, NodeId id)
    {
        const std::string type = entry["type"];
        const auto indices = [&](const char* name) {
            const Plug plug = m_scene.findPlug(id, name);
            return plug ? m_scene.graph().elementIndices(plug) : std::vector<std::int32_t>();
        };
        if (type == "polyTweak") {
            tellIndices(entry, indices("tweak"), "tweak", entry["points"]);
        } else if (type == "polyTweakUV") {
            tellIndices(entry, indices("uvTweak"), "uv", entry["uvs"]);
        }
    }

    static void tellMesh(json& entry, const geometry::MeshData& mesh)
    {
        const geometry::MeshTopology& topology = *mesh.topology;
        json faces = json::array();
        for (std::uint32_t face = 0; face < topology.faceCount(); ++face) {
            json corners = json::array();
            for (auto at = topology.firstCorner(face); at < topology.endCorner(face); ++at) {
                corners.push_back(topology.cornerVertex(at));
            }
            faces.push_back(std::move(corners));
        }
        json& told = entry["mesh"];
        told["faces"] = std::move(faces);
        told["points"] = json::array();
        for (const Vec3f& point : *mesh.points) {
            told["points"].push_back({point.x, point.y, point.z});
        }
        if (!mesh.uvSets.empty() && mesh.uvSets.front().corners != nullptr) {
            told["uvIds"] = *mesh.uvSets.front().corners;
            for (const Vec2f& uv : *mesh.uvSets.front().points) {
                told["uvs"].push_back({uv.x, uv.y});
            }
        }
    }

    Session& m_scene;
    bool m_withMeshes;
};

json computedTypes()
{
    json types = json::array();
    for (const NodeCompute* row : nodes::allNodeTypes()) {
        types.push_back(std::string(row->type));
    }
    return types;
}

bool tell(const std::string& path, bool withMeshes)
{
    Session scene;
    const auto opened = scene.open(path);
    if (!opened) {
        std::fprintf(stderr, "%s: %s\n", path.c_str(), opened.error().message.c_str());
        return false;
    }
    json told{{"scene", path}, {"computedTypes", computedTypes()}};
    told["shapes"] = Teller(scene, withMeshes).shapes();
    told["report"] = json::parse(scene.report());
    std::printf("%s\n", told.dump(-1, ' ', false, json::error_handler_t::replace).c_str());
    return true;
}

} // namespace

int programMain(int argc, char** argv)
{
    bool withMeshes = false;
    bool isWell = argc > 1;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument == "--meshes") {
            withMeshes = true;
        } else {
            isWell &= tell(argument, withMeshes);
        }
    }
    return isWell ? 0 : 1;
}
