#include "VantoraHost/core/documents/InfoJson.h"

#include "VantoraHost/core/reports/DocumentReport.h"
#include "VantoraHost/core/reports/FailureJson.h"
#include "VantoraHost/core/reports/Json.h"
#include "VantoraHost/core/reports/JsonReading.h"

#include <QtCore/QJsonArray>

#include <algorithm>

namespace vantora {

namespace {

JsonObject sizeJson(const PageSize& size)
{
    JsonObject json;
    json.add("width", size.width).add("height", size.height);
    size.paper.empty() ? json.addNull("paper") : json.add("paper", size.paper);
    json.add("first_page", size.firstPage).add("pages", size.pages);
    return json;
}

PageSize sizeOf(const QJsonObject& json)
{
    return {json["width"].toDouble(), json["height"].toDouble(), json["first_page"].toInt(),
            json["pages"].toInt(), bytesOf(json["paper"].toString())};
}

JsonObject signatureJson(const SignatureInfo& signature)
{
    const auto textOrNone = [](const std::string& text) {
        return text.empty() ? std::nullopt : std::optional<std::string_view>(text);
    };
    JsonObject json;
    json.add("field", signature.field)
        .add("signed", signature.isSigned)
        .add("signer", textOrNone(signature.signer))
        .add("time", textOrNone(signature.time))
        .add("covers_whole_file", signature.coversAll);
    return json;
}

void addLists(JsonObject& json, const DocumentLists& lists)
{
    std::vector<JsonObject> outline;
    for (const OutlineLine& line : lists.outline) {
        JsonObject entry;
        entry.add("level", line.level).add("title", line.title);
        outline.push_back(std::move(entry));
    }
    json.add("attachment_names", lists.attachments)
        .add("layer_names", lists.layers)
        .add("outline", outline);
}

std::optional<std::string> textOf(const QJsonValue& value)
{
    return value.isString() ? std::optional<std::string>(bytesOf(value.toString())) : std::nullopt;
}

std::optional<int> numberOf(const QJsonValue& value)
{
    return value.isDouble() ? std::optional<int>(value.toInt()) : std::nullopt;
}

std::optional<bool> truthOf(const QJsonValue& value)
{
    return value.isBool() ? std::optional<bool>(value.toBool()) : std::nullopt;
}

SignatureInfo signatureOf(const QJsonObject& json)
{
    return {bytesOf(json["field"].toString()), json["signed"].toBool(),
            bytesOf(json["signer"].toString()), bytesOf(json["time"].toString()),
            truthOf(json["covers_whole_file"])};
}

DocumentLists listsOf(const QJsonObject& json)
{
    DocumentLists lists;
    lists.attachments = bytesOf(json["attachment_names"].toArray());
    lists.layers = bytesOf(json["layer_names"].toArray());
    for (const QJsonValue& entry : json["outline"].toArray()) {
        lists.outline.push_back(
            {entry.toObject()["level"].toInt(), bytesOf(entry.toObject()["title"].toString())});
    }
    return lists;
}

} // namespace

std::string toJson(const DocumentInfo& info)
{
    std::vector<JsonObject> sizes;
    for (const PageSize& size : info.pageSizes) {
        sizes.push_back(sizeJson(size));
    }
    std::vector<JsonObject> signatures;
    for (const SignatureInfo& signature : info.signatureFields) {
        signatures.push_back(signatureJson(signature));
    }
    JsonObject json;
    json.add("schema", reportSchema)
        .add("input", info.input)
        .add("status", "done")
        .add("bytes", info.bytes)
        .add("pages", info.pages)
        .add("page_sizes", sizes)
        .add("version", info.version)
        .add("encryption", info.encryption)
        .add("permitted", info.permitted)
        .add("title", info.title)
        .add("outline_entries", info.outlineEntries)
        .add("form_fields", info.fields)
        .add("tagged", info.tagged)
        .add("signatures", info.signatures)
        .add("attachments", info.attachments)
        .add("layers", info.layers)
        .add("linearised", info.linearised)
        .add("signature_fields", signatures)
        .add("warnings", withRepairs({}, info.repairs))
        .add("errors", std::vector<std::string>());
    if (info.lists) {
        addLists(json, *info.lists);
    }
    return json.text();
}

Result<DocumentInfo> documentInfoOf(std::string_view text)
{
    const Result<QJsonObject> found = doneObjectOf(text);
    if (!found) {
        return tl::unexpected<Error>(found.error());
    }
    const QJsonObject& json = *found;
    DocumentInfo info;
    info.input = bytesOf(json["input"].toString());
    info.bytes = wholeNumber(json["bytes"]).value_or(0);
    info.pages = json["pages"].toInt();
    for (const QJsonValue& size : json["page_sizes"].toArray()) {
        info.pageSizes.push_back(sizeOf(size.toObject()));
    }
    info.version = bytesOf(json["version"].toString());
    info.encryption = textOf(json["encryption"]);
    info.permitted = bytesOf(json["permitted"].toArray());
    info.title = textOf(json["title"]);
    info.outlineEntries = numberOf(json["outline_entries"]);
    info.fields = numberOf(json["form_fields"]);
    info.tagged = truthOf(json["tagged"]);
    info.signatures = numberOf(json["signatures"]);
    info.attachments = numberOf(json["attachments"]);
    info.layers = numberOf(json["layers"]);
    for (const QJsonValue& signature : json["signature_fields"].toArray()) {
        info.signatureFields.push_back(signatureOf(signature.toObject()));
    }
    if (json.contains("outline")) {
        info.lists = listsOf(json);
    }
    info.linearised = truthOf(json["linearised"]);
    const std::string mark = withRepairs({}, {""}).front();
    for (const std::string& warning : bytesOf(json["warnings"].toArray())) {
        info.repairs.push_back(warning.substr(std::min(mark.size(), warning.size())));
    }
    return info;
}

} // namespace vantora
