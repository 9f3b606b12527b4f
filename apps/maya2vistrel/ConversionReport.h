// What the host noted about a scene, and what the command makes of it.
#pragma once

#include <nlohmann/json.hpp>

#include <string>

/// A name for a temporary report file that no other process uses.
std::string temporaryReportPath();

/// Reads and removes the importer's report. An importer that writes none (one built against an
/// installed devkit) gives an empty object.
nlohmann::json takeImporterReport(const std::string& path);

/// "; 2 shapes approximated, 1 node of unknown type": what was approximated or dropped, by count;
/// empty when nothing was.
std::string summaryOf(const nlohmann::json& importerReport);
