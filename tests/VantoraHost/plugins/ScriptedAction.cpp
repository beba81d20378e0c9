#include "VantoraApp/ActionInterface.h"
#include "VantoraApp/CErrorHandler.h"
#include "VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h"

#include <QtCore/QFile>
#include <QtCore/QObject>
#include <QtWidgets/QWidget>

#include <csignal>
#include <stdexcept>

/// An action for tests that does what its options say: "log" names a file to which each call adds
/// a line; "begin", "work", "end" and "dialog" say how the call goes.
class ScriptedAction : public QObject, public CActionInterface {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.karvel.vantora.scripted")
    Q_INTERFACES(CActionInterface)

public:
    int WorkProc(WorkProcInfoStruct* info) override { return play(info, "work", 0, 1); }
    int ShowDialogProc(QWidget* parent, DialogLoadStruct* load) override
    {
        load->pPrefs->insert("shown inside", parent ? parent->objectName() : "nothing");
        return load->pPrefs->value("dialog") == "accept" ? 1 : 0;
    }
    int PreSequenceProc(WorkProcInfoStruct* info) override { return play(info, "begin", 1, 0); }
    int PostSequenceProc(WorkProcInfoStruct* info) override { return play(info, "end", 1, 0); }
    QString GetActionName() override { return "Scripted"; }
    QString GetDisplayName() override { return "Scripted by tests"; }
    QString GetActionHelp() override { return {}; }
    QString GetGroupName() override { return "Tests"; }
    int GetActionFlags() override { return 0; }
    QString GetDefaultIcon() override { return "##"; }

private:
    static int play(WorkProcInfoStruct* info, const char* call, int done, int failed)
    {
        note(info->pPrefs->value("log").toString(), call);
        const QString how = info->pPrefs->value(call).toString();
        if (how == "throw") {
            throw std::runtime_error("it broke");
        }
        if (how == "throw a number") {
            throw 7;
        }
        if (how.startsWith("complain")) {
            info->pErrorHandler->StoreError("%s", "Scripted error");
        }
        if (how == "ask the library for the impossible") {
            info->pPDFLibrary->DeletePages(0, 1);
        }
        if (how == "lose a page") {
            info->pPDFLibrary->DeletePages(1, 1);
        }
        if (how == "interrupt at a document of 2 pages" && info->pPDFLibrary->PageCount() == 2) {
            std::raise(SIGINT);
        }
        return how.endsWith("fail") ? failed : done;
    }

    static void note(const QString& path, const char* line)
    {
        QFile log(path);
        if (!path.isEmpty() && log.open(QIODevice::Append)) {
            log.write(line);
            log.write("\n");
        }
    }
};

#include "ScriptedAction.moc"
