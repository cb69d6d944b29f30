#pragma once

// A line type of a drawing: its name and its dash pattern in drawing units (a
// positive length is a dash, a negative one a gap, 0 a dot), repeated along a curve.
#include <QString>

#include <vector>

struct ZcDbLineType
{
    QString name;
    std::vector<double> pattern;

    double patternLength() const
    {
        double total = 0.0;
        for (double element : pattern)
            total += element < 0 ? -element : element;
        return total;
    }
};

// How an entity's line looks: its line type by name ("BYLAYER", "BYBLOCK" or a
// line type's) and its own scale of the pattern.
struct ZcDbLineStyle
{
    QString lineType;
    double scale = 1.0;
};
