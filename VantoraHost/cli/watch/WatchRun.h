#pragma once

#include "VantoraHost/cli/console/Streams.h"
#include "VantoraHost/cli/gui_part/GuiPart.h"
#include "VantoraHost/cli/run/CarryOut.h"
#include "VantoraHost/cli/watch/GroupReporter.h"
#include "VantoraHost/cli/watch/WatchOptions.h"
#include "VantoraHost/core/Installation.h"
#include "VantoraHost/core/reports/ReportFile.h"
#include "VantoraHost/core/watching/FolderWatch.h"
#include "VantoraHost/core/watching/WatchState.h"

#include <cstddef>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace vantora::cli {

/// A watch at work: takes documents as they arrive, in groups, carries the steps out over them and
/// keeps its report.
class WatchRun {
public:
    /// What a watch works with, all of it found and opened.
    struct Equipment {
        RunSteps steps;
        std::vector<std::string> passwords;
        std::vector<WatchedFolder> folders;
        ReportFile report;
    };

    /// The other arguments must outlive the object.
    WatchRun(const WatchOptions& options, Equipment equipment, const Installation& installation,
             const GuiPartSource& guiPart, const Streams& streams);

    /// Works until it is asked to stop, or, where it is to end, nothing is left. Returns the exit
    /// status.
    int run();

private:
    Outcome readState();
    void sayWhatIsWatched() const;
    bool isDone(const WatchedDocument& document);
    std::vector<WatchedDocument> withDifferentOutputs(std::vector<WatchedDocument> documents);
    std::vector<WatchedDocument> withRoomInReport(std::vector<WatchedDocument> documents);
    Outcome doGroup(const std::vector<WatchedDocument>& documents);
    Result<Batch> planned(const std::vector<WatchedDocument>& documents);
    void finishGroup(const GroupReporter& group);
    void waitOut(const std::vector<const WatchedDocument*>& documents, const Error& trouble);
    void putAway(const WatchedDocument& document, DocumentStatus status);
    int status() const;

    const WatchOptions& options_;
    const Installation& installation_;
    const GuiPartSource& guiPart_;
    const Streams& streams_;
    Equipment with_;
    const RunIdentity identity_;
    WatchState state_;
    FolderWatch watch_;
    bool foldersAreTidy_ = false;
    std::size_t done_ = 0;
    std::size_t failed_ = 0;
    bool someFailed_ = false; ///< for a reason that counts
    bool someLost_ = false;
    unsigned troubles_ = 0; ///< in a row
    FolderWatch::Time notBefore_{};
    std::unordered_map<std::string, unsigned> faults_; ///< troubles while others were done, by path
    std::unordered_set<std::string> stuck_;            ///< can't be moved
};

} // namespace vantora::cli
