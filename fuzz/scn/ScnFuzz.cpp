// Fuzz target of the ".scn" readers. Whatever the input, reading must not crash,
// and a tree that was read must write out and read back to the same tree.
#include "CSysCodeData.h"
#include "ScnReader.h"
#include "ScnWriter.h"

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
        if (ok)
            checkRoundTrip(tree);
        else if (tree.GetChildCount() != 0)
            std::abort(); // a refused file must leave the tree untouched
    }
    QBuffer in;
    in.setData(bytes);
    in.open(QIODevice::ReadOnly);
    ScnReader::DetectLayout(in);
    return 0;
}
