#pragma once

#include "KarvelPDFLibrary/io/OutputFile.h"

namespace karvel::saving {

/// Keep: as in the file. Where objects have to be rewritten, a document that has object streams
/// gets new ones.
enum class ObjectStreams : int { Keep = 0, None = 1, Pack = 2 };
enum class StreamData : int { Keep = 0, Decode = 1, Compress = 2 };

/// Encryption by the document's plan, or as it was loaded, or none.
enum class Encrypting { AsPlanned, AsLoaded, Never };

/// What becomes of pages that can't be read: the document is refused or they are left out, as its
/// caller wished (Document::maySalvage()); it is refused in any case; empty pages are shown.
enum class LostPages { AsWished, Refuse, ShowEmpty };

/// Whether objects that were not changed may be copied as they stand in the file.
enum class Way { CopyUnchanged, Rewrite };

/// How documents are written; the defaults are those of the library's interface.
struct SaveOptions {
    ObjectStreams objectStreams = ObjectStreams::Pack;
    StreamData streamData = StreamData::Compress;

    /// 1 (fast) to 9 (small); 0 is zlib's default.
    int flateLevel = 0;
    bool recompressFlate = false;
    bool linearize = false;

    /// Derive the changing half of the identifier from the content; encrypted documents always get
    /// a new one.
    bool deterministicIdentifier = false;
    bool readable = false;
    Encrypting encrypting = Encrypting::AsPlanned;
    io::Existing existing = io::Existing::Replace;
    LostPages lostPages = LostPages::AsWished;

    /// CopyUnchanged where the document and the other options allow it.
    Way way = Way::CopyUnchanged;
};

} // namespace karvel::saving
