#pragma once

// qvhost in the test process: a demo project open, its window built, the test
// plug-in loaded and a script runner ready.
#include "CommandLineWidget.h"
#include "DemoProject.h"
#include "DrawingView.h"
#include "HostSession.h"
#include "HostWindow.h"
#include "ModalDriver.h"
#include "ScriptRunner.h"
#include "WinMessageBox.h"

#include <QImage>

#include <memory>

class HostFixture : public ::testing::Test
{
protected:
    void SetUp() override
    {
        InstallQtMessageBox();
        QString error;
        ASSERT_TRUE(session.Open(project.Path(), QString(), error)) << error.toStdString();
        for (const QString& plugin : Plugins())
            ASSERT_TRUE(session.LoadPlugin(plugin, error)) << error.toStdString();
        window = std::make_unique<HostWindow>(session);
        window->show();
        driver = std::make_unique<ModalDriver>();
        driver->SetTimeout(5000);
        runner = std::make_unique<ScriptRunner>(*window, *driver);
    }

    void TearDown() override
    {
        runner.reset();
        driver.reset();
        window.reset();
        session.Close();
    }

    // The application files loaded before the window is built.
    virtual QStringList Plugins() const { return { QStringLiteral(QV_HOST_TEST_PLUGIN) }; }

    // Runs script text; the failures joined, empty when it passed.
    std::string Run(const QString& script)
    {
        runner->RunText(script);
        return runner->Failures().join(QStringLiteral("; ")).toStdString();
    }

    QString History() const { return window->CommandLine()->HistoryText(); }

    // Pixels of exactly `rgb` in the drawing view.
    int CountPixels(QRgb rgb) const
    {
        const QImage image = window->View()->grab().toImage().convertToFormat(QImage::Format_RGB32);
        int count = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                count += (image.pixel(x, y) & 0xFFFFFF) == (rgb & 0xFFFFFF);
        return count;
    }

    DemoProject project;
    HostSession session;
    std::unique_ptr<HostWindow> window;
    std::unique_ptr<ModalDriver> driver;
    std::unique_ptr<ScriptRunner> runner;
};
