#pragma once

// How product entities look: for every system code of the open project, keyed by
// the index path entities carry ("%d\%d"), its names and display attributes as
// stored. The drawing view, the layer colours and the annotation refresh read it;
// Reload() re-reads the store (after a save, on "regen").
#include "WinTypes.h"

#include <QHash>
#include <QString>

struct QvKsCodeStyle
{
    QString spec;
    QString fullName; // level names joined by "\"
    QString name; // the last level
    COLORREF color = 0;
    double lineWidth = -1.0;
    int alpha = 0; // transparency 0 (opaque) … 90
    QString lineStyle;
    QString lineString;
};

class QvKsCodeStyles
{
public:
    static QvKsCodeStyles& Instance();

    // Re-reads every specialty's codes; false (and empty) when no project is open.
    bool Reload();
    void Clear() { m_styles.clear(); }
    // Null for an index path no code has.
    const QvKsCodeStyle* Find(const QString& indexPath) const;
    int Count() const { return int(m_styles.size()); }
    const QHash<QString, QvKsCodeStyle>& All() const { return m_styles; }

    // "3\12": the specialty number of `spec` and the node index.
    static QString IndexPathOf(int specNumber, int nodeIndex);
    // The number index paths use for a specialty of the open project; 0 when unknown.
    static int SpecNumberOf(const QString& spec);

private:
    QHash<QString, QvKsCodeStyle> m_styles;
};
