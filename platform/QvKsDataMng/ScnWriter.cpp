#include "ScnWriter.h"

#include "CSysCodeData.h"
#include "ScnFormat.h"

#include <QLocale>
#include <QSaveFile>
#include <QXmlStreamWriter>

namespace ScnWriter {

namespace {

void writeCode(QXmlStreamWriter& xml, const CSysCodeData& node)
{
    xml.writeStartElement(ScnFormat::kCode);
    xml.writeAttribute(QStringLiteral("Name"), node.GetNodeName());
    xml.writeAttribute(QStringLiteral("Index"), QString::number(node.GetNodeIndex()));
    xml.writeAttribute(QStringLiteral("Color"), QString::number(node.GetMfcColor()));
    // Shortest text that reads back to the same double.
    xml.writeAttribute(QStringLiteral("LineWidth"),
        QString::number(node.GetLineWidth(), 'g', QLocale::FloatingPointShortest));
    xml.writeAttribute(QStringLiteral("Alpha"), QString::number(node.GetAlpha()));
    xml.writeAttribute(QStringLiteral("LineStyle"), node.GetLineStyle());
    xml.writeAttribute(QStringLiteral("LineString"), node.GetLineString());
    xml.writeAttribute(QStringLiteral("HorLayingMode"), node.GetHorLayingMode());
    xml.writeAttribute(QStringLiteral("VerLayingMode"), node.GetVerLayingMode());
    xml.writeAttribute(QStringLiteral("AddedMsg"), node.GetAddedMsg());
    xml.writeAttribute(QStringLiteral("Describe"), node.GetDescribe());
    for (const CSysCodeData* child : node.GetChildren())
        writeCode(xml, *child);
    xml.writeEndElement();
}

} // namespace

bool Write(const CSysCodeData& root, const QString& spec, const QString& version, QIODevice& out)
{
    QXmlStreamWriter xml(&out);
    xml.setAutoFormatting(true);
    xml.setAutoFormattingIndent(1);
    xml.writeStartDocument();
    xml.writeStartElement(ScnFormat::kRoot);
    xml.writeAttribute(ScnFormat::kVersion, version);
    if (!spec.isEmpty())
        xml.writeAttribute(QStringLiteral("Spec"), spec);
    for (const CSysCodeData* child : root.GetChildren())
        writeCode(xml, *child);
    xml.writeEndElement();
    xml.writeEndDocument();
    return !xml.hasError();
}

bool WriteFile(const CSysCodeData& root, const QString& spec, const QString& version, const QString& path,
    QString* error)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        if (error)
            *error = QStringLiteral("%1 cannot be written: %2").arg(path, file.errorString());
        return false;
    }
    if (!Write(root, spec, version, file) || !file.commit()) {
        if (error)
            *error = QStringLiteral("%1 cannot be written: %2").arg(path, file.errorString());
        return false;
    }
    return true;
}

} // namespace ScnWriter
