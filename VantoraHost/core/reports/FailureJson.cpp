#include "VantoraHost/core/reports/FailureJson.h"

#include "VantoraHost/core/reports/JsonReading.h"

#include <QtCore/QJsonArray>

namespace vantora {

JsonObject errorJson(const Error& error)
{
    JsonObject json;
    json.add("reason", reasonName(error.reason)).add("text", error.sentence);
    return json;
}

Error errorOf(const QJsonObject& json, std::string file)
{
    return {reasonNamed(bytesOf(json["reason"].toString())).value_or(Reason::LibraryFailed),
            std::move(file), bytesOf(json["text"].toString())};
}

Result<QJsonObject> doneObjectOf(std::string_view line)
{
    auto json = jsonObjectOf(line);
    if (!json) {
        return tl::unexpected<Error>(noSense());
    }
    if ((*json)["status"].toString() != "done") {
        return tl::unexpected<Error>(errorOf((*json)["errors"].toArray().at(0).toObject(),
                                             bytesOf((*json)["input"].toString())));
    }
    return std::move(*json);
}

std::string failureJson(const Error& error, std::optional<std::string_view> input)
{
    JsonObject json;
    json.add("schema", reportSchema)
        .add("input", input)
        .add("status", "failed")
        .add("errors", std::vector<JsonObject>{errorJson(error)});
    return json.text();
}

} // namespace vantora
