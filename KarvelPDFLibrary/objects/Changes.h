#pragma once

#include "KarvelPDFLibrary/io/ObjectFile.h"

#include <cstdint>
#include <optional>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace karvel {

/// The one door for changes of a document's objects. libqpdf does not tell which objects were
/// changed; whoever changes one asks here for it, and the record says so. Objects that stand inside
/// another one are changed through the object with a number that holds them.
class Changes {
public:
    enum class Kind : std::uint8_t { Changed, Added, Removed };

    explicit Changes(io::ObjectFile& file) : file_(file) {}

    /// Tells the highest number that the file has an object for or refers to. Otherwise libqpdf
    /// reads every object to find a number for a new one.
    void setHighestNumber(std::uint32_t number) { highestNumber_ = number; }

    /// The object for changing: recorded as changed. `object` must be an indirect object.
    QPDFObjectHandle edit(const QPDFObjectHandle& object);

    /// The trailer for changing.
    QPDFObjectHandle editTrailer();

    /// Gives a direct object a number of its own.
    QPDFObjectHandle add(const QPDFObjectHandle& direct);

    /// Puts another value in an object's place; what refers to the object sees the new value.
    void replace(QPDFObjGen number, const QPDFObjectHandle& value);

    /// Gives a dictionary a new value by its text. libqpdf is told by settle(), so that an object
    /// whose text is known need not be built. False, with nothing changed, when the text holds
    /// strings and the file is encrypted: they may be enciphered.
    bool replaceText(QPDFObjGen number, std::string text);

    /// The text of an object that was changed by it and has not been built since; null for others.
    const std::string* text(int number) const;

    /// An object for reading, as replaceText() left it.
    QPDFObjectHandle present(QPDFObjGen number);

    /// Takes an object out of the document: what still refers to it refers to nothing. libqpdf is
    /// told by settle().
    void remove(QPDFObjGen number);

    /// Whether an indirect object is still in the document.
    bool isThere(const QPDFObjectHandle& object) const;

    /// Makes libqpdf's objects agree with the record. Not needed for a save that goes by the
    /// record.
    void settle();

    /// Records that the document is to be written otherwise (encryption, version).
    void recordSetting() { ++revision_; }

    /// Grows with every change; equal numbers mean an equal document.
    std::uint64_t revision() const { return revision_; }

    /// What became of an object; nothing for an unchanged one.
    std::optional<Kind> kind(int number) const
    {
        const auto at = static_cast<std::size_t>(number);
        return at < kinds_.size() && kinds_[at] != unchanged
                   ? std::optional<Kind>(static_cast<Kind>(kinds_[at]))
                   : std::nullopt;
    }

    /// The numbers of the changed, added and removed objects, in the order in which they became it.
    const std::vector<int>& numbers() const { return numbers_; }

private:
    static constexpr std::uint8_t unchanged = 255;

    void record(QPDFObjGen number, Kind kind);
    void build(int number);
    void put(QPDFObjGen number, const QPDFObjectHandle& value);
    void checkNumber(std::uint64_t number);
    QPDFObjectHandle withNumber(const QPDFObjectHandle& direct);

    io::ObjectFile& file_;
    std::optional<std::uint64_t> highestNumber_;
    std::vector<std::uint8_t> kinds_; // by number
    std::vector<int> numbers_;
    std::vector<QPDFObjGen> removed_;                            // not settled yet
    std::unordered_map<int, std::pair<int, std::string>> texts_; // generation and text, likewise
    std::uint64_t revision_ = 0;
};

} // namespace karvel
