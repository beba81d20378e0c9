#include "VantoraHost/core/reports/EarlierReports.h"

#include "VantoraHost/core/FileDigest.h"
#include "VantoraHost/core/reports/JsonReading.h"
#include "VantoraHost/core/reports/ReportReading.h"

#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace vantora {

/// Takes reports line by line, and of them what is about the run's inputs.
class EarlierReports::Reader {
public:
    Reader(EarlierReports& reports, const std::vector<Input>& inputs, const RunIdentity& run)
        : reports_(reports), run_(run)
    {
        for (const Input& input : inputs) {
            inputs_.emplace(input.path, &input);
            paths_.insert(normalPath(input.path));
        }
    }

    Outcome read(const std::string& path);

private:
    Outcome take(const std::string& path, DocumentReport report, const QJsonObject& line,
                 std::size_t number);
    void takeDone(DocumentReport report, const QJsonObject& by);
    void takeFailure(const std::string& input);

    EarlierReports& reports_;
    const RunIdentity& run_;
    std::unordered_map<std::string_view, const Input*> inputs_;
    std::unordered_set<std::string> paths_; ///< of the inputs, without needless parts
};

Result<EarlierReports> EarlierReports::read(const std::vector<std::string>& paths,
                                            const std::vector<Input>& inputs,
                                            const RunIdentity& run)
{
    EarlierReports reports;
    if (paths.empty()) {
        return reports;
    }
    Reader reader(reports, inputs, run);
    for (const std::string& path : paths) {
        if (Outcome one = reader.read(path); !one) {
            return tl::unexpected<Error>(std::move(one.error()));
        }
    }
    return reports;
}

Outcome EarlierReports::Reader::read(const std::string& path)
{
    return readReport(path, ReportWriter::Anybody,
                      [&](DocumentReport report, const QJsonObject& line, std::size_t number) {
                          return take(path, std::move(report), line, number);
                      });
}

Outcome EarlierReports::Reader::take(const std::string& path, DocumentReport report,
                                     const QJsonObject& line, std::size_t number)
{
    if (report.status != DocumentStatus::Done || !report.bytesAfter) {
        takeFailure(report.input);
        return {};
    }
    if (!line["run"].isObject()) {
        return fail(Reason::ReportTooOld, path,
                    "line " + std::to_string(number) +
                        " is of a version that did not note what it had done");
    }
    takeDone(std::move(report), line["run"].toObject());
    return {};
}

void EarlierReports::Reader::takeDone(DocumentReport report, const QJsonObject& by)
{
    const FileState written = {*report.bytesAfter, std::move(report.outputModified)};
    if (report.output != report.input) {
        std::string output = normalPath(report.output);
        if (paths_.count(output) != 0) {
            reports_.outputs_[std::move(output)] = written;
        }
    }
    const auto input = inputs_.find(report.input);
    if (input == inputs_.end()) {
        return;
    }
    // What was replaced by its own output would be changed twice for being verified.
    const bool inPlace = report.output == report.input;
    // What was done without losses at any price is done the same where these are allowed.
    const bool bySameSteps = bytesOf(by["steps_sha256"].toString()) == run_.stepsDigest &&
                             (run_.salvage || !by["salvage"].toBool()) &&
                             report.range == input->second->range &&
                             (!run_.verify || report.verified || inPlace);
    reports_.hashes_ = reports_.hashes_ || !report.inputSha256.empty();
    reports_.done_[std::move(report.input)] = {
        std::move(report.output),
        written,
        {report.bytesBefore.value_or(0), std::move(report.inputModified)},
        std::move(report.inputSha256),
        bySameSteps,
        bytesOf(by["version"].toString()) == run_.version};
}

void EarlierReports::Reader::takeFailure(const std::string& input)
{
    // A document that was replaced by its own output is that output, as long as its state says so:
    // it was done when its worker died or its folder was moved away, and nobody could tell.
    const auto before = reports_.done_.find(input);
    if (before != reports_.done_.end() && before->second.output != input) {
        reports_.done_.erase(before);
    }
}

SinceReport EarlierReports::since(const std::string& input, const IsPlanned& isPlanned) const
{
    const auto found = done_.find(input);
    if (found == done_.end()) {
        return SinceReport::NotDone;
    }
    const Written& then = found->second;
    if (!isPlanned(then.output)) {
        return SinceReport::OtherOutput;
    }
    const bool inPlace = then.output == input;
    const auto output = stateOf(then.output);
    if (!isStill(output, then.outputState)) {
        return inPlace  ? SinceReport::InputChanged
               : output ? SinceReport::OutputChanged
                        : SinceReport::OutputGone;
    }
    if (!then.bySameSteps) {
        return SinceReport::OtherSteps;
    }
    if (inPlace) {
        return SinceReport::Same;
    }
    if (!then.bySameVersion) {
        return SinceReport::OtherVersion;
    }
    const bool isSame = isStill(stateOf(input), then.inputState) &&
                        (then.inputSha256.empty() || sha256OfFile(input) == then.inputSha256);
    return isSame ? SinceReport::Same : SinceReport::InputChanged;
}

bool EarlierReports::wasInPlace(const std::string& input) const
{
    const auto found = done_.find(input);
    return found != done_.end() && found->second.output == input;
}

bool EarlierReports::namesOutput(const std::string& path) const
{
    const auto found = outputs_.find(path);
    return found != outputs_.end() && isStill(stateOf(path), found->second);
}

} // namespace vantora
