#pragma once

// The texts of a drawing as they read: the special characters of single-line texts
// (%%c, %%d, %%p, caret codes) and the format codes of multi-line texts (heights,
// width factors, colours, under- and overlines, stacked fractions, paragraphs) laid
// out in lines, wrapped at the text's width. Every character is taken to advance
// its height times its width factor.
#include <QRgb>
#include <QString>
#include <QStringView>

#include <optional>
#include <vector>

namespace DrawingTexts {

// A single-line text's characters as shown.
QString PlainText(QStringView raw);
// How far `text` advances, in heights at width factor 1.
double Advance(QStringView text);

struct Run
{
    QString text;
    double x = 0.0; // from the line's start, drawing units
    double rise = 0.0; // of its baseline above the line's, drawing units
    double height = 0.0; // cap height, drawing units
    double widthFactor = 1.0;
    double width = 0.0; // drawing units
    std::optional<QRgb> color;
    bool underline = false;
    bool overline = false;
    bool strike = false;
    // The bar of a stacked fraction, drawn under this run (the numerator).
    double fractionBar = 0.0; // its length, 0 for none
    // The denominator of a fraction: it starts where the run before it does.
    bool underPrevious = false;
};

struct Line
{
    std::vector<Run> runs;
    double width = 0.0;
    double height = 0.0; // the tallest cap height on it
};

// The lines of multi-line text `contents` of cap `height`, wrapped at `width`
// drawing units (0: only at paragraph ends).
std::vector<Line> LayOut(QStringView contents, double height, double width);

} // namespace DrawingTexts
