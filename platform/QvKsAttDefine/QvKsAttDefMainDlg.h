#pragma once

// The attribute-definition dialog. Control ids: 1001 the library tree, 1002 the
// name edit, 1003 "添加明细", 1004 "重命名", 2 "关闭".
#include <QDialog>
#include <QSet>

class CQvTreeCtrl;
class QLineEdit;
class QPushButton;

class QvKsAttDefMainDlg : public QDialog
{
    Q_OBJECT
public:
    enum ControlId { kTree = 1001, kNameEdit = 1002, kAdd = 1003, kRename = 1004, kClose = 2 };

    explicit QvKsAttDefMainDlg(const QString& specOnly, QWidget* parent = nullptr);

    // Rebuilds the tree from the store and selects `path` when it is there.
    void Reload(const QString& path);
    bool Changed() const { return m_changed; }
    CQvTreeCtrl* Tree() const { return m_tree; }

private:
    QString SelectedPath() const;
    void OnSelectionChanged();
    void OnAdd();
    void OnRename();
    void Warn(const QString& text);

    QString m_specOnly;
    CQvTreeCtrl* m_tree;
    QLineEdit* m_name;
    QPushButton* m_add;
    QPushButton* m_rename;
    QSet<QString> m_categories;
    QSet<QString> m_members;
    bool m_changed = false;
};
