#pragma once

#include "VantoraHost/core/Error.h"
#include "VantoraHost/core/FileIdentity.h"
#include "VantoraHost/core/Inputs.h"
#include "VantoraHost/core/reports/DocumentReport.h"

#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

namespace vantora {

/// How an input is to what the reports of earlier runs say of it.
enum class SinceReport {
    NotDone,     ///< they don't say that it is done
    Same,        ///< it is done, and this run would make the same of it
    OtherOutput, ///< its output isn't one that this run would write
    OutputGone,
    OutputChanged,
    InputChanged, ///< in size, time or content
    OtherSteps,   ///< what was done to it isn't what this run does
    OtherVersion, ///< another version of the program did it
};

/// What the reports of earlier runs say is done. Of a document that was replaced by its own output
/// the file tells: as long as it is that output, it is the same, whatever version wrote it, since
/// doing it once more would change it twice.
class EarlierReports {
public:
    /// Reads reports as ReportFile writes them. Only what they say of these inputs is kept, so that
    /// no report takes more memory than the run. The later line counts where two name one input,
    /// but for documents done in place: the state of their file tells better.
    /// An incomplete line at the end, which a stopped machine leaves, is passed over; anything else
    /// that is no report of a document is an error, and so are lines of versions that didn't note
    /// what they did.
    static Result<EarlierReports> read(const std::vector<std::string>& paths,
                                       const std::vector<Input>& inputs, const RunIdentity& run);

    /// Whether this run's output for an input may have that name.
    using IsPlanned = std::function<bool(const std::string& output)>;

    /// How an input, named as it was then, is now. A report may be forged: it is believed only of
    /// outputs that this run would write, too, and that are as it says.
    SinceReport since(const std::string& input, const IsPlanned& isPlanned) const;

    /// Whether it was replaced by its own output.
    bool wasInPlace(const std::string& input) const;

    /// Whether an input, by its normalPath, is an output that isn't an input done in place, and
    /// still is as it was written.
    bool namesOutput(const std::string& path) const;

    /// Whether inputs have to be read to tell whether they are the same.
    bool hasHashes() const { return hashes_; }

private:
    struct Written {
        std::string output;
        FileState outputState;
        FileState inputState;
        std::string inputSha256; ///< empty where it wasn't noted
        bool bySameSteps;
        bool bySameVersion;
    };
    class Reader;

    std::unordered_map<std::string, Written> done_;      ///< by input
    std::unordered_map<std::string, FileState> outputs_; ///< by normalPath
    bool hashes_ = false;
};

} // namespace vantora
