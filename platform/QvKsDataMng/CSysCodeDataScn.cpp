// The ".scn" side of CSysCodeData: export and import of a specialty's code tree.
#include "CSysCodeData.h"

#include "CQvKsVersion.h"
#include "ProjectStore.h"
#include "ReadableFile.h"
#include "ScnReader.h"
#include "ScnWriter.h"

#include <QFile>

bool CSysCodeData::ExportData(const QString& filePath, const QString& spec) const
{
    QString error;
    if (!ScnWriter::WriteFile(*this, spec, CQvKsVersion::Current().ToString(), filePath, &error)) {
        ProjectStore::Fail(error);
        return false;
    }
    return true;
}

bool CSysCodeData::ImportData(const QString& filePath, QString* spec)
{
    QFile file;
    QString error;
    if (!ReadableFile::Open(file, filePath, &error)) {
        ProjectStore::Fail(error);
        return false;
    }
    if (!ScnReader::Read(file, *this, &error, spec)) {
        ProjectStore::Fail(QStringLiteral("%1 is not a valid system-code file: %2").arg(filePath, error));
        return false;
    }
    return true;
}
