#include "Escapes.h"
#include "VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h"
#include "VantoraApp/errors/CErrorHandler.h"
#include "VantoraApp/interface/ActionInterface.h"

#include <QtCore/QFile>
#include <QtCore/QObject>
#include <QtWidgets/QWidget>

#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <vector>

// The same source makes two plug-ins. One is an action that no host has heard of; the other goes by
// the name of one that the host has a description of, and then removes the one page that its range
// names as well.
#ifdef SCRIPTED_AS_DELETE_PAGES
#define SCRIPTED_IDENTIFIER "org.karvel.vantora.deletepages"
constexpr char scriptedName[] = "Delete Pages";
constexpr bool removesItsPage = true;
#else
#define SCRIPTED_IDENTIFIER "org.karvel.vantora.scripted"
constexpr char scriptedName[] = "Scripted";
constexpr bool removesItsPage = false;
#endif

/// An action for tests that does what its options say: "log" names a file to which each call adds
/// its name as a line, as it adds its process to "processes" and, working, the pages to "pages";
/// "begin", "work", "end" and "dialog" say how the call goes. Where there is no "work", the
/// environment's SCRIPTED_WORK says it.
class ScriptedAction : public QObject, public CActionInterface {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID SCRIPTED_IDENTIFIER)
    Q_INTERFACES(CActionInterface)

public:
    int WorkProc(WorkProcInfoStruct* info) override
    {
        const int result = play(info, "work", 0, 1);
        if (removesItsPage && result == 0) {
            const int named = info->pPrefs->value("byPageRangeTextEdit").toInt();
            const int last = info->pPDFLibrary->PageCount();
            info->pPDFLibrary->DeletePages(removesAnother(info) ? last : named, 1);
        }
        return result;
    }
    int ShowDialogProc(QWidget* parent, DialogLoadStruct* load) override
    {
        load->pPrefs->insert("shown inside", parent ? parent->objectName() : "nothing");
        return load->pPrefs->value("dialog") == "accept" ? 1 : 0;
    }
    int PreSequenceProc(WorkProcInfoStruct* info) override { return play(info, "begin", 1, 0); }
    int PostSequenceProc(WorkProcInfoStruct* info) override { return play(info, "end", 1, 0); }
    QString GetActionName() override { return scriptedName; }
    QString GetDisplayName() override { return "Scripted by tests"; }
    QString GetActionHelp() override { return {}; }
    QString GetGroupName() override { return "Tests"; }
    int GetActionFlags() override { return 0; }
    QString GetDefaultIcon() override { return "##"; }

private:
    static bool removesAnother(const WorkProcInfoStruct* info)
    {
        return info->pPDFLibrary->PageCount() == 2 &&
               info->pPrefs->value("work") == "remove the last at a document of 2 pages";
    }

    static int play(WorkProcInfoStruct* info, const char* call, int done, int failed)
    {
        note(info->pPrefs->value("log").toString(), call);
        note(info->pPrefs->value("processes").toString(), std::to_string(::getpid()).c_str());
        if (call == QString("work")) { // no document is open when a run begins and ends
            note(info->pPrefs->value("pages").toString(),
                 std::to_string(info->pPDFLibrary->PageCount()).c_str());
        }
        const QString elsewhere =
            call == QString("work") ? qEnvironmentVariable("SCRIPTED_WORK") : QString();
        QString how = info->pPrefs->value(call, elsewhere).toString();
        const QString only = " at a document of 2 pages";
        if (how.endsWith(only)) {
            if (info->pPDFLibrary->PageCount() != 2) {
                return done;
            }
            how.chop(only.size());
        }
        const QString once = " once";
        if (how.endsWith(once)) {
            QFile already(info->pPrefs->value("log").toString() + ".once");
            if (!already.open(QIODevice::NewOnly)) {
                return done;
            }
            how.chop(once.size());
        }
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
        misbehave(how);
        if (how == "try to escape") {
            tryToEscape(info);
        }
        return how.endsWith("fail") ? failed : done;
    }

    static void misbehave(const QString& how)
    {
        if (how == "interrupt") {
            std::raise(SIGINT);
        }
        if (how == "crash") {
            std::abort();
        }
        if (how == "be killed") {
            std::raise(SIGKILL);
        }
        if (how == "leave") {
            std::_Exit(3);
        }
        if (how == "be asked to end") {
            std::raise(SIGTERM);
        }
        if (how == "be stopped") {
            std::raise(SIGSTOP);
        }
        while (how == "hang") {
            ::pause();
        }
        std::vector<std::vector<char>> eaten;
        while (how == "eat memory") {
            eaten.emplace_back(1 << 20, 'x');
        }
        if (how == "print") {
            std::puts("{\"end\":null}");
            std::fflush(stdout);
        }
    }

    /// By the way whose number, from 2, the document's number of pages is; aims below "foreign".
    static void tryToEscape(WorkProcInfoStruct* info)
    {
        const std::string name =
            escapes::names()[static_cast<std::size_t>(info->pPDFLibrary->PageCount()) - 2];
        const std::string foreign = "foreign/" + name;
        const bool out = escapes::leadsOut(name, {foreign + "/file", foreign + "/empty", "out"});
        note(info->pPrefs->value("log").toString(), ((out ? "out: " : "held: ") + name).c_str());
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
