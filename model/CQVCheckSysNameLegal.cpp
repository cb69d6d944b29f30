#include "CQVCheckSysNameLegal.h"

#include "ModuleStrings.h"
#include "WinMessageBox.h"

#include <QChar>

namespace {
bool IsHidden(char32_t ucs4)
{
    switch (QChar::category(ucs4)) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Other_Surrogate:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return false;
    }
}
} // namespace

bool CQVCheckSysNameLegal::CheckSysNameLegal(QString name)
{
    name = name.trimmed();
    if (name.isEmpty() || name.size() > kMaxSysNameLength)
        return false;
    name = name.toUpper();
    for (const QChar forbidden : { u'\'', u'&', u'\\', u'/' }) {
        if (name.contains(forbidden))
            return false;
    }
    return name != QLatin1String("SYS") && FindHiddenChar(name) < 0;
}

qsizetype CQVCheckSysNameLegal::FindHiddenChar(const QString& name)
{
    const QString trimmed = name.trimmed();
    for (qsizetype i = 0; i < trimmed.size(); ++i) {
        char32_t ucs4 = trimmed[i].unicode();
        // A pair counts as the character it stands for; half of one stays a surrogate.
        if (trimmed[i].isHighSurrogate() && i + 1 < trimmed.size() && trimmed[i + 1].isLowSurrogate()) {
            ucs4 = QChar::surrogateToUcs4(trimmed[i], trimmed[i + 1]);
            if (!IsHidden(ucs4)) {
                ++i;
                continue;
            }
        }
        if (IsHidden(ucs4))
            return i;
    }
    return -1;
}

QString CQVCheckSysNameLegal::IllegalNameMessage(const QString& name)
{
    const QString trimmed = name.trimmed();
    const qsizetype at = FindHiddenChar(trimmed);
    if (at < 0)
        return g_strIllegalNameMsg;
    const char32_t ucs4 = trimmed[at].isHighSurrogate() && at + 1 < trimmed.size()
        ? QChar::surrogateToUcs4(trimmed[at], trimmed[at + 1])
        : trimmed[at].unicode();
    return QStringLiteral("系统编号中包含不可见的字符或控制字符（U+%1）")
        .arg(QString::number(uint(ucs4), 16).toUpper().rightJustified(4, QLatin1Char('0')));
}

bool CQVCheckSysNameLegal::OnCheckSysName(const QString& name)
{
    return CheckSysNameLegal(name);
}

bool CQVCheckSysNameLegal::CheckSysCodeLevel(int level)
{
    if (level <= kMaxSysCodeLevel)
        return true;
    MessageBoxExW(
        GetActiveWindow(), QStringLiteral("系统编号不允许超过3级") + g_strExclaim, g_strCaption, kMbWarning);
    return false;
}
