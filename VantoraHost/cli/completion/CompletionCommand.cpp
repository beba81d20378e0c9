#include "VantoraHost/cli/completion/CompletionCommand.h"

#include "VantoraHost/cli/configuration/Configuration.h"
#include "VantoraHost/cli/lists_favourites_settings/SavedCommand.h"
#include "VantoraHost/core/actions/ActionCatalog.h"
#include "VantoraHost/core/reports/JsonReading.h"

#include <algorithm>
#include <ostream>
#include <sstream>

namespace vantora::cli {

namespace {

std::vector<std::string> actionNames(const Installation& installation)
{
    const ActionCatalog catalog = ActionCatalog::of(installation.actionFolders);
    std::vector<std::string> names;
    for (const ActionFile& file : catalog.actions()) {
        if (const auto action = ActionCatalog::load(file)) {
            names.push_back(action->name);
        }
    }
    return names;
}

std::vector<std::string> savedNames(SavedKind kind, const Installation& installation,
                                    const GuiPartSource& guiPart, const Streams& streams)
{
    const auto part = guiPart();
    if (!part) {
        return {};
    }
    SavedOptions list;
    list.kind = kind;
    list.json = true;
    std::ostringstream printed;
    std::ostringstream unheard;
    (*part)->saved(list, installation, {streams.in, printed, unheard});
    std::vector<std::string> names;
    std::istringstream lines(printed.str());
    for (std::string line; std::getline(lines, line);) {
        if (const auto entry = jsonObjectOf(line)) {
            names.push_back(bytesOf((*entry)["name"].toString()));
        }
    }
    return names;
}

std::vector<std::string> profileNames()
{
    std::vector<std::string> names;
    if (const auto configuration = readConfiguration(configurationPath())) {
        for (const Profile& profile : configuration->profiles) {
            names.push_back(profile.name);
        }
    }
    return names;
}

std::vector<std::string> namesOf(CompletionOptions::Names names, const Installation& installation,
                                 const GuiPartSource& guiPart, const Streams& streams)
{
    using Names = CompletionOptions::Names;
    switch (names) {
    case Names::None:
        break;
    case Names::Actions:
        return actionNames(installation);
    case Names::Lists:
        return savedNames(SavedKind::ActionList, installation, guiPart, streams);
    case Names::Favourites:
        return savedNames(SavedKind::Favourite, installation, guiPart, streams);
    case Names::Profiles:
        return profileNames();
    }
    return {};
}

// A line is what a shell can take: a name with a control character in it is typed by hand.
bool fitsLine(const std::string& text)
{
    return std::none_of(text.begin(), text.end(), [](char character) {
        return static_cast<unsigned char>(character) < ' ' || character == '\x7f';
    });
}

} // namespace

int complete(const CompletionOptions& options, const Installation& installation,
             const GuiPartSource& guiPart, const Streams& streams)
{
    for (const auto& [text, what] : options.candidates) {
        streams.out << options.before << text << (what.empty() ? "" : "\t") << what << '\n';
    }
    for (const std::string& name : namesOf(options.names, installation, guiPart, streams)) {
        if (fitsLine(name) && name[0] != ':' && name.rfind(options.begun, 0) == 0) {
            streams.out << options.before << name << '\n';
        }
    }
    for (const std::string& files : options.files) {
        streams.out << ':' << files << '\n';
    }
    return AllDone;
}

} // namespace vantora::cli
