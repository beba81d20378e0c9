#pragma once

#include <optional>
#include <qpdf/QPDF.hh>
#include <string>

namespace karvel::saving {

/// Enciphers strings and streams as a document's own standard security handler does (ISO 32000-2,
/// 7.6), with the file key that libqpdf found.
class Cipher {
public:
    /// Nothing when the document is encrypted in a way that is not known here.
    static std::optional<Cipher> of(QPDF& file);

    std::string string(const std::string& plain, QPDFObjGen object) const;
    std::string stream(const std::string& plain, QPDFObjGen object) const;

    /// The data of a stream with a dictionary that may say that it is left as it is (7.6.6).
    std::string stream(const std::string& plain, QPDFObjGen object,
                       QPDFObjectHandle dictionary) const;

    /// Whether what is enciphered reads alike under every object number.
    bool fitsAnyNumber() const { return version_ >= 5; }

private:
    std::string encipher(QPDF::encryption_method_e method, const std::string& plain,
                         QPDFObjGen object) const;

    std::string fileKey_;
    int version_ = 0;
    int revision_ = 0;
    QPDF::encryption_method_e strings_ = QPDF::e_none;
    QPDF::encryption_method_e streams_ = QPDF::e_none;
    bool coversMetadata_ = true;
};

} // namespace karvel::saving
