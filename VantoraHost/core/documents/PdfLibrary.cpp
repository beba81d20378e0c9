#include "VantoraHost/core/documents/PdfLibrary.h"

#include "KarvelPDFLibrary/base/Text.h"
#include "KarvelPDFLibrary/base/WarningKinds.h"
#include "VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h"
#include "VantoraHost/core/LibraryFailure.h"
#include "VantoraHost/core/Target.h"

#include <dlfcn.h>
#include <unistd.h>

#include <climits>
#include <cstdlib>
#include <string_view>
#include <utility>

namespace vantora {

using karvel::text::fromWide;
using karvel::text::toWide;

namespace {

constexpr int modifyingPermission = 2;
constexpr int assemblingPermission = 7;

// What can be said better before the library is asked.
Outcome checkStandardInput(const std::string& bytes)
{
    if (bytes.empty()) {
        return fail(Reason::InputEmpty, standardStream, "is empty (0 bytes)");
    }
    if (bytes.size() > static_cast<std::size_t>(INT_MAX)) {
        return fail(Reason::OutOfMemory, standardStream,
                    "is larger than 2 GB; save it as a file and name that");
    }
    return {};
}

// Readers look for the header in the first 1024 bytes (ISO 32000-1, annex H, note 13).
constexpr std::size_t headerWithin = 1024;

std::string startOf(const InputFile& file)
{
    std::string start(headerWithin, '\0');
    const ssize_t got = ::pread(file.descriptor(), start.data(), start.size(), 0);
    start.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
    return start;
}

// Why the library can't open a document: one that is damaged, or no PDF at all, is worth telling
// apart, since other things help.
Error openingError(KarvelPDFLibraryCPDylibCPP1311& library, const std::string& input,
                   const std::string& start)
{
    Error error = lastLibraryFailure(library, input)
                      .value_or(Error{Reason::LibraryFailed, input, "can't be opened"});
    if (error.reason != Reason::Damaged) {
        return error;
    }
    if (start.find("%PDF-") == std::string::npos) {
        return {Reason::NotPdf, input, "is no PDF: it does not begin with %PDF-"};
    }
    const std::string either = "not a PDF, or damaged beyond repair";
    if (error.sentence.compare(0, either.size(), either) == 0) {
        error.sentence.replace(0, either.size(), "damaged beyond repair");
    }
    return error;
}

// ISO 32000-2, table 22: bit 11 allows assembling "even if bit 4 is clear", so either will do.
bool permits(KarvelPDFLibraryCPDylibCPP1311& library, Access access)
{
    return access == Access::Read || library.IsEncrypted() != 1 ||
           (access == Access::RemovePages && library.HasPermission(assemblingPermission) == 1) ||
           library.HasPermission(modifyingPermission) == 1;
}

Error passwordError(const std::string& input, std::size_t given)
{
    if (given == 0) {
        return {Reason::PasswordNeeded, input, "is encrypted and needs a password"};
    }
    return {Reason::PasswordWrong, input,
            given == 1 ? "the password given does not open it"
                       : "none of the " + std::to_string(given) + " passwords given opens it"};
}

} // namespace

Result<std::unique_ptr<KarvelPDFLibraryCPDylibCPP1311>>
loadPdfLibrary(const std::filesystem::path& file)
{
    // The binding takes one byte of the path from each character.
    std::wstring path;
    for (const char byte : file.native()) {
        path += static_cast<wchar_t>(static_cast<unsigned char>(byte));
    }
    auto library = std::make_unique<KarvelPDFLibraryCPDylibCPP1311>(path);
    if (!library->LibraryLoaded()) {
        return fail(Reason::LibraryMissing, file, "the PDF library can't be loaded");
    }
    // Stays loaded to the end of the process: unloading it takes longer than deleting a page.
    ::dlopen(file.c_str(), RTLD_LAZY | RTLD_LOCAL | RTLD_NOLOAD | RTLD_NODELETE);
    return library;
}

Result<OpenDocument> OpenDocument::open(KarvelPDFLibraryCPDylibCPP1311& library,
                                        const std::string& input, const std::string& standardInput,
                                        const std::vector<std::string>& passwords, Access access)
{
    if (input == standardStream) {
        const Outcome usable = checkStandardInput(standardInput);
        const Source source = {input,
                               [&](const std::wstring& password) {
                                   return library.LoadFromString(standardInput, password);
                               },
                               [&] { return standardInput.substr(0, headerWithin); }};
        return usable ? load(library, source, passwords, access)
                      : tl::unexpected<Error>(usable.error());
    }
    const Result<InputFile> file = InputFile::open(input);
    return file ? open(library, input, *file, passwords, access)
                : tl::unexpected<Error>(file.error());
}

Result<OpenDocument> OpenDocument::open(KarvelPDFLibraryCPDylibCPP1311& library,
                                        const std::string& input, const InputFile& file,
                                        const std::vector<std::string>& passwords, Access access)
{
    const std::wstring opened = toWide(karvel::io::pathOf(file.descriptor()));
    const Source source = {
        input, [&](const std::wstring& password) { return library.LoadFromFile(opened, password); },
        [&] { return startOf(file); }};
    return load(library, source, passwords, access);
}

Result<OpenDocument> OpenDocument::load(KarvelPDFLibraryCPDylibCPP1311& library,
                                        const Source& source,
                                        const std::vector<std::string>& passwords, Access access)
{
    bool opened = false;
    for (std::size_t attempt = 0; attempt <= passwords.size(); ++attempt) {
        library.ClearLastError();
        if (source.load(attempt == 0 ? std::wstring() : toWide(passwords[attempt - 1])) != 0) {
            OpenDocument document(library);
            if (permits(library, access)) {
                return document;
            }
            opened = true;
        } else if (lastLibraryCode(library) != LibraryCode::WrongPassword) {
            return tl::unexpected<Error>(openingError(library, source.name, source.start()));
        }
    }
    if (opened) {
        return fail(Reason::NotPermitted, source.name,
                    std::string("its owner does not permit ") + accessName(access));
    }
    return tl::unexpected<Error>(passwordError(source.name, passwords.size()));
}

OpenDocument::OpenDocument(OpenDocument&& other) noexcept
    : library_(std::exchange(other.library_, nullptr))
{
}

OpenDocument::~OpenDocument()
{
    if (library_) {
        library_->CloseDocument();
    }
}

std::vector<std::string> OpenDocument::repairs() const
{
    std::vector<std::string> texts;
    if (library_->WasReconstructed() == 1) {
        texts.emplace_back("its table of objects was damaged and has been rebuilt");
    }
    const std::vector<std::string> others = warnings(Warning::OfDamage);
    texts.insert(texts.end(), others.begin(), others.end());
    return texts;
}

std::vector<std::string> OpenDocument::remarks() const
{
    return warnings(Warning::OfDeletion);
}

std::vector<PageLoss> OpenDocument::losses() const
{
    std::vector<PageLoss> losses;
    for (const std::string& text : warnings(Warning::OfLoss)) { // "19: what"
        const std::size_t colon = text.find(": ");
        losses.push_back(
            {std::atoi(text.c_str()), colon == std::string::npos ? text : text.substr(colon + 2)});
    }
    return losses;
}

std::vector<std::string> OpenDocument::leftToJudge() const
{
    return warnings(Warning::LeftToJudge);
}

// The warnings of one kind, without the words that tell it apart.
std::vector<std::string> OpenDocument::warnings(Warning kind) const
{
    constexpr std::pair<std::string_view, Warning> beginnings[] = {
        {karvel::deletingPages, Warning::OfDeletion},
        {karvel::leftToJudge, Warning::LeftToJudge},
        {karvel::unreadableText, Warning::OfText},
        {karvel::lostOfPage, Warning::OfLoss}};
    std::vector<std::string> texts;
    const int count = library_->WarningCount();
    for (int warning = 1; warning <= count; ++warning) {
        std::string text = fromWide(library_->GetWarningText(warning));
        Warning found = Warning::OfDamage;
        for (const auto& [beginning, meaning] : beginnings) {
            if (text.compare(0, beginning.size(), beginning) == 0) {
                found = meaning;
                text.erase(0, beginning.size());
                break;
            }
        }
        if (found == kind) {
            texts.push_back(std::move(text));
        }
    }
    return texts;
}

Outcome OpenDocument::checkUnsigned(const std::string& input) const
{
    library_->ClearLastError();
    const int count = library_->SignatureCount();
    for (int signature = 1; signature <= count; ++signature) {
        if (library_->IsSignatureSigned(signature) == 1) {
            const int field = library_->GetSignatureField(signature);
            return fail(Reason::Signed, input,
                        "it is signed in field \"" + fromWide(library_->GetFieldName(field)) +
                            "\", and no signature holds once it is changed");
        }
    }
    if (const auto failure = lastLibraryFailure(*library_, input)) {
        return tl::unexpected<Error>(*failure);
    }
    return {};
}

} // namespace vantora
