#include <maya/MDagPathArray.h>
#include <maya/MDoubleArray.h>
#include <maya/MIntArray.h>
#include <maya/MObjectArray.h>
#include <maya/MPlugArray.h>
#include <maya/MPointArray.h>
#include <maya/MStringArray.h>
#include <maya/MVectorArray.h>

#include <gtest/gtest.h>

#include <new>

namespace {

template<class Array, class T>
void checkArray(const T& first, const T& second)
{
    Array array;
    EXPECT_EQ(array.length(), 0u);
    EXPECT_TRUE(array.append(first));
    EXPECT_TRUE(array.append(second));
    EXPECT_TRUE(array.insert(second, 0));
    ASSERT_EQ(array.length(), 3u);
    EXPECT_TRUE(array[0] == second);
    EXPECT_TRUE(array[1] == first);
    EXPECT_TRUE(array.set(first, 2));
    EXPECT_TRUE(array[2] == first);
    EXPECT_TRUE(array.remove(0));
    ASSERT_EQ(array.length(), 2u);
    EXPECT_TRUE(array[0] == first);

    Array copied;
    EXPECT_TRUE(copied.copy(array));
    EXPECT_EQ(copied.length(), 2u);
    const Array constant = array;
    EXPECT_TRUE(constant[1] == first);
    EXPECT_TRUE(array.setLength(5));
    EXPECT_EQ(array.length(), 5u);
    EXPECT_TRUE(array.clear());
    EXPECT_EQ(array.length(), 0u);
    EXPECT_EQ(copied.length(), 2u);

    EXPECT_FALSE(array.set(first, 0));
    EXPECT_FALSE(array.remove(0));
    EXPECT_FALSE(array.insert(first, 1));
    array.setSizeIncrement(7);
    EXPECT_EQ(array.sizeIncrement(), 7u);
    EXPECT_EQ(Array(3, second).length(), 3u);
}

TEST(Arrays, AppendInsertSetRemoveAndCopy)
{
    checkArray<MStringArray>(MString("a"), MString("b"));
    checkArray<MDoubleArray>(1.5, 2.5);
    checkArray<MIntArray>(1, 2);
    checkArray<MPointArray>(MPoint(1, 2, 3), MPoint(4, 5, 6, 7));
    checkArray<MVectorArray>(MVector(1, 2, 3), MVector(4, 5, 6));
    checkArray<MObjectArray>(MObject(), MObject());
    checkArray<MPlugArray>(MPlug(), MPlug());
    checkArray<MDagPathArray>(MDagPath(), MDagPath());
}

TEST(Arrays, InsertTheirOwnElement)
{
    MStringArray array;
    array.append(MString("a long enough text to live on the heap"));
    array.insert(array[0], 0);
    EXPECT_EQ(array[0], array[1]);
}

TEST(Arrays, AppendPointsByTheirNumbers)
{
    MPointArray points;
    points.append(1, 2, 3);
    points.append(1, 2, 3, 0.5);
    EXPECT_EQ(points[0].w, 1);
    EXPECT_EQ(points[1].w, 0.5);
}

struct Refusing {
    Refusing() = default;
    Refusing(const Refusing&) { throw std::bad_alloc(); }
    Refusing& operator=(const Refusing&) = default;
};
class RefusingArray : public host::api::ArrayOf<Refusing, RefusingArray> {};

TEST(Arrays, ReportMemoryThatIsNotThere)
{
    RefusingArray array;
    EXPECT_EQ(array.append(Refusing()), MStatus::kInsufficientMemory);
    EXPECT_EQ(array.length(), 0u);
}

} // namespace
