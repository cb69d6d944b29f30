#include "LinFormat.h"

#include <QStringList>

#include <cmath>

namespace {
constexpr double kTextSize = 2.54;
constexpr double kDash = 12.7;
constexpr int kMaxElements = 64;

// Splits at commas outside brackets and quotes; false for an unclosed bracket.
bool SplitElements(const QString& line, QStringList& parts)
{
    QString current;
    bool inBracket = false;
    bool inQuote = false;
    for (QChar c : line) {
        if (c == u'"' && inBracket)
            inQuote = !inQuote;
        else if (c == u'[' && !inQuote)
            inBracket = true;
        else if (c == u']' && !inQuote)
            inBracket = false;
        if (c == u',' && !inBracket && !inQuote) {
            parts.append(current.trimmed());
            current.clear();
        } else {
            current += c;
        }
    }
    parts.append(current.trimmed());
    return !inBracket && !inQuote;
}

bool ParseText(const QString& part, LineTypeDef::Element& element)
{
    const qsizetype open = part.indexOf(u'"');
    const qsizetype close = part.indexOf(u'"', open + 1);
    if (!part.endsWith(u']') || open < 0 || close < 0)
        return false;
    element.isText = true;
    element.text = part.mid(open + 1, close - open - 1);
    const QStringList options = part.mid(close + 1, part.size() - close - 2).split(u',');
    for (const QString& raw : options) {
        const QString option = raw.trimmed();
        bool ok = true;
        const double value = option.mid(2).toDouble(&ok);
        if (option.size() < 3 || option[1] != u'=')
            continue;
        if (!ok || !std::isfinite(value))
            return false;
        const QChar key = option[0].toUpper();
        if (key == u'S')
            element.size = value;
        else if (key == u'X')
            element.dx = value;
        else if (key == u'Y')
            element.dy = value;
    }
    return true;
}

bool ParsePattern(const QString& line, LineTypeDef& def)
{
    QStringList parts;
    if (!SplitElements(line, parts) || parts.size() < 2 || parts.size() > kMaxElements + 1
        || parts[0].compare(QLatin1String("A"), Qt::CaseInsensitive) != 0)
        return false;
    for (qsizetype i = 1; i < parts.size(); ++i) {
        LineTypeDef::Element element;
        if (parts[i].startsWith(u'[')) {
            if (!ParseText(parts[i], element))
                return false;
        } else {
            bool ok = false;
            element.length = parts[i].toDouble(&ok);
            if (!ok || !std::isfinite(element.length) || std::abs(element.length) > 1e6)
                return false;
        }
        def.elements.append(element);
    }
    return def.PatternLength() > 0.0;
}

LineTypeDef::Element Dash(double length)
{
    LineTypeDef::Element element;
    element.length = length;
    return element;
}

QString Number(double value)
{
    return QString::number(value, 'g', 6);
}
} // namespace

double LineTypeDef::PatternLength() const
{
    double total = 0.0;
    for (const Element& element : elements)
        if (!element.isText)
            total += std::abs(element.length);
    return total;
}

QVector<LineTypeDef> LinFormat::Parse(const QString& text)
{
    QVector<LineTypeDef> defs;
    const QStringList lines = text.split(u'\n');
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QString header = lines[i].trimmed();
        if (!header.startsWith(u'*'))
            continue;
        LineTypeDef def;
        def.name = header.mid(1).section(u',', 0, 0).trimmed();
        def.description = header.section(u',', 1);
        if (def.name.isEmpty() || i + 1 >= lines.size())
            continue;
        if (ParsePattern(lines[i + 1].trimmed(), def)) {
            defs.append(def);
            ++i;
        }
    }
    return defs;
}

QString LinFormat::Format(const QVector<LineTypeDef>& defs, const QString& comment)
{
    QString out;
    if (!comment.isEmpty())
        out += QStringLiteral(";; %1\n").arg(comment);
    for (const LineTypeDef& def : defs) {
        out += QStringLiteral("*%1,%2\nA").arg(def.name, def.description);
        for (const LineTypeDef::Element& element : def.elements) {
            if (element.isText)
                out += QStringLiteral(",[\"%1\",STANDARD,S=%2,R=0.0,X=%3,Y=%4]")
                           .arg(element.text, Number(element.size), Number(element.dx), Number(element.dy));
            else
                out += u',' + Number(element.length);
        }
        out += u'\n';
    }
    return out;
}

LineTypeDef LinFormat::Dashes(const QString& name, const QString& description, const QVector<double>& lengths)
{
    LineTypeDef def { name, description, {} };
    for (double length : lengths)
        def.elements.append(Dash(length));
    return def;
}

LineTypeDef LinFormat::WithText(const QString& name, const QString& description, const QString& text)
{
    // A quote would end the text early in the file: it becomes an apostrophe.
    QString shown = text;
    shown.replace(u'"', u'\'');
    const double width = kTextSize * 0.8 * std::max<qsizetype>(1, shown.size());
    const double gap = width / 2 + kTextSize / 2;
    LineTypeDef def { name, description, {} };
    def.elements.append(Dash(kDash));
    def.elements.append(Dash(-gap));
    LineTypeDef::Element label;
    label.isText = true;
    label.text = shown;
    label.size = kTextSize;
    label.dx = -width / 2;
    label.dy = -kTextSize / 2;
    def.elements.append(label);
    def.elements.append(Dash(-gap));
    return def;
}
