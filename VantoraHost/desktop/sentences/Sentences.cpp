#include "VantoraHost/desktop/sentences/Sentences.h"

#include "VantoraHost/core/ShownText.h"
#include "VantoraHost/core/language/Sentences.h"

#include <QtCore/QCoreApplication>

namespace vantora::desktop {

QString shownSentence(const std::string& sentence)
{
    return translatedSentence(QString::fromStdString(shown(sentence)), [](const char* form) {
        return QCoreApplication::translate(sentenceTexts, form);
    });
}

} // namespace vantora::desktop
