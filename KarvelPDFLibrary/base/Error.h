#pragma once

#include <string>
#include <tl/expected.hpp>
#include <utility>

namespace karvel {

/// The library's error codes; the numbers are part of its interface (interface/conventions.md).
enum class ErrorCode : int {
    None = 0,
    BadArgument = 1,
    NoDocument = 2,
    NotFound = 3,
    FileNotReadable = 4,
    FileNotWritable = 5,
    FileExists = 6,
    NotPdf = 7,
    WrongPassword = 8,
    OwnerAccessNeeded = 9,
    BadPageList = 10,
    EncryptionUnsupported = 11,
    FeatureUnsupported = 12,
    NotAvailable = 13,
    BadSyntax = 14,
    OutOfPlace = 15,
    FontUnusable = 16,
    ImageUnreadable = 17,
    OutOfMemory = 18,
    NameInUse = 19,
    LibraryFailed = 20,
};

/// The general meaning of a code; empty for a number that is no code.
std::string errorMeaning(int code);

/// What went wrong: a code for programs and one sentence (UTF-8) for people.
struct Error {
    ErrorCode code = ErrorCode::None;
    std::string text;
};

template <class T>
using Result = tl::expected<T, Error>;

/// Success or an error.
using Outcome = tl::expected<void, Error>;

inline tl::unexpected<Error> fail(ErrorCode code, std::string text)
{
    return tl::unexpected<Error>(Error{code, std::move(text)});
}

/// The exception that is being handled as an error: to be called inside a catch block around calls
/// of libqpdf, poppler and the standard library. `subject` (a file or page) opens the sentence.
Error currentExceptionAsError(const std::string& subject);

} // namespace karvel
