// Writes the seeds of the binary reader's fuzzer: the scene of all values in the manner of several
// versions.
#include "platform/programMain.h"
#include "tests/support/binaryScenes.h"

#include <cstdio>
#include <fstream>

int programMain(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: write_binary_seeds FOLDER\n");
        return 2;
    }
    for (const test::BinaryManner& manner : {test::kMaya85, test::kMaya2011, test::kMaya2015,
                                             test::withFiller(test::kMaya2019, '~')}) {
        const std::string path =
            std::string(argv[1]) + "/maya" + std::string(manner.version) + ".mb";
        std::ofstream file(path, std::ios::binary);
        file << test::sceneOfAllValues(test::BinaryScene(manner));
        if (!file.flush()) {
            std::fprintf(stderr, "cannot write %s\n", path.c_str());
            return 1;
        }
    }
    return 0;
}
