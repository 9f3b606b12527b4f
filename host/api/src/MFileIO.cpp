#include <maya/MFileIO.h>

#include "host/api/src/toStatus.h"
#include "host/session/Session.h"

#include <cstdio>
#include <string>

using host::Diagnostic;
using host::DiagnosticKind;
using host::ErrorCode;
using host::api::toStatus;
using host::session::currentSession;

namespace {

constexpr std::size_t kMaxWarnings = 50; // of one file: nobody reads more

std::string warningText(const Diagnostic& entry)
{
    std::string text(host::diagnosticKindName(entry.kind));
    text += ": " + entry.subject;
    if (!entry.firstDetail.empty()) {
        text += " (" + entry.firstDetail + ")";
    }
    if (!entry.firstWhere.empty()) {
        text += ", " + entry.firstWhere;
    }
    return entry.count > 1 ? text + ", " + std::to_string(entry.count) + " times" : text;
}

void printWarnings(const host::Diagnostics& diagnostics)
{
    std::size_t printed = 0;
    std::size_t hidden = 0;
    for (const Diagnostic& entry : diagnostics.entries()) {
        if (entry.kind == DiagnosticKind::Texture) {
            continue;
        }
        if (printed < kMaxWarnings) {
            std::fprintf(stderr, "Warning: %s\n", warningText(entry).c_str());
            ++printed;
        } else {
            ++hidden;
        }
    }
    if (hidden > 0) {
        std::fprintf(stderr, "Warning: %zu more of other kinds\n", hidden);
    }
}

} // namespace

MStatus MFileIO::open(const MString& fileName, const char*, bool, ReferenceMode, bool)
{
    if (currentSession() == nullptr) {
        return toStatus(ErrorCode::NotFound);
    }
    const auto opened = currentSession()->open(fileName.asUTF8());
    printWarnings(currentSession()->diagnostics());
    if (!opened) {
        const host::Error& error = opened.error();
        std::fprintf(stderr, "Error: %s%s%s\n", error.message.c_str(),
                     error.where.empty() ? "" : ", ", error.where.c_str());
    }
    return toStatus(opened);
}

MString MFileIO::currentFile()
{
    return currentSession() != nullptr ? MString(currentSession()->currentFile().c_str())
                                       : MString();
}
