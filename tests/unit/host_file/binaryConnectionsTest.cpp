// CONN: connections and relationships. PING: instances.
#include "tests/unit/host_file/readBinaryFile.h"

#include <gtest/gtest.h>

using test::BinaryBytes;
using test::BinaryScene;
using test::kMaya2011;
using test::kMaya2019;
using test::readBinaryFile;

namespace {

std::string groups(const BinaryScene& mb, std::string_view text)
{
    const std::string lines = readBinaryFile(mb.file(text));
    return lines.substr(0, lines.rfind("end\n"));
}

std::string connections(const BinaryScene& mb, std::string_view chunks)
{
    return groups(mb, mb.connections(chunks));
}

} // namespace

TEST(BinaryConnections, InTheOrderOfTheFileWithTheirFlags)
{
    for (const test::BinaryManner& manner : {kMaya2011, kMaya2019}) {
        const BinaryScene mb(manner);
        EXPECT_EQ(connections(mb, mb.connection("z.o", "a.i") +
                                      mb.connection("|a|b.iog[0].og[1]", ":sg.dsm", 1) +
                                      mb.connection("a.o", ":lightLinker1.lnk[0].llnk", 2) +
                                      mb.connection("a.o", "b.i", 3)),
                  "connectAttr \"z.o\" \"a.i\"\n"
                  "connectAttr \"|a|b.iog[0].og[1]\" \":sg.dsm\" nextAvailable\n"
                  "connectAttr \"a.o\" \":lightLinker1.lnk[0].llnk\"\n"
                  "connectAttr \"a.o\" \"b.i\" nextAvailable\n");
    }
}

TEST(BinaryConnections, RelationshipsSayNothingHere)
{
    const BinaryScene mb(kMaya2019);
    EXPECT_EQ(connections(mb, mb.relationship("link", ":lightLinker1", {"a.msg", "b.msg"}) +
                                  mb.connection("a.o", "b.i") +
                                  mb.relationship("shadowLink", ":lightLinker1", {})),
              "connectAttr \"a.o\" \"b.i\"\n");
}

TEST(BinaryConnections, WhatCannotBeReadIsReportedAndTheRestStays)
{
    const BinaryScene mb(kMaya2011);
    EXPECT_EQ(
        connections(
            mb, mb.leaf("CWFL", "") + mb.leaf("CWFL", std::string_view("\0a.o\0b.i", 8)) +
                    mb.leaf("CWFL", BinaryBytes().u8(4).text("a.o").text("b.i").bytes()) +
                    mb.leaf("CWFL", BinaryBytes().u8(0).text("a.o").text("b.i").u16(0).bytes()) +
                    mb.connection("c.o", "d.i")),
        "damaged \"CWFL\": the chunk is too short\ndamaged \"CWFL\": a text has no end\n"
        "connectAttr \"a.o\" \"b.i\"\ndamaged \"CWFL\": unknown flags of a connection\n"
        "connectAttr \"a.o\" \"b.i\"\n"
        "damaged \"CWFL\": 2 bytes are left over\nconnectAttr \"c.o\" \"d.i\"\n");
}

TEST(BinaryConnections, CountsOfRelationshipsAreCheckedAgainstTheBytes)
{
    const BinaryScene mb(kMaya2011);
    const auto relation = [&mb](std::uint32_t count, std::string_view rest) {
        return mb.leaf("RELA", BinaryBytes().text("link").text("l").u32(count).raw(rest).bytes());
    };
    EXPECT_EQ(connections(mb, relation(0xffffffffu, std::string_view("a\0b\0", 4)) +
                                  relation(3, std::string_view("a\0bc", 4)) +
                                  relation(1, std::string_view("a\0b\0", 4))),
              "damaged \"RELA\": a count of 4294967295 exceeds the chunk\n"
              "damaged \"RELA\": a text has no end\ndamaged \"RELA\": 2 bytes are left over\n");
}

TEST(BinaryConnections, ConnectionsOutsideOfTheListAreReadAsWell)
{
    const BinaryScene mb(kMaya2019);
    EXPECT_EQ(groups(mb, mb.group("CONN", mb.connection("a.o", "b.i"))),
              "connectAttr \"a.o\" \"b.i\"\n");
}

TEST(BinaryConnections, TwoListsAreReadBoth)
{
    const BinaryScene mb(kMaya2019);
    EXPECT_EQ(groups(mb, mb.connections(mb.connection("a.o", "b.i")) +
                             mb.connections(mb.connection("c.o", "d.i"))),
              "connectAttr \"a.o\" \"b.i\"\nconnectAttr \"c.o\" \"d.i\"\n");
}

TEST(BinaryConnections, NamesAreUtf8)
{
    const BinaryScene mb(kMaya2019);
    EXPECT_EQ(connections(mb, mb.connection("w\xc3\xbcrfel.o", "w\xfcrfel.i")),
              "connectAttr \"w\xc3\xbcrfel.o\" \"w\xc3\xbcrfel.i\"\n");
}

TEST(BinaryInstances, AreFurtherParents)
{
    const BinaryScene mb(kMaya2011);
    EXPECT_EQ(groups(mb, mb.instance("|a|shape", "b") + mb.instance("|a|c", "|d|e")),
              "parent \"|a|shape\" below \"b\" added\nparent \"|a|c\" below \"|d|e\" added\n");
}

TEST(BinaryInstances, WhatCannotBeReadIsReported)
{
    const BinaryScene mb(kMaya2011);
    EXPECT_EQ(
        groups(mb, mb.group("PING",
                            mb.leaf("PRNT", "") +
                                mb.leaf("PRNT", BinaryBytes().u8(2).text("a").bytes()) +
                                mb.leaf("WHAT", "") + mb.group("PING", "") +
                                mb.leaf("PRNT", BinaryBytes().u8(2).text("a").text("b").bytes()) +
                                mb.heading("PRNT", 100) + "x")),
        "damaged \"PRNT\": the chunk is too short\ndamaged \"PRNT\": a text has no end\n"
        "unknown \"WHAT\"\nunknown \"PING\"\nparent \"a\" below \"b\" added\n"
        "damaged \"PRNT\": the chunk passes the end of its group\n");
}
