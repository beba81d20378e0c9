#include "VantoraHost/desktop/help/AboutWindow.h"

#include "VantoraApp/environment/ProductTitle.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QIcon>
#include <QtWidgets/QMessageBox>

namespace vantora::desktop {

void showAbout(QWidget& parent)
{
    const auto text = [](const char* source) {
        return QCoreApplication::translate("AboutWindow", source);
    };
    auto* box = new QMessageBox(&parent);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setModal(false);
    box->setWindowTitle(text(QT_TRANSLATE_NOOP("AboutWindow", "About %1")).arg(ProductTitle()));
    box->setIconPixmap(parent.windowIcon().pixmap(64, 64));
    box->setText(
        QStringLiteral("<b>%1 %2</b>").arg(ProductTitle(), QStringLiteral(VANTORA_VERSION)));
    box->setInformativeText(
        text(QT_TRANSLATE_NOOP(
                 "AboutWindow",
                 "Removes pages from one document or from thousands, and leaves everything else of "
                 "them as it was.\n\nWith Qt %1.\nLicence: GPL, version 3 or later."))
            .arg(QString::fromLatin1(qVersion())));
    box->show();
}

} // namespace vantora::desktop
