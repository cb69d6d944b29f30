// Fuzz target of the ".scn" readers. Whatever the input, reading must not crash; a
// tree that was read must obey every rule of the store (legal trimmed names, siblings
// distinct once trimmed, three levels, values the dialog accepts) and write out and
// read back to the same tree.
#include "CSysCodeData.h"
#include "ScnReader.h"
#include "ScnWriter.h"
#include "SysCodeNameRule.h"
#include "SysCodeValueRule.h"

#include <QBuffer>

#include <cstdint>
#include <cstdlib>

namespace {

QString dump(const CSysCodeData& node)
{
    QString text;
    for (const CSysCodeData* c : node.GetChildren()) {
        text += QStringLiteral("%1|%2|%3|%4|%5|%6|%7|%8|%9|%10|%11\n")
                    .arg(c->GetFullName())
                    .arg(c->GetNodeIndex())
                    .arg(c->GetMfcColor())
                    .arg(c->GetLineWidth(), 0, 'g', 17)
                    .arg(c->GetAlpha())
                    .arg(c->GetLineStyle(), c->GetLineString(), c->GetHorLayingMode(), c->GetVerLayingMode(),
                        c->GetAddedMsg(), c->GetDescribe());
        text += dump(*c);
    }
    return text;
}

void checkRules(const CSysCodeData& tree)
{
    if (!SysCodeNameRule::TreeProblem(tree).isEmpty())
        std::abort();
    const auto visit = [](auto&& self, const CSysCodeData& node) -> void {
        for (const CSysCodeData* c : node.GetChildren()) {
            if (c->GetNodeName() != c->GetNodeName().trimmed()
                || !SysCodeValueRule::LineWidthProblem(c->GetLineWidth()).isEmpty()
                || !SysCodeValueRule::AlphaProblem(c->GetAlpha()).isEmpty()
                || !SysCodeValueRule::ColorProblem(c->GetMfcColor()).isEmpty())
                std::abort();
            self(self, *c);
        }
    };
    visit(visit, tree);
}

void checkRoundTrip(const CSysCodeData& tree)
{
    QByteArray bytes;
    QBuffer out(&bytes);
    out.open(QIODevice::WriteOnly);
    if (!ScnWriter::Write(tree, QStringLiteral("电气"), QStringLiteral("3.2.0"), out))
        return; // text the XML writer cannot carry (control characters)
    out.close();
    QBuffer in(&bytes);
    in.open(QIODevice::ReadOnly);
    CSysCodeData back;
    if (!ScnReader::Read(in, back, nullptr) || dump(back) != dump(tree))
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(data), qsizetype(size));
    for (const bool legacy : { false, true }) {
        QBuffer in;
        in.setData(bytes);
        in.open(QIODevice::ReadOnly);
        CSysCodeData tree;
        const bool ok
            = legacy ? ScnReader::ReadLegacy(in, tree, nullptr) : ScnReader::Read(in, tree, nullptr);
        if (ok) {
            checkRules(tree);
            checkRoundTrip(tree);
        } else if (tree.GetChildCount() != 0)
            std::abort(); // a refused file must leave the tree untouched
    }
    QBuffer in;
    in.setData(bytes);
    in.open(QIODevice::ReadOnly);
    ScnReader::DetectLayout(in);
    return 0;
}
