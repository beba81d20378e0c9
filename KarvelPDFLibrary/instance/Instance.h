#pragma once

#include "KarvelPDFLibrary/base/Error.h"
#include "KarvelPDFLibrary/instance/Buffers.h"
#include "KarvelPDFLibrary/instance/OpenDocuments.h"
#include "KarvelPDFLibrary/saving/SaveOptions.h"

#include <memory>
#include <string>

namespace karvel {

/// What a caller of the C interface works with: open documents, settings, the last error and the
/// strings that cross the interface. Used by one thread at a time; instances share nothing.
class Instance {
public:
    Buffers buffers;
    Error lastError;
    OpenDocuments documents;
    saving::SaveOptions saveOptions;

    /// Whether loading may rebuild a damaged cross-reference table.
    bool reconstruct = true;

    /// Whether damaged documents may be saved with losses.
    bool salvage = false;

    /// What NewPage adds: width and height in points; A4 at first.
    double defaultPageWidth = 595.276;
    double defaultPageHeight = 841.89;

    /// The last string results. They stay valid until the next call that returns one.
    std::wstring wideResult;
    std::string byteResult;
};

/// The instances by their numbers; every operation may be called from any thread.
namespace instances {

/// A new instance's number, greater than 0.
int create();

/// False when there is no such instance.
bool release(int number);

/// Null when there is no such instance. The pointer keeps the instance alive for the call.
std::shared_ptr<Instance> find(int number);

} // namespace instances

} // namespace karvel
