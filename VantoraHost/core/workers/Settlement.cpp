#include "VantoraHost/core/workers/Settlement.h"

#include "KarvelPDFLibrary/io/Durability.h"
#include "KarvelPDFLibrary/io/TemporaryFile.h"
#include "VantoraHost/core/FileIdentity.h"
#include "VantoraHost/core/outputs/Backup.h"

#include <set>

namespace vantora {

namespace {

// The name is not enough: another file may have been there before, or somebody else's may have
// come.
bool isPlaced(const WorkerWritten& written, const Target& target)
{
    const std::string& path = target.number ? written.report.output : target.path;
    const auto identity = identityOf(path);
    const auto state = stateOf(path);
    return identity && state && *identity == written.output &&
           state->size == written.report.bytesAfter &&
           state->changed == written.report.outputModified;
}

std::set<std::string> foldersOf(const CrewMember& member, const Batch& batch)
{
    std::set<std::string> folders;
    const auto note = [&](std::size_t document) {
        const Target& target = *batch.targets[document];
        if (!target.path.empty() && !batch.settings.dryRun) {
            folders.insert(karvel::io::folderOf(target.path));
        }
    };
    if (!member.documents.empty()) {
        note(member.documents.front());
    }
    for (const auto& [document, written] : member.written) {
        note(document);
    }
    return folders;
}

} // namespace

std::vector<std::size_t> settleOutputsOf(const CrewMember& member, const Batch& batch)
{
    std::vector<std::size_t> placed;
    for (const auto& [document, written] : member.written) {
        if (isPlaced(written, *batch.targets[document])) {
            placed.push_back(document);
        }
    }
    for (const std::string& folder : foldersOf(member, batch)) {
        karvel::io::removeAbandoned(folder);
        settleAbandonedBackups(folder);
        karvel::io::syncFolder(folder);
    }
    return placed;
}

} // namespace vantora
