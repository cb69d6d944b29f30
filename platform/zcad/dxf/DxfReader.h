#pragma once

// Reads a DXF drawing into an empty database: HEADER (version and code page),
// TABLES (layers, registered applications), BLOCKS and ENTITIES; other sections
// are skipped. Anything malformed or cut short fails the whole read with a
// message that says where; the memory used grows with the file, never with the
// counts written in it.
#include "ZcadTypes.h"

#include <QString>

#include <string_view>

class DxfFileStream;
class ZcDbDatabase;

class DxfReader
{
public:
    Zcad::ErrorStatus read(std::string_view data, ZcDbDatabase& database);
    // The same from a file read while it is parsed; eFileAccessErr when it cannot
    // be read to its end.
    Zcad::ErrorStatus read(DxfFileStream& stream, ZcDbDatabase& database);
    QString error() const { return m_error; }

private:
    struct State;

    Zcad::ErrorStatus read(State& state);
    Zcad::ErrorStatus fail(Zcad::ErrorStatus status, const QString& message);

    QString m_error;
};
