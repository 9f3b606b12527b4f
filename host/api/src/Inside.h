// The bodies' way into the handles: from handles to what the session knows, and back. A handle of a
// scene that is open no more leads nowhere.
#pragma once

#include "host/session/Session.h"

#include <maya/MDagPath.h>
#include <maya/MFn.h>
#include <maya/MFnNumericData.h>
#include <maya/MGeometryRequirements.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MRenderLine.h>
#include <maya/MRenderLineArray.h>
#include <maya/MStatus.h>
#include <maya/MTime.h>

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

struct MDagPath::Content {
    std::uint32_t generation = 0;
    host::session::DagPath path;
};

/// What a line shows of one of the host's; `world` is null for object space.
struct MRenderLine::Content {
    const host::geometry::RenderLine* line = nullptr;
    const host::Matrix4* world = nullptr;
    bool hasPoints = false, hasWidths = false, hasColors = false;
};

namespace host::api {

using session::Session;

/// Faces of a mesh.
struct Component {
    MFn::Type type = MFn::kMeshPolygonComponent;
    bool isComplete = false; ///< all from 0 to completeCount - 1, and `elements` is null
    std::uint32_t completeCount = 0;
    std::shared_ptr<const std::vector<std::uint32_t>> elements; ///< ascending; null: none

    std::size_t count() const
    {
        return isComplete ? completeCount : elements == nullptr ? 0 : elements->size();
    }
    std::uint32_t element(std::size_t position) const
    {
        return isComplete ? static_cast<std::uint32_t>(position) : (*elements)[position];
    }
    /// One past the highest face; 0 when empty.
    std::size_t end() const { return count() == 0 ? 0 : std::size_t{element(count() - 1)} + 1; }
};

/// Two or three numbers.
struct NumericRecord {
    MFnNumericData::Type type = MFnNumericData::kInvalid;
    std::size_t count = 0;
    std::array<double, 3> numbers{};
};

struct Inside {
    static MStatus withoutObject()
    {
        MStatus status(MStatus::kFailure);
        status.m_isWithoutObject = true;
        return status;
    }

    // --- objects
    static MObject node(session::NodeId id);
    static MObject attribute(session::NodeId node, AttributeIndex attribute);
    static MObject component(std::shared_ptr<Component> component);
    static MObject numbers(const NumericRecord& record);
    static MObject curve(std::shared_ptr<const geometry::CurveData> curve);

    /// The node of an object; kNoNode when it is none of the open scene.
    static session::NodeId nodeOf(const MObject& object);
    /// The node of an attribute object, and its attribute; kNoNode as above.
    static session::NodeId attributeOf(const MObject& object, AttributeIndex& attribute);
    static Component* componentOf(const MObject& object);
    static const NumericRecord* numbersOf(const MObject& object);
    static std::shared_ptr<const geometry::CurveData> curveOf(const MObject& object);

    // --- paths; null when there is no path of the open scene
    static MDagPath path(session::DagPath path);
    static const session::DagPath* pathOf(const MDagPath& path);

    // --- plugs; a null plug when there is none of the open scene
    static MPlug plug(const graph::Plug& plug);
    static graph::Plug plugOf(const MPlug& plug);

    // --- lines of Paint Effects shapes
    /// Lines that are handed out together; they keep what they point to.
    struct LineBatch {
        std::shared_ptr<const geometry::RenderLines> source;
        Matrix4 world;
        std::vector<MRenderLine::Content> lines;
    };
    static void setLines(MRenderLineArray& array, std::shared_ptr<const LineBatch> batch);
    static MRenderLine line(const std::shared_ptr<const LineBatch>& batch, std::size_t index);

    // --- times
    static MTime time(std::int64_t ticks, MTime::Unit unit);
    static std::int64_t ticksOf(const MTime& time) { return time.m_ticks; }

    static const std::vector<MHWRender::MVertexBufferDescriptor>&
    vertexRequirements(const MHWRender::MGeometryRequirements& requirements)
    {
        return requirements.m_vertexRequirements;
    }
};

} // namespace host::api

/// Null after `deleteArray`.
struct MRenderLineArray::Content {
    std::shared_ptr<const host::api::Inside::LineBatch> batch;
};

namespace host::api {

/// Whether a node can be used with function sets of that kind.
bool hasFunctionSet(const graph::Node& node, MFn::Type type);

} // namespace host::api
