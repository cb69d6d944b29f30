#pragma once

// A dialog of the host test plug-in whose only tree is a plain QTreeWidget (no grid
// class of any plug-in): names with a count column edited in a line edit and a size
// column edited in a drop-down, coloured cells, OK and Cancel. On OK it writes every
// row's cells to the command line ("[qvhtree] 水箱&进水: 2 |").
#include <QDialog>

class QTreeWidget;

class TreeWidgetDialog : public QDialog
{
public:
    explicit TreeWidgetDialog(QWidget* parent = nullptr);

    void accept() override;

private:
    QTreeWidget* m_tree;
};
