// The file side of CISysCode: taking over ".scn" files of older versions.
#include "CISysCode.h"

#include "CQvKsVersion.h"
#include "CSysCodeData.h"
#include "ProjectStore.h"
#include "ScnReader.h"
#include "ScnWriter.h"

#include <QFile>

bool CISysCode::UpdataSysData(const QString& filePath)
{
    QFile file(filePath);
    if (!file.open(QIODevice::ReadOnly)) {
        ProjectStore::Fail(QStringLiteral("%1 cannot be read: %2").arg(filePath, file.errorString()));
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
    QString error;
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
