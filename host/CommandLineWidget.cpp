#include "CommandLineWidget.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QVBoxLayout>

CommandLineWidget::CommandLineWidget(QWidget* parent)
    : QWidget(parent)
    , m_history(new QPlainTextEdit(this))
    , m_input(new QLineEdit(this))
{
    m_history->setObjectName(QStringLiteral("commandHistory"));
    m_history->setReadOnly(true);
    m_history->setMaximumBlockCount(5000);
    m_input->setObjectName(QStringLiteral("commandInput"));
    m_input->setPlaceholderText(tr("命令:"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->setSpacing(2);
    layout->addWidget(m_history, 1);
    layout->addWidget(m_input);
    connect(m_input, &QLineEdit::returnPressed, this, &CommandLineWidget::OnReturn);
}

void CommandLineWidget::Print(const QString& text)
{
    QTextCursor cursor(m_history->document());
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(text);
    m_history->verticalScrollBar()->setValue(m_history->verticalScrollBar()->maximum());
}

QString CommandLineWidget::HistoryText() const
{
    return m_history->toPlainText();
}

void CommandLineWidget::OnReturn()
{
    const QString text = m_input->text();
    m_input->clear();
    Print(QStringLiteral("\n命令: %1").arg(text));
    Q_EMIT submitted(text + u' ');
}
