// Every class before a session and with empty handles: failing statuses, harmless values.
#include <maya/MAnimControl.h>
#include <maya/MAnimUtil.h>
#include <maya/MDagPathArray.h>
#include <maya/MFileIO.h>
#include <maya/MFnCamera.h>
#include <maya/MFnLambertShader.h>
#include <maya/MFnMesh.h>
#include <maya/MFnNumericData.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MFnTransform.h>
#include <maya/MGeometryExtractor.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MItDag.h>
#include <maya/MItDependencyGraph.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MItMeshPolygon.h>
#include <maya/MObjectArray.h>
#include <maya/MPlugArray.h>
#include <maya/MStringArray.h>

#include <gtest/gtest.h>

namespace {

TEST(NoScene, FailsToOpenAndToAnswerCommands)
{
    EXPECT_FALSE(MFileIO::open("nothing.ma"));
    EXPECT_EQ(MFileIO::currentFile(), "");
    MStringArray result;
    result.append(MString("kept"));
    EXPECT_FALSE(MGlobal::executeCommand("ls -shapes", result));
    EXPECT_EQ(result.length(), 1u);
    EXPECT_FALSE(MGlobal::viewFrame(1.0));
    EXPECT_FALSE(MAnimControl::setCurrentTime(MTime()));
    EXPECT_EQ(MAnimControl::minTime(), MTime());
    MStatus status;
    EXPECT_EQ(MGlobal::upAxis(&status), MVector::yAxis);
    EXPECT_FALSE(status);
}

TEST(NoScene, HasNothingToWalk)
{
    MStatus status;
    MItDag walk(MItDag::kDepthFirst, MFn::kInvalid, &status);
    EXPECT_FALSE(status);
    EXPECT_TRUE(walk.isDone());
    EXPECT_FALSE(walk.next());
    EXPECT_FALSE(walk.prune());
    MDagPath path;
    EXPECT_FALSE(walk.getPath(path));
    EXPECT_EQ(walk.depth(), 0u);
    EXPECT_TRUE(walk.currentItem().isNull());
    EXPECT_EQ(walk.fullPathName(), "");

    MItDependencyNodes nodes(MFn::kInvalid, &status);
    EXPECT_FALSE(status);
    EXPECT_TRUE(nodes.isDone());
    EXPECT_FALSE(nodes.next());
    EXPECT_TRUE(nodes.thisNode().isNull());

    MPlug plug;
    MItDependencyGraph graph(plug, MFn::kFileTexture, MItDependencyGraph::kUpstream,
                             MItDependencyGraph::kBreadthFirst, MItDependencyGraph::kNodeLevel,
                             &status);
    EXPECT_EQ(status.errorString(), "(kFailure): Object does not exist");
    EXPECT_TRUE(graph.isDone());
    EXPECT_FALSE(graph.next());
    EXPECT_TRUE(graph.currentItem().isNull());
}

TEST(NoScene, AnswersNothingAboutANullPath)
{
    const MDagPath path;
    MStatus status;
    EXPECT_FALSE(path.isValid());
    EXPECT_EQ(path.fullPathName(&status), "");
    EXPECT_EQ(status.errorString(), "(kFailure): Object does not exist");
    EXPECT_FALSE(path.isVisible(&status));
    EXPECT_FALSE(status);
    EXPECT_FALSE(path.isInstanced());
    EXPECT_EQ(path.instanceNumber(), 0u);
    EXPECT_TRUE(path.node().isNull());
    EXPECT_EQ(path.inclusiveMatrix(), MMatrix::identity);
    EXPECT_FALSE(path.hasFn(MFn::kMesh));
    EXPECT_EQ(path.length(), 0u);
    EXPECT_EQ(path.childCount(), 0u);
    EXPECT_TRUE(path.child(0).isNull());
    EXPECT_EQ(path, MDagPath());
    MDagPath changed;
    EXPECT_FALSE(changed.pop());
    EXPECT_FALSE(changed.push(MObject()));
    EXPECT_FALSE(MDagPath::getAPathTo(MObject(), changed));
    MDagPathArray paths;
    EXPECT_FALSE(MDagPath::getAllPathsTo(MObject(), paths));
    EXPECT_FALSE(MAnimUtil::isAnimated(path, true, &status));
    EXPECT_FALSE(status);
    EXPECT_FALSE(MAnimUtil::isAnimated(MObject(), true, &status));
    EXPECT_FALSE(status);
}

TEST(NoScene, AnswersNothingAboutANullPlug)
{
    const MPlug plug;
    MStatus status;
    EXPECT_TRUE(plug.isNull());
    EXPECT_TRUE(plug.node(&status).isNull());
    EXPECT_FALSE(status);
    EXPECT_TRUE(plug.attribute().isNull());
    EXPECT_EQ(plug.name(), "");
    EXPECT_EQ(plug.numElements(), 0u);
    EXPECT_EQ(plug.numChildren(), 0u);
    EXPECT_TRUE(plug.child(0).isNull());
    EXPECT_TRUE(plug.elementByLogicalIndex(0, &status).isNull());
    EXPECT_FALSE(status);
    EXPECT_TRUE(plug.elementByPhysicalIndex(0).isNull());
    EXPECT_EQ(plug.logicalIndex(), 0u);
    EXPECT_FALSE(plug.isConnected());
    MPlugArray plugs;
    EXPECT_FALSE(plug.connectedTo(plugs, true, true, &status));
    EXPECT_FALSE(status);
    EXPECT_EQ(plug.asDouble(&status), 0);
    EXPECT_FALSE(status);
    EXPECT_EQ(plug.asString(), "");
    EXPECT_TRUE(plug.asMObject().isNull());
    double kept = 7;
    EXPECT_FALSE(plug.getValue(kept));
    EXPECT_EQ(kept, 7);
}

template<class FunctionSet>
void expectNothingToAttachTo()
{
    MStatus status;
    const FunctionSet set(MObject::kNullObj, &status);
    EXPECT_EQ(status.errorString(), "(kFailure): Object does not exist");
    EXPECT_TRUE(set.object(&status).isNull());
    EXPECT_FALSE(status);
}

TEST(NoScene, AttachesNoFunctionSetToANullObject)
{
    expectNothingToAttachTo<MFnDependencyNode>();
    expectNothingToAttachTo<MFnDagNode>();
    expectNothingToAttachTo<MFnTransform>();
    expectNothingToAttachTo<MFnCamera>();
    expectNothingToAttachTo<MFnMesh>();
    expectNothingToAttachTo<MFnLambertShader>();
    expectNothingToAttachTo<MFnNumericData>();
    expectNothingToAttachTo<MFnComponent>();
    expectNothingToAttachTo<MFnSingleIndexedComponent>();
    MStatus status;
    MFnMesh(MDagPath(), &status);
    EXPECT_EQ(status.errorString(), "(kFailure): Object does not exist");
}

TEST(NoScene, AsksUnattachedFunctionSetsInVain)
{
    MStatus status;
    MFnMesh mesh;
    EXPECT_FALSE(mesh.syncObject());
    EXPECT_EQ(mesh.numPolygons(&status), 0);
    EXPECT_FALSE(status);
    EXPECT_EQ(mesh.currentUVSetName(), "");
    EXPECT_EQ(mesh.name(), "");
    EXPECT_EQ(mesh.typeName(), "");
    EXPECT_EQ(mesh.fullPathName(), "");
    EXPECT_TRUE(mesh.findPlug("v", true, &status).isNull());
    EXPECT_FALSE(status);
    EXPECT_TRUE(mesh.attribute("v").isNull());
    MPlugArray plugs;
    EXPECT_FALSE(mesh.getConnections(plugs));
    MObjectArray sets;
    MObjectArray components;
    EXPECT_FALSE(mesh.getConnectedSetsAndMembers(0, sets, components, true));
    EXPECT_EQ(mesh.childCount(), 0u);
    EXPECT_TRUE(mesh.child(0).isNull());
    EXPECT_EQ(mesh.instanceCount(true), 0u);
    MDagPath path;
    EXPECT_FALSE(mesh.getPath(path));

    const MFnCamera camera;
    EXPECT_EQ(camera.nearClippingPlane(&status), 0);
    EXPECT_FALSE(status);
    EXPECT_EQ(camera.eyePoint(MSpace::kWorld, &status), MPoint::origin);
    EXPECT_FALSE(status);
    EXPECT_EQ(MFnTransform().transformation(&status).asMatrix(), MMatrix::identity);
    EXPECT_FALSE(status);

    MFnSingleIndexedComponent component;
    EXPECT_FALSE(component.setCompleteData(3));
    EXPECT_FALSE(component.addElement(3));
    EXPECT_TRUE(component.isEmpty());
}

TEST(NoScene, ExtractsNothing)
{
    MStatus status;
    const MHWRender::MGeometryExtractor extractor(MHWRender::MGeometryRequirements(), MDagPath(),
                                                  MHWRender::kPolyGeom_Normal, &status);
    EXPECT_FALSE(status);
    EXPECT_EQ(extractor.vertexCount(), 0u);
    const MHWRender::MIndexBufferDescriptor indices(MHWRender::MIndexBufferDescriptor::kTriangle,
                                                    "", MHWRender::MGeometry::kTriangles, 3);
    EXPECT_EQ(extractor.primitiveCount(indices), 0u);
    std::uint32_t index = 0;
    EXPECT_FALSE(extractor.populateIndexBuffer(&index, 0, indices));
    float number = 0;
    EXPECT_FALSE(extractor.populateVertexBuffer(
        &number, 0, {"", MHWRender::MGeometry::kPosition, MHWRender::MGeometry::kFloat, 3}));
    MItMeshPolygon(MDagPath(), MObject::kNullObj, &status);
    EXPECT_FALSE(status);
}

} // namespace
