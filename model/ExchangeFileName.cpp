#include "ExchangeFileName.h"

namespace {
// Long enough for any real project name; a file name stays well under the
// system's limit of 255 bytes with the specialty and the extension added.
constexpr qsizetype kMaxPartLength = 60;

bool IsRefused(QChar c)
{
    static const QString forbidden = QStringLiteral("/\\:*?\"<>|");
    const QChar::Category category = c.category();
    return c.unicode() < 0x20 || category == QChar::Other_Control || category == QChar::Other_Format
        || category == QChar::Separator_Line || category == QChar::Separator_Paragraph
        || forbidden.contains(c);
}
} // namespace

QString CleanFileNamePart(const QString& text, const QString& fallback)
{
    QString clean;
    clean.reserve(text.size());
    for (const QChar c : text) {
        if (!IsRefused(c))
            clean += c;
    }
    // "...." would become ".." again after one pass: take ".." out until none is left.
    while (clean.contains(QLatin1String("..")))
        clean.replace(QLatin1String(".."), QLatin1String("."));
    if (clean.size() > kMaxPartLength) {
        clean.truncate(kMaxPartLength);
        // Half a surrogate pair is no character.
        if (clean.back().isHighSurrogate())
            clean.chop(1);
    }
    while (!clean.isEmpty() && (clean.front() == u'.' || clean.front().isSpace()))
        clean.remove(0, 1);
    while (!clean.isEmpty() && (clean.back() == u'.' || clean.back().isSpace()))
        clean.chop(1);
    return clean.isEmpty() ? fallback : clean;
}

QString DefaultExchangeFileName(const QString& projectName, const QString& spec)
{
    return CleanFileNamePart(projectName, QStringLiteral("项目")) + u'-'
        + CleanFileNamePart(spec, QStringLiteral("系统编号"));
}
