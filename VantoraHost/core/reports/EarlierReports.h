#pragma once

#include "VantoraHost/core/Error.h"
#include "VantoraHost/core/FileIdentity.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace vantora {

/// Whether a file begins with a line that a ReportFile wrote, or with a piece of one.
bool beginsAsAReport(const std::string& path);

/// What the reports of earlier runs say is done.
class EarlierReports {
public:
    /// Reads reports as ReportFile writes them. The later line counts where two name one input,
    /// but for documents done in place: the state of their file tells better.
    /// An incomplete line at the end, which a stopped machine leaves, is passed over; anything else
    /// that is no report of a document is an error.
    static Result<EarlierReports> read(const std::vector<std::string>& paths);

    /// Whether an input, named as it was then, is done and its output still is as it was written.
    bool stillDone(const std::string& input) const;

private:
    struct Written {
        std::string output;
        FileState state;
    };

    Outcome readOne(const std::string& path);
    void noteFailure(const std::string& input);

    std::unordered_map<std::string, Written> done;
};

} // namespace vantora
