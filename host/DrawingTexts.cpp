#include "DrawingTexts.h"

#include "DisplayListBuilder.h"

#include <QColor>

#include <algorithm>
#include <cmath>

namespace DrawingTexts {
namespace {

// %%c, %%d, %%p and %%nnn: diameter, degree, plus-minus and a character by number;
// %%u, %%o, %%k (under-, overline, strike toggles) show nothing here.
bool TakePercentCode(QStringView raw, qsizetype& i, QString& out)
{
    if (i + 2 >= raw.size() || raw[i] != u'%' || raw[i + 1] != u'%')
        return false;
    const QChar code = raw[i + 2].toLower();
    if (code == u'c' || code == u'd' || code == u'p') {
        out.append(code == u'c' ? QChar(0x00D8) : code == u'd' ? QChar(0x00B0) : QChar(0x00B1));
        i += 3;
        return true;
    }
    if (code == u'u' || code == u'o' || code == u'k') {
        i += 3;
        return true;
    }
    if (code.isDigit()) {
        qsizetype end = i + 2;
        while (end < raw.size() && end < i + 5 && raw[end].isDigit())
            ++end;
        const int number = raw.mid(i + 2, end - i - 2).toInt();
        if (number > 0 && number < 256) {
            out.append(QChar(number));
            i = end;
            return true;
        }
    }
    if (raw[i + 2] == u'%') {
        out.append(u'%');
        i += 3;
        return true;
    }
    return false;
}

// "^X" stands for the control character X - 64 ("^I" a tab, "^J" a line end);
// "^ " for the caret itself. Control characters show as a space.
bool TakeCaret(QStringView raw, qsizetype& i, QString& out, bool& lineEnd)
{
    if (raw[i] != u'^' || i + 1 >= raw.size())
        return false;
    const QChar next = raw[i + 1];
    i += 2;
    if (next == u' ') {
        out.append(u'^');
        return true;
    }
    const int control = (next.unicode() - 64 + 126) % 126;
    if (control == 10)
        lineEnd = true;
    else if (control != 13)
        out.append(u' ');
    return true;
}

bool IsWide(QChar c)
{
    return c.unicode() >= 0x2E80;
}

struct Style
{
    double height = 0.0;
    double widthFactor = 1.0;
    std::optional<QRgb> color;
    bool underline = false;
    bool overline = false;
    bool strike = false;
};

// The value of a format code up to its ';' (or the end), `i` after it.
QStringView CodeValue(QStringView raw, qsizetype& i)
{
    const qsizetype end = raw.indexOf(u';', i);
    const qsizetype stop = end < 0 ? raw.size() : end;
    const QStringView value = raw.mid(i, stop - i);
    i = end < 0 ? raw.size() : end + 1;
    return value;
}

double Factor(QStringView value, double current, double base)
{
    const bool relative = value.endsWith(u'x') || value.endsWith(u'X');
    bool ok = false;
    const double number = (relative ? value.chopped(1) : value).toDouble(&ok);
    if (!ok || !(number > 0))
        return current;
    return relative ? current * number : number * base;
}

class Layout
{
public:
    Layout(double height, double width)
        : m_base(height)
        , m_width(width)
    {
        m_style.height = height;
    }

    void Char(QChar c)
    {
        if (c == u' ') {
            EndWord();
            m_pendingSpace += m_style.height * m_style.widthFactor;
            m_spaceText.append(c);
            return;
        }
        if (IsWide(c))
            EndWord();
        if (m_word.empty() || !SameStyle(m_word.back()))
            m_word.push_back(NewRun());
        m_word.back().text.append(c);
        m_word.back().width += m_style.height * m_style.widthFactor;
        if (IsWide(c))
            EndWord();
    }

    void Fraction(QStringView upper, QStringView lower, QChar kind)
    {
        EndWord();
        // The numerator stands over the denominator, which sits on the baseline,
        // both of the text's height.
        const double small = m_style.height;
        const double advance = std::max(upper.size(), lower.size()) * small * m_style.widthFactor;
        Run top = NewRun();
        top.text = upper.toString();
        top.height = small;
        top.width = advance;
        top.rise = m_style.height * 1.4;
        top.fractionBar = kind == u'/' || kind == u'#' ? advance : 0.0;
        Run bottom = NewRun();
        bottom.text = lower.toString();
        bottom.height = small;
        bottom.width = 0.0;
        bottom.rise = 0.0;
        bottom.underPrevious = true;
        m_word.push_back(top);
        m_word.push_back(bottom);
        EndWord();
    }

    void Paragraph()
    {
        EndWord();
        EndLine();
    }

    Style& CurrentStyle() { return m_style; }
    double Base() const { return m_base; }

    std::vector<Line> Finish()
    {
        EndWord();
        if (!m_line.runs.empty() || m_lines.empty())
            EndLine();
        return std::move(m_lines);
    }

private:
    bool SameStyle(const Run& run) const
    {
        return run.height == m_style.height && run.widthFactor == m_style.widthFactor
            && run.color == m_style.color && run.underline == m_style.underline
            && run.overline == m_style.overline && run.strike == m_style.strike && run.rise == 0.0
            && !run.underPrevious && run.fractionBar == 0.0;
    }

    Run NewRun() const
    {
        Run run;
        run.height = m_style.height;
        run.widthFactor = m_style.widthFactor;
        run.color = m_style.color;
        run.underline = m_style.underline;
        run.overline = m_style.overline;
        run.strike = m_style.strike;
        return run;
    }

    // Puts the word gathered on the line, on a new one when it would pass the width.
    void EndWord()
    {
        if (m_word.empty())
            return;
        double wordWidth = 0.0;
        for (const Run& run : m_word)
            wordWidth += run.width;
        const bool fits = m_width <= 0 || m_line.runs.empty()
            || m_line.width + m_pendingSpace + wordWidth <= m_width * 1.0001;
        if (!fits) {
            EndLine();
        } else if (!m_line.runs.empty() && m_pendingSpace > 0) {
            // The spaces are part of the text before the word.
            m_line.runs.back().text.append(m_spaceText);
            m_line.runs.back().width += m_pendingSpace;
            m_line.width += m_pendingSpace;
        } else if (m_line.runs.empty() && m_pendingSpace > 0 && m_lines.empty()) {
            m_line.width += m_pendingSpace;
        }
        m_pendingSpace = 0.0;
        m_spaceText.clear();
        for (Run& run : m_word) {
            run.x = run.underPrevious && !m_line.runs.empty() ? m_line.runs.back().x : m_line.width;
            m_line.width += run.width;
            m_line.height = std::max(m_line.height, run.height + std::max(0.0, run.rise));
            if (!m_line.runs.empty() && m_line.runs.back().rise == 0 && run.rise == 0 && !run.underPrevious
                && !m_line.runs.back().underPrevious && m_line.runs.back().fractionBar == 0
                && run.fractionBar == 0 && SameLook(m_line.runs.back(), run)) {
                m_line.runs.back().text.append(run.text);
                m_line.runs.back().width += run.width;
            } else {
                m_line.runs.push_back(std::move(run));
            }
        }
        m_word.clear();
    }

    static bool SameLook(const Run& a, const Run& b)
    {
        return a.height == b.height && a.widthFactor == b.widthFactor && a.color == b.color
            && a.underline == b.underline && a.overline == b.overline && a.strike == b.strike;
    }

    void EndLine()
    {
        if (m_line.height <= 0)
            m_line.height = m_style.height;
        m_lines.push_back(std::move(m_line));
        m_line = {};
        m_pendingSpace = 0.0;
        m_spaceText.clear();
    }

    double m_base;
    double m_width;
    Style m_style;
    std::vector<Run> m_word;
    double m_pendingSpace = 0.0;
    QString m_spaceText;
    Line m_line;
    std::vector<Line> m_lines;
};

// Reads a format code after its backslash at `i`; false for a backslash that is
// a character of its own.
void FormatCode(QStringView raw, qsizetype& i, Layout& layout)
{
    const QChar code = raw[i++];
    Style& style = layout.CurrentStyle();
    switch (code.unicode()) {
    case 'P':
    case 'X':
        layout.Paragraph();
        return;
    case 'L':
    case 'l':
        style.underline = code == u'L';
        return;
    case 'O':
    case 'o':
        style.overline = code == u'O';
        return;
    case 'K':
    case 'k':
        style.strike = code == u'K';
        return;
    case '~':
        layout.Char(QChar(0x00A0));
        return;
    case 'N':
        return;
    case 'H':
        style.height = Factor(CodeValue(raw, i), style.height, 1.0);
        return;
    case 'W':
        style.widthFactor = Factor(CodeValue(raw, i), style.widthFactor, 1.0);
        return;
    case 'C': {
        const int aci = CodeValue(raw, i).toInt();
        if (aci >= 1 && aci <= 255)
            style.color = DisplayListBuilder::AciColor(aci).rgba();
        else
            style.color.reset();
        return;
    }
    case 'c': {
        bool ok = false;
        const uint bgr = CodeValue(raw, i).toUInt(&ok);
        if (ok)
            style.color = qRgb(int(bgr & 0xFF), int((bgr >> 8) & 0xFF), int((bgr >> 16) & 0xFF));
        return;
    }
    case 'S': {
        const QStringView value = CodeValue(raw, i);
        qsizetype cut = -1;
        for (qsizetype k = 0; k < value.size(); ++k)
            if ((value[k] == u'/' || value[k] == u'^' || value[k] == u'#')
                && (k == 0 || value[k - 1] != u'\\')) {
                cut = k;
                break;
            }
        if (cut < 0)
            layout.Fraction(value, {}, u'^');
        else
            layout.Fraction(value.left(cut).trimmed(), value.mid(cut + 1).trimmed(), value[cut]);
        return;
    }
    case 'A':
    case 'Q':
    case 'T':
    case 'f':
    case 'F':
    case 'p':
        CodeValue(raw, i);
        return;
    default:
        // "\\", "\{", "\}" and anything unknown: the character itself.
        layout.Char(code);
        return;
    }
}
} // namespace

QString PlainText(QStringView raw)
{
    QString out;
    out.reserve(raw.size());
    for (qsizetype i = 0; i < raw.size();) {
        bool lineEnd = false;
        if (TakePercentCode(raw, i, out) || TakeCaret(raw, i, out, lineEnd))
            continue;
        out.append(raw[i++]);
    }
    return out;
}

double Advance(QStringView text)
{
    return double(text.size());
}

std::vector<Line> LayOut(QStringView raw, double height, double width)
{
    Layout layout(height, width);
    std::vector<Style> saved;
    for (qsizetype i = 0; i < raw.size();) {
        const QChar c = raw[i];
        if (c == u'\\' && i + 1 < raw.size()) {
            ++i;
            FormatCode(raw, i, layout);
            continue;
        }
        if (c == u'{') {
            saved.push_back(layout.CurrentStyle());
            ++i;
            continue;
        }
        if (c == u'}') {
            if (!saved.empty()) {
                layout.CurrentStyle() = saved.back();
                saved.pop_back();
            }
            ++i;
            continue;
        }
        QString special;
        bool lineEnd = false;
        if (TakePercentCode(raw, i, special) || TakeCaret(raw, i, special, lineEnd)) {
            for (const QChar s : special)
                layout.Char(s);
            if (lineEnd)
                layout.Paragraph();
            continue;
        }
        if (c == u'\n') {
            layout.Paragraph();
            ++i;
            continue;
        }
        layout.Char(c == u'\t' ? QChar(u' ') : c);
        ++i;
    }
    return layout.Finish();
}

} // namespace DrawingTexts
