#pragma once

#include "KarvelPDFLibrary/io/FileDescriptor.h"
#include "VantoraHost/core/reports/DocumentReport.h"

#include <cstdint>
#include <string>

namespace vantora {

/// What becomes of a report that exists already.
enum class ExistingReport {
    Refuse,
    Replace,
    Continue, ///< lines are added to it
};

/// A file that takes the reports of a run as they come, one line of JSON each (toJson with the
/// run). Whenever the run or the machine stops, its lines are complete but for, at most, the last
/// one.
class ReportFile {
public:
    /// Creates or opens the file. One that exists is only touched when it is a report, so that no
    /// document is ever lost to a slip of the keyboard, and when no other run is writing to it.
    static Result<ReportFile> open(const std::string& path, ExistingReport existing);

    /// Adds a line about a document of a run. After a failure nothing more is written, and sync()
    /// says so.
    void add(const DocumentReport& report, const RunIdentity& run);

    /// Takes room for so many bytes more on the disk, so that lines about what is done find it; the
    /// error is that there isn't any. Nothing happens where the file system can't.
    Outcome reserve(std::uint64_t bytes);

    /// Waits until the disk has the file; the error is the first one of all its writing.
    Outcome sync();

private:
    ReportFile(std::string path, int descriptor) : path_(std::move(path)), file_(descriptor) {}

    void append(const std::string& text);

    std::string path_;
    karvel::io::FileDescriptor file_;
    int failure_ = 0; ///< an errno value
};

} // namespace vantora
