#include "tests/VantoraHost/cli/configuration/Meaning.h"

#include <utility>

namespace support {

using namespace vantora;
using namespace vantora::cli;

std::string meaningOf(const tl::expected<Command, Ending>& command)
{
    if (!command) {
        return mistakeText(command.error(), {});
    }
    const auto& run = std::get<RunOptions>(*command);
    std::string text;
    for (const NamedStep& step : run.steps) {
        text += step.saved ? "saved " + step.saved->name : step.action;
        for (const auto& [key, value] : step.options) {
            text += " " + key + "=" + value;
        }
        text += "; ";
    }
    if (run.destination) {
        const auto* folder = std::get_if<ToFolder>(&*run.destination);
        const auto* inPlace = std::get_if<InPlace>(&*run.destination);
        text += std::to_string(run.destination->index()) + (folder ? folder->path : "") +
                (folder && folder->name ? " " + folder->name->of("n.pdf", 1, 1) : "") +
                (inPlace && inPlace->backup ? " backup" : "");
    }
    const std::pair<const char*, bool> flags[] = {{"keep-signed", run.keepSigned},
                                                  {"strict", run.strict},
                                                  {"verify", run.verify},
                                                  {"skip-existing", run.skipExisting},
                                                  {"hashes", run.reportHashes},
                                                  {"quiet", run.quiet},
                                                  {"verbose", run.verbose},
                                                  {"json", run.json},
                                                  {"recursive", run.inputs.recursive},
                                                  {"certificates", run.certificates.has_value()}};
    for (const auto& [name, on] : flags) {
        text += on ? std::string(" ") + name : "";
    }
    for (const std::string& path : run.resumed) {
        text += " resume " + path;
    }
    return text + " taken " + std::to_string(static_cast<int>(run.taken)) + " jobs " +
           std::to_string(run.workers.jobs.value_or(999)) + " time " +
           std::to_string(run.workers.timeout.value_or(999)) + " memory " +
           std::to_string(run.workers.memoryLimit.value_or(999)) + " report " + run.reportPath +
           " metrics " + run.metricsPath + " passwords " + run.passwordFile + " checksums " +
           run.checksumsPath + " empty " +
           std::to_string(run.ifEmpty ? static_cast<int>(*run.ifEmpty) : 999) + " accepted " +
           std::to_string(run.acceptedFailures.size());
}

} // namespace support
