#include "MessageBoxRecorder.h"

MessageBoxRecorder::MessageBoxRecorder()
{
    m_previous = SetMessageBoxHandler([this](const MessageBoxRequest& request) {
        m_boxes.append(request);
        if (!m_answers.isEmpty())
            return m_answers.takeFirst();
        return DefaultMessageBoxAnswer(request.type);
    });
}

MessageBoxRecorder::~MessageBoxRecorder()
{
    SetMessageBoxHandler(std::move(m_previous));
}

QStringList MessageBoxRecorder::texts() const
{
    QStringList out;
    for (const MessageBoxRequest& box : m_boxes)
        out.append(box.text);
    return out;
}
