#include "VantoraHost/core/language/Language.h"

#include "VantoraHost/core/Figures.h"
#include "VantoraHost/core/language/Sentences.h"

#include <QtCore/QString>
#include <QtCore/QTranslator>

#include <algorithm>
#include <limits>

namespace vantora {

namespace {

constexpr char terminalTexts[] = "Terminal";
constexpr char folder[] = ":/Vantora/Resources/Translations";

std::string filled(const std::string& form, const TextValues& values)
{
    std::string text;
    for (std::size_t i = 0; i < form.size(); ++i) {
        const std::size_t number =
            form[i] == '%' && i + 1 < form.size() && form[i + 1] >= '1' && form[i + 1] <= '9'
                ? static_cast<std::size_t>(form[i + 1] - '0')
                : 0;
        if (number >= 1 && number <= values.size()) {
            text += values[number - 1];
            ++i;
        } else {
            text += form[i];
        }
    }
    return text;
}

} // namespace

class Language::Catalogue {
public:
    static std::shared_ptr<const Catalogue> load(const std::string& name)
    {
        auto catalogue = std::make_shared<Catalogue>();
        const QString language = QString::fromStdString(name);
        const bool loaded = catalogue->terminal_.load("terminal_" + language, folder) &&
                            catalogue->sentences_.load("sentences_" + language, folder);
        return loaded ? catalogue : nullptr;
    }

    /// Empty where it isn't there.
    std::string text(const char* english, int number = -1) const
    {
        return terminal_.translate(terminalTexts, english, nullptr, number).toStdString();
    }

    std::string sentence(const std::string& english) const
    {
        const auto translate = [this](const char* form) {
            const QString text = sentences_.translate(sentenceTexts, form);
            return text.isEmpty() ? QString::fromUtf8(form) : text;
        };
        return translatedSentence(QString::fromStdString(english), translate).toStdString();
    }

private:
    QTranslator terminal_;
    QTranslator sentences_;
};

// The name is one of this program's, never what somebody typed.
Language Language::named(const std::string& name)
{
    Language language;
    if (name == "de") {
        language.catalogue_ = Catalogue::load(name);
    }
    return language;
}

bool Language::has(const char* english) const
{
    return isEnglish() || !catalogue_->text(english).empty();
}

std::string Language::text(const char* english, const TextValues& values) const
{
    const std::string translated = isEnglish() ? std::string() : catalogue_->text(english);
    return filled(translated.empty() ? english : translated, values);
}

std::string Language::counted(std::uint64_t number, const char* one, const char* several) const
{
    if (isEnglish()) {
        return vantora::counted(number, one, several);
    }
    const std::string form = std::string("%n ") + several;
    const auto count =
        static_cast<int>(std::min<std::uint64_t>(number, std::numeric_limits<int>::max()));
    std::string text = catalogue_->text(form.c_str(), count);
    text = text.empty() ? form : text;
    const std::size_t place = text.find("%n");
    return place == std::string::npos ? text : text.replace(place, 2, this->number(number));
}

std::string Language::figures(std::string english) const
{
    if (!isEnglish()) {
        for (char& mark : english) {
            mark = mark == ',' ? '.' : mark == '.' ? ',' : mark;
        }
    }
    return english;
}

std::string Language::number(std::uint64_t number) const
{
    return figures(grouped(number));
}

std::string Language::size(std::uint64_t bytes) const
{
    return bytes < 1000 ? this->counted(bytes, "byte", "bytes") : figures(sizeText(bytes));
}

std::string Language::sentence(const std::string& english) const
{
    return isEnglish() ? english : catalogue_->sentence(english);
}

std::size_t charactersIn(const std::string& text)
{
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
    }));
}

std::string padded(std::string text, std::size_t characters)
{
    const std::size_t there = charactersIn(text);
    return there < characters ? text.append(characters - there, ' ') : text;
}

} // namespace vantora
