#pragma once

#include "KarvelPDFLibrary/document/Document.h"
#include "KarvelPDFLibrary/transfer/ObjectCopier.h"

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace karvel::transfer {

/// Takes the fields of widget annotations along with them (ISO 32000-2, 12.7.4): the part of the
/// source's field tree that the widgets stand in becomes part of the target's. Both may be the same
/// document. To be used in the order of the functions.
class Fields {
public:
    Fields(Document& from, Document& to, ObjectCopier& copier);

    /// A widget annotation of the source and its copy.
    void addWidget(const QPDFObjectHandle& source, const QPDFObjectHandle& copy);

    /// Makes the copies of the fields, still empty, and maps all fields of the source: those that
    /// have no widget here to null, unless `whole` says that fields without any widget come too.
    void plan(bool whole);

    /// Fills in the copies; those of widgets must have been filled in but for /Parent and /Kids.
    void fill();

    /// Puts the fields into the target's form. One whose name is taken there gets another: the name
    /// with "-2" or the next number that is free.
    void join();

    /// Entries of a widget annotation that are set by fill().
    static const std::vector<std::string>& ownEntries();

private:
    struct Node {
        QPDFObjectHandle source;
        int parent = -1;
        bool isWidget = false; // field and widget annotation in one
        bool isKept = false;
        QPDFObjectHandle copy = {};
        std::string type = {}; // /FT, inherited or own

        /// What stands below it, in order: the number of a node, or the copy of a widget.
        std::vector<std::pair<int, QPDFObjectHandle>> kids = {};
    };

    void walk(const QPDFObjectHandle& root);
    int addNode(const QPDFObjectHandle& source, int parent);
    void walkOrphans();
    bool within() const { return &from_ == &to_; }
    void joinResources(QPDFObjectHandle form);
    void joinDefaults();
    void rename(QPDFObjectHandle root, std::unordered_set<std::string>& taken);

    Document& from_;
    Document& to_;
    ObjectCopier& copier_;
    std::unordered_map<int, QPDFObjectHandle> widgets_; // copies by the source's numbers
    std::vector<QPDFObjectHandle> widgetSources_;
    std::vector<Node> nodes_; // parents before their children
    std::unordered_set<int> seen_;
    std::unordered_map<std::string, std::string> fontNames_; // in default appearances, with slash
};

} // namespace karvel::transfer
