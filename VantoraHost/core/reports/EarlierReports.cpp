#include "VantoraHost/core/reports/EarlierReports.h"

#include "VantoraHost/core/reports/DocumentReport.h"
#include "VantoraHost/core/reports/JsonReading.h"

#include <cerrno>
#include <filesystem>
#include <fstream>

namespace vantora {

namespace {

std::optional<DocumentReport> reportIn(const std::string& line)
{
    const auto json = jsonObjectOf(line);
    return json ? reportOf(*json) : std::nullopt;
}

} // namespace

bool beginsAsAReport(const std::string& path)
{
    constexpr std::string_view beginning = R"({"schema":)";
    std::string text(beginning.size(), '\0');
    std::ifstream file(path, std::ios::binary);
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(file.gcount()));
    return text == beginning.substr(0, text.size());
}

Result<EarlierReports> EarlierReports::read(const std::vector<std::string>& paths)
{
    EarlierReports reports;
    for (const std::string& path : paths) {
        if (Outcome one = reports.readOne(path); !one) {
            return tl::unexpected<Error>(std::move(one.error()));
        }
    }
    return reports;
}

Outcome EarlierReports::readOne(const std::string& path)
{
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    std::error_code ignored;
    if (!file || std::filesystem::is_directory(path, ignored)) {
        const int why = file ? EISDIR : errno;
        return fail(why == ENOENT ? Reason::InputMissing : Reason::InputUnreadable, path,
                    "the report can't be read: " + systemMessage(why));
    }
    std::string line;
    for (std::size_t number = 1; std::getline(file, line); ++number) {
        const bool complete = !file.eof();
        std::optional<DocumentReport> report = reportIn(line);
        if (!report) {
            const auto json = jsonObjectOf(line);
            if (line.empty() || !complete || (json && json->contains("summary"))) {
                continue; // what a run prints with --json ends in a summary
            }
            return fail(Reason::NotAReport, path,
                        "line " + std::to_string(number) + " is no report of a document");
        }
        if (report->status == DocumentStatus::Done && report->bytesAfter) {
            done[std::move(report->input)] = {
                std::move(report->output),
                {*report->bytesAfter, std::move(report->outputModified)}};
        } else {
            noteFailure(report->input);
        }
    }
    return {};
}

void EarlierReports::noteFailure(const std::string& input)
{
    // A document that was replaced by its own output is that output, as long as its state says so:
    // it was done when its worker died or its folder was moved away, and nobody could tell.
    const auto before = done.find(input);
    if (before != done.end() && before->second.output != input) {
        done.erase(before);
    }
}

bool EarlierReports::stillDone(const std::string& input) const
{
    const auto found = done.find(input);
    if (found == done.end() || found->second.state.changed.empty()) {
        return false;
    }
    const auto now = stateOf(found->second.output);
    return now && now->size == found->second.state.size &&
           now->changed == found->second.state.changed;
}

} // namespace vantora
