#include "QvKsUiNumEdit.h"

#include "QvKsNumValidator.h"

#include <limits>

QvKsUiNumEdit::QvKsUiNumEdit(QWidget* parent)
    : QLineEdit(parent)
    , m_validator(
          new QvKsNumValidator(-std::numeric_limits<double>::max(), std::numeric_limits<double>::max(), this))
{
    setValidator(m_validator);
    setInputMethodHints(Qt::ImhFormattedNumbersOnly);
}

void QvKsUiNumEdit::SetLimits(double dMin, double dMax)
{
    m_validator->SetLimits(dMin, dMax);
    if (!text().isEmpty() && !hasAcceptableInput()) {
        QString fixed = text();
        m_validator->fixup(fixed);
        setText(fixed);
    }
}

double QvKsUiNumEdit::GetMin() const
{
    return m_validator->Min();
}

double QvKsUiNumEdit::GetMax() const
{
    return m_validator->Max();
}

void QvKsUiNumEdit::SetDecimals(int decimals)
{
    m_validator->SetDecimals(decimals);
}

bool QvKsUiNumEdit::SetWindowText(const QString& text)
{
    const QString trimmed = text.trimmed();
    if (QvKsNumValidator::Check(trimmed, GetMin(), GetMax(), m_validator->Decimals())
        != QValidator::Acceptable)
        return false;
    setText(trimmed);
    return true;
}

double QvKsUiNumEdit::GetValue() const
{
    return QvKsNumValidator::ValueOf(text(), GetMin(), GetMax());
}

bool QvKsUiNumEdit::SetValue(double value)
{
    return SetWindowText(QvKsNumValidator::Format(value));
}
