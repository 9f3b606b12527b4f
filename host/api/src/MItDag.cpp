#include <maya/MItDag.h>

#include "host/api/src/Inside.h"
#include "host/api/src/toStatus.h"

#include <maya/MDagPathArray.h>

#include <algorithm>
#include <limits>
#include <vector>

using host::ErrorCode;
using host::api::answer;
using host::api::Inside;
using host::api::toStatus;
using host::session::currentSession;
using host::session::DagPath;
using host::session::NodeId;

/// The state of a walk. Depth first it keeps the nodes from the root to the current one, breadth
/// first every node met so far with the place of its parent: no recursion, whatever the depth.
struct MItDag::Walk {
    struct Place {
        NodeId node = 0;
        std::size_t nextChild = 0; // depth first
        std::size_t parent = 0;    // breadth first
        unsigned int depth = 0;
    };
    static constexpr std::size_t kNoMore = std::numeric_limits<std::size_t>::max();

    std::uint32_t generation = 0;
    TraversalType type = kDepthFirst;
    MFn::Type filter = MFn::kInvalid;
    DagPath root;
    std::vector<Place> places;
    std::size_t current = 0; // breadth first
    bool isPruned = false;   // breadth first

    bool isOfOpenScene() const
    {
        const host::session::Session* session = currentSession();
        return session != nullptr && session->generation() == generation;
    }
    bool isDone() const { return !isOfOpenScene() || current >= places.size(); }
    const Place& place() const { return type == kBreadthFirst ? places[current] : places.back(); }

    void begin()
    {
        places.assign(1, Place{root.end(), 0, 0, 0});
        current = 0;
        isPruned = false;
        skipUnwanted();
    }
    void next()
    {
        step();
        skipUnwanted();
    }
    void prune()
    {
        isPruned = true;
        places.back().nextChild = type == kDepthFirst ? kNoMore : places.back().nextChild;
    }
    DagPath path() const;

private:
    void step() { type == kBreadthFirst ? stepAcross() : stepDown(); }
    void stepDown();
    void stepAcross();
    void skipUnwanted()
    {
        while (!isDone() && filter != MFn::kInvalid && !Inside::node(place().node).hasFn(filter)) {
            step();
        }
    }
};

void MItDag::Walk::stepDown()
{
    const host::graph::Graph& graph = currentSession()->graph();
    while (!places.empty()) {
        Place& last = places.back();
        const std::vector<NodeId>& children = graph.node(last.node).children;
        if (last.nextChild >= children.size()) {
            places.pop_back();
            continue;
        }
        const Place child{children[last.nextChild], 0, 0, last.depth + 1};
        ++last.nextChild;
        places.push_back(child);
        return;
    }
}

void MItDag::Walk::stepAcross()
{
    const Place from = places[current];
    if (!isPruned) {
        for (const NodeId child : currentSession()->graph().node(from.node).children) {
            places.push_back({child, 0, current, from.depth + 1});
        }
    }
    isPruned = false;
    ++current;
}

DagPath MItDag::Walk::path() const
{
    DagPath whole = root;
    if (type != kBreadthFirst) {
        for (std::size_t i = 1; i < places.size(); ++i) {
            whole.nodes.push_back(places[i].node);
        }
        return whole;
    }
    for (std::size_t at = current; at != 0; at = places[at].parent) {
        whole.nodes.push_back(places[at].node);
    }
    std::reverse(whole.nodes.begin() + static_cast<std::ptrdiff_t>(root.nodes.size()),
                 whole.nodes.end());
    return whole;
}

MItDag::MItDag(TraversalType type, MFn::Type filter, MStatus* ReturnStatus)
    : m_walk(std::make_unique<Walk>())
{
    answer(ReturnStatus, reset(Inside::path({}), type, filter));
}

MItDag::~MItDag() = default;

MStatus MItDag::reset()
{
    return reset(Inside::path({}), m_walk->type, m_walk->filter);
}

MStatus MItDag::reset(const MDagPath& root, TraversalType type, MFn::Type filter)
{
    *m_walk = Walk();
    const DagPath* path = Inside::pathOf(root);
    if (path == nullptr) {
        return toStatus(ErrorCode::NotFound);
    }
    if (type != kDepthFirst && type != kBreadthFirst) {
        return toStatus(ErrorCode::InvalidParameter);
    }
    m_walk->generation = currentSession()->generation();
    m_walk->type = type;
    m_walk->filter = filter;
    m_walk->root = *path;
    m_walk->begin();
    return MStatus();
}

bool MItDag::isDone(MStatus* ReturnStatus) const
{
    return answer(ReturnStatus, MStatus(), m_walk->isDone());
}

MStatus MItDag::next()
{
    if (m_walk->isDone()) {
        return toStatus(ErrorCode::NotFound);
    }
    m_walk->next();
    return MStatus();
}

MStatus MItDag::prune()
{
    if (m_walk->isDone()) {
        return toStatus(ErrorCode::NotFound);
    }
    m_walk->prune();
    return MStatus();
}

MStatus MItDag::getPath(MDagPath& path) const
{
    if (m_walk->isDone()) {
        return toStatus(ErrorCode::NotFound);
    }
    path = Inside::path(m_walk->path());
    return MStatus();
}

MStatus MItDag::getAllPaths(MDagPathArray& paths) const
{
    return MDagPath::getAllPathsTo(currentItem(), paths);
}

MString MItDag::fullPathName(MStatus* ReturnStatus) const
{
    MDagPath path;
    answer(ReturnStatus, getPath(path));
    return path.isValid() ? path.fullPathName() : MString();
}

unsigned int MItDag::depth(MStatus* ReturnStatus) const
{
    if (m_walk->isDone()) {
        return answer(ReturnStatus, toStatus(ErrorCode::NotFound), 0u);
    }
    return answer(ReturnStatus, MStatus(), m_walk->place().depth);
}

MObject MItDag::currentItem(MStatus* ReturnStatus) const
{
    if (m_walk->isDone()) {
        return answer(ReturnStatus, toStatus(ErrorCode::NotFound), MObject());
    }
    return answer(ReturnStatus, MStatus(), Inside::node(m_walk->place().node));
}

MStatus MItDag::traverseUnderWorld(bool wanted)
{
    return wanted ? toStatus(ErrorCode::InvalidParameter) : MStatus();
}
