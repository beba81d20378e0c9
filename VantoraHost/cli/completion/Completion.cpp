#include "VantoraHost/cli/completion/Completion.h"

#include "VantoraHost/cli/configuration/ConfigurationArguments.h"
#include "VantoraHost/core/Error.h"
#include "VantoraHost/core/choices/Choice.h"

#include <algorithm>
#include <cctype>

namespace vantora::cli {

namespace {

using Names = CompletionOptions::Names;

/// What an option or argument takes, by what the help calls its value and by its name (empty: any).
struct ValueRow {
    const char* value;
    const char* name;
    std::vector<const char*> words;
    Names names = Names::None;
    std::vector<const char*> files;
};

const std::vector<ValueRow>& valueRows()
{
    static const std::vector<ValueRow> rows = {
        {"FILE", "settings", {}, Names::None, {"files tsf", "folders"}},
        {"FILE", "", {}, Names::None, {"files"}},
        {"FILE.html", "", {}, Names::None, {"files html", "folders"}},
        {"REPORT", "", {}, Names::None, {"files"}},
        {"DIR", "", {}, Names::None, {"folders"}},
        {"FOLDER", "", {}, Names::None, {"folders"}},
        {"NAME|FILE", "", {}, Names::Lists, {"files xqq", "folders"}},
        {"NAME", "action", {}, Names::Actions, {}},
        {"NAME", "favourite", {}, Names::Favourites, {}},
        {"NAME", "profile", {}, Names::Profiles, {}},
        {"ACTION", "", {}, Names::Actions, {}},
        {"WAY", "", {"blank", "skip", "fail"}, Names::None, {}},
        {"WINDOW", "", {"main-window", "preview"}, Names::None, {}},
    };
    return rows;
}

// What a description says first, on one line.
std::string briefly(const std::string& description, const Language& language)
{
    std::string text = language.text(description.c_str());
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text.substr(0, text.find(';'));
}

void add(CompletionOptions& completion, const std::string& text, const std::string& what = {})
{
    if (text.rfind(completion.begun, 0) == 0) {
        completion.candidates.push_back({text, what});
    }
}

// Of "range:1,4-6, first[:N], blank[:strict]", what has to be typed: range:, first, blank and
// blank:strict.
void addChoices(CompletionOptions& completion)
{
    const std::string kinds = choiceKindsText();
    for (std::size_t start = 0; start < kinds.size();) {
        const std::size_t end = std::min(kinds.find(", ", start), kinds.size());
        const std::string kind = kinds.substr(start, end - start);
        const std::size_t bracket = std::min(kind.find('['), kind.size());
        const std::size_t colon = std::min(kind.find(':'), kind.size());
        add(completion, kind.substr(0, std::min(bracket, colon + 1)), kind);
        if (bracket + 2 < kind.size() && std::islower(kind[bracket + 2]) != 0) {
            add(completion,
                kind.substr(0, bracket) + kind.substr(bracket + 1, kind.size() - bracket - 2));
        }
        start = end + 2;
    }
}

// A list with commas between, of which the last is being typed.
void addReasons(CompletionOptions& completion)
{
    const std::size_t last = completion.begun.rfind(',') + 1; // npos + 1 is 0
    completion.before += completion.begun.substr(0, last);
    completion.begun.erase(0, last);
    for (const std::string& reason : reasonNames()) {
        add(completion, reason);
    }
}

void addValues(CompletionOptions& completion, const std::string& value, const std::string& name)
{
    if (value == "CHOICE") {
        addChoices(completion);
    } else if (value == "KIND,...") {
        addReasons(completion);
    }
    for (const ValueRow& row : valueRows()) {
        if (value == row.value && (row.name[0] == '\0' || name == row.name)) {
            for (const char* word : row.words) {
                add(completion, word);
            }
            completion.names = row.names;
            completion.files.assign(row.files.begin(), row.files.end());
            return;
        }
    }
}

// What stands alone on the line of a command.
void addArguments(CompletionOptions& completion, const CLI::App& command)
{
    const auto positionals =
        command.get_options([](const CLI::Option* option) { return option->get_positional(); });
    if (positionals.empty()) {
        return;
    }
    const std::string name = positionals.front()->get_name();
    const std::string parent = command.get_parent() ? command.get_parent()->get_name() : "";
    if (name == "NAME") {
        completion.names = parent == "lists" ? Names::Lists : Names::Favourites;
    } else if (parent == "settings") {
        addValues(completion, "FILE", "settings");
    } else if (name == "INPUT" || name == "FILE" || name == "BEFORE") {
        completion.files = {"files pdf", "folders"};
    } else {
        addValues(completion, name, "");
    }
}

void addOptions(CompletionOptions& completion, const CLI::App& command, const Language& language)
{
    for (const CLI::Option* option : command.get_options()) {
        const std::string what = briefly(option->get_description(), language);
        for (const std::string& name : option->get_lnames()) {
            add(completion, "--" + name, what);
        }
        for (const std::string& name : option->get_snames()) {
            add(completion, "-" + name, what);
        }
    }
}

void addCommands(CompletionOptions& completion, const CLI::App& command, const Language& language)
{
    for (const CLI::App* one : command.get_subcommands({})) {
        if (!one->get_group().empty()) {
            add(completion, one->get_name(), briefly(one->get_description(), language));
        }
    }
}

bool takesValue(const CLI::Option* option)
{
    return option && option->get_items_expected_max() > 0;
}

const CLI::App* commandNamed(const CLI::App& command, const std::string& name)
{
    const auto all = command.get_subcommands({});
    const auto found = std::find_if(all.begin(), all.end(), [&](const CLI::App* one) {
        return one->get_name() == name && !one->get_group().empty();
    });
    return found == all.end() ? nullptr : *found;
}

/// Where on the line the last word stands.
struct PlaceOnLine {
    const CLI::App* command;
    const CLI::Option* valueOf = nullptr; ///< the option whose value it is
    bool ended = false;                   ///< after --
};

PlaceOnLine placeOf(const CLI::App& program, const std::vector<std::string>& words)
{
    PlaceOnLine place{&program};
    for (std::size_t i = 0; i + 1 < words.size(); ++i) {
        const std::string& word = words[i];
        if (place.valueOf && word != "=") { // a shell may take --list=A for three words
            place.valueOf = nullptr;
        } else if (!place.ended && word == "--") {
            place.ended = true;
        } else if (!place.ended && word.size() > 1 && word[0] == '-') {
            const CLI::Option* option = place.command->get_option_no_throw(word);
            place.valueOf = takesValue(option) ? option : nullptr;
        } else if (const CLI::App* command = commandNamed(*place.command, word)) {
            place.command = command;
        }
    }
    return place;
}

} // namespace

CompletionOptions completionOf(const CLI::App& program, const std::vector<std::string>& words,
                               const Language& language)
{
    PlaceOnLine place = placeOf(program, words);
    CompletionOptions completion;
    completion.begun = words.empty() ? "" : words.back();
    const std::size_t equals = completion.begun.find('=');
    if (place.valueOf && completion.begun == "=") {
        completion.begun.clear();
    } else if (!place.valueOf && !place.ended && equals != std::string::npos) {
        const CLI::Option* option =
            place.command->get_option_no_throw(completion.begun.substr(0, equals));
        if (takesValue(option)) {
            place.valueOf = option;
            completion.before = completion.begun.substr(0, equals + 1);
            completion.begun.erase(0, equals + 1);
        }
    }
    if (place.valueOf) {
        addValues(completion, place.valueOf->get_option_text(),
                  place.valueOf->get_lnames().front());
    } else if (!place.ended && completion.begun.rfind('-', 0) == 0) {
        addOptions(completion, *place.command, language);
    } else {
        addCommands(completion, *place.command, language);
        addArguments(completion, *place.command);
    }
    return completion;
}

} // namespace vantora::cli
