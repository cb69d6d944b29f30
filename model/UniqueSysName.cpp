#include "UniqueSysName.h"

#include "CQVCheckSysNameLegal.h"

namespace {

bool IsAsciiLetter(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

QSet<QString> FoldedSet(const QStringList& names)
{
    QSet<QString> folded;
    folded.reserve(names.size());
    for (const QString& name : names)
        folded.insert(name.toCaseFolded());
    return folded;
}

// The last character stays an ASCII letter throughout, so each step either raises it
// or lengthens the name: the loop ends once past every taken name.
QString StepLetters(QString name, const QSet<QString>& taken)
{
    while (taken.contains(name.toCaseFolded())) {
        QChar& last = name.back();
        if (last == u'z')
            name.append(u'a');
        else if (last == u'Z')
            name.append(u'A');
        else
            last = QChar(last.unicode() + 1);
    }
    return name;
}

QString StepNumber(const QString& name, const QSet<QString>& taken)
{
    QString base = name;
    int number = 0;
    SplitSysNameNumber(name, base, number);
    QString candidate = name;
    while (taken.contains(candidate.toCaseFolded()))
        candidate = base + QString::number(++number);
    return candidate;
}

QString MakeUnique(const QString& candidate, const QSet<QString>& taken)
{
    if (!candidate.isEmpty() && IsAsciiLetter(candidate.back()))
        return StepLetters(candidate, taken);
    return StepNumber(candidate, taken);
}

// Everything up to and including the last "&"; empty for a top-level name.
QString ParentPart(const QString& fullName)
{
    const qsizetype amp = fullName.lastIndexOf(u'&');
    return amp < 0 ? QString() : fullName.left(amp + 1);
}

QString LastLevel(const QString& fullName)
{
    return fullName.mid(fullName.lastIndexOf(u'&') + 1);
}

} // namespace

bool MakeUniqueSysName(const QString& proposal, const QStringList& present, QString& out)
{
    if (proposal.isEmpty() || !IsAsciiLetter(proposal.back()))
        return false;
    out = StepLetters(proposal, FoldedSet(present));
    return true;
}

bool SplitSysNameNumber(const QString& name, QString& base, int& number)
{
    if (name.isEmpty())
        return false;
    constexpr qsizetype kMaxDigits = 6;
    qsizetype digits = 0;
    while (digits < kMaxDigits && digits < name.size() && name[name.size() - 1 - digits].isDigit()
        && name[name.size() - 1 - digits].unicode() < 0x80)
        ++digits;
    qsizetype start = name.size() - digits;
    // Zeros in front of the number belong to the base; a run of zeros keeps its last.
    while (start < name.size() - 1 && name[start] == u'0')
        ++start;
    // `base` may be the caller's `name` itself: read everything before writing.
    const int value = digits == 0 ? 0 : name.mid(start).toInt();
    base = name.left(start);
    number = value;
    return true;
}

QString MakeUniqueChildName(const QString& name, const QStringList& siblings)
{
    QString base;
    int number = 0;
    if (!SplitSysNameNumber(name, base, number))
        return name;
    QSet<QString> taken;
    taken.reserve(siblings.size());
    for (const QString& sibling : siblings)
        taken.insert(sibling.toLower());
    QString candidate = name;
    while (taken.contains(candidate.toLower()))
        candidate = base + QString::number(++number);
    return candidate;
}

QString MakeNewRowName(const QString& fullName, bool child, const QStringList& present)
{
    return MakeNewRowName(fullName, child, FoldedSet(present));
}

QString MakeNewRowName(const QString& fullName, bool child, const QSet<QString>& taken)
{
    QString candidate = fullName;
    if (child) {
        QString base = LastLevel(fullName);
        int number = 0;
        SplitSysNameNumber(base, base, number);
        candidate = fullName + u'&' + base + u'1';
    }
    const QString fresh = ParentPart(candidate) + QStringLiteral("N1");
    if (LastLevel(candidate).size() > kMaxSysNameLength)
        candidate = fresh;
    const QString result = MakeUnique(candidate, taken);
    // Stepping can lengthen a name past the limit, and a typed name may be illegal
    // already: such a row starts again from N1, which stays legal while stepping.
    if (CQVCheckSysNameLegal::CheckSysNameLegal(LastLevel(result)))
        return result;
    return MakeUnique(fresh, taken);
}
