#pragma once

#include "VantoraHost/cli/certificates/CertificateMessages.h"
#include "VantoraHost/core/Target.h"
#include "VantoraHost/core/outputs/TargetFolder.h"
#include "VantoraHost/core/workers/WorkerProcess.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace vantora::cli {

/// Writes certificates, which a process of its own draws: the libraries for it take longer to load
/// than most runs take.
class Certifier {
public:
    /// `program` draws; `command` is what the run was called with.
    Certifier(std::filesystem::path program, std::string command)
        : program_(std::move(program)), command_(std::move(command))
    {
    }

    /// Writes the certificate of a document that is done and verified, for its owner alone to read.
    Outcome certify(const DocumentReport& report, const Target& target);

private:
    Result<std::string> drawn(const CertifiedRemoval& removal);
    Result<std::string> nextLine();

    const std::filesystem::path program_;
    const std::string command_;
    std::unique_ptr<WorkerProcess> process_;
    TargetFolders folders_;
};

/// A command for people, as words that a shell takes, cut where it gets too long to read.
std::string commandText(const std::vector<std::string>& arguments);

} // namespace vantora::cli
