#pragma once

// The text of a ".lin" line-type file, both ways. A definition is a header line
// "*NAME,description" and a pattern line "A,dash,gap,…": positive numbers are
// drawn, negative ones are gaps, 0 is a dot; an element in brackets
// ["TEXT",STANDARD,S=size,R=0.0,X=dx,Y=dy] places text where the pattern has got to.
#include <QString>
#include <QVector>

struct LineTypeDef
{
    struct Element
    {
        double length = 0.0; // for a dash or gap
        bool isText = false;
        QString text;
        double size = 2.5; // text height
        double dx = 0.0;
        double dy = 0.0;
    };

    QString name;
    QString description;
    QVector<Element> elements;

    // Sum of the absolute lengths of the dashes and gaps.
    double PatternLength() const;
};

class LinFormat
{
public:
    // Definitions read from `text`; malformed definitions are skipped (a definition
    // with no usable pattern, a dangling bracket, a number that is no number).
    static QVector<LineTypeDef> Parse(const QString& text);
    static QString Format(const QVector<LineTypeDef>& defs, const QString& comment = QString());
    // A dash-only pattern "A,12.7,-6.35".
    static LineTypeDef Dashes(
        const QString& name, const QString& description, const QVector<double>& lengths);
    // A line interrupted by `text`, the gap sized for it.
    static LineTypeDef WithText(const QString& name, const QString& description, const QString& text);
};
