#pragma once

// The one way a ".scn" file comes into a specialty: the dialog's "导入", the reload
// the product's other modules ask for, and the project tool all read through here.
// Nothing is changed before the whole file has been read and judged, apart from the
// conversion of a file of an older version, which rewrites it in the current layout
// only when it reads in full.
#include <QString>

class CSysCodeData;

enum class SysCodeFileStatus {
    Read, // the file's codes are in `imported`
    Newer, // written by a newer version of the product: not read
    NotUpdated, // of an older layout that reads, but could not be written back in the current one
    Refused, // cannot be read: `reason` says why, and where in the file
};

struct SysCodeFileResult
{
    SysCodeFileStatus status = SysCodeFileStatus::Refused;
    QString reason;
    QString version; // the file's version stamp; empty when it carries none
    QString spec; // the specialty the file was written for; empty when it names none
};

// Reads the file at `filePath` into `imported` (its children replaced), refusing
// anything that is not a regular file, not a system-code file, or holds a code the
// rules refuse (names, levels, sibling names, values).
SysCodeFileResult LoadSysCodeFile(const QString& filePath, CSysCodeData& imported);

// Whether a file that was read names a specialty other than `spec`: it then goes in
// only when the user says so.
bool IsForAnotherSpec(const SysCodeFileResult& result, const QString& spec);
