#include "VantoraHost/desktop/texts/Translations.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QLibraryInfo>
#include <QtCore/QLocale>

namespace vantora::desktop {

Translations::Translations(const QLocale& locale)
{
    const QString folder = QStringLiteral(":/Vantora/Resources/Translations");
    const QString name = QStringLiteral("desktop");
    const QString mark = QStringLiteral("_");
    if (program_.load(locale, name, mark, folder) ||
        program_.load(QStringLiteral("desktop_en"), folder)) {
        QCoreApplication::installTranslator(&program_);
    }
    if (sentences_.load(QLocale(program_.language()), QStringLiteral("sentences"), mark, folder)) {
        QCoreApplication::installTranslator(&sentences_);
    }
    if (toolkit_.load(QLocale(program_.language()), QStringLiteral("qtbase"), mark,
                      QLibraryInfo::location(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(&toolkit_);
    }
}

} // namespace vantora::desktop
