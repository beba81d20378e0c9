#pragma once

#include "VantoraHost/core/Access.h"
#include "VantoraHost/core/Error.h"
#include "VantoraHost/core/PageLoss.h"
#include "VantoraHost/core/documents/InputFile.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

class KarvelPDFLibraryCPDylibCPP1311;

namespace vantora {

/// Loads the PDF library once for a run. The error says which file could not be loaded.
Result<std::unique_ptr<KarvelPDFLibraryCPDylibCPP1311>>
loadPdfLibrary(const std::filesystem::path& file);

/// A document that is open and selected in the library, and closed at the end of this object.
class OpenDocument {
public:
    /// Opens a file, or the bytes of standard input when `input` is "-". The empty password is
    /// tried first, then the others in order, until one opens the document with the access needed.
    static Result<OpenDocument> open(KarvelPDFLibraryCPDylibCPP1311& library,
                                     const std::string& input, const std::string& standardInput,
                                     const std::vector<std::string>& passwords, Access access);

    /// The same for a file that is open.
    static Result<OpenDocument> open(KarvelPDFLibraryCPDylibCPP1311& library,
                                     const std::string& input, const InputFile& file,
                                     const std::vector<std::string>& passwords, Access access);

    OpenDocument(OpenDocument&& other) noexcept;
    OpenDocument& operator=(OpenDocument&&) = delete;
    ~OpenDocument();

    /// An error that names the field of a signature, when the document has one.
    Outcome checkUnsigned(const std::string& input) const;

    /// What deleting pages did to the document beside, such as removing signatures, as sentences.
    std::vector<std::string> remarks() const;

    /// What damage made unreadable and what was saved lacks.
    std::vector<PageLoss> losses() const;

    /// What stays of the document as a whole and may repeat what deleted pages said.
    std::vector<std::string> leftToJudge() const;

    /// What the library had to put right in the document up to now, as sentences; the most
    /// important one first.
    std::vector<std::string> repairs() const;

private:
    /// What is opened.
    struct Source {
        const std::string& name;
        std::function<int(const std::wstring& password)> load; ///< returns 0 when that failed
        std::function<std::string()> start;                    ///< its first bytes
    };
    static Result<OpenDocument> load(KarvelPDFLibraryCPDylibCPP1311& library, const Source& source,
                                     const std::vector<std::string>& passwords, Access access);
    enum class Warning { OfDeletion, LeftToJudge, OfText, OfLoss, OfDamage };
    std::vector<std::string> warnings(Warning kind) const;

    explicit OpenDocument(KarvelPDFLibraryCPDylibCPP1311& library) : library_(&library) {}

    KarvelPDFLibraryCPDylibCPP1311* library_;
};

} // namespace vantora
