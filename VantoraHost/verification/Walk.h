#pragma once

#include "VantoraHost/verification/PdfFile.h"

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace vantora::verification {

/// A string or a stream that a walk came upon.
struct Piece {
    Kind kind = Kind::Resource;
    int page = 0; ///< from 1
    QPDFObjectHandle object;
};

/// Goes over objects and all that they refer to, each indirect one once. Resources are entered by
/// use: of a page's, a form's or a pattern's dictionary only what its content names, since a
/// dictionary may serve several pages.
class Walk {
public:
    /// What is not entered: other pages, and what belongs to somebody else.
    using Keeps = std::function<bool(QPDFObjectHandle)>;
    Walk(const PdfFile& file, Keeps keepsOut) : file_(file), keepsOut_(std::move(keepsOut)) {}

    /// Walks a page: what it shows, has and is described by.
    void page(const Page& page, int number);

    /// Walks an object, even one that is kept out itself, leaving out some of its keys.
    void object(QPDFObjectHandle object, Kind kind, int number,
                const std::set<std::string>& leftOut = {});

    bool passed(QPDFObjectHandle object) const
    {
        return object.isIndirect() && seen_.count(object.getObjGen()) > 0;
    }
    const std::vector<Piece>& pieces() const { return pieces_; }

    /// Whether content could not be decoded, so that all of its resources counted as used.
    bool guessed() const { return guessed_; }

private:
    void goOn();
    void enter(Piece piece);
    void enterDictionary(QPDFObjectHandle dictionary, const Piece& piece,
                         const std::set<std::string>& leftOut);
    void push(QPDFObjectHandle object, Kind kind, int page);
    void pushResources(QPDFObjectHandle resources, std::optional<std::set<std::string>> names,
                       int page);
    std::optional<std::set<std::string>> namesIn(const std::vector<QPDFObjectHandle>& streams);
    void addFormsWithoutResources(QPDFObjectHandle resources,
                                  std::optional<std::set<std::string>>& names);

    const PdfFile& file_;
    Keeps keepsOut_;
    std::vector<Piece> open_;
    std::vector<Piece> pieces_;
    std::set<QPDFObjGen> seen_;
    bool guessed_ = false;
};

/// The content streams of a page.
std::vector<QPDFObjectHandle> contentsOf(QPDFObjectHandle page);

} // namespace vantora::verification
