#include "VantoraHost/core/reports/DocumentReport.h"

#include "VantoraHost/core/IsoTime.h"
#include "VantoraHost/core/reports/FailureJson.h"
#include "VantoraHost/core/reports/Json.h"
#include "VantoraHost/core/reports/JsonReading.h"

#include <QtCore/QJsonArray>

#include <cmath>

namespace vantora {

namespace {

const char* statusName(DocumentStatus status)
{
    switch (status) {
    case DocumentStatus::Done:
        return "done";
    case DocumentStatus::Planned:
        return "planned";
    case DocumentStatus::Skipped:
        return "skipped";
    case DocumentStatus::Failed:
        break;
    }
    return "failed";
}

constexpr char repaired[] = "repaired: ";

std::optional<std::string> textOrNone(const std::string& text)
{
    return text.empty() ? std::nullopt : std::optional<std::string>(text);
}

std::optional<DocumentStatus> statusNamed(const std::string& name)
{
    for (const DocumentStatus status : {DocumentStatus::Done, DocumentStatus::Planned,
                                        DocumentStatus::Skipped, DocumentStatus::Failed}) {
        if (name == statusName(status)) {
            return status;
        }
    }
    return std::nullopt;
}

std::optional<int> pageCount(const QJsonValue& value)
{
    const int count = value.toInt(-1);
    return count >= 0 ? std::optional<int>(count) : std::nullopt;
}

} // namespace

std::vector<std::string> withRepairs(std::vector<std::string> warnings,
                                     const std::vector<std::string>& repairs)
{
    for (const std::string& repair : repairs) {
        warnings.push_back(repaired + repair);
    }
    return warnings;
}

void takeWarnings(const QJsonArray& all, std::vector<std::string>& warnings,
                  std::vector<std::string>& repairs)
{
    for (const QJsonValue& value : all) {
        std::string text = bytesOf(value.toString());
        if (text.compare(0, sizeof repaired - 1, repaired) == 0) {
            repairs.push_back(text.substr(sizeof repaired - 1));
        } else {
            warnings.push_back(std::move(text));
        }
    }
}

namespace {

std::vector<JsonObject> lossesJson(const std::vector<PageLoss>& losses)
{
    std::vector<JsonObject> array;
    for (const PageLoss& loss : losses) {
        array.emplace_back();
        array.back().add("page", loss.page).add("text", loss.what);
    }
    return array;
}

// The kinds of things that are counted, by their names in a report.
template <class These, class Visitor>
void visitAmounts(These& amounts, const Visitor& visit)
{
    visit("outline_entries", amounts.outlineEntries);
    visit("links", amounts.links);
    visit("fields", amounts.fields);
    visit("signatures", amounts.signatures);
    visit("attachments", amounts.attachments);
}

void addVerified(JsonObject& json, const VerifiedOutput& verified)
{
    JsonObject amounts;
    visitAmounts(verified.amounts, [&](const char* name, const verification::Amount& amount) {
        JsonObject both;
        both.add("before", amount.before).add("after", amount.after);
        amounts.add(name, both);
    });
    json.add("verified", true)
        .add("looked_for", verified.lookedFor)
        .add("not_told", verified.notTold)
        .add("amounts", amounts);
    std::vector<JsonObject> labels;
    for (const verification::LabelledPages& pages : verified.labels) {
        labels.emplace_back();
        labels.back()
            .add("first", pages.first)
            .add("last", pages.last)
            .add("first_label", pages.firstLabel)
            .add("last_label", pages.lastLabel);
    }
    if (!labels.empty()) {
        json.add("labels_removed", labels);
    }
}

VerifiedOutput verifiedOf(const QJsonObject& json)
{
    VerifiedOutput verified;
    verified.lookedFor = wholeNumber(json["looked_for"]).value_or(0);
    verified.notTold = bytesOf(json["not_told"].toArray());
    const QJsonObject amounts = json["amounts"].toObject();
    visitAmounts(verified.amounts, [&](const char* name, verification::Amount& amount) {
        const QJsonObject both = amounts[QLatin1String(name)].toObject();
        amount = {wholeNumber(both["before"]).value_or(0), wholeNumber(both["after"]).value_or(0)};
    });
    for (const QJsonValue& value : json["labels_removed"].toArray()) {
        const QJsonObject pages = value.toObject();
        verified.labels.push_back({pages["first"].toInt(), pages["last"].toInt(),
                                   bytesOf(pages["first_label"].toString()),
                                   bytesOf(pages["last_label"].toString())});
    }
    return verified;
}

JsonObject objectOf(const DocumentReport& report)
{
    const auto readable = [](const std::string& nanoseconds) {
        return textOrNone(isoTime(nanoseconds));
    };
    JsonObject json;
    json.add("schema", reportSchema)
        .add("input", report.input)
        .add("output", textOrNone(report.output))
        .add("output_existed", report.outputExisted)
        .add("pages_before", report.pagesBefore)
        .add("pages_after", report.pagesAfter)
        .add("pages_removed", report.pagesRemoved)
        .add("bytes_before", report.bytesBefore)
        .add("bytes_after", report.bytesAfter)
        .add("input_modified", textOrNone(report.inputModified))
        .add("input_modified_at", readable(report.inputModified))
        .add("input_sha256", textOrNone(report.inputSha256))
        .add("output_modified", textOrNone(report.outputModified))
        .add("output_modified_at", readable(report.outputModified))
        .add("in_part", report.inPart)
        .add("left_blank", report.leftBlank)
        .add("status", statusName(report.status))
        .add("warnings", withRepairs(report.warnings, report.repairs));
    std::vector<JsonObject> errors;
    if (report.error) {
        errors.push_back(errorJson(*report.error));
    }
    if (report.range) {
        json.add("range", *report.range);
    }
    if (!report.outputSha256.empty()) {
        json.add("output_sha256", report.outputSha256);
    }
    if (report.verified) {
        addVerified(json, *report.verified);
    }
    if (!report.losses.empty()) {
        json.add("losses", lossesJson(report.losses));
    }
    json.add("errors", errors)
        .add("left", report.leftToJudge)
        .add("seconds", std::round(report.seconds * 1e6) / 1e6);
    return json;
}

} // namespace

std::string toJson(const DocumentReport& report)
{
    return objectOf(report).text();
}

std::string toJson(const DocumentReport& report, const RunIdentity& run)
{
    return objectOf(report).addJson("run", toJson(run)).text();
}

std::optional<DocumentReport> reportOf(const QJsonObject& json)
{
    const auto member = [&json](const char* name) { return json.value(QLatin1String(name)); };
    const auto status = statusNamed(bytesOf(member("status").toString()));
    if (member("schema").toInt() != reportSchema || !status || !member("input").isString()) {
        return std::nullopt;
    }
    DocumentReport report;
    report.input = bytesOf(member("input").toString());
    report.output = bytesOf(member("output").toString());
    if (member("range").isString()) {
        report.range = bytesOf(member("range").toString());
    }
    if (member("output_existed").isBool()) {
        report.outputExisted = member("output_existed").toBool();
    }
    report.status = *status;
    report.inPart = member("in_part").toBool();
    report.leftBlank = member("left_blank").toBool();
    report.pagesBefore = pageCount(member("pages_before"));
    report.pagesAfter = pageCount(member("pages_after"));
    if (member("pages_removed").isArray()) {
        report.pagesRemoved.emplace();
        for (const QJsonValue& page : member("pages_removed").toArray()) {
            report.pagesRemoved->push_back(page.toInt());
        }
    }
    report.bytesBefore = wholeNumber(member("bytes_before"));
    report.bytesAfter = wholeNumber(member("bytes_after"));
    report.inputModified = bytesOf(member("input_modified").toString());
    report.inputSha256 = bytesOf(member("input_sha256").toString());
    report.outputSha256 = bytesOf(member("output_sha256").toString());
    report.outputModified = bytesOf(member("output_modified").toString());
    takeWarnings(member("warnings").toArray(), report.warnings, report.repairs);
    if (member("verified").toBool()) {
        report.verified = verifiedOf(json);
    }
    for (const QJsonValue& value : member("losses").toArray()) {
        const QJsonObject loss = value.toObject();
        report.losses.push_back({loss["page"].toInt(), bytesOf(loss["text"].toString())});
    }
    report.leftToJudge = bytesOf(member("left").toArray());
    if (const QJsonArray errors = member("errors").toArray(); !errors.isEmpty()) {
        const QJsonObject error = errors.first().toObject();
        if (const auto reason = reasonNamed(bytesOf(error["reason"].toString()))) {
            report.error = Error{*reason, report.input, bytesOf(error["text"].toString())};
        }
    }
    report.seconds = member("seconds").toDouble();
    return report;
}

} // namespace vantora
