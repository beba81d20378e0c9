#include "VantoraHost/core/actions/SavedSteps.h"

#include "VantoraApp/CActionUtils.h"
#include "VantoraApp/settings/SettingsFile.h"
#include "VantoraApp/settings/StoredName.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>

#include <functional>
#include <set>

namespace vantora {

std::string asClause(QString sentence)
{
    while (sentence.endsWith('.')) {
        sentence.chop(1);
    }
    return (sentence.left(1).toLower() + sentence.mid(1)).toStdString();
}

namespace {

constexpr int longestName = 255;

constexpr char listSuffix[] = ".xqq";

std::string pathBytes(const QString& path)
{
    return QFile::encodeName(QDir::cleanPath(path)).toStdString();
}

tl::unexpected<Error> unusable(const QString& path, const std::string& sentence)
{
    return fail(Reason::SavedStepsUnusable, pathBytes(path), sentence);
}

Result<SettingsFile> readFile(const QString& path)
{
    auto settings = SettingsFile::Read(path);
    if (!settings) {
        const Reason reason =
            QFileInfo::exists(path) ? Reason::InputUnreadable : Reason::InputMissing;
        return fail(reason, pathBytes(path), asClause(settings.error()));
    }
    return std::move(*settings);
}

// The text of a key; empty when there is none and when it is too long for a name.
QString nameAt(const SettingsFile& settings, const QString& key)
{
    const QVariant value = settings.Value(key).value_or(QVariant());
    const QString name = value.type() == QVariant::String ? value.toString() : QString();
    return name.size() <= longestName ? name : QString();
}

std::optional<PreferencesMap> optionsAt(const SettingsFile& settings, const QString& key)
{
    QStringList refused;
    const QVariant value = settings.Value(key, &refused).value_or(QVariant());
    // A step with only some of its options would do something else.
    if (value.type() != QVariant::Map || !refused.isEmpty()) {
        return std::nullopt;
    }
    return value.toMap();
}

StepRequest stepOf(const QString& action, const PreferencesMap& options, const QString& path)
{
    return {action.toStdString(), {}, options, pathBytes(path)};
}

// The numbers of a list's steps. Steps may be missing between them, and half a step is a step.
std::set<int> stepNumbers(const SettingsFile& settings)
{
    static const QRegularExpression stepKey("\\AAction(?:Name|Prefs)(0|[1-9][0-9]{0,8})\\z");
    std::set<int> numbers;
    for (const QString& key : settings.Keys()) {
        if (const auto match = stepKey.match(key); match.hasMatch()) {
            numbers.insert(match.captured(1).toInt());
        }
    }
    return numbers;
}

Result<std::vector<StepRequest>> stepsIn(const SettingsFile& settings, const std::set<int>& numbers,
                                         const QString& path)
{
    if (numbers.empty()) {
        return unusable(path, settings.Contains("SequenceName")
                                  ? "the action list holds no steps"
                                  : "not an action list: it holds no steps");
    }
    if (numbers.size() > mostSteps) {
        return unusable(path, "the action list has " + std::to_string(numbers.size()) +
                                  " steps, more than the " + std::to_string(mostSteps) +
                                  " that a list may have");
    }
    std::vector<StepRequest> steps;
    for (const int number : numbers) {
        const QString action = nameAt(settings, "ActionName" + QString::number(number));
        const auto options = optionsAt(settings, "ActionPrefs" + QString::number(number));
        if (action.isEmpty()) {
            return unusable(path, "its step " + std::to_string(number) + " names no action");
        }
        if (!options) {
            return unusable(path, "the options of its step " + std::to_string(number) +
                                      " are missing or damaged");
        }
        steps.push_back(stepOf(action, *options, path));
    }
    return steps;
}

Result<SavedEntry> actionListIn(const QString& path)
{
    const auto settings = readFile(path);
    if (!settings) {
        return tl::unexpected<Error>(settings.error());
    }
    const std::set<int> numbers = stepNumbers(*settings);
    auto steps = stepsIn(*settings, numbers, path);
    if (!steps) {
        return tl::unexpected<Error>(std::move(steps.error()));
    }
    // A file that was copied or renamed goes by its own name; one that no list's name leads to, by
    // its path.
    QString name = nameAt(*settings, "SequenceName");
    for (const QString& next : {QFileInfo(path).completeBaseName(), QDir::cleanPath(path)}) {
        if (name.isEmpty() || pathBytes(ActionListPath(name)) != pathBytes(path)) {
            name = next;
        }
    }
    return SavedEntry{QFile::encodeName(name).toStdString(),
                      nameAt(*settings, "SequenceCategory").toStdString(),
                      pathBytes(path),
                      std::move(*steps),
                      {numbers.begin(), numbers.end()}};
}

// The one step that a file holds under a key.
Result<StepRequest> stepIn(const QString& path, const char* key, const std::string& kind)
{
    const auto settings = readFile(path);
    if (!settings) {
        return tl::unexpected<Error>(settings.error());
    }
    if (!settings->Contains(key)) {
        return unusable(path, "not " + kind + ": it holds no options");
    }
    const auto options = optionsAt(*settings, key);
    if (!options) {
        return unusable(path, "its options are damaged");
    }
    const QString action = options->value("ActionName").toString();
    if (action.isEmpty() || action.size() > longestName) {
        return unusable(path, "its options don't say which action they are for");
    }
    return stepOf(action, *options, path);
}

Result<SavedEntry> favouriteIn(const QString& path)
{
    auto step = stepIn(path, "ActionPrefs", "a favourite");
    if (!step) {
        return tl::unexpected<Error>(std::move(step.error()));
    }
    const QString name = QFileInfo(path).completeBaseName();
    return SavedEntry{QFile::encodeName(name).toStdString(), {}, pathBytes(path), {*step}, {}};
}

Result<SavedEntry> toolSettingsIn(const QString& path)
{
    return stepIn(path, "ToolSettings", "a tool-settings file").map([&path](StepRequest step) {
        return SavedEntry{pathBytes(path), {}, pathBytes(path), {std::move(step)}, {}};
    });
}

// The path of something in a user's folder, or why there is none.
Result<QString> pathOf(const QString& path, const QString& reasonAgainstName, const Error& missing,
                       const std::string& otherwise)
{
    if (!reasonAgainstName.isEmpty()) {
        return fail(missing.reason, missing.file, asClause(reasonAgainstName) + otherwise);
    }
    if (!QFileInfo::exists(path)) {
        return tl::unexpected<Error>(missing);
    }
    return path;
}

Result<QString> actionListPath(const std::string& name)
{
    const QString text = QFile::decodeName(name.c_str());
    if (text.endsWith(listSuffix)) {
        return text;
    }
    return pathOf(ActionListPath(text), ReasonAgainstActionListName(text),
                  {Reason::ActionListMissing, name, "no action list of this name is saved"},
                  ", and files of lists end in .xqq");
}

Result<QString> favouritePath(const std::string& name)
{
    const QString text = QFile::decodeName(name.c_str());
    return pathOf(FavouritePath(text), ReasonAgainstFavouriteName(text),
                  {Reason::FavouriteMissing, name, "no favourite of this name is saved"}, "");
}

std::vector<Result<SavedEntry>> entriesOf(const QString& folder, const QString& pattern,
                                          const std::function<Result<SavedEntry>(QString)>& read)
{
    std::vector<Result<SavedEntry>> entries;
    for (const QFileInfo& file : QDir(folder).entryInfoList(
             {pattern}, QDir::Files | QDir::Dirs | QDir::CaseSensitive, QDir::Name)) {
        entries.push_back(read(file.filePath()));
    }
    return entries;
}

} // namespace

Result<std::string> savedFile(const SavedIn& saved)
{
    switch (saved.kind) {
    case SavedKind::ActionList:
        return actionListPath(saved.name).map(pathBytes);
    case SavedKind::Favourite:
        return favouritePath(saved.name).map(pathBytes);
    case SavedKind::ToolSettings:
        break;
    }
    return saved.name;
}

Result<SavedEntry> savedEntry(const SavedIn& saved)
{
    switch (saved.kind) {
    case SavedKind::ActionList:
        return actionListPath(saved.name).and_then(actionListIn);
    case SavedKind::Favourite:
        return favouritePath(saved.name).and_then(favouriteIn);
    case SavedKind::ToolSettings:
        break;
    }
    return toolSettingsIn(QFile::decodeName(saved.name.c_str()));
}

Result<std::vector<StepRequest>> savedSteps(const SavedIn& saved)
{
    return savedEntry(saved).map([](SavedEntry entry) { return std::move(entry.steps); });
}

std::vector<Result<SavedEntry>> savedActionLists()
{
    return entriesOf(CActionUtils::GetSequenceFolder(), "*.xqq", actionListIn);
}

std::vector<Result<SavedEntry>> savedFavourites()
{
    return entriesOf(CActionUtils::GetCollectionsFolder(), "*.ini", favouriteIn);
}

} // namespace vantora
