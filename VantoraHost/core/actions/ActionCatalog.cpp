#include "VantoraHost/core/actions/ActionCatalog.h"

#include <QtCore/QFile>
#include <QtCore/QJsonObject>
#include <QtCore/QPluginLoader>

#include <algorithm>
#include <cctype>
#include <optional>
#include <system_error>

namespace vantora {

namespace fs = std::filesystem;

namespace {

const std::string identifierPrefix = "org.karvel.vantora.";

QString qtPath(const fs::path& path)
{
    return QFile::decodeName(path.c_str());
}

// By convention an identifier ends in the action's name, lower-case and without spaces.
std::string identifierFor(const std::string& name)
{
    std::string identifier = identifierPrefix;
    for (const char c : name) {
        if (c != ' ') {
            identifier += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        }
    }
    return identifier;
}

} // namespace

ActionCatalog ActionCatalog::of(const std::vector<fs::path>& folders)
{
    ActionCatalog catalog;
    for (const fs::path& folder : folders) {
        std::vector<fs::path> files;
        std::error_code failed;
        for (fs::directory_iterator entry(folder, failed), end; !failed && entry != end;
             entry.increment(failed)) {
            if (entry->path().extension() == ".so") {
                files.push_back(fs::absolute(entry->path()));
            }
        }
        std::sort(files.begin(), files.end());
        for (const fs::path& file : files) {
            catalog.consider(file);
        }
    }
    return catalog;
}

void ActionCatalog::consider(const fs::path& file)
{
    const QPluginLoader loader(qtPath(file));
    const std::string identifier = loader.metaData().value("IID").toString().toStdString();
    const auto same = [&](const ActionFile& other) { return other.identifier == identifier; };
    const auto first = std::find_if(found_.begin(), found_.end(), same);
    if (identifier.empty()) {
        refused_.push_back({Reason::ActionUnusable, file, "not a plug-in"});
    } else if (identifier.compare(0, identifierPrefix.size(), identifierPrefix) != 0) {
        refused_.push_back(
            {Reason::ActionUnusable, file, "a plug-in of another kind: " + identifier});
    } else if (first != found_.end()) {
        refused_.push_back(
            {Reason::ActionUnusable, file, "the same action as " + first->path.string()});
    } else {
        found_.push_back({file, identifier});
    }
}

Result<Action> ActionCatalog::load(const ActionFile& file)
{
    QPluginLoader loader(qtPath(file.path));
    QObject* root = loader.instance();
    if (!root) {
        return fail(Reason::ActionUnusable, file.path, loader.errorString().toStdString());
    }
    auto* operations = qobject_cast<CActionInterface*>(root);
    if (!operations) {
        return fail(Reason::ActionUnusable, file.path,
                    "its root object doesn't offer the action interface");
    }
    return Action{file, operations->GetActionName().toStdString(), operations};
}

Result<Action> ActionCatalog::find(const std::string& name) const
{
    const std::string expected = identifierFor(name);
    std::vector<ActionFile> candidates = found_;
    std::stable_partition(candidates.begin(), candidates.end(),
                          [&](const ActionFile& file) { return file.identifier == expected; });
    std::string known;
    std::optional<Action> shownSo;
    for (const ActionFile& file : candidates) {
        Result<Action> action = load(file);
        if (action && action->name == name) {
            return action;
        }
        if (!action && file.identifier == expected) {
            return action;
        }
        if (action && !shownSo && action->operations->GetDisplayName().toStdString() == name) {
            shownSo = *action;
        }
        if (action) {
            known += (known.empty() ? "" : ", ") + action->name;
        }
    }
    if (shownSo) {
        return *shownSo;
    }
    if (known.empty()) {
        return fail(Reason::ActionUnusable, {}, "no action is installed");
    }
    return fail(Reason::ActionMissing, {},
                "no action \"" + name + "\" is installed, only: " + known);
}

} // namespace vantora
