#include "VantoraHost/core/LibraryFailure.h"

#include "KarvelPDFLibrary/base/Text.h"
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
    case LibraryCode::NotPdf:
        return Reason::NotPdf;
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

} // namespace

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
    // The library's sentences name the file themselves.
    if (const std::string prefix = file + ": "; !file.empty() && sentence.rfind(prefix, 0) == 0) {
        sentence.erase(0, prefix.size());
    }
    return Error{reasonOf(code), file, std::move(sentence)};
}

} // namespace vantora
