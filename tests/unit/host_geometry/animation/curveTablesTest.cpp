// Curves with known samples, read from the folder that ORV_CORPUS names; skipped without it.
#include "host/geometry/animation/AnimationCurve.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <numbers>

namespace {

using namespace host::geometry;
using Json = nlohmann::json;

constexpr double kTicks = 141120000; // a second

TangentVector vectorOf(const Json& key, const char* x, const char* y, double timeScale,
                       double valueScale)
{
    return {key.value(x, 0.0) * timeScale, key.value(y, 0.0) * valueScale};
}

/// Times in ticks for curves over time, values in the file's units (degrees for angles).
CurveKeys keysOf(const Json& curve)
{
    const std::string kind = curve["kind"];
    const bool isTimed = kind[0] == 'T';
    const double timeScale = isTimed ? kTicks : 1;
    const double valueScale = kind[1] == 'A' ? 180 / std::numbers::pi : 1;
    CurveKeys keys;
    keys.isWeighted = curve["weighted"];
    keys.before = infinityTypeFromNumber(curve["pre"]);
    keys.after = infinityTypeFromNumber(curve["pst"]);
    keys.gridPerUnit = isTimed ? 1 : kTicks;
    keys.levelDifference = 0.05 * valueScale;
    for (const Json& row : curve["keys"]) {
        CurveKey& key = keys.keys.emplace_back();
        key.time = isTimed ? std::round(row["time_seconds"].get<double>() * kTicks)
                           : row["input"].get<double>();
        key.value = row["value"];
        key.inType = tangentTypeFromNumber(row["in_code"]);
        key.outType = tangentTypeFromNumber(row["out_code"]);
        key.in = vectorOf(row, "in_x", "in_y", timeScale, valueScale);
        key.out = vectorOf(row, "out_x", "out_y", timeScale, valueScale);
    }
    return keys;
}

void compare(const Json& row)
{
    const AnimationCurve curve(keysOf(row));
    const bool isTimed = row["kind"].get<std::string>()[0] == 'T';
    std::size_t hint = 0;
    std::size_t position = 0;
    for (const Json& sample : row["samples"]) {
        const double time =
            isTimed ? std::round(sample[0].get<double>() * kTicks) : sample[0].get<double>();
        EXPECT_NEAR(curve.at(time, hint), sample[1].get<double>(), row["tol"].get<double>())
            << row["id"] << " sample " << position << " at " << sample[0];
        EXPECT_EQ(curve.at(time, hint), curve.at(time)) << row["id"] << " sample " << position;
        ++position;
    }
}

TEST(CurveTables, AgreeWithTheCurvesOfTheCorpus)
{
    const char* corpus = std::getenv("ORV_CORPUS");
    std::ifstream file(std::string(corpus != nullptr ? corpus : "") + "/curves/dev_curves.json");
    if (corpus == nullptr || !file) {
        GTEST_SKIP() << "ORV_CORPUS names no folder with curves: 255 curves not compared";
    }
    const Json curves = Json::parse(file);
    ASSERT_GT(curves.size(), 0U);
    for (const Json& curve : curves) {
        compare(curve);
    }
    RecordProperty("curves", static_cast<int>(curves.size()));
}

} // namespace
