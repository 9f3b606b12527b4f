// Smooth-mesh preview of shapes, and the creases that they store.
#include "host/geometry/mesh/MeshData.h"
#include "tests/support/OpenScene.h"

#include <gtest/gtest.h>

namespace {

using host::Vec3f;
using host::geometry::MeshData;

class SmoothPreview : public test::OpenScene {
protected:
    /// A square of two by two faces (see `squareMesh`): nine vertices, twelve edges.
    void openSquare(const std::string& more = {})
    {
        open("createNode transform -n \"a\";\ncreateNode mesh -n \"m\" -p \"a\";\n" +
             test::squareMesh() + more);
    }
    std::size_t facesShown() { return session.shownMesh(node("m")).mesh->topology->faceCount(); }
};

TEST_F(SmoothPreview, DividesByItsLevelAndLeavesTheMeshAlone)
{
    openSquare();
    EXPECT_EQ(facesShown(), 4U);
    EXPECT_EQ(session.shownMesh(node("m")).mesh, session.mesh(node("m")));
    for (const char* style : {"1", "2", "3"}) {
        openSquare("\tsetAttr \".dsm\" " + std::string(style) + ";\n");
        EXPECT_EQ(facesShown(), 64U) << style; // two steps unless it says otherwise
        EXPECT_EQ(session.shownMesh(node("m")).divisions, 2U);
        EXPECT_EQ(session.mesh(node("m"))->topology->faceCount(), 4U);
    }
    openSquare("\tsetAttr \".dsm\" 2;\n\tsetAttr \".lev\" 1;\n");
    EXPECT_EQ(facesShown(), 16U);
    openSquare("\tsetAttr \".dsm\" 2;\n\tsetAttr \".lev\" 0;\n");
    EXPECT_EQ(facesShown(), 4U);
}

TEST_F(SmoothPreview, HasALevelOfItsOwnForRendering)
{
    openSquare("\tsetAttr \".dsm\" 2;\n\tsetAttr \".lev\" 1;\n\tsetAttr \".rsl\" 3;\n");
    EXPECT_EQ(facesShown(), 16U);
    openSquare("\tsetAttr \".dsm\" 2;\n\tsetAttr \".lev\" 1;\n\tsetAttr \".rsl\" 3;\n"
               "\tsetAttr \".uspr\" no;\n");
    EXPECT_EQ(facesShown(), 256U);
}

TEST_F(SmoothPreview, IsLimited)
{
    openSquare("\tsetAttr \".dsm\" 2;\n\tsetAttr \".lev\" 200;\n");
    EXPECT_EQ(session.shownMesh(node("m")).divisions, 8U);
    EXPECT_EQ(session.diagnostics().count(host::DiagnosticKind::Limit), 1U);
}

TEST_F(SmoothPreview, CornersAreRoundByTheRuleOfTheShape)
{
    const auto corner = [this] {
        const auto shown = session.shownMesh(node("m")).mesh;
        return (*shown->points)[0];
    };
    openSquare();
    const Vec3f stored = corner();
    const std::string preview = "\tsetAttr \".dsm\" 2;\n\tsetAttr \".lev\" 1;\n";
    openSquare(preview);
    EXPECT_EQ(corner(), stored);
    openSquare(preview + "\tsetAttr \".ugsdt\" no;\n\tsetAttr \".sdt\" 0;\n"
                         "\tsetAttr \".bnr\" 2;\n");
    EXPECT_NE(corner(), stored);
    openSquare(preview + "\tsetAttr \".ugsdt\" no;\n\tsetAttr \".sdt\" 0;\n"
                         "\tsetAttr \".bnr\" 2;\n\tsetAttr \".kb\" yes;\n");
    EXPECT_EQ(corner(), stored);
}

TEST_F(SmoothPreview, TheOtherMethodsRulesCountWhereTheOwnAreOff)
{
    const auto corner = [this] {
        const auto shown = session.shownMesh(node("m")).mesh;
        return (*shown->points)[0];
    };
    const std::string round = "\tsetAttr \".dsm\" 2;\n\tsetAttr \".lev\" 1;\n"
                              "\tsetAttr \".bnr\" 2;\n";
    openSquare(round);
    const Vec3f own = corner();
    EXPECT_EQ(own, (*session.mesh(node("m"))->points)[0]); // corners stay
    openSquare(round + "\tsetAttr \".uob\" no;\n");
    EXPECT_NE(corner(), own);
    openSquare(round + "\tsetAttr \".uob\" no;\n\tsetAttr \".kb\" yes;\n");
    EXPECT_EQ(corner(), own);
}

TEST_F(SmoothPreview, StoredCreasesComeWithTheMesh)
{
    openSquare("\tsetAttr \".cd\" -type \"dataPolyComponent\" Index_Data Edge 3\n"
               "\t\t7 2.5\n\t\t1 10\n\t\t99 3;\n"
               "\tsetAttr \".cvd\" -type \"dataPolyComponent\" Index_Data Vertex 2\n"
               "\t\t4 1.5\n\t\t3 0;\n");
    const auto creases = session.mesh(node("m"))->creases;
    ASSERT_NE(creases, nullptr);
    EXPECT_EQ(creases->edges, (std::vector<std::uint32_t>{1, 7})); // there is no edge 99
    EXPECT_EQ(creases->edgeValues, (std::vector<float>{10, 2.5F}));
    EXPECT_EQ(creases->vertices, (std::vector<std::uint32_t>{4})); // 0 is not sharp
    EXPECT_EQ(creases->vertexValues, (std::vector<float>{1.5F}));
    openSquare("\tsetAttr \".cd\" -type \"dataPolyComponent\" Index_Data Edge 0 ;\n");
    EXPECT_EQ(session.mesh(node("m"))->creases, nullptr);
}

} // namespace
