#include "ExchangeFileName.h"

#include <gtest/gtest.h>

namespace {

// A project's name and specialty come from a shared store: whatever they hold, the
// default name stays one plain file name.
TEST(ExchangeFileName, CleansWhatCouldLeadAPathElsewhere)
{
    const struct
    {
        const char16_t* project;
        const char16_t* spec;
        const char16_t* name;
    } cases[] = {
        { u"演示项目", u"电气", u"演示项目-电气" },
        { u"A.B 楼", u"给排水", u"A.B 楼-给排水" },
        { u"../../../../tmp/evil", u"电气", u"tmpevil-电气" },
        { u"..\\..\\Windows\\evil", u"电气", u"Windowsevil-电气" },
        { u"/etc/passwd", u"电气", u"etcpasswd-电气" },
        { u"a....b", u"电气", u"a.b-电气" },
        { u"C:evil", u"电气", u"Cevil-电气" },
        { u"line\nbreak\ttab\x7f", u"电气", u"linebreaktab-电气" },
        { u"bidi\u202Eexe.scn", u"电气", u"bidiexe.scn-电气" },
        { u"  .hidden. ", u"电气", u"hidden-电气" },
        { u"", u"电气", u"项目-电气" },
        { u"../..", u"电气", u"项目-电气" },
        { u"...", u"/..", u"项目-系统编号" },
        { u"P", u"../弱电", u"P-弱电" },
        { u"<>:\"|?*", u"电气", u"项目-电气" },
    };
    for (const auto& c : cases) {
        const QString name
            = DefaultExchangeFileName(QString::fromUtf16(c.project), QString::fromUtf16(c.spec));
        EXPECT_EQ(name, QString::fromUtf16(c.name)) << QString::fromUtf16(c.project).toStdString();
        EXPECT_FALSE(name.contains(u'/') || name.contains(u'\\') || name.contains(QLatin1String("..")));
    }
}

TEST(ExchangeFileName, KeepsAPartShortWithoutBreakingACharacter)
{
    const QString longName = QString(59, u'x') + QString::fromUtf16(u"😀") + QStringLiteral("tail");
    const QString part = CleanFileNamePart(longName, QStringLiteral("项目"));
    EXPECT_EQ(part, QString(59, u'x'));
    EXPECT_EQ(CleanFileNamePart(QString(100, u'名'), QString()).size(), 60);
}

} // namespace
