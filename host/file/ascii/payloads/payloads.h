// The payloads of setAttr by the names of their types.
#pragma once

#include "host/file/ascii/Reader.h"
#include "host/file/runningStep.h"
#include "host/support/Expected.h"
#include "host/types/PlugShape.h"

#include <span>
#include <string_view>

namespace host::file::ascii {

/// Reads one value of a payload. The error has a message only.
using ValueReader = Expected<Value> (*)(Reader& reader);

enum class PayloadForm : std::uint8_t { Numbers, Faces, Values, Opaque };

struct PayloadRow {
    std::string_view type; ///< word after -type
    AttributeKind kind;    ///< attributes of this kind have it without being told
    PayloadForm form;
    ValueReader read;      ///< of Values
    std::size_t width;     ///< of Numbers
    NumberStorage storage; ///< of Numbers, where the attribute is unknown
};

/// Sorted by type.
std::span<const PayloadRow> payloadTable();
/// The row of a type's word; null for types that only plug-ins know.
const PayloadRow* findPayload(std::string_view type);
/// The row of an attribute's kind; null when the kind does not tell the payload.
const PayloadRow* findPayload(AttributeKind kind);

/// A setAttr whose payload is to be read: the pieces are sent with `command`, whose plug's first
/// index advances.
struct PayloadTask {
    SetAttribute command;
    PlugShape shape;
    std::string_view type; ///< of -type; empty if there was none
};

// Each of these reads up to the statement's end and sends what it read.
void readNumbers(Reader& reader, PayloadTask& task);                   // numbers.cpp
void readUntypedNumbers(Reader& reader, PayloadTask& task);            // numbers.cpp
void readSparseNumbers(Reader& reader, PayloadTask& task);             // sparse.cpp
void readFaces(Reader& reader, PayloadTask& task);                     // faces.cpp
void readValues(Reader& reader, PayloadTask& task, ValueReader read);  // values.cpp
void readOpaque(Reader& reader, PayloadTask& task, std::size_t start); // values.cpp

// One value each.
Expected<Value> readString(Reader& reader);         // texts.cpp
Expected<Value> readStringArray(Reader& reader);    // texts.cpp
Expected<Value> readComponentList(Reader& reader);  // texts.cpp
Expected<Value> readAttributeAlias(Reader& reader); // texts.cpp
Expected<Value> readInt32Array(Reader& reader);     // arrays.cpp
Expected<Value> readDoubleArray(Reader& reader);    // arrays.cpp
Expected<Value> readVectorArray(Reader& reader);    // arrays.cpp
Expected<Value> readPointArray(Reader& reader);     // arrays.cpp
Expected<Value> readPolyComponent(Reader& reader);  // arrays.cpp
Expected<Value> readMatrix(Reader& reader);         // matrix.cpp
Expected<Value> readMesh(Reader& reader);           // mesh.cpp
Expected<Value> readCurve(Reader& reader);          // nurbs.cpp
Expected<Value> readSurface(Reader& reader);        // nurbs.cpp
Expected<Value> readTrimRegion(Reader& reader);     // nurbs.cpp
Expected<Value> readLattice(Reader& reader);        // lattice.cpp

} // namespace host::file::ascii
