#include "VantoraHost/cli/configure/ConfigureCommand.h"

#include "VantoraApp/dialogs/DialogMessages.h"
#include "VantoraHost/cli/configure/DisplayProbe.h"
#include "VantoraHost/cli/console/Messages.h"
#include "VantoraHost/cli/console/PlainLocale.h"
#include "VantoraHost/core/actions/ActionCatalog.h"
#include "VantoraHost/core/actions/PreferencesJson.h"

#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>

#include <memory>
#include <ostream>

namespace vantora::cli {

namespace {

// Null where no display can be reached, which would end the process.
std::unique_ptr<QApplication> startApplication()
{
    if (!displayIsReachable()) {
        return nullptr;
    }
    static int argumentCount = 1;
    static char name[] = "vantora";
    static char* arguments[] = {name, nullptr};
    DropDialogMessages();
    // Sizes in dialogs are those of a display of 96 dpi; images have twins of double density.
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    auto application = std::make_unique<QApplication>(argumentCount, arguments);
    keepPlainLocale();
    return application;
}

// The window of the host that the dialog is to be inside of; null for none.
std::unique_ptr<QWidget> openSurroundings(DialogPlace place)
{
    if (place == DialogPlace::Alone) {
        return nullptr;
    }
    auto window = std::make_unique<QWidget>();
    window->setObjectName(place == DialogPlace::MainWindow ? "VantoraClass"
                                                           : "VantoraPreviewClass");
    window->setWindowTitle("Vantora");
    window->resize(900, 640);
    window->show();
    return window;
}

/// Closes the dialogs once the person has asked to stop.
class Interruption {
public:
    explicit Interruption(const Streams& streams)
    {
        QObject::connect(&timer_, &QTimer::timeout, [&streams] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (dialog != nullptr && streams.interrupted()) {
                dialog->reject();
            }
        });
        timer_.start(100);
    }

private:
    QTimer timer_;
};

PreferencesMap preferencesOf(const StepRequest& request)
{
    PreferencesMap preferences;
    for (const auto& [key, value] : request.options) {
        preferences.insert(QString::fromStdString(key), QString::fromStdString(value));
    }
    return preferences;
}

bool showDialog(const Action& action, const ConfigureOptions& options, const Streams& streams,
                PreferencesMap& preferences)
{
    const auto surroundings = openSurroundings(options.place);
    const Interruption interruption(streams);
    DialogLoadStruct load = {};
    load.pPrefs = &preferences;
    load.bHideAddToActionListButton = options.hideAddToActionList ? 1 : 0;
    return action.operations->ShowDialogProc(surroundings.get(), &load) == 1;
}

} // namespace

int configure(const ConfigureOptions& options, const Installation& installation,
              const Streams& streams)
{
    std::unique_ptr<QApplication> application;
    if (qobject_cast<QApplication*>(QCoreApplication::instance()) == nullptr) {
        application = startApplication();
        if (!application) {
            printError(streams, {Reason::DisplayMissing, {}, "no display can be reached"});
            return SomeFailed;
        }
    }
    const Result<Action> action =
        ActionCatalog::of(installation.actionFolders).find(options.step.action);
    if (!action) {
        printError(streams, action.error());
        return action.error().reason == Reason::ActionMissing ? WrongUsage : SomeFailed;
    }
    PreferencesMap preferences = preferencesOf(options.step);
    const bool accepted = showDialog(*action, options, streams, preferences);
    if (streams.interrupted()) {
        printNote(streams, streams.language.text("interrupted"));
        return InterruptedByUser;
    }
    if (!accepted) {
        printNote(streams, streams.language.text("the options were not accepted"));
        return SomeFailed;
    }
    streams.out << preferencesJson(preferences) << '\n';
    return AllDone;
}

} // namespace vantora::cli
