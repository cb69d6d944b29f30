// Test main for widget tests: a QApplication on the offscreen platform, so the
// tests run without a display and without a window manager.
#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QTemporaryDir runtimeDir;
    if (qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR") && runtimeDir.isValid()) {
        QFile::setPermissions(
            runtimeDir.path(), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtimeDir.path()));
    }
    if (qEnvironmentVariableIsEmpty("QT_LOGGING_RULES"))
        qputenv("QT_LOGGING_RULES", "default.warning=false");
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
