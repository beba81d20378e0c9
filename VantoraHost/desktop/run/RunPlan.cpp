#include "VantoraHost/desktop/run/RunPlan.h"

#include "KarvelPDFLibrary/io/Folder.h"
#include "VantoraHost/core/actions/DeletePagesOptions.h"
#include "VantoraHost/core/actions/StepsIdentity.h"
#include "VantoraHost/desktop/texts/ShownTexts.h"

#include <algorithm>
#include <map>
#include <utility>

namespace vantora::desktop {

namespace {

// Documents that are planned together, because they go below one folder.
struct Destined {
    Destination destination;
    std::vector<Input> inputs;
    std::vector<std::size_t> documents;
};

Result<OutputName> nameFor(const QString& text)
{
    auto name = OutputName::of(text.toStdString());
    if (!name) {
        return fail(Reason::WrongUsage, {},
                    "the name \"" + text.toStdString() + "\" " + name.error());
    }
    return *name;
}

// Beside the documents, each folder is one of its own, so that what lies in it is looked up there
// and nowhere else.
Result<std::vector<Destined>> destined(const std::vector<RunDocument>& documents,
                                       const RunSettings& settings)
{
    std::optional<OutputName> name;
    if (settings.place != OutputPlace::InPlace) {
        auto read = nameFor(settings.place == OutputPlace::Folder ? settings.folderName
                                                                  : settings.besideName);
        if (!read) {
            return tl::unexpected<Error>(read.error());
        }
        name = std::move(*read);
    }
    std::map<std::string, Destined> all;
    for (std::size_t i = 0; i < documents.size(); ++i) {
        Input input = documents[i].input;
        std::string folder;
        if (settings.place == OutputPlace::Folder) {
            folder = systemPath(settings.folder);
        } else if (settings.place == OutputPlace::Beside) {
            folder = karvel::io::folderOf(input.path);
            input = inputNamed(input.path);
        }
        Destined& place = all[folder];
        place.destination = settings.place == OutputPlace::InPlace
                                ? Destination(InPlace{settings.keepsBackup})
                                : Destination(ToFolder{folder, name});
        place.inputs.push_back(std::move(input));
        place.documents.push_back(i);
    }
    std::vector<Destined> list;
    for (auto& [folder, place] : all) {
        list.push_back(std::move(place));
    }
    return list;
}

// Documents with the same steps are one batch, if the same may be done about damage.
class Groups {
public:
    explicit Groups(const RunSettings& settings) : settings_(settings) {}

    void add(const RunDocument& document, Target target, RunPlan& plan)
    {
        const auto [found, isNew] = places_.emplace(
            std::pair(stepsDigest(document.steps), document.salvages), plan.groups.size());
        if (isNew) {
            RunGroup group;
            group.steps = document.steps;
            group.batch.settings.keepSigned = settings_.keepsSigned;
            group.verifies = settings_.verifies;
            group.batch.settings.salvage = document.salvages;
            group.batch.settings.ifEmpty =
                settings_.place == OutputPlace::InPlace ? IfEmpty::Fail : IfEmpty::Blank;
            plan.groups.push_back(std::move(group));
        }
        RunGroup& group = plan.groups[found->second];
        group.ids.push_back(document.id);
        group.batch.inputs.push_back(document.input.path);
        group.batch.targets.emplace_back(std::move(target));
    }

private:
    const RunSettings& settings_;
    std::map<std::pair<std::string, bool>, std::size_t> places_;
};

QString quoted(const QString& text)
{
    QString inner = text;
    return '\'' + inner.replace('\'', "'\\''") + '\'';
}

QString stepsText(const std::vector<StepRequest>& steps)
{
    QString text;
    for (const StepRequest& step : steps) {
        const bool isDeletion = step.action == deletepages::actionName && steps.size() == 1;
        if (isDeletion) {
            text += " --pages " + quoted(step.stored.value(deletepages::rangeKey).toString());
            continue;
        }
        text += " --action " + quoted(QString::fromStdString(step.action));
        for (auto option = step.stored.begin(); option != step.stored.end(); ++option) {
            if (option.key() != "ActionName") {
                text += " --set " + quoted(option.key() + '=' + option.value().toString());
            }
        }
    }
    return text;
}

QString outputText(const std::string& folder, const RunSettings& settings)
{
    QString text;
    if (settings.place == OutputPlace::InPlace) {
        text = settings.keepsBackup ? " --in-place --backup" : " --in-place";
    } else {
        const bool beside = settings.place == OutputPlace::Beside;
        const QString name = beside ? settings.besideName : settings.folderName;
        text = " -d " + quoted(qtPath(folder));
        text += name == "{name}{ext}" ? QString() : " --name " + quoted(name);
        text += settings.taken == TakenName::Replace  ? " --overwrite"
                : settings.taken == TakenName::Number ? " --rename"
                                                      : "";
    }
    return text + (settings.keepsSigned ? " --keep-signed" : "") +
           (settings.verifies ? " --verify" : "");
}

} // namespace

Result<RunPlan> planRun(const std::vector<RunDocument>& documents, const RunSettings& settings)
{
    RunPlan plan;
    std::vector<RunDocument> concerned;
    std::copy_if(documents.begin(), documents.end(), std::back_inserter(concerned),
                 [](const RunDocument& document) { return !document.steps.empty(); });
    plan.untouched = documents.size() - concerned.size();
    if (settings.place == OutputPlace::Folder && settings.folder.isEmpty()) {
        return fail(Reason::WrongUsage, {}, "choose a folder for the results");
    }
    const auto places = destined(concerned, settings);
    if (!places) {
        return tl::unexpected<Error>(places.error());
    }
    std::vector<Result<Target>> targets(concerned.size());
    for (const Destined& place : *places) {
        auto planned = planOutputs(place.inputs, place.destination, settings.taken);
        if (!planned) {
            return tl::unexpected<Error>(std::move(planned.error()));
        }
        for (std::size_t i = 0; i < planned->size(); ++i) {
            targets[place.documents[i]] = std::move((*planned)[i]);
        }
    }
    Groups groups(settings);
    for (std::size_t i = 0; i < concerned.size(); ++i) {
        if (!targets[i]) {
            plan.refused.push_back(targets[i].error());
            continue;
        }
        ++plan.documents;
        plan.pages += static_cast<std::uint64_t>(std::max(0, concerned[i].going));
        plan.replaced += targets[i]->replaced ? 1 : 0;
        groups.add(concerned[i], std::move(*targets[i]), plan);
    }
    return plan;
}

QString commandsOf(const RunPlan& plan, const RunSettings& settings)
{
    QString commands;
    for (const RunGroup& group : plan.groups) {
        std::map<std::string, QString> filesByFolder;
        for (std::size_t i = 0; i < group.batch.inputs.size(); ++i) {
            const bool inPlace = settings.place == OutputPlace::InPlace;
            const std::string folder =
                inPlace ? std::string() : karvel::io::folderOf(group.batch.targets[i]->path);
            filesByFolder[folder] += ' ' + quoted(qtPath(group.batch.inputs[i]));
        }
        for (const auto& [folder, files] : filesByFolder) {
            commands += "vantora run" + stepsText(group.steps) + outputText(folder, settings) +
                        (group.batch.settings.salvage ? " --salvage" : "") + " --" + files + '\n';
        }
    }
    return commands;
}

} // namespace vantora::desktop
