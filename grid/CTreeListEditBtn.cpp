#include "CTreeListEditBtn.h"

#include "CtrlId.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QToolButton>

CTreeListEditBtn::CTreeListEditBtn(CTreeListCtrl* grid, QWidget* parent)
    : QWidget(parent)
    , CTreeListEditorBase(grid)
    , m_edit(new QLineEdit(this))
    , m_button(new QToolButton(this))
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_edit, 1);
    layout->addWidget(m_button);
    m_button->setText(QStringLiteral("..."));
    m_button->setFocusPolicy(Qt::StrongFocus);
    setFocusProxy(m_edit);
    m_edit->installEventFilter(this);
    connect(m_button, &QToolButton::clicked, this, [this] { Q_EMIT buttonClicked(GetButtonId()); });
    hide();
}

QString CTreeListEditBtn::GetWindowText() const
{
    return m_edit->text();
}

void CTreeListEditBtn::SetWindowText(const QString& text)
{
    m_edit->setText(text);
}

void CTreeListEditBtn::SetButtonId(int id)
{
    ::SetDlgCtrlID(m_button, id);
}

int CTreeListEditBtn::GetButtonId() const
{
    return ::GetDlgCtrlID(m_button);
}

void CTreeListEditBtn::SetReadOnly(bool readOnly)
{
    m_edit->setReadOnly(readOnly);
}

void CTreeListEditBtn::BeginEdit(
    HTREEITEM item, int column, const QString& text, const QStringList& options, const QRect& rect)
{
    m_button->setFixedWidth(std::max(16, rect.height()));
    CTreeListEditorBase::BeginEdit(item, column, text, options, rect);
    m_edit->selectAll();
}

bool CTreeListEditBtn::EndEdit(bool onRow, int mode)
{
    if (!IsEditing())
        return false;
    if (mode == TLEND_CANCEL)
        m_edit->setText(GetStartText());
    return Finish(onRow, 0);
}

bool CTreeListEditBtn::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_edit && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            EndEdit(true, TLEND_COMMIT);
            return true;
        }
        if (key == Qt::Key_Escape) {
            EndEdit(true, TLEND_CANCEL);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}
