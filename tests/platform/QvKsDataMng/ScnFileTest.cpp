// ".scn" files: round trips, refused files, version stamps and the upgrade of the
// older layout.
#include "CISysCode.h"
#include "CQvKsVersion.h"
#include "QvKsXmlVertion.h"
#include "TempProject.h"

namespace {

// Two top-level codes, three levels deep, Chinese text, names at the 50-unit limit
// (one of them made of surrogate pairs) and every attribute set.
void buildTree(CSysCodeData& root)
{
    CSysCodeData* water = addCode(root, QStringLiteral("生活给水"), 1);
    CSysCodeData* zone = addCode(*water, QString(50, QChar(0x533A)), 2);
    QString pairs;
    for (int i = 0; i < 25; ++i)
        pairs += QString::fromUtf16(u"\U0002070E");
    addCode(*zone, pairs, 3);
    addCode(root, QStringLiteral("A \"quoted\" <tagged>"), 9);
    int seed = 0;
    for (CSysCodeData* top : root.GetChildren()) {
        fillAttributes(*top, ++seed);
        for (CSysCodeData* child : top->GetChildren()) {
            fillAttributes(*child, ++seed);
            for (CSysCodeData* leaf : child->GetChildren())
                fillAttributes(*leaf, ++seed);
        }
    }
    water->SetLineWidth(0.1 + 0.2); // needs all 17 digits to come back
    water->SetMfcColor(0x00FFFFFF);
    water->SetAlpha(100);
    zone->SetLineWidth(-1); // not set
}

const char* const kLegacy = R"(<?xml version="1.0" encoding="UTF-8"?>
<SysCodeData Version="2.5.1">
  <SysNode>
    <Name>生活给水</Name><Index>4</Index><Color>255,128,0</Color><Width>0.35</Width>
    <Transparency>20</Transparency><LineType>按字符</LineType><LineChars>J</LineChars>
    <HorLay>沿墙明敷</HorLay><VerLay>竖井内敷设</VerLay><PipeInfo>给排水\管道\给水管\PP-R管 De25</PipeInfo>
    <Remark>市政直供</Remark>
    <SubNodes>
      <SysNode><Name>低区</Name><Index>7</Index><Color>0,0,255</Color><Width>1</Width></SysNode>
    </SubNodes>
  </SysNode>
  <SysNode><Name>雨水</Name><Index>5</Index></SysNode>
</SysCodeData>
)";

struct ScnFile : ::testing::Test
{
    QTemporaryDir dir;
    QString Path(const char* name) const { return dir.path() + QLatin1Char('/') + QString::fromUtf8(name); }
};

TEST_F(ScnFile, ExportedTreeImportsBackWithEveryAttribute)
{
    CSysCodeData root;
    buildTree(root);
    const QString file = Path("电气.scn");
    ASSERT_TRUE(root.ExportData(file, QStringLiteral("电气")));
    CSysCodeData back;
    addCode(back, QStringLiteral("replaced"));
    ASSERT_TRUE(back.ImportData(file)) << QvKsDataMng::LastError().toStdString();
    EXPECT_EQ(dumpTree(back), dumpTree(root));
    EXPECT_EQ(back.FindByFullName(QStringLiteral("replaced")), nullptr);
    QString version;
    ASSERT_TRUE(QvKsXmlVertion::GetXmlVersion(version, file));
    EXPECT_EQ(version, CQvKsVersion::Current().ToString());
}

TEST_F(ScnFile, EmptyTreeRoundTripsToAnEmptyTree)
{
    CSysCodeData empty;
    ASSERT_TRUE(empty.ExportData(Path("empty.scn"), QString()));
    CSysCodeData back;
    addCode(back, QStringLiteral("x"));
    ASSERT_TRUE(back.ImportData(Path("empty.scn")));
    EXPECT_EQ(back.GetChildCount(), 0);
}

TEST_F(ScnFile, BrokenOrHostileFilesAreRefusedAndTheTreeIsUntouched)
{
    CSysCodeData reference;
    buildTree(reference);
    ASSERT_TRUE(reference.ExportData(Path("good.scn"), QString()));
    const QByteArray good = readBytes(Path("good.scn"));
    const QByteArray code = R"(<Code Name="A"/>)";
    auto wrap
        = [](const QByteArray& body) { return "<SysCodeFile Version=\"3.2.0\">" + body + "</SysCodeFile>"; };
    const struct
    {
        const char* what;
        QByteArray bytes;
    } cases[] = {
        { "empty file", QByteArray() },
        { "not XML", "just text" },
        { "truncated", good.left(good.size() / 2) },
        { "wrong root", "<Other Version=\"3.2.0\"/>" },
        { "old layout not upgraded", kLegacy },
        { "entity expansion",
            "<?xml version=\"1.0\"?><!DOCTYPE r [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b "
            "\"&a;&a;&a;&a;&a;&a;\">]>"
                + wrap("<Code Name=\"&b;\"/>") },
        { "external entity",
            "<!DOCTYPE r [<!ENTITY x SYSTEM \"file:///etc/passwd\">]>" + wrap("<Code Name=\"&x;\"/>") },
        { "undeclared entity", wrap("<Code Name=\"&nope;\"/>") },
        { "four levels",
            wrap(R"(<Code Name="1"><Code Name="2"><Code Name="3"><Code Name="4"/></Code></Code></Code>)") },
        { "sibling duplicate", wrap(code + code) },
        { "backslash in name", wrap(R"(<Code Name="a\b"/>)") },
        { "blank name", wrap(R"(<Code Name="  "/>)") },
        { "51-unit name", wrap("<Code Name=\"" + QByteArray(51, 'n') + "\"/>") },
        { "colour out of range", wrap(R"(<Code Name="A" Color="16777216"/>)") },
        { "width not a number", wrap(R"(<Code Name="A" LineWidth="wide"/>)") },
        { "width infinite", wrap(R"(<Code Name="A" LineWidth="inf"/>)") },
        { "huge attribute", wrap("<Code Name=\"A\" Describe=\"" + QByteArray(5000, 'd') + "\"/>") },
        { "text in a code", wrap(R"(<Code Name="A">text</Code>)") },
        { "foreign element", wrap(R"(<Code Name="A"><Other/></Code>)") },
        { "content after root", wrap(code) + "<More/>" },
        { "processing instruction", wrap("<?run me?>" + code) },
        // What no cell of the dialog would take.
        { "newline in a name", wrap(R"(<Code Name="照明&#10;回路"/>)") },
        { "tab in a name", wrap(R"(<Code Name="照明&#9;回路"/>)") },
        { "DEL in a name", wrap(R"(<Code Name="WL&#127;"/>)") },
        { "zero-width space in a name",
            wrap("<Code Name=\"WL\xE2\x80\x8B"
                 "1\"/>") },
        { "right-to-left mark in a name", wrap(R"(<Code Name="WL1&#x200F;"/>)") },
        { "siblings one once trimmed",
            wrap(R"(<Code Name="重复"/><Code Name="重复 "/><Code Name=" 重复"/>)") },
        { "transparency too high", wrap(R"(<Code Name="A" Alpha="99999"/>)") },
        { "transparency below zero", wrap(R"(<Code Name="A" Alpha="-7"/>)") },
        { "width too large", wrap(R"(<Code Name="A" LineWidth="1e308"/>)") },
        { "width below zero", wrap(R"(<Code Name="A" LineWidth="-30"/>)") },
        { "old layout transparency", QByteArray(kLegacy).replace("<Transparency>20", "<Transparency>101") },
    };
    for (const auto& c : cases) {
        ASSERT_TRUE(writeBytes(Path("bad.scn"), c.bytes));
        CSysCodeData tree;
        buildTree(tree);
        EXPECT_FALSE(tree.ImportData(Path("bad.scn"))) << c.what;
        EXPECT_EQ(dumpTree(tree), dumpTree(reference)) << c.what;
    }
    CSysCodeData tree;
    EXPECT_FALSE(tree.ImportData(Path("missing.scn")));
}

// A value or a name refused says where: the line, the code and what is wrong.
TEST_F(ScnFile, RefusalsNameTheLineAndTheFault)
{
    const struct
    {
        QByteArray body;
        const char* expected;
    } cases[] = {
        { "<Code Name=\"A\"/>\n<Code Name=\"B\" Alpha=\"99999\"/>",
            "line 3: the code \"B\": the transparency 99999 is outside 0 to 100" },
        { "<Code Name=\"A\">\n<Code Name=\"B\" LineWidth=\"-30\"/></Code>",
            "line 3: the code \"B\": the line width -30 is outside 0 to 100 mm" },
        { "\n<Code Name=\"照明&#10;回路\"/>",
            "line 3: the code name \"照明\\u000a回路\" is not legal: the name holds the control or invisible "
            "character U+000A" },
        { "<Code Name=\"重复\"/>\n\n<Code Name=\" 重复\"/>",
            "line 4: the code \"重复\" appears twice at one level" },
    };
    for (const auto& c : cases) {
        ASSERT_TRUE(
            writeBytes(Path("bad.scn"), "<SysCodeFile Version=\"3.2.0\">\n" + c.body + "\n</SysCodeFile>\n"));
        CSysCodeData tree;
        EXPECT_FALSE(tree.ImportData(Path("bad.scn")));
        EXPECT_TRUE(QvKsDataMng::LastError().endsWith(QString::fromUtf8(c.expected)))
            << QvKsDataMng::LastError().toStdString();
    }
}

// Names come in trimmed; the file's specialty is told; -1 leaves a width unset.
TEST_F(ScnFile, NamesAreTakenTrimmedAndTheSpecialtyIsTold)
{
    ASSERT_TRUE(writeBytes(Path("in.scn"),
        "<SysCodeFile Version=\"3.2.0\" Spec=\"给排水\"><Code Name=\" 生活给水 \" LineWidth=\"-1\">"
        "<Code Name=\"&#9;低区\"/></Code></SysCodeFile>"));
    CSysCodeData tree;
    QString spec;
    ASSERT_TRUE(tree.ImportData(Path("in.scn"), &spec)) << QvKsDataMng::LastError().toStdString();
    EXPECT_EQ(spec, QStringLiteral("给排水"));
    ASSERT_NE(tree.FindByFullName(QStringLiteral("生活给水\\低区")), nullptr);
    EXPECT_EQ(tree.GetChild(0)->GetLineWidth(), -1.0);
    ASSERT_TRUE(writeBytes(Path("none.scn"), "<SysCodeFile Version=\"3.2.0\"/>"));
    EXPECT_TRUE(tree.ImportData(Path("none.scn"), &spec));
    EXPECT_TRUE(spec.isEmpty());
}

TEST_F(ScnFile, ExportOverAnUnwritablePlaceFailsAndKeepsTheOldFile)
{
    CSysCodeData root;
    buildTree(root);
    EXPECT_FALSE(root.ExportData(Path("no/such/folder/x.scn"), QString()));
    ASSERT_TRUE(writeBytes(Path("old.scn"), "old"));
    QFile::setPermissions(dir.path(), QFile::ReadOwner | QFile::ExeOwner);
    const bool wrote = root.ExportData(Path("old.scn"), QString());
    QFile::setPermissions(dir.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    if (!wrote) { // root may write anywhere; the check only holds for ordinary users
        EXPECT_EQ(readBytes(Path("old.scn")), QByteArray("old"));
    }
}

TEST_F(ScnFile, VersionStampIsReadAndReplacedKeepingTheCodes)
{
    CSysCodeData root;
    buildTree(root);
    const QString file = Path("v.scn");
    ASSERT_TRUE(root.ExportData(file, QStringLiteral("电气")));
    ASSERT_TRUE(QvKsXmlVertion::SetXmlVersion(QStringLiteral("9.0.1"), file));
    QString version;
    ASSERT_TRUE(QvKsXmlVertion::GetXmlVersion(version, file));
    EXPECT_EQ(version, QStringLiteral("9.0.1"));
    CSysCodeData back;
    ASSERT_TRUE(back.ImportData(file));
    EXPECT_EQ(dumpTree(back), dumpTree(root));

    ASSERT_TRUE(writeBytes(Path("plain.xml"), "<Root/>"));
    EXPECT_FALSE(QvKsXmlVertion::GetXmlVersion(version, Path("plain.xml")));
    ASSERT_TRUE(QvKsXmlVertion::SetXmlVersion(QStringLiteral("1.0.0"), Path("plain.xml")));
    EXPECT_TRUE(QvKsXmlVertion::GetXmlVersion(version, Path("plain.xml")));
    EXPECT_EQ(version, QStringLiteral("1.0.0"));

    ASSERT_TRUE(writeBytes(Path("broken.scn"), "<a><b></a>"));
    EXPECT_FALSE(QvKsXmlVertion::SetXmlVersion(QStringLiteral("1.0.0"), Path("broken.scn")));
    EXPECT_EQ(readBytes(Path("broken.scn")), QByteArray("<a><b></a>"));
    EXPECT_FALSE(QvKsXmlVertion::GetXmlVersion(version, Path("missing.scn")));
}

TEST_F(ScnFile, OlderLayoutIsConvertedInPlace)
{
    const QString file = Path("old.scn");
    ASSERT_TRUE(writeBytes(file, kLegacy));
    ASSERT_TRUE(CISysCode::UpdataSysData(file)) << QvKsDataMng::LastError().toStdString();
    QString version;
    ASSERT_TRUE(QvKsXmlVertion::GetXmlVersion(version, file));
    EXPECT_EQ(version, CQvKsVersion::Current().ToString());
    CSysCodeData back;
    ASSERT_TRUE(back.ImportData(file));
    EXPECT_EQ(dumpTree(back),
        (QStringList {
            QStringLiteral("生活给水|4|33023|0.35|20|按字符|J|沿墙明敷|竖井内敷设|给排水\\管道\\给水管\\PP-"
                           "R管 De25|市政直供"),
            QStringLiteral("生活给水\\低区|7|16711680|1|0||||||"), QStringLiteral("雨水|5|0|0|0||||||") }));
    // A file already in the current layout is left byte for byte.
    const QByteArray converted = readBytes(file);
    EXPECT_TRUE(CISysCode::UpdataSysData(file));
    EXPECT_EQ(readBytes(file), converted);
}

TEST_F(ScnFile, BrokenOlderFilesAreNotConverted)
{
    const QByteArray cases[] = {
        QByteArray(kLegacy).replace("255,128,0", "255,128"),
        QByteArray(kLegacy).replace("</SysCodeData>", ""),
        QByteArray(kLegacy).replace("<Remark>", "<Unknown>x</Unknown><Remark>"),
        QByteArray("<Other/>"),
        QByteArray(),
    };
    for (const QByteArray& bytes : cases) {
        ASSERT_TRUE(writeBytes(Path("old.scn"), bytes));
        EXPECT_FALSE(CISysCode::UpdataSysData(Path("old.scn"))) << bytes.toStdString();
        EXPECT_EQ(readBytes(Path("old.scn")), bytes);
    }
    EXPECT_FALSE(CISysCode::UpdataSysData(Path("missing.scn")));
}

} // namespace
