#include "VantoraHost/core/documents/DocumentJob.h"

#include "KarvelPDFLibrary/base/Text.h"
#include "VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h"
#include "VantoraHost/core/FileDigest.h"
#include "VantoraHost/core/FileIdentity.h"
#include "VantoraHost/core/LibraryFailure.h"
#include "VantoraHost/core/PageNumbers.h"
#include "VantoraHost/core/choices/LibraryFacts.h"
#include "VantoraHost/core/documents/PageForecast.h"
#include "VantoraHost/core/outputs/OutputPlan.h"
#include "VantoraHost/core/outputs/TargetFolder.h"

#include <chrono>
#include <exception>
#include <filesystem>
#include <new>
#include <optional>
#include <stdexcept>
#include <system_error>

namespace vantora {

using karvel::text::toWide;

namespace {

// Up to this size, a document is written from memory, so that its output waits for the disk
// together with others.
constexpr std::uint64_t largestSmall = 1024 * 1024;

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

ProcessedDocument DocumentJob::run(const std::string& input, const Result<Target>& target,
                                   const std::optional<std::string>& range)
{
    const auto start = std::chrono::steady_clock::now();
    ProcessedDocument document;
    DocumentReport& report = document.report;
    report.input = input;
    report.range = range;
    Outcome done =
        target ? guardedProcess(document, *target) : tl::unexpected<Error>(target.error());
    input_.reset();
    if (!done) {
        document.output.reset();
        done.error().sentence = withoutFile(std::move(done.error().sentence), input);
        if (!report.bytesBefore) {
            report.bytesBefore = sizeOf(input);
        }
        turnIntoFailure(report, std::move(done.error()));
    }
    report.seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    return document;
}

// Running out of memory over one document is no reason to give up the others.
Outcome DocumentJob::guardedProcess(ProcessedDocument& document, const Target& target)
{
    try {
        return process(document, target);
    } catch (const std::bad_alloc&) {
        return fail(Reason::OutOfMemory, {}, "there is not enough memory for it");
    } catch (const std::exception& error) {
        return fail(Reason::LibraryFailed, {}, error.what());
    }
}

Outcome DocumentJob::process(ProcessedDocument& processed, const Target& target)
{
    DocumentReport& report = processed.report;
    if (const Outcome opened = openInput(report, target); !opened) {
        return opened;
    }
    const Result<OpenDocument> document = openDocument(report);
    if (!document) {
        return tl::unexpected<Error>(document.error());
    }
    if (settings_.keepSigned) {
        if (const Outcome checked = document->checkUnsigned(report.input); !checked) {
            return checked;
        }
    }
    report.output = target.name;
    const Outcome done = [&]() -> Outcome {
        const Outcome changed = changePages(report);
        if (!changed || report.status == DocumentStatus::Skipped) {
            return changed;
        }
        if (settings_.dryRun) {
            return rehearse(report);
        }
        settings_.savingBegins();
        if (settings_.cancelled()) {
            return fail(Reason::Interrupted, report.input, "interrupted");
        }
        return save(processed, target, *document);
    }();
    if (!report.outputExisted && !target.path.empty()) {
        report.outputExisted = isThere(target.path); // the output has not got its name yet
    }
    // What is damaged may show only when it is read, at the latest when saving.
    report.repairs = document->repairs();
    if (done) {
        const std::vector<std::string> remarks = document->remarks();
        report.warnings.insert(report.warnings.end(), remarks.begin(), remarks.end());
        report.leftToJudge = document->leftToJudge();
        report.losses = document->losses();
        if (!report.losses.empty()) { // pages may be among them
            report.pagesAfter = library_.PageCount();
        }
    }
    return done;
}

Outcome DocumentJob::openInput(DocumentReport& report, const Target& target)
{
    if (report.input == standardStream) {
        report.bytesBefore = settings_.standardInput.size();
        report.inputSha256 = settings_.hashInputs ? sha256Of(settings_.standardInput) : "";
        return {};
    }
    Result<InputFile> opened =
        target.inPlace ? InputFile::open(report.input, target) : InputFile::open(report.input);
    if (!opened) {
        return tl::unexpected<Error>(std::move(opened.error()));
    }
    if (target.input && opened->version() != *target.input) {
        return fail(Reason::ChangedMeanwhile, report.input,
                    "was changed, or another file was put in its place, before it was opened");
    }
    input_.emplace(std::move(*opened));
    report.bytesBefore = static_cast<std::uint64_t>(input_->version().size);
    report.inputModified = std::to_string(input_->version().modified);
    if (settings_.hashInputs) {
        report.inputSha256 = sha256Of(input_->descriptor()).value_or("");
    }
    return {};
}

Result<OpenDocument> DocumentJob::openDocument(const DocumentReport& report)
{
    constexpr int rebuild = 1;
    constexpr int rebuildAndSalvage = 2;
    library_.SetReconstruction(settings_.salvage ? rebuildAndSalvage : rebuild);
    return input_ ? OpenDocument::open(library_, report.input, *input_, settings_.passwords,
                                       sequence_.access())
                  : OpenDocument::open(library_, report.input, settings_.standardInput,
                                       settings_.passwords, sequence_.access());
}

Outcome DocumentJob::changePages(DocumentReport& report)
{
    library_.ClearLastError();
    const int pages = library_.PageCount();
    if (pages <= 0) {
        return tl::unexpected<Error>(failure(report.input, "has no pages"));
    }
    report.pagesBefore = pages;
    std::vector<std::string> remarks;
    if (const Outcome chosen = choosePages(report, remarks); !chosen) {
        return chosen;
    }
    std::optional<PageForecast> forecast = forecastPages(sequence_, pages);
    if (forecast) {
        const Outcome judged = judge(report, *forecast);
        report.warnings.insert(report.warnings.end(), remarks.begin(), remarks.end());
        if (!judged || report.status == DocumentStatus::Skipped) {
            return judged;
        }
    } else if (settings_.dryRun) {
        return {}; // what an unknown action does may reach further than the document
    }
    if (Outcome processed = sequence_.process(library_); !processed) {
        processed.error().file = report.input;
        return processed;
    }
    const int left = library_.PageCount();
    if (forecast && left != forecast->pagesAfter) {
        return fail(Reason::ActionFailed, report.input,
                    "it has " + std::to_string(left) + " pages after the actions where " +
                        std::to_string(forecast->pagesAfter) + " were to be left");
    }
    report.pagesAfter = left;
    return {};
}

// Which pages the first step is about, and what could not be found out about them.
Outcome DocumentJob::choosePages(DocumentReport& report, std::vector<std::string>& remarks)
{
    const std::string version = input_ ? versionText(input_->version()) : "";
    for (const JudgedDocument& judged : settings_.judged) {
        if (!report.range && judged.version == version && judged.pages == report.pagesBefore) {
            sequence_.takePages(judged.range);
            remarks = unreadableTextRemarks(judged.unreadable);
            return {};
        }
    }
    LibraryFacts facts(library_, report.input);
    const Outcome chosen = sequence_.choosePages(facts, report.range);
    remarks = facts.remarks();
    return chosen;
}

// Whether the document is to be done, by what is going to become of its pages.
Outcome DocumentJob::judge(DocumentReport& report, PageForecast forecast)
{
    report.inPart = !forecast.unmet.empty();
    if (settings_.strict && report.inPart) {
        return fail(Reason::InPart, {}, std::move(forecast.unmet.front()));
    }
    report.warnings = std::move(forecast.unmet);
    if (!forecast.emptied.empty() && settings_.ifEmpty == IfEmpty::Fail) {
        return fail(Reason::Empty, {}, forecast.emptied.front() + ", so none would be left");
    }
    if (!forecast.emptied.empty() && settings_.ifEmpty == IfEmpty::Skip) {
        report.warnings.push_back(forecast.emptied.front() + "; the document is left out");
        report.status = DocumentStatus::Skipped;
        report.output.clear();
        return {};
    }
    report.leftBlank = !forecast.emptied.empty();
    for (const std::string& emptied : forecast.emptied) {
        report.warnings.push_back(emptied + "; one blank page is left");
    }
    report.pagesRemoved = std::move(forecast.removed);
    report.pagesAfter = forecast.pagesAfter;
    return {};
}

// Saves to nowhere, because much of what a document loses beside its pages, and what is damaged in
// it, shows only then.
Outcome DocumentJob::rehearse(DocumentReport& report)
{
    constexpr std::uint64_t largestInMemory = 256 * 1024 * 1024;
    report.status = DocumentStatus::Planned;
    if (!report.pagesRemoved) {
        return {};
    }
    if (const Outcome prepared = prepareToSave(report.input); !prepared) {
        return prepared;
    }
    if (report.bytesBefore.value_or(0) > largestInMemory) {
        library_.FieldCount(); // puts right what refers to the pages that are gone
        return {};
    }
    try {
        const std::string bytes = library_.SaveToString();
        if (!bytes.empty()) {
            report.bytesAfter = bytes.size();
        } else if (lastLibraryCode(library_) != LibraryCode::OutOfMemory) {
            return tl::unexpected<Error>(failure(report.input, "can't be saved"));
        }
    } catch (const std::bad_alloc&) {
        // The real run copies from file to file; what there was to say has been said.
    }
    return {};
}

Outcome DocumentJob::save(ProcessedDocument& processed, const Target& target,
                          const OpenDocument& document)
{
    DocumentReport& report = processed.report;
    if (const Outcome prepared = prepareToSave(report.input); !prepared) {
        return prepared;
    }
    if (target.standardOutput) {
        return saveToStandardOutput(report, document);
    }
    if (const Outcome saved = saveToFile(processed, target, document); !saved) {
        return saved;
    }
    report.status = DocumentStatus::Done;
    return {};
}

// Lets the document be saved as it was in everything but its pages.
Outcome DocumentJob::prepareToSave(const std::string& input)
{
    const bool encrypted = library_.IsEncrypted() == 1;
    library_.ClearLastError();
    constexpr int keepAsTheyAre = 0;
    library_.SetObjectStreamMode(keepAsTheyAre);
    library_.SetStreamDataMode(keepAsTheyAre);
    library_.SetLinearization(library_.IsLinearized());
    library_.SetDeterministicIdentifier(encrypted ? 0 : 1);
    // What it replaces, if anything, is a temporary file of this job's.
    library_.SetOverwriteMode(1);
    if (library_.LastErrorCode() != 0) {
        return tl::unexpected<Error>(failure(input, "can't be saved"));
    }
    return {};
}

Outcome DocumentJob::saveToFile(ProcessedDocument& processed, const Target& planned,
                                const OpenDocument& document)
{
    using karvel::io::OutputFile;
    Target target = planned;
    if (target.number) { // another run may have taken the name after this one had looked
        target = underFreeName(target);
        processed.report.output = target.name;
    }
    if (target.inPlace) {
        target.replaced = input_->version();
    }
    const auto folder = folders_.of(target);
    if (!folder) {
        return tl::unexpected<Error>(folder.error());
    }
    auto file = OutputFile::create(*folder, target.path,
                                   target.replaced ? karvel::io::Existing::Replace
                                                   : karvel::io::Existing::Refuse);
    if (!file) {
        return tl::unexpected<Error>(outputFailure(file.error(), target));
    }
    if (!target.number) {
        processed.report.outputExisted = file->existed();
    }
    if (target.replaced) {
        file->replaceOnly(*target.replaced);
    }
    file->allowAtMost(input_ ? input_->mode() : settings_.standardInputMode);
    const bool small = processed.report.bytesBefore.value_or(0) <= largestSmall;
    if (Outcome written = small ? writeSmall(*file, target) : writeLarge(*file, target); !written) {
        return written;
    }
    if (const karvel::Outcome flushed = file->flush(); !flushed) {
        return tl::unexpected<Error>(outputFailure(flushed.error(), target));
    }
    if (const Outcome verified =
            verify(processed.report, document, karvel::io::pathOf(file->descriptor()));
        !verified) {
        return verified;
    }
    if (settings_.hashOutputs) {
        processed.report.outputSha256 =
            sha256OfFile(karvel::io::pathOf(file->descriptor())).value_or("");
    }
    if (const karvel::Outcome prepared = file->prepare(); !prepared) {
        return tl::unexpected<Error>(outputFailure(prepared.error(), target));
    }
    const auto written = karvel::io::versionOf(file->descriptor());
    if (!written) {
        return fail(Reason::OutputNotWritable, {}, "the output " + target.name + " got lost");
    }
    processed.report.bytesAfter = static_cast<std::uint64_t>(written->size);
    processed.report.outputModified = std::to_string(written->modified);
    processed.output.emplace(
        WrittenOutput{std::move(*file), target, {written->device, written->inode}});
    return {};
}

Outcome DocumentJob::writeSmall(karvel::io::OutputFile& file, const Target& target)
{
    const std::string bytes = library_.SaveToString();
    if (bytes.empty()) {
        return tl::unexpected<Error>(savingError(target));
    }
    try {
        file.write(bytes.data(), bytes.size());
    } catch (const std::runtime_error& error) {
        return tl::unexpected<Error>(
            outputFailure({karvel::ErrorCode::FileNotWritable, error.what()}, target));
    }
    return {};
}

// The library copies what stays the same from file to file, without taking it into memory.
Outcome DocumentJob::writeLarge(karvel::io::OutputFile& file, const Target& target)
{
    if (library_.SaveToFile(toWide(karvel::io::pathOf(file.descriptor()))) != 1) {
        return tl::unexpected<Error>(savingError(target));
    }
    return {};
}

Error DocumentJob::savingError(const Target& target)
{
    Error error = failure(target.path, "can't be saved");
    if (error.reason == Reason::OutputNotWritable || error.reason == Reason::OutputExists) {
        error.sentence = "the output " + target.name + ": " + error.sentence;
    }
    return error;
}

Outcome DocumentJob::saveToStandardOutput(DocumentReport& report, const OpenDocument& document)
{
    const std::string bytes = library_.SaveToString();
    if (bytes.empty()) {
        return tl::unexpected<Error>(failure(report.input, "can't be saved"));
    }
    if (const Outcome verified = verify(report, document, std::string_view(bytes)); !verified) {
        return verified;
    }
    if (!settings_.standardOutput || !settings_.standardOutput(bytes)) {
        return fail(Reason::OutputNotWritable, report.input, "standard output can't be written");
    }
    report.status = DocumentStatus::Done;
    report.bytesAfter = bytes.size();
    report.outputSha256 = settings_.hashOutputs ? sha256Of(bytes) : "";
    return {};
}

// The output has no name yet, and gets none when this fails.
Outcome DocumentJob::verify(DocumentReport& report, const OpenDocument& document,
                            const verification::Source& output)
{
    if (verifier_ == nullptr) {
        return {};
    }
    settings_.verifyingBegins();
    if (settings_.cancelled()) {
        return fail(Reason::Interrupted, report.input, "interrupted");
    }
    const verification::Source input =
        input_ ? verification::Source(karvel::io::pathOf(input_->descriptor()))
               : verification::Source(std::string_view(settings_.standardInput));
    auto verified = verifyOutput(
        *verifier_, {input, output, {}, settings_.passwords, report.pagesBefore.value_or(0)},
        report.pagesRemoved, document.losses(), library_.PageCount());
    if (!verified) {
        return tl::unexpected<Error>(std::move(verified.error()));
    }
    report.verified = std::move(*verified);
    return {};
}

Error DocumentJob::failure(const std::string& input, const char* otherwise)
{
    Error error = lastLibraryFailure(library_, input)
                      .value_or(Error{Reason::LibraryFailed, input, otherwise});
    if (error.reason == Reason::Damaged && !settings_.salvage) {
        error.reason = Reason::PagesDamaged; // the document is open
    }
    return error;
}

} // namespace vantora
