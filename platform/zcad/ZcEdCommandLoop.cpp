#include "ZcEdCommandLoop.h"

#include "ZcApDocManager.h"
#include "ZcEdCommandStack.h"
#include "ZcUtPrintf.h"

#include <QStringList>

namespace {
// A command that keeps queueing itself must not hang the host.
constexpr int kMaxCommandsPerRun = 10000;

qsizetype findTerminator(const QString& text)
{
    for (qsizetype i = 0; i < text.size(); ++i)
        if (text[i] == u' ' || text[i] == u'\n' || text[i] == u'\r')
            return i;
    return -1;
}
} // namespace

int ZcEdCommandLoop::type(const QString& text)
{
    m_buffer += text;
    return runPending();
}

int ZcEdCommandLoop::runPending()
{
    ZcApDocManager* manager = zcDocManagerPtr();
    int run = 0;
    while (run < kMaxCommandsPerRun) {
        const qsizetype end = findTerminator(m_buffer);
        if (end < 0) {
            if (!manager->hasPendingStrings())
                break;
            m_buffer += manager->takePendingString().text;
            continue;
        }
        const QString word = m_buffer.left(end);
        m_buffer.remove(0, end + 1);
        if (word.isEmpty())
            continue;
        execute(word);
        ++run;
    }
    if (run == kMaxCommandsPerRun) {
        zcutPrintf(QStringLiteral("\nToo many queued commands; the rest was dropped."));
        m_buffer.clear();
        while (manager->hasPendingStrings())
            manager->takePendingString();
    }
    return run;
}

void ZcEdCommandLoop::execute(const QString& word)
{
    ZcApDocManager* manager = zcDocManagerPtr();
    const int depthBefore = manager->resourceHandleDepth();
    const int popsBefore = manager->unmatchedPops();
    m_history.append(word);
    if (!zcedRegCmds()->invoke(word) && !(m_fallback && m_fallback(word)))
        zcutPrintf(QStringLiteral("\nUnknown command \"%1\".").arg(word.toUpper()));
    m_lastBalanced = manager->resourceHandleDepth() == depthBefore && manager->unmatchedPops() == popsBefore;
    if (!m_lastBalanced) {
        ++m_unbalanced;
        zcutPrintf(QStringLiteral("\nCommand %1 left the resource handles unbalanced.").arg(word.toUpper()));
    }
}
