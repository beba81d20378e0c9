#include "VantoraHost/core/Error.h"

#include <system_error>

namespace vantora {

const char* reasonName(Reason reason)
{
    switch (reason) {
    case Reason::InputMissing:
        return "input-missing";
    case Reason::InputNotAFile:
        return "input-not-a-file";
    case Reason::InputEmpty:
        return "input-empty";
    case Reason::InputUnreadable:
        return "input-unreadable";
    case Reason::NotPdf:
        return "not-pdf";
    case Reason::Damaged:
        return "damaged";
    case Reason::PagesDamaged:
        return "pages-damaged";
    case Reason::Empty:
        return "empty";
    case Reason::InPart:
        return "in-part";
    case Reason::PasswordNeeded:
        return "password-needed";
    case Reason::PasswordWrong:
        return "password-wrong";
    case Reason::NotPermitted:
        return "not-permitted";
    case Reason::Signed:
        return "signed";
    case Reason::EncryptionUnsupported:
        return "encryption-unsupported";
    case Reason::OutputExists:
        return "output-exists";
    case Reason::OutputIsInput:
        return "output-is-input";
    case Reason::OutputClash:
        return "output-clash";
    case Reason::OutputFolderMissing:
        return "output-folder-missing";
    case Reason::OutputFolderIsLink:
        return "output-folder-is-link";
    case Reason::OutputNotAFile:
        return "output-not-a-file";
    case Reason::OutputNotWritable:
        return "output-not-writable";
    case Reason::OutputKept:
        return "output-kept";
    case Reason::BackupExists:
        return "backup-exists";
    case Reason::BackupMissing:
        return "backup-missing";
    case Reason::ChangedMeanwhile:
        return "changed-meanwhile";
    case Reason::ChangedSince:
        return "changed-since";
    case Reason::NotVerified:
        return "not-verified";
    case Reason::ActionMissing:
        return "action-missing";
    case Reason::ActionUnusable:
        return "action-unusable";
    case Reason::ActionFailed:
        return "action-failed";
    case Reason::BadPageRange:
        return "bad-page-range";
    case Reason::BadChoice:
        return "bad-choice";
    case Reason::BadRanges:
        return "bad-ranges";
    case Reason::OptionUnknown:
        return "option-unknown";
    case Reason::SavedStepsUnusable:
        return "saved-steps-unusable";
    case Reason::ActionListMissing:
        return "action-list-missing";
    case Reason::FavouriteMissing:
        return "favourite-missing";
    case Reason::SavedStepsExist:
        return "saved-steps-exist";
    case Reason::SavedNameUnfit:
        return "saved-name-unfit";
    case Reason::SavedStepMissing:
        return "saved-step-missing";
    case Reason::DisplayMissing:
        return "display-missing";
    case Reason::LibraryMissing:
        return "library-missing";
    case Reason::LibraryFailed:
        return "library-failed";
    case Reason::OutOfMemory:
        return "out-of-memory";
    case Reason::TimedOut:
        return "timed-out";
    case Reason::Crashed:
        return "crashed";
    case Reason::Killed:
        return "killed";
    case Reason::WorkerFailed:
        return "worker-failed";
    case Reason::NotReached:
        return "not-reached";
    case Reason::ReportExists:
        return "report-exists";
    case Reason::NotAReport:
        return "not-a-report";
    case Reason::ReportTooOld:
        return "report-too-old";
    case Reason::ReportUntrusted:
        return "report-untrusted";
    case Reason::StepsDiffer:
        return "steps-differ";
    case Reason::WrongUsage:
        return "wrong-usage";
    case Reason::ReportMisplaced:
        return "report-misplaced";
    case Reason::Interrupted:
        return "interrupted";
    }
    return "unknown";
}

std::vector<std::string> reasonNames()
{
    std::vector<std::string> names;
    for (int number = 0; number <= static_cast<int>(Reason::Interrupted); ++number) {
        names.emplace_back(reasonName(static_cast<Reason>(number)));
    }
    return names;
}

std::optional<Reason> reasonNamed(std::string_view name)
{
    for (int number = 0; number <= static_cast<int>(Reason::Interrupted); ++number) {
        if (name == reasonName(static_cast<Reason>(number))) {
            return static_cast<Reason>(number);
        }
    }
    return std::nullopt;
}

Error noSense()
{
    return {Reason::Crashed, {}, "the worker process that was at it made no sense"};
}

std::string systemMessage(int errorNumber)
{
    return std::generic_category().message(errorNumber);
}

} // namespace vantora
