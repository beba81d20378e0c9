#pragma once

#include "VantoraApp/interface/ActionInterface.h"

#include <QtCore/QObject>

/// The action "Delete Pages": removes from every document of a run the pages that the option
/// "byPageRangeTextEdit" names. Everything a call works with comes in its record; the object
/// keeps nothing between calls.
class DeletePages : public QObject, public CActionInterface {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.karvel.vantora.deletepages")
    Q_INTERFACES(CActionInterface)

public:
    DeletePages() = default;

    /// Deletes the pages from the document. Lets no exception out: any failure is the message
    /// "Delete pages error" in the record's error handler and the result 1; what was deleted until
    /// then stays deleted. A refusal that the library tells by a result only is not noticed here.
    int WorkProc(WorkProcInfoStruct* info) override;

    /// Shows the options dialog. Every way out but OK with a valid page range gives 0.
    int ShowDialogProc(QWidget* parent, DialogLoadStruct* load) override;

    int PreSequenceProc(WorkProcInfoStruct* info) override;
    int PostSequenceProc(WorkProcInfoStruct* info) override;

    QString GetActionName() override;
    QString GetDisplayName() override;
    QString GetActionHelp() override;
    QString GetGroupName() override;
    int GetActionFlags() override;
    QString GetDefaultIcon() override;
};
