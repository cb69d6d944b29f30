#include "DisplayControlWindow.h"

#include "CISysCode.h"
#include "CSysCodeData.h"
#include "WinMessage.h"

#include <QListWidget>
#include <QPixmap>
#include <QVBoxLayout>

DisplayControlWindow::DisplayControlWindow(QWidget* parent)
    : QWidget(parent, Qt::Tool)
    , m_list(new QListWidget(this))
{
    setWindowTitle(QStringLiteral("显示控制"));
    m_list->setObjectName(QStringLiteral("codeList"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addWidget(m_list);
    resize(260, 420);
}

void DisplayControlWindow::Reload()
{
    ++m_reloads;
    m_list->clear();
    for (const QString& spec : CISysCode::GetAllSpecNames()) {
        CSysCodeData root;
        if (CISysCode::GetSpecCodeInfos(root, spec))
            AddCodes(spec, root);
    }
}

void DisplayControlWindow::AddCodes(const QString& spec, const CSysCodeData& node)
{
    for (const CSysCodeData* child : node.GetChildren()) {
        const COLORREF color = child->GetMfcColor();
        QPixmap swatch(12, 12);
        swatch.fill(QColor(int(color & 0xFF), int((color >> 8) & 0xFF), int((color >> 16) & 0xFF)));
        auto* item = new QListWidgetItem(QIcon(swatch), spec + u'\\' + child->GetFullName(), m_list);
        item->setCheckState(Qt::Checked);
        AddCodes(spec, *child);
    }
}

bool DisplayControlWindow::event(QEvent* event)
{
    if (event->type() == WinMessageEvent::eventType()) {
        auto* message = static_cast<WinMessageEvent*>(event);
        if (message->message() == kReloadMessage) {
            Reload();
            message->setResult(1);
        }
        return true;
    }
    return QWidget::event(event);
}
