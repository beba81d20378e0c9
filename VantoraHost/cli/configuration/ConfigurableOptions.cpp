#include "VantoraHost/cli/configuration/ConfigurableOptions.h"

#include <algorithm>

namespace vantora::cli {

namespace {

// What a run does, of which the command line's takes the place of all of a profile's.
const std::vector<const char*> steps = {"pages",  "choose", "keep", "except",   "ranges",
                                        "action", "list",   "set",  "settings", "favourite"};

struct CommandLineOnly {
    const char* name;
    const char* why;
};

constexpr char saysInputs[] = "what a run works on is said each time";
constexpr char replacesOrLoses[] = "what replaces files or loses content is said each time";

constexpr CommandLineOnly commandLineOnly[] = {
    {"files-from", saysInputs},
    {"null", saysInputs},
    {"ranges", saysInputs},
    {"output", "it names the output of one document"},
    {"in-place", replacesOrLoses},
    {"overwrite", replacesOrLoses},
    {"salvage", replacesOrLoses},
    {"shard", "it differs from machine to machine"},
    {"dry-run", "it is about one run"},
};

} // namespace

const std::vector<ConfigurableOption>& configurableOptions()
{
    using K = ValueKind;
    static const std::vector<ConfigurableOption> all = {
        {"recursive", K::Flag, Place::Anywhere, "true", {"output", fromStandardInput}},
        {"pages", K::Texts, Place::Profiles, "\"1,4-6\"", steps},
        {"choose", K::Texts, Place::Profiles, "[\"blank\", \"last:2\"]", steps},
        {"keep", K::Texts, Place::Profiles, "\"first:3\"", steps},
        {"except", K::Texts, Place::Profiles, "\"first\"", steps},
        {"action", K::Texts, Place::Profiles, "\"Delete Pages\"", steps},
        {"list", K::Texts, Place::Profiles, "\"Clean scans\"", steps},
        {"favourite", K::Texts, Place::Profiles, "\"No cover\"", steps},
        {"settings", K::Paths, Place::Profiles, "\"~/clean.tsf\"", steps},
        {"set", K::Texts, Place::Profiles, "\"byPageRangeTextEdit=1\"", steps},
        {"directory",
         K::Path,
         Place::Anywhere,
         "\"cut\"",
         {"output", "in-place", fromStandardInput}},
        {"name", K::Text, Place::Anywhere, "\"{name}-cut{ext}\"", {}, "directory"},
        {"backup", K::Flag, Place::Anywhere, "true", {}, "in-place", true},
        {"rename", K::Flag, Place::Anywhere, "true", {"overwrite", "in-place", "skip-existing"}},
        {"skip-existing",
         K::Flag,
         Place::Anywhere,
         "true",
         {"rename", "in-place", fromStandardInput, toStandardOutput, "dry-run"}},
        {"password-file", K::Path, Place::Anywhere, "\"~/.config/vantora/passwords\""},
        {"keep-signed", K::Flag, Place::Anywhere, "true", {}, nullptr, true},
        {"strict", K::Flag, Place::Anywhere, "true", {}, nullptr, true},
        {"verify", K::Flag, Place::Anywhere, "true", {}, nullptr, true},
        {"if-empty", K::Text, Place::Profiles, "\"skip\""},
        {"accept-failures", K::Texts, Place::Profiles, "\"empty,password-needed\""},
        {"jobs", K::Amount, Place::Anywhere, "2", {fromStandardInput, toStandardOutput}},
        {"timeout",
         K::Amount,
         Place::Anywhere,
         "\"5m\"",
         {fromStandardInput, toStandardOutput, withoutWorkers},
         nullptr,
         false,
         "5m"},
        {"memory-limit",
         K::Amount,
         Place::Anywhere,
         "\"2G\"",
         {fromStandardInput, toStandardOutput, withoutWorkers}},
        {"report", K::Path, Place::Profiles, "\"~/cut.jsonl\""},
        {"report-hashes", K::Flag, Place::Anywhere, "true", {}, "report"},
        {"resume", K::Paths, Place::Profiles, "\"~/cut.jsonl\""},
        {"metrics", K::Path, Place::Profiles, "\"cut.prom\""},
        {"certificate", K::Path, Place::Profiles, "\"kept/{name}-certificate.pdf\"", {"dry-run"}},
        {"checksums", K::Path, Place::Profiles, "\"cut.sha256\"", {"dry-run"}},
        {"json", K::Flag, Place::Anywhere, "true", {toStandardOutput}},
        {"quiet", K::Flag, Place::Anywhere, "true", {"verbose"}},
        {"verbose", K::Flag, Place::Anywhere, "true", {"quiet"}},
    };
    return all;
}

const ConfigurableOption* configurableOption(const std::string& name)
{
    const auto& all = configurableOptions();
    const auto found = std::find_if(
        all.begin(), all.end(), [&](const ConfigurableOption& one) { return one.name == name; });
    return found == all.end() ? nullptr : &*found;
}

std::vector<std::string> configurableNames()
{
    std::vector<std::string> names;
    for (const ConfigurableOption& option : configurableOptions()) {
        names.emplace_back(option.name);
    }
    return names;
}

const char* whyNotConfigurable(const std::string& name)
{
    for (const CommandLineOnly& option : commandLineOnly) {
        if (option.name == name) {
            return option.why;
        }
    }
    return nullptr;
}

} // namespace vantora::cli
