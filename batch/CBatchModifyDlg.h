#pragma once

// "批量修改": collects the values that every selected system-code row is to get —
// colour, pipeline information, horizontal and vertical laying mode, remark —
// each with a check box saying whether it is applied. The caller prepares it from
// the first selected row and writes the ticked values into the rows.
#include "BatchModifyPlan.h"
#include "WinTypes.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QString>
#include <QStringList>

#include <array>

class CBatchModifyDlg : public QDialog
{
    Q_OBJECT
public:
    explicit CBatchModifyDlg(QWidget* parent = nullptr);

    // Runs the dialog modally: IDOK or IDCANCEL.
    int DoModal();
    bool OnInitDialog();

    void SetHorModes(const QStringList& modes);
    void SetVerModes(const QStringList& modes);
    COLORREF GetColor() const { return m_color; }
    QString GetPipeInfo() const { return m_strPipeInfo; }
    QString GetHorMode() const { return m_strHorMode; }
    QString GetVerMode() const { return m_strVerMode; }
    QString GetRemark() const { return m_strRemark; }
    // The values with the ticked boxes, as OK left them.
    BatchModifyValues GetValues() const;

    QCheckBox m_chkColor;
    QPushButton m_btnColor;
    QCheckBox m_chkPipeInfo;
    QPushButton m_btnPipeInfo;
    QCheckBox m_chkHorMode;
    QComboBox m_cmbHorMode;
    QCheckBox m_chkVerMode;
    QComboBox m_cmbVerMode;
    QCheckBox m_chkRemark;
    QLineEdit m_editRemark;
    QStringList m_horModes;
    QStringList m_verModes;
    QString m_strSpec;
    COLORREF m_color = 0;
    QString m_strPipeInfo;
    QString m_strHorMode;
    QString m_strVerMode;
    QString m_strRemark;
    std::array<bool, kBatchFieldCount> m_apply {};

protected:
    void OnOK();
    void OnPickPipeInfo();
    void OnPickColor();

private:
    void CreateControls();
    void BuildMessageMap();
    void SetFaceColor(COLORREF colour);
    static void FillModes(QComboBox& combo, const QStringList& modes, const QString& current);

    bool m_bInitialised = false;
};
