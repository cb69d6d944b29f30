#include "SysCodeEditChecks.h"

#include "CQVCheckSysNameLegal.h"
#include "SysCodeValueRange.h"

NameEditResult CheckNameEdit(const QString& parentFullName, const QString& currentName, const QString& typed,
    const std::function<bool(const QString&)>& exists)
{
    NameEditResult result;
    result.name = typed.trimmed();
    result.fullName
        = parentFullName.isEmpty() ? result.name : parentFullName + QLatin1Char('\\') + result.name;
    // Changing only the letter case of a code finds the code itself: that is no clash.
    if (exists && exists(result.fullName) && currentName.toLower() != result.name.toLower())
        result.status = NameEditStatus::Clash;
    else if (!CQVCheckSysNameLegal::CheckSysNameLegal(result.name))
        result.status = NameEditStatus::Illegal;
    return result;
}

bool HasForbiddenRemarkChar(const QString& remark)
{
    return remark.contains(QLatin1Char('&')) || remark.contains(QLatin1Char('\\'))
        || remark.contains(QLatin1Char('/'));
}

AlphaTextStatus NormaliseAlphaText(const QString& typed, QString& normalised)
{
    const QString text = typed.trimmed();
    int value = 0;
    for (QChar c : text) {
        if (c < u'0' || c > u'9')
            return AlphaTextStatus::NotDigits;
        value = value * 10 + (c.unicode() - u'0');
        if (!IsSysAlphaInRange(value))
            return AlphaTextStatus::OutOfRange;
    }
    normalised = QString::asprintf("%d", value);
    return AlphaTextStatus::Accepted;
}

void RecordSysCodeRename(
    SysCodeRenameChain& renames, const QString& spec, const QString& oldFullName, const QString& newFullName)
{
    const QString oldPath = spec + QLatin1Char('\\') + oldFullName;
    const QString newPath = spec + QLatin1Char('\\') + newFullName;
    if (oldPath == newPath)
        return;
    for (auto& pair : renames) {
        if (pair.second == oldPath) {
            pair.second = newPath;
            return;
        }
    }
    renames.emplace_back(oldPath, newPath);
}

QString MTextPlainText(const QString& contents)
{
    QString text = contents;
    return text.replace(QLatin1String("\\P"), QLatin1String("-"));
}

QString JoinPickedTexts(const QStringList& pieces)
{
    QString joined;
    for (const QString& piece : pieces) {
        if (piece.isEmpty())
            continue;
        if (!joined.isEmpty())
            joined += QLatin1Char('-');
        joined += piece;
    }
    return joined;
}

bool IsShortSysCode(const QString& trimmed)
{
    if (trimmed.size() > 3)
        return false;
    for (const QChar c : trimmed)
        if (!((c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9')))
            return false;
    return true;
}
