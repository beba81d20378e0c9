#pragma once

#include "KarvelPDFLibrary/index/Characters.h"
#include "KarvelPDFLibrary/index/ReadingDoubts.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace karvel::index {

/// What a scan came to. The scanner is strict: what it does not expect is Malformed, so that a
/// reader with more patience can look at it, and what it accepts is sure.
enum class ScanResult {
    Complete,
    NeedsMore, // the text ends inside the value
    Malformed,
};

/// Takes note of what a scan finds.
class ScanSink {
public:
    /// "12 0 R" anywhere in the value.
    virtual void reference(std::uint32_t object, std::uint32_t generation) = 0;

    /// A name anywhere in the value, key or not, without its slash and as it is written.
    virtual void name(std::string_view) {}

    /// An array that begins like a destination on a page named by its number: "[3 /Fit".
    virtual void numberedDestination() {}

    /// The name or string that stands under a key /Dest or /D at any depth, as it is written.
    virtual void destinationName(std::string_view) {}

    /// Before the value of a key of the outermost dictionary. The name is without its slash and
    /// with "#" escapes resolved, and valid only during the call.
    virtual void beforeEntry(std::string_view key) = 0;

    /// After that value, with its text.
    virtual void afterEntry(std::string_view key, std::string_view value) = 0;

protected:
    ~ScanSink() = default;
};

/// Steps through the text of one object's value (ISO 32000-2, 7.3) without building anything. The
/// text must go on a little after the value, as it does in a file with "endobj" or "stream".
class ValueScanner {
public:
    /// Where `doubts` is given, it follows the scan.
    ValueScanner(std::string_view text, ScanSink& sink, ReadingDoubts* doubts = nullptr)
        : text_(text), sink_(sink), doubts_(doubts)
    {
    }

    /// Scans one value from `start`; position() is then past it.
    ScanResult scan(std::size_t start);

    std::size_t position() const { return at_; }

    /// Whether the scanned value is a dictionary or an array.
    bool isDictionary() const { return first_ == '<'; }
    bool isArray() const { return first_ == '['; }

private:
    enum class Token {
        DictionaryBegin,
        DictionaryEnd,
        ArrayBegin,
        ArrayEnd,
        Name,
        String,
        Number,
        Keyword,
        End,
        Bad
    };

    Token next();
    Token readName();
    Token readLiteralString();
    Token readHexString();
    Token readNumberOrKeyword();
    bool passReference();
    bool passNumber();
    bool push(char kind);
    void pop();
    void noteName(std::string_view name);
    bool isInOutermost() const { return open_.size() == 1 && open_.front() == '<'; }
    ScanResult run();
    void noteArrayStart(Token token, bool isReference);
    void noteDestination(Token token);
    void entryValueStarts();
    void entryValueEnds();

    std::string_view text_;
    ScanSink& sink_;
    ReadingDoubts* doubts_;
    std::size_t at_ = 0;
    std::size_t tokenStart_ = 0;
    bool hasEscapes_ = false; // the last name
    char first_ = 0;

    /// Kinds of the open containers, '<' or '['.
    std::string open_;

    /// In the outermost dictionary: whether a key comes next, and the last key.
    bool expectsKey_ = false;
    std::string key_;
    std::size_t valueStart_ = 0;

    /// How far the beginning of an array goes towards a numbered destination.
    enum class ArrayStart { Elsewhere, Opened, AfterNumber };
    ArrayStart arrayStart_ = ArrayStart::Elsewhere;
    bool afterDestinationKey_ = false;
};

/// Skips white space and comments.
std::size_t skipSpace(std::string_view text, std::size_t at);

/// A value's text without the white space and comments before it and the white space after it.
std::string_view trimmed(std::string_view text);

/// Reads an unsigned decimal number of at most ten digits; false when there is none at `at`.
bool readUnsigned(std::string_view text, std::size_t& at, std::uint64_t& value);

/// Such a number that is all of a text; nothing for any other text.
std::optional<std::uint64_t> unsignedIn(std::string_view text);

/// "12 0 R" as it is written.
struct Reference {
    std::uint32_t object = 0;
    std::uint32_t generation = 0;
};

/// Reads a reference after white space; nothing when something else is there.
std::optional<Reference> readReference(std::string_view text);

/// All references in a value, in the order of its text.
std::vector<Reference> referencesIn(const std::string& text);

/// Whether there may be strings in a value's text.
bool mayHoldStrings(std::string_view text);

/// A name without its slash with "#" escapes resolved.
std::string decodedName(std::string_view name);

/// The bytes of a string, literal or hexadecimal, as it is written; a name with its slash.
std::string decodedString(std::string_view written);

} // namespace karvel::index
