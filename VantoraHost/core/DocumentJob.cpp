#include "VantoraHost/core/DocumentJob.h"

#include "KarvelPDFLibrary/base/Text.h"
#include "VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h"
#include "VantoraHost/core/Backup.h"
#include "VantoraHost/core/FileIdentity.h"
#include "VantoraHost/core/LibraryFailure.h"
#include "VantoraHost/core/PageForecast.h"
#include "VantoraHost/core/PdfLibrary.h"

#include <chrono>
#include <exception>
#include <filesystem>
#include <new>
#include <optional>
#include <system_error>

namespace vantora {

using karvel::text::toWide;

namespace {

std::optional<std::uint64_t> sizeOf(const std::string& path)
{
    std::error_code failed;
    const auto size = std::filesystem::file_size(path, failed);
    return failed ? std::nullopt : std::optional<std::uint64_t>(size);
}

} // namespace

DocumentReport failedReport(const std::string& input, Error error)
{
    DocumentReport report;
    report.input = input;
    report.bytesBefore = sizeOf(input);
    report.error = std::move(error);
    return report;
}

DocumentReport DocumentJob::run(const std::string& input, const Result<Target>& target)
{
    const auto start = std::chrono::steady_clock::now();
    DocumentReport report;
    report.input = input;
    report.bytesBefore = input == standardStream ? settings.standardInput.size() : sizeOf(input);
    const Outcome done =
        target ? guardedProcess(report, *target) : tl::unexpected<Error>(target.error());
    if (!done) {
        report.status = DocumentStatus::Failed;
        report.error = done.error();
        report.output.clear();
        report.pagesAfter.reset();
        report.pagesRemoved.reset();
    }
    report.seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    return report;
}

// Running out of memory over one document is no reason to give up the others.
Outcome DocumentJob::guardedProcess(DocumentReport& report, const Target& target)
{
    try {
        return process(report, target);
    } catch (const std::bad_alloc&) {
        return fail(Reason::OutOfMemory, report.input, "there is not enough memory for it");
    } catch (const std::exception& error) {
        return fail(Reason::LibraryFailed, report.input, error.what());
    }
}

Outcome DocumentJob::process(DocumentReport& report, const Target& target)
{
    const Result<OpenDocument> document = OpenDocument::open(
        library, report.input, settings.standardInput, settings.passwords, Access::RemovePages);
    if (!document) {
        return tl::unexpected<Error>(document.error());
    }
    if (settings.keepSigned) {
        if (const Outcome checked = document->checkUnsigned(report.input); !checked) {
            return checked;
        }
    }
    report.output = target.name;
    const Outcome done = [&]() -> Outcome {
        if (const Outcome changed = changePages(report); !changed) {
            return changed;
        }
        if (settings.dryRun) {
            report.status = DocumentStatus::Planned;
            return {};
        }
        if (settings.cancelled()) {
            return fail(Reason::Interrupted, report.input, "interrupted");
        }
        return save(report, target);
    }();
    // What is damaged may show only when it is read, at the latest when saving.
    report.repairs = document->repairs();
    if (done) {
        const std::vector<std::string> remarks = document->remarks();
        report.warnings.insert(report.warnings.end(), remarks.begin(), remarks.end());
    }
    return done;
}

Outcome DocumentJob::changePages(DocumentReport& report)
{
    library.ClearLastError();
    const int pages = library.PageCount();
    if (pages <= 0) {
        return tl::unexpected<Error>(failure(report.input, "has no pages"));
    }
    report.pagesBefore = pages;
    std::optional<PageForecast> forecast = forecastPages(sequence, pages);
    if (forecast) {
        report.pagesRemoved = std::move(forecast->removed);
        report.pagesAfter = forecast->pagesAfter;
        report.warnings = std::move(forecast->warnings);
    }
    if (settings.dryRun) {
        return {};
    }
    if (Outcome processed = sequence.process(library); !processed) {
        processed.error().file = report.input;
        return processed;
    }
    const int left = library.PageCount();
    if (forecast && left != forecast->pagesAfter) {
        return fail(Reason::ActionFailed, report.input,
                    "it has " + std::to_string(left) + " pages after the actions where " +
                        std::to_string(forecast->pagesAfter) + " were to be left");
    }
    report.pagesAfter = left;
    return {};
}

Outcome DocumentJob::save(DocumentReport& report, const Target& target)
{
    const bool encrypted = library.IsEncrypted() == 1;
    library.ClearLastError();
    constexpr int keepAsTheyAre = 0;
    library.SetObjectStreamMode(keepAsTheyAre);
    library.SetStreamDataMode(keepAsTheyAre);
    library.SetLinearization(library.IsLinearized());
    library.SetDeterministicIdentifier(encrypted ? 0 : 1);
    library.SetOverwriteMode(target.replace ? 1 : 0);
    if (library.LastErrorCode() != 0) {
        return tl::unexpected<Error>(failure(report.input, "can't be saved"));
    }
    if (target.standardOutput) {
        return saveToStandardOutput(report);
    }
    Outcome saved = saveToFile(report, target);
    if (!saved && saved.error().reason == Reason::OutputExists && target.number) {
        // Another run took the name after this one had looked.
        const Target other = underFreeName(target);
        report.output = other.name;
        saved = saveToFile(report, other);
    }
    if (!saved) {
        return saved;
    }
    report.status = DocumentStatus::Done;
    if (const auto state = stateOf(report.output)) {
        report.bytesAfter = state->size;
        report.outputModified = state->changed;
    }
    return {};
}

Outcome DocumentJob::saveToFile(DocumentReport& report, const Target& target)
{
    std::optional<Backup> backup;
    if (!target.backup.empty()) {
        Result<Backup> made = Backup::of(target.path, target.backup, target.replaceBackup);
        if (!made) {
            made.error().file = report.input;
            return tl::unexpected<Error>(std::move(made.error()));
        }
        backup.emplace(std::move(*made));
    }
    const auto before = ownershipOf(target.path);
    if (library.SaveToFile(toWide(target.path)) != 1) {
        return tl::unexpected<Error>(savingError(report.input, target));
    }
    if (before && !(before == ownershipOf(target.path))) {
        report.warnings.push_back("its owner or mode could not be kept: only the owner and the "
                                  "administrator may give a file to others");
    }
    if (backup) {
        if (const Outcome kept = backup->keep(); !kept) {
            report.warnings.push_back(kept.error().sentence);
        }
    }
    return {};
}

Error DocumentJob::savingError(const std::string& input, const Target& target)
{
    Error error = lastLibraryFailure(library, target.path)
                      .value_or(Error{Reason::LibraryFailed, {}, "can't be saved"});
    if (error.reason == Reason::OutputNotWritable || error.reason == Reason::OutputExists) {
        error.sentence = "the output " + target.name + ": " + error.sentence;
    }
    error.file = input;
    return error;
}

Outcome DocumentJob::saveToStandardOutput(DocumentReport& report)
{
    const std::string bytes = library.SaveToString();
    if (bytes.empty()) {
        return tl::unexpected<Error>(failure(report.input, "can't be saved"));
    }
    if (!settings.standardOutput || !settings.standardOutput(bytes)) {
        return fail(Reason::OutputNotWritable, report.input, "standard output can't be written");
    }
    report.status = DocumentStatus::Done;
    report.bytesAfter = bytes.size();
    return {};
}

Error DocumentJob::failure(const std::string& input, const char* otherwise)
{
    return lastLibraryFailure(library, input)
        .value_or(Error{Reason::LibraryFailed, input, otherwise});
}

} // namespace vantora
