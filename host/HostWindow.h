#pragma once

// The host's main window: the drawing view of the working drawing, the command
// line (registered commands and the host's own: REGEN, FREDRAW, FLOOR, QUIT, and
// those of HostDrawingCommands), the
// attribute bar as a dock and the "显示控制" tool window. Strings commands queue
// with sendStringToExecute run after the command that queued them.
#include "ZcEdCommandLoop.h"

#include <QMainWindow>

#include <memory>

class CommandLineWidget;
class DisplayControlWindow;
class DisplayListBuilder;
class DrawingView;
class HostDrawingCommands;
class HostSession;
class QDockWidget;
class QLabel;
class QTimer;

class HostWindow : public QMainWindow
{
    Q_OBJECT
public:
    // Shows the session's drawing when it has one; otherwise ShowDrawing() does once
    // the drawing is in place.
    explicit HostWindow(HostSession& session, QWidget* parent = nullptr);
    ~HostWindow() override;

    // Types `text` on the command line (a trailing blank submits it) and runs what
    // it completes, then what was queued meanwhile. The number of commands run.
    int RunCommandText(const QString& text);
    // Re-reads codes, line types and the colour display type and rebuilds the view.
    void Regen();
    // Regenerates and shows the whole drawing.
    void ShowDrawing();
    // Fills the attribute bar and "显示控制" from the store again.
    void ReloadStoreViews();
    void Fredraw();
    // Makes another floor's drawing the working one; false with a message printed.
    bool SwitchFloor(const QString& floor);

    DrawingView* View() const { return m_view; }
    CommandLineWidget* CommandLine() const { return m_commandLine; }
    DisplayControlWindow* DisplayControl() const { return m_displayControl; }
    QDockWidget* BarDock() const { return m_barDock; }
    const ZcEdCommandLoop& Loop() const { return m_loop; }
    int RegenCount() const { return m_regens; }
    bool QuitRequested() const { return m_quit; }

Q_SIGNALS:
    void quitRequested();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    bool RunHostCommand(const QString& word);
    void RunQueuedStrings();
    void UpdateStatus();
    // The names the command line completes: registered commands and the host's own.
    QStringList CommandNames() const;
    // Re-reads codes, line types and the colour display type for a build.
    DisplayListBuilder MakeBuilder() const;
    // Shows a newly built list.
    void Regenerated();

    HostSession& m_session;
    ZcEdCommandLoop m_loop;
    DrawingView* m_view;
    CommandLineWidget* m_commandLine;
    QDockWidget* m_barDock;
    DisplayControlWindow* m_displayControl;
    QLabel* m_status;
    QTimer* m_queueTimer;
    std::unique_ptr<HostDrawingCommands> m_drawingCommands;
    bool m_inCommand = false;
    bool m_awaitFloor = false;
    bool m_quit = false;
    int m_regens = 0;
    // What the last regeneration could not draw, and the drawing last told about.
    QString m_notShown;
    quint32 m_announcedDrawing = 0;
};
