#pragma once

#include "VantoraHost/verification/Findings.h"
#include "VantoraHost/verification/Split.h"
#include "VantoraHost/verification/Viewed.h"
#include "VantoraHost/verification/Walk.h"

#include <map>
#include <vector>

namespace vantora::verification {

/// What a document has that belongs to removed pages only, and what belongs to others as well.
class Belongings {
public:
    Belongings(const Split& split, const Judgement& judgement);

    const std::vector<Piece>& ofRemoved() const { return removed_.pieces(); }
    const std::vector<Piece>& ofOthers() const { return others_.pieces(); }

    /// What the document lists by name and only removed pages used, such as attached files.
    const std::vector<NamedThing>& listedForRemoved() const { return listedForRemoved_; }

    /// Whether a page's content could not be decoded, so that what it uses was guessed.
    bool guessed() const { return others_.guessed() || removed_.guessed(); }

private:
    bool isOnlyAboutRemoved(QPDFObjectHandle object) const;
    bool keepsOutOfOthers(QPDFObjectHandle object);
    void walkDocument();
    void walkRemovedPages(Walk& walk);
    void walkNames(const Walk& ofRemovedPages);

    const Split& split_;
    const Judgement& judgement_;
    std::vector<QPDFObjectHandle> aboutRemoved_;
    std::vector<NamedThing> listedForRemoved_;
    Walk others_;
    Walk removed_;
};

/// Looks in a file for what belonged to removed pages only, whether or not anything refers to it.
void findLeftovers(const Split& split, const Judgement& judgement, const Belongings& belongings,
                   PdfFile& after, const Viewed* viewedBefore, Findings& findings);

} // namespace vantora::verification
