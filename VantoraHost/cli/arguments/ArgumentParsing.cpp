#include "VantoraHost/cli/arguments/ArgumentParsing.h"

#include "VantoraHost/cli/console/Streams.h"
#include "VantoraHost/core/ShownText.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <limits>

namespace vantora::cli {

CLI::App& declareCommand(CLI::App& program, const char* name, const char* what)
{
    return *program.add_subcommand(name, what)->group("Commands");
}

// The parser takes a value such as "[a,b]" for two of an option that it may feed with more; file
// names have to come through as they are. So options take one value an occurrence...
CLI::Option* oneEach(CLI::Option* option, const char* value)
{
    return option->allow_extra_args(false)->option_text(value);
}

// ... and what stands alone is wanted as often as there are arguments.
CLI::Option* takeAll(CLI::Option* option, std::size_t arguments)
{
    return option->required()
        ->expected(static_cast<int>(arguments))
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->allow_extra_args(false)
        ->option_text("...");
}

Ending mistake(const std::string& sentence, const std::string& helpFor)
{
    std::string line = sentence;
    std::replace(line.begin(), line.end(), '\n', ' ');
    return {WrongUsage, shown(line), helpFor + (helpFor.empty() ? "--help" : " --help")};
}

std::string mistakeText(const Ending& mistake, const Language& language)
{
    const std::string help =
        mistake.help.empty() ? "" : "; " + language.text("see vantora %1", {mistake.help});
    return mistake.place + language.sentence(mistake.text) + help;
}

tl::expected<Setting, std::string> settingOf(const std::string& text)
{
    const auto equals = text.find('=');
    if (equals == std::string::npos || equals == 0) {
        return tl::unexpected<std::string>("--set " + text + " is not KEY=VALUE");
    }
    return Setting(text.substr(0, equals), text.substr(equals + 1));
}

std::optional<std::uint64_t> amountOf(const std::string& text,
                                      std::initializer_list<std::pair<char, std::uint64_t>> units)
{
    std::uint64_t number = 0;
    const auto [end, failed] = std::from_chars(text.data(), text.data() + text.size(), number);
    const std::string unit(end, text.data() + text.size());
    if (failed != std::errc()) {
        return std::nullopt;
    }
    if (unit.empty()) {
        return number;
    }
    for (const auto& [letter, factor] : units) {
        if (unit.size() == 1 && std::tolower(unit[0]) == letter &&
            number <= std::numeric_limits<std::uint64_t>::max() / factor) {
            return number * factor;
        }
    }
    return std::nullopt;
}

} // namespace vantora::cli
