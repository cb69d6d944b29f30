// The file side of CISysCode: taking over ".scn" files of older versions.
#include "CISysCode.h"

#include "CQvKsVersion.h"
#include "CSysCodeData.h"
#include "ProjectStore.h"
#include "ReadableFile.h"
#include "ScnReader.h"
#include "ScnWriter.h"

#include <QFile>

bool CISysCode::UpdataSysData(const QString& filePath)
{
    QFile file;
    QString error;
    if (!ReadableFile::Open(file, filePath, &error)) {
        ProjectStore::Fail(error);
        return false;
    }
    const ScnReader::Layout layout = ScnReader::DetectLayout(file);
    if (layout == ScnReader::Layout::Current)
        return true;
    if (layout != ScnReader::Layout::Legacy) {
        ProjectStore::Fail(QStringLiteral("%1 is not a system-code file").arg(filePath));
        return false;
    }
    file.seek(0);
    CSysCodeData tree;
    if (!ScnReader::ReadLegacy(file, tree, &error)) {
        ProjectStore::Fail(QStringLiteral("%1 cannot be converted: %2").arg(filePath, error));
        return false;
    }
    file.close();
    if (!ScnWriter::WriteFile(tree, QString(), CQvKsVersion::Current().ToString(), filePath, &error)) {
        ProjectStore::Fail(error);
        return false;
    }
    return true;
}
