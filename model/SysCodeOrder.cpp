#include "SysCodeOrder.h"

#include <algorithm>

namespace {

constexpr qsizetype kMaxNumberDigits = 6;

bool IsDigit(char16_t c)
{
    return c >= u'0' && c <= u'9';
}

// The text part is always a prefix of the name: the digits that do not count as the
// number (beyond six, or leading zeros) stay with it. Works on the raw units so that
// sorting allocates nothing.
struct NameParts
{
    qsizetype textLength = 0;
    int number = 0;
};

NameParts Split(QStringView name)
{
    const qsizetype size = name.size();
    const char16_t* units = reinterpret_cast<const char16_t*>(name.data());
    qsizetype runStart = size;
    while (runStart > 0 && IsDigit(units[runStart - 1]))
        --runStart;
    if (runStart == size)
        return { size, 0 };
    qsizetype numberStart = runStart;
    if (runStart > 0 || size > kMaxNumberDigits) {
        numberStart = std::max(runStart, size - kMaxNumberDigits);
        while (numberStart < size - 1 && units[numberStart] == u'0')
            ++numberStart;
    }
    int number = 0;
    for (qsizetype i = numberStart; i < size; ++i)
        number = number * 10 + (units[i] - u'0');
    return { numberStart, number };
}

} // namespace

void SplitTrailingNumber(const QString& name, QString& text, int& number)
{
    const NameParts parts = Split(name);
    text = name.left(parts.textLength);
    number = parts.number;
}

int CompareSysCodeNames(const QString& first, const QString& second)
{
    const NameParts a = Split(first);
    const NameParts b = Split(second);
    // QStringView compares code units as unsigned 16-bit values.
    const int order = QStringView(first).first(a.textLength).compare(QStringView(second).first(b.textLength));
    if (order == 0)
        return a.number - b.number;
    return order < 0 ? -1 : 1;
}
