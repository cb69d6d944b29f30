#pragma once

// A one-line edit for a decimal number between two limits. Letters, exponents and
// numbers beyond the limits cannot be typed or pasted; a text left unfinished or
// below the lower limit becomes the nearest number in range when editing ends.
#include <QLineEdit>

class QvKsNumValidator;

class QvKsUiNumEdit : public QLineEdit
{
    Q_OBJECT
public:
    explicit QvKsUiNumEdit(QWidget* parent = nullptr);

    void SetLimits(double dMin, double dMax);
    double GetMin() const;
    double GetMax() const;
    // Digits allowed after the point; -1 (the default) for any number.
    void SetDecimals(int decimals);

    // Sets the text when it is a number within the limits; otherwise the edit keeps
    // its text and the result is false.
    bool SetWindowText(const QString& text);
    QString GetWindowText() const { return text(); }

    // The number shown, clamped to the limits (the lower limit's side of 0 for an
    // empty text).
    double GetValue() const;
    bool SetValue(double value);

private:
    QvKsNumValidator* m_validator;
};
