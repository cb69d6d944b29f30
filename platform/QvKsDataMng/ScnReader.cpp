#include "ScnReader.h"

#include "CSysCodeData.h"
#include "ScnFormat.h"
#include "SysCodeNameRule.h"
#include "SysCodeValueRule.h"

#include <QIODevice>
#include <QSet>
#include <QXmlStreamReader>

#include <cmath>
#include <memory>

namespace ScnReader {

namespace {

class Parser
{
public:
    Parser(QIODevice& in, bool legacy)
        : m_xml(&in)
        , m_legacy(legacy)
    { }

    bool Run(CSysCodeData& tree);
    QString Error() const { return m_error; }
    // The specialty the file says it was written for; empty when it says none.
    QString Spec() const { return m_spec; }

private:
    bool Fail(const QString& message);
    // The next token that matters; refuses DTDs, entity references and stray text.
    bool Next();
    bool ReadLevel(CSysCodeData& parent, int depth);
    bool ReadCode(CSysCodeData& node);
    bool ReadLegacyNode(CSysCodeData& node, int depth);
    bool ReadLegacyChildren(CSysCodeData& parent, int depth);
    bool AddChild(CSysCodeData& parent, std::unique_ptr<CSysCodeData> child, QSet<QString>& siblings);
    bool CheckText(const QString& what, const QString& text);
    bool CheckValue(const CSysCodeData& node, const QString& problem);

    QXmlStreamReader m_xml;
    bool m_legacy;
    QString m_error;
    QString m_spec;
    int m_codes = 0;
};

bool Parser::Fail(const QString& message)
{
    if (m_error.isEmpty())
        m_error = QStringLiteral("line %1: %2").arg(m_xml.lineNumber()).arg(message);
    return false;
}

bool Parser::Next()
{
    for (;;) {
        switch (m_xml.readNext()) {
        case QXmlStreamReader::StartElement:
        case QXmlStreamReader::EndElement:
        case QXmlStreamReader::EndDocument:
            return true;
        case QXmlStreamReader::Characters:
            if (!m_xml.isWhitespace())
                return Fail(QStringLiteral("unexpected text"));
            break;
        case QXmlStreamReader::Comment:
        case QXmlStreamReader::StartDocument:
            break;
        case QXmlStreamReader::DTD:
            return Fail(QStringLiteral("document type declarations are not accepted"));
        case QXmlStreamReader::EntityReference:
            return Fail(QStringLiteral("entity references are not accepted"));
        case QXmlStreamReader::ProcessingInstruction:
            return Fail(QStringLiteral("processing instructions are not accepted"));
        default:
            return Fail(m_xml.hasError() ? m_xml.errorString() : QStringLiteral("unreadable XML"));
        }
    }
}

bool Parser::Run(CSysCodeData& tree)
{
    if (!Next() || m_xml.tokenType() != QXmlStreamReader::StartElement)
        return Fail(QStringLiteral("the file holds no system codes"));
    const auto expected = m_legacy ? ScnFormat::kLegacyRoot : ScnFormat::kRoot;
    if (m_xml.name() != expected)
        return Fail(QStringLiteral("the root element is <%1>, not <%2>").arg(m_xml.name(), expected));
    m_spec = m_xml.attributes().value(QLatin1String("Spec")).toString();
    if (!(m_legacy ? ReadLegacyChildren(tree, 0) : ReadLevel(tree, 0)))
        return false;
    if (!Next() || m_xml.tokenType() != QXmlStreamReader::EndDocument)
        return Fail(QStringLiteral("content after the root element"));
    return !m_xml.hasError() || Fail(m_xml.errorString());
}

bool Parser::CheckText(const QString& what, const QString& text)
{
    if (text.size() > ScnFormat::kMaxTextLength)
        return Fail(
            QStringLiteral("%1 is longer than %2 characters").arg(what).arg(ScnFormat::kMaxTextLength));
    return true;
}

// A name as a message shows it: at most 60 characters, and the characters that
// cannot be seen or would break the message's line written as \uXXXX.
QString Shown(const QString& name)
{
    QString shown;
    for (const QChar c : name.left(60)) {
        const auto category = c.category();
        if (category == QChar::Other_Control || category == QChar::Other_Format
            || category == QChar::Separator_Line || category == QChar::Separator_Paragraph)
            shown += QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0'));
        else
            shown += c;
    }
    return name.size() > 60 ? shown + QStringLiteral("...") : shown;
}

// Names are taken trimmed, as the name rule judges them, so that "A" and "A " are
// one code and not two siblings.
bool Parser::AddChild(CSysCodeData& parent, std::unique_ptr<CSysCodeData> child, QSet<QString>& siblings)
{
    const QString name = child->GetNodeName();
    if (const QString problem = SysCodeNameRule::NameProblem(name); !problem.isEmpty())
        return Fail(QStringLiteral("the code name \"%1\" is not legal: %2").arg(Shown(name), problem));
    child->SetNodeName(name.trimmed());
    if (siblings.contains(child->GetNodeName()))
        return Fail(QStringLiteral("the code \"%1\" appears twice at one level").arg(Shown(name.trimmed())));
    if (++m_codes > ScnFormat::kMaxCodes)
        return Fail(QStringLiteral("more than %1 codes").arg(ScnFormat::kMaxCodes));
    siblings.insert(child->GetNodeName());
    int unused = 0;
    parent.AddDataToChild(unused, child.release(), false);
    return true;
}

// A value no cell of the dialog would take is refused as a broken one is.
bool Parser::CheckValue(const CSysCodeData& node, const QString& problem)
{
    if (!problem.isEmpty())
        return Fail(QStringLiteral("the code \"%1\": %2").arg(Shown(node.GetNodeName()), problem));
    return true;
}

bool Parser::ReadLevel(CSysCodeData& parent, int depth)
{
    QSet<QString> siblings;
    for (;;) {
        if (!Next())
            return false;
        if (m_xml.tokenType() == QXmlStreamReader::EndElement)
            return true;
        if (m_xml.tokenType() != QXmlStreamReader::StartElement || m_xml.name() != ScnFormat::kCode)
            return Fail(QStringLiteral("expected <%1>").arg(ScnFormat::kCode));
        if (depth + 1 > ScnFormat::kMaxDepth)
            return Fail(QStringLiteral("codes are nested deeper than %1 levels").arg(ScnFormat::kMaxDepth));
        auto node = std::make_unique<CSysCodeData>();
        if (!ReadCode(*node))
            return false;
        CSysCodeData* added = node.get();
        if (!AddChild(parent, std::move(node), siblings) || !ReadLevel(*added, depth + 1))
            return false;
    }
}

bool Parser::ReadCode(CSysCodeData& node)
{
    const QXmlStreamAttributes attrs = m_xml.attributes();
    for (const QXmlStreamAttribute& a : attrs) {
        if (!CheckText(a.name().toString(), a.value().toString()))
            return false;
    }
    auto text = [&](const char* key) { return attrs.value(QLatin1String(key)).toString(); };
    bool ok = true;
    auto number = [&](const char* key, auto convert) {
        const QString value = text(key);
        if (value.isEmpty())
            return decltype(convert(value, &ok))(0);
        bool good = false;
        auto result = convert(value, &good);
        ok = ok && good;
        return result;
    };
    node.SetNodeName(text("Name"));
    node.SetNodeIndex(number("Index", [](const QString& s, bool* g) { return s.toInt(g); }));
    const uint color = number("Color", [](const QString& s, bool* g) { return s.toUInt(g); });
    const double width = number("LineWidth", [](const QString& s, bool* g) { return s.toDouble(g); });
    node.SetAlpha(number("Alpha", [](const QString& s, bool* g) { return s.toInt(g); }));
    if (!ok || !std::isfinite(width))
        return Fail(QStringLiteral("a number of the code \"%1\" is not valid").arg(Shown(text("Name"))));
    node.SetMfcColor(color);
    node.SetLineWidth(width);
    if (!CheckValue(node, SysCodeValueRule::ColorProblem(color)))
        return false;
    node.SetLineStyle(text("LineStyle"));
    node.SetLineString(text("LineString"));
    node.SetHorLayingMode(text("HorLayingMode"));
    node.SetVerLayingMode(text("VerLayingMode"));
    node.SetAddedMsg(text("AddedMsg"));
    node.SetDescribe(text("Describe"));
    return CheckValue(node, SysCodeValueRule::LineWidthProblem(width))
        && CheckValue(node, SysCodeValueRule::AlphaProblem(node.GetAlpha()));
}

bool Parser::ReadLegacyChildren(CSysCodeData& parent, int depth)
{
    QSet<QString> siblings;
    for (;;) {
        if (!Next())
            return false;
        if (m_xml.tokenType() == QXmlStreamReader::EndElement)
            return true;
        if (m_xml.tokenType() != QXmlStreamReader::StartElement || m_xml.name() != ScnFormat::kLegacyNode)
            return Fail(QStringLiteral("expected <%1>").arg(ScnFormat::kLegacyNode));
        if (depth + 1 > ScnFormat::kMaxDepth)
            return Fail(QStringLiteral("codes are nested deeper than %1 levels").arg(ScnFormat::kMaxDepth));
        auto node = std::make_unique<CSysCodeData>();
        CSysCodeData* added = node.get();
        // The name comes first in the old layout; add the node once it is known.
        if (!ReadLegacyNode(*added, depth + 1))
            return false;
        if (!AddChild(parent, std::move(node), siblings))
            return false;
    }
}

bool parseRgb(const QString& text, COLORREF& color)
{
    const QStringList parts = text.split(QLatin1Char(','));
    if (parts.size() != 3)
        return false;
    int rgb[3];
    for (int i = 0; i < 3; ++i) {
        bool ok = false;
        rgb[i] = parts[i].trimmed().toInt(&ok);
        if (!ok || rgb[i] < 0 || rgb[i] > 255)
            return false;
    }
    color = RGB(rgb[0], rgb[1], rgb[2]);
    return true;
}

bool Parser::ReadLegacyNode(CSysCodeData& node, int depth)
{
    for (;;) {
        if (!Next())
            return false;
        if (m_xml.tokenType() == QXmlStreamReader::EndElement)
            return CheckValue(node, SysCodeValueRule::LineWidthProblem(node.GetLineWidth()))
                && CheckValue(node, SysCodeValueRule::AlphaProblem(node.GetAlpha()));
        if (m_xml.tokenType() != QXmlStreamReader::StartElement)
            return Fail(QStringLiteral("unexpected content in <%1>").arg(ScnFormat::kLegacyNode));
        const QString field = m_xml.name().toString();
        if (field == ScnFormat::kLegacyChildren) {
            if (!ReadLegacyChildren(node, depth))
                return false;
            continue;
        }
        const QString value = m_xml.readElementText(QXmlStreamReader::ErrorOnUnexpectedElement);
        if (m_xml.hasError())
            return Fail(m_xml.errorString());
        if (!CheckText(field, value))
            return false;
        bool ok = true;
        if (field == QLatin1String("Name")) {
            node.SetNodeName(value);
        } else if (field == QLatin1String("Index")) {
            node.SetNodeIndex(value.isEmpty() ? 0 : value.toInt(&ok));
        } else if (field == QLatin1String("Color")) {
            COLORREF color = 0;
            ok = value.isEmpty() || parseRgb(value, color);
            node.SetMfcColor(color);
        } else if (field == QLatin1String("Width")) {
            const double width = value.isEmpty() ? 0.0 : value.toDouble(&ok);
            ok = ok && std::isfinite(width);
            node.SetLineWidth(width);
        } else if (field == QLatin1String("Transparency")) {
            node.SetAlpha(value.isEmpty() ? 0 : value.toInt(&ok));
        } else if (field == QLatin1String("LineType")) {
            node.SetLineStyle(value);
        } else if (field == QLatin1String("LineChars")) {
            node.SetLineString(value);
        } else if (field == QLatin1String("HorLay")) {
            node.SetHorLayingMode(value);
        } else if (field == QLatin1String("VerLay")) {
            node.SetVerLayingMode(value);
        } else if (field == QLatin1String("PipeInfo")) {
            node.SetAddedMsg(value);
        } else if (field == QLatin1String("Remark")) {
            node.SetDescribe(value);
        } else {
            return Fail(QStringLiteral("unknown element <%1>").arg(field.left(60)));
        }
        if (!ok)
            return Fail(QStringLiteral("<%1> holds no valid value").arg(field));
    }
}

bool readInto(QIODevice& in, CSysCodeData& root, QString* error, bool legacy, QString* spec = nullptr)
{
    if (!in.isSequential() && in.size() > ScnFormat::kMaxFileBytes) {
        if (error)
            *error = QStringLiteral("the file is larger than %1 bytes").arg(ScnFormat::kMaxFileBytes);
        return false;
    }
    CSysCodeData tree;
    Parser parser(in, legacy);
    if (!parser.Run(tree)) {
        if (error)
            *error = parser.Error();
        return false;
    }
    if (spec)
        *spec = parser.Spec();
    root.DeleteData();
    int unused = 0;
    while (tree.GetChildCount() > 0)
        root.AddDataToChild(unused, tree.GetChild(0), false);
    return true;
}

} // namespace

Layout DetectLayout(QIODevice& in)
{
    QXmlStreamReader xml(&in);
    while (!xml.atEnd()) {
        const auto token = xml.readNext();
        if (token == QXmlStreamReader::DTD || token == QXmlStreamReader::Invalid)
            return Layout::Unknown;
        if (token == QXmlStreamReader::StartElement) {
            if (xml.name() == ScnFormat::kRoot)
                return Layout::Current;
            if (xml.name() == ScnFormat::kLegacyRoot)
                return Layout::Legacy;
            return Layout::Unknown;
        }
    }
    return Layout::Unknown;
}

bool Read(QIODevice& in, CSysCodeData& root, QString* error, QString* spec)
{
    return readInto(in, root, error, false, spec);
}

bool ReadLegacy(QIODevice& in, CSysCodeData& root, QString* error)
{
    return readInto(in, root, error, true);
}

} // namespace ScnReader
