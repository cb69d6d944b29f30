// qvdisplaydump DRAWING OUT.json: opens a drawing as qvhost does and writes what its
// display list holds (see DisplayListDump), with the kinds it could not draw and
// what the reader passed over. Exit 1 when the drawing cannot be read.
#include "DisplayListBuilder.h"
#include "DisplayListDump.h"
#include "LineTypeMgr.h"
#include "QvKsCodeStyles.h"
#include "ZcDbDatabase.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() != 3) {
        std::fprintf(stderr, "usage: qvdisplaydump DRAWING OUT.json\n");
        return 2;
    }
    ZcDbDatabase drawing(false, true);
    if (drawing.readDwgFile(args[1]) != Zcad::eOk) {
        std::fprintf(stderr, "%s\n", qPrintable(drawing.readError()));
        return 1;
    }
    const QvKsCodeStyles noCodes;
    DisplayList list;
    DisplayListBuilder builder(noCodes, *LineTypeMgr::Instance(), {});
    builder.Build(&drawing, list);
    QJsonObject dump = QJsonDocument::fromJson(DisplayListDump::ToJson(list, builder.NotShown())).object();
    dump.insert(QStringLiteral("readNotes"), QJsonArray::fromStringList(drawing.readNotes()));
    dump.insert(QStringLiteral("summary"), builder.NotShownSummary());
    QFile out(args[2]);
    if (!out.open(QIODevice::WriteOnly))
        return 1;
    out.write(QJsonDocument(dump).toJson(QJsonDocument::Compact));
    return 0;
}
