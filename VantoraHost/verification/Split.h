#pragma once

#include "VantoraHost/verification/PdfFile.h"
#include "VantoraHost/verification/Targets.h"

#include <set>
#include <string>
#include <vector>

namespace vantora::verification {

/// Which pages of a document were to go.
class Split {
public:
    Split(PdfFile& file, const std::vector<std::pair<int, int>>& removed);

    PdfFile& file() const { return file_; }
    bool goes(int place) const { return goes_[static_cast<std::size_t>(place)]; }
    /// Whether an object is a page that goes at every place where it stands.
    bool isRemoved(const QPDFObjectHandle& object) const;
    bool isKept(const QPDFObjectHandle& object) const;
    bool leadsToRemoved(const Target& target) const
    {
        return target.where == Target::Where::Page && goes(target.place);
    }
    /// The number, from 1, of a page; 0 for what is none.
    int numberOf(const QPDFObjectHandle& object) const;

    const std::vector<int>& kept() const { return kept_; }       ///< places, ascending
    const std::vector<int>& removed() const { return removed_; } ///< places, ascending
    /// A target as it has to be afterwards.
    Target afterwards(Target target) const;

private:
    PdfFile& file_;
    std::vector<bool> goes_;
    std::vector<int> kept_;
    std::vector<int> removed_;
    std::vector<int> placeAfter_;
};

/// An object that belongs to pages in a way of its own: whether it has to go, and what it is.
struct Judged {
    QPDFObjectHandle object;
    Kind kind = Kind::Resource;
    int page = 0; ///< the number of a page that it belongs to; 0 for none
    bool goes = false;
};

/// An entry of an outline.
struct OutlineEntry {
    Judged judged;
    std::string title; ///< UTF-8
    Target target;
    bool lostTarget = false;
};

/// A field of the form, with what it inherits.
struct Field {
    std::string name; ///< whole, UTF-8
    std::string value;
    bool isSignature = false;
    bool goes = false;
};

/// What has a name in the document's lists of names.
struct NamedThing {
    Kind kind = Kind::Name;
    int page = 0;
    std::string name; ///< as in the file
    bool goes = false;
};

/// What belongs to removed pages in ways of its own, found from each kind's root. Objects that are
/// judged here are in no other's keeping.
class Judgement {
public:
    Judgement(const Split& split, const Targets& targets);

    const std::vector<Judged>& all() const { return all_; }
    bool isJudged(QPDFObjectHandle object) const;
    bool goes(QPDFObjectHandle object) const;

    const std::vector<OutlineEntry>& outline() const { return outline_; }
    const std::vector<Field>& fields() const { return fields_; }
    const std::vector<NamedThing>& names() const { return names_; }

    /// Whether tags stay that somebody can read.
    bool structureStays() const { return structureStays_; }

private:
    void judgeAnnotations();
    void judgeFollowers();
    void judgeFields();
    bool judgeWidget(QPDFObjectHandle object, int& page, bool& gone) const;
    void judgeStructure();
    void judgeThreads();
    void judgeOutline(const Targets& targets);
    void judgeNames(const Targets& targets);
    void add(Judged judged);

    const Split& split_;
    std::vector<Judged> all_;
    std::map<QPDFObjGen, bool> judged_;
    std::map<QPDFObjGen, int> ownerOf_; ///< of annotations, page numbers
    std::vector<OutlineEntry> outline_;
    std::vector<Field> fields_;
    std::vector<NamedThing> names_;
    bool structureStays_ = false;
};

/// The annotations of a page.
std::vector<QPDFObjectHandle> annotationsOf(QPDFObjectHandle page);

} // namespace vantora::verification
