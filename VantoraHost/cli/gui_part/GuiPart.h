#pragma once

#include "VantoraHost/cli/console/Streams.h"
#include "VantoraHost/core/Installation.h"
#include "VantoraHost/core/actions/SavedSteps.h"
#include "VantoraHost/core/actions/Sequence.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

class QByteArray;

namespace vantora {
struct WorkerChannel;
}

namespace vantora::cli {

struct ConfigureOptions;
struct SavedOptions;

/// What needs the libraries for windows and for fonts and colours, which stored options may hold.
/// Loading these takes about as long as everything else that the program does at its start, so this
/// part is a module of its own, and commands that do without it don't load it.
class GuiPart {
public:
    virtual ~GuiPart() = default;

    virtual Result<std::vector<StepRequest>> steps(const SavedIn& saved) const = 0;

    /// The saved options that a run passes to its workers; none when the bytes are no options.
    virtual std::optional<PreferencesMap> options(const QByteArray& stored) const = 0;

    virtual int saved(const SavedOptions& options, const Installation& installation,
                      const Streams& streams) const = 0;
    virtual int configure(const ConfigureOptions& options, const Installation& installation,
                          const Streams& streams) const = 0;

    /// As the function of that name in cli/certificates.
    virtual bool drawCertificates(const WorkerChannel& channel) const = 0;
};

/// Where a command gets that part from; it stays loaded to the program's end.
using GuiPartSource = std::function<Result<const GuiPart*>()>;

/// The part in the installation's module, for the program.
Result<const GuiPart*> loadGuiPart(const Installation& installation);

/// The name of the module's one function, a GuiPartEntry.
inline constexpr char guiPartEntryName[] = "vantoraGuiPart";
using GuiPartEntry = const GuiPart* (*)();

} // namespace vantora::cli
