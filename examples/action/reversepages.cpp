#include "reversepages.h"

#include <VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h>
#include <VantoraApp/dialogs/CMsgBoxDialog.h>
#include <VantoraApp/errors/CErrorHandler.h>
#include <VantoraApp/errors/GuardedOperation.h>

namespace {

constexpr GuardedSite workProcSite{"reversepages", "WorkProc", 10};

} // namespace

int ReversePages::WorkProc(WorkProcInfoStruct* info)
{
    return RunGuarded(
        workProcSite,
        [info] {
            info->pPDFLibrary->ReorderPages(L"z-1");
            return 0;
        },
        [info] {
            info->pErrorHandler->StoreError("Reverse pages error");
            return 1;
        });
}

int ReversePages::ShowDialogProc(QWidget*, DialogLoadStruct* load)
{
    CMsgBoxDialog::information(GetDisplayName(), "This action has no options.", "OK", {}, {});
    load->pPrefs->insert("ActionName", GetActionName());
    return 1;
}
