// The reader's string pool: every text reads back as its bytes decode, texts that
// come again share one string, and a drawing whose texts never repeat (one code per
// pipe) neither grows the pool without end nor loses the repeated ones.
#include "DxfEntityParser.h"
#include "DxfTextCodec.h"

#include <gtest/gtest.h>

#include <string>

namespace {
std::string utf8(const QString& text)
{
    return text.toUtf8().toStdString();
}
} // namespace

TEST(DxfStringPool, TextsReadBackAsDecodedAndRepeatedOnesAreShared)
{
    DxfTextCodec codec;
    codec.configure(QStringLiteral("AC1032"), QString());
    DxfStringPool pool(codec);
    const QString layers[] = { QStringLiteral("QV_管线"), QStringLiteral("房间名称"), QStringLiteral("0"),
        QStringLiteral("QVKS"), QStringLiteral("给排水"), QStringLiteral("PIPE") };
    QString first[6];
    // Far more distinct texts than the pool holds, between the repeated ones.
    for (int n = 0; n < 60000; ++n) {
        const QString path = QStringLiteral("3\\%1").arg(n);
        ASSERT_EQ(pool.get(utf8(path)), path) << n;
        const int which = n % 6 == 5 ? n % 5 : n % 6;
        const QString layer = pool.get(utf8(layers[which]));
        ASSERT_EQ(layer, layers[which]) << n;
        if (n < 6) {
            first[which] = layer;
        } else if (n > 100) {
            EXPECT_TRUE(layer.isSharedWith(first[which])) << n;
        }
    }
    const std::string longText(200, 'x');
    EXPECT_EQ(pool.get(longText), QString::fromStdString(longText));
    EXPECT_EQ(pool.get(longText), QString::fromStdString(longText));
    EXPECT_EQ(pool.get(std::string()), QString());
}

TEST(DxfStringPool, TextsDecodeInTheDrawingsCodePage)
{
    DxfTextCodec codec;
    codec.configure(QStringLiteral("AC1015"), QStringLiteral("ANSI_936"));
    DxfStringPool pool(codec);
    const QString text = QStringLiteral("卫生间");
    const QByteArray gbk = codec.encode(text);
    const std::string bytes(gbk.constData(), size_t(gbk.size()));
    for (int n = 0; n < 5; ++n)
        EXPECT_EQ(pool.get(bytes), text);
}
