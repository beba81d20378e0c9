#pragma once

#include <QtCore/QString>

#include <functional>

namespace vantora {

/// What a translation file calls the templates of sentences.
inline constexpr char sentenceTexts[] = "Sentences";

/// A sentence of the core, of the library or of the command line in another language, as far as
/// somebody has translated it. Those sentences come in English, whole, from other processes and out
/// of reports, too; so each is looked up by a template that it fits, and what stands in it is put
/// into the translation, which `translate` has for each template.
QString translatedSentence(const QString& english,
                           const std::function<QString(const char*)>& translate);

} // namespace vantora
