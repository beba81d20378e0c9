#include "VantoraHost/core/workers/WorkerMessages.h"

#include "VantoraHost/core/reports/FailureJson.h"
#include "VantoraHost/core/reports/Json.h"
#include "VantoraHost/core/reports/JsonReading.h"

#include <QtCore/QDataStream>
#include <QtCore/QJsonArray>

namespace vantora {

namespace {

// As the settings class stores a value, which is what the reader of saved options takes.
QByteArray storedBytes(const PreferencesMap& options)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_4_0);
    stream << QVariant(options);
    return bytes;
}

JsonObject stepJson(const StepRequest& step)
{
    std::vector<std::string> options;
    for (const auto& [key, value] : step.options) {
        options.push_back(key);
        options.push_back(value);
    }
    JsonObject json;
    json.add("action", step.action).add("options", options).add("file", step.file);
    if (!step.stored.isEmpty()) {
        json.add("stored", storedBytes(step.stored).toBase64().toStdString());
    }
    return json;
}

std::optional<StepRequest> stepOf(const QJsonObject& json, const StoredReader& stored)
{
    StepRequest step;
    step.action = bytesOf(json["action"].toString());
    step.file = bytesOf(json["file"].toString());
    const std::vector<std::string> options = bytesOf(json["options"].toArray());
    for (std::size_t i = 0; i + 1 < options.size(); i += 2) {
        step.options.emplace_back(options[i], options[i + 1]);
    }
    if (json.contains("stored")) {
        auto read = stored(QByteArray::fromBase64(json["stored"].toString().toLatin1()));
        if (!read) {
            return std::nullopt;
        }
        step.stored = std::move(*read);
    }
    return step;
}

JsonObject errorWithFileJson(const Error& error)
{
    return errorJson(error).add("file", error.file);
}

Error errorWithFileOf(const QJsonObject& json)
{
    return errorOf(json, bytesOf(json["file"].toString()));
}

// As texts, because JSON's numbers are read as doubles, which hold no large inode exactly.
std::vector<std::string> identityTexts(const FileIdentity& identity)
{
    return {std::to_string(identity.device), std::to_string(identity.inode)};
}

std::optional<FileIdentity> identityOf(const QJsonArray& texts)
{
    bool hasDevice = false;
    bool hasInode = false;
    const FileIdentity identity = {texts.at(0).toString().toULong(&hasDevice),
                                   texts.at(1).toString().toULong(&hasInode)};
    return hasDevice && hasInode ? std::optional<FileIdentity>(identity) : std::nullopt;
}

std::vector<std::string> versionTexts(const FileVersion& version)
{
    return {std::to_string(version.device), std::to_string(version.inode),
            std::to_string(version.size), std::to_string(version.modified)};
}

std::optional<FileVersion> versionOf(const QJsonArray& texts)
{
    const auto identity = identityOf(texts);
    bool hasSize = false;
    bool hasTime = false;
    const qlonglong size = texts.at(2).toString().toLongLong(&hasSize);
    const qlonglong modified = texts.at(3).toString().toLongLong(&hasTime);
    return identity && hasSize && hasTime
               ? std::optional<FileVersion>({identity->device, identity->inode, size, modified})
               : std::nullopt;
}

JsonObject taskJson(const WorkerTask& task)
{
    JsonObject json;
    json.add("number", task.number).add("input", task.input).add("name", task.target.name);
    if (task.range) {
        json.add("range", *task.range);
    }
    if (task.target.path != task.target.name) {
        json.add("path", task.target.path);
    }
    if (!task.target.backup.empty()) {
        json.add("backup", task.target.backup);
    }
    if (task.target.below != std::string::npos) {
        json.add("below", task.target.below);
    }
    if (task.target.root) {
        json.add("root", identityTexts(*task.target.root));
    }
    if (task.target.replaced) {
        json.add("replaced", versionTexts(*task.target.replaced));
    }
    if (task.target.input) {
        json.add("input_version", versionTexts(*task.target.input));
    }
    if (task.target.inPlace) {
        json.add("in_place", true);
    }
    if (task.target.standardOutput) {
        json.add("standard_output", true);
    }
    if (task.target.number) {
        json.add("number_copies", true);
    }
    return json;
}

std::optional<WorkerTask> taskOf(const QJsonObject& json)
{
    const auto number = wholeNumber(json["number"]);
    if (!number) {
        return std::nullopt;
    }
    WorkerTask task;
    task.number = *number;
    task.input = bytesOf(json["input"].toString());
    if (json["range"].isString()) {
        task.range = bytesOf(json["range"].toString());
    }
    task.target.name = bytesOf(json["name"].toString());
    task.target.path = json.contains("path") ? bytesOf(json["path"].toString()) : task.target.name;
    task.target.backup = bytesOf(json["backup"].toString());
    task.target.standardOutput = json["standard_output"].toBool();
    if (const auto below = wholeNumber(json["below"])) {
        task.target.below = *below;
    }
    task.target.root = identityOf(json["root"].toArray());
    task.target.replaced = versionOf(json["replaced"].toArray());
    task.target.input = versionOf(json["input_version"].toArray());
    task.target.inPlace = json["in_place"].toBool();
    task.target.number = json["number_copies"].toBool();
    return task;
}

JsonObject documentJson(std::size_t number, const DocumentReport& report)
{
    JsonObject json;
    json.add("number", number).addJson("report", toBriefJson(report));
    return json;
}

struct AnswerWriter {
    JsonObject operator()(const WorkerReady&) const
    {
        JsonObject json;
        json.add("ready", workerProtocol);
        return json;
    }
    JsonObject operator()(const WorkerWritten& written) const
    {
        return documentJson(written.number, written.report)
            .add("written", identityTexts(written.output));
    }
    JsonObject operator()(const WorkerNaming&) const
    {
        JsonObject json;
        json.add("naming", true);
        return json;
    }
    JsonObject operator()(const WorkerPlaced& placed) const
    {
        JsonObject json;
        json.add("placed", placed.numbers);
        return json;
    }
    JsonObject operator()(const WorkerReport& done) const
    {
        return documentJson(done.number, done.report);
    }
    JsonObject operator()(const WorkerEnd& end) const
    {
        JsonObject json;
        json.add("end",
                 end.complaint ? std::optional(errorWithFileJson(*end.complaint)) : std::nullopt)
            .add("asked", end.asked);
        return json;
    }
    JsonObject operator()(const WorkerRefusal& refusal) const
    {
        JsonObject json;
        json.add("refusal", errorWithFileJson(refusal.error));
        return json;
    }
};

std::optional<WorkerAnswer> reportAnswerOf(const QJsonObject& json)
{
    auto report = reportOf(json["report"].toObject());
    const auto number = wholeNumber(json["number"]);
    if (!report || !number) {
        return std::nullopt;
    }
    if (!json.contains("written")) {
        return WorkerReport{*number, std::move(*report)};
    }
    const auto identity = identityOf(json["written"].toArray());
    return identity
               ? std::optional<WorkerAnswer>(WorkerWritten{*number, std::move(*report), *identity})
               : std::nullopt;
}

// Calls `visit` with each of the settings that a worker is told, and with its name. All of them
// stand here, so that a new one doesn't compile until somebody has decided whether workers are told
// of it. They are not told of the standard streams, and have their own ways to be cancelled.
template <class Settings, class Visitor>
void visitSettings(Settings& settings, const Visitor& visit)
{
    auto& [passwords, dryRun, keepSigned, strict, salvage, ifEmpty, hashInputs, hashOutputs,
           verifier, reportFirst, judged, standardInput, standardInputMode, standardOutput,
           cancelled, savingBegins, verifyingBegins] = settings;
    visit("passwords", passwords);
    visit("dry_run", dryRun);
    visit("keep_signed", keepSigned);
    visit("strict", strict);
    visit("salvage", salvage);
    visit("if_empty", ifEmpty);
    visit("hash_inputs", hashInputs);
    visit("hash_outputs", hashOutputs);
    visit("verifier", verifier);
    visit("report_first", reportFirst);
    visit("judged", judged);
}

struct SettingWriter {
    JsonObject& json;

    void operator()(const char* name, const std::vector<std::string>& texts) const
    {
        json.add(name, texts);
    }
    void operator()(const char* name, const std::string& text) const { json.add(name, text); }
    void operator()(const char* name, bool value) const { json.add(name, value); }
    void operator()(const char* name, IfEmpty way) const { json.add(name, static_cast<int>(way)); }
    void operator()(const char* name, const std::vector<JudgedDocument>& documents) const
    {
        std::vector<JsonObject> objects;
        for (const JudgedDocument& document : documents) {
            JsonObject object;
            object.add("version", document.version)
                .add("pages", document.pages)
                .add("range", document.range)
                .add("unreadable",
                     std::vector<int>(document.unreadable.begin(), document.unreadable.end()));
            objects.push_back(std::move(object));
        }
        json.add(name, objects);
    }
};

struct SettingReader {
    const QJsonObject& json;

    void operator()(const char* name, std::vector<std::string>& texts) const
    {
        texts = bytesOf(json[QLatin1String(name)].toArray());
    }
    void operator()(const char* name, std::string& text) const
    {
        text = bytesOf(json[QLatin1String(name)].toString());
    }
    void operator()(const char* name, bool& value) const
    {
        value = json[QLatin1String(name)].toBool();
    }
    void operator()(const char* name, IfEmpty& way) const
    {
        const int number = json[QLatin1String(name)].toInt();
        way = number == static_cast<int>(IfEmpty::Blank)  ? IfEmpty::Blank
              : number == static_cast<int>(IfEmpty::Skip) ? IfEmpty::Skip
                                                          : IfEmpty::Fail;
    }
    void operator()(const char* name, std::vector<JudgedDocument>& documents) const
    {
        for (const QJsonValue& value : json[QLatin1String(name)].toArray()) {
            const QJsonObject object = value.toObject();
            JudgedDocument document = {bytesOf(object["version"].toString()),
                                       object["pages"].toInt(),
                                       bytesOf(object["range"].toString()),
                                       {}};
            for (const QJsonValue& page : object["unreadable"].toArray()) {
                document.unreadable.insert(page.toInt());
            }
            documents.push_back(std::move(document));
        }
    }
};

std::optional<WorkerAnswer> placedAnswerOf(const QJsonArray& numbers)
{
    WorkerPlaced placed;
    for (const QJsonValue& value : numbers) {
        const auto number = wholeNumber(value);
        if (!number) {
            return std::nullopt;
        }
        placed.numbers.push_back(*number);
    }
    return placed;
}

} // namespace

std::string setupMessage(const WorkerSetup& setup)
{
    std::vector<JsonObject> steps;
    for (const StepRequest& step : setup.steps) {
        steps.push_back(stepJson(step));
    }
    const std::vector<std::string> folders(setup.actionFolders.begin(), setup.actionFolders.end());
    JsonObject json;
    json.add("version", workerProtocol)
        .add("library", setup.library.native())
        .add("action_folders", folders)
        .add("steps", steps);
    visitSettings(setup.job, SettingWriter{json});
    json.add("memory_limit", setup.memoryLimit)
        .add("whole_run", setup.wholeRun)
        .add("readable", setup.files.readable)
        .add("writable", setup.files.writable);
    return json.text();
}

Result<WorkerSetup> setupOf(std::string_view line, const StoredReader& stored)
{
    const auto json = jsonObjectOf(line);
    if (!json || (*json)["version"].toInt() != workerProtocol) {
        return fail(Reason::WorkerFailed, {}, "this is no order for a worker of this version");
    }
    WorkerSetup setup;
    setup.library = bytesOf((*json)["library"].toString());
    for (const std::string& folder : bytesOf((*json)["action_folders"].toArray())) {
        setup.actionFolders.emplace_back(folder);
    }
    for (const QJsonValue& value : (*json)["steps"].toArray()) {
        auto step = stepOf(value.toObject(), stored);
        if (!step) {
            return fail(Reason::WorkerFailed, {}, "the options of a step can't be read");
        }
        setup.steps.push_back(std::move(*step));
    }
    visitSettings(setup.job, SettingReader{*json});
    setup.memoryLimit = wholeNumber((*json)["memory_limit"]).value_or(0);
    setup.wholeRun = (*json)["whole_run"].toBool();
    setup.files = {bytesOf((*json)["readable"].toArray()), bytesOf((*json)["writable"].toArray())};
    return setup;
}

std::string tasksMessage(const std::vector<WorkerTask>& tasks)
{
    std::vector<JsonObject> documents;
    for (const WorkerTask& task : tasks) {
        documents.push_back(taskJson(task));
    }
    JsonObject json;
    json.add("documents", documents);
    return json.text();
}

std::optional<std::vector<WorkerTask>> tasksOf(std::string_view line)
{
    const auto json = jsonObjectOf(line);
    if (!json || !(*json)["documents"].isArray()) {
        return std::nullopt;
    }
    std::vector<WorkerTask> tasks;
    for (const QJsonValue& value : (*json)["documents"].toArray()) {
        auto task = taskOf(value.toObject());
        if (!task) {
            return std::nullopt;
        }
        tasks.push_back(std::move(*task));
    }
    return tasks;
}

std::string namingMessage()
{
    JsonObject json;
    json.add("name", true);
    return json.text();
}

std::string answerMessage(const WorkerAnswer& answer)
{
    return std::visit(AnswerWriter(), answer).text();
}

std::optional<WorkerAnswer> answerOf(std::string_view line)
{
    const auto json = jsonObjectOf(line);
    if (!json) {
        return std::nullopt;
    }
    if (json->contains("report")) {
        return reportAnswerOf(*json);
    }
    if (json->contains("naming")) {
        return WorkerNaming{};
    }
    if ((*json)["placed"].isArray()) {
        return placedAnswerOf((*json)["placed"].toArray());
    }
    if (json->contains("end")) {
        const QJsonValue end = (*json)["end"];
        return WorkerEnd{end.isObject() ? std::optional(errorWithFileOf(end.toObject()))
                                        : std::nullopt,
                         (*json)["asked"].toBool()};
    }
    if (json->contains("refusal")) {
        return WorkerRefusal{errorWithFileOf((*json)["refusal"].toObject())};
    }
    return (*json)["ready"].toInt() == workerProtocol ? std::optional<WorkerAnswer>(WorkerReady{})
                                                      : std::nullopt;
}

} // namespace vantora
