#include "QvString.h"

#include <QString>

namespace {
bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

// Advances over a run of ASCII digits; returns how many were read.
int skipDigits(const QString& text, int& pos)
{
    const int start = pos;
    while (pos < text.size() && isDigit(text[pos]))
        ++pos;
    return pos - start;
}

bool isSign(const QString& text, int pos)
{
    return pos < text.size() && (text[pos] == u'+' || text[pos] == u'-');
}
} // namespace

bool QvString::IsDouble(const QString& text)
{
    const QString t = text.trimmed();
    int pos = 0;
    if (isSign(t, pos))
        ++pos;
    int digits = skipDigits(t, pos);
    if (pos < t.size() && t[pos] == u'.') {
        ++pos;
        digits += skipDigits(t, pos);
    }
    if (digits == 0)
        return false;
    if (pos < t.size() && (t[pos] == u'e' || t[pos] == u'E')) {
        ++pos;
        if (isSign(t, pos))
            ++pos;
        if (skipDigits(t, pos) == 0)
            return false;
    }
    return pos == t.size();
}
