#include "SysCodeFileReader.h"

#include "CISysCode.h"
#include "CQvKsVersion.h"
#include "CSysCodeData.h"
#include "QvKsAtomicFile.h"
#include "QvKsDataMng.h"
#include "QvKsXmlVertion.h"
#include "ReadableFile.h"

SysCodeFileResult LoadSysCodeFile(const QString& filePath, CSysCodeData& imported)
{
    SysCodeFileResult result;
    // A folder, a device or a pipe is refused before anything opens it for good.
    if (const QString problem = ReadableFile::Problem(filePath); !problem.isEmpty()) {
        result.reason = problem;
        return result;
    }
    CQvKsVersion version;
    if (QvKsXmlVertion::GetXmlVersion(result.version, filePath)
        && CQvKsVersion::FromString(result.version, version)) {
        if (version > CQvKsVersion::Current()) {
            result.status = SysCodeFileStatus::Newer;
            return result;
        }
        if (version < CQvKsVersion::Current() && !CISysCode::UpdataSysData(filePath)) {
            // A file that reads but cannot be written back is not the file's fault.
            const QvKsWriteStatus written = QvKsAtomicFile::LastStatus();
            if (!written && written.GetPath() == filePath)
                result.status = SysCodeFileStatus::NotUpdated;
            result.reason = QvKsDataMng::LastError();
            return result;
        }
    } else {
        result.version.clear();
    }
    if (!imported.ImportData(filePath, &result.spec)) {
        result.reason = QvKsDataMng::LastError();
        return result;
    }
    result.status = SysCodeFileStatus::Read;
    return result;
}

bool IsForAnotherSpec(const SysCodeFileResult& result, const QString& spec)
{
    return result.status == SysCodeFileStatus::Read && !result.spec.isEmpty() && result.spec != spec;
}
