#pragma once

#include "VantoraHost/core/language/Language.h"

#include <functional>
#include <iosfwd>

namespace vantora::cli {

/// What a command talks to, so that tests can put their own in its place.
struct Streams {
    int in = 0;        ///< descriptor of standard input: only so a signal can end the reading
    std::ostream& out; ///< results
    std::ostream& err; ///< messages and progress
    bool outIsTerminal = false;
    bool errIsTerminal = false;
    bool colour = false; ///< whether messages may be coloured
    /// Whether the person has asked to stop.
    std::function<bool()> interrupted = [] { return false; };
    /// In which people are spoken to; what other programs read is English whatever it is.
    Language language = {};
};

/// The program's exit statuses.
enum ExitStatus {
    AllDone = 0,
    SomeFailed = 1,
    WrongUsage = 2,
    DoneWithLosses = 3,
    InterruptedByUser = 130,
};

} // namespace vantora::cli
