// Saving, cancelling and switching specialty: the checks before a save, the save
// itself as one store transaction, and the refresh of the drawing afterwards.
#include "SysCodeDlg.h"

#include "CQVCheckSysNameLegal.h"

#include "CISysCode.h"
#include "CLayerManage.h"
#include "CProj.h"
#include "IFaceBarCtrl.h"
#include "IQvKsAppProfile.h"
#include "LineTypeMgr.h"
#include "ModuleStrings.h"
#include "QvKsAtomicFile.h"
#include "QvKsBzPub.h"
#include "QvKsDataMng.h"
#include "QvKsProfile.h"
#include "SysCodeRenames.h"
#include "SysCodeSaveCheck.h"
#include "SysCodeSettings.h"
#include "WinMessageBox.h"
#include "WriteFailureText.h"
#include "ZcApDocManager.h"

#include <algorithm>
#include <memory>

namespace {
int ShowBox(const QString& text, UINT type)
{
    return MessageBoxExW(GetActiveWindow(), text, g_strCaption, type);
}

// The store refused a save: the user keeps every edit and learns why.
void ShowStoreFailure()
{
    const QString why = QvKsDataMng::LastError();
    QString text = QStringLiteral("系统编号未能保存，修改仍保留在对话框中");
    if (!why.isEmpty())
        text += QStringLiteral("：\n") + why;
    ShowBox(text + g_strExclaim, kMbWarning);
}

void SendHostCommand(const QString& command)
{
    ZcApDocManager* docs = zcDocManagerPtr();
    docs->sendStringToExecute(docs->curDocument(), command, false, true, false);
}
} // namespace

void SysCodeDlg::reject()
{
    OnCancel();
}

QList<QStringList> SysCodeDlg::CollectSiblingNames() const
{
    QList<QStringList> groups;
    std::vector<HTREEITEM> parents { m_tree.GetRootItem() };
    for (size_t i = 0; i < parents.size(); ++i) {
        QStringList names;
        for (HTREEITEM c = m_tree.GetChildItem(parents[i]); c; c = m_tree.GetNextSiblingItem(c)) {
            names << m_tree.GetItemText(c, 0);
            if (m_tree.ItemHasChildren(c))
                parents.push_back(c);
        }
        if (!names.isEmpty())
            groups << names;
    }
    return groups;
}

SysCodeSaveStatus SysCodeDlg::ValidateForSave(bool bOnOK)
{
    const SysCodeSaveCheck check = CheckSysCodesForSave(CollectSiblingNames());
    if (check.status == SysCodeSaveStatus::SiblingDuplicate) {
        const QString text = bOnOK ? QStringLiteral("%1系统编号在该同级中已存在")
                                   : QStringLiteral("%1系统编号在同级中已存在");
        ShowBox(text.arg(check.name) + g_strExclaim, kMbWarning);
    } else if (check.status == SysCodeSaveStatus::IllegalName) {
        ShowBox(CQVCheckSysNameLegal::IllegalNameMessage(check.name) + g_strExclaim, kMbWarning);
    }
    return check.status;
}

// Bill and quota items measured for a renamed code take its new path. Items are
// changed in the dialog's maps and queued in the store; CAtt::Save writes them.
bool SysCodeDlg::ApplyRenames()
{
    if (m_renames.empty() && !m_bRenamesOnly)
        return true;
    const SysCodeRenameList renames = SortSysCodeRenames(m_renames);
    if (!CarryRenamesIntoItems([&](const QString& path) { return RenamedSysCodePath(renames, path); }))
        return false;
    m_renames.clear();
    return true;
}

// Rows made in the dialog learn the index the store gave them, so a second save
// keeps it.
void SysCodeDlg::StoreRowIndexes(const CSysCodeData& parent, HTREEITEM row)
{
    int i = 0;
    for (HTREEITEM c = m_tree.GetChildItem(row); c && i < parent.GetChildCount();
         c = m_tree.GetNextSiblingItem(c), ++i) {
        const CSysCodeData* record = parent.GetChild(i);
        m_tree.SetItemData(c, quintptr(std::max(record->GetNodeIndex(), 0)));
        m_nMaxIndex = std::max(m_nMaxIndex, record->GetNodeIndex());
        StoreRowIndexes(*record, c);
    }
}

bool SysCodeDlg::StoreInOneTransaction(
    const std::function<bool()>& writes, const std::function<bool()>& quietWhen)
{
    const auto qdItems = m_mapQdInfo;
    const auto deItems = m_mapDeInfo;
    const auto renames = m_renames;
    const int maxIndex = m_nMaxIndex;
    if (QvKsDataMng::BeginWrites() && writes() && QvKsDataMng::CommitWrites())
        return true;
    QvKsDataMng::RollbackWrites();
    m_mapQdInfo = qdItems;
    m_mapDeInfo = deItems;
    m_renames = renames;
    m_nMaxIndex = maxIndex;
    if (!quietWhen || !quietWhen())
        ShowStoreFailure();
    return false;
}

void SysCodeDlg::KeepStoredCodes(const CSysCodeData& root, quint64 stamp)
{
    if (!m_pStoredCodes)
        m_pStoredCodes = std::make_unique<CSysCodeData>();
    *m_pStoredCodes = root;
    m_nStoredStamp = stamp;
}

namespace {
// Indexes the dialog gave codes it made are only its own: the store numbers them,
// so two people adding codes at once never get one index.
void ForgetUnstoredIndexes(CSysCodeData& node, int storedHighWater)
{
    for (CSysCodeData* child : node.GetChildren()) {
        if (child->GetNodeIndex() > storedHighWater)
            child->SetNodeIndex(0);
        ForgetUnstoredIndexes(*child, storedHighWater);
    }
}

void ShowMergedNotice(const QStringList& fromTheirs)
{
    if (fromTheirs.isEmpty())
        return;
    constexpr qsizetype kShown = 20;
    QStringList lines = fromTheirs.mid(0, kShown);
    if (fromTheirs.size() > kShown)
        lines << QStringLiteral("……共 %1 处").arg(fromTheirs.size());
    ShowBox(QStringLiteral("本专业的系统编号在打开后已被他人修改，已与本次修改合并，其中来自他人的修改：\n")
            + lines.join(QLatin1Char('\n')) + g_strNotice,
        kMbNotice);
}
} // namespace

bool SysCodeDlg::StoreGridCodes(
    const QString& spec, const QString& scale, CSysCodeData& root, bool withRenames)
{
    root.DeleteData();
    BuildChildRecords(root, m_tree.GetRootItem());
    const CSysCodeData none;
    const CSysCodeData* base = m_pStoredCodes ? m_pStoredCodes.get() : &none;
    ForgetUnstoredIndexes(root, base->GetNodeIndex());
    quint64 baseStamp = m_nStoredStamp;
    std::unique_ptr<CSysCodeData> mergedFrom; // the store as the last merge met it
    QStringList fromTheirs;
    std::vector<std::pair<QString, QString>> mergeRenames;
    // Someone may store the specialty again while the user settles a merge: each
    // round checks afresh.
    constexpr int kRounds = 5;
    for (int round = 0; round < kRounds; ++round) {
        quint64 stamp = baseStamp;
        auto theirs = std::make_unique<CSysCodeData>();
        quint64 theirsStamp = 0;
        CISysCode::SaveResult result = CISysCode::SaveResult::Failed;
        const bool stored = StoreInOneTransaction(
            [&] {
                if (!scale.isNull() && !CISysCode::SetLineTypeScale(scale))
                    return false;
                if (mergedFrom ? !ApplyMergeRenames(spec, mergeRenames) : withRenames && !ApplyRenames())
                    return false;
                result = CISysCode::SetSpecCodeInfos(root, spec, stamp);
                if (result == CISysCode::SaveResult::ChangedSinceRead)
                    CISysCode::GetSpecCodeInfos(*theirs, spec, theirsStamp);
                return result == CISysCode::SaveResult::Saved;
            },
            [&] { return result == CISysCode::SaveResult::ChangedSinceRead; });
        if (stored) {
            KeepStoredCodes(root, stamp);
            if (mergedFrom) {
                m_renames.clear();
                FillRowsFromRoot(root);
                ShowMergedNotice(fromTheirs);
            }
            return true;
        }
        if (result != CISysCode::SaveResult::ChangedSinceRead)
            return false;
        if (!MergeWithStore(*base, *theirs, root, fromTheirs, mergeRenames))
            return false;
        mergedFrom = std::move(theirs);
        base = mergedFrom.get();
        baseStamp = theirsStamp;
    }
    ShowBox(
        QStringLiteral("系统编号未能保存：本专业的系统编号正被他人连续修改，修改仍保留在对话框中，请稍后再试")
            + g_strExclaim,
        kMbWarning);
    return false;
}

bool SysCodeDlg::SaveSpecCodes(const QString& spec, const QString& scale, CSysCodeData& root)
{
    if (!StoreGridCodes(spec, scale, root, true))
        return false;
    StoreRowIndexes(root, m_tree.GetRootItem());
    SetSavedFlags();
    return true;
}

void SysCodeDlg::ShowWriteFailure(const QvKsWriteStatus& status) const
{
    ShowBox(WriteFailureText(status) + g_strExclaim, kMbWarning);
}

// A setting that cannot be stored is reported; the file keeps its old value whole,
// and closing goes on.
bool SysCodeDlg::SaveDispAddedMsg()
{
    UpdateData(true);
    const QvKsWriteStatus status = SaveDispAddedMsgSetting(
        QvKsProfile::GetAppProfile()->GetPath(), m_nDispAddedMsg, QvKsDataMng::ProjectFolder());
    if (!status)
        ShowWriteFailure(status);
    return status.IsOk();
}

bool SysCodeDlg::WriteLineTypeFile() const
{
    if (LineTypeMgr::Instance()->WriteLineTypeFile())
        return true;
    const QString path = LineTypeMgr::FilePath();
    const QvKsWriteStatus status = QvKsAtomicFile::LastStatus();
    if (path.isEmpty())
        return false; // no project: nothing the user could keep
    ShowWriteFailure(!status && status.GetPath() == path
            ? status
            : QvKsWriteStatus::Failure(QvKsWriteStatus::Kind::Failed, path, QvKsDataMng::LastError()));
    return false;
}

// Layers and the drawing after a save, when entities are drawn in their code's
// colour; true when the drawing was regenerated.
bool SysCodeDlg::RefreshColors(bool bRedrawFirst, const CSysCodeData* saved)
{
    if (!m_bColorChanged)
        return false;
    if (saved)
        RefreshAfterSave([&] { FillRowsFromRoot(*saved); });
    else
        RefreshAfterSave(m_strSpec);
    if (CProj().GetColorShowType() != 1)
        return false;
    CLayerManage::GetInstance()->UpdateCurDwgLayerColor();
    if (bRedrawFirst)
        SendHostCommand(QStringLiteral("fredraw "));
    SendHostCommand(QStringLiteral("regen "));
    return true;
}

void SysCodeDlg::OnOK()
{
    UpdateData(true);
    if (IsModified() && ValidateForSave(true) != SysCodeSaveStatus::Ok)
        return;
    const QString scale = m_editScale.GetWindowText();
    const bool scaleChanged = scale != m_strScale;
    CSysCodeData saved;
    bool bSaved = false;
    if (IsModified() || scaleChanged) {
        if (!SaveSpecCodes(m_strSpec, scaleChanged ? scale : QString(), saved))
            return;
        bSaved = true;
        m_strScale = scale;
    } else if (m_bRenamesOnly && !StoreInOneTransaction([this] { return ApplyRenames(); })) {
        return;
    }
    if (m_bLineTypesChanged)
        WriteLineTypeFile();
    if (m_nDispAddedMsg != m_nDispAddedMsgAtOpen) {
        SaveDispAddedMsg();
        IFaceBarCtrl::ReFreshSysCodeBar();
    }
    const bool regenerated = RefreshColors(true, bSaved ? &saved : nullptr);
    if (m_specList.currentItem() && m_specList.currentItem()->text() == CProj().GetCurrentSpec()) {
        HTREEITEM focused = m_tree.GetCaretItem();
        m_strSelCode = focused ? GetRowFullName(focused) : QString();
    }
    if ((m_bLineTypesChanged || scaleChanged) && !regenerated)
        SendHostCommand(QStringLiteral("regen "));
    QvKsBzPub::RefreshAllBz();
    accept();
}

void SysCodeDlg::OnCancel()
{
    UpdateData(true);
    bool scaleChanged = false;
    const QString scale = m_editScale.GetWindowText();
    if (scale != m_strScale) {
        // A new scale is kept whatever the answer below.
        if (CISysCode::SetLineTypeScale(scale)) {
            m_strScale = scale;
            scaleChanged = true;
        } else {
            ShowStoreFailure();
        }
    }
    const bool settingChanged = m_nDispAddedMsg != m_nDispAddedMsgAtOpen;
    CSysCodeData saved;
    bool bSaved = false;
    if ((IsModified() || scaleChanged || settingChanged)
        && ShowBox(QStringLiteral("是否保存设置修改") + g_strQuestion, kMbQuestion) == IDYES) {
        if (IsModified() || scaleChanged) {
            if (ValidateForSave(false) != SysCodeSaveStatus::Ok
                || !SaveSpecCodes(m_strSpec, QString(), saved))
                return;
            bSaved = true;
        }
        if (settingChanged) {
            SaveDispAddedMsg();
            IFaceBarCtrl::ReFreshSysCodeBar();
        }
    }
    if (m_bLineTypesChanged)
        WriteLineTypeFile();
    const bool regenerated = RefreshColors(false, bSaved ? &saved : nullptr);
    if ((m_bLineTypesChanged || scaleChanged) && !regenerated)
        SendHostCommand(QStringLiteral("regen "));
    QvKsBzPub::RefreshAllBz();
    QDialog::reject();
}

void SysCodeDlg::OnSpecSelChange()
{
    QListWidgetItem* item = m_specList.currentItem();
    if (!item || item->text() == m_strSpec)
        return;
    // A specialty the store cannot give is not switched to: the list goes back to
    // the one being edited, which keeps its rows and edits.
    CSysCodeData next;
    quint64 nextStamp = 0;
    if (!LoadSpecCodes(item->text(), next, nextStamp)) {
        const QList<QListWidgetItem*> current = m_specList.findItems(m_strSpec, Qt::MatchExactly);
        const QSignalBlocker blocker(&m_specList);
        if (!current.isEmpty())
            m_specList.setCurrentItem(current.first());
        return;
    }
    m_strPrevSpec = m_strSpec;
    if (IsModified()) {
        const QString question = QStringLiteral(" %1 设置已发生改变,是否保存修改").arg(m_strPrevSpec);
        if (ShowBox(question + g_strQuestion, kMbQuestionDefaultNo) == IDYES) {
            const SysCodeSaveStatus status = ValidateForSave(false);
            if (status == SysCodeSaveStatus::SiblingDuplicate)
                UpdateData(false);
            if (status != SysCodeSaveStatus::Ok)
                return;
            CSysCodeData saved;
            if (!SaveSpecCodes(m_strPrevSpec, QString(), saved)) {
                UpdateData(false);
                return;
            }
        } else {
            // The dropped edits' renames name codes that were never stored.
            m_renames.clear();
        }
    }
    UpdateData(true);
    FillSysCodeTree(m_strSpec, next, nextStamp);
    UpdateElectricalButtons();
}
