#include "SysCodeCsv.h"

#include "CSysCodeData.h"

#include <gtest/gtest.h>

#include <tuple>

namespace {
using namespace Qt::StringLiterals;

CSysCodeData* add(CSysCodeData& parent, const QString& name, COLORREF colour = 0x0000FF)
{
    auto* node = new CSysCodeData;
    node->SetNodeName(name);
    node->SetMfcColor(colour);
    node->SetLineWidth(30);
    node->SetLineStyle(u"按字符"_s);
    int counter = 0;
    parent.AddDataToChild(counter, node, false);
    return node;
}

QByteArray utf8(const QString& text)
{
    return text.toUtf8();
}

TEST(Csv, RecordsKeepQuotesLineBreaksAndTheirStartingLine)
{
    const std::tuple<QByteArray, QList<CsvRecord>> cases[] = {
        { "a,b\r\nc,d\r\n", { { 1, { "a", "b" } }, { 2, { "c", "d" } } } },
        { "\xEF\xBB\xBF"
          "a,b\nc,d",
            { { 1, { "a", "b" } }, { 2, { "c", "d" } } } },
        { "\"x,y\",\"say \"\"hi\"\"\"\n", { { 1, { "x,y", "say \"hi\"" } } } },
        { "\"two\nlines\",z\r\nnext,\n", { { 1, { "two\nlines", "z" } }, { 3, { "next", "" } } } },
        { "a,,\n\n\nb", { { 1, { "a", "", "" } }, { 4, { "b" } } } },
        { "\"open,never closed\n", { { 1, { "open,never closed\n" } } } },
    };
    for (const auto& [data, expected] : cases) {
        const QList<CsvRecord> records = ParseCsv(data);
        ASSERT_EQ(records.size(), expected.size()) << data.toStdString();
        for (qsizetype i = 0; i < records.size(); ++i) {
            EXPECT_EQ(records[i].line, expected[i].line) << data.toStdString();
            EXPECT_EQ(records[i].fields, expected[i].fields) << data.toStdString();
        }
    }
}

TEST(Csv, AnExportedSpecialtyReadsBackWhole)
{
    CSysCodeData root;
    CSysCodeData* lighting = add(root, u"照明"_s, 0x00FFFF);
    lighting->SetAddedMsg(u"电气\\配管\\SC20"_s);
    lighting->SetHorLayingMode(u"CC"_s);
    lighting->SetDescribe(u"一般照明, \"走道\""_s);
    CSysCodeData* wl1 = add(*lighting, u"WL1"_s, 0x123456);
    wl1->SetLineString(u"WL"_s);
    wl1->SetLineWidth(2.5);
    wl1->SetAlpha(30);
    add(*wl1, u"一层"_s);
    add(root, u"动力"_s, 0xFF0000);

    const QByteArray csv = WriteSysCodeCsv(root, [](COLORREF c) { return c == 0x00FFFF ? 2 : 0; });
    ASSERT_TRUE(csv.startsWith("\xEF\xBB\xBF"));
    const QList<CsvRecord> records = ParseCsv(csv);
    ASSERT_EQ(records.size(), 5);
    EXPECT_EQ(records[0].fields, SysCodeCsvColumns());
    EXPECT_EQ(records[1].fields.mid(0, 3), (QStringList { u"照明"_s, u"255,255,0"_s, u"2"_s }));
    EXPECT_EQ(records[3].fields[0], u"照明\\WL1\\一层"_s);

    CSysCodeData empty;
    CSysCodeData imported;
    QList<SysCodeCsvRefusal> refused;
    QString error;
    ASSERT_TRUE(ReadSysCodeCsv(csv, empty, {}, imported, refused, error));
    EXPECT_TRUE(refused.isEmpty());
    for (const CSysCodeData* code :
        { lighting, wl1, root.FindByFullName(u"照明\\WL1\\一层"_s), root.FindByFullName(u"动力"_s) }) {
        const CSysCodeData* back = imported.FindByFullName(code->GetFullName());
        ASSERT_NE(back, nullptr) << code->GetFullName().toStdString();
        EXPECT_EQ(back->GetMfcColor(), code->GetMfcColor());
        EXPECT_EQ(back->GetAddedMsg(), code->GetAddedMsg());
        EXPECT_EQ(back->GetHorLayingMode(), code->GetHorLayingMode());
        EXPECT_EQ(back->GetLineStyle(), code->GetLineStyle());
        EXPECT_EQ(back->GetLineString(), code->GetLineString());
        EXPECT_EQ(back->GetLineWidth(), code->GetLineWidth());
        EXPECT_EQ(back->GetAlpha(), code->GetAlpha());
        EXPECT_EQ(back->GetDescribe(), code->GetDescribe());
    }
    EXPECT_EQ(imported.GetChild(0)->GetNodeName(), u"照明"_s);
}

// A hand-made sheet: columns in another order, one missing, one unknown; rows in
// any order; every kind of bad row, each refused alone with its line and reason.
TEST(Csv, AHandMadeSheetTakesTheGoodRowsAndSaysWhyOthersWereLeft)
{
    CSysCodeData existing;
    CSysCodeData* lighting = add(existing, u"照明"_s, 0x00FFFF);
    lighting->SetAddedMsg(u"电气\\配管\\SC20"_s);
    add(*lighting, u"WL1"_s);
    add(existing, u"WS"_s);

    const QByteArray sheet = utf8(u"备注,系统编号,颜色,说明,线宽\n" // 1
                                  u"新的,照明,\"0,255,0\",x,5\n" // 2: no 管线信息 column: kept
                                  u",照明\\WL2\\一层,,,\n" // 3: after its parent
                                  u",照明\\WL2,,,\n" // 4
                                  u",A/B,,,\n" // 5
                                  u",照明\\WL1\\一层\\更深,,,\n" // 6
                                  u",照明\\WL2,,,\n" // 7: again
                                  u",ws,,,\n" // 8: WS exists
                                  u",消防\\一区,,,\n" // 9: no 消防
                                  u",插座,\"300,0,0\",,\n" // 10
                                  u",插座,,,101\n" // 11
                                  u"a&b,插座,,,\n" // 12
                                  u",,,,\n" // blank
                                  u",插座,,,2.5\n"_s); // 14
    CSysCodeData imported;
    QList<SysCodeCsvRefusal> refused;
    QString error;
    ASSERT_TRUE(ReadSysCodeCsv(sheet, existing, {}, imported, refused, error));
    QStringList report;
    for (const SysCodeCsvRefusal& r : refused)
        report << QString::number(r.line) + u": "_s + r.reason;
    EXPECT_EQ(report,
        (QStringList { u"5: 系统编号为空、过长或含有 \\ / & ' 或为 SYS：A/B"_s,
            u"6: 系统编号不允许超过3级：照明\\WL1\\一层\\更深"_s, u"7: 与第 4 行的 照明\\WL2 重复"_s,
            u"8: 与已有系统编号 WS 仅大小写不同"_s, u"9: 上级系统编号不存在：消防"_s,
            u"10: 颜色应为 R,G,B（0-255）：300,0,0"_s, u"11: 线宽支持范围0-100：101"_s,
            u"12: 备注信息中包含以下不能使用的字符：&/\\"_s }));
    const CSysCodeData* taken = imported.FindByFullName(u"照明"_s);
    ASSERT_NE(taken, nullptr);
    EXPECT_EQ(taken->GetMfcColor(), 0x00FF00u);
    EXPECT_EQ(taken->GetLineWidth(), 5.0);
    EXPECT_EQ(taken->GetDescribe(), u"新的"_s);
    EXPECT_EQ(taken->GetAddedMsg(), u"电气\\配管\\SC20"_s); // the missing column kept it
    ASSERT_NE(imported.FindByFullName(u"照明\\WL2\\一层"_s), nullptr);
    EXPECT_EQ(imported.FindByFullName(u"照明\\WL2"_s)->GetLineStyle(), u"按字符"_s);
    EXPECT_EQ(imported.FindByFullName(u"插座"_s)->GetLineWidth(), 2.5);
}

TEST(Csv, ASheetWithoutTheCodeColumnIsRefusedWhole)
{
    for (const QByteArray& sheet :
        { QByteArray(), QByteArray("名称,颜色\nA,1\n"), QByteArray("\xEF\xBB\xBF") }) {
        CSysCodeData existing;
        CSysCodeData imported;
        QList<SysCodeCsvRefusal> refused;
        QString error;
        EXPECT_FALSE(ReadSysCodeCsv(sheet, existing, {}, imported, refused, error));
        EXPECT_EQ(error, u"表格第一行应为列标题，且含有“系统编号”列"_s);
        EXPECT_EQ(imported.GetChildCount(), 0);
    }
}

// Hostile rows of a sheet: each is refused alone with its line and the reason, and
// the good row before it still comes in.
TEST(Csv, HostileNamesAndValuesAreRefusedWithTheirLine)
{
    const auto hidden = [](const char* code) {
        return u"系统编号中包含不可见的字符或控制字符（U+"_s + QLatin1String(code) + u"）"_s;
    };
    const std::pair<QByteArray, QString> cases[] = {
        { "\"照明\n回路\",,", hidden("000A") },
        { "照明\t回路,,", hidden("0009") },
        { "WL\x7F,,", hidden("007F") },
        { "WL\xE2\x80\x8B"
          "1,,",
            hidden("200B") }, // a zero-width space
        { "WL1\xE2\x80\x8F,,", hidden("200F") }, // a right-to-left mark
        { "A\xE2\x80\xA8"
          "B,,",
            hidden("2028") }, // a line separator
        { "照明\\W\xE2\x80\x8B,,", hidden("200B") },
        { "A,99999,", u"透明度仅支持0-100的整数：99999"_s },
        { "A,-7,", u"透明度仅支持0-100的整数：-7"_s },
        { "A,,1e308", u"线宽支持范围0-100：1e308"_s },
        { "A,,-30", u"线宽支持范围0-100：-30"_s },
        { "A,,nan", u"线宽支持范围0-100：nan"_s },
    };
    for (const auto& [row, reason] : cases) {
        const QByteArray sheet = "系统编号,透明度,线宽\n好,5,2\n" + row + "\n";
        CSysCodeData existing;
        CSysCodeData imported;
        QList<SysCodeCsvRefusal> refused;
        QString error;
        ASSERT_TRUE(ReadSysCodeCsv(sheet, existing, {}, imported, refused, error)) << row.toStdString();
        ASSERT_EQ(refused.size(), 1) << row.toStdString();
        EXPECT_EQ(refused[0].line, 3) << row.toStdString();
        EXPECT_EQ(refused[0].reason, reason) << row.toStdString();
        ASSERT_EQ(imported.GetChildCount(), 1) << row.toStdString();
        EXPECT_EQ(imported.GetChild(0)->GetNodeName(), u"好"_s);
    }
}

TEST(Csv, NamesAreOneOnceTrimmedAndAnUnsetWidthIsTaken)
{
    const QByteArray sheet = "系统编号,线宽\n重复,-1\n重复 ,\n\" 重复\",\n重复\\ 子 ,\n";
    CSysCodeData existing;
    CSysCodeData imported;
    QList<SysCodeCsvRefusal> refused;
    QString error;
    ASSERT_TRUE(ReadSysCodeCsv(sheet, existing, {}, imported, refused, error));
    QStringList report;
    for (const SysCodeCsvRefusal& r : refused)
        report << QString::number(r.line) + u": "_s + r.reason;
    EXPECT_EQ(report, (QStringList { u"3: 与第 2 行的 重复 重复"_s, u"4: 与第 2 行的 重复 重复"_s }));
    ASSERT_EQ(imported.GetChildCount(), 1);
    EXPECT_EQ(imported.GetChild(0)->GetNodeName(), u"重复"_s);
    EXPECT_EQ(imported.GetChild(0)->GetLineWidth(), -1.0);
    ASSERT_NE(imported.FindByFullName(u"重复\\子"_s), nullptr);
}

// A sheet in a local code page, or with bytes that are no text, is refused whole,
// naming the line, before any row is taken.
TEST(Csv, ASheetThatIsNotUtf8IsRefusedWholeNamingTheLine)
{
    const std::pair<QByteArray, int> cases[] = {
        { "系统编号\nA\n\xD5\xD5\xC3\xF7\n", 3 }, // GBK
        { "系统编号\n\xC0\x80\n", 2 }, // an overlong NUL
        { "系统编号\nA\xED\xA0\x80\n", 2 }, // a surrogate
        { "系统编号\nB\n\n\xF4\x90\x80\x80\n", 4 }, // past U+10FFFF
        { "系统编号\nA\xE7\x85", 2 }, // cut inside a character
        { "\xFF\xFE\x00\x00", 1 },
    };
    for (const auto& [sheet, line] : cases) {
        CSysCodeData existing;
        CSysCodeData imported;
        QList<SysCodeCsvRefusal> refused;
        QString error;
        EXPECT_FALSE(ReadSysCodeCsv(sheet, existing, {}, imported, refused, error)) << line;
        EXPECT_EQ(error, u"第 %1 行不是 UTF-8 文本，请另存为 CSV（UTF-8）后再导入"_s.arg(line));
        EXPECT_EQ(imported.GetChildCount(), 0);
    }
}

TEST(Csv, AHundredThousandRowsAreRead)
{
    QByteArray sheet = "系统编号,线宽\n";
    for (int i = 0; i < 100000; ++i)
        sheet += "S" + QByteArray::number(i / 1000) + (i % 1000 ? "\\W" + QByteArray::number(i % 1000) : "")
            + ",1\n";
    CSysCodeData existing;
    CSysCodeData imported;
    QList<SysCodeCsvRefusal> refused;
    QString error;
    ASSERT_TRUE(ReadSysCodeCsv(sheet, existing, {}, imported, refused, error));
    EXPECT_TRUE(refused.isEmpty());
    EXPECT_EQ(imported.GetChildCount(), 100);
    EXPECT_EQ(imported.GetChild(99)->GetChildCount(), 999);
}
} // namespace
