#include "ScnWriter.h"

#include "CSysCodeData.h"
#include "ScnFormat.h"

#include "QvKsAtomicFile.h"
#include "QvKsDataMng.h"

#include <QBuffer>
#include <QLocale>
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
    // The whole text is made first; only a complete one is handed to the disk.
    QByteArray text;
    QBuffer buffer(&text);
    buffer.open(QIODevice::WriteOnly);
    if (!Write(root, spec, version, buffer)) {
        if (error)
            *error = QStringLiteral("%1 cannot be written: the codes cannot be put as XML").arg(path);
        return false;
    }
    const QvKsWriteStatus status = QvKsAtomicFile::Write(path, text, QvKsDataMng::ProjectFolder());
    if (!status && error)
        *error = status.Describe();
    return status.IsOk();
}

} // namespace ScnWriter
