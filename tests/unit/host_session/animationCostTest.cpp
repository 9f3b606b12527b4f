// What a new time makes dirty, and what asking at it computes: only the plugs that depend on it,
// and of these only the ones that are asked for. Counted by the marks that the graph keeps.
#include "tests/support/OpenScene.h"

namespace {

class AnimationCost : public test::OpenScene {
protected:
    /// Two animated transforms, the second with a still child, and a still one.
    void openScene()
    {
        std::string scene = "createNode transform -n \"a\"; createNode transform -n \"b\";"
                            "createNode transform -n \"child\" -p \"b\"; setAttr \".t\" 1 2 3;"
                            "createNode transform -n \"still\"; setAttr \".t\" 4 5 6;";
        for (const std::string name : {"a", "b"}) {
            scene += "createNode animCurveTL -n \"" + name +
                     "_x\"; setAttr -s 2 \".ktv[0:1]\" 1 0 10 9; connectAttr \"" + name +
                     "_x.o\" \"" + name + ".tx\";";
        }
        open(scene);
    }
    /// Computed values of a node that hold.
    std::size_t cleanPlugs(std::string_view name) const
    {
        std::size_t count = 0;
        for (const host::graph::Slot& slot : session.graph().node(node(name)).slots) {
            count += slot.isClean ? 1 : 0;
        }
        return count;
    }
    double worldX(std::string_view name)
    {
        const auto matrix =
            session.value(session.element(plug(name, "worldMatrix"), 0)).data<host::Matrix4>();
        return matrix != nullptr ? matrix->m[3][0] : -999;
    }
    void goTo(int frame) { session.setCurrentTime(std::int64_t{frame} * 5880000); }
};

TEST_F(AnimationCost, OfANewTimeIsWhatDependsOnIt)
{
    openScene();
    for (const char* name : {"a", "child", "still"}) {
        worldX(name);
    }
    const std::size_t still = cleanPlugs("still");
    EXPECT_GT(still, 0U);
    EXPECT_GT(cleanPlugs("a"), 0U);
    EXPECT_EQ(cleanPlugs("a_x"), 1U); // its output
    goTo(5);
    EXPECT_EQ(cleanPlugs("still"), still);
    EXPECT_EQ(cleanPlugs("a"), 0U);
    EXPECT_EQ(cleanPlugs("a_x"), 0U);
    EXPECT_EQ(cleanPlugs("child"), 1U); // its own matrix holds, its place does not
}

TEST_F(AnimationCost, OfAskingIsTheChainThatIsAskedFor)
{
    openScene();
    for (int frame = 2; frame < 8; ++frame) {
        goTo(frame);
        EXPECT_NEAR(worldX("a"), frame - 1, 1e-12);
        EXPECT_EQ(cleanPlugs("a_x"), 1U);
        EXPECT_EQ(cleanPlugs("b_x"), 0U); // nobody asked
        EXPECT_EQ(cleanPlugs("b"), 0U);
    }
    EXPECT_NEAR(worldX("child"), 6 + 1, 1e-12);
    EXPECT_EQ(cleanPlugs("b_x"), 1U);
}

TEST_F(AnimationCost, OfTheSameTimeIsNothing)
{
    openScene();
    goTo(4);
    worldX("a");
    const std::size_t before = cleanPlugs("a");
    goTo(4);
    EXPECT_EQ(cleanPlugs("a"), before);
}

} // namespace
