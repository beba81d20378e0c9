#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <tl/expected.hpp>
#include <utility>
#include <vector>

namespace vantora {

/// Why something failed, for programs and for the remedy that a front end adds. The names of
/// reasonName are part of the reports' format.
enum class Reason {
    InputMissing,
    InputNotAFile,
    InputEmpty,
    InputUnreadable,
    NotPdf,
    Damaged,
    PagesDamaged, ///< in a document that can be opened
    Empty,
    InPart,
    PasswordNeeded,
    PasswordWrong,
    NotPermitted,
    Signed,
    EncryptionUnsupported,
    OutputExists,
    OutputIsInput,
    OutputClash,
    OutputFolderMissing,
    OutputFolderIsLink,
    OutputNotAFile,
    OutputNotWritable,
    OutputKept,
    BackupExists,
    BackupMissing,
    ChangedMeanwhile,
    ChangedSince,
    NotVerified,
    ActionMissing,
    ActionUnusable,
    ActionFailed,
    BadPageRange,
    OptionUnknown,
    BadChoice,
    BadRanges,
    SavedStepsUnusable,
    ActionListMissing,
    FavouriteMissing,
    SavedStepsExist,
    SavedNameUnfit,
    SavedStepMissing,
    DisplayMissing,
    LibraryMissing,
    LibraryFailed,
    OutOfMemory,
    TimedOut,
    Crashed,
    Killed,
    WorkerFailed,
    NotReached,
    ReportExists,
    NotAReport,
    ReportTooOld,
    ReportUntrusted,
    StepsDiffer,
    WrongUsage,
    ReportMisplaced,
    Interrupted,
};

/// A short lower-case name such as "output-exists".
const char* reasonName(Reason reason);

/// The names of all reasons.
std::vector<std::string> reasonNames();

/// The reason of that name; none when no reason is called so.
std::optional<Reason> reasonNamed(std::string_view name);

/// What went wrong with which file (empty when it is none in particular): one sentence (UTF-8)
/// without a full stop, fit to follow the file's name and a colon.
struct Error {
    Reason reason;
    std::string file;
    std::string sentence;
};

template <class T>
using Result = tl::expected<T, Error>;

/// Success or an error.
using Outcome = tl::expected<void, Error>;

inline tl::unexpected<Error> fail(Reason reason, std::string file, std::string sentence)
{
    return tl::unexpected<Error>(Error{reason, std::move(file), std::move(sentence)});
}

/// That the process which was at a document said what is no answer.
Error noSense();

/// The system's words for an errno value, such as "No space left on device".
std::string systemMessage(int errorNumber);

} // namespace vantora
