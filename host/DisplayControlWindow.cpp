#include "DisplayControlWindow.h"

#include "CISysCode.h"
#include "CSysCodeData.h"
#include "WinMessage.h"

#include <QHash>
#include <QIcon>
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
    QHash<COLORREF, QIcon> swatches;
    for (const QString& spec : CISysCode::GetAllSpecNames()) {
        CSysCodeData root;
        if (CISysCode::GetSpecCodeInfos(root, spec))
            AddCodes(spec + u'\\', root, swatches);
    }
}

// Items are made apart from the list and added whole: an item made inside the list
// announces each of its roles before it has a row, and the list then searches all
// its rows for it.
void DisplayControlWindow::AddCodes(
    const QString& prefix, const CSysCodeData& node, QHash<COLORREF, QIcon>& swatches)
{
    for (const CSysCodeData* child : node.GetChildren()) {
        const COLORREF color = child->GetMfcColor();
        auto swatch = swatches.find(color);
        if (swatch == swatches.end()) {
            QPixmap pixmap(12, 12);
            pixmap.fill(QColor(int(color & 0xFF), int((color >> 8) & 0xFF), int((color >> 16) & 0xFF)));
            swatch = swatches.insert(color, QIcon(pixmap));
        }
        const QString name = prefix + child->GetNodeName();
        auto* item = new QListWidgetItem(*swatch, name);
        item->setCheckState(Qt::Checked);
        m_list->addItem(item);
        AddCodes(name + u'\\', *child, swatches);
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
