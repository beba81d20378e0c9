#pragma once

#include "VantoraHost/core/Error.h"
#include "VantoraHost/core/FileIdentity.h"
#include "VantoraHost/core/reports/DocumentReport.h"

#include <functional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace vantora {

/// What the reports of earlier runs say is done.
class EarlierReports {
public:
    /// Reads reports as ReportFile writes them. The later line counts where two name one input,
    /// but for documents done in place: the state of their file tells better.
    /// An incomplete line at the end, which a stopped machine leaves, is passed over; anything else
    /// that is no report of a document is an error.
    static Result<EarlierReports> read(const std::vector<std::string>& paths);

    /// Whether this run's output for an input may have that name.
    using IsPlanned = std::function<bool(const std::string& output)>;

    /// Whether an input, named as it was then, is done and its output still is as it was written.
    /// A report may be forged: it is believed only of outputs that this run would write, too.
    bool stillDone(const std::string& input, const IsPlanned& isPlanned) const;

    /// Whether it names an output that isn't an input done in place.
    bool namesOutput(const std::string& path) const { return outputs.count(path) != 0; }

private:
    struct Written {
        std::string output;
        FileState state;
    };

    Outcome readOne(const std::string& path);
    void take(DocumentReport report);
    void noteFailure(const std::string& input);

    std::unordered_map<std::string, Written> done;
    std::unordered_set<std::string> outputs; ///< without needless parts in their paths
};

} // namespace vantora
