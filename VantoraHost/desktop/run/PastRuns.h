#pragma once

#include "VantoraHost/core/reports/ReportFile.h"

#include <QtCore/QDateTime>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace vantora::desktop {

/// A run of the window, by its report.
struct PastRun {
    std::string report; ///< the file
    QDateTime begun;
    std::size_t documents = 0; ///< that it was for
};

/// The reports of this user's latest runs, in a folder that nobody else may look into. Whatever
/// else lies there is left alone.
class PastRuns {
public:
    /// The most that are kept; the oldest go.
    static constexpr std::size_t most = 20;

    /// In the user's folder for what programs remember: $XDG_STATE_HOME, or ~/.local/state.
    PastRuns();
    explicit PastRuns(std::string folder) : folder_(std::move(folder)) {}

    /// Makes room and a report for a run that begins.
    struct Begun {
        std::string path;
        ReportFile file;
    };
    Result<Begun> begin(const QDateTime& now, std::size_t documents) const;

    /// The latest first. A folder that isn't there has none.
    std::vector<PastRun> list() const;

    /// The run whose report has that name in the folder, there or not; none for any other name.
    std::optional<PastRun> named(const std::string& fileName) const;

private:
    std::string folder_;
};

} // namespace vantora::desktop
