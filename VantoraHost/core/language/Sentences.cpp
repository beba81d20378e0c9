#include "VantoraHost/core/language/Sentences.h"

#include "VantoraHost/core/language/SentenceTemplates.h"

#include <QtCore/QStringList>

#include <algorithm>
#include <optional>

namespace vantora {

namespace {

using Translate = std::function<QString(const char*)>;

QString markOf(int number)
{
    return QLatin1Char('%') + QString::number(number);
}

// What stands at %1, %2 and so on in a text that fits a template; nothing where it doesn't. What
// stands there ends where the template's next words begin.
std::optional<QStringList> valuesIn(const QString& text, const QString& form)
{
    QStringList values;
    int at = 0;
    int from = 0;
    for (int number = 1;; ++number) {
        const int mark = form.indexOf(markOf(number), from);
        const QString words = form.mid(from, mark < 0 ? -1 : mark - from);
        if (number == 1) {
            if (!text.startsWith(words)) {
                return std::nullopt;
            }
            at = words.size();
        } else {
            const int next = mark < 0 && words.isEmpty() ? text.size()
                             : mark < 0                  ? text.size() - words.size()
                                                         : text.indexOf(words, at);
            if (next < at || !text.midRef(next).startsWith(words)) {
                return std::nullopt;
            }
            values << text.mid(at, next - at);
            at = next + words.size();
        }
        if (mark < 0) {
            return at == text.size() ? std::optional(values) : std::nullopt;
        }
        from = mark + 2;
    }
}

// Whether what follows these words of a template is a sentence again, and not a name, which stays
// as it is whatever it says.
bool leadToSentence(const QString& words)
{
    static const char* const leads[] = {": ",  "meant ", "which ",  "this one ",   "\", ",
                                        "\" ", "since ", "within ", "longer than "};
    return std::any_of(std::begin(leads), std::end(leads),
                       [&](const char* lead) { return words.endsWith(QLatin1String(lead)); });
}

QString translated(const QString& sentence, const Translate& translate);

// The translation of a template with its values in it, none of which is taken for a mark.
QString filled(const char* form, const QStringList& values, const Translate& translate)
{
    const QString source = QString::fromLatin1(form);
    const QString text = translate(form);
    QString whole;
    for (int i = 0; i < text.size(); ++i) {
        const int number = text[i] == '%' && i + 1 < text.size() ? text[i + 1].digitValue() : -1;
        if (number < 1 || number > values.size()) {
            whole += text[i];
            continue;
        }
        const QString& value = values[number - 1];
        const int mark = source.indexOf(markOf(number));
        whole += leadToSentence(source.left(mark)) ? translated(value, translate) : value;
        ++i;
    }
    return whole;
}

/// The template that a sentence fits best, which is the one with the most words of its own.
class BestFit {
public:
    explicit BestFit(const QString& sentence) : sentence_(sentence) {}

    void consider(const SentenceTemplates& templates)
    {
        for (const char* form : templates) {
            const QString text = QString::fromLatin1(form);
            if (auto values = valuesIn(sentence_, text)) {
                const int words = text.size() - 2 * values->size();
                if (words > words_) {
                    words_ = words;
                    found_ = form;
                    values_ = std::move(*values);
                }
            }
        }
    }

    /// Null for none.
    const char* form() const { return found_; }
    const QStringList& values() const { return values_; }

private:
    const QString& sentence_;
    int words_ = 0;
    const char* found_ = nullptr;
    QStringList values_;
};

QString translated(const QString& sentence, const Translate& translate)
{
    BestFit fit(sentence);
    for (const auto& templates : {sentencesOfCore(), sentencesOfLibrary(), sentencesOfCommands()}) {
        fit.consider(templates);
    }
    return fit.form() ? filled(fit.form(), fit.values(), translate) : sentence;
}

} // namespace

QString translatedSentence(const QString& english, const Translate& translate)
{
    return translated(english, translate);
}

} // namespace vantora
