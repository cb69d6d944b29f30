#include "CTreeListCombo.h"

#include "CLineWidthSampleDelegate.h"
#include "QvString.h"
#include "WinMessageBox.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QLineEdit>

#include <cmath>

namespace {
const QString kLineWidthRange = QStringLiteral("线宽支持范围0-100");
const QString kCaption = QStringLiteral("Quorvatek");
constexpr UINT kWarning = MB_OK | MB_ICONEXCLAMATION | MB_TASKMODAL | MB_SETFOREGROUND;
} // namespace

CTreeListCombo::CTreeListCombo(CTreeListCtrl* grid, QWidget* parent)
    : QComboBox(parent)
    , CTreeListEditorBase(grid)
    , m_sampleDelegate(new CLineWidthSampleDelegate(this))
    , m_plainDelegate(view()->itemDelegate())
{
    setInsertPolicy(QComboBox::NoInsert);
    hide();
}

void CTreeListCombo::SetWindowText(const QString& text)
{
    const int index = findText(text, Qt::MatchExactly);
    if (isEditable()) {
        setEditText(text);
        return;
    }
    // A list combo shows only its entries: an unknown text selects nothing.
    setCurrentIndex(index);
}

void CTreeListCombo::SetEditableMode(bool editableWithSamples)
{
    m_samples = editableWithSamples;
    setEditable(editableWithSamples);
    if (editableWithSamples)
        setInsertPolicy(QComboBox::NoInsert);
    view()->setItemDelegate(
        editableWithSamples ? static_cast<QAbstractItemDelegate*>(m_sampleDelegate) : m_plainDelegate);
}

void CTreeListCombo::BeginEdit(
    HTREEITEM item, int column, const QString& text, const QStringList& options, const QRect& rect)
{
    clear();
    addItems(options);
    m_lastGoodText = text;
    CTreeListEditorBase::BeginEdit(item, column, text, options, rect);
    if (isEditable() && lineEdit())
        lineEdit()->selectAll();
}

QString CTreeListCombo::RoundLineWidth(double value)
{
    const double rounded = std::trunc(value * 100.0 + 0.5) / 100.0;
    return QString::asprintf("%g", rounded);
}

bool CTreeListCombo::CheckLineWidth()
{
    const QString text = currentText();
    if (QvString::IsDouble(text)) {
        const QString good = RoundLineWidth(text.trimmed().toDouble());
        if (!m_widthInRange || m_widthInRange(good.toDouble())) {
            SetWindowText(good);
            m_lastGoodText = good;
            return true;
        }
    }
    SetWindowText(m_lastGoodText);
    MessageBoxExW(GetActiveWindow(), kLineWidthRange, kCaption, kWarning);
    return false;
}

bool CTreeListCombo::EndEdit(bool onRow, int mode)
{
    if (!IsEditing())
        return false;
    if (mode == TLEND_CANCEL)
        SetWindowText(GetStartText());
    hidePopup();
    const UINT state = currentText() != GetStartText() ? TLCOMBO_CHANGED : 0;
    return Finish(onRow, state);
}

void CTreeListCombo::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        // A typed width must be a number before it can go into the cell.
        if (!isEditable() || CheckLineWidth())
            EndEdit(true, TLEND_COMMIT);
        return;
    }
    if (event->key() == Qt::Key_Escape) {
        EndEdit(true, TLEND_CANCEL);
        return;
    }
    QComboBox::keyPressEvent(event);
}
