#pragma once

#include <qpdf/QPDF.hh>
#include <utility>
#include <vector>

namespace karvel::saving {

/// libqpdf's linearisation passes over every dictionary that says that it is a page but stands
/// outside of the page tree, as templates do: what only leads from there is not written, and
/// references to it lead to nothing. As long as this object lives, such dictionaries say it in a
/// way that libqpdf doesn't take notice of but readers do; then they are again what they were.
/// Whoever uses EscapedNames, too, makes those first.
class DisguisedPages {
public:
    explicit DisguisedPages(QPDF& file);
    ~DisguisedPages();
    DisguisedPages(const DisguisedPages&) = delete;
    DisguisedPages& operator=(const DisguisedPages&) = delete;

private:
    void undo();

    std::vector<std::pair<QPDFObjectHandle, QPDFObjectHandle>> types_; // dictionaries and theirs
};

} // namespace karvel::saving
