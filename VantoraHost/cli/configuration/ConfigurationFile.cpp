#include "KarvelPDFLibrary/io/FileDescriptor.h"
#include "VantoraHost/cli/configuration/Configuration.h"
#include "VantoraHost/core/DescriptorText.h"
#include "VantoraHost/core/FileIdentity.h"
#include "VantoraHost/core/NearestName.h"
#include "VantoraHost/core/ShownText.h"

#include <toml++/toml.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <optional>
#include <string_view>
#include <utility>

namespace vantora::cli {

namespace {

constexpr std::size_t mostBytes = std::size_t{64} << 10;

// A key of many parts, a.b.c, is as many tables in each other, which the parser's library gives
// back one within the other, on the stack.
constexpr std::size_t mostDots = 1000;

/// Reads what stands in the file, whose path it knows for its errors.
class FileReading {
public:
    explicit FileReading(std::string path) { configuration_.path = std::move(path); }

    Result<Configuration> of(const toml::table& file)
    {
        configuration_.isThere = true;
        auto defaults = optionsOf(file, Place::Anywhere);
        if (!defaults) {
            return tl::unexpected<Error>(std::move(defaults.error()));
        }
        configuration_.defaults = std::move(*defaults);
        if (const toml::node* profiles = file.get("profile")) {
            if (Outcome taken = takeProfiles(*profiles); !taken) {
                return tl::unexpected<Error>(std::move(taken.error()));
            }
        }
        return std::move(configuration_);
    }

    tl::unexpected<Error> wrong(std::size_t line, const std::string& sentence) const
    {
        return fail(Reason::WrongUsage, configuration_.path + ":" + std::to_string(line), sentence);
    }

private:
    Outcome takeProfiles(const toml::node& profiles);
    Outcome takeProfile(const toml::key& name, const toml::node& node);
    Result<std::vector<ConfiguredOption>> optionsOf(const toml::table& table, Place place) const;
    Result<ConfiguredOption> optionOf(const toml::key& key, const toml::node& node,
                                      Place place) const;
    Outcome takeTexts(const toml::node& node, ConfiguredOption& into) const;
    Outcome takeText(const toml::node& node, ConfiguredOption& into) const;
    tl::unexpected<Error> wrongType(const ConfiguredOption& option) const;

    Configuration configuration_;
};

std::size_t lineOf(const toml::key& key)
{
    return key.source().begin.line;
}

bool isOf(const ConfiguredOption& option, ValueKind one, ValueKind other)
{
    return option.option->kind == one || option.option->kind == other;
}

bool lacksText(const std::string& text)
{
    return text.empty() || std::any_of(text.begin(), text.end(), [](char character) {
               return static_cast<unsigned char>(character) < ' ';
           });
}

// No shell does it here.
std::string withHome(const std::string& path)
{
    const char* home = std::getenv("HOME");
    return home && path.rfind("~/", 0) == 0 ? home + path.substr(1) : path;
}

bool isZero(const std::string& amount)
{
    const std::size_t end = amount.find_first_not_of("0123456789");
    const std::string digits = amount.substr(0, end);
    return !digits.empty() && digits.find_first_not_of('0') == std::string::npos;
}

tl::unexpected<Error> FileReading::wrongType(const ConfiguredOption& option) const
{
    const auto takes = [&] {
        switch (option.option->kind) {
        case ValueKind::Flag:
            return "true or false";
        case ValueKind::Amount:
            return "a number that is no less than 0, or a text in quotes";
        case ValueKind::Text:
        case ValueKind::Path:
            return "a text in quotes";
        case ValueKind::Texts:
        case ValueKind::Paths:
            break;
        }
        return "a text in quotes, or a list of them in brackets";
    };
    return wrong(option.line, std::string(option.option->name) + " takes " + takes() +
                                  ", such as " + option.option->sample);
}

Outcome FileReading::takeText(const toml::node& node, ConfiguredOption& into) const
{
    const bool isAmount = into.option->kind == ValueKind::Amount;
    std::string text;
    if (const auto* written = node.as_string()) {
        text = written->get();
    } else if (const auto* number = node.as_integer(); number && isAmount && number->get() >= 0) {
        text = std::to_string(number->get());
    } else {
        return wrongType(into);
    }
    if (lacksText(text)) {
        return wrong(into.line, std::string(into.option->name) +
                                    " is empty or holds a control character; leave it out, or "
                                    "write it anew");
    }
    if (isAmount && isZero(text)) {
        return wrong(into.line, std::string(into.option->name) +
                                    " of 0 lifts a protection, which only the command line does; "
                                    "write another number, or leave it out");
    }
    into.values.push_back(isOf(into, ValueKind::Path, ValueKind::Paths) ? withHome(text) : text);
    return {};
}

Outcome FileReading::takeTexts(const toml::node& node, ConfiguredOption& into) const
{
    const auto* list = node.as_array();
    if (!list || !isOf(into, ValueKind::Texts, ValueKind::Paths)) {
        return takeText(node, into);
    }
    for (const toml::node& one : *list) {
        if (Outcome taken = takeText(one, into); !taken) {
            return taken;
        }
    }
    return {};
}

Result<ConfiguredOption> FileReading::optionOf(const toml::key& key, const toml::node& node,
                                               Place place) const
{
    const std::string name(key.str());
    ConfiguredOption found;
    found.option = configurableOption(name);
    found.line = lineOf(key);
    if (const char* why = whyNotConfigurable(name)) {
        return wrong(found.line,
                     name + " is for the command line only, since " + why + "; leave it out here");
    }
    if (!found.option) {
        const std::string nearest = nearestName(name, configurableNames());
        return wrong(found.line,
                     "there is no option \"" + shown(name) + "\"" +
                         (nearest.empty() ? "; vantora config --example prints all there are"
                                          : "; did you mean " + nearest + "?"));
    }
    if (place == Place::Anywhere && found.option->place == Place::Profiles) {
        return wrong(found.line, name + " is for profiles only, since it is about particular runs; "
                                        "move it below a line such as [profile.scans]");
    }
    if (found.option->kind == ValueKind::Flag) {
        const auto* flag = node.as_boolean();
        if (!flag) {
            return wrongType(found);
        }
        found.on = flag->get();
        return found;
    }
    if (Outcome taken = takeTexts(node, found); !taken) {
        return tl::unexpected<Error>(std::move(taken.error()));
    }
    return found;
}

Result<std::vector<ConfiguredOption>> FileReading::optionsOf(const toml::table& table,
                                                             Place place) const
{
    // The table is sorted by name, and steps follow each other as they stand.
    std::vector<std::pair<const toml::key*, const toml::node*>> entries;
    for (const auto& [key, node] : table) {
        if (place == Place::Profiles || key.str() != "profile") {
            entries.emplace_back(&key, &node);
        }
    }
    std::sort(entries.begin(), entries.end(), [](const auto& one, const auto& other) {
        return one.first->source().begin < other.first->source().begin;
    });
    std::vector<ConfiguredOption> options;
    for (const auto& [key, node] : entries) {
        auto option = optionOf(*key, *node, place);
        if (!option) {
            return tl::unexpected<Error>(std::move(option.error()));
        }
        options.push_back(std::move(*option));
    }
    return options;
}

Outcome FileReading::takeProfile(const toml::key& name, const toml::node& node)
{
    const toml::table* table = node.as_table();
    if (!table || name.str().empty()) {
        return wrong(lineOf(name), "a profile begins with a line such as [profile.scans]");
    }
    auto options = optionsOf(*table, Place::Profiles);
    if (!options) {
        return tl::unexpected<Error>(std::move(options.error()));
    }
    for (const ConfiguredOption& one : *options) {
        const auto& defaults = configuration_.defaults;
        const auto outside = std::find_if(defaults.begin(), defaults.end(), [&](const auto& other) {
            return other.option == one.option && other.on;
        });
        if (one.option->protects && !one.on && outside != defaults.end()) {
            return wrong(one.line, std::string(one.option->name) +
                                       " is switched on for all runs by line " +
                                       std::to_string(outside->line) +
                                       ", and only the command line switches that off, with --no-" +
                                       one.option->name);
        }
    }
    configuration_.profiles.push_back({std::string(name.str()), std::move(*options)});
    return {};
}

Outcome FileReading::takeProfiles(const toml::node& profiles)
{
    const toml::table* table = profiles.as_table();
    if (!table) {
        return wrong(profiles.source().begin.line,
                     "a profile begins with a line such as [profile.scans]");
    }
    for (const auto& [name, node] : *table) {
        if (Outcome taken = takeProfile(name, node); !taken) {
            return taken;
        }
    }
    return {};
}

// What is wrong with the file itself, with what to do about it.
std::optional<std::string> untrusted(const struct stat& status)
{
    if (!S_ISREG(status.st_mode)) {
        return "is no regular file; put one there, or use --no-config";
    }
    if (isOwnedByOthers(status)) {
        return "belongs to another user, who could change what is done; take it over, or use "
               "--no-config";
    }
    if (othersMayWriteTo(status)) {
        return "others can write to it, and so change what is done; take that from them with chmod "
               "go-w, or use --no-config";
    }
    return std::nullopt;
}

Result<std::string> trustedText(const std::string& path)
{
    // A named pipe must not wait for a writer before it can be refused.
    const karvel::io::FileDescriptor file(
        ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat status = {};
    if (!file || ::fstat(file.get(), &status) != 0) {
        return fail(errno == ENOENT || errno == ENOTDIR ? Reason::InputMissing : Reason::WrongUsage,
                    path, "can't be read: " + systemMessage(errno) + "; --no-config does without");
    }
    if (const auto why = untrusted(status)) {
        return fail(Reason::WrongUsage, path, *why);
    }
    auto text = textOf(file.get(), mostBytes);
    if (!text) {
        return fail(Reason::WrongUsage, path,
                    "can't be read: " + systemMessage(text.error()) + "; --no-config does without");
    }
    if (text->size() > mostBytes) {
        return fail(Reason::WrongUsage, path,
                    "is larger than 64 KiB, which no configuration needs; shorten it, or use "
                    "--no-config");
    }
    return std::move(*text);
}

// Where a text in quotes ends that begins there: its last character.
std::size_t endOfQuoted(std::string_view text, std::size_t begin)
{
    const char quote = text[begin];
    const std::string three(3, quote);
    const bool hasLines = text.substr(begin, 3) == three;
    const std::string_view end = std::string_view(three).substr(0, hasLines ? 3 : 1);
    for (std::size_t at = begin + end.size(); at < text.size(); ++at) {
        if (text.substr(at, end.size()) == end) {
            at += end.size();
            // Up to two quotes may stand before the three that end it.
            const std::size_t more = hasLines ? 2 : 0;
            return std::min(text.find_first_not_of(quote, at), at + more) - 1;
        }
        if (text[at] == '\n' && !hasLines) {
            return at; // the parser says what is wrong with it
        }
        at += quote == '"' && text[at] == '\\' ? 1 : 0;
    }
    return text.size();
}

// The line from which keys have too many parts, if they do. Up to where the parser finds a mistake,
// this finds the same texts and comments as it does.
std::optional<std::size_t> lineOfTooManyParts(std::string_view text)
{
    std::size_t dots = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '#') {
            at = std::min(text.find('\n', at), text.size());
        } else if (text[at] == '"' || text[at] == '\'') {
            at = endOfQuoted(text, at);
        } else if (text[at] == '.' && ++dots > mostDots) {
            const std::string_view before = text.substr(0, at);
            return static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n')) + 1;
        }
    }
    return std::nullopt;
}

} // namespace

Result<Configuration> readConfiguration(const std::string& path)
{
    Configuration none;
    none.path = path;
    if (path.empty()) {
        return none;
    }
    const auto text = trustedText(path);
    if (!text) {
        return text.error().reason == Reason::InputMissing ? Result<Configuration>(none)
                                                           : tl::unexpected<Error>(text.error());
    }
    FileReading reading(path);
    if (const auto line = lineOfTooManyParts(*text)) {
        return reading.wrong(*line, "keys have more parts than any configuration needs: " +
                                        std::to_string(mostDots) + " dots stand before this one");
    }
    try {
        return reading.of(toml::parse(std::string_view(*text)));
    } catch (const toml::parse_error& error) {
        return reading.wrong(error.source().begin.line,
                             "is no TOML: " + shown(error.description()));
    }
}

} // namespace vantora::cli
