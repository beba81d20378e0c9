#pragma once

#include <VantoraApp/interface/ActionInterface.h>

#include <QtCore/QObject>

/// The action "Reverse Pages": puts the last page first. It has no options.
class ReversePages : public QObject, public CActionInterface {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.karvel.vantora.reversepages")
    Q_INTERFACES(CActionInterface)

public:
    int WorkProc(WorkProcInfoStruct* info) override;
    int ShowDialogProc(QWidget* parent, DialogLoadStruct* load) override;
    int PreSequenceProc(WorkProcInfoStruct*) override { return 1; }
    int PostSequenceProc(WorkProcInfoStruct*) override { return 1; }

    QString GetActionName() override { return QLatin1String("Reverse Pages"); }
    QString GetDisplayName() override { return QLatin1String("Reverse Pages"); }
    QString GetActionHelp() override { return {}; }
    QString GetGroupName() override { return QLatin1String("Pages"); }
    int GetActionFlags() override { return 0; }
    QString GetDefaultIcon() override { return {}; }
};
