#pragma once

// A small dialog of the host test plug-in: a grid (201) of two levels with an edit,
// a colour-button and a list column, a context menu on right click, row drags; a
// list box (400), a combo (401), a check box (402), an edit (403), OK and Cancel.
// It writes what the user did to the command line ("[qvhgrid] …").
#include <QDialog>

class CTreeListCtrl;
class CTreeListItem;

class GridTestDialog : public QDialog
{
public:
    explicit GridTestDialog(QWidget* parent = nullptr);

protected:
    // A click on the dialog beside the controls ends the open cell edit.
    void mousePressEvent(QMouseEvent* event) override;

private:
    void FillGrid();
    void ShowMenu(CTreeListItem* item, int column, const QPoint& screenPos);
    void Drop(const QPoint& screenPos, Qt::KeyboardModifiers modifiers);
    void PickColour();

    CTreeListCtrl* m_grid;
    CTreeListItem* m_dragged = nullptr;
};
