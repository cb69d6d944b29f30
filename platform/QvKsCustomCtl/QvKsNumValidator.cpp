#include "QvKsNumValidator.h"

#include <QtGlobal>

QvKsNumValidator::QvKsNumValidator(double min, double max, QObject* parent)
    : QValidator(parent)
{
    SetLimits(min, max);
}

void QvKsNumValidator::SetLimits(double min, double max)
{
    m_min = qMin(min, max);
    m_max = qMax(min, max);
}

QValidator::State QvKsNumValidator::validate(QString& input, int&) const
{
    return Check(input, m_min, m_max, m_decimals);
}

QValidator::State QvKsNumValidator::Check(const QString& text, double min, double max, int decimals)
{
    if (text.isEmpty())
        return Intermediate;
    int digitsBefore = 0;
    int digitsAfter = 0;
    bool point = false;
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c == QLatin1Char('-') && i == 0 && min < 0)
            continue;
        if (c == QLatin1Char('.') && !point) {
            point = true;
            continue;
        }
        if (c < QLatin1Char('0') || c > QLatin1Char('9'))
            return Invalid;
        ++(point ? digitsAfter : digitsBefore);
    }
    if (decimals >= 0 && digitsAfter > decimals)
        return Invalid;
    if (decimals == 0 && point)
        return Invalid;
    if (digitsBefore + digitsAfter == 0)
        return Intermediate; // "-", ".", "-."
    const double value = text.toDouble();
    // More digits only move a number away from 0: past a limit on its own side of
    // 0 it can never come back; on the other side it still can.
    if (value > max)
        return value > 0 ? Invalid : Intermediate;
    if (value < min)
        return value < 0 ? Invalid : Intermediate;
    return Acceptable;
}

double QvKsNumValidator::ValueOf(const QString& text, double min, double max)
{
    bool ok = false;
    const double value = text.trimmed().toDouble(&ok);
    return qBound(min, ok ? value : 0.0, max);
}

QString QvKsNumValidator::Format(double value)
{
    // Plain decimals, never an exponent: the edit itself refuses exponents.
    QString text = QString::number(value, 'f', 12);
    while (text.endsWith(QLatin1Char('0')))
        text.chop(1);
    if (text.endsWith(QLatin1Char('.')))
        text.chop(1);
    return text == QLatin1String("-0") ? QStringLiteral("0") : text;
}

void QvKsNumValidator::fixup(QString& input) const
{
    input = Format(ValueOf(input, m_min, m_max));
}
