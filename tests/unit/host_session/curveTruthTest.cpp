// Curves with known samples as statements of a scene, read, built and evaluated; the samples are in
// the folder that ORV_CORPUS names. Skipped without it.
#include "host/math/units.h"
#include "tests/support/OpenScene.h"

#include <nlohmann/json.hpp>

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <numbers>

namespace {

using Json = nlohmann::json;

constexpr double kTicks = static_cast<double>(host::kTicksPerSecond);

std::string exact(double number)
{
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
    return {text.data(), end};
}

class CurveTruth : public test::OpenScene {
protected:
    static Json curves()
    {
        const char* corpus = std::getenv("ORV_CORPUS");
        std::ifstream file(std::string(corpus != nullptr ? corpus : "") +
                           "/curves/dev_curves.json");
        return corpus != nullptr && file ? Json::parse(file) : Json();
    }

    static std::string nameOf(const Json& curve)
    {
        std::string name = curve["id"];
        std::replace(name.begin(), name.end(), '-', '_');
        return name;
    }

    /// The output in the units of the table: degrees, frames of film.
    double sample(const Json& curve, const std::string& name)
    {
        const char kind = curve["kind"].get<std::string>()[1];
        const double scale = kind == 'A' ? 180 / std::numbers::pi : kind == 'T' ? 24 / kTicks : 1;
        return number(name, "output") * scale;
    }

    void compareOverTime(const Json& curve)
    {
        for (const Json& row : curve["samples"]) {
            session.setCurrentTime(std::llround(row[0].get<double>() * kTicks));
            EXPECT_NEAR(sample(curve, nameOf(curve)), row[1].get<double>(),
                        curve["tol"].get<double>())
                << curve["id"] << " at " << row[0];
        }
    }

    /// A driven curve has no clock: it stands in the scene once per sample.
    static std::string copies(const Json& curve)
    {
        std::string text;
        for (std::size_t i = 0; i < curve["samples"].size(); ++i) {
            std::string block = curve["ma"];
            const std::string name = nameOf(curve);
            block.replace(block.find(name), name.size(), name + "_at" + std::to_string(i));
            text += block + "setAttr \".i\" " + exact(curve["samples"][i][0]) + ";\n";
        }
        return text;
    }

    void compareDriven(const Json& curve)
    {
        for (std::size_t i = 0; i < curve["samples"].size(); ++i) {
            const Json& row = curve["samples"][i];
            EXPECT_NEAR(sample(curve, nameOf(curve) + "_at" + std::to_string(i)),
                        row[1].get<double>(), curve["tol"].get<double>())
                << curve["id"] << " at " << row[0];
        }
    }
};

TEST_F(CurveTruth, HoldsForCurvesReadFromASceneFile)
{
    const Json all = curves();
    if (all.empty()) {
        GTEST_SKIP() << "ORV_CORPUS names no folder with curves: 255 curves not compared";
    }
    std::string scene = "currentUnit -l centimeter -a degree -t film;\n";
    for (const Json& curve : all) {
        const bool isTimed = curve["kind"].get<std::string>()[0] == 'T';
        scene += isTimed ? curve["ma"].get<std::string>() : copies(curve);
    }
    open(scene);
    for (const Json& curve : all) {
        const bool isTimed = curve["kind"].get<std::string>()[0] == 'T';
        isTimed ? compareOverTime(curve) : compareDriven(curve);
    }
    RecordProperty("curves", static_cast<int>(all.size()));
}

} // namespace
