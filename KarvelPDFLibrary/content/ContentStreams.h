#pragma once

#include "KarvelPDFLibrary/document/Document.h"

namespace karvel::content {

/// The streams that a page's /Contents refers to, in order.
std::vector<QPDFObjectHandle> contentStreams(QPDFObjectHandle page);

/// Asks for content streams that no two pages share. Deleting a page never takes a stream from
/// another one, so this makes a difference only when content is about to be changed:
/// ownStreams() then gives the page its own.
void removeSharedStreams(Document& document);

/// To be called before a page's content is changed: when removeSharedStreams() was asked for, every
/// stream that the page shares with another page is replaced by one of the page's own, whose data
/// is read from the other one when it is needed and never copied in memory.
Outcome ownStreams(Document& document, int page);

/// To be called before saving: streams that ownStreams() made and that are still what they were
/// made from are given up again, so that the file holds the data once.
Outcome giveUpUnchangedStreams(Document& document);

} // namespace karvel::content
