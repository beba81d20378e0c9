#pragma once

#include "VantoraHost/cli/run/RunReporter.h"
#include "VantoraHost/core/reports/ReportFile.h"
#include "VantoraHost/core/watching/FolderWatch.h"
#include "VantoraHost/core/watching/WatchState.h"

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

namespace vantora::cli {

/// What becomes of a document that was handed out.
enum class Fate {
    Settled, ///< it is done or has failed
    Again,   ///< it isn't what it was, or nobody got to it
    Trouble, ///< what keeps it from being done has nothing to do with it, such as a full disk
};

/// Hears how a group of documents that have arrived is done, notes it in the watch's report and
/// state, and hands on what is settled to be printed.
class GroupReporter : public RunObserver {
public:
    /// Says of a document whose output can't be written that it is itself to blame.
    using IsToBlame = std::function<bool(const std::string& path)>;

    /// All of them must outlive the object.
    GroupReporter(const std::vector<WatchedDocument>& documents, RunReporter& printer,
                  ReportFile& report, const RunIdentity& run, WatchState& state,
                  IsToBlame isToBlame);

    void outputsGetNames(const std::vector<DocumentReport>& reports) override;
    void documentArrived(const DocumentReport& report) override;
    void documentInTurn(const DocumentReport& report) override;
    bool cancelled() const override;

    /// A document with its fate; those that the group left undone have none.
    struct Settled {
        const WatchedDocument* document;
        DocumentStatus status;
    };
    const std::vector<Settled>& settled() const { return settled_; }

    /// Those that are not settled.
    std::vector<const WatchedDocument*> left() const;

    /// What the first trouble was.
    const std::optional<Error>& trouble() const { return trouble_; }

private:
    Fate fateOf(const DocumentReport& report, const WatchedDocument& document) const;

    RunReporter& printer_;
    ReportFile& report_;
    const RunIdentity& run_;
    WatchState& state_;
    const IsToBlame isToBlame_;
    std::map<std::string, const WatchedDocument*> open_; ///< not settled, by path
    std::unordered_set<std::string> silent_;             ///< nothing is said of them
    std::vector<Settled> settled_;
    std::optional<Error> trouble_;
    bool unreported_ = false; ///< the report can't be written
};

} // namespace vantora::cli
