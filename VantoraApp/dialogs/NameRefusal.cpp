#include "VantoraApp/dialogs/NameRefusal.h"

#include "VantoraApp/dialogs/CMsgBoxDialog.h"
#include "VantoraApp/environment/ProductTitle.h"

#include <QtCore/QCoreApplication>
#include <QtWidgets/QLineEdit>

void RefuseName(const QString& reason, QLineEdit* nameEdit)
{
    const QString remedy =
        QCoreApplication::translate("NameRefusal", "Please enter another name and try again.");
    CMsgBoxDialog::information(ProductTitle(), reason + ' ' + remedy, "OK", "", "");
    nameEdit->activateWindow();
    nameEdit->setFocus();
    nameEdit->selectAll();
}
