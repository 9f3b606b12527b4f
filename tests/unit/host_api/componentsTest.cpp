#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MIntArray.h>
#include <maya/MObject.h>

#include <gtest/gtest.h>

namespace {

TEST(MFnSingleIndexedComponent, ShowsItsObjectWhatIsSetLater)
{
    MStatus status;
    MFnSingleIndexedComponent component;
    const MObject object = component.create(MFn::kMeshPolygonComponent, &status);
    ASSERT_TRUE(status);
    EXPECT_TRUE(MFnComponent(object).isEmpty());
    EXPECT_FALSE(MFnComponent(object).isComplete());
    EXPECT_TRUE(component.setCompleteData(4));
    const MFnSingleIndexedComponent seen(object, &status);
    ASSERT_TRUE(status);
    EXPECT_EQ(seen.elementCount(), 4);
    EXPECT_TRUE(seen.isComplete());
    EXPECT_EQ(seen.componentType(), MFn::kMeshPolygonComponent);
    int count = 0;
    EXPECT_TRUE(seen.getCompleteData(count));
    EXPECT_EQ(count, 4);
    EXPECT_EQ(seen.element(3), 3);
    seen.element(4, &status);
    EXPECT_FALSE(status);
}

TEST(MFnSingleIndexedComponent, KeepsElementsAscendingAndOnce)
{
    MFnSingleIndexedComponent component;
    component.create(MFn::kMeshPolygonComponent);
    MIntArray added;
    for (const int element : {5, 1, 5, 3}) {
        added.append(element);
    }
    EXPECT_TRUE(component.addElements(added));
    EXPECT_TRUE(component.addElement(2));
    MIntArray elements;
    EXPECT_TRUE(component.getElements(elements));
    ASSERT_EQ(elements.length(), 4u);
    EXPECT_EQ(elements[0], 1);
    EXPECT_EQ(elements[1], 2);
    EXPECT_EQ(elements[2], 3);
    EXPECT_EQ(elements[3], 5);
    int count = 9;
    EXPECT_FALSE(component.getCompleteData(count));
    EXPECT_EQ(count, 9);
    EXPECT_FALSE(component.addElement(-1));
    EXPECT_EQ(component.elementCount(), 4);
}

TEST(MFnSingleIndexedComponent, RefusesNegativeCountsAndOtherComponents)
{
    MStatus status;
    MFnSingleIndexedComponent component;
    component.create(MFn::kMeshPolygonComponent);
    EXPECT_FALSE(component.setCompleteData(-1));
    EXPECT_TRUE(component.setCompleteData(0));
    EXPECT_TRUE(component.isEmpty());
    EXPECT_TRUE(MFnSingleIndexedComponent().create(MFn::kMesh, &status).isNull());
    EXPECT_EQ(status, MStatus::kInvalidParameter);
}

TEST(MObject, TellsWhatAComponentIs)
{
    MFnSingleIndexedComponent component;
    const MObject object = component.create(MFn::kMeshPolygonComponent);
    EXPECT_FALSE(object.isNull());
    EXPECT_EQ(object.apiType(), MFn::kMeshPolygonComponent);
    EXPECT_STREQ(object.apiTypeStr(), "kMeshPolygonComponent");
    EXPECT_TRUE(object.hasFn(MFn::kComponent));
    EXPECT_TRUE(object.hasFn(MFn::kSingleIndexedComponent));
    EXPECT_FALSE(object.hasFn(MFn::kMesh));
    EXPECT_TRUE(object != MObject::kNullObj);
    const MObject another = component.create(MFn::kMeshPolygonComponent);
    EXPECT_FALSE(object == another);
}

TEST(MObject, IsNullAndOfNoKindByDefault)
{
    const MObject object;
    EXPECT_TRUE(object.isNull());
    EXPECT_TRUE(object == MObject::kNullObj);
    EXPECT_EQ(object.apiType(), MFn::kInvalid);
    for (const MFn::Type type : {MFn::kInvalid, MFn::kBase, MFn::kMesh, MFn::kDependencyNode}) {
        EXPECT_FALSE(object.hasFn(type));
    }
}

TEST(MFn, HasTheNumbersOf2018)
{
    EXPECT_EQ(MFn::kInvalid, 0);
    EXPECT_EQ(MFn::kCamera, 250);
    EXPECT_EQ(MFn::kNurbsCurve, 267);
    EXPECT_EQ(MFn::kNurbsSurface, 294);
    EXPECT_EQ(MFn::kMesh, 296);
    EXPECT_EQ(MFn::kLambert, 369);
    EXPECT_EQ(MFn::kFileTexture, 496);
    EXPECT_EQ(MFn::kMeshPolygonComponent, 548);
    EXPECT_EQ(MFn::kDisplayLayer, 728);
}

} // namespace
