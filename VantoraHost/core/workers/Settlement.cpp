#include "VantoraHost/core/workers/Settlement.h"

#include "KarvelPDFLibrary/io/TemporaryFile.h"
#include "VantoraHost/core/FileIdentity.h"
#include "VantoraHost/core/outputs/TargetFolder.h"

#include <map>

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

std::map<std::string, Folder::Pointer> foldersOf(const CrewMember& member, const Batch& batch)
{
    std::map<std::string, Folder::Pointer> folders;
    const auto note = [&](std::size_t document) {
        const Target& target = *batch.targets[document];
        if (target.path.empty() || batch.settings.dryRun) {
            return;
        }
        const auto [found, isNew] = folders.emplace(karvel::io::folderOf(target.path), nullptr);
        if (isNew) {
            found->second = folderOf(target).value_or(nullptr);
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
    for (const auto& [path, folder] : foldersOf(member, batch)) {
        if (folder) {
            karvel::io::removeAbandoned(*folder);
            folder->sync();
        }
    }
    return placed;
}

} // namespace vantora
