#pragma once

// Replaces the message-box handler for the lifetime of a test: records every box
// (text, caption, style) and answers from a queue, or with the box's default button
// when the queue is empty. Puts the previous handler back on destruction.
#include "WinMessageBox.h"

#include <QList>

class MessageBoxRecorder
{
public:
    MessageBoxRecorder();
    ~MessageBoxRecorder();
    MessageBoxRecorder(const MessageBoxRecorder&) = delete;
    MessageBoxRecorder& operator=(const MessageBoxRecorder&) = delete;

    void queueAnswer(int answer) { m_answers.append(answer); }
    const QList<MessageBoxRequest>& boxes() const { return m_boxes; }
    QStringList texts() const;
    void clear() { m_boxes.clear(); }

private:
    QList<MessageBoxRequest> m_boxes;
    QList<int> m_answers;
    MessageBoxHandler m_previous;
};
