#pragma once

#include <map>
#include <string>
#include <vector>

namespace support {

/// Builds PDF files object by object, for tests that need to know every byte.
class PdfBuilder {
public:
    /// A number for an object that is set later.
    int reserve();

    /// Sets an object's text, without "obj" and "endobj".
    void set(int number, std::string body);

    /// Adds an object and returns its number.
    int add(std::string body);

    /// Adds a stream; `entries` are dictionary entries besides /Length.
    int addStream(const std::string& data, const std::string& entries = {});
    void setStream(int number, const std::string& data, const std::string& entries = {});

    /// Entries for the trailer besides /Size and /Root.
    void setTrailerEntries(std::string entries) { trailerEntries_ = std::move(entries); }

    /// The file with a cross-reference table.
    std::string build(int catalog) const;

    /// The row of a cross-reference table for an object at an offset.
    static std::string tableRow(std::size_t offset);

    /// "12 0 R"
    static std::string reference(int number) { return std::to_string(number) + " 0 R"; }

private:
    std::map<int, std::string> objects_;
    std::string trailerEntries_;
    int last_ = 0;
};

/// A page's content that shows a text in Helvetica at 72, 700.
std::string showText(const std::string& text);

/// A document with a page tree, ready for more: text on page N is "Page N".
struct PagedDocument {
    PdfBuilder builder;
    int catalog = 0;
    int root = 0;           // the page tree's root node
    std::vector<int> pages; // object numbers, in order
    std::string catalogEntries;

    explicit PagedDocument(int count, const std::string& pageEntries = {});
    std::string build();
};

/// A document of `count` pages that show "Page 1", "Page 2", ...
std::string documentOfPages(int count);

} // namespace support
