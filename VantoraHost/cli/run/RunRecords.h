#pragma once

#include "VantoraHost/cli/certificates/Certifier.h"
#include "VantoraHost/cli/run/RunOptions.h"
#include "VantoraHost/core/Inputs.h"
#include "VantoraHost/core/outputs/ChecksumFile.h"

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace vantora::cli {

/// The place of each input's certificate, or why it can't be written there; nothing at all where
/// none are asked for. None is a place of an output. The error concerns every input.
Result<std::vector<Result<Target>>> planCertificates(const RunOptions& options,
                                                     const std::vector<Input>& inputs,
                                                     const std::vector<Result<Target>>& outputs);

/// What a run leaves for people to keep: certificates, checksums.
class RunRecords {
public:
    /// `certificates` are the places for these inputs; none where none are asked for.
    RunRecords(Certifier certifier, std::vector<Result<Target>> certificates,
               const std::vector<std::string>& inputs, std::optional<ChecksumFile> checksums);

    /// Adds a document that is done, and whose turn it is. The error is that its certificate
    /// couldn't be written.
    Outcome add(const DocumentReport& report);

    /// Writes what stands at a run's end.
    Outcome finish();

private:
    Certifier certifier_;
    std::unordered_map<std::string, Target> certificates_; ///< by input
    std::optional<ChecksumFile> checksums_;
};

} // namespace vantora::cli
