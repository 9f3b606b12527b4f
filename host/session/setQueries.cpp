// Sets of shapes: which shading groups and other sets an instance, or some of its faces, belong to.
#include "host/session/SessionState.h"
#include "host/session/plugLookup.h"

#include "host/geometry/mesh/componentList.h"

#include <algorithm>
#include <unordered_map>

namespace host::session {
namespace {

using geometry::MeshData;
using graph::Graph;
using Faces = std::vector<std::uint32_t>;

/// One membership as it is connected.
struct Member {
    NodeId set = kNoNode;
    std::uint32_t connection = 0; ///< position in the order of making
    bool isWhole = false;
    bool isOther = false; ///< lists vertices, edges or the like and no faces
    Faces faces;
};

/// Whether a list names components, but no faces.
bool namesOthersOnly(const ComponentList& list)
{
    return !list.components.empty() &&
           std::none_of(list.components.begin(), list.components.end(),
                        [](const std::string& text) { return text.starts_with("f["); });
}

/// The attributes that hold one family of groups.
struct GroupNames {
    std::string_view instances;
    std::string_view groups;
    std::string_view components;
    std::string_view id;
};

constexpr GroupNames kGroupNames[] = {
    {"instObjGroups", "objectGroups", "objectGrpCompList", "objectGroupId"},
    {"compInstObjGroups", "compObjectGroups", "compObjectGrpCompList", "compObjectGroupId"},
};

std::uint32_t connectionTo(const Graph& graph, const Plug& destination)
{
    const graph::SlotId slot = graph.findSlot(destination);
    return slot == graph::kNoSlot ? 0 : graph.node(destination.node).slots[slot].input;
}

/// Finds the members of one instance of a shape.
class MemberSearch {
public:
    MemberSearch(Session& session, Graph& graph, NodeId shape, std::uint32_t instance,
                 bool renderableOnly)
        : m_session(session)
        , m_graph(graph)
        , m_shape(shape)
        , m_instance(static_cast<std::int32_t>(instance))
        , m_renderableOnly(renderableOnly)
    {
    }

    std::vector<Member> find();
    /// The shape's mesh, evaluated at most once; null for shapes that are no meshes.
    const std::shared_ptr<const MeshData>& mesh();

private:
    void addSets(const Plug& source, bool isWhole, const Plug& group, const GroupNames& names);
    void readFaces(const Plug& group, const GroupNames& names, Member& member);

    Session& m_session;
    Graph& m_graph;
    NodeId m_shape;
    std::int32_t m_instance;
    bool m_renderableOnly;
    std::vector<Member> m_members;
    bool m_hasAsked = false;
    std::shared_ptr<const MeshData> m_mesh;
};

const std::shared_ptr<const MeshData>& MemberSearch::mesh()
{
    if (!m_hasAsked) {
        m_hasAsked = true;
        m_mesh = m_session.mesh(m_shape);
    }
    return m_mesh;
}

std::vector<Member> MemberSearch::find()
{
    for (const GroupNames& names : kGroupNames) {
        const Plug instances = m_session.findPlug(m_shape, names.instances);
        const AttributeIndex groups = m_graph.findAttribute(m_shape, names.groups);
        if (!instances || groups == kNoAttribute) {
            continue;
        }
        const Plug instance = m_graph.element(instances, m_instance);
        if (m_graph.findSlot(instance) == graph::kNoSlot) {
            continue;
        }
        addSets(instance, true, {}, names);
        const Plug array = m_graph.child(instance, groups);
        for (const std::int32_t index : m_graph.elementIndices(array)) {
            const Plug group = m_graph.element(array, index);
            addSets(group, false, group, names);
        }
    }
    return std::move(m_members);
}

void MemberSearch::addSets(const Plug& source, bool isWhole, const Plug& group,
                           const GroupNames& names)
{
    for (const Plug& fed : m_graph.outputsOf(source)) {
        const bool isMembers =
            m_graph.node(fed.node).type.isA("objectSet") &&
            m_graph.attribute(fed.node, fed.attribute).longName == "dagSetMembers";
        if (!isMembers || (m_renderableOnly && !m_session.isShadingGroup(fed.node))) {
            continue;
        }
        Member& member = m_members.emplace_back();
        member.set = fed.node;
        member.connection = connectionTo(m_graph, fed);
        member.isWhole = isWhole;
        if (!isWhole) {
            readFaces(group, names, member);
        }
    }
}

/// The faces that the history put on the mesh under the group's number; where it put none, those
/// that the shape itself lists.
void MemberSearch::readFaces(const Plug& group, const GroupNames& names, Member& member)
{
    if (mesh() == nullptr) {
        return;
    }
    const AttributeIndex id = m_graph.findAttribute(m_shape, names.id);
    if (id != kNoAttribute) {
        const double number = m_session.number(m_graph.child(group, id), -1);
        for (const geometry::FaceGroup& candidate : mesh()->groups) {
            if (candidate.id == number && candidate.faces != nullptr) {
                member.faces = *candidate.faces;
                return;
            }
        }
    }
    const AttributeIndex components = m_graph.findAttribute(m_shape, names.components);
    if (components == kNoAttribute) {
        return;
    }
    const auto list = m_session.value(m_graph.child(group, components)).data<ComponentList>();
    if (list != nullptr) {
        member.faces = geometry::parseFaceList(list->components, mesh()->topology->faceCount());
        member.isOther = namesOthersOnly(*list);
    }
}

/// One entry per set, in order of first appearance; the whole object and some of its faces are the
/// whole object.
std::vector<Member> merged(std::vector<Member> members)
{
    std::vector<Member> result;
    std::unordered_map<NodeId, std::size_t> positions;
    for (Member& member : members) {
        const auto [position, isNew] = positions.try_emplace(member.set, result.size());
        if (isNew) {
            result.push_back(std::move(member));
            continue;
        }
        Member& known = result[position->second];
        known.connection = std::max(known.connection, member.connection);
        known.isOther &= member.isOther;
        if (known.isWhole || member.isWhole) {
            known.isWhole = true;
            known.faces.clear();
            continue;
        }
        Faces both;
        std::set_union(known.faces.begin(), known.faces.end(), member.faces.begin(),
                       member.faces.end(), std::back_inserter(both));
        known.faces = std::move(both);
    }
    return result;
}

/// Shading groups share no face: one that is in several stays in the one connected last. Entries
/// without any common face are left as they are.
void separate(std::vector<Member>& members, std::uint32_t faceCount, const Session& session)
{
    std::vector<Member*> groups;
    bool hasFaces = false;
    for (Member& member : members) {
        if (session.isShadingGroup(member.set)) {
            groups.push_back(&member);
            hasFaces |= member.isWhole || !member.faces.empty();
        }
    }
    if (groups.size() < 2 || !hasFaces) {
        return;
    }
    std::sort(groups.begin(), groups.end(),
              [](const Member* a, const Member* b) { return a->connection > b->connection; });
    std::vector<bool> isTaken(faceCount, false);
    bool isAnyTaken = false;
    for (Member* member : groups) {
        if (member->isWhole && isAnyTaken) {
            member->isWhole = false;
            for (std::uint32_t face = 0; face < faceCount; ++face) {
                member->faces.push_back(face);
            }
        }
        const auto isLost = [&](std::uint32_t face) { return isTaken[face]; };
        member->faces.erase(std::remove_if(member->faces.begin(), member->faces.end(), isLost),
                            member->faces.end());
        if (member->isWhole) {
            isTaken.assign(faceCount, true);
        }
        for (const std::uint32_t face : member->faces) {
            isTaken[face] = true;
        }
        isAnyTaken |= member->isWhole || !member->faces.empty();
    }
}

} // namespace

bool Session::isShadingGroup(NodeId set) const
{
    return set < m_graph->nodeCount() && m_graph->node(set).type.isA("shadingEngine");
}

Expected<std::vector<SetMembership>> Session::connectedSets(NodeId shape, std::uint32_t instance,
                                                            bool renderableOnly)
{
    if (shape >= m_graph->nodeCount() || instance >= m_evaluation->instances.pathCount(shape)) {
        return Error{ErrorCode::InvalidParameter, "no such instance", {}};
    }
    MemberSearch search(*this, *m_graph, shape, instance, renderableOnly);
    std::vector<Member> members = merged(search.find());
    if (members.size() > 1 && search.mesh() != nullptr) {
        separate(members, search.mesh()->topology->faceCount(), *this);
    }
    std::vector<SetMembership> memberships;
    for (Member& member : members) {
        SetMembership membership{member.set, nullptr, member.isOther && !member.isWhole};
        if (!member.isWhole) {
            membership.faces = std::make_shared<const Faces>(std::move(member.faces));
        }
        memberships.push_back(std::move(membership));
    }
    return memberships;
}

} // namespace host::session
