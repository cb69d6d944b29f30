#pragma once

// What a numeric edit accepts while the user types: plain decimal numbers ("12",
// "0.5", "-3." when negatives are allowed), no exponent, no group separators, no
// letters. A text that can still grow into a number within the limits is
// intermediate; one that cannot is refused.
#include <QValidator>

class QvKsNumValidator : public QValidator
{
    Q_OBJECT
public:
    QvKsNumValidator(double min, double max, QObject* parent = nullptr);

    void SetLimits(double min, double max);
    double Min() const { return m_min; }
    double Max() const { return m_max; }
    // Digits allowed after the point; -1 for any number.
    void SetDecimals(int decimals) { m_decimals = decimals; }
    int Decimals() const { return m_decimals; }

    State validate(QString& input, int& pos) const override;
    // Turns an unfinished or out-of-range text into the nearest number in range.
    void fixup(QString& input) const override;

    static State Check(const QString& text, double min, double max, int decimals);
    // The number a text shows (clamped to the limits), or the value nearest to 0 in
    // range when the text is not a number.
    static double ValueOf(const QString& text, double min, double max);
    static QString Format(double value);

private:
    double m_min;
    double m_max;
    int m_decimals = -1;
};
