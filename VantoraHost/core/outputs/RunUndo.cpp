#include "VantoraHost/core/outputs/RunUndo.h"

#include "KarvelPDFLibrary/io/Folder.h"
#include "KarvelPDFLibrary/io/Replacement.h"
#include "VantoraHost/core/Target.h"
#include "VantoraHost/core/outputs/Backup.h"
#include "VantoraHost/core/reports/ReportReading.h"

#include <sys/stat.h>

#include <cerrno>
#include <filesystem>
#include <unordered_map>

namespace vantora {

namespace {

using karvel::io::Folder;
using karvel::io::nameIn;

/// A file that a report tells of, in its folder.
struct Place {
    Folder::Pointer folder;
    std::string path;
    std::string name;
};

Result<Place> placeAt(const std::string& path)
{
    auto folder = Folder::open(karvel::io::folderOf(path));
    if (!folder && folder.error() != ENOENT) {
        return fail(Reason::InputUnreadable, path, systemMessage(folder.error()));
    }
    if (!folder || !(*folder)->statusOf(nameIn(path))) {
        return fail(Reason::ChangedSince, path, "is not there any more");
    }
    return Place{std::move(*folder), path, nameIn(path)};
}

// What was done in place was done to the file that a link leads to.
Result<Place> placeBehindLinks(const std::string& path)
{
    std::error_code failed;
    const std::filesystem::path file = std::filesystem::canonical(path, failed);
    auto place = placeAt(failed ? path : file.native());
    if (!place) {
        place.error().file = path;
    }
    return place;
}

// Of regular files only: whatever else has a name now, no run wrote it.
std::optional<FileVersion> versionIn(const Place& place, const std::string& name)
{
    const auto status = place.folder->statusOf(name);
    return status && S_ISREG(status->st_mode) ? std::optional(karvel::io::versionOf(*status))
                                              : std::nullopt;
}

bool isStill(const std::optional<FileVersion>& version, const FileState& then)
{
    return version && vantora::isStill(stateOf(*version), then);
}

} // namespace

const char* statusName(UndoStatus status)
{
    switch (status) {
    case UndoStatus::GivenBack:
        return "given-back";
    case UndoStatus::Removed:
        return "removed";
    case UndoStatus::Already:
        return "already";
    case UndoStatus::LeftAlone:
        break;
    }
    return "left-alone";
}

Result<RunUndo> RunUndo::read(const std::vector<std::string>& reports)
{
    RunUndo undo;
    std::unordered_map<std::string, std::size_t> places; // by output
    const auto take = [&](DocumentReport report, const QJsonObject&, std::size_t) -> Outcome {
        if (report.status != DocumentStatus::Done || report.output.empty() ||
            report.output == standardStream || !report.bytesAfter) {
            return {};
        }
        Written written = {std::move(report.input),
                           std::move(report.output),
                           false,
                           report.outputExisted.value_or(true),
                           {report.bytesBefore.value_or(0), std::move(report.inputModified)},
                           {*report.bytesAfter, std::move(report.outputModified)}};
        written.inPlace = written.input == written.output;
        const auto [place, isNew] = places.emplace(written.output, undo.written_.size());
        if (isNew) {
            undo.written_.push_back(std::move(written));
        } else {
            undo.written_[place->second] = std::move(written);
        }
        return {};
    };
    for (const std::string& report : reports) {
        if (Outcome one = readReport(report, ReportWriter::Ourselves, take); !one) {
            return tl::unexpected<Error>(std::move(one.error()));
        }
    }
    return undo;
}

void RunUndo::undo(const Settings& settings, const std::function<void(const Undone&)>& take) const
{
    for (auto written = written_.rbegin(); written != written_.rend() && !settings.cancelled();
         ++written) {
        take(undoneOf(*written, settings));
    }
}

Undone RunUndo::undoneOf(const Written& written, const Settings& settings)
{
    Undone undone = {written.input, written.output, UndoStatus::LeftAlone, std::nullopt};
    const auto status =
        written.inPlace ? giveBack(written, settings.dryRun) : remove(written, settings);
    if (status) {
        undone.status = *status;
    } else {
        undone.why = status.error();
    }
    return undone;
}

Result<UndoStatus> RunUndo::giveBack(const Written& written, bool dryRun)
{
    const auto place = placeBehindLinks(written.output);
    if (!place) {
        return tl::unexpected<Error>(place.error());
    }
    const auto file = versionIn(*place, place->name);
    const std::string backupName = backupOf(place->name);
    const auto backup = versionIn(*place, backupName);
    if (isStill(file, written.before)) {
        // What an undo that was killed between exchanging the two and removing one has left.
        if (!dryRun && isStill(backup, written.after)) {
            place->folder->remove(backupName, *backup);
        }
        return UndoStatus::Already;
    }
    if (!isStill(file, written.after)) {
        return fail(Reason::ChangedSince, written.output, "was changed after the run");
    }
    if (!backup) {
        return fail(Reason::BackupMissing, written.output,
                    "has no backup " + backupOf(place->path));
    }
    if (!isStill(backup, written.before)) {
        return fail(Reason::ChangedSince, written.output,
                    "its backup " + backupOf(place->path) + " is not the original any more");
    }
    if (dryRun) {
        return UndoStatus::GivenBack;
    }
    const auto done = karvel::io::replace(*place->folder, backupName, *backup, place->name, *file,
                                          karvel::io::FileDescriptor());
    if (done.overtaken || done.error == ESTALE) {
        return fail(Reason::ChangedSince, written.output, "is just being changed");
    }
    if (done.error != 0) {
        return fail(Reason::OutputNotWritable, written.output, systemMessage(done.error));
    }
    place->folder->sync();
    return UndoStatus::GivenBack;
}

Result<UndoStatus> RunUndo::remove(const Written& written, const Settings& settings)
{
    if (written.replaced) {
        return fail(Reason::BackupMissing, written.output, "replaced a file, which was not kept");
    }
    if (!settings.removeOutputs) {
        return fail(Reason::OutputKept, written.output, "is a file beside its original");
    }
    if (!isThere(written.output)) {
        return UndoStatus::Already;
    }
    const auto place = placeAt(written.output);
    if (!place) {
        return tl::unexpected<Error>(place.error());
    }
    const auto file = versionIn(*place, place->name);
    if (!isStill(file, written.after)) {
        return fail(Reason::ChangedSince, written.output, "was changed after the run");
    }
    if (settings.dryRun) {
        return UndoStatus::Removed;
    }
    if (const int error = place->folder->remove(place->name, *file); error != 0) {
        return fail(Reason::OutputNotWritable, written.output, systemMessage(error));
    }
    place->folder->sync();
    return UndoStatus::Removed;
}

} // namespace vantora
