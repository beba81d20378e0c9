#include "VantoraApp/dialogs/DialogMessages.h"

#include <QtCore/QTemporaryDir>
#include <QtWidgets/QApplication>

#include <gmock/gmock.h>
#include <memory>

#ifdef VANTORA_SANITIZED
#include <sanitizer/lsan_interface.h>
#endif

namespace {

std::unique_ptr<QApplication> startApplication(int& argc, char** argv)
{
#ifdef VANTORA_SANITIZED
    // The offscreen platform never frees its screen, which is no leak of ours.
    const __lsan::ScopedDisabler platform;
#endif
    return std::make_unique<QApplication>(argc, argv);
}

} // namespace

// Qt's platform plug-in for tests leaves its screen behind when a program ends, and a field's
// button for clearing it the animation that fades it in, unless that has come to its end.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions()
{
    return "leak:libqoffscreen\nleak:QScreen::QScreen\nleak:QWindowSystemInterface::\n"
           "leak:QPlatformScreen::QPlatformScreen\nleak:QPropertyAnimation::QPropertyAnimation\n";
}

// For tests of widgets: a home of its own, so that nobody's files are read or written.
int main(int argc, char** argv)
{
    testing::InitGoogleMock(&argc, argv);
    const QTemporaryDir home;
    const QByteArray path = home.path().toUtf8();
    for (const char* name : {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME",
                             "XDG_RUNTIME_DIR", "TMPDIR"})
        qputenv(name, path);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    DropDialogMessages();
    const auto application = startApplication(argc, argv);
    QApplication::setApplicationName("vantora-test");
    return home.isValid() ? RUN_ALL_TESTS() : 1;
}
