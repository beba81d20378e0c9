#pragma once

#include "VantoraHost/verification/Findings.h"
#include "VantoraHost/verification/Leftovers.h"
#include "VantoraHost/verification/Split.h"
#include "VantoraHost/verification/Viewed.h"

namespace vantora::verification {

/// Two files that are held against each other.
struct Both {
    const Split& split; ///< of the file before
    const Judgement& judgement;
    const Belongings& belongings;
    const Targets& targets;
    PdfFile& after;
    const Targets& targetsAfter;
    Findings& findings;
};

/// Compares what the kept pages are made of and have: content, sizes, labels, links, annotations.
/// The files have as many pages as they are to have.
void compareKeptPages(const Both& both);

/// Compares what the kept pages show. Changes the file before, of which nobody may need more then:
/// what had to go from kept pages, such as links to removed ones, is taken out to see the rest.
void compareViews(const Both& both, const Viewed* before, const Viewed* after);

/// Compares what belongs to the document: outline, names, fields, information, and how it is
/// encrypted.
void compareDocuments(const Both& both);

} // namespace vantora::verification
