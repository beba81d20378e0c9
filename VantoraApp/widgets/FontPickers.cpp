#include "VantoraApp/CActionUtils.h"

#include "VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h"

#include <QtWidgets/QComboBox>

void CActionUtils::SetupStandardFontsComboBox(QComboBox* combo)
{
    combo->clear();
    combo->addItems({"Arial", "Times New Roman", "Courier"});
}

void CActionUtils::SetupSystemFontsComboBox(QComboBox* combo)
{
    constexpr int everyFont = 2;
    constexpr int familyNames = 1;

    combo->clear();
    KarvelPDFLibraryCPDylibCPP1311 library(L"KarvelPDFLibraryCPDylib1311.dylib");
    if (!library.LibraryLoaded())
        return;
    const QString lines =
        QString::fromStdWString(library.GetInstalledFontsByCharset(everyFont, familyNames));
    if (lines.isEmpty())
        return;
    QStringList families = lines.split("\r\n");
    while (!families.isEmpty() && families.last().isEmpty())
        families.removeLast();
    combo->insertItems(combo->count(), families);
}
