#include "VantoraHost/core/watching/WatchState.h"

#include "VantoraHost/core/FileDigest.h"
#include "VantoraHost/core/reports/ReportReading.h"

namespace vantora {

Outcome WatchState::read(const std::string& report, bool failuresCount,
                         const std::function<bool(const std::string&)>& concerns)
{
    return readReport(report, ReportWriter::Anybody,
                      [&](DocumentReport line, const QJsonObject&, std::size_t) -> Outcome {
                          if (!concerns(line.input)) {
                              return {};
                          }
                          if (line.status == DocumentStatus::Planned) {
                              announced_[line.input] = std::move(line);
                              return {};
                          }
                          announced_.erase(line.input);
                          if (line.status == DocumentStatus::Failed && !failuresCount) {
                              known_.erase(line.input);
                              return {};
                          }
                          known_[line.input] = {line.status,
                                                {line.bytesBefore.value_or(0), line.inputModified},
                                                std::nullopt,
                                                line.inputSha256};
                          return {};
                      });
}

std::vector<DocumentReport> WatchState::takePlaced()
{
    std::vector<DocumentReport> placed;
    for (auto& [path, report] : announced_) {
        const FileState written = {report.bytesAfter.value_or(0), report.outputModified};
        if (isStill(stateOf(report.output), written)) {
            report.status = DocumentStatus::Done;
            known_[path] = {report.status,
                            {report.bytesBefore.value_or(0), report.inputModified},
                            std::nullopt,
                            report.inputSha256};
            placed.push_back(std::move(report));
        }
    }
    announced_.clear();
    return placed;
}

std::optional<DocumentStatus> WatchState::of(const std::string& path,
                                             const FileVersion& version) const
{
    const auto found = known_.find(path);
    if (found == known_.end()) {
        return std::nullopt;
    }
    const Known& known = found->second;
    const FileIdentity file = {version.device, version.inode};
    const bool isOther = known.file && !(*known.file == file);
    if (isOther || !isStill(stateOf(version), known.state)) {
        return std::nullopt;
    }
    if (!known.file && !known.sha256.empty() && sha256OfFile(path) != known.sha256) {
        return std::nullopt;
    }
    return known.status;
}

void WatchState::note(const DocumentReport& report, const FileVersion& seen)
{
    known_[report.input] = {report.status, stateOf(seen), FileIdentity{seen.device, seen.inode},
                            report.inputSha256};
}

} // namespace vantora
