#include "VantoraApp/environment/ProductTitle.h"
#include "VantoraHost/core/Installation.h"
#include "VantoraHost/core/reports/Remedy.h"
#include "VantoraHost/core/workers/Confinement.h"
#include "VantoraHost/desktop/DesktopArguments.h"
#include "VantoraHost/desktop/MainWindow.h"
#include "VantoraHost/desktop/session/SingleWindow.h"
#include "VantoraHost/desktop/texts/ShownTexts.h"
#include "VantoraHost/desktop/texts/Translations.h"

#include <QtCore/QFileInfo>
#include <QtCore/QLocale>
#include <QtCore/QTextCodec>
#include <QtWidgets/QApplication>

#include <signal.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>

namespace {

// Nobody reads the terminal of a window. Without a display, though, Qt has nothing else to say it
// on, and would end the program by a signal.
void handleMessage(QtMsgType type, const QMessageLogContext&, const QString&)
{
    if (type == QtFatalMsg) {
        std::fprintf(stderr, "vantora-desktop: error: no display can be reached; %s\n",
                     vantora::commonRemedy(vantora::Reason::DisplayMissing).c_str());
        std::_Exit(1);
    }
}

} // namespace

int main(int argc, char** argv)
{
    using namespace vantora::desktop;
    vantora::keepMemoryPrivate();
    ::signal(SIGPIPE, SIG_IGN); // a worker that is gone is heard of otherwise
    // Names of files are the same wherever the session's language says that they come from.
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    QStringList given;
    for (int i = 1; i < argc; ++i) {
        given << qtPath(argv[i]);
    }
    const DesktopArguments arguments = readArguments(given);
    if (arguments.mistake) {
        std::fprintf(stderr, "vantora-desktop: %s\n", qUtf8Printable(*arguments.mistake));
        return 2;
    }
    if (arguments.printed) {
        return std::fputs(qUtf8Printable(*arguments.printed), stdout) >= 0 ? 0 : 1;
    }
    qInstallMessageHandler(handleMessage);
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    int onlyName = 1;
    QApplication application(onlyName, argv);
    QApplication::setApplicationName("vantora-desktop");
    QApplication::setApplicationDisplayName(ProductTitle());
    QApplication::setDesktopFileName("vantora-desktop");
    std::setlocale(LC_NUMERIC, "C"); // the application has taken over the user's
    const Translations translations{QLocale::system()};

    vantora::Installation installation = vantora::thisInstallation();
    installation.program = vantora::thisProgram().parent_path() / "vantora";
    QStringList files;
    for (const QString& file : arguments.files) {
        files << QFileInfo(file).absoluteFilePath();
    }
    SingleWindow single(arguments.newWindow ? QString() : sessionFolder(), sessionName());
    if (single.handOver(files)) {
        return 0;
    }
    MainWindow window(installation);
    QObject::connect(&single, &SingleWindow::filesGiven, &window, &MainWindow::comeForward);
    window.open(files);
    window.show();
    return QApplication::exec();
}
