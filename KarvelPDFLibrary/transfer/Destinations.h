#pragma once

#include "KarvelPDFLibrary/document/Document.h"

#include <functional>
#include <map>
#include <string>
#include <unordered_set>

namespace karvel::transfer {

class ObjectCopier;

/// Takes destinations along (ISO 32000-2, 12.3.2): the named ones that lead to pages that come too,
/// under names that are free in the target.
class Destinations {
public:
    /// `copyOf` gives the copy of a page of the source by its number in the object table; an
    /// uninitialised handle when the page does not come too.
    using CopyOfPage = std::function<QPDFObjectHandle(int object)>;
    Destinations(Document& from, Document& to, ObjectCopier& copier, CopyOfPage copyOf);

    /// Whether a destination (explicit or named) leads to a page at all, and to one that comes too.
    enum class Leads { Nowhere, ToPageLeftBehind, ToPageThatComes };
    Leads leads(QPDFObjectHandle destination);

    /// Whether a link annotation or a GoTo action leads to a page that does not come too.
    bool leadsToPageLeftBehind(QPDFObjectHandle linkOrAction);

    /// Puts right what a copied dictionary says about destinations, if it is an action, a link or
    /// an outline entry, and takes out actions that would lead nowhere.
    void translate(QPDFObjectHandle source, QPDFObjectHandle copy);

    /// Copies the named destinations that were translated, or all that can come too. To be called
    /// when everything that may use them was copied.
    void copyNamed(bool all);

    /// Adds them to the target's name tree.
    void join();

private:
    struct Named {
        QPDFObjectHandle value;
        std::string name;
        bool isUsed = false;
        std::string newName = {}; // when it is used
        QPDFObjectHandle copy = {};
    };

    Named* find(QPDFObjectHandle name);
    QPDFObjectHandle pageOf(QPDFObjectHandle destination);
    QPDFObjectHandle translated(QPDFObjectHandle destination);
    QPDFObjectHandle nameFor(Named& named);
    QPDFObjectHandle copyOfTarget(QPDFObjectHandle page);

    Document& from_;
    Document& to_;
    ObjectCopier& copier_;
    CopyOfPage copyOf_;
    std::map<std::string, Named> strings_;  // of the name tree
    std::map<std::string, Named> names_;    // of the old dictionary, with slash
    std::unordered_set<std::string> taken_; // in the target
};

} // namespace karvel::transfer
