#include "VantoraActions/DeletePages/deletepages.h"

#include "VantoraActions/DeletePages/CPrefsDialog.h"
#include "VantoraApp/CActionUtils.h"
#include "VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h"
#include "VantoraApp/errors/CErrorHandler.h"
#include "VantoraApp/errors/GuardedOperation.h"

#include <QtGui/QIcon>

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

/// The icon of an action's icon string.
QIcon IconOf(const QString& names)
{
    const auto file = [&names](int section) {
        return ":/Vantora/Resources/Tools/" + names.section('#', section, section);
    };
    QIcon icon;
    icon.addFile(file(1), QSize(), QIcon::Selected, QIcon::Off);
    icon.addFile(file(1), QSize(), QIcon::Active, QIcon::Off);
    icon.addFile(file(2), QSize(), QIcon::Disabled, QIcon::Off);
    icon.addFile(file(0), QSize(), QIcon::Normal, QIcon::Off);
    return icon;
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
    PreferencesMap* const prefs = load->pPrefs;
    CPrefsDialog dialog(parent, {});
    dialog.setWindowFlags(dialog.windowFlags() & ~Qt::WindowContextHelpButtonHint);
    dialog.setWindowIcon(IconOf(GetDefaultIcon()));
    if (load->bHideAddToActionListButton != 0)
        dialog.VDhideAddToActionListButton();
    if (!prefs->isEmpty())
        dialog.SetPrefs(prefs);
    if (dialog.exec() != QDialog::Accepted)
        return 0;
    dialog.GetPrefs(prefs);
    return 1;
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
