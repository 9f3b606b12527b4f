// FRDI and FREF: files that a scene refers to.
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

} // namespace

TEST(BinaryReferences, AreListedThenLoaded)
{
    for (const test::BinaryManner& manner : {kMaya2011, kMaya2019}) {
        const BinaryScene mb(manner);
        EXPECT_EQ(groups(mb, mb.listedReference("/s/a.mb", "ns", "nsRN") +
                                 mb.reference("C:/s/b c.ma", ":", "aRN", true)),
                  "reference \"/s/a.mb\" node \"nsRN\" namespace \"ns\" listed\n"
                  "reference \"C:/s/b c.ma\" node \"aRN\" namespace \":\" deferred\n");
    }
}

TEST(BinaryReferences, WhatFollowsTheNodesNameDoesNotMatter)
{
    const BinaryScene mb(kMaya2019);
    const std::string bytes = BinaryBytes().text("a.mb").text("n").u8(1).u8(0).text("nRN");
    for (const char* rest : {"", "\1\2\3\4", "whatever stands here"}) {
        EXPECT_EQ(groups(mb, mb.group("FREF", mb.leaf("FREF", bytes + rest))),
                  "reference \"a.mb\" node \"nRN\" namespace \"n\"\n");
    }
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        const std::string lines =
            groups(mb, mb.group("FREF", mb.leaf("FREF", bytes.substr(0, size))));
        EXPECT_TRUE(lines.starts_with("damaged \"FREF\": ")) << size << lines;
        EXPECT_EQ(lines.find("reference"), std::string::npos);
    }
}

TEST(BinaryReferences, OtherChunksAreTold)
{
    const BinaryScene mb(kMaya2011);
    EXPECT_EQ(groups(mb, mb.group("FRDI", mb.leaf("WHAT", "") + mb.group("FREF", "") +
                                              mb.heading("FRDI", 99) + "abcd")),
              "unknown \"WHAT\"\nunknown \"FREF\"\n"
              "damaged \"FRDI\": the chunk passes the end of its group\n");
}
