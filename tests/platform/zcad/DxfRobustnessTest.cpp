// Broken drawings fail with a status and leave the database as it was.
#include "DxfWriter.h"
#include "ZcSdk.h"

#include <QBuffer>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <random>

#include <sys/stat.h>

namespace {
QByteArray validDrawing()
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    DxfWriter writer(&buffer, DxfWriter::Version::R2000);
    writer.beginBlock(QStringLiteral("B"));
    writer.addAttributeDefinition({ QStringLiteral("T"), QStringLiteral("p"), QStringLiteral("d"), {} });
    writer.endBlock();
    writer.addProductEntity(QStringLiteral("3\\1"), { { 0, 0, 0 }, { 1, 0, 0 }, { 1, 1, 0 } });
    writer.addBlockReference(
        QStringLiteral("B"), { 1, 1, 0 }, { { QStringLiteral("T"), QStringLiteral("x"), {} } });
    writer.addMText({}, QStringLiteral("a\\Pb"), 1, 1);
    writer.finish();
    return buffer.data();
}

Zcad::ErrorStatus read(ZcDbDatabase& db, const QByteArray& bytes)
{
    return db.readDxfData(std::string_view(bytes.constData(), size_t(bytes.size())));
}

size_t modelSpaceSize(const ZcDbDatabase& db)
{
    const auto* model = ZcDbBlockTableRecord::cast(db.modelSpaceId().object());
    return model ? model->entityIndexes().size() : 0;
}
} // namespace

TEST(DxfRobustness, MalformedDrawingsFailAndKeepTheContent)
{
    const struct
    {
        const char* name;
        QByteArray bytes;
        Zcad::ErrorStatus status;
    } cases[] = {
        { "empty", "", Zcad::eBadDwgHeader },
        { "plain text", "hello\nworld\n", Zcad::eBadDwgHeader },
        { "no EOF", "0\nSECTION\n2\nENTITIES\n0\nENDSEC\n", Zcad::eDwgNeedsRecovery },
        { "section never ends", "0\nSECTION\n2\nENTITIES\n0\nLINE\n8\n0\n", Zcad::eDwgNeedsRecovery },
        { "code without value", "0\nSECTION\n2\nENTITIES\n0\nLINE\n8", Zcad::eDwgNeedsRecovery },
        { "code out of range", "0\nSECTION\n2\nENTITIES\n0\nLINE\n99999\nx\n0\nENDSEC\n0\nEOF\n",
            Zcad::eDwgNeedsRecovery },
        { "code not a number", "0\nSECTION\n2\nENTITIES\n0\nLINE\nten\n1\n0\nENDSEC\n0\nEOF\n",
            Zcad::eDwgNeedsRecovery },
        { "block never ends", "0\nSECTION\n2\nBLOCKS\n0\nBLOCK\n2\nB\n0\nLINE\n0\nENDSEC\n0\nEOF\n",
            Zcad::eDwgNeedsRecovery },
        { "block without name", "0\nSECTION\n2\nBLOCKS\n0\nBLOCK\n0\nENDBLK\n0\nENDSEC\n0\nEOF\n",
            Zcad::eDwgNeedsRecovery },
        { "section without name", "0\nSECTION\n0\nEOF\n", Zcad::eDwgNeedsRecovery },
        { "binary cut short", QByteArray("AutoCAD Binary DXF\r\n\x1a\0\0\0SECTION", 32),
            Zcad::eDwgNeedsRecovery },
    };
    for (const auto& c : cases) {
        ZcDbDatabase db(false, true);
        ASSERT_EQ(read(db, validDrawing()), Zcad::eOk);
        const size_t before = modelSpaceSize(db);
        EXPECT_EQ(read(db, c.bytes), c.status) << c.name;
        EXPECT_FALSE(db.readError().isEmpty()) << c.name;
        EXPECT_EQ(modelSpaceSize(db), before) << c.name;
    }
}

TEST(DxfRobustness, EveryTruncationFails)
{
    const QByteArray bytes = validDrawing();
    // Cutting off only the last line end still leaves a whole drawing.
    for (qsizetype cut = 0; cut < bytes.size() - 1; cut += 7) {
        ZcDbDatabase db(false, true);
        EXPECT_NE(read(db, bytes.left(cut)), Zcad::eOk) << "cut at " << cut;
    }
}

TEST(DxfRobustness, GarbageAndFlippedBytesNeverCrash)
{
    std::mt19937 random(20240611);
    const QByteArray valid = validDrawing();
    for (int round = 0; round < 300; ++round) {
        QByteArray bytes = valid;
        for (int flips = 0; flips < 8; ++flips)
            bytes[qsizetype(random() % quint32(bytes.size()))] = char(random() % 256);
        ZcDbDatabase db(false, true);
        const Zcad::ErrorStatus status = read(db, bytes);
        if (status == Zcad::eOk) {
            EXPECT_GE(db.objectCount(), 1u);
        }
    }
    QByteArray garbage(4096, '\0');
    for (char& c : garbage)
        c = char(random() % 256);
    ZcDbDatabase db(false, true);
    EXPECT_NE(read(db, garbage), Zcad::eOk);
}

TEST(DxfRobustness, EnormousCountsAreNotTrusted)
{
    const QByteArray text
        = "0\nSECTION\n2\nENTITIES\n0\nLWPOLYLINE\n90\n2147483647\n70\n1\n10\n0\n20\n0\n10\n5\n20\n5\n"
          "0\nINSERT\n2\nNOBLOCK\n66\n1\n10\n0\n20\n0\n0\nATTRIB\n2\nT\n1\nv\n70\n1\n0\nSEQEND\n"
          "0\nENDSEC\n0\nEOF\n";
    ZcDbDatabase db(false, true);
    ASSERT_EQ(read(db, text), Zcad::eOk) << db.readError().toStdString();
    const auto* model = ZcDbBlockTableRecord::cast(db.modelSpaceId().object());
    ASSERT_EQ(model->entityIndexes().size(), 2u);
    const auto ids = model->entityIds();
    const auto* polyline = ZcDbPolyline::cast(ids[0].object());
    ASSERT_NE(polyline, nullptr);
    EXPECT_EQ(polyline->numVerts(), 2);
    EXPECT_TRUE(polyline->isClosed());
    // A reference to a block that does not exist keeps its attributes; exploding it
    // gives just them.
    const auto* reference = ZcDbBlockReference::cast(ids[1].object());
    ASSERT_NE(reference, nullptr);
    EXPECT_TRUE(reference->blockTableRecord().isNull());
    ZcDbVoidPtrArray pieces;
    reference->explode(pieces);
    ASSERT_EQ(pieces.length(), 1);
    EXPECT_TRUE(ZcDbAttribute::cast(static_cast<ZcDbEntity*>(pieces.at(0)))->isInvisible());
    delete static_cast<ZcDbEntity*>(pieces.at(0));
}

// A floor's drawing that is not a regular file is refused at once, saying what it is;
// a pipe no one writes to would otherwise hold the reader for good.
TEST(DxfRobustness, OnlyRegularFilesAreRead)
{
    QTemporaryDir dir;
    const QString fifo = dir.filePath(QStringLiteral("2F.dxf"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    const struct
    {
        QString path;
        Zcad::ErrorStatus status;
        QString error;
    } cases[] = {
        { fifo, Zcad::eFileAccessErr, fifo + QStringLiteral(": a named pipe, not a regular file") },
        { dir.path(), Zcad::eFileAccessErr, dir.path() + QStringLiteral(": a folder, not a file") },
        { QStringLiteral("/dev/zero"), Zcad::eFileAccessErr,
            QStringLiteral("/dev/zero: a device, not a regular file") },
        { dir.filePath(QStringLiteral("none.dxf")), Zcad::eFileNotFound,
            dir.filePath(QStringLiteral("none.dxf: no such file")) },
    };
    for (const auto& c : cases) {
        ZcDbDatabase db(false, true);
        QElapsedTimer clock;
        clock.start();
        EXPECT_EQ(db.readDwgFile(c.path), c.status) << c.path.toStdString();
        EXPECT_LT(clock.elapsed(), 5000);
        EXPECT_EQ(db.readError(), c.error);
    }
}
