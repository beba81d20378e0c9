#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <tl/expected.hpp>
#include <utility>
#include <vector>

/// Proves what a removal of pages did, from the two files alone: with libqpdf's objects and
/// poppler, and without any code that removed the pages.
namespace vantora::verification {

/// What a finding is about: first what removed pages left behind, then what was lost or changed.
enum class Kind {
    PageObject,
    Content,
    Image,
    Resource, ///< a font, colour space, form or the like
    Text,
    Annotation,
    FormValue,
    OutlineTitle,
    Destination,
    Name,
    Label,
    Thumbnail,
    Attachment,
    Structure,
    Metadata,
    PrivateData,
    PageCount,
    KeptContent,
    KeptText,
    KeptPicture,
    KeptSize,
    KeptLabel,
    KeptLink,
    KeptField,
    KeptAnnotation,
    KeptDocument,
    Encryption,
};

/// A short lower-case name such as "content-stream", which is part of the reports' format.
const char* kindName(Kind kind);

/// Something that is not as it has to be.
struct Finding {
    Kind kind = Kind::PageObject;
    int page = 0;       ///< a page number of the document before; 0 for none in particular
    std::string object; ///< where in the file after, such as "12 0 R"; empty for none
    std::string what;   ///< for people, in UTF-8
};

/// The most findings that are listed.
inline constexpr std::size_t mostFindings = 1000;

/// How many of a kind of thing there are.
struct Amount {
    std::size_t before = 0;
    std::size_t after = 0;
};

/// What people ask after that a document has beside its pages.
struct Amounts {
    Amount outlineEntries;
    Amount links;
    Amount fields; ///< of the form, signatures among them
    Amount signatures;
    Amount attachments;
};

/// Removed pages that follow each other, by numbers and by labels.
struct LabelledPages {
    int first = 0;
    int last = 0;
    std::string firstLabel; ///< UTF-8
    std::string lastLabel;
};

struct Verdict {
    int pagesBefore = 0;
    int pagesAfter = 0;
    int pagesRemoved = 0;
    std::size_t things = 0; ///< of removed pages, that were looked for
    std::vector<Finding> findings;
    std::size_t more = 0; ///< findings that are not listed
    std::vector<std::string> notTold;
    Amounts amounts;
    std::vector<LabelledPages> labels; ///< of the removed pages; none where no page has a label

    bool passed() const { return findings.empty(); }
};

/// Why nothing can be said at all.
struct Refusal {
    enum class Why { Unreadable, NotPdf, PasswordNeeded, Failed };
    Why why = Why::Failed;
    bool isAfter = false; ///< which of the two files it is about
    std::string sentence;
};

/// A file: a path to open, or with an empty one its bytes, which the caller keeps.
struct Source {
    Source(std::string path) : path(std::move(path)) {}
    Source(std::string_view bytes) : bytes(bytes) {}

    std::string path;
    std::string_view bytes;
};

/// A file before and a file after, and the runs of pages (first and last, from 1) that were to go;
/// what lies beyond the last page names none.
struct Question {
    Source before;
    Source after;
    std::vector<std::pair<int, int>> removed;
    std::vector<std::string> passwords; ///< tried in order; none is needed where "" opens the file
    int pages = 0; ///< how many there are before, as who removed some counts; 0 for not known
    std::vector<int> lost = {}; ///< further ones of these, which damage keeps from being read
};

class Verifier {
public:
    /// Reads both files whole. Where they are the same and no page was to go, that is all. Throws
    /// std::bad_alloc where memory does not suffice; a hostile file may take long or crash the
    /// process, so it is to be called in a confined one.
    virtual tl::expected<Verdict, Refusal> verify(const Question& question) const = 0;

protected:
    ~Verifier() = default;
};

/// The verifier in the module that is this file. The libraries beneath it take longer to load than
/// most documents take to be worked on, so it is loaded when it is needed; it stays loaded. The
/// error is a sentence.
tl::expected<const Verifier*, std::string> loadVerifier(const std::string& file);

/// The name of the module's one function, a VerifierEntry.
inline constexpr char verifierEntryName[] = "vantoraVerifier";
using VerifierEntry = const Verifier* (*)();

} // namespace vantora::verification
