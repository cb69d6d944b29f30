#pragma once

// The CAD colour dialog: the indexed colours in the usual palette layout on one page
// and a true-colour chooser on the other. Whatever the user picked last is the
// result.
//
// Control names (objectName) for code and tests: "colorTabs" (pages "indexPage" and
// "truePage"), "aci_<n>" for the cell of index n, "indexEdit" (type an index),
// "indexLabel", "rgbLabel", "oldColor", "newColor", "trueColor" (the chooser),
// "okButton", "cancelButton".
#include "WinTypes.h"

#include <QDialog>

#include <array>

class QColorDialog;
class QLabel;
class QLineEdit;
class QTabWidget;
class QvKsColorSwatch;

class QvKsCADColorDlg : public QDialog
{
    Q_OBJECT
public:
    explicit QvKsCADColorDlg(COLORREF current, QWidget* parent = nullptr);

    COLORREF ChosenColor() const { return m_chosen; }
    // The chosen index, or 0 when a true colour was chosen.
    int ChosenIndex() const { return m_chosenIndex; }

    // Chooses an indexed colour (1..255); false for any other index.
    bool SelectIndex(int index);
    // Chooses a true colour; it counts as indexed only when picked on the index page.
    void SelectTrueColor(COLORREF color);

private:
    QWidget* BuildIndexPage();
    QWidget* BuildTruePage();
    QLayout* BuildHueGrid();
    QLayout* BuildRow(int first, int last);
    QvKsColorSwatch* AddSwatch(int index);
    void Choose(int index, COLORREF color);
    void OnIndexEdited(const QString& text);
    void OnTrueColorChanged(const QColor& color);

    COLORREF m_current;
    COLORREF m_chosen;
    int m_chosenIndex = 0;
    bool m_syncing = false;

    std::array<QvKsColorSwatch*, 256> m_swatches {};
    QTabWidget* m_tabs = nullptr;
    QLineEdit* m_indexEdit = nullptr;
    QLabel* m_indexLabel = nullptr;
    QLabel* m_rgbLabel = nullptr;
    QvKsColorSwatch* m_newColor = nullptr;
    QColorDialog* m_trueColor = nullptr;
};
