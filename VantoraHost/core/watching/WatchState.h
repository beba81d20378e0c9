#pragma once

#include "VantoraHost/core/Error.h"
#include "VantoraHost/core/FileIdentity.h"
#include "VantoraHost/core/reports/DocumentReport.h"

#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace vantora {

/// What has become of documents that arrived, as their watch's report has it. An output is
/// announced there, as one that is planned, before it gets its name, and the document is done there
/// after: so whenever the watch is cut off, what is there tells which of both it was.
class WatchState {
public:
    /// Reads what a report says of those documents. Without `failuresCount`, what failed is to be
    /// done: it wouldn't be there if it hadn't been put there again.
    Outcome read(const std::string& report, bool failuresCount,
                 const std::function<bool(const std::string& path)>& concerns);

    /// Takes out those whose outputs were announced and have got their names, though no line says
    /// so: they are done.
    std::vector<DocumentReport> takePlaced();

    /// What became of a document in that version; none when it is to be done.
    std::optional<DocumentStatus> of(const std::string& path, const FileVersion& version) const;

    /// Something became of it. What isn't said of its version is taken from the one that was seen.
    void note(const DocumentReport& report, const FileVersion& seen);

    /// It isn't where it was, and another one may come there.
    void forget(const std::string& path) { known_.erase(path); }

    std::size_t size() const { return known_.size(); }

private:
    struct Known {
        DocumentStatus status = DocumentStatus::Failed;
        FileState state;
        std::optional<FileIdentity> file; ///< none where only the report tells
        std::string sha256;               ///< empty where it wasn't noted
    };

    std::unordered_map<std::string, Known> known_;              ///< by path
    std::unordered_map<std::string, DocumentReport> announced_; ///< the same
};

} // namespace vantora
