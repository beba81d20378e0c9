#include "VantoraHost/desktop/session/AskForFile.h"

#include <QtCore/QRegularExpression>
#include <QtWidgets/QFileDialog>

namespace vantora::desktop {

void askForFile(QWidget& parent, const FileQuestion& question,
                const std::function<void(const QString& path)>& then)
{
    auto* dialog = new QFileDialog(&parent, question.title, question.folder);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(question.saves ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog->setFileMode(question.saves ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    dialog->setDefaultSuffix(question.suffix);
    dialog->setNameFilters(question.filters);
    if (!question.name.isEmpty()) {
        dialog->selectFile(question.name);
    }
    QObject::connect(dialog, &QFileDialog::filterSelected, dialog, [dialog](const QString& filter) {
        static const QRegularExpression oneKind(QStringLiteral("\\(\\*\\.(\\w+)\\)$"));
        if (const auto match = oneKind.match(filter); match.hasMatch()) {
            dialog->setDefaultSuffix(match.captured(1));
        }
    });
    QObject::connect(dialog, &QFileDialog::fileSelected, &parent, then);
    dialog->show();
}

} // namespace vantora::desktop
