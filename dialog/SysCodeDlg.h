#pragma once

// The system-code management dialog: the specialty list on the left and, on the
// right, the tree grid with the codes of the specialty being edited. Callers set
// m_strSpec, m_strSelCode and m_bAllowImportExport, run DoModal() and read
// m_strSelCode after IDOK.
#include "CLayoutManager.h"
#include "CSysCodeData.h"
#include "CTreeListCtrl.h"
#include "CodeUsageLedger.h"
#include "QvKsQtxmInfo.h"
#include "QvKsUiNumEdit.h"
#include "SysCodeFindBar.h"
#include "SysCodeSaveCheck.h"
#include "UsedCodeIndexes.h"

#include <QDialog>
#include <QHash>
#include <QListWidget>
#include <QSet>
#include <QString>
#include <QVector>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <unordered_map>
#include <utility>
#include <vector>

class QAbstractButton;
class QCheckBox;
class QvKsWriteStatus;
class QLabel;
class QMenu;
class ZcDbDatabase;
class ZcDbText;
class CTreeListEditorBase;
class SysCodeExchange;
struct BatchModifyValues;

class SysCodeDlg : public QDialog
{
    Q_OBJECT
public:
    explicit SysCodeDlg(QWidget* parent = nullptr);
    ~SysCodeDlg() override;

    // Runs the dialog modally: IDOK or IDCANCEL (also when it could not open).
    int DoModal();
    // Builds the controls' content; DoModal runs it before the dialog shows. False
    // when the store cannot give the specialty's codes (the user was told).
    bool OnInitDialog();

    // Clears the grid and fills it with the specialty's codes, in the column layout
    // of that specialty. When the store cannot give them, the user is told and the
    // grid stays as it was: false.
    bool FillSysCodeTree(const QString& spec);
    // `stamp`: the store's stamp of `root` as it was read.
    void FillSysCodeTree(const QString& spec, const CSysCodeData& root, quint64 stamp);
    // The specialty's codes from the store, with their stamp; a failure is shown to
    // the user.
    bool LoadSpecCodes(const QString& spec, CSysCodeData& root, quint64& stamp) const;
    // Run after a save: the grid reloaded from the store, the attribute bar and the
    // display-control window told to reload their codes.
    void RefreshAfterSave(const QString& spec);

    // Usage of codes by the drawings' product entities.
    void ScanModelSpace(ZcDbDatabase* database);
    void ScanOtherFloors();
    bool IsCodeIndexUsed(const QString& indexPath);
    // The floors tried and not read, "2F：图纸无法读取：…" a line.
    QStringList DescribeUnreadableFloors() const;
    // Which floors use the codes of a row's subtree, and how often: one line a code.
    QStringList DescribeUsage(HTREEITEM row) const;

    // Takes the codes of a system-code file into the specialty and refills the grid.
    bool ReloadFromSysCodeFile(const QString& filePath);

    bool IsElectrical() const;
    // Level-name path of a row joined by "\" (store form).
    QString GetRowFullName(HTREEITEM row) const;
    HTREEITEM FindRowByFullName(const QString& fullName) const;
    // The stored node index a row carries as its item data; 0 for a row made in
    // the dialog and not saved yet.
    int GetRowNodeIndex(HTREEITEM row) const;
    // Index path of a full path ("specialty\name…"). A path that names no code falls
    // back to the specialty's first top-level code: `fullPath` is rewritten to it and
    // m_bSelCodeReplaced records it.
    QString GetSysCodeIndexPath(QString& fullPath);

    // Data exchange between the bound members and their controls.
    void UpdateData(bool bSaveAndValidate);

    HTREEITEM m_pCurRow = nullptr;
    CTreeListCtrl m_tree;
    QString m_strSpec;
    QString m_strPrevSpec;
    bool m_bDragging = false;
    QString m_strSelCode;
    std::map<QString, QVector<SQvKsQdInfo>> m_mapQdInfo;
    std::map<QString, QVector<SQvKsDeInfo>> m_mapDeInfo;
    std::vector<std::pair<QString, QString>> m_renames;
    bool m_bRenamesOnly = false;
    int m_nMaxIndex = 0;
    int m_nLevelBase = 0;
    // Whether the rows differ from those the dialog filled or last saved: away from
    // the undo history's clean point, so undoing back to it clears it. Every change
    // to the codes is a recorded change to the grid. Besides, an ended cell edit
    // marks the dialog (MarkEditEnded) even when the grid did not change.
    bool IsModified() const;
    // Set by a save (SetSavedFlags), which also makes the rows the clean point.
    bool m_bColorChanged = false;
    bool m_bLineTypesChanged = false;
    bool m_bOtherFloorsScanned = false;
    bool m_bAllowImportExport = false;
    bool m_bSelCodeReplaced = false;
    // The working drawing is scanned when the set is first read, not while opening.
    UsedCodeIndexes m_usedCodeIndexes;
    CSysCodeData m_clipboard;
    QvKsUiNumEdit m_editScale;

    // Context-menu commands (1000-1005). Nothing runs while a name or remark cell
    // is being edited: the result is then false.
    virtual bool OnCommand(int commandId);

    // Cancel, Escape and the close box all reach OnCancel.
    void reject() override;

    // Undo (true) or redo (false) of the last change to the grid; false when there
    // is none to replay.
    bool ReplayUndo(bool undo);
    // A row's pipeline information: the whole path its pipeline cell holds (the
    // cell shows the last part); empty for a specialty without the column.
    QString GetRowInfo(HTREEITEM row) const;
    // Operations being recorded as one undo step (see SysCodeUndoGroup).
    int m_nUndoDepth = 0;
    // The drop-down lists by logical column while rows are being inserted; empty
    // otherwise (see SysCodeRowLists).
    std::vector<QStringList> m_rowLists;

    // Cell editing: the items of a drop-down cell (by logical column), and text
    // picked from the drawing for the name and remark cells.
    void GetComboItems(int logicalColumn, QStringList& items) const;
    QString PickTextFromDrawing();
    static QString GetEntityText(const ZcDbText* text, bool insideBlock);

protected:
    void SetSavedFlags();
    // The rows as they are now are the clean point (after a fill or a save).
    void SetCleanPoint();
    // A name, remark, code or width edit ended, or the colour or text-picking button
    // was used: the dialog counts as modified although the grid may not have
    // changed (a refused edit puts its start text back) — the one mark the undo
    // history cannot give. Cleared with the clean point and by undo and redo.
    void MarkEditEnded() { m_bEditEnded = true; }
    bool m_bEditEnded = false;

    // Message map.
    void OnOK();
    void OnSpecSelChange();
    void OnExpandLevel();
    void OnCollapseLevel();
    void OnGridDeleteItem(const NMLISTVIEW& info);
    // Node operations of the menus. The adds give the new row (null when nothing was
    // added) and delete whether a row went; only a change marks the dialog modified.
    HTREEITEM AddSiblingRow();
    HTREEITEM AddChildRow();
    HTREEITEM AppendTopLevelRow();
    HTREEITEM CreateFirstRow();
    bool DeleteSelectedRows();
    bool IsRowInUse(HTREEITEM row);
    bool IsSubtreeInUse(HTREEITEM row);
    // Whether a saved code of `row`'s subtree may go although a floor's drawing could
    // not be read: the user is asked once per delete command (`answer` keeps it).
    bool MayDeleteDespiteUnreadFloors(HTREEITEM row, std::optional<bool>& answer);
    bool HasSavedCode(HTREEITEM row) const;
    void CopyRow(HTREEITEM row);
    // Pastes the clipboard's code with its subtree after `row`; marks the dialog
    // modified itself. The clipboard stays for further pastes.
    void PasteRow(const CSysCodeData& clipboard, HTREEITEM row, bool bNewColors);
    void ClearClipboard();
    // `name`, numbered on past the names of `parent`'s children when one has it.
    QString MakeUniqueChildName(const QString& name, HTREEITEM parent) const;
    // Right-click menus (NM_RCLICK of the grid) and button 203.
    void OnGridRightClick(const NMITEMACTIVATE& info);
    void ShowNodeMenu(const QPoint& cursor);
    void RunMenu(QMenu& menu, const QPoint& cursor);
    void OnClearPipeInfo();
    // Moving a row by dragging it onto another (Ctrl at the drop copies).
    void OnGridBeginDrag(const NMITEMACTIVATE& info);
    void OnDragMove(const QPoint& screenPos);
    void OnDrop(const QPoint& screenPos, Qt::KeyboardModifiers modifiers);
    void DropRow(HTREEITEM source, HTREEITEM target, bool bCopy);
    HTREEITEM CopySubtreeAfter(HTREEITEM source, HTREEITEM target);
    bool IsOverGrid(const QPoint& screenPos) const;
    void EndDrag();
    void ConnectUndoKeys();
    // Finding codes (Ctrl+F) and "使用情况" (Ctrl+U, or the grid header's menu).
    void ConnectFind();
    void ConnectCodeUsage();
    // The node operations' keys on the grid.
    void ConnectNodeKeys();
    void RunKeyCommand(int commandId);
    bool MoveRowAmongSiblings(bool down);
    // The pipeline-information cell's button (10009) of `row`: the picker, and the
    // chosen path into the row's pipeline cell.
    void OnPipeInfoCellButton(HTREEITEM row);

    // Batch modification (button 202) and the pipeline-information cell's button.
    void OnBatchModify();
    void ApplyBatchModify(const BatchModifyValues& values);
    QString GetCellText(HTREEITEM row, int logicalColumn) const;
    void ConnectPipeInfoCell();

    // Saving, cancelling and switching specialty.
    void OnCancel();
    // The sibling-duplicate and name checks; a refusal has been shown to the user.
    SysCodeSaveStatus ValidateForSave(bool bOnOK);
    QList<QStringList> CollectSiblingNames() const;
    // The save step for `spec` (with the line-type scale when `scale` is not null),
    // as one store transaction. False when the store refused: the user was told,
    // the store and the dialog are as before.
    // `saved` receives the tree as stored.
    bool SaveSpecCodes(const QString& spec, const QString& scale, CSysCodeData& saved);
    // The grid's codes into `root` and stored for `spec` as one transaction, with
    // the scale (when not null) and the renames (when asked); a specialty someone
    // else stored since it was read is merged first. False when the store refused
    // (the user was told) or the user cancelled the merge: nothing was written.
    bool StoreGridCodes(const QString& spec, const QString& scale, CSysCodeData& root, bool withRenames);
    // `mine` becomes the merge of the stored codes this dialog read, `theirs` (the
    // store now) and `mine`; collisions go to "合并". False when the user cancelled.
    bool MergeWithStore(const CSysCodeData& base, const CSysCodeData& theirs, CSysCodeData& mine,
        QStringList& fromTheirs, std::vector<std::pair<QString, QString>>& renames);
    // Bill and quota items as stored now, carried from each stored path to its
    // merged one.
    bool ApplyMergeRenames(const QString& spec, const std::vector<std::pair<QString, QString>>& renames);
    // Every bill and quota item whose path `renamed` changes is stored with the new
    // path, and the project attributes saved.
    bool CarryRenamesIntoItems(const std::function<QString(const QString&)>& renamed);
    void KeepStoredCodes(const CSysCodeData& root, quint64 stamp);
    // `quietWhen` tells a refusal the caller handles itself from a failure to report.
    bool StoreInOneTransaction(
        const std::function<bool()>& writes, const std::function<bool()>& quietWhen = nullptr);
    bool ApplyRenames();
    void StoreRowIndexes(const CSysCodeData& parent, HTREEITEM row);
    // Stores the setting; a failure has been shown to the user.
    bool SaveDispAddedMsg();
    // The line-type file for the stored codes; a failure has been shown.
    bool WriteLineTypeFile() const;
    // The warning for a file that was not written, in place of a success notice.
    void ShowWriteFailure(const QvKsWriteStatus& status) const;
    // `saved`: the tree this dialog just stored for m_strSpec, refilled without
    // reading it back; null to read the store.
    bool RefreshColors(bool bRedrawFirst, const CSysCodeData* saved);
    void RefreshAfterSave(const std::function<void()>& refill);

    // Import and export of system-code files.
    void OnExport();
    void OnImport();
    // A modified tree is stored before a file is written or merged in; false when
    // the store refused.
    bool PreSaveForExchange(CSysCodeData& root);
    void FillRowsFromRoot(const CSysCodeData& root);
    void BuildGridRecords(CSysCodeData& root);
    void MergeImported(CSysCodeData& root, const CSysCodeData& imported);

    // Cell editing: the application-wide event filter ends or refuses an open edit
    // before the widgets see the press or Enter (PreTranslateMessage).
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool PreTranslateMessage(QWidget* target, QEvent* event);
    void ConnectEditCells();
    void SetRowEditors(HTREEITEM row, bool withPipeColumns);
    // The editors and drop-down lists of the columns, which the rows of a fill take.
    void SetColumnEditModes(bool withPipeColumns);
    void SetColumnEditors(bool withPipeColumns);
    bool EndEditOutside(CTreeListEditorBase* editor);
    bool OnEditorTab(CTreeListEditorBase* editor, int step);
    bool EndComboEdit(int comboId);
    bool EndNameEdit(CTreeListEditorBase* editor);
    bool EndRemarkEdit(CTreeListEditorBase* editor);
    bool EndCodeEdit(CTreeListEditorBase* editor);
    bool OnGridEnter(QWidget* target);
    void OnColorCellButton();
    void OnPickTextButton(int buttonId);
    bool TakeNameText(CTreeListEditorBase* editor, HTREEITEM row);
    bool TakeRemarkText(CTreeListEditorBase* editor, HTREEITEM row);
    bool m_bSwallowRelease = false;

private:
    // The files of an import or export, for the specialty in the grid.
    SysCodeExchange Exchange();
    void CreateControls();
    QWidget* CreateControl(int kind, const QString& text);
    void AnchorControls();
    void BuildMessageMap();
    void FillSpecList();
    void InsertColumns(bool withPipeColumns);
    void SetGridStyles();
    // `ownEditors` false: the row takes its columns' editors (the rows of a fill).
    HTREEITEM InsertNodeRow(const CSysCodeData& node, HTREEITEM parent, bool withPipeColumns,
        HTREEITEM insertAfter = TVI_LAST, bool ownEditors = true);
    void InsertNodeRows(const CSysCodeData& node, HTREEITEM parent, bool withPipeColumns);
    void SelectInitialCode();
    void LoadPipelineInfo();
    void UpdateElectricalButtons();
    int GetVisibleDepth() const;
    void SetTreeLevel(int level);
    void SetTreeLevel(HTREEITEM item, int level);
    bool BuildRecordFromRow(CSysCodeData& record, HTREEITEM row) const;
    void BuildChildRecords(CSysCodeData& parent, HTREEITEM row);
    // Node operations' helpers.
    HTREEITEM InsertAddedRow(HTREEITEM from, HTREEITEM parent, HTREEITEM after, bool child);
    HTREEITEM InsertNewRow(
        const CSysCodeData& node, HTREEITEM parent, HTREEITEM after, const QString& name, COLORREF colour);
    void InsertPastedChildren(const CSysCodeData& node, HTREEITEM parent, bool bNewColors);
    void FocusNewRow(HTREEITEM previous, HTREEITEM row);
    QString GetRowAmpersandName(HTREEITEM row) const;
    QSet<QString> CollectFoldedNamesBelow(HTREEITEM parent) const;
    int GetSubtreeDepth(HTREEITEM row) const;

    QCheckBox* m_checkDispAddedMsg = nullptr;
    SysCodeFindBar* m_findBar = nullptr;
    // Product entities per floor and code, as the drawings were scanned.
    CodeUsageLedger m_codeUsage;
    CLayoutManager m_layout;
    QListWidget m_specList;
    // The setting of check box 206, now and as read when the dialog opened.
    int m_nDispAddedMsg = 0;
    int m_nDispAddedMsgAtOpen = 0;
    HTREEITEM m_hDropTarget = nullptr;
    double m_dDragScroll = 0.0;
    // The codes of the specialty in the grid as this dialog last read them from the
    // store or stored them (the root's index is the store's high-water mark), and
    // the store's stamp of them: a save checks the stamp and, when someone else
    // stored the specialty in between, merges from these.
    std::unique_ptr<CSysCodeData> m_pStoredCodes;
    quint64 m_nStoredStamp = 0;
    // The line-type scale as last stored.
    QString m_strScale = QStringLiteral("1.0");
    // The dragged row's picture, following the pointer while a drag runs.
    std::unique_ptr<QLabel> m_dragImage;
    bool m_bInitialised = false;
};
