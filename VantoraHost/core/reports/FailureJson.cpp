#include "VantoraHost/core/reports/FailureJson.h"

#include "VantoraHost/core/reports/JsonReading.h"

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
