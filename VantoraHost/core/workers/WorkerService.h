#pragma once

#include "VantoraHost/core/workers/WorkerMessages.h"
#include "VantoraHost/core/workers/WorkerSide.h"

namespace vantora {

/// What a copy of the run's process has from it, each where the run had it.
struct WorkerInheritance {
    JobSettings streams; ///< the run's standard streams
    KarvelPDFLibraryCPDylibCPP1311* library = nullptr;
    Sequence* sequence = nullptr; ///< with the library
    /// What it may read beside what its setup says; asked once, before the setup comes.
    std::function<std::vector<std::string>()> readable = [] { return std::vector<std::string>(); };
};

/// What a worker process does: takes its setup, then groups of documents, and answers with a report
/// for each, until the orders end. SIGTERM ends the process at once, or when what is being saved is
/// finished. Gives up what it does not need before it opens the first document. Returns false when
/// there was nothing that it could do.
bool serveAsWorker(const WorkerChannel& channel, const StoredReader& stored,
                   WorkerInheritance inheritance = {});

/// The folders of the library and the actions that a setup names.
std::vector<std::filesystem::path> ownFolders(const WorkerSetup& setup);

} // namespace vantora
