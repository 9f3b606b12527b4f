#include "host/nodes/allNodeTypes.h"
#include "host/nodes/nodeTypes.h"
#include "host/types/NodeType.h"
#include "tests/support/ToyContext.h"

#include <gtest/gtest.h>

#include <set>

namespace {

using host::Value;
using namespace host::nodes;
using test::ToyContext;

TEST(UnitConversion, IsAFactor)
{
    ToyContext context(kUnitConversion);
    EXPECT_TRUE(context.compute("output").isEmpty());
    context.set("input", 3);
    EXPECT_EQ(context.compute("output").number(), 3); // factor 1 by default
    context.set("conversionFactor", 0.5);
    EXPECT_EQ(context.compute("output").number(), 1.5);
}

TEST(GroupId, IsTheNodesOwnNumber)
{
    ToyContext context(kGroupId);
    context.number_ = 41;
    EXPECT_EQ(context.compute("groupId").number(), 41);
}

TEST(FileTexture, HasItsDefaultColourWithGainAndOffset)
{
    ToyContext context(kFile);
    EXPECT_EQ(context.compute("outColorR").number(), 0.5); // a fresh one is grey
    context.set("defaultColorR", 0.25);
    context.set("colorGainR", 2);
    context.set("colorOffsetR", 0.125);
    context.set("colorOffsetB", 1);
    EXPECT_EQ(context.compute("outColorR").number(), 0.625);
    EXPECT_EQ(context.compute("outColorG").number(), 0.5);
    EXPECT_EQ(context.compute("outColorB").number(), 1.5);
    EXPECT_EQ(context.timesUncomputed, 0U);
}

TEST(ProceduralTexture, HasTheSameColourAndSaysThatItIsAStandIn)
{
    ToyContext flat(kTexture2d);
    ToyContext solid(kTexture3d);
    EXPECT_EQ(flat.compute("outColorG").number(), 0.5);
    EXPECT_EQ(solid.compute("outColorG").number(), 0.5);
    EXPECT_EQ(flat.timesUncomputed, 1U);
    EXPECT_EQ(solid.timesUncomputed, 1U);
}

TEST(AllNodeTypes, AreSortedByTheirTypes)
{
    const auto rows = allNodeTypes();
    for (std::size_t i = 1; i < rows.size(); ++i) {
        EXPECT_LE(rows[i - 1]->type, rows[i]->type);
    }
}

TEST(AllNodeTypes, DeclareAttributesThatTheirTypesHave)
{
    for (const host::NodeCompute* row : allNodeTypes()) {
        bool isMet = false;
        for (std::size_t i = 0; i < host::NodeType::count(); ++i) {
            const host::NodeType type = host::NodeType::at(i);
            if (!type.isA(row->type)) {
                continue;
            }
            isMet = true;
            for (const std::string_view name : row->outputs) {
                const bool isOfWorld = type.name() == "dagNode"; // the world is nowhere
                EXPECT_TRUE(isOfWorld || type.findAttribute(name) != host::kNoAttribute)
                    << type.name() << '.' << name;
            }
        }
        EXPECT_TRUE(isMet) << row->type;
    }
}

TEST(AllNodeTypes, ReadInputsThatTheirTypesHave)
{
    for (const std::string_view name :
         {"file", "groupParts", "joint", "mesh", "transform", "unitConversion"}) {
        const host::NodeType type = host::NodeType::find(name);
        for (const host::NodeCompute* row : allNodeTypes()) {
            for (const std::string_view input : row->inputs) {
                EXPECT_TRUE(row->type != name || type.findAttribute(input) != host::kNoAttribute)
                    << name << '.' << input;
            }
        }
    }
}

TEST(AllNodeTypes, NameNothingTwice)
{
    for (const host::NodeCompute* row : allNodeTypes()) {
        EXPECT_EQ(std::set(row->inputs.begin(), row->inputs.end()).size(), row->inputs.size())
            << row->type;
        EXPECT_EQ(std::set(row->outputs.begin(), row->outputs.end()).size(), row->outputs.size())
            << row->type;
    }
}

} // namespace
