// What starting is measured beside: a window of the toolkit with a tree, and nothing else.
#include "benchmarks/desktop/end_once_painted.h"

#include <QtWidgets/QApplication>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QTreeView>

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    QMainWindow window;
    window.setCentralWidget(new QTreeView);
    window.resize(1200, 800);
    const EndOncePainted end(window);
    window.show();
    return QApplication::exec();
}
