#pragma once

#include "VantoraHost/verification/Verification.h"

#include <map>
#include <memory>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>
#include <string>
#include <vector>

namespace vantora::verification {

/// What a page inherits from the nodes above it (ISO 32000-2, table 31).
enum Inherited { Resources, MediaBox, CropBox, Rotate, inheritedCount };

struct Page {
    QPDFObjectHandle object;
    QPDFObjectHandle inherited[inheritedCount];
    QPDFObjectHandle resources() const { return inherited[Resources]; }
};

/// A PDF file, as libqpdf reads it, with its bytes.
class PdfFile {
public:
    static tl::expected<std::unique_ptr<PdfFile>, Refusal>
    open(const Source& source, const std::vector<std::string>& passwords);

    const std::string& bytes() const { return bytes_; }
    const std::string& password() const { return password_; }
    QPDF& qpdf() { return *qpdf_; }
    QPDFObjectHandle catalog() { return qpdf_->getRoot(); }
    const std::vector<Page>& pages() const { return pages_; }

    /// The numbers, ascending, of what stands in the place of a page and can't be read; these count
    /// it, as `pages` doesn't.
    const std::vector<int>& unreadable() const { return unreadable_; }

    /// The places, from 0, at which an object stands in the order of pages.
    const std::vector<int>& placesOf(QPDFObjectHandle object) const;
    bool isPage(const QPDFObjectHandle& object) const { return !placesOf(object).empty(); }

    /// Whether the file had to be repaired to be read.
    bool wasRepaired() { return qpdf_->anyWarnings(); }

private:
    PdfFile() = default;
    bool tryPassword(const std::string& password);
    void readPages();

    std::string bytes_;
    std::string password_;
    std::unique_ptr<QPDF> qpdf_;
    std::vector<Page> pages_;
    std::vector<int> unreadable_;
    std::map<QPDFObjGen, std::vector<int>> places_;
    std::set<QPDFObjGen> nodes_;
};

/// A value of a dictionary or a stream's dictionary; null for anything else.
QPDFObjectHandle valueOf(QPDFObjectHandle holder, const char* key);

/// Whether it is a dictionary or a stream with a name such as "/Widget" under a key.
bool isNamed(const QPDFObjectHandle& holder, const char* key, const char* name);

/// "12 0 R"; "a direct object" for what has no number.
std::string numberText(QPDFObjGen object);

/// The entries of a name or number tree (ISO 32000-2, 7.9.6) in its order: the key, a string or
/// number, and the value.
using TreeEntry = std::pair<QPDFObjectHandle, QPDFObjectHandle>;
std::vector<TreeEntry> treeEntries(const QPDFObjectHandle& root, const char* leafKey);

/// The decoded data of a stream. Where a filter is not known, the data as they stand in the file,
/// and `decoded` is false.
struct StreamData {
    std::string bytes;
    bool decoded = false;
};
StreamData dataOf(QPDFObjectHandle stream);

/// The data of a stream as they stand in the file, decrypted; empty where they can't be read.
std::string rawDataOf(QPDFObjectHandle stream);

} // namespace vantora::verification
