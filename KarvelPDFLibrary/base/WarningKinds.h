#pragma once

namespace karvel {

/// What warnings begin with that tell what deleting pages did to a document, such as removing
/// signatures.
constexpr char deletingPages[] = "deleting pages: ";

/// What a warning begins with that tells which part of a page is missing in what was saved, since
/// damage made it unreadable; the page's number and ": " follow.
constexpr char lostOfPage[] = "lost of page ";

/// What stands there for a page that the saved document doesn't have; more may follow.
constexpr char pageLeftOut[] = "it cannot be read, and is left out";

/// What a note begins with that names things of the document that may repeat what removed pages
/// said, such as attachments: nobody but a person can judge. All other warnings tell what was found
/// to be damaged.
constexpr char leftToJudge[] = "left to judge: ";

/// What a warning begins with that tells which text of a page can be seen but not read.
constexpr char unreadableText[] = "unreadable text: ";

} // namespace karvel
