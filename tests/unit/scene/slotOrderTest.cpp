// The order of the virtual functions, read from pointers to members. In the C++ ABI of GCC and
// clang such a pointer is one more than the offset in the table, and a destructor takes two entries
// there.
#include "scene/DefaultRTModule.h"
#include "scene/LightCamera.h"
#include "scene/LightGeometry.h"
#include "scene/Material.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

#if defined(__GNUC__) && defined(__x86_64__)

namespace orv {
namespace {

template<typename Member>
std::uintptr_t slotOf(Member member)
{
    std::uintptr_t raw = 0;
    std::memcpy(&raw, &member, sizeof raw);
    return (raw - 1) / sizeof(void*);
}

TEST(SlotOrder, NodesHaveTheDestructorFourth)
{
    EXPECT_EQ(slotOf(&LightNode::write), 0U);
    EXPECT_EQ(slotOf(&LightNode::define), 1U);
    EXPECT_EQ(slotOf(&LightNode::isDefined), 2U);
    // entries 3 and 4 are the destructor's: whatever a subclass adds first comes after it
    EXPECT_EQ(slotOf(&Material::writeParameters), 5U);
    EXPECT_EQ(slotOf(&LightCamera::writeEnvironment), 5U);
    EXPECT_EQ(slotOf(&LightModule::writeOptions), 5U);
}

TEST(SlotOrder, GeometryAddsFiveOperationsInOrder)
{
    EXPECT_EQ(slotOf(&LightGeometry::write), 0U);
    EXPECT_EQ(slotOf(&LightGeometry::define), 1U);
    EXPECT_EQ(slotOf(&LightGeometry::isDefined), 2U);
    EXPECT_EQ(slotOf(&LightGeometry::memorySize), 5U);
    EXPECT_EQ(slotOf(&LightGeometry::setMaterial), 6U);
    EXPECT_EQ(slotOf(&LightGeometry::getMaterial), 7U);
    EXPECT_EQ(slotOf(&LightGeometry::setName), 8U);
    EXPECT_EQ(slotOf(&LightGeometry::getName), 9U);
}

} // namespace
} // namespace orv

#endif
