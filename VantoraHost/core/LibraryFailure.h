#pragma once

#include "KarvelPDFLibrary/base/Error.h"
#include "VantoraHost/core/Error.h"
#include "VantoraHost/core/Target.h"

#include <optional>
#include <string>

class KarvelPDFLibraryCPDylibCPP1311;

namespace vantora {

/// The error codes of the PDF library that the host tells apart (interface/conventions.md).
enum class LibraryCode : int {
    None = 0,
    FileNotReadable = 4,
    FileNotWritable = 5,
    FileExists = 6,
    NotPdf = 7,
    WrongPassword = 8,
    EncryptionUnsupported = 11,
    OutOfMemory = 18,
};

/// The code of the library's most recent failure since ClearLastError.
LibraryCode lastLibraryCode(KarvelPDFLibraryCPDylibCPP1311& library);

/// A sentence of the library's, or one made of it, without the name of the file that it is about:
/// whoever shows an error names its file.
std::string withoutFile(std::string sentence, const std::string& file);

/// The library's most recent failure since ClearLastError as an error of the file; none when
/// there was no failure.
std::optional<Error> lastLibraryFailure(KarvelPDFLibraryCPDylibCPP1311& library,
                                        const std::string& file);

/// Why an output could not be written, as an error of its document.
Error outputFailure(const karvel::Error& error, const Target& target);

} // namespace vantora
