#include "UniqueSysName.h"

#include <QSet>

namespace {

bool IsAsciiLetter(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

} // namespace

bool MakeUniqueSysName(const QString& proposal, const QStringList& present, QString& out)
{
    if (proposal.isEmpty() || !IsAsciiLetter(proposal.back()))
        return false;
    QSet<QString> taken;
    taken.reserve(present.size());
    for (const QString& name : present)
        taken.insert(name.toCaseFolded());

    // The last character stays an ASCII letter throughout, so each step either
    // raises it or lengthens the name: the loop ends once past every present name.
    QString name = proposal;
    while (taken.contains(name.toCaseFolded())) {
        QChar& last = name.back();
        if (last == u'z')
            name.append(u'a');
        else if (last == u'Z')
            name.append(u'A');
        else
            last = QChar(last.unicode() + 1);
    }
    out = name;
    return true;
}
