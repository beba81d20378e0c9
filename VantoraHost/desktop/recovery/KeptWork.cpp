#include "VantoraHost/desktop/recovery/KeptWork.h"

#include "VantoraApp/settings/StoredVariant.h"
#include "VantoraHost/core/reports/Json.h"
#include "VantoraHost/core/reports/JsonReading.h"

#include <QtCore/QJsonArray>

namespace vantora::desktop {

namespace {

constexpr std::uint64_t format = 1;
constexpr int mostSteps = 1000;

// As options are saved, which keeps their types.
std::string storedText(const PreferencesMap& options)
{
    return EncodeStoredVariant(options).toBase64().toStdString();
}

std::optional<PreferencesMap> storedOptions(const QString& text)
{
    QStringList refused;
    const auto value = DecodeStoredVariant(QByteArray::fromBase64(text.toLatin1()), &refused);
    return value && value->type() == QVariant::Map && refused.isEmpty()
               ? std::optional(value->toMap())
               : std::nullopt;
}

JsonObject jsonOf(const KeptDocument& document)
{
    JsonObject json;
    json.add("path", document.input.path)
        .add("place_at", static_cast<std::uint64_t>(document.input.placeAt));
    if (document.range) {
        json.add("range", document.range->toStdString());
    }
    if (document.done) {
        json.add(
            "done",
            JsonObject().add("size", document.done->size).add("changed", document.done->changed));
    }
    return json;
}

JsonObject jsonOf(const KeptStep& step)
{
    return JsonObject()
        .add("action", step.action)
        .add("options", storedText(step.preferences))
        .add("on", step.isOn);
}

JsonObject jsonOf(const RunSettings& settings)
{
    return JsonObject()
        .add("place", static_cast<int>(settings.place))
        .add("folder", settings.folder.toStdString())
        .add("folder_name", settings.folderName.toStdString())
        .add("beside_name", settings.besideName.toStdString())
        .add("keeps_backup", settings.keepsBackup)
        .add("taken", static_cast<int>(settings.taken))
        .add("keeps_signed", settings.keepsSigned)
        .add("verifies", settings.verifies);
}

std::optional<KeptDocument> documentOf(const QJsonObject& json)
{
    KeptDocument document;
    document.input.path = bytesOf(json["path"].toString());
    const std::string& path = document.input.path;
    const auto placeAt = wholeNumber(json["place_at"]);
    const bool isPath = !path.empty() && path.front() == '/' && path.back() != '/' &&
                        path.find('\0') == std::string::npos;
    if (!isPath || !placeAt || *placeAt >= path.size() || *placeAt == 0 ||
        path[*placeAt - 1] != '/') {
        return std::nullopt;
    }
    document.input.placeAt = static_cast<std::size_t>(*placeAt);
    if (json.contains("range")) {
        document.range = json["range"].toString();
    }
    if (json.contains("done")) {
        const QJsonObject done = json["done"].toObject();
        document.done =
            FileState{wholeNumber(done["size"]).value_or(0), bytesOf(done["changed"].toString())};
    }
    return document;
}

std::optional<KeptStep> keptStepOf(const QJsonObject& json)
{
    auto options = storedOptions(json["options"].toString());
    if (!options || !json["on"].isBool()) {
        return std::nullopt;
    }
    return KeptStep{bytesOf(json["action"].toString()), std::move(*options), json["on"].toBool()};
}

std::optional<RunSettings> settingsOf(const QJsonObject& json)
{
    const auto place = wholeNumber(json["place"]);
    const auto taken = wholeNumber(json["taken"]);
    if (!place || *place > static_cast<std::uint64_t>(OutputPlace::InPlace) || !taken ||
        *taken > static_cast<std::uint64_t>(TakenName::Number)) {
        return std::nullopt;
    }
    RunSettings settings;
    settings.place = static_cast<OutputPlace>(*place);
    settings.folder = json["folder"].toString();
    settings.folderName = json["folder_name"].toString();
    settings.besideName = json["beside_name"].toString();
    settings.keepsBackup = json["keeps_backup"].toBool(true);
    settings.taken = static_cast<TakenName>(*taken);
    settings.keepsSigned = json["keeps_signed"].toBool();
    settings.verifies = json["verifies"].toBool();
    return settings;
}

template <class Kept, class Of>
bool takeAll(const QJsonValue& list, Of of, std::vector<Kept>& all)
{
    for (const QJsonValue& value : list.toArray()) {
        auto one = of(value.toObject());
        if (!one) {
            return false;
        }
        all.push_back(std::move(*one));
    }
    return list.isArray();
}

} // namespace

std::string toJson(const KeptWork& work)
{
    std::vector<JsonObject> documents;
    documents.reserve(work.documents.size());
    for (const KeptDocument& document : work.documents) {
        documents.push_back(jsonOf(document));
    }
    std::vector<JsonObject> steps;
    for (const KeptStep& step : work.steps) {
        steps.push_back(jsonOf(step));
    }
    return JsonObject()
        .add("format", format)
        .add("range", work.range.toStdString())
        .add("settings", jsonOf(work.settings))
        .add("report", work.report)
        .add("running", work.isRunning)
        .add("steps", steps)
        .add("documents", documents)
        .text();
}

Result<KeptWork> keptWorkOf(const std::string& text, const std::string& file)
{
    const auto refused = [&] {
        return fail(Reason::InputUnreadable, file, "is not what a window of this version keeps");
    };
    const auto json = text.size() <= mostKept ? jsonObjectOf(text) : std::nullopt;
    if (!json || wholeNumber(json->value("format")) != format) {
        return refused();
    }
    KeptWork work;
    const auto settings = settingsOf(json->value("settings").toObject());
    if (!settings || !takeAll(json->value("documents"), documentOf, work.documents) ||
        !takeAll(json->value("steps"), keptStepOf, work.steps) || work.steps.size() > mostSteps) {
        return refused();
    }
    work.settings = *settings;
    work.range = json->value("range").toString();
    work.report = bytesOf(json->value("report").toString());
    work.isRunning = json->value("running").toBool();
    return work;
}

} // namespace vantora::desktop
