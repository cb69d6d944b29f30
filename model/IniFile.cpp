#include "IniFile.h"

#include "QvKsAtomicFile.h"

#include <QFile>
#include <QtEndian>

#include <optional>
#include <vector>

namespace {

// The file's text in its own units: UTF-8 bytes or UTF-16 code units. Positions and
// the markup characters ([ ] = ; CR LF) are the same in both, so one editor serves.
QString Decode(const QByteArray& units)
{
    return QString::fromUtf8(units);
}
QString Decode(const QString& units)
{
    return units;
}
void Encode(const QString& text, QByteArray& units)
{
    units = text.toUtf8();
}
void Encode(const QString& text, QString& units)
{
    units = text;
}

struct Line
{
    qsizetype start = 0;
    qsizetype contentEnd = 0; // before CR LF or LF
    qsizetype end = 0; // after the line break, if any
};

template <typename Text> std::vector<Line> SplitLines(const Text& text)
{
    std::vector<Line> lines;
    qsizetype start = 0;
    while (start < text.size()) {
        qsizetype lf = text.indexOf('\n', start);
        Line line;
        line.start = start;
        line.end = lf < 0 ? text.size() : lf + 1;
        line.contentEnd = lf < 0 ? text.size() : lf;
        // A CR counts only as part of CR LF; a lone one is text of the line.
        if (lf > start && text.at(lf - 1) == '\r')
            --line.contentEnd;
        lines.push_back(line);
        start = line.end;
    }
    return lines;
}

// The section a header line names; nothing when the line is no header.
std::optional<QString> SectionName(const QString& line)
{
    const QString trimmed = line.trimmed();
    const qsizetype close = trimmed.indexOf(u']');
    if (!trimmed.startsWith(u'[') || close < 0)
        return std::nullopt;
    return trimmed.mid(1, close - 1).trimmed();
}

// The key a line of a section sets; nothing for blank and comment lines.
std::optional<QString> KeyName(const QString& line)
{
    const QString trimmed = line.trimmed();
    if (trimmed.isEmpty() || trimmed.startsWith(u';') || trimmed.startsWith(u'#'))
        return std::nullopt;
    return trimmed.left(trimmed.indexOf(u'=')).trimmed();
}

bool SameName(const QString& a, const QString& b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

template <typename Text> QString LineText(const Text& text, const Line& line)
{
    return Decode(text.mid(line.start, line.contentEnd - line.start));
}

// Where a key goes: its section's header, the section's last key, and the line that
// already sets the key. Only the first section of the name counts.
struct Place
{
    const Line* header = nullptr;
    const Line* lastKey = nullptr;
    const Line* keyLine = nullptr;
};

template <typename Text>
Place Locate(const Text& text, const std::vector<Line>& lines, const QString& section, const QString& key)
{
    Place place;
    for (const Line& line : lines) {
        const QString content = LineText(text, line);
        if (const std::optional<QString> name = SectionName(content)) {
            if (place.header)
                break; // the section ended
            if (SameName(*name, section))
                place.header = &line;
            continue;
        }
        const std::optional<QString> lineKey = place.header ? KeyName(content) : std::nullopt;
        if (lineKey && SameName(*lineKey, key)) {
            place.keyLine = &line;
            break;
        }
        if (lineKey)
            place.lastKey = &line;
    }
    return place;
}

// Keeps the key as written and the blanks after "=", and replaces the rest.
template <typename Text> void ReplaceValue(Text& text, const Line& line, const QString& value)
{
    Text encoded;
    const qsizetype equals = text.indexOf('=', line.start);
    if (equals < 0 || equals >= line.contentEnd) {
        Encode(u'=' + value, encoded);
        text.insert(line.contentEnd, encoded);
        return;
    }
    qsizetype from = equals + 1;
    while (from < line.contentEnd && (text.at(from) == ' ' || text.at(from) == '\t'))
        ++from;
    Encode(value, encoded);
    text.replace(from, line.contentEnd - from, encoded);
}

template <typename Text> void InsertAfter(Text& text, const Line& after, const Text& added, const Text& eol)
{
    if (after.end == after.contentEnd)
        text.insert(after.end, eol + added); // the file ended without a line break
    else
        text.insert(after.end, added + eol);
}

template <typename Text>
void AppendSection(
    Text& text, const std::vector<Line>& lines, const Text& header, const Text& assignment, const Text& eol)
{
    if (!lines.empty()) {
        const Line& last = lines.back();
        if (last.end == last.contentEnd)
            text.append(eol);
        if (!LineText(text, last).trimmed().isEmpty())
            text.append(eol); // a blank line between sections
    }
    text.append(header + eol + assignment + eol);
}

template <typename Text>
void SetValue(Text& text, const QString& section, const QString& key, const QString& value)
{
    const std::vector<Line> lines = SplitLines(text);
    const Place place = Locate(text, lines, section, key);
    if (place.keyLine) {
        ReplaceValue(text, *place.keyLine, value);
        return;
    }
    // New lines end as the file's first line does; a new file gets CR LF.
    const bool lfOnly = !lines.empty() && lines.front().end == lines.front().contentEnd + 1;
    Text eol;
    Encode(lfOnly ? QStringLiteral("\n") : QStringLiteral("\r\n"), eol);
    Text assignment;
    Encode(key + u'=' + value, assignment);
    if (place.header) {
        InsertAfter(text, place.lastKey ? *place.lastKey : *place.header, assignment, eol);
        return;
    }
    Text header;
    Encode(u'[' + section + u']', header);
    AppendSection(text, lines, header, assignment, eol);
}

QString FromUtf16(const QByteArray& bytes, bool bigEndian)
{
    QString text(bytes.size() / 2, Qt::Uninitialized);
    char16_t* out = reinterpret_cast<char16_t*>(text.data());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char* unit = bytes.constData() + 2 * i;
        out[i] = bigEndian ? qFromBigEndian<char16_t>(unit) : qFromLittleEndian<char16_t>(unit);
    }
    return text;
}

QByteArray ToUtf16(const QString& text, bool bigEndian)
{
    QByteArray bytes(text.size() * 2, Qt::Uninitialized);
    const char16_t* units = reinterpret_cast<const char16_t*>(text.constData());
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (bigEndian)
            qToBigEndian(units[i], bytes.data() + 2 * i);
        else
            qToLittleEndian(units[i], bytes.data() + 2 * i);
    }
    return bytes;
}

bool ValidNames(const QString& section, const QString& key, const QString& value)
{
    static const QString lineBreaks = QStringLiteral("\r\n");
    for (const QChar c : lineBreaks) {
        if (section.contains(c) || key.contains(c) || value.contains(c))
            return false;
    }
    return !section.isEmpty() && !key.isEmpty() && !section.contains(u']') && !key.contains(u'=')
        && !key.startsWith(u'[') && !key.startsWith(u';') && !key.startsWith(u'#');
}

} // namespace

bool SetIniValue(const QByteArray& content, const QString& section, const QString& key, const QString& value,
    QByteArray& result)
{
    const QString sectionName = section.trimmed();
    const QString keyName = key.trimmed();
    if (!ValidNames(sectionName, keyName, value))
        return false;

    const bool utf16Le = content.startsWith("\xFF\xFE");
    const bool utf16Be = content.startsWith("\xFE\xFF");
    if (utf16Le || utf16Be) {
        // An odd last byte is no unit of the text; it stays where it was.
        const QByteArray body = content.mid(2, (content.size() - 2) & ~qsizetype(1));
        QString text = FromUtf16(body, utf16Be);
        SetValue(text, sectionName, keyName, value);
        result = content.left(2) + ToUtf16(text, utf16Be) + content.mid(2 + body.size());
        return true;
    }
    const qsizetype bom = content.startsWith("\xEF\xBB\xBF") ? 3 : 0;
    QByteArray text = content.mid(bom);
    SetValue(text, sectionName, keyName, value);
    result = content.left(bom) + text;
    return true;
}

QvKsWriteStatus WriteProfileString(const QString& section, const QString& key, const QString& value,
    const QString& filePath, const QString& confineTo)
{
    // The old file is read only where it may be written: never through a link.
    if (QvKsWriteStatus target = QvKsAtomicFile::CheckTarget(filePath, confineTo); !target)
        return target;
    QFile file(filePath);
    const bool exists = file.exists();
    QByteArray content;
    if (exists) {
        if (!file.open(QIODevice::ReadOnly))
            return QvKsWriteStatus::Failure(QvKsWriteStatus::Kind::Permission, filePath, file.errorString());
        content = file.readAll();
        if (file.error() != QFileDevice::NoError)
            return QvKsWriteStatus::Failure(QvKsWriteStatus::Kind::Failed, filePath, file.errorString());
    }
    QByteArray updated;
    if (!SetIniValue(content, section, key, value, updated))
        return QvKsWriteStatus::Failure(
            QvKsWriteStatus::Kind::Failed, filePath, QStringLiteral("the name cannot be written as INI"));
    if (exists && updated == content)
        return {};
    return QvKsAtomicFile::Write(filePath, updated, confineTo);
}
