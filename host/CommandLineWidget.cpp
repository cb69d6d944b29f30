#include "CommandLineWidget.h"

#include <QCompleter>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QStringListModel>
#include <QVBoxLayout>

#include <algorithm>

CommandLineWidget::CommandLineWidget(QWidget* parent)
    : QWidget(parent)
    , m_history(new QPlainTextEdit(this))
    , m_input(new QLineEdit(this))
    , m_completer(new QCompleter(this))
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
    m_completer->setModel(new QStringListModel(m_completer));
    m_completer->setCaseSensitivity(Qt::CaseInsensitive);
    m_completer->setCompletionMode(QCompleter::PopupCompletion);
    m_input->setCompleter(m_completer);
    connect(m_input, &QLineEdit::textEdited, this, [this](const QString& text) {
        if (text.size() == 1)
            RefreshCompletions();
    });
    connect(m_input, &QLineEdit::returnPressed, this, &CommandLineWidget::OnReturn);
    m_input->installEventFilter(this);
}

void CommandLineWidget::SetCommandNames(std::function<QStringList()> names)
{
    m_commandNames = std::move(names);
    RefreshCompletions();
}

void CommandLineWidget::RefreshCompletions()
{
    auto* model = static_cast<QStringListModel*>(m_completer->model());
    QStringList names = m_commandNames ? m_commandNames() : QStringList();
    names.sort(Qt::CaseInsensitive);
    if (model->stringList() != names)
        model->setStringList(names);
}

bool CommandLineWidget::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_input && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down) {
            Recall(key == Qt::Key_Up ? -1 : 1);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void CommandLineWidget::Recall(int step)
{
    if (m_entered.isEmpty())
        return;
    m_recall = std::clamp<qsizetype>(m_recall + step, 0, m_entered.size());
    m_input->setText(m_recall < m_entered.size() ? m_entered[m_recall] : QString());
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
    QString text = m_input->text().trimmed();
    if (text.isEmpty() && !m_entered.isEmpty())
        text = m_entered.last();
    if (text.isEmpty())
        return;
    if (m_entered.isEmpty() || m_entered.last() != text)
        m_entered.append(text);
    m_recall = m_entered.size();
    m_input->clear();
    Print(QStringLiteral("\n命令: %1").arg(text));
    Q_EMIT submitted(text + u' ');
}
