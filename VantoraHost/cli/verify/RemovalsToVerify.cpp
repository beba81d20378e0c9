#include "VantoraHost/cli/verify/RemovalsToVerify.h"

#include "VantoraHost/core/Inputs.h"
#include "VantoraHost/core/Target.h"
#include "VantoraHost/core/choices/InputRanges.h"
#include "VantoraHost/core/outputs/Backup.h"
#include "VantoraHost/core/reports/ReportReading.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <limits>
#include <string_view>
#include <system_error>

namespace vantora::cli {

namespace fs = std::filesystem;

namespace {

using Pages = std::vector<std::pair<int, int>>;

int numberOf(std::string_view text)
{
    int number = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
    return read.ec == std::errc::result_out_of_range ? std::numeric_limits<int>::max() : number;
}

// Of a range that is valid; white space says nothing.
Pages pagesOf(std::string range)
{
    range.erase(
        std::remove_if(range.begin(), range.end(), [](unsigned char c) { return c <= ' '; }),
        range.end());
    Pages pages;
    for (std::size_t start = 0; start < range.size();) {
        const std::size_t end = std::min(range.find(',', start), range.size());
        const std::string_view item = std::string_view(range).substr(start, end - start);
        const std::size_t dash = item.find('-');
        const int first = numberOf(item.substr(0, dash));
        pages.emplace_back(first, dash == std::string_view::npos ? first
                                                                 : numberOf(item.substr(dash + 1)));
        start = end + 1;
    }
    return pages;
}

Pages pagesOf(const std::vector<int>& numbers)
{
    Pages pages;
    for (const int number : numbers) {
        pages.emplace_back(number, number);
    }
    return pages;
}

std::string joined(const std::string& folder, std::string_view place)
{
    return (fs::path(folder) / fs::path(place)).native();
}

Result<std::vector<RemovalToVerify>> namedRemovals(const VerifyOptions& options)
{
    const Pages pages = pagesOf(options.range);
    if (!isFolder(options.before)) {
        return std::vector{RemovalToVerify{options.before, options.after, pages, {}}};
    }
    const auto inputs = inputsBelow(options.before, options.after);
    if (!inputs) {
        return tl::unexpected<Error>(inputs.error());
    }
    std::vector<RemovalToVerify> removals;
    for (const Input& input : *inputs) {
        removals.push_back({input.path, joined(options.after, input.place()), pages, {}});
    }
    return removals;
}

// What a list names lies below the folder before, under the same names as below the one after.
Result<std::vector<RemovalToVerify>> listedRemovals(const VerifyOptions& options,
                                                    const Streams& streams)
{
    const auto list = readRangesList(options.rangesPath, streams.interrupted);
    if (!list) {
        return tl::unexpected<Error>(list.error());
    }
    if (!isFolder(options.before)) {
        std::vector<Input> inputs = {inputNamed(options.before)};
        if (const Outcome assigned = assignRanges(*list, inputs); !assigned) {
            return tl::unexpected<Error>(assigned.error());
        }
        return std::vector{RemovalToVerify{
            options.before, options.after, pagesOf(inputs.front().range.value_or("")), {}}};
    }
    const auto inputs = inputsOf(*list);
    if (!inputs) {
        return tl::unexpected<Error>(inputs.error());
    }
    std::error_code failed;
    const fs::path folder = fs::weakly_canonical(options.before, failed);
    std::vector<RemovalToVerify> removals;
    for (const Input& input : *inputs) {
        const fs::path place = fs::weakly_canonical(input.path, failed).lexically_relative(folder);
        RemovalToVerify removal{input.path, {}, pagesOf(input.range.value_or("")), {}};
        if (place.empty() || *place.begin() == "..") {
            removal.error =
                Error{Reason::BadRanges, input.path, "doesn't lie in the folder " + options.before};
        } else {
            removal.after = joined(options.after, place.native());
        }
        removals.push_back(std::move(removal));
    }
    return removals;
}

bool isOfSize(const std::string& path, const std::optional<std::uint64_t>& bytes)
{
    std::error_code failed;
    return !bytes || fs::file_size(path, failed) == *bytes;
}

RemovalToVerify removalOf(const DocumentReport& report)
{
    RemovalToVerify removal{report.input, report.output, {}, {}};
    const auto refuse = [&](Reason reason, const std::string& file, const std::string& sentence) {
        removal.error = Error{reason, file, sentence};
    };
    if (report.input == standardStream || report.output == standardStream) {
        refuse(Reason::InputMissing, report.input, "came from a pipe or went into one");
        return removal;
    }
    if (!report.pagesRemoved) {
        refuse(Reason::NotAReport, report.input, "the report doesn't say which pages went");
        return removal;
    }
    removal.pages = pagesOf(*report.pagesRemoved);
    std::error_code failed;
    if (normalPath(report.input) == normalPath(report.output)) {
        const fs::path file = fs::canonical(report.output, failed);
        removal.before = backupOf(failed ? report.output : file.native());
        if (!fs::exists(removal.before, failed)) {
            refuse(Reason::BackupMissing, report.input,
                   "was replaced, and there is no backup of it to verify with");
            return removal;
        }
    }
    for (const auto& [path, bytes] :
         {std::pair(removal.before, report.bytesBefore), {removal.after, report.bytesAfter}}) {
        if (fs::exists(path, failed) && !isOfSize(path, bytes)) {
            refuse(Reason::ChangedSince, path, "has changed since the run that the report is of");
        }
    }
    return removal;
}

Result<std::vector<RemovalToVerify>> reportedRemovals(const std::string& path)
{
    std::vector<RemovalToVerify> removals;
    const Outcome read =
        readReport(path, ReportWriter::Anybody,
                   [&](const DocumentReport& report, const QJsonObject&, std::size_t) -> Outcome {
                       if (report.status == DocumentStatus::Done) {
                           removals.push_back(removalOf(report));
                       }
                       return {};
                   });
    if (!read) {
        return tl::unexpected<Error>(read.error());
    }
    return removals;
}

} // namespace

Result<std::vector<RemovalToVerify>> removalsToVerify(const VerifyOptions& options,
                                                      const Streams& streams)
{
    return !options.reportPath.empty()   ? reportedRemovals(options.reportPath)
           : !options.rangesPath.empty() ? listedRemovals(options, streams)
                                         : namedRemovals(options);
}

} // namespace vantora::cli
