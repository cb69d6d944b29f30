#include "QvKsXmlVertion.h"

#include "ProjectStore.h"
#include "QvKsAtomicFile.h"
#include "QvKsDataMng.h"
#include "ReadableFile.h"
#include "ScnFormat.h"

#include <QBuffer>
#include <QFile>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace {

bool fail(const QString& message)
{
    ProjectStore::Fail(message);
    return false;
}

void writeRootStart(QXmlStreamWriter& out, const QXmlStreamReader& in, const QString& version)
{
    out.writeStartElement(in.qualifiedName().toString());
    for (const QXmlStreamNamespaceDeclaration& ns : in.namespaceDeclarations())
        out.writeNamespace(ns.namespaceUri().toString(), ns.prefix().toString());
    for (const QXmlStreamAttribute& attr : in.attributes()) {
        if (attr.qualifiedName() != ScnFormat::kVersion)
            out.writeAttribute(attr.qualifiedName().toString(), attr.value().toString());
    }
    out.writeAttribute(ScnFormat::kVersion, version);
}

} // namespace

bool QvKsXmlVertion::SetXmlVersion(const QString& version, const QString& filePath)
{
    QFile file(filePath);
    if (!file.open(QIODevice::ReadOnly))
        return fail(QStringLiteral("%1 cannot be read: %2").arg(filePath, file.errorString()));
    if (file.size() > ScnFormat::kMaxFileBytes)
        return fail(QStringLiteral("%1 is too large").arg(filePath));
    QByteArray text;
    QBuffer target(&text);
    target.open(QIODevice::WriteOnly);
    QXmlStreamReader in(&file);
    QXmlStreamWriter out(&target);
    bool rootSeen = false;
    bool stamped = false;
    while (!in.atEnd()) {
        const auto token = in.readNext();
        if (token == QXmlStreamReader::Invalid)
            break;
        if (token == QXmlStreamReader::DTD || token == QXmlStreamReader::EntityReference)
            return fail(QStringLiteral("%1: document type declarations are not accepted").arg(filePath));
        if (token == QXmlStreamReader::StartElement && !rootSeen) {
            stamped = in.attributes().value(ScnFormat::kVersion) == version;
            rootSeen = true;
            writeRootStart(out, in, version);
        } else {
            out.writeCurrentToken(in);
        }
    }
    if (in.hasError() || !rootSeen)
        return fail(QStringLiteral("%1 is not an XML document: %2").arg(filePath, in.errorString()));
    if (out.hasError())
        return fail(QStringLiteral("%1 cannot be written: the XML cannot be put out again").arg(filePath));
    file.close();
    // A file that carries the stamp already is not written again.
    if (stamped)
        return true;
    const QvKsWriteStatus status = QvKsAtomicFile::Write(filePath, text, QvKsDataMng::ProjectFolder());
    return status ? true : fail(status.Describe());
}

bool QvKsXmlVertion::GetXmlVersion(QString& version, const QString& filePath)
{
    QFile file;
    QString error;
    if (!ReadableFile::Open(file, filePath, &error))
        return fail(error);
    QXmlStreamReader in(&file);
    while (!in.atEnd()) {
        const auto token = in.readNext();
        if (token == QXmlStreamReader::DTD)
            return fail(QStringLiteral("%1: document type declarations are not accepted").arg(filePath));
        if (token == QXmlStreamReader::StartElement) {
            if (!in.attributes().hasAttribute(ScnFormat::kVersion))
                return fail(QStringLiteral("%1 carries no version").arg(filePath));
            version = in.attributes().value(ScnFormat::kVersion).toString();
            return true;
        }
    }
    return fail(QStringLiteral("%1 is not an XML document").arg(filePath));
}
