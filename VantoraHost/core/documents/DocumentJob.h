#pragma once

#include "VantoraHost/core/Target.h"
#include "VantoraHost/core/actions/Sequence.h"
#include "VantoraHost/core/documents/IfEmpty.h"
#include "VantoraHost/core/documents/OutputVerification.h"
#include "VantoraHost/core/documents/PageForecast.h"
#include "VantoraHost/core/documents/PdfLibrary.h"
#include "VantoraHost/core/outputs/OutputGroup.h"
#include "VantoraHost/core/outputs/TargetFolder.h"
#include "VantoraHost/core/reports/DocumentReport.h"

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace vantora {

/// What the choices of a run came to for a document that was looked at before.
struct JudgedDocument {
    std::string version; ///< of its file (versionText)
    int pages = 0;
    std::string range;        ///< the pages that go
    std::set<int> unreadable; ///< pages that were asked for text that can't be read
};

/// What holds for every document of a run.
struct JobSettings {
    std::vector<std::string> passwords; ///< UTF-8, tried in order
    bool dryRun = false;                ///< work out what would happen and write nothing
    bool keepSigned = false;            ///< refuse documents with signatures
    bool strict = false;                ///< refuse to do a part of what was asked for
    bool salvage = false;               ///< do damaged documents with losses, and report these
    IfEmpty ifEmpty = IfEmpty::Blank;
    bool hashInputs = false;            ///< note the SHA-256 of each input
    bool hashOutputs = false;           ///< the same of each output
    std::string verifier;               ///< the file of the module that verifies outputs before
                                        ///< they get their names; empty: none does
    bool reportFirst = false;           ///< report outputs before they get their names, too
    std::vector<JudgedDocument> judged; ///< documents in another version are judged anew
    std::string standardInput;          ///< the document that the input "-" stands for
    mode_t standardInputMode = 0777;    ///< what others may do with the file that it comes from
    /// Takes the document whose target is standard output; returns false when that failed.
    std::function<bool(std::string_view)> standardOutput;
    /// Asked between the steps of a document: whether to give it up.
    std::function<bool()> cancelled = [] { return false; };
    /// Told of each document that is about to be saved, before `cancelled` is asked a last time.
    std::function<void()> savingBegins = [] {};
    /// Told once the output is written, and nothing is left to do but to verify it, which may take
    /// long and may be given up.
    std::function<void()> verifyingBegins = [] {};
};

/// The report of a document that could not even be begun, or whose processing broke off.
DocumentReport failedReport(const std::string& input, Error error);

/// What became of a document. An output that is a file is written, but has its name only once it is
/// placed (OutputGroup); then the report holds.
struct ProcessedDocument {
    DocumentReport report;
    std::optional<WrittenOutput> output;
};

/// Turns one document into its result: opens it, runs the sequence over it and saves it, whole or
/// not at all. The input is never written to, but replaced by a finished file where asked.
class DocumentJob {
public:
    /// All of them must outlive the job. Outputs that `verifier` finds fault with are not written;
    /// null lets all pass.
    DocumentJob(KarvelPDFLibraryCPDylibCPP1311& library, Sequence& sequence,
                const JobSettings& settings, const verification::Verifier* verifier = nullptr)
        : library_(library), sequence_(sequence), settings_(settings), verifier_(verifier)
    {
    }

    /// Does one document. `target` may be the reason why it can't be written, which is then
    /// reported without opening it; `range` are the document's own pages, where it has some.
    ProcessedDocument run(const std::string& input, const Result<Target>& target,
                          const std::optional<std::string>& range = {});

private:
    Outcome guardedProcess(ProcessedDocument& document, const Target& target);
    Outcome process(ProcessedDocument& document, const Target& target);
    Outcome openInput(DocumentReport& report, const Target& target);
    Result<OpenDocument> openDocument(const DocumentReport& report);
    Outcome changePages(DocumentReport& report);
    Outcome choosePages(DocumentReport& report, std::vector<std::string>& remarks);
    Outcome judge(DocumentReport& report, PageForecast forecast);
    Outcome rehearse(DocumentReport& report);
    Outcome prepareToSave(const std::string& input);
    Outcome save(ProcessedDocument& processed, const Target& target, const OpenDocument& document);
    Outcome saveToFile(ProcessedDocument& processed, const Target& planned,
                       const OpenDocument& document);
    Outcome writeSmall(karvel::io::OutputFile& file, const Target& target);
    Outcome writeLarge(karvel::io::OutputFile& file, const Target& target);
    Error savingError(const Target& target);
    Outcome saveToStandardOutput(DocumentReport& report, const OpenDocument& document);
    Outcome verify(DocumentReport& report, const OpenDocument& document,
                   const verification::Source& output);
    Error failure(const std::string& input, const char* otherwise);

    KarvelPDFLibraryCPDylibCPP1311& library_;
    Sequence& sequence_;
    const JobSettings& settings_;
    const verification::Verifier* const verifier_;
    TargetFolders folders_;
    std::optional<InputFile> input_; ///< of the document that it is at; none for standard input
};

} // namespace vantora
