#include "VantoraHost/core/reports/Remedy.h"

namespace vantora {

std::string commonRemedy(Reason reason)
{
    switch (reason) {
    case Reason::InputUnreadable:
        return "check its permissions";
    case Reason::Damaged:
    case Reason::PagesDamaged:
    case Reason::InputEmpty:
        return "get an undamaged copy of it";
    case Reason::EncryptionUnsupported:
        return "decrypt it with the program that encrypted it";
    case Reason::OutputNotWritable:
        return "check space and permissions there, or name another place";
    case Reason::BackupExists:
        return "move it away, since no backup is ever replaced";
    case Reason::BackupMissing:
        return "there is nothing to give back";
    case Reason::ChangedSince:
        return "look at both, and put it back by hand if what was changed isn't needed";
    case Reason::ReportUntrusted:
        return "name one of your own that nobody else may write to (chmod go-w)";
    case Reason::ChangedMeanwhile:
        return "run it again";
    case Reason::ActionUnusable:
    case Reason::LibraryMissing:
        return "the installation is incomplete; install it again";
    case Reason::DisplayMissing:
        return "run it in a desktop session, with DISPLAY or WAYLAND_DISPLAY set";
    case Reason::BadPageRange:
        return "a valid one is 1,4-6,9-15,21";
    case Reason::NotReached:
        return "leave out the document over which it ended, and run all of it again";
    case Reason::SavedNameUnfit:
        return "name it otherwise";
    default:
        return {};
    }
}

} // namespace vantora
