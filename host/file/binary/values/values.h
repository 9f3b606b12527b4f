// The values of attributes by the tags of their chunks.
#pragma once

#include "host/file/binary/Reader.h"
#include "host/file/runningStep.h"
#include "host/types/PlugShape.h"

#include <span>
#include <string_view>

namespace host::file::binary {

/// A value chunk whose heading was read: what follows is sent with `command`, whose plug's first
/// index advances.
struct ValueTask {
    Tag tag;
    SetAttribute command;
    PlugShape shape;        ///< what the plug takes
    std::size_t count = 1;  ///< elements: of the plug's range, else one
    Cursor cursor;          ///< at the payload; what does not fit makes it fail
    std::size_t offset = 0; ///< of the payload in the file, for progress
    bool hasOddFlags = false;
};

/// Reads a payload and sends what it read. The cursor must be at the end afterwards, or have
/// failed.
using ValueReader = void (*)(Reader& reader, ValueTask& task);

struct ValueRow {
    Tag tag;
    ValueReader read;
};

/// The row of a tag; null for tags that mean nothing here.
const ValueRow* findValue(Tag tag);
/// For tags without a row: what reads values of that kind. Null where the tag would be known.
ValueReader findValueByKind(AttributeKind kind);

/// A chunk of an attribute's value: heading, then payload.
void readValue(Reader& reader, const Chunk& chunk); // readValue.cpp

/// Sends `value` as the value of the plug.
void sendValue(Reader& reader, ValueTask& task, Value value); // readValue.cpp

void readNumbers(Reader& reader,
                 ValueTask& task); // numbers.cpp: DBLE DBL2.. FLT2.. SRT2.. LNG2.. CMPD
void readSparseNumbers(Reader& reader,
                       ValueTask& task);          // sparse.cpp: DBLE of a range inside the name
void readString(Reader& reader, ValueTask& task); // texts.cpp: "STR "
void readStringArray(Reader& reader, ValueTask& task);    // texts.cpp: STR#
void readAttributeAlias(Reader& reader, ValueTask& task); // texts.cpp: ATAL
void readCharacterMap(Reader& reader, ValueTask& task);   // texts.cpp: CHMP
void readReferenceEdits(Reader& reader, ValueTask& task); // texts.cpp: REFE
void readArray(Reader& reader, ValueTask& task); // arrays.cpp: DBL# I32# I64# FLT# VEC# PNT# MAT#
void readComponents(Reader& reader, ValueTask& task); // components.cpp: CMP#
void readMatrix(Reader& reader, ValueTask& task);     // matrix.cpp: MATR
void readLattice(Reader& reader, ValueTask& task);    // lattice.cpp: LATT
void readCurve(Reader& reader, ValueTask& task);      // nurbs.cpp: NRBC
void readSurface(Reader& reader, ValueTask& task);    // nurbs.cpp: NRBS
void readTrimRegion(Reader& reader, ValueTask& task); // nurbs.cpp: no tag is known
void readMesh(Reader& reader, ValueTask& task);       // mesh.cpp: MESH
/// Coordinates of a uv set that came in a chunk of their own need not come out of the mesh's block.
void rememberUvSet(Reader& reader, const ValueTask& task); // mesh.cpp

/// A component list at the cursor, as the texts that the text form has ("vtx[0:7]").
std::vector<std::string> takeComponents(Cursor& cursor); // components.cpp

} // namespace host::file::binary
