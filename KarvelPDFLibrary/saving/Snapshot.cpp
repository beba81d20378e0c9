#include "KarvelPDFLibrary/saving/Snapshot.h"

#include "KarvelPDFLibrary/saving/Save.h"

namespace karvel::saving {

Result<Snapshot> snapshot(Document& document, Encrypting encrypting, LostPages lost)
{
    if (document.isAsLoaded()) {
        return Snapshot{document.source(), document.password()};
    }
    SaveOptions options;
    options.objectStreams = ObjectStreams::Keep;
    options.streamData = StreamData::Keep;
    options.encrypting = encrypting;
    options.lostPages = lost;
    Result<std::string> bytes = copyToString(document, options);
    if (!bytes) {
        return tl::unexpected<Error>(bytes.error());
    }
    const bool encrypted = encrypting == Encrypting::AsLoaded;
    return Snapshot{io::fromMemory(std::move(*bytes)), encrypted ? document.password() : ""};
}

} // namespace karvel::saving
