#pragma once

#include "KarvelPDFLibrary/io/OutputFile.h"
#include "VantoraHost/core/Error.h"
#include "VantoraHost/core/outputs/TextFile.h"
#include "VantoraHost/core/reports/DocumentReport.h"

#include <string>

namespace vantora {

/// The SHA-256 of a run's outputs, in the lines that sha256sum(1) writes and takes; inputs stand in
/// comments above their outputs. The file is there whole, once the run ends, or not at all.
class ChecksumFile {
public:
    static Result<ChecksumFile> create(const std::string& path, ExistingText existing);

    /// Adds a document whose report has digests; others are passed over. What goes wrong is told by
    /// commit.
    void add(const DocumentReport& report);

    Outcome commit();

private:
    ChecksumFile(std::string path, karvel::io::OutputFile file)
        : path_(std::move(path)), file_(std::move(file))
    {
    }
    void write(const std::string& text);

    std::string path_;
    karvel::io::OutputFile file_;
    std::string failure_; ///< of the first write that failed
};

/// The line for a file, with its end.
std::string checksumLine(const std::string& sha256, const std::string& path);

} // namespace vantora
