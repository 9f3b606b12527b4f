#include "host/support/Diagnostics.h"

#include <gtest/gtest.h>

#include <set>

namespace host {
namespace {

TEST(Diagnostics, CountsPerKindAndSubjectInOrderOfAppearance)
{
    Diagnostics diagnostics;
    diagnostics.note(DiagnosticKind::UnknownNodeType, "fancy", "fancy1", "line 3, column 1");
    diagnostics.note(DiagnosticKind::Texture, "wood.png");
    diagnostics.note(DiagnosticKind::UnknownNodeType, "fancy", "fancy2", "line 9, column 1");
    ASSERT_EQ(diagnostics.entries().size(), 2u);
    const Diagnostic& first = diagnostics.entries()[0];
    EXPECT_EQ(first.kind, DiagnosticKind::UnknownNodeType);
    EXPECT_EQ(first.subject, "fancy");
    EXPECT_EQ(first.firstDetail, "fancy1");
    EXPECT_EQ(first.firstWhere, "line 3, column 1");
    EXPECT_EQ(first.count, 2u);
    EXPECT_EQ(diagnostics.entries()[1].subject, "wood.png");
    EXPECT_EQ(diagnostics.count(DiagnosticKind::UnknownNodeType), 2u);
    EXPECT_EQ(diagnostics.count(DiagnosticKind::Limit), 0u);
}

TEST(Diagnostics, TellsEqualSubjectsOfDifferentKindsApart)
{
    Diagnostics diagnostics;
    diagnostics.note(DiagnosticKind::MissingNode, "x");
    diagnostics.note(DiagnosticKind::Limit, "x");
    EXPECT_EQ(diagnostics.entries().size(), 2u);
}

TEST(Diagnostics, HoldsABoundedNumberOfSubjects)
{
    Diagnostics diagnostics;
    for (int i = 0; i < 12000; ++i) {
        diagnostics.note(DiagnosticKind::UnknownAttribute, "a" + std::to_string(i));
    }
    EXPECT_EQ(diagnostics.entries().size(), 10000u);
    diagnostics.note(DiagnosticKind::UnknownAttribute, "a5");
    EXPECT_EQ(diagnostics.entries()[5].count, 2u) << "known ones are counted on";
}

TEST(Diagnostics, CutsLongTexts)
{
    Diagnostics diagnostics;
    const std::string text(100000, 'x');
    diagnostics.note(DiagnosticKind::BadStatement, text, text, text);
    EXPECT_EQ(diagnostics.entries()[0].subject.size(), 400u);
    EXPECT_EQ(diagnostics.entries()[0].firstDetail.size(), 400u);
    EXPECT_EQ(diagnostics.entries()[0].firstWhere.size(), 400u);
}

TEST(Diagnostics, BeginsAnewAfterClear)
{
    Diagnostics diagnostics;
    diagnostics.note(DiagnosticKind::Limit, "depth");
    diagnostics.clear();
    EXPECT_TRUE(diagnostics.entries().empty());
    EXPECT_EQ(diagnostics.count(DiagnosticKind::Limit), 0u);
    diagnostics.note(DiagnosticKind::Limit, "depth");
    EXPECT_EQ(diagnostics.entries()[0].count, 1u);
}

TEST(Diagnostics, NamesEveryKindDifferently)
{
    std::set<std::string_view> names;
    for (int kind = 0; kind <= static_cast<int>(DiagnosticKind::Limit); ++kind) {
        names.insert(diagnosticKindName(static_cast<DiagnosticKind>(kind)));
    }
    EXPECT_EQ(names.size(), static_cast<std::size_t>(DiagnosticKind::Limit) + 1);
    EXPECT_EQ(names.count("unknown"), 0u);
    EXPECT_EQ(diagnosticKindName(DiagnosticKind::UnknownNodeType), "unknown node type");
}

} // namespace
} // namespace host
