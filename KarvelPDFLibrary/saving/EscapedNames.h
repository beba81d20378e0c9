#pragma once

#include <functional>
#include <qpdf/QPDF.hh>
#include <string>
#include <vector>

namespace karvel::saving {

/// A name as it is written in a file (ISO 32000-2, 7.3.5); `name` begins with its slash.
std::string nameText(const std::string& name);

/// libqpdf writes "#" in names as it is, where a reader takes it for the beginning of an escape. As
/// long as this object lives, such names stand in the document with the escape that is to be
/// written; then they are again what they were.
class EscapedNames {
public:
    explicit EscapedNames(QPDF& file);
    ~EscapedNames();
    EscapedNames(const EscapedNames&) = delete;
    EscapedNames& operator=(const EscapedNames&) = delete;

private:
    void escapeIn(const QPDFObjectHandle& object);
    void escapeItems(QPDFObjectHandle array);
    void escapeKeys(QPDFObjectHandle dictionary);
    void undo();

    std::vector<std::function<void()>> undo_;
};

} // namespace karvel::saving
