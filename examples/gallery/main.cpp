#include "examples/gallery/GalleryWindow.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QTextStream>
#include <QtCore/QTimer>
#include <QtGui/QPixmap>
#include <QtWidgets/QApplication>

// Shows the widgets for options dialogs; with --save, writes a picture of them and ends.
int main(int argc, char** argv)
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    const QApplication application(argc, argv);
    QCommandLineParser options;
    options.addHelpOption();
    options.addOption({"save", "Write a picture of the window and end.", "FILE"});
    options.process(application);

    GalleryWindow window;
    window.show();
    if (!options.isSet("save"))
        return QApplication::exec();
    int status = 0;
    QTimer::singleShot(0, &window, [&] {
        const QString file = options.value("save");
        if (!window.grab().save(file)) {
            QTextStream(stderr) << "gallery: " << file
                                << " can't be written: give a .png in a folder that exists\n";
            status = 1;
        }
        QApplication::quit();
    });
    QApplication::exec();
    return status;
}
