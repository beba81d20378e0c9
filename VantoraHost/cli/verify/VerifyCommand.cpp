#include "VantoraHost/cli/verify/VerifyCommand.h"

#include "VantoraHost/cli/console/InputFiles.h"
#include "VantoraHost/cli/console/Messages.h"
#include "VantoraHost/cli/verify/RemovalsToVerify.h"
#include "VantoraHost/core/reports/FailureJson.h"
#include "VantoraHost/core/reports/Json.h"
#include "VantoraHost/core/reports/JsonReading.h"
#include "VantoraHost/core/workers/ConfinedCall.h"
#include "VantoraHost/core/workers/Confinement.h"
#include "VantoraHost/verification/Verification.h"

#include <QtCore/QJsonArray>

#include <algorithm>
#include <filesystem>
#include <ostream>
#include <thread>

namespace vantora::cli {

namespace {

namespace fs = std::filesystem;
using verification::Finding;
using verification::Refusal;
using verification::Verdict;
using verification::Verifier;

JsonObject jsonOf(const Finding& finding)
{
    JsonObject json;
    json.add("kind", kindName(finding.kind))
        .add("page", finding.page > 0 ? std::optional(finding.page) : std::nullopt)
        .add("object", finding.object.empty() ? std::nullopt : std::optional(finding.object))
        .add("text", finding.what);
    return json;
}

std::string jsonOf(const RemovalToVerify& removal, const Verdict& verdict)
{
    std::vector<JsonObject> findings;
    for (const Finding& finding : verdict.findings) {
        findings.push_back(jsonOf(finding));
    }
    JsonObject json;
    json.add("schema", reportSchema)
        .add("input", removal.before)
        .add("output", removal.after)
        .add("status", "done")
        .add("verified", verdict.passed())
        .add("pages_before", verdict.pagesBefore)
        .add("pages_after", verdict.pagesAfter)
        .add("pages_gone", verdict.pagesRemoved)
        .add("looked_for", static_cast<std::uint64_t>(verdict.things))
        .add("findings", findings)
        .add("more_findings", static_cast<std::uint64_t>(verdict.more))
        .add("not_told", verdict.notTold)
        .add("errors", std::vector<JsonObject>());
    return json.text();
}

Reason reasonOf(Refusal::Why why, bool passwordsGiven)
{
    switch (why) {
    case Refusal::Why::Unreadable:
        return Reason::InputUnreadable;
    case Refusal::Why::NotPdf:
        return Reason::NotPdf;
    case Refusal::Why::PasswordNeeded:
        return passwordsGiven ? Reason::PasswordWrong : Reason::PasswordNeeded;
    case Refusal::Why::Failed:
        break;
    }
    return Reason::LibraryFailed;
}

/// Verifies removals, each in a process of its own, and says what was found.
class Verification {
public:
    Verification(const VerifyOptions& options, std::vector<RemovalToVerify> removals,
                 std::vector<std::string> passwords, const Verifier& verifier,
                 const Streams& streams)
        : options_(options), removals_(std::move(removals)), passwords_(std::move(passwords)),
          verifier_(verifier), streams_(streams)
    {
    }

    /// Returns false when the person doesn't want to wait any longer.
    bool run(const std::vector<std::string>& programFiles)
    {
        if (options_.workers.jobs != 0U) {
            return inProcesses(programFiles);
        }
        for (const RemovalToVerify& removal : removals_) {
            if (streams_.interrupted()) {
                return false;
            }
            take(removal, lineAbout(removal));
        }
        return true;
    }

    void printSummary() const
    {
        if (removals_.size() != 1) {
            const Language& language = streams_.language;
            std::string text = language.text("%1 verified", {language.number(verified_)});
            if (found_ > 0) {
                text += ", " + language.text("%1 with findings", {language.number(found_)});
            }
            if (failed_ > 0) {
                text += ", " + language.text("%1 failed", {language.number(failed_)});
            }
            printNote(streams_, text);
        }
    }

    bool allVerified() const { return !removals_.empty() && verified_ == removals_.size(); }

private:
    bool inProcesses(const std::vector<std::string>& programFiles)
    {
        const std::size_t most = options_.workers.jobs.value_or(
            std::max<std::size_t>(1, std::thread::hardware_concurrency()));
        const std::size_t atOnce = std::max<std::size_t>(1, std::min(removals_.size(), most));
        ConfinedWork calls;
        calls.count = removals_.size();
        calls.limits = {
            {programFiles, {}},
            options_.workers.memoryLimit.value_or(memoryShare(atOnce)),
            std::chrono::seconds(options_.workers.timeout.value_or(longestForADocument))};
        calls.documents = [&](std::size_t i) {
            return std::vector{removals_[i].before, removals_[i].after};
        };
        calls.work = [&](std::size_t i, std::size_t) { return lineAbout(removals_[i]); };
        return callEachConfined(calls, atOnce, streams_.interrupted,
                                [&](std::size_t i, PieceAnswers lines) {
                                    take(removals_[i], onlyAnswer(std::move(lines)));
                                });
    }

    std::string lineAbout(const RemovalToVerify& removal) const
    {
        if (removal.error) {
            return failureJson(*removal.error, removal.error->file);
        }
        for (const std::string& path : {removal.before, removal.after}) {
            std::error_code failed;
            if (!fs::is_regular_file(path, failed)) {
                return fs::exists(path, failed)
                           ? failureJson({Reason::InputNotAFile, path, "is not a file"}, path)
                           : failureJson({Reason::InputMissing, path, "there is no such file"},
                                         path);
            }
        }
        const auto verdict =
            verifier_.verify({removal.before, removal.after, removal.pages, passwords_});
        if (verdict) {
            return jsonOf(removal, *verdict);
        }
        const Refusal& refusal = verdict.error();
        return failureJson({reasonOf(refusal.why, !passwords_.empty()), {}, refusal.sentence},
                           refusal.isAfter ? removal.after : removal.before);
    }

    void take(const RemovalToVerify& removal, const Result<std::string>& line)
    {
        auto json = line ? doneObjectOf(*line) : tl::unexpected<Error>(line.error());
        if (!json) {
            ++failed_;
            if (json.error().file.empty()) {
                json.error().file = removal.before;
            }
            if (options_.json) {
                streams_.out << failureJson(json.error(), json.error().file) << '\n';
            }
            printError(streams_, json.error());
            return;
        }
        const bool verified = (*json)["verified"].toBool();
        ++(verified ? verified_ : found_);
        if (options_.json) {
            streams_.out << *line << '\n';
        } else {
            printTable(removal, *json, verified);
        }
        streams_.out.flush();
    }

    void printTable(const RemovalToVerify& removal, const QJsonObject& json, bool verified) const
    {
        const Language& language = streams_.language;
        const auto count = [&](const char* key) {
            return static_cast<std::uint64_t>(std::max(0.0, json[key].toDouble()));
        };
        const QJsonArray findings = json["findings"].toArray();
        streams_.out << shown(removal.before) << " -> " << shown(removal.after) << '\n';
        row(language.text("pages"),
            language.text("%1, %2 removed, %3 left", {language.number(count("pages_before")),
                                                      language.number(count("pages_gone")),
                                                      language.number(count("pages_after"))}));
        row(language.text("looked for"),
            language.counted(count("looked_for"), "thing of removed pages",
                             "things of removed pages"));
        std::string label = language.text("not told");
        for (const std::string& note : bytesOf(json["not_told"].toArray())) {
            row(label, language.sentence(shown(note)));
            label.clear();
        }
        for (const QJsonValue& one : findings) {
            printFinding(one.toObject());
        }
        if (count("more_findings") > 0) {
            row("", language.text("and %1 more", {language.number(count("more_findings"))}));
        }
        const std::uint64_t all =
            static_cast<std::uint64_t>(findings.size()) + count("more_findings");
        row(language.text("verdict"),
            verified ? language.text("verified")
                     : language.text("not verified: %1",
                                     {language.counted(all, "finding", "findings")}));
    }

    void printFinding(const QJsonObject& finding) const
    {
        const Language& language = streams_.language;
        const int page = finding["page"].toInt();
        const std::string where = page > 0 ? language.text("page %1", {std::to_string(page)}) : "-";
        row(language.text("finding"),
            padded(bytesOf(finding["kind"].toString()) + ' ', 18) + padded(where + ' ', 10) +
                padded(shown(bytesOf(finding["object"].toString("-"))) + ' ', 12) +
                language.sentence(shown(bytesOf(finding["text"].toString()))));
    }

    void row(const std::string& label, const std::string& value) const
    {
        streams_.out << "  " << padded(label + ' ', 14) << value << '\n';
    }

    const VerifyOptions& options_;
    const std::vector<RemovalToVerify> removals_;
    const std::vector<std::string> passwords_;
    const Verifier& verifier_;
    const Streams& streams_;
    std::size_t verified_ = 0;
    std::size_t found_ = 0;
    std::size_t failed_ = 0;
};

} // namespace

int verifyRemovals(const VerifyOptions& options, const Installation& installation,
                   const Streams& streams)
{
    auto passwords = readPasswords(options.passwordFile);
    if (!passwords) {
        return failedWith(streams, options.json, passwords.error());
    }
    auto removals = removalsToVerify(options, streams);
    if (!removals) {
        return failedWith(streams, options.json, removals.error());
    }
    const auto verifier = verification::loadVerifier(installation.verifier);
    if (!verifier) {
        return failedWith(
            streams, options.json,
            {Reason::LibraryMissing, installation.verifier,
             "the program's part that verifies can't be loaded: " + verifier.error()});
    }
    Verification verification(options, std::move(*removals), std::move(*passwords), **verifier,
                              streams);
    if (!verification.run(programFiles({installation.verifier.parent_path()}))) {
        return InterruptedByUser;
    }
    verification.printSummary();
    return verification.allVerified() ? AllDone : SomeFailed;
}

} // namespace vantora::cli
