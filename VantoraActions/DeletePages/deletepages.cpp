#include "VantoraActions/DeletePages/deletepages.h"

#include "VantoraActions/OptionsDialog.h"
#include "VantoraApp/CActionUtils.h"
#include "VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h"
#include "VantoraApp/errors/CErrorHandler.h"
#include "VantoraApp/errors/GuardedOperation.h"
#include "VantoraApp/modules/EmbeddedModule.h"

#include <QtCore/QtDebug>

namespace {

constexpr GuardedSite workProcSite{"VantoraActions/DeletePages/deletepages", "WorkProc", 135};

void DeleteNamedPages(const QString& pageRange, KarvelPDFLibraryCPDylibCPP1311& library)
{
    QList<int> pages;
    CActionUtils::GetPageList(pageRange, library.PageCount(), false, false, &pages);
    library.RemoveSharedContentStreams();

    QList<int> runs;
    CActionUtils::CollectPageList(&pages, &runs);
    for (int i = 0; i < runs.size(); i += 2) {
        const int firstPage = runs.at(i);
        const int pageCount = runs.at(i + 1);
        // A document keeps at least one page: the blank one stays when all others go.
        if (library.PageCount() <= pageCount)
            library.NewPage();
        library.DeletePages(firstPage, pageCount);
    }
}

EmbeddedModule& DialogModule()
{
    static EmbeddedModule module("DeletePagesDialog", EmbeddedDialog(), "libVantoraApp.so");
    return module;
}

} // namespace

int DeletePages::WorkProc(WorkProcInfoStruct* info)
{
    return RunGuarded(
        workProcSite,
        [info] {
            const QString pageRange = info->pPrefs->value("byPageRangeTextEdit").toString();
            DeleteNamedPages(pageRange, *info->pPDFLibrary);
            return 0;
        },
        [info] {
            info->pErrorHandler->StoreError("Delete pages error");
            return 1;
        });
}

int DeletePages::ShowDialogProc(QWidget* parent, DialogLoadStruct* load)
{
    const auto show = DialogModule().Function("ShowOptionsDialog");
    if (!show) {
        qCritical("the dialog of Delete Pages can't be loaded: %s", show.error().c_str());
        return 0;
    }
    return reinterpret_cast<decltype(&ShowOptionsDialog)>(*show)(parent, load, GetDefaultIcon());
}

int DeletePages::PreSequenceProc(WorkProcInfoStruct* /*info*/)
{
    return 1;
}

int DeletePages::PostSequenceProc(WorkProcInfoStruct* /*info*/)
{
    return 1;
}

// The texts are copied to the heap: those of QStringLiteral would lie in this module, which the
// host may unload while it still holds them.

QString DeletePages::GetActionName()
{
    return QLatin1String("Delete Pages");
}

QString DeletePages::GetDisplayName()
{
    return QLatin1String("Delete Pages");
}

QString DeletePages::GetActionHelp()
{
    return QLatin1String("Action_DeletePages.html");
}

QString DeletePages::GetGroupName()
{
    return QLatin1String("Pages");
}

int DeletePages::GetActionFlags()
{
    return 0x20F;
}

QString DeletePages::GetDefaultIcon()
{
    return QLatin1String(
        "Action_DeletePages.png#Action_DeletePages_Selected.png#Action_DeletePages_Disabled.png");
}
