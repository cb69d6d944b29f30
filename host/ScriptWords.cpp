#include "ScriptWords.h"

QString ScriptWords::Take(QString& rest)
{
    rest = rest.trimmed();
    QString word;
    qsizetype end = 0;
    if (rest.startsWith(u'"')) {
        const qsizetype close = rest.indexOf(u'"', 1);
        end = close < 0 ? rest.size() : close + 1;
        word = rest.mid(1, (close < 0 ? rest.size() : close) - 1);
    } else {
        end = rest.indexOf(u' ');
        if (end < 0)
            end = rest.size();
        word = rest.left(end);
    }
    rest = rest.mid(end).trimmed();
    return word;
}
