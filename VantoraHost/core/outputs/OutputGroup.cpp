#include "VantoraHost/core/outputs/OutputGroup.h"

#include "KarvelPDFLibrary/io/Durability.h"
#include "VantoraHost/core/LibraryFailure.h"
#include "VantoraHost/core/outputs/Backup.h"
#include "VantoraHost/core/outputs/OutputPlan.h"
#include "VantoraHost/core/outputs/TargetFolder.h"

#include <map>

namespace vantora {

using karvel::io::Folder;

namespace {

using namespace std::chrono_literals;

constexpr std::size_t mostOutputs = 64;
constexpr std::uint64_t mostBytes = 32 * 1024 * 1024;

// Nobody shall wait long for a document that is as good as done.
constexpr auto longestWait = 250ms;

Outcome placeOne(DocumentReport& report, WrittenOutput& output)
{
    const Target& target = output.target;
    std::optional<Backup> backup;
    if (!target.backup.empty() && target.replaced) {
        Result<Backup> made =
            Backup::of(output.file.folder(), target.path, target.backup, *target.replaced);
        if (!made) {
            return tl::unexpected<Error>(std::move(made.error()));
        }
        backup.emplace(std::move(*made));
    }
    karvel::Outcome named = output.file.takeName();
    if (!named && named.error().code == karvel::ErrorCode::FileExists && target.number) {
        // Another run took the name meanwhile.
        const Target other = underFreeName(target);
        output.file.aimAt(other.path);
        report.output = other.name;
        named = output.file.takeName();
    }
    if (output.file.isOvertaken()) {
        return fail(Reason::ChangedMeanwhile, {},
                    (target.inPlace ? "" : "the output " + target.name + " ") +
                        karvel::io::changedMeanwhile);
    }
    if (!named) {
        return tl::unexpected<Error>(outputFailure(named.error(), target));
    }
    if (output.file.lostOwner()) {
        report.warnings.push_back("its owner or mode could not be kept: only the owner and the "
                                  "administrator may give a file to others");
    }
    if (backup) {
        backup->keep();
    }
    return {};
}

} // namespace

void turnIntoFailure(DocumentReport& report, Error error)
{
    report.status = DocumentStatus::Failed;
    report.inPart = report.leftBlank = false;
    error.file = report.input;
    report.error = std::move(error);
    report.output.clear();
    report.outputModified.clear();
    report.outputSha256.clear();
    report.bytesAfter.reset();
    report.pagesAfter.reset();
    report.pagesRemoved.reset();
    report.verified.reset();
}

void OutputGroup::add(std::size_t number, DocumentReport report, WrittenOutput output)
{
    if (members_.empty()) {
        begun_ = std::chrono::steady_clock::now();
    }
    bytes_ += report.bytesAfter.value_or(0);
    members_.push_back({number, std::move(report), std::move(output)});
}

std::vector<DocumentReport> OutputGroup::reports() const
{
    std::vector<DocumentReport> reports;
    for (const Member& member : members_) {
        reports.push_back(member.report);
    }
    return reports;
}

bool OutputGroup::isFull() const
{
    return members_.size() >= mostOutputs || bytes_ >= mostBytes ||
           (!members_.empty() && std::chrono::steady_clock::now() - begun_ > longestWait);
}

std::vector<OutputGroup::Entry> OutputGroup::place()
{
    std::vector<int> descriptors;
    for (const Member& member : members_) {
        descriptors.push_back(member.output.file.descriptor());
    }
    const std::vector<int> errors = karvel::io::syncTogether(descriptors);
    std::vector<Entry> entries;
    std::map<FileIdentity, Folder::Pointer> folders;
    Folder::Pointer noted; // mostly they are all in the same
    for (std::size_t i = 0; i < members_.size(); ++i) {
        Member& member = members_[i];
        const std::size_t warnings = member.report.warnings.size();
        const std::string name = member.report.output;
        const Outcome placed =
            errors[i] == 0 ? placeOne(member.report, member.output)
                           : Outcome(tl::unexpected<Error>(outputFailure(
                                 {karvel::ErrorCode::FileNotWritable, systemMessage(errors[i])},
                                 member.output.target)));
        if (placed) {
            const Folder::Pointer& folder = member.output.file.folder();
            const auto identity =
                folder == noted ? std::optional<FileIdentity>() : identityOf(*folder);
            if (identity) {
                folders.emplace(*identity, folder);
            }
            noted = folder;
        } else {
            turnIntoFailure(member.report, placed.error());
        }
        const bool asWritten =
            placed && member.report.warnings.size() == warnings && member.report.output == name;
        entries.push_back({member.number, std::move(member.report), asWritten});
    }
    for (const auto& [identity, folder] : folders) {
        folder->sync();
    }
    members_.clear();
    bytes_ = 0;
    return entries;
}

} // namespace vantora
