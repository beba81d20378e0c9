#include "VantoraHost/core/reports/DocumentReport.h"

#include "VantoraHost/core/IsoTime.h"
#include "VantoraHost/core/reports/FailureJson.h"
#include "VantoraHost/core/reports/Json.h"
#include "VantoraHost/core/reports/JsonReading.h"

#include <QtCore/QJsonArray>

#include <charconv>
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

/// Which members an object gets.
enum class Members {
    All,
    Known, ///< those only that don't have the value that reading takes for a missing one
};

/// Adds members, in the order in which they come.
class ReportJson {
public:
    explicit ReportJson(Members members) : members_(members) {}

    template <class T>
    ReportJson& add(const char* key, const T& value)
    {
        if (members_ == Members::All || !isWhatMissingMeans(value)) {
            json_.add(key, value);
        }
        return *this;
    }

    /// A time that another member says in nanoseconds already.
    ReportJson& addReadable(const char* key, const std::string& nanoseconds)
    {
        if (members_ == Members::All) {
            json_.add(key, textOrNone(isoTime(nanoseconds)));
        }
        return *this;
    }

    JsonObject& object() { return json_; }

private:
    template <class T>
    static bool isWhatMissingMeans(const std::optional<T>& value)
    {
        return !value;
    }
    template <class T>
    static bool isWhatMissingMeans(const std::vector<T>& values)
    {
        return values.empty();
    }
    static bool isWhatMissingMeans(bool value) { return !value; }

    JsonObject json_;
    Members members_;
};

// Of thousands of pages, one text is read in a fraction of the time that an array takes.
std::string joined(const std::vector<int>& pages)
{
    std::string text;
    for (const int page : pages) {
        text += std::to_string(page) + ',';
    }
    return text;
}

// The pages of such a text; none where it is none.
std::optional<std::vector<int>> pagesIn(const std::string& text)
{
    std::vector<int> pages;
    const char* const end = text.data() + text.size();
    for (const char* next = text.data(); next != end; ++next) {
        int page = 0;
        const auto read = std::from_chars(next, end, page);
        if (read.ec != std::errc() || read.ptr == end || *read.ptr != ',') {
            return std::nullopt;
        }
        pages.push_back(page);
        next = read.ptr;
    }
    return pages;
}

JsonObject objectOf(const DocumentReport& report, Members members = Members::All)
{
    ReportJson json(members);
    json.object().add("schema", reportSchema).add("input", report.input);
    json.add("output", textOrNone(report.output))
        .add("output_existed", report.outputExisted)
        .add("pages_before", report.pagesBefore)
        .add("pages_after", report.pagesAfter);
    if (members == Members::Known && report.pagesRemoved) {
        json.object().add("pages_removed", joined(*report.pagesRemoved));
    } else {
        json.add("pages_removed", report.pagesRemoved);
    }
    json.add("bytes_before", report.bytesBefore)
        .add("bytes_after", report.bytesAfter)
        .add("input_modified", textOrNone(report.inputModified))
        .addReadable("input_modified_at", report.inputModified)
        .add("input_sha256", textOrNone(report.inputSha256))
        .add("output_modified", textOrNone(report.outputModified))
        .addReadable("output_modified_at", report.outputModified)
        .add("in_part", report.inPart)
        .add("left_blank", report.leftBlank);
    json.object().add("status", statusName(report.status));
    json.add("warnings", withRepairs(report.warnings, report.repairs));
    std::vector<JsonObject> errors;
    if (report.error) {
        errors.push_back(errorJson(*report.error));
    }
    if (report.range) {
        json.object().add("range", *report.range);
    }
    if (!report.outputSha256.empty()) {
        json.object().add("output_sha256", report.outputSha256);
    }
    if (report.verified) {
        addVerified(json.object(), *report.verified);
    }
    if (!report.losses.empty()) {
        json.object().add("losses", lossesJson(report.losses));
    }
    json.add("errors", errors).add("left", report.leftToJudge);
    json.object().add("seconds", std::round(report.seconds * 1e6) / 1e6);
    return json.object();
}

} // namespace

std::string toJson(const DocumentReport& report)
{
    return objectOf(report).text();
}

std::string toBriefJson(const DocumentReport& report)
{
    return objectOf(report, Members::Known).text();
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
    if (member("pages_removed").isString()) {
        report.pagesRemoved = pagesIn(bytesOf(member("pages_removed").toString()));
    } else if (member("pages_removed").isArray()) {
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
