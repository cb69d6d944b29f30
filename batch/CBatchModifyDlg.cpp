#include "CBatchModifyDlg.h"

#include "CChangeNameDlg.h"
#include "CtrlId.h"
#include "PipeInfoPath.h"
#include "QvKsCADColorTool.h"
#include "Resource.h"
#include "WinMessageBox.h"

#include <QColor>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QPalette>
#include <QVBoxLayout>

#include <algorithm>

CBatchModifyDlg::CBatchModifyDlg(QWidget* parent)
    : QDialog(parent)
{
    setWindowTitle(QStringLiteral("批量修改"));
    CreateControls();
    BuildMessageMap();
}

void CBatchModifyDlg::CreateControls()
{
    const std::pair<QWidget*, int> ids[]
        = { { &m_chkColor, IDC_BATCH_CHK_COLOR }, { &m_btnColor, IDC_BATCH_BTN_COLOR },
              { &m_chkPipeInfo, IDC_BATCH_CHK_PIPEINFO }, { &m_btnPipeInfo, IDC_BATCH_BTN_PIPEINFO },
              { &m_chkHorMode, IDC_BATCH_CHK_HORMODE }, { &m_cmbHorMode, IDC_BATCH_CMB_HORMODE },
              { &m_chkVerMode, IDC_BATCH_CHK_VERMODE }, { &m_cmbVerMode, IDC_BATCH_CMB_VERMODE },
              { &m_chkRemark, IDC_BATCH_CHK_REMARK }, { &m_editRemark, IDC_BATCH_EDIT_REMARK } };
    auto* grid = new QGridLayout;
    for (int i = 0; i < int(std::size(ids)); ++i) {
        SetDlgCtrlID(ids[i].first, ids[i].second);
        grid->addWidget(ids[i].first, i / 2, i % 2);
    }
    m_chkColor.setText(QStringLiteral("颜色"));
    m_chkPipeInfo.setText(QStringLiteral("管线信息"));
    m_chkHorMode.setText(QStringLiteral("水平敷设方式"));
    m_chkVerMode.setText(QStringLiteral("垂直敷设方式"));
    m_chkRemark.setText(QStringLiteral("备注"));
    m_btnColor.setAutoDefault(false);
    m_btnColor.setAutoFillBackground(true);
    m_btnPipeInfo.setAutoDefault(false);
    m_cmbHorMode.setEditable(false);
    m_cmbVerMode.setEditable(false);
    m_btnColor.setMinimumWidth(140);

    auto* ok = new QPushButton(QStringLiteral("确定"), this);
    SetDlgCtrlID(ok, IDC_BTN_OK);
    ok->setDefault(true);
    auto* cancel = new QPushButton(QStringLiteral("取消"), this);
    SetDlgCtrlID(cancel, IDC_BTN_CANCEL);
    cancel->setAutoDefault(false);
    connect(ok, &QPushButton::clicked, this, &CBatchModifyDlg::OnOK);
    connect(cancel, &QPushButton::clicked, this, &CBatchModifyDlg::reject);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(grid);
    layout->addLayout(buttons);
}

void CBatchModifyDlg::BuildMessageMap()
{
    connect(&m_btnPipeInfo, &QPushButton::clicked, this, &CBatchModifyDlg::OnPickPipeInfo);
    connect(&m_btnColor, &QPushButton::clicked, this, &CBatchModifyDlg::OnPickColor);
    // Choosing a value ticks its box; the user may untick it again.
    connect(&m_cmbHorMode, &QComboBox::activated, this, [this] { m_chkHorMode.setChecked(true); });
    connect(&m_cmbVerMode, &QComboBox::activated, this, [this] { m_chkVerMode.setChecked(true); });
    connect(&m_editRemark, &QLineEdit::textChanged, this, [this] { m_chkRemark.setChecked(true); });
}

void CBatchModifyDlg::SetHorModes(const QStringList& modes)
{
    m_horModes = modes;
}

void CBatchModifyDlg::SetVerModes(const QStringList& modes)
{
    m_verModes = modes;
}

int CBatchModifyDlg::DoModal()
{
    if (!m_bInitialised)
        OnInitDialog();
    return exec() == QDialog::Accepted ? IDOK : IDCANCEL;
}

// The lists are sorted, and the current mode selects the first entry it begins,
// letter case aside; no entry is selected when none does.
void CBatchModifyDlg::FillModes(QComboBox& combo, const QStringList& modes, const QString& current)
{
    QStringList sorted = modes;
    std::stable_sort(sorted.begin(), sorted.end(),
        [](const QString& a, const QString& b) { return a.compare(b, Qt::CaseInsensitive) < 0; });
    combo.clear();
    combo.addItems(sorted);
    combo.setCurrentIndex(current.isEmpty() ? -1 : combo.findText(current, Qt::MatchStartsWith));
}

bool CBatchModifyDlg::OnInitDialog()
{
    m_bInitialised = true;
    SetFaceColor(m_color);
    m_btnPipeInfo.setText(PipeInfoDisplayName(m_strPipeInfo));
    FillModes(m_cmbHorMode, m_horModes, m_strHorMode);
    FillModes(m_cmbVerMode, m_verModes, m_strVerMode);
    // Setting the text ticks the remark's box; the dialog opens with every box clear.
    m_editRemark.setText(m_strRemark);
    m_chkRemark.setChecked(false);
    return true;
}

void CBatchModifyDlg::SetFaceColor(COLORREF colour)
{
    QPalette palette = m_btnColor.palette();
    palette.setColor(QPalette::Button, QColor(GetRValue(colour), GetGValue(colour), GetBValue(colour)));
    m_btnColor.setPalette(palette);
    m_btnColor.update();
}

void CBatchModifyDlg::OnPickColor()
{
    COLORREF chosen = m_color;
    if (QvKsCADColorTool::InvokeCADColorDlg(m_color, chosen)) {
        m_color = chosen;
        SetFaceColor(m_color);
        m_chkColor.setChecked(true);
        return;
    }
    SetFaceColor(m_color);
}

void CBatchModifyDlg::OnPickPipeInfo()
{
    if (m_strSpec.isEmpty()) {
        AfxMessageBox(QStringLiteral("传入信息错误"));
        return;
    }
    if (RunChangeNameDlg(m_strPipeInfo, PipeInfoPickerMode(m_strSpec)) != 1)
        return;
    m_btnPipeInfo.setText(PipeInfoDisplayName(m_strPipeInfo));
    m_chkPipeInfo.setChecked(true);
}

void CBatchModifyDlg::OnOK()
{
    m_strHorMode = m_cmbHorMode.currentText();
    m_strVerMode = m_cmbVerMode.currentText();
    m_strRemark = m_editRemark.text();
    const QCheckBox* boxes[kBatchFieldCount]
        = { &m_chkColor, &m_chkPipeInfo, &m_chkHorMode, &m_chkVerMode, &m_chkRemark };
    for (int i = 0; i < kBatchFieldCount; ++i)
        m_apply[i] = boxes[i]->checkState() == Qt::Checked;
    accept();
}

BatchModifyValues CBatchModifyDlg::GetValues() const
{
    BatchModifyValues values;
    values.color = m_color;
    values.strPipeInfo = m_strPipeInfo;
    values.strHorMode = m_strHorMode;
    values.strVerMode = m_strVerMode;
    values.strRemark = m_strRemark;
    values.apply = m_apply;
    return values;
}
