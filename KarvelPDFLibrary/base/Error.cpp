#include "KarvelPDFLibrary/base/Error.h"

#include <array>
#include <new>
#include <qpdf/QPDFExc.hh>
#include <qpdf/QPDFSystemError.hh>
#include <stdexcept>

namespace karvel {

std::string errorMeaning(int code)
{
    static const std::array<const char*, 21> meanings = {
        "no error",
        "argument outside its range",
        "no document is selected",
        "no such handle, index or name",
        "file or folder not found or not readable",
        "file or folder not writable",
        "file exists and overwriting is off",
        "not a PDF, or damaged beyond reconstruction",
        "password missing or wrong",
        "owner access needed",
        "page list invalid, page missing, or no page would remain",
        "encryption or security handler not supported",
        "PDF feature or data format not supported",
        "function not available in this version of the library",
        "invalid PDF syntax, content, XML or pattern",
        "call out of place",
        "font missing, without the needed glyphs, or not embeddable",
        "image data not readable",
        "out of memory, or result too large",
        "name in use, or value not among those allowed",
        "a library beneath failed",
    };
    if (code < 0 || code >= static_cast<int>(meanings.size())) {
        return {};
    }
    return meanings[static_cast<std::size_t>(code)];
}

static ErrorCode codeOf(qpdf_error_code_e code)
{
    switch (code) {
    case qpdf_e_password:
        return ErrorCode::WrongPassword;
    case qpdf_e_unsupported:
        return ErrorCode::EncryptionUnsupported;
    case qpdf_e_damaged_pdf:
    case qpdf_e_pages:
        return ErrorCode::NotPdf;
    case qpdf_e_system:
        return ErrorCode::FileNotReadable;
    case qpdf_e_object:
        return ErrorCode::BadSyntax;
    default:
        return ErrorCode::LibraryFailed;
    }
}

Error currentExceptionAsError(const std::string& subject)
{
    const std::string prefix = subject.empty() ? std::string() : subject + ": ";
    try {
        throw;
    } catch (const QPDFExc& exception) {
        return {codeOf(exception.getErrorCode()), prefix + exception.getMessageDetail()};
    } catch (const QPDFSystemError& exception) {
        return {ErrorCode::FileNotReadable, prefix + exception.what()};
    } catch (const std::bad_alloc&) {
        return {ErrorCode::OutOfMemory, prefix + "out of memory"};
    } catch (const std::length_error&) {
        return {ErrorCode::OutOfMemory, prefix + "a result is too large"};
    } catch (const std::exception& exception) {
        return {ErrorCode::LibraryFailed, prefix + exception.what()};
    } catch (...) {
        return {ErrorCode::LibraryFailed, prefix + "unknown failure"};
    }
}

} // namespace karvel
