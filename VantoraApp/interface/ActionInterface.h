#pragma once

#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtCore/QtPlugin>

#include <cstddef>

class CErrorHandler;
class KarvelPDFLibraryCPDylibCPP1311;
class QWidget;

/// The options of one step: keys are the object names of the option widgets, plus "ActionName".
/// A missing key reads as an invalid value, that is as empty text, 0 or false.
using PreferencesMap = QMap<QString, QVariant>;

/// What the host hands to the processing operations. The host owns the record and everything it
/// points to; an action uses them only for the length of the call and tests none of the pointers.
struct WorkProcInfoStruct {
    KarvelPDFLibraryCPDylibCPP1311* pPDFLibrary; ///< the document to process is open and selected
    CErrorHandler* pErrorHandler;                ///< collects the messages of the run
    unsigned char hostFields[16];                ///< the host's own
    PreferencesMap* pPrefs;                      ///< the options of this step
};

/// What the host hands to ShowDialogProc; owned as WorkProcInfoStruct is.
struct DialogLoadStruct {
    unsigned char hostFields[32];             ///< the host's own
    PreferencesMap* pPrefs;                   ///< read at the start, rewritten when accepted
    unsigned char moreHostFields[8];          ///< the host's own
    unsigned char bHideAddToActionListButton; ///< nonzero hides that button of the dialog's header
};

// Host and actions are built apart from each other: the layout is part of the interface.
static_assert(sizeof(void*) == 8, "the records are laid out for 64-bit systems");
static_assert(offsetof(WorkProcInfoStruct, pPDFLibrary) == 0);
static_assert(offsetof(WorkProcInfoStruct, pErrorHandler) == 8);
static_assert(offsetof(WorkProcInfoStruct, hostFields) == 16);
static_assert(offsetof(WorkProcInfoStruct, pPrefs) == 32);
static_assert(offsetof(DialogLoadStruct, pPrefs) == 32);
static_assert(offsetof(DialogLoadStruct, moreHostFields) == 40);
static_assert(offsetof(DialogLoadStruct, bHideAddToActionListButton) == 48);

/// Through this the host drives every action. The order of the operations is the order of their
/// slots, which plug-ins built earlier rely on: append, never reorder.
class CActionInterface {
public:
    virtual ~CActionInterface() = default;

    /// Processes the document that is open in the record's binding.
    /// Returns 0 when done; 1 when it failed, with a message in the record's error handler.
    virtual int WorkProc(WorkProcInfoStruct* info) = 0;

    /// Shows the options dialog modally; on the user-interface thread only.
    /// Returns 1 when accepted and the map was rewritten, else 0 with the map untouched.
    virtual int ShowDialogProc(QWidget* parent, DialogLoadStruct* load) = 0;

    /// Called once before the documents of a run. Returns 1.
    virtual int PreSequenceProc(WorkProcInfoStruct* info) = 0;

    /// Called once after the documents of a run. Returns 1.
    virtual int PostSequenceProc(WorkProcInfoStruct* info) = 0;

    /// The internal name, under which steps refer to the action.
    virtual QString GetActionName() = 0;

    /// The name shown to the user.
    virtual QString GetDisplayName() = 0;

    /// The file name of the help page among the host's resources.
    virtual QString GetActionHelp() = 0;

    /// The group under which the host lists the action.
    virtual QString GetGroupName() = 0;

    /// A bit set that the host interprets.
    virtual int GetActionFlags() = 0;

    /// Three image file names joined by "#": normal, selected, disabled.
    virtual QString GetDefaultIcon() = 0;
};

Q_DECLARE_INTERFACE(CActionInterface, "com.Karvel.Vantora.ActionInterface_1.0")
