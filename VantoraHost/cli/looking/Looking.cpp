#include "VantoraHost/cli/looking/Looking.h"

#include "VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h"
#include "VantoraHost/core/Target.h"
#include "VantoraHost/core/documents/PdfLibrary.h"
#include "VantoraHost/core/reports/FailureJson.h"
#include "VantoraHost/core/workers/ConfinedCall.h"
#include "VantoraHost/core/workers/Confinement.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <system_error>
#include <thread>

namespace vantora::cli {

Looking::Looking(const LookOptions& options, const Streams& streams)
    : options_(options), streams_(streams)
{
}

Looking::~Looking() = default;
Looking::Looking(Looking&&) noexcept = default;

Result<Looking> Looking::prepare(const LookOptions& options, const Installation& installation,
                                 const Streams& streams)
{
    Looking looking(options, streams);
    auto passwords = readPasswords(options.passwordFile);
    if (!passwords) {
        return tl::unexpected<Error>(std::move(passwords.error()));
    }
    looking.passwords_ = std::move(*passwords);
    auto library = loadPdfLibrary(installation.library);
    if (!library) {
        return tl::unexpected<Error>(std::move(library.error()));
    }
    looking.library_ = std::move(*library);
    auto inputs = inputsNamed(options.inputs, {}, false, streams);
    if (!inputs) {
        return tl::unexpected<Error>(std::move(inputs.error()));
    }
    looking.inputs_ = std::move(*inputs);
    const bool readsStandardInput =
        std::any_of(looking.inputs_.begin(), looking.inputs_.end(),
                    [](const Input& input) { return input.path == standardStream; });
    if (readsStandardInput) {
        auto document = readStandardInput(streams);
        if (document) {
            looking.standardInput_ = std::move(*document);
        } else {
            looking.unreadable_ = std::move(document.error());
        }
    }
    looking.programFiles_ = programFiles({installation.library.parent_path()});
    return looking;
}

bool Looking::atEach(const Look& look, const Take& take) const
{
    return atEach({[&](const std::string& input, std::size_t) { return look(input); },
                   {},
                   [&](const std::string& input, PieceAnswers found) {
                       take(input, onlyAnswer(std::move(found)));
                   }});
}

bool Looking::atEach(const Sharing& sharing) const
{
    if (hasProcesses()) {
        return inProcesses(sharing);
    }
    for (const Input& input : inputs_) {
        if (streams_.interrupted()) {
            return false;
        }
        sharing.take(input.path, std::vector{lookAt(sharing, input.path, 0)});
    }
    return true;
}

std::string Looking::lookAt(const Sharing& sharing, const std::string& input,
                            std::size_t part) const
{
    const bool isUnreadable = input == standardStream && unreadable_;
    return isUnreadable ? failureJson(*unreadable_, input) : sharing.look(input, part);
}

// Small ones that follow each other, but not so many that others have nothing to do.
std::size_t Looking::smallOnesFrom(std::size_t first, std::size_t atOnce) const
{
    constexpr std::size_t most = 16;
    constexpr std::uintmax_t small = 256 * 1024; // bytes
    const std::size_t share = (inputs_.size() - first) / (4 * atOnce);
    std::size_t count = 0;
    std::error_code failed;
    while (count < std::min(most, share) && inputs_[first + count].path != standardStream &&
           std::filesystem::file_size(inputs_[first + count].path, failed) <= small && !failed) {
        ++count;
    }
    return std::max<std::size_t>(1, count);
}

bool Looking::inProcesses(const Sharing& sharing) const
{
    const std::size_t most = options_.workers.jobs.value_or(
        std::max<std::size_t>(1, std::thread::hardware_concurrency()));
    const std::size_t atOnce = sharing.furtherParts ? most : std::min(inputs_.size(), most);
    ConfinedWork calls;
    calls.count = inputs_.size();
    calls.limits = {{programFiles_, {}},
                    options_.workers.memoryLimit.value_or(memoryShare(atOnce)),
                    std::chrono::seconds(options_.workers.timeout.value_or(longestForADocument))};
    calls.documents = [&](std::size_t i) { return std::vector{inputs_[i].path}; };
    calls.work = [&](std::size_t i, std::size_t part) {
        return lookAt(sharing, inputs_[i].path, part);
    };
    calls.together = [&](std::size_t i) { return smallOnesFrom(i, atOnce); };
    if (sharing.furtherParts) {
        calls.furtherParts = [&](std::size_t i, const std::string& first) {
            return sharing.furtherParts(inputs_[i].path, first, atOnce);
        };
    }
    return callEachConfined(calls, atOnce, streams_.interrupted,
                            [&](std::size_t i, PieceAnswers found) {
                                sharing.take(inputs_[i].path, std::move(found));
                            });
}

} // namespace vantora::cli
