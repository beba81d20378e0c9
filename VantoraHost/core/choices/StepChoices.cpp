#include "VantoraHost/core/choices/StepChoices.h"

namespace vantora {

namespace {

Result<std::vector<Choice>> readChoices(const PreferencesMap& preferences, const char* key)
{
    std::vector<Choice> choices;
    const QString text = preferences.value(key).toString();
    for (const QString& line : text.split('\n', Qt::SkipEmptyParts)) {
        auto choice = Choice::of(line.toStdString());
        if (!choice) {
            return fail(Reason::BadChoice, {}, choice.error());
        }
        choices.push_back(std::move(*choice));
    }
    return choices;
}

} // namespace

bool isChoiceKey(const std::string& key)
{
    return key == chooseKey || key == keepKey || key == exceptKey || key == ownRangesKey;
}

Result<std::optional<ChoiceSet>> choicesIn(const PreferencesMap& preferences)
{
    ChoiceSet set;
    for (const auto& [key, choices] :
         {std::pair(chooseKey, &set.choose), {keepKey, &set.keep}, {exceptKey, &set.except}}) {
        auto read = readChoices(preferences, key);
        if (!read) {
            return tl::unexpected<Error>(std::move(read.error()));
        }
        *choices = std::move(*read);
    }
    if (set.choose.empty() && set.keep.empty()) {
        if (!set.except.empty()) {
            return fail(Reason::BadChoice, {},
                        "\"" + set.except.front().text +
                            "\" takes pages out of a choice, and there is none");
        }
        return std::nullopt;
    }
    if (!set.choose.empty() && !set.keep.empty()) {
        return fail(Reason::BadChoice, {},
                    "pages to remove (\"" + set.choose.front().text +
                        "\") and the only pages to keep (\"" + set.keep.front().text +
                        "\") can't be chosen together");
    }
    return set;
}

} // namespace vantora
