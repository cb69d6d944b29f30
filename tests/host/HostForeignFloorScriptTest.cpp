// A floor drawn by another program, opened in qvhost as a drafter does it (the
// floor command typed on the command line): what the reader passed over and the
// kinds the view cannot draw are said once on the command line, and what it can
// draw (an ellipse kept only as its groups) shows in the view.
#include "HostFixture.h"

#include <QFile>

namespace {
// A colour nothing on the demo floors is drawn in.
constexpr QRgb kOwnColour = 0x12AB34;

// A drawing with a stray group between two sections, two entities of a kind no
// one draws here, an ellipse round a filled square of a colour of its own.
QByteArray ForeignDrawing()
{
    return "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1015\n0\nENDSEC\n"
           "9\n$STRAY\n70\n1\n"
           "0\nSECTION\n2\nENTITIES\n"
           "0\nWIPEOUT\n8\n0\n10\n0\n20\n0\n"
           "0\nWIPEOUT\n8\n0\n10\n5\n20\n5\n"
           "0\nSOLID\n8\n0\n420\n1223476\n10\n-100\n20\n-100\n11\n100\n21\n-100\n12\n-"
           "100\n22\n100\n13\n100\n23\n100\n"
           "0\nELLIPSE\n8\n0\n10\n0\n20\n0\n30\n0\n11\n500\n21\n0\n31\n0\n40\n0.5\n41\n0\n42\n"
           "6.283185307179586\n"
           "0\nENDSEC\n0\nEOF\n";
}
} // namespace

TEST_F(HostFixture, AFloorFromAnotherProgramSaysWhatItCannotShowOnce)
{
    // The second floor's drawing is replaced by the foreign one.
    ASSERT_EQ(Run(QStringLiteral("command floor 2F\nexpect 当前楼层: 2F")), "");
    const QString drawing = session.DrawingFile();
    ASSERT_EQ(Run(QStringLiteral("command floor 1F")), "");
    {
        QFile out(drawing);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly | QIODevice::Truncate));
        out.write(ForeignDrawing());
    }
    EXPECT_EQ(CountPixels(kOwnColour), 0);

    EXPECT_EQ(Run(QStringLiteral("command floor 2F\n"
                                 "expect 当前楼层: 2F\n"
                                 "expect 未显示: 2 个 WIPEOUT\n"
                                 "expect 读图时跳过: skipped 2 group(s) between sections")),
        "");
    EXPECT_GT(CountPixels(kOwnColour), 200);
    // A regeneration draws again but does not say it again.
    EXPECT_EQ(Run(QStringLiteral("command regen")), "");
    EXPECT_EQ(History().count(QStringLiteral("未显示: 2 个 WIPEOUT")), 1) << History().toStdString();
}
