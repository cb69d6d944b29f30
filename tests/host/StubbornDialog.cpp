#include "StubbornDialog.h"

#include "WinMessageBox.h"
#include "ZcUtPrintf.h"

#include <QHBoxLayout>
#include <QPushButton>

namespace {
// Enough that a script answering Yes without end would be seen to.
constexpr int kMaxRetries = 1000;

int Ask(const QString& text, UINT type)
{
    return MessageBoxExW(GetActiveWindow(), text, QStringLiteral("Quorvatek"), type);
}
} // namespace

StubbornDialog::StubbornDialog()
{
    setWindowTitle(QStringLiteral("不肯关闭"));
    auto* layout = new QHBoxLayout(this);
    auto* retry = new QPushButton(QStringLiteral("重试"), this);
    retry->setProperty("controlId", 1001);
    layout->addWidget(retry);
    connect(retry, &QPushButton::clicked, this, &StubbornDialog::Retry);
    auto* stick = new QPushButton(QStringLiteral("卡住"), this);
    stick->setProperty("controlId", 1002);
    layout->addWidget(stick);
    connect(stick, &QPushButton::clicked, this, [this] { m_stuck = true; });
}

void StubbornDialog::reject()
{
    if (m_stuck)
        return;
    if (Ask(QStringLiteral("是否保存设置修改?"), 0x12034) == IDYES) {
        Ask(QStringLiteral("系统编号未能保存，修改仍保留在对话框中!"), 0x12030);
        zcutPrintf(u"\n[qvhstubborn] save failed");
        return;
    }
    QDialog::reject();
}

void StubbornDialog::Retry()
{
    int asked = 1;
    while (Ask(QStringLiteral("再试一次?"), 0x12034) == IDYES && asked < kMaxRetries)
        ++asked;
    zcutPrintf(QStringLiteral("\n[qvhstubborn] asked %1 times").arg(asked));
}
