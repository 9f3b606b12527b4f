#include <maya/MGlobal.h>

#include "host/api/src/Inside.h"
#include "host/api/src/toStatus.h"

#include <maya/MAnimControl.h>
#include <maya/MDoubleArray.h>
#include <maya/MIntArray.h>
#include <maya/MStringArray.h>
#include <maya/MTime.h>

#include <cstdio>

using host::Error;
using host::ErrorCode;
using host::Expected;
using host::api::answer;
using host::api::toStatus;
using host::session::currentSession;

namespace {

Expected<std::vector<std::string>> run(const MString& command)
{
    if (currentSession() == nullptr) {
        return Error{ErrorCode::NotFound, "no open scene", {}};
    }
    return currentSession()->executeCommand(command.asUTF8());
}

/// No command known here answers with numbers.
MStatus failWithNumbers(const MString& command)
{
    const auto result = run(command);
    return result ? toStatus(ErrorCode::InvalidParameter) : toStatus(result.error());
}

} // namespace

MStatus MGlobal::executeCommand(const MString& command, bool, bool)
{
    return toStatus(run(command));
}

MStatus MGlobal::executeCommand(const MString& command, int&, bool, bool)
{
    return failWithNumbers(command);
}

MStatus MGlobal::executeCommand(const MString& command, MIntArray&, bool, bool)
{
    return failWithNumbers(command);
}

MStatus MGlobal::executeCommand(const MString& command, double&, bool, bool)
{
    return failWithNumbers(command);
}

MStatus MGlobal::executeCommand(const MString& command, MDoubleArray&, bool, bool)
{
    return failWithNumbers(command);
}

MStatus MGlobal::executeCommand(const MString& command, MString& result, bool, bool)
{
    const auto texts = run(command);
    if (!texts) {
        return toStatus(texts.error());
    }
    if (texts->size() != 1) {
        return toStatus(ErrorCode::InvalidParameter);
    }
    return result.set(texts->front().c_str());
}

MStatus MGlobal::executeCommand(const MString& command, MStringArray& result, bool, bool)
{
    const auto texts = run(command);
    if (!texts) {
        return toStatus(texts.error());
    }
    result.clear();
    for (const std::string& text : *texts) {
        result.append(MString(text.c_str()));
    }
    return MStatus();
}

MStatus MGlobal::viewFrame(const MTime& time)
{
    return MAnimControl::setCurrentTime(time);
}

MStatus MGlobal::viewFrame(double time)
{
    return viewFrame(MTime(time, MTime::uiUnit()));
}

MVector MGlobal::upAxis(MStatus* ReturnStatus)
{
    if (currentSession() == nullptr) {
        return answer(ReturnStatus, toStatus(ErrorCode::NotFound), MVector::yAxis);
    }
    return answer(ReturnStatus, MStatus(),
                  currentSession()->isZUp() ? MVector::zAxis : MVector::yAxis);
}

void MGlobal::displayWarning(const MString& text)
{
    std::fprintf(stderr, "Warning: %s\n", text.asUTF8());
}

void MGlobal::displayError(const MString& text)
{
    std::fprintf(stderr, "Error: %s\n", text.asUTF8());
}

void MGlobal::displayInfo(const MString& text)
{
    std::fprintf(stderr, "%s\n", text.asUTF8());
}

int MGlobal::apiVersion()
{
    return MAYA_API_VERSION;
}
