#include "VantoraHost/core/LibraryFailure.h"

#include "KarvelPDFLibrary/base/Text.h"
#include "KarvelPDFLibrary/io/FileDescriptor.h"
#include "VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h"

namespace vantora {

namespace {

Reason reasonOf(LibraryCode code)
{
    switch (code) {
    case LibraryCode::FileNotReadable:
        return Reason::InputUnreadable;
    case LibraryCode::FileNotWritable:
        return Reason::OutputNotWritable;
    case LibraryCode::FileExists:
        return Reason::OutputExists;
    case LibraryCode::NotPdf: // which of the two it is, only its first bytes tell
        return Reason::Damaged;
    case LibraryCode::WrongPassword:
        return Reason::PasswordWrong;
    case LibraryCode::EncryptionUnsupported:
        return Reason::EncryptionUnsupported;
    case LibraryCode::OutOfMemory:
        return Reason::OutOfMemory;
    default:
        return Reason::LibraryFailed;
    }
}

// Takes a name away wherever a clause begins with it.
void removeClauses(std::string& sentence, const std::string& name)
{
    for (auto at = sentence.find(name); at != std::string::npos; at = sentence.find(name, at)) {
        const bool isClause = at == 0 || (at >= 2 && sentence.compare(at - 2, 2, ": ") == 0);
        isClause ? static_cast<void>(sentence.erase(at, name.size())) : static_cast<void>(++at);
    }
}

} // namespace

std::string withoutFile(std::string sentence, const std::string& file)
{
    if (!file.empty()) {
        removeClauses(sentence, file + ": ");
    }
    // What the library was given open it names by the descriptor.
    const std::string named = sentence.substr(0, sentence.find(": "));
    if (named.size() < sentence.size() && karvel::io::descriptorNamed(named)) {
        removeClauses(sentence, named + ": ");
    }
    return sentence;
}

LibraryCode lastLibraryCode(KarvelPDFLibraryCPDylibCPP1311& library)
{
    return static_cast<LibraryCode>(library.LastErrorCode());
}

std::optional<Error> lastLibraryFailure(KarvelPDFLibraryCPDylibCPP1311& library,
                                        const std::string& file)
{
    const LibraryCode code = lastLibraryCode(library);
    if (code == LibraryCode::None) {
        return std::nullopt;
    }
    std::string sentence = karvel::text::fromWide(library.LastErrorText());
    if (sentence.empty()) {
        sentence = "the PDF library failed with code " + std::to_string(static_cast<int>(code));
    }
    return Error{reasonOf(code), file, withoutFile(std::move(sentence), file)};
}

Error outputFailure(const karvel::Error& error, const Target& target)
{
    return {reasonOf(static_cast<LibraryCode>(error.code)),
            {},
            "the output " + target.name + ": " + withoutFile(error.text, target.path)};
}

} // namespace vantora
