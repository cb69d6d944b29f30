#pragma once

// The tool window titled "显示控制": the system codes of every specialty (in the
// project's order, parents before children) with their colours, reloaded from the store when the window
// receives message 7034 (sent after the codes were saved). Object names "codeList".
#include "WinTypes.h"

#include <QHash>
#include <QIcon>
#include <QWidget>

class CSysCodeData;
class QListWidget;

class DisplayControlWindow : public QWidget
{
    Q_OBJECT
public:
    static constexpr unsigned kReloadMessage = 7034;

    explicit DisplayControlWindow(QWidget* parent = nullptr);

    void Reload();
    int ReloadCount() const { return m_reloads; }
    QListWidget* List() const { return m_list; }

protected:
    bool event(QEvent* event) override;

private:
    void AddCodes(const QString& prefix, const CSysCodeData& node, QHash<COLORREF, QIcon>& swatches);

    QListWidget* m_list;
    int m_reloads = 0;
};
