#include "VantoraHost/core/actions/StepStore.h"

#include "VantoraApp/CActionUtils.h"
#include "VantoraApp/settings/CActionHistoryAPI.h"
#include "VantoraApp/settings/SettingsFile.h"
#include "VantoraApp/settings/StoredName.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtGui/QIcon>

#include <algorithm>
#include <cerrno>
#include <unistd.h>

namespace vantora::stepstore {

namespace {

constexpr char listSuffix[] = ".xqq";
constexpr char defaultCategory[] = "Default";

Outcome notWritten(const std::string& file)
{
    return fail(Reason::OutputNotWritable, file, "can't be written");
}

QString textOf(const std::string& name)
{
    return QFile::decodeName(name.c_str());
}

// Why nothing can be saved under a name, by the dialogs' rules.
Outcome checkName(const std::string& name, const QString& reasonAgainst)
{
    if (textOf(name).trimmed().isEmpty()) {
        return fail(Reason::SavedNameUnfit, {}, "the name is empty");
    }
    if (!reasonAgainst.isEmpty()) {
        return fail(Reason::SavedNameUnfit, name, asClause(reasonAgainst));
    }
    return {};
}

Outcome checkListName(const std::string& name)
{
    if (textOf(name).endsWith(listSuffix)) {
        return fail(Reason::SavedNameUnfit, name,
                    "a name that ends in .xqq stands for a file, not for a list of yours");
    }
    return checkName(name, ReasonAgainstActionListName(textOf(name)));
}

// Whether it is saved with a step of this action and these options.
bool holds(const SavedIn& saved, const std::string& action, const PreferencesMap& options)
{
    const auto entry = savedEntry(saved);
    return entry &&
           std::any_of(entry->steps.begin(), entry->steps.end(), [&](const StepRequest& step) {
               return step.action == action && step.stored == options;
           });
}

bool holds(const SavedIn& saved, const PreferencesMap& options)
{
    return holds(saved, options.value("ActionName").toString().toStdString(), options);
}

// The options with the name that users see, as the action's own dialog leaves it in them.
PreferencesMap optionsOf(const Step& step)
{
    PreferencesMap options = step.preferences;
    options.insert("ActionName", step.action.operations->GetDisplayName());
    return options;
}

Outcome saveInList(const std::string& name, const Step& step,
                   const std::optional<std::string>& category, bool replaces)
{
    PreferencesMap request = optionsOf(step);
    const std::string action = request.value("ActionName").toString().toStdString();
    request.insert("ActionListName", textOf(name));
    request.insert("ActionListCategory",
                   QString::fromStdString(category.value_or(defaultCategory)));
    request.insert("ActionListOverwrite", replaces);
    CActionUtils::SaveAsCustomActionList(&request);
    const std::string file = QFile::encodeName(ActionListPath(textOf(name))).toStdString();
    return holds({SavedKind::ActionList, name}, action, request) ? Outcome() : notWritten(file);
}

const char* optionsKey(SavedKind kind)
{
    return kind == SavedKind::ToolSettings ? "ToolSettings" : "ActionPrefs";
}

// The key of a step's options in its file.
QString optionsKey(const SavedEntry& entry, SavedKind kind, std::size_t position)
{
    const QString key = optionsKey(kind);
    return kind == SavedKind::ActionList ? key + QString::number(entry.numbers.at(position)) : key;
}

Outcome update(const SavedEntry& entry, const QVariantMap& values)
{
    return UpdateSettingsFile(textOf(entry.file), values) ? Outcome() : notWritten(entry.file);
}

} // namespace

Outcome addToActionList(const std::string& name, const Step& step,
                        const std::optional<std::string>& category)
{
    if (Outcome checked = checkListName(name); !checked) {
        return checked;
    }
    if (!QFileInfo::exists(ActionListPath(textOf(name)))) {
        return saveInList(name, step, category, false);
    }
    const SavedIn saved{SavedKind::ActionList, name};
    const auto before = savedEntry(saved);
    if (!before) {
        return tl::unexpected<Error>(before.error());
    }
    if (before->steps.size() >= mostSteps) {
        return fail(Reason::SavedStepsUnusable, before->file, "the list is full");
    }
    const auto isAdded = [&] {
        const auto after = savedEntry(saved);
        return after && after->steps.size() == before->steps.size() + 1;
    };
    return saveInList(name, step, category, false).and_then([&]() -> Outcome {
        return !isAdded()                                   ? notWritten(before->file)
               : !category || *category == before->category ? Outcome()
                                                            : changeCategory(saved, *category);
    });
}

Outcome makeActionList(const std::string& name, const Step& step,
                       const std::optional<std::string>& category)
{
    const Outcome checked = checkListName(name);
    return checked ? saveInList(name, step, category, true) : checked;
}

Outcome makeFavourite(const std::string& name, const Step& step, QIcon icon, Existing existing)
{
    if (Outcome checked = checkName(name, ReasonAgainstFavouriteName(textOf(name))); !checked) {
        return checked;
    }
    const QString path = FavouritePath(textOf(name));
    if (existing == Existing::Refuse && QFileInfo::exists(path)) {
        return fail(Reason::SavedStepsExist, name, "there is a favourite of this name");
    }
    PreferencesMap options = optionsOf(step);
    options.insert("CollectionName", textOf(name));
    CActionHistoryAPI({}).SaveSettingsToHistory(&options, &icon);
    return holds({SavedKind::Favourite, name}, options)
               ? Outcome()
               : notWritten(QFile::encodeName(path).toStdString());
}

Outcome makeToolSettings(const std::string& file, const Step& step, Existing existing)
{
    if (file.empty()) {
        return fail(Reason::SavedNameUnfit, {}, "the name is empty");
    }
    const SavedIn saved{SavedKind::ToolSettings, file};
    if (QFileInfo::exists(textOf(file))) {
        if (existing == Existing::Refuse) {
            return fail(Reason::SavedStepsExist, file, "exists already");
        }
        if (const auto before = savedEntry(saved); !before) {
            return tl::unexpected<Error>(before.error());
        }
    }
    const PreferencesMap options = optionsOf(step);
    return WriteSettingsFile(textOf(file), {{optionsKey(saved.kind), options}}) &&
                   holds(saved, options)
               ? Outcome()
               : notWritten(file);
}

Outcome changeStep(const SavedIn& saved, std::size_t position, const PreferencesMap& options)
{
    const auto entry = savedEntry(saved);
    return entry ? update(*entry, {{optionsKey(*entry, saved.kind, position), options}})
                 : tl::unexpected<Error>(entry.error());
}

Outcome changeCategory(const SavedIn& list, const std::string& category)
{
    const auto entry = savedEntry(list);
    return entry ? update(*entry, {{"SequenceCategory", QString::fromStdString(category)}})
                 : tl::unexpected<Error>(entry.error());
}

Outcome removeStep(const SavedIn& list, std::size_t position)
{
    const auto entry = savedEntry(list);
    if (!entry) {
        return tl::unexpected<Error>(entry.error());
    }
    if (entry->steps.size() == 1) {
        return fail(Reason::SavedStepsUnusable, entry->file,
                    "its only step can't be removed without the list");
    }
    const QString number = QString::number(entry->numbers.at(position));
    return RemoveFromSettingsFile(textOf(entry->file),
                                  {"ActionName" + number, "ActionPrefs" + number})
               ? Outcome()
               : notWritten(entry->file);
}

Result<std::string> remove(const SavedIn& saved)
{
    const bool isNamedAsFile =
        saved.kind == SavedKind::ToolSettings ||
        (saved.kind == SavedKind::ActionList && textOf(saved.name).endsWith(listSuffix));
    if (isNamedAsFile) {
        if (const auto entry = savedEntry(saved); !entry) {
            return tl::unexpected<Error>(entry.error());
        }
    }
    auto file = savedFile(saved);
    if (file && ::unlink(file->c_str()) != 0) {
        return fail(Reason::OutputNotWritable, *file, "can't be removed: " + systemMessage(errno));
    }
    return file;
}

} // namespace vantora::stepstore
