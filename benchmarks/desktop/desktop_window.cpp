// Drives the real window and prints what it took as a line of JSON; benchmarks/desktop.py sets it
// beside what others take. Times are in milliseconds, memory in kilobytes.
#include "VantoraApp/environment/ProductTitle.h"
#include "VantoraHost/core/workers/Confinement.h"
#include "VantoraHost/desktop/MainWindow.h"
#include "VantoraHost/desktop/pages/PageGridModel.h"
#include "VantoraHost/desktop/pages/PageGridView.h"
#include "VantoraHost/desktop/session/SingleWindow.h"
#include "VantoraHost/desktop/texts/Translations.h"
#include "benchmarks/desktop/end_once_painted.h"
#include "benchmarks/desktop/watchdog.h"

#include <QtCore/QDir>
#include <QtCore/QEventLoop>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QLocale>
#include <QtCore/QTextCodec>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QScrollBar>

#include <signal.h>
#include <sys/resource.h>

#include <clocale>
#include <cstdio>
#include <functional>

namespace {

using namespace vantora;
using namespace vantora::desktop;

constexpr int patience = 300 * 1000; ///< for one step, in milliseconds

/// Remembers the event that kept the thread running for longest.
class Application : public QApplication {
public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override
    {
        if (isInEvent_) {
            return QApplication::notify(receiver, event);
        }
        isInEvent_ = true;
        const QString name = QString("%1, event %2")
                                 .arg(receiver->metaObject()->className())
                                 .arg(static_cast<int>(event->type()));
        const double before = processorTime();
        const bool isTaken = QApplication::notify(receiver, event);
        const double took = processorTime() - before;
        isInEvent_ = false;
        if (took > longest_) {
            longest_ = took;
            name_ = name;
        }
        return isTaken;
    }

    /// Since this was asked last.
    QString takeLongest()
    {
        longest_ = 0;
        return std::exchange(name_, {});
    }

private:
    bool isInEvent_ = false;
    double longest_ = 0;
    QString name_;
};

void waitUntil(const char* what, const std::function<bool()>& reached)
{
    bool isOver = false;
    QTimer::singleShot(patience, qApp, [&isOver] { isOver = true; });
    while (!reached()) {
        if (isOver) {
            std::fprintf(stderr, "desktop_window: it takes too long until %s\n", what);
            std::_Exit(1);
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
}

void goOnFor(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

/// Calls whenever a widget is about to be painted.
class PaintWatch : public QObject {
public:
    PaintWatch(QWidget& widget, std::function<void()> painted) : painted_(std::move(painted))
    {
        widget.installEventFilter(this);
    }

    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            painted_();
        }
        return false;
    }

private:
    const std::function<void()> painted_;
};

qint64 memoryOf(const QString& process, const QByteArray& file, const QByteArray& field)
{
    QFile status("/proc/" + process + "/" + file);
    if (!status.open(QIODevice::ReadOnly)) {
        return 0;
    }
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith(field + ":")) {
            return line.mid(field.size() + 1).simplified().split(' ')[0].toLongLong();
        }
    }
    return 0;
}

QStringList childrenOf(const QString& process)
{
    QStringList children;
    const QDir tasks("/proc/" + process + "/task");
    for (const QString& task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile list(tasks.filePath(task + "/children"));
        list.open(QIODevice::ReadOnly);
        for (const QString& child :
             QString::fromLatin1(list.readAll()).split(' ', Qt::SkipEmptyParts)) {
            children << child << childrenOf(child);
        }
    }
    return children;
}

/// What the window and its processes have now. What they share is counted in each of them, but in
/// "proportional" once.
QJsonObject memory()
{
    const QString self = QString::number(QCoreApplication::applicationPid());
    qint64 workers = 0;
    qint64 proportional = memoryOf(self, "smaps_rollup", "Pss");
    const QStringList children = childrenOf(self);
    for (const QString& child : children) {
        workers += memoryOf(child, "status", "VmRSS");
        proportional += memoryOf(child, "smaps_rollup", "Pss");
    }
    return {{"window", memoryOf(self, "status", "VmRSS")},
            {"windowPeak", memoryOf(self, "status", "VmHWM")},
            {"processes", children.size()},
            {"workers", workers},
            {"proportional", proportional}};
}

QJsonObject waits(Watchdog& watchdog)
{
    const Waits seen = watchdog.take();
    return {{"asked", seen.asked},
            {"late", seen.late},
            {"lateBusy", seen.lateBusy},
            {"longest", seen.longest},
            {"longestBusy", seen.longestBusy},
            {"longestEvent", static_cast<Application*>(qApp)->takeLongest()}};
}

QJsonObject scrolled(Watchdog& watchdog, int steps, const std::function<void(int)>& step)
{
    constexpr int betweenSteps = 8; // twice a frame of a display
    waits(watchdog);
    for (int i = 0; i < steps; ++i) {
        step(i);
        goOnFor(betweenSteps);
    }
    goOnFor(300); // what comes of it late
    return waits(watchdog);
}

QJsonObject scroll(Watchdog& watchdog, PageGridView& grid)
{
    QScrollBar& bar = *grid.verticalScrollBar();
    const int last = bar.maximum();
    QJsonObject found;
    found["wheel"] = scrolled(watchdog, 400, [&grid](int) {
        const QPointF at = grid.viewport()->rect().center();
        QWheelEvent turn(at, grid.viewport()->mapToGlobal(at.toPoint()), {}, {0, -120},
                         Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(grid.viewport(), &turn);
    });
    bar.setValue(0);
    found["wholeDocument"] = scrolled(watchdog, last / bar.pageStep() + 1, [&bar](int) {
        bar.triggerAction(QAbstractSlider::SliderPageStepAdd);
    });
    found["jumps"] = scrolled(watchdog, 200, [&bar, last](int i) {
        constexpr int stride = 7919; // anywhere, and the same each time
        bar.setValue(static_cast<int>(static_cast<qint64>(i) * stride % 997 * last / 997));
    });
    found["end"] = last;
    return found;
}

// From the command to the painted pages, and how long the event loop was kept by all of it.
QJsonObject marking(Watchdog& watchdog, MainWindow& window, PageGridView& grid)
{
    QJsonObject found;
    for (const char* name :
         {"selectAllPages", "addMarks", "clearMarks", "markOdd", "invertMarks", "undo"}) {
        waits(watchdog);
        bool isPainted = false;
        const PaintWatch watch(*grid.viewport(), [&isPainted] { isPainted = true; });
        const double begun = wallTime();
        const double ran = processorTime();
        if (QString(name) == "undo") {
            window.workbench().undo.undo();
        } else {
            window.findChild<QAction*>(name)->trigger();
        }
        waitUntil(name, [&isPainted] { return isPainted; });
        QJsonObject act{{"painted", wallTime() - begun}, {"paintedBusy", processorTime() - ran}};
        goOnFor(500); // what is put off: the outlook, keeping the work
        act["after"] = waits(watchdog);
        found[name] = act;
    }
    return found;
}

QJsonObject document(MainWindow& window, const QString& file)
{
    auto& grid = *window.findChild<PageGridView*>("pageGrid");
    const auto isPictured = [&grid](int row) {
        return !grid.model()->index(row, 0).data(PageGridModel::PictureRole).isNull() &&
               !grid.model()
                    ->index(row, 0)
                    .data(PageGridModel::PictureRole)
                    .value<QPixmap>()
                    .isNull();
    };
    bool hasFirst = false;
    bool hasAll = false;
    const PaintWatch watch(*grid.viewport(), [&] {
        const std::vector<int> rows = grid.visibleRows();
        hasFirst = hasFirst || (!rows.empty() && isPictured(rows.front()));
        hasAll = hasAll || (hasFirst && std::all_of(rows.begin(), rows.end(), isPictured));
    });
    Watchdog watchdog;
    waits(watchdog);
    const double begun = wallTime();
    window.open({file});
    const auto& documents = window.workbench().list.documents();
    waitUntil("the document is read",
              [&documents] { return !documents.empty() && documents[0].isUsable(); });
    QJsonObject found{{"ready", wallTime() - begun}};
    waitUntil("the first picture is there", [&hasFirst] { return hasFirst; });
    found["firstPicture"] = wallTime() - begun;
    waitUntil("all pictures are there", [&hasAll] { return hasAll; });
    found["allPictures"] = wallTime() - begun;
    found["pictures"] = static_cast<int>(grid.visibleRows().size());
    found["pages"] = grid.model()->rowCount();
    goOnFor(500);
    found["opening"] = waits(watchdog);
    found["memoryOpen"] = memory();
    found["scrolling"] = scroll(watchdog, grid);
    found["memoryScrolled"] = memory();
    found["marking"] = marking(watchdog, window, grid);
    found["memoryMarked"] = memory();
    return found;
}

double processorTimeOfAll()
{
    double seconds = 0;
    for (const int who : {RUSAGE_SELF, RUSAGE_CHILDREN}) {
        rusage used{};
        ::getrusage(who, &used);
        for (const timeval& time : {used.ru_utime, used.ru_stime}) {
            seconds += static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
        }
    }
    return seconds * 1e3;
}

QJsonObject documents(MainWindow& window, const QString& folder, int count)
{
    Watchdog watchdog;
    waits(watchdog);
    const Workbench& bench = window.workbench();
    const double begun = wallTime();
    const double ran = processorTimeOfAll();
    const double ranHere = processorTime();
    window.open({folder});
    waitUntil("all are listed", [&] { return bench.list.rowCount() == count; });
    QJsonObject found{{"listed", wallTime() - begun}};
    waitUntil("all are read",
              [&] { return !bench.documents.isSearching() && bench.documents.unread() == 0; });
    found["ready"] = wallTime() - begun;
    found["readyBusy"] = processorTimeOfAll() - ran;
    found["windowBusy"] = processorTime() - ranHere;
    const auto& all = bench.list.documents();
    found["usable"] = static_cast<int>(
        std::count_if(all.begin(), all.end(), [](const Document& one) { return one.isUsable(); }));
    goOnFor(500);
    found["waits"] = waits(watchdog);
    found["memory"] = memory();
    return found;
}

Installation installation()
{
    Installation found = installationOf(BUILT_PROGRAM, nullptr);
    found.program = BUILT_PROGRAM;
    return found;
}

} // namespace

// As the program with the window starts.
int main(int argc, char** argv)
{
    keepMemoryPrivate();
    ::signal(SIGPIPE, SIG_IGN);
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    const QStringList given(argv + 1, argv + argc);
    if (given != QStringList{"start"} && !(given.size() == 2 && given[0] == "document") &&
        !(given.size() == 3 && given[0] == "documents")) {
        std::fputs("desktop_window start | document FILE | documents FOLDER COUNT\n", stderr);
        return 2;
    }
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    int onlyName = 1;
    Application application(onlyName, argv);
    QApplication::setApplicationName("vantora-desktop");
    QApplication::setApplicationDisplayName(ProductTitle());
    QApplication::setDesktopFileName("vantora-desktop");
    std::setlocale(LC_NUMERIC, "C");
    const Translations translations{QLocale::system()};
    SingleWindow single(sessionFolder(), sessionName());
    if (single.handOver({})) {
        std::fputs("desktop_window: there is a window already\n", stderr);
        return 1;
    }
    MainWindow window(installation());
    if (given[0] == "start") {
        const EndOncePainted end(window);
        window.show();
        return QApplication::exec();
    }
    window.show();
    goOnFor(500);
    const QJsonObject found = given[0] == "document"
                                  ? document(window, given[1])
                                  : documents(window, given[1], given[2].toInt());
    std::puts(QJsonDocument(found).toJson(QJsonDocument::Compact).constData());
    return 0;
}
