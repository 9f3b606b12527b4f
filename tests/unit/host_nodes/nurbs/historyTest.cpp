#include "host/geometry/nurbs/primitives.h"
#include "host/nodes/nurbs/nurbsTypes.h"
#include "tests/unit/host_nodes/nurbs/splines.h"

namespace {

using host::Value;
using host::geometry::CurveData;
using host::geometry::SplineForm;
using host::geometry::SurfaceData;
using test::curveFrom;
using test::expectNear;
using test::lineValue;
using test::pointOf;
using test::squareValue;
using test::surfaceFrom;
using test::ToyContext;

Value bent()
{
    return Value::of(test::curveData(2, {0, 0, 1, 2, 2}, {0, 0, 0, 1, 2, 0, 3, 2, 0, 4, 0, 0}));
}

TEST(CurveHistory, DetachesIntoPieces)
{
    ToyContext context(host::nodes::kDetachCurve);
    context.values["inputCurve"] = bent();
    context.setElement("parameter", {0}, 0.5);
    context.setElement("parameter", {1}, 1.5);
    EXPECT_EQ(curveFrom(context.compute("outputCurve", 0)).knots,
              (std::vector<double>{0, 0, 0.5, 0.5}));
    EXPECT_EQ(curveFrom(context.compute("outputCurve", 2)).knots,
              (std::vector<double>{1.5, 1.5, 2, 2}));
    EXPECT_TRUE(context.compute("outputCurve", 3).isEmpty());
    expectNear(pointOf(curveFrom(context.compute("outputCurve", 1)), 1), {2, 2, 0});
}

TEST(CurveHistory, AttachesWhatWasDetached)
{
    ToyContext context(host::nodes::kAttachCurve);
    context.values["inputCurve1"] = lineValue({0, 0, 0}, {1, 0, 0});
    context.values["inputCurve2"] = lineValue({3, 0, 0}, {1, 0, 0});
    context.set("reverse2", 1);
    const CurveData joined = curveFrom(context.compute("outputCurve"));
    EXPECT_EQ(joined.knots, (std::vector<double>{0, 1, 2}));
    expectNear(pointOf(joined, 2), {3, 0, 0});
    EXPECT_EQ(context.timesUncomputed, 0U);
    context.set("method", 1);
    context.compute("outputCurve");
    EXPECT_EQ(context.timesUncomputed, 1U);
}

TEST(CurveHistory, StopsDoublingAtAMillionControlPoints)
{
    // A line attached to itself n times has 2^n + 1 points. Twice 2^19 + 1 are more than 2^20, so
    // that from the twentieth on the first input is passed on.
    Value curve = lineValue({0, 0, 0}, {1, 0, 0});
    for (int i = 0; i < 25; ++i) {
        ToyContext context(host::nodes::kAttachCurve);
        context.values["inputCurve1"] = curve;
        context.values["inputCurve2"] = curve;
        curve = context.compute("outputCurve");
        EXPECT_EQ(context.timesUncomputed, i < 19 ? 0U : 1U) << i;
    }
    EXPECT_EQ(curveFrom(curve).poles.size(), 524289U * 3);
}

TEST(CurveHistory, InsertsKnotsAtAndBetweenParameters)
{
    ToyContext context(host::nodes::kInsertKnotCurve);
    context.values["inputCurve"] = bent();
    context.setElement("parameter", {0}, 0.5);
    context.setElement("numberOfKnots", {0}, 2.0);
    EXPECT_EQ(curveFrom(context.compute("outputCurve")).knots,
              (std::vector<double>{0, 0, 0.5, 0.5, 1, 2, 2}));
    context.setElement("parameter", {1}, 2.0);
    context.set("insertBetween", 1);
    context.setElement("numberOfKnots", {0}, 1.0);
    EXPECT_EQ(curveFrom(context.compute("outputCurve")).knots,
              (std::vector<double>{0, 0, 1, 1.25, 2, 2}));
}

TEST(CurveHistory, ReversesCutsAndRebuilds)
{
    ToyContext reverse(host::nodes::kReverseCurve);
    reverse.values["inputCurve"] = bent();
    expectNear(pointOf(curveFrom(reverse.compute("outputCurve")), 0), {4, 0, 0});
    ToyContext part(host::nodes::kSubCurve);
    part.values["inputCurve"] = bent();
    part.set("minValue", 0.25);
    part.set("maxValue", 0.5);
    part.set("relative", 1);
    EXPECT_EQ(curveFrom(part.compute("outputCurve")).knots, (std::vector<double>{0.5, 0.5, 1, 1}));
    ToyContext rebuild(host::nodes::kRebuildCurve);
    rebuild.values["inputCurve"] = lineValue({0, 0, 0}, {8, 0, 0});
    rebuild.set("spans", 2);
    rebuild.set("keepRange", 2);
    const CurveData line = curveFrom(rebuild.compute("outputCurve"));
    EXPECT_EQ(line.knots, (std::vector<double>{0, 0, 0, 1, 2, 2, 2}));
    expectNear(pointOf(line, 1), {4, 0, 0});
}

TEST(CurveHistory, SaysThatItMakesFewerSpans)
{
    ToyContext context(host::nodes::kRebuildCurve);
    context.values["inputCurve"] = bent();
    context.set("keepControlPoints", 1); // exact
    context.set("spans", 16384);
    context.compute("outputCurve");
    EXPECT_EQ(context.timesUncomputed, 0U);
    context.set("spans", 16385);
    context.compute("outputCurve");
    EXPECT_EQ(context.timesUncomputed, 1U);
}

TEST(CurveHistory, ClosesCurves)
{
    ToyContext context(host::nodes::kCloseCurve);
    context.values["inputCurve"] =
        Value::of(test::curveData(1, {0, 1, 2}, {0, 0, 0, 3, 0, 0, 3, 4, 0}));
    const CurveData ring = curveFrom(context.compute("outputCurve"));
    expectNear(pointOf(ring, 3), {0, 0, 0});
    EXPECT_EQ(ring.form, SplineForm::Closed);
}

TEST(CurveHistory, OffsetsALineAcrossTheNormal)
{
    ToyContext context(host::nodes::kOffsetCurve);
    context.values["inputCurve"] = lineValue({0, 0, 0}, {4, 0, 0});
    context.set("distance", 3);
    // x x y = z.
    expectNear(pointOf(curveFrom(context.compute("outputCurve", 0)), 1), {4, 0, 3});
    EXPECT_TRUE(context.compute("outputCurve", 1).isEmpty());
    EXPECT_EQ(context.timesUncomputed, 1U);
}

TEST(SurfaceHistory, CountsDirectionsAsItsNodesDo)
{
    // detachSurface and insertKnotSurface: 1 is u; reverseSurface: 0 is u.
    ToyContext detach(host::nodes::kDetachSurface);
    detach.values["inputSurface"] = squareValue();
    detach.set("direction", 1);
    detach.setElement("parameter", {0}, 0.5);
    EXPECT_EQ(surfaceFrom(detach.compute("outputSurface", 1)).knotsU,
              (std::vector<double>{0.5, 2}));
    detach.set("direction", 0);
    EXPECT_EQ(surfaceFrom(detach.compute("outputSurface", 0)).knotsV,
              (std::vector<double>{0, 0.5}));
    ToyContext insert(host::nodes::kInsertKnotSurface);
    insert.values["inputSurface"] = squareValue();
    insert.setElement("parameter", {0}, 0.5);
    EXPECT_EQ(surfaceFrom(insert.compute("outputSurface")).knotsU,
              (std::vector<double>{0, 0.5, 2}));
    ToyContext reverse(host::nodes::kReverseSurface);
    reverse.values["inputSurface"] = squareValue();
    expectNear(pointOf(surfaceFrom(reverse.compute("outputSurface")), 0, 0), {2, 0, 0});
    reverse.set("direction", 1);
    expectNear(pointOf(surfaceFrom(reverse.compute("outputSurface")), 0, 0), {0, 0, 2});
    reverse.set("direction", 3);
    expectNear(pointOf(surfaceFrom(reverse.compute("outputSurface")), 2, 0), {0, 0, 2});
}

TEST(SurfaceHistory, AttachesAndRebuildsAndMovesOut)
{
    ToyContext attach(host::nodes::kAttachSurface);
    attach.values["inputSurface1"] = squareValue();
    host::geometry::PlanePrimitive next;
    next.pivot = {4, 0, 1};
    next.width = 4;
    next.lengthRatio = 0.5;
    next.axis = {0, 1, 0};
    attach.values["inputSurface2"] = Value::of(host::geometry::planeSurface(next));
    // The second square lies at x = 2..6 with v running from z = 2 to 0.
    attach.set("twist", 1);
    const SurfaceData joined = surfaceFrom(attach.compute("outputSurface"));
    expectNear(pointOf(joined, 1, 2), {1, 0, 2});
    expectNear(pointOf(joined, 3, 0), {6, 0, 0});
    ToyContext rebuild(host::nodes::kRebuildSurface);
    rebuild.values["inputSurface"] = squareValue();
    rebuild.set("keepRange", 0);
    rebuild.set("spansV", 1);
    rebuild.set("degreeV", 1);
    const SurfaceData rebuilt = surfaceFrom(rebuild.compute("outputSurface"));
    EXPECT_EQ(rebuilt.degreeU, 3);
    EXPECT_EQ(rebuilt.knotsU, (std::vector<double>{0, 0, 0, 0.25, 0.5, 0.75, 1, 1, 1}));
    EXPECT_EQ(rebuilt.knotsV, (std::vector<double>{0, 1}));
    expectNear(pointOf(rebuilt, 0.5, 1), {1, 0, 2});
    ToyContext offset(host::nodes::kOffsetSurface);
    offset.values["inputSurface"] = squareValue();
    offset.set("distance", 3);
    // u x v = x x z points down.
    expectNear(pointOf(surfaceFrom(offset.compute("outputSurface")), 1, 1), {1, -3, 1});
}

TEST(SurfaceHistory, PassesATrimOnAndSaysSo)
{
    ToyContext context(host::nodes::kTrim);
    context.values["inputSurface"] = squareValue();
    EXPECT_FALSE(context.compute("outputSurface").isEmpty());
    EXPECT_EQ(context.timesUncomputed, 1U);
}

TEST(SurfaceHistory, StopsDoublingAtAMillionControlPoints)
{
    // Two rows of two points; attached to itself n times 2^n + 1 rows. 2^18 + 1 rows are 524290
    // points, twice as many more than 2^20: so the next one passes its first input on.
    Value surface = squareValue();
    for (int i = 0; i < 30; ++i) {
        ToyContext context(host::nodes::kAttachSurface);
        context.values["inputSurface1"] = surface;
        context.values["inputSurface2"] = surface;
        surface = context.compute("outputSurface");
        EXPECT_EQ(context.timesUncomputed, i < 18 ? 0U : 1U) << i;
    }
    EXPECT_EQ(surfaceFrom(surface).poles.size(), 524290U * 3);
}

TEST(SurfaceHistory, KeepsASurfaceThatWouldGetTooManyControlPoints)
{
    // Of 2 x 2 control points: 16384 spans of degree 3 in u give 16387 x 2; as many in v would
    // make 16387 x 16387.
    ToyContext context(host::nodes::kRebuildSurface);
    context.values["inputSurface"] = squareValue();
    context.set("spansU", 16384);
    context.set("spansV", 16384);
    const SurfaceData rebuilt = surfaceFrom(context.compute("outputSurface"));
    EXPECT_EQ(rebuilt.poles.size(), 16387U * 2 * 3);
    EXPECT_GE(context.timesUncomputed, 1U);
}

TEST(SurfaceHistory, InsertsNoKnotsBeyondTheLimit)
{
    // 2 rows of 2^19 points each are the whole limit.
    SurfaceData wide;
    wide.degreeU = wide.degreeV = 1;
    wide.knotsU = {0, 1};
    for (int i = 0; i < 1 << 19; ++i) {
        wide.knotsV.push_back(i);
    }
    wide.poles.assign(std::size_t{3} << 20, 0);
    ToyContext context(host::nodes::kInsertKnotSurface);
    context.values["inputSurface"] = Value::of(std::move(wide));
    context.setElement("parameter", {0}, 0.5);
    context.set("direction", 1); // u
    EXPECT_EQ(surfaceFrom(context.compute("outputSurface")).knotsU.size(), 2U);
    EXPECT_EQ(context.timesUncomputed, 1U);
}

TEST(History, OfNothingIsNothing)
{
    for (const host::NodeCompute* row :
         {&host::nodes::kAttachCurve, &host::nodes::kDetachCurve, &host::nodes::kRebuildCurve,
          &host::nodes::kInsertKnotCurve, &host::nodes::kReverseCurve, &host::nodes::kSubCurve,
          &host::nodes::kCloseCurve, &host::nodes::kNurbsCurveToBezier,
          &host::nodes::kAttachSurface, &host::nodes::kDetachSurface, &host::nodes::kRebuildSurface,
          &host::nodes::kReverseSurface, &host::nodes::kInsertKnotSurface,
          &host::nodes::kCloseSurface, &host::nodes::kOffsetSurface}) {
        ToyContext nothing(*row);
        EXPECT_TRUE(nothing.compute(row->outputs[0]).isEmpty()) << row->type;
        ToyContext damaged(*row);
        for (const std::string_view input : row->inputs) {
            const std::string name(input);
            if (name.starts_with("inputCurve")) {
                damaged.values[name] = Value::of(CurveData());
            } else if (name.starts_with("inputSurface")) {
                damaged.values[name] = Value::of(SurfaceData());
            }
        }
        damaged.compute(row->outputs[0]); // must come back
    }
}

} // namespace
