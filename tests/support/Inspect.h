#pragma once

#include "KarvelPDFLibrary/document/Document.h"
#include "KarvelPDFLibrary/saving/SaveOptions.h"

#include <string>
#include <vector>

/// Looks at documents from outside, with tools that are not ours.
namespace support {

/// A folder that is removed with everything in it.
class ScratchFolder {
public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    std::string path(const std::string& name) const { return folder_ + "/" + name; }

    /// Writes a file and returns its path.
    std::string write(const std::string& name, const std::string& bytes) const;

private:
    std::string folder_;
};

std::string readFile(const std::string& path);

/// A text with something else in the place of its first `from`; none fails the test.
std::string replaced(std::string text, const std::string& from, const std::string& to);

/// Runs a shell command; its exit status and everything that it printed.
struct CommandResult {
    int status = -1;
    std::string output;
};
CommandResult runCommand(const std::string& command);

/// The texts that the pages show according to pdftotext, one entry a page, without line ends.
std::vector<std::string> pageTexts(const std::string& pdf, const std::string& password = {});

/// What `qpdf --check` finds wrong; empty when it finds nothing.
std::string problems(const std::string& pdf, const std::string& password = {});

/// "Page 1", "Page 3", ... for numbers.
std::vector<std::string> pagesNamed(const std::vector<int>& numbers);

/// A document as qpdf's command line writes it with options, such as "--object-streams=generate".
std::string rewritten(const std::string& pdf, const std::string& options);

/// Saves with object streams and stream data kept as they are.
karvel::saving::SaveOptions keeping(karvel::saving::Way way = karvel::saving::Way::CopyUnchanged);

/// What is saved so; a failure fails the test.
std::string savedIn(karvel::Document& document,
                    karvel::saving::Way way = karvel::saving::Way::CopyUnchanged);

/// What is saved with the library's defaults, which qpdf must find nothing wrong with.
std::string saved(karvel::Document& document);

/// Opens bytes in our library; a failure fails the test.
std::unique_ptr<karvel::Document> opened(const std::string& pdf, const std::string& password = {});

} // namespace support
