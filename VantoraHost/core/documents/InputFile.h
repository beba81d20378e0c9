#pragma once

#include "KarvelPDFLibrary/io/FileDescriptor.h"
#include "VantoraHost/core/Error.h"
#include "VantoraHost/core/FileIdentity.h"
#include "VantoraHost/core/Target.h"

#include <sys/stat.h>
#include <sys/types.h>

#include <string>

namespace vantora {

/// A document's file, open for reading: from here on it is this one, whatever its path leads to.
class InputFile {
public:
    /// Opens a file that holds something; the error is what is wrong with it.
    static Result<InputFile> open(const std::string& input);

    /// Opens the input that a target replaces: the file that the plan has found behind its links.
    static Result<InputFile> open(const std::string& input, const Target& replaced);

    int descriptor() const { return file_.get(); }

    /// The file as it was when it was opened.
    const FileVersion& version() const { return opened_; }

    /// What others might do with it then.
    mode_t mode() const;

private:
    InputFile(karvel::io::FileDescriptor file, const struct stat& opened)
        : file_(std::move(file)), opened_(karvel::io::versionOf(opened)), mode_(opened.st_mode)
    {
    }
    static Result<InputFile> of(karvel::io::FileDescriptor file, const std::string& input);

    karvel::io::FileDescriptor file_;
    FileVersion opened_;
    mode_t mode_; ///< as the system has it
};

/// What others may do with the file that a stream comes from; everything when it is a pipe.
mode_t modeOfStream(int descriptor);

} // namespace vantora
