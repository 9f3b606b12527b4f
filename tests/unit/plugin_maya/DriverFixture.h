// A driver over scenes that a test writes down as text.
#pragma once

#include "plugins/maya/src/maya2vistrel.h"
#include "tests/unit/plugin_maya/SceneFixture.h"

#include <string>

class Driver : public SceneFixture {
protected:
    ImportArgs args;
    MStatus status; ///< of the last run

    /// Opens and exports a scene of these statements.
    std::string exported(const std::string& statements, const std::string& name = "scene.ma")
    {
        args.setString(IMPORT_FILENAME, write(statements, name));
        return run();
    }
    std::string run()
    {
        WrittenScene scene;
        {
            Maya2Vistrel driver(&scene.layer(), args);
            status = driver.openAndExport();
        }
        return scene.text();
    }
};

inline bool has(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

inline std::size_t count(const std::string& text, const std::string& part)
{
    std::size_t number = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++number;
    }
    return number;
}
