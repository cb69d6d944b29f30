#include "DisplayControlWindow.h"

#include "QvKsCodeStyles.h"
#include "WinMessage.h"

#include <QListWidget>
#include <QPixmap>
#include <QVBoxLayout>

#include <algorithm>

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
    QvKsCodeStyles styles;
    styles.Reload();
    std::vector<std::pair<QString, COLORREF>> rows;
    for (const QvKsCodeStyle& style : styles.All())
        rows.emplace_back(style.spec + u'\\' + style.fullName, style.color);
    std::sort(rows.begin(), rows.end());
    m_list->clear();
    for (const auto& [name, color] : rows) {
        QPixmap swatch(12, 12);
        swatch.fill(QColor(int(color & 0xFF), int((color >> 8) & 0xFF), int((color >> 16) & 0xFF)));
        auto* item = new QListWidgetItem(QIcon(swatch), name, m_list);
        item->setCheckState(Qt::Checked);
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
