// The null sink, and the order of the virtual operations where the compiler's tables can be asked.
#include "scene/LightNode.h"
#include "sceneapi/LightFactory.h"
#include "sceneapi/NullApi.h"
#include "sceneapi/orvSceneapi_oo.h"
#include "tests/unit/sceneapi/WrittenText.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

TEST(NullApi, AnswersFalseZeroOrNothingToEveryCall)
{
    NullApi null;
    orvScene_api& api = null;
    const double matrix[16] = {};
    const orv::Blob blob;
    testing::internal::CaptureStdout();
    for (int round = 0; round < 2; ++round) {
        api.noEffect();
        EXPECT_FALSE(api.firstFeature() || api.secondFeature() || api.thirdFeature());
        EXPECT_FALSE(api.endGroup() || api.beginGroup("g", true) || api.beginObject("o", false) ||
                     api.endObject());
        EXPECT_FALSE(api.beginGeometry("g") || api.endGeometry() || api.beginAnimation("a", "t"));
        EXPECT_FALSE(api.endAnimation() || api.beginLoad("l") || api.endLoad() ||
                     api.beginOptions());
        EXPECT_FALSE(api.endOptions() || api.beginCamera(nullptr) || api.endCamera() ||
                     api.beginImage());
        EXPECT_FALSE(api.endImage() || api.beginOutput("a", "b", "c") || api.endOutput() ||
                     api.beginLight("l"));
        EXPECT_FALSE(api.endLight() || api.beginAccel("a") || api.endAccel());
        EXPECT_FALSE(api.transform(matrix) || api.setTransform(matrix) ||
                     api.scale(matrix, matrix, matrix));
        EXPECT_FALSE(api.rotate(matrix, matrix, matrix) ||
                     api.translate(nullptr, nullptr, nullptr));
        EXPECT_FALSE(api.defineMatrix("m") || api.endMatrix() || api.beginMaterial("m", true));
        EXPECT_FALSE(api.useMaterial("m") || api.endMaterial() || api.shaderReference(0, &blob));
        EXPECT_FALSE(api.shaderById(0, 1) || api.beginShader(nullptr, "t") ||
                     api.beginShaderById("t", 1));
        EXPECT_FALSE(api.endShader() || api.pushCaptureBuffer() || api.popCaptureBuffer());
        EXPECT_EQ(api.captureBuffer(), nullptr);
        EXPECT_FALSE(api.parameter("p", 6, &round) || api.namedInt("n", 1) ||
                     api.namedBlob("b", &blob));
        EXPECT_FALSE(api.beginArray("a") || api.endArray() || api.arrayElement(6, &round));
        EXPECT_EQ(api.firstCapability() + api.secondCapability() + api.thirdCapability(), 0);
        EXPECT_FALSE(api.attribute("a", "b") || api.printf("%d", 1) || api.setFlags(2) ||
                     api.version(9));
        EXPECT_FALSE(api.reservedOperation() || api.progress("p", 0.5f) || api.icon(&blob));
        EXPECT_FALSE(api.hexLine("w", matrix, 3) || api.id(1) || api.flags(1) ||
                     api.reservedQuery());
        EXPECT_FALSE(api.render() || api.printMessage("m") || api.error("e"));
    }
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

#ifdef __GXX_ABI_VERSION
/// Index in the table of virtual operations, as pointers to members hold it: 1 + offset in bytes.
template<typename Pointer>
std::ptrdiff_t tableIndex(Pointer pointer)
{
    std::ptrdiff_t words[2] = {};
    static_assert(sizeof pointer == sizeof words);
    std::memcpy(words, &pointer, sizeof words);
    return words[0] % 2 == 1 ? (words[0] - 1) / static_cast<std::ptrdiff_t>(sizeof(void*)) : -1;
}

/// A destructor takes two places in these tables, and it is slot 0.
template<typename Pointer>
std::ptrdiff_t slot(Pointer pointer)
{
    return tableIndex(pointer) - 1;
}

TEST(Slots, OfTheSceneApi)
{
    using A = orvScene_api;
    const std::ptrdiff_t slots[] = {slot(&A::noEffect),
                                    slot(&A::firstFeature),
                                    slot(&A::secondFeature),
                                    slot(&A::thirdFeature),
                                    slot(&A::beginGroup),
                                    slot(&A::endGroup),
                                    slot(&A::beginObject),
                                    slot(&A::endObject),
                                    slot(&A::beginGeometry),
                                    slot(&A::endGeometry),
                                    slot(&A::beginAnimation),
                                    slot(&A::endAnimation),
                                    slot(&A::beginLoad),
                                    slot(&A::endLoad),
                                    slot(&A::beginOptions),
                                    slot(&A::endOptions),
                                    slot(&A::beginCamera),
                                    slot(&A::endCamera),
                                    slot(&A::beginImage),
                                    slot(&A::endImage),
                                    slot(&A::beginOutput),
                                    slot(&A::endOutput),
                                    slot(&A::beginLight),
                                    slot(&A::endLight),
                                    slot(&A::beginAccel),
                                    slot(&A::endAccel),
                                    slot(&A::transform),
                                    slot(&A::setTransform),
                                    slot(&A::scale),
                                    slot(&A::rotate),
                                    slot(&A::translate),
                                    slot(&A::defineMatrix),
                                    slot(&A::endMatrix),
                                    slot(&A::beginMaterial),
                                    slot(&A::useMaterial),
                                    slot(&A::endMaterial),
                                    slot(&A::shaderReference),
                                    slot(&A::shaderById),
                                    slot(&A::beginShader),
                                    slot(&A::beginShaderById),
                                    slot(&A::endShader),
                                    slot(&A::captureBuffer),
                                    slot(&A::pushCaptureBuffer),
                                    slot(&A::popCaptureBuffer),
                                    slot(&A::parameter),
                                    slot(&A::namedInt),
                                    slot(&A::namedBlob),
                                    slot(&A::beginArray),
                                    slot(&A::endArray),
                                    slot(&A::arrayElement),
                                    slot(&A::firstCapability),
                                    slot(&A::secondCapability),
                                    slot(&A::thirdCapability),
                                    slot(&A::attribute),
                                    slot(&A::printf),
                                    slot(&A::setFlags),
                                    slot(&A::version),
                                    slot(&A::reservedOperation),
                                    slot(&A::progress),
                                    slot(&A::icon),
                                    slot(&A::hexLine),
                                    slot(&A::id),
                                    slot(&A::flags),
                                    slot(&A::reservedQuery),
                                    slot(&A::render),
                                    slot(&A::printMessage),
                                    slot(&A::error)};
    std::ptrdiff_t expected = 1;
    for (const std::ptrdiff_t found : slots) {
        EXPECT_EQ(found, expected++);
    }
    EXPECT_EQ(expected, 68); // 68 operations with the destructor
    EXPECT_EQ(slot(&orvScene_api_file::modifyCamera), 68);
}

TEST(Slots, OfTheObjectLayer)
{
    using L = orv::orvSceneapi_oo;
    using One = void (L::*)(const orv::Matrix4&);
    using Two = void (L::*)(const orv::Matrix4&, bool);
    using Bool = void (L::*)(const std::string&, bool);
    const std::ptrdiff_t slots[] = {slot(&L::attach),
                                    slot(&L::newId),
                                    slot(&L::writeNode),
                                    slot(&L::progress),
                                    slot(&L::beginGroup),
                                    slot(&L::endGroup),
                                    slot(&L::defineShader),
                                    slot(&L::endShader),
                                    slot(&L::deprecatedStringParameter),
                                    slot(&L::stringParameter),
                                    slot(&L::float3Parameter),
                                    slot(&L::double3Parameter),
                                    slot(&L::doubleParameter),
                                    slot(&L::floatParameter),
                                    slot(&L::intParameter),
                                    slot(static_cast<Bool>(&L::boolParameter)),
                                    slot(&L::matrixListParameter),
                                    slot(&L::intListParameter),
                                    slot(&L::floatListParameter),
                                    slot(&L::doubleListParameter),
                                    slot(&L::pointsParameter),
                                    slot(static_cast<One>(&L::transform)),
                                    slot(static_cast<Two>(&L::transform)),
                                    slot(&L::flags),
                                    slot(&L::sceneApi)};
    std::ptrdiff_t expected = 1;
    for (const std::ptrdiff_t found : slots) {
        EXPECT_EQ(found, expected++);
    }
    EXPECT_EQ(expected, 26);
}

TEST(Slots, OfTheFactory)
{
    using F = orv::LightFactory;
    EXPECT_EQ(slot(&F::sceneApi), 1);
    EXPECT_EQ(slot(&F::writeHeader), 2);
    EXPECT_EQ(slot(&F::close), 3);
}

struct NodeWithOneMore : orv::LightNode {
    virtual void more() {}
};

TEST(Slots, OfANodeHaveTheDestructorFourth)
{
    using N = orv::LightNode;
    EXPECT_EQ(tableIndex(&N::write), 0);
    EXPECT_EQ(tableIndex(&N::define), 1);
    EXPECT_EQ(tableIndex(&N::isDefined), 2);
    EXPECT_EQ(tableIndex(&NodeWithOneMore::more), 5); // after the two places of the destructor
}
#endif

} // namespace
