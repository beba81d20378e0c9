#include "VantoraHost/core/OutputPlan.h"

#include "KarvelPDFLibrary/io/TemporaryFile.h"
#include "VantoraHost/core/FileIdentity.h"

#include <filesystem>
#include <set>
#include <system_error>
#include <unordered_map>

namespace vantora {

namespace fs = std::filesystem;

namespace {

using Planned = std::vector<Result<Target>>;

bool isFolder(const fs::path& path)
{
    std::error_code failed;
    return fs::is_directory(path, failed);
}

Target fileTarget(const fs::path& name, const fs::path& path, bool replace)
{
    Target target;
    target.name = name;
    target.path = path;
    target.replace = replace;
    return target;
}

/// Decides the targets of one run; `inputs` are known by what they are, not by their names.
class Planner {
public:
    Planner(const std::vector<std::string>& inputs, bool overwrite)
        : inputs(inputs), overwrite(overwrite)
    {
        for (std::size_t i = 0; i < inputs.size(); ++i) {
            if (inputs[i] == standardStream) {
                continue;
            }
            if (const auto identity = identityOf(inputs[i])) {
                inputOf.emplace(*identity, i);
            }
        }
    }

    Planned toPaths(const std::vector<fs::path>& outputs)
    {
        Planned planned;
        std::unordered_map<std::string, std::size_t> writerOf;
        for (std::size_t i = 0; i < outputs.size(); ++i) {
            planned.push_back(targetFor(inputs[i], outputs[i]));
            const fs::path file = planned[i] ? fs::path(planned[i]->path) : outputs[i];
            const auto [first, isNew] = writerOf.emplace(file.lexically_normal(), i);
            if (!isNew) {
                refuseBoth(planned, first->second, i,
                           "would be written to " + outputs[i].string() + ", too");
            }
        }
        return planned;
    }

    Planned inPlace(bool backup)
    {
        Planned planned;
        for (std::size_t i = 0; i < inputs.size(); ++i) {
            planned.push_back(replacementOf(inputs[i], backup));
            const auto identity = identityOf(inputs[i]);
            const auto first = identity ? inputOf.find(*identity) : inputOf.end();
            if (first != inputOf.end() && first->second != i) {
                refuseBoth(planned, first->second, i, "is the same file");
            }
        }
        return planned;
    }

private:
    Result<Target> targetFor(const std::string& input, const fs::path& output) const
    {
        const std::string name = output.filename();
        if (name.empty() || name == "." || name == ".." || isFolder(output)) {
            return fail(Reason::OutputNotAFile, input,
                        "the output " + output.string() + " is a folder");
        }
        const fs::path folder = output.has_parent_path() ? output.parent_path() : ".";
        if (!isFolder(folder)) {
            return fail(Reason::OutputFolderMissing, input,
                        "the output folder " + folder.string() + " is not there");
        }
        const auto identity = identityOf(output);
        const auto source = identity ? inputOf.find(*identity) : inputOf.end();
        if (source != inputOf.end()) {
            return fail(Reason::OutputIsInput, input,
                        "the output " + output.string() + " is " +
                            (inputs[source->second] == input
                                 ? "the input itself"
                                 : "the input " + inputs[source->second]));
        }
        std::error_code failed;
        const fs::file_status itself = fs::symlink_status(output, failed);
        if (!fs::exists(itself)) {
            return fileTarget(output, output, false);
        }
        if (identity && !fs::is_regular_file(output, failed)) {
            return fail(Reason::OutputNotAFile, input,
                        "the output " + output.string() + " is a device or pipe, not a file");
        }
        if (!overwrite) {
            return fail(Reason::OutputExists, input,
                        "the output " + output.string() + " exists already");
        }
        const fs::path behindLinks = fs::canonical(output, failed);
        return fileTarget(output, failed ? output : behindLinks, true);
    }

    Result<Target> replacementOf(const std::string& input, bool backup) const
    {
        std::error_code failed;
        const fs::path file = fs::canonical(input, failed);
        // Opening the input will say what is wrong with one that isn't there.
        Target target = fileTarget(input, failed ? fs::path(input) : file, true);
        target.replaceBackup = overwrite;
        if (backup) {
            target.backup = target.path + ".bak";
            if (!overwrite && fs::exists(fs::symlink_status(target.backup, failed))) {
                return fail(Reason::BackupExists, input,
                            "the backup " + target.backup + " exists already");
            }
            const auto identity = identityOf(target.backup);
            if (identity && inputOf.count(*identity) != 0) {
                return fail(Reason::OutputIsInput, input,
                            "the backup " + target.backup + " is itself an input");
            }
        }
        return target;
    }

    void refuseBoth(Planned& planned, std::size_t first, std::size_t second,
                    const std::string& what) const
    {
        const auto refusal = [&](std::size_t one, std::size_t other) {
            return fail(Reason::OutputClash, inputs[one],
                        inputs[one] == inputs[other] ? "it is named twice"
                                                     : inputs[other] + " " + what);
        };
        planned[first] = refusal(first, second);
        planned[second] = refusal(second, first);
    }

    const std::vector<std::string>& inputs;
    const bool overwrite;
    std::unordered_map<FileIdentity, std::size_t, FileIdentityHash> inputOf;
};

} // namespace

Result<Planned> planOutputs(const std::vector<std::string>& inputs, const Destination& destination,
                            bool overwrite)
{
    Planner planner(inputs, overwrite);
    if (std::holds_alternative<ToStandardOutput>(destination)) {
        Target target;
        target.name = standardStream;
        target.standardOutput = true;
        return Planned(inputs.size(), target);
    }
    if (const auto* replaced = std::get_if<InPlace>(&destination)) {
        return planner.inPlace(replaced->backup);
    }
    if (const auto* file = std::get_if<ToFile>(&destination)) {
        return planner.toPaths(std::vector<fs::path>(inputs.size(), file->path));
    }
    const fs::path folder = std::get<ToFolder>(destination).path;
    if (!isFolder(folder)) {
        std::error_code failed;
        return fail(Reason::OutputFolderMissing, folder,
                    fs::exists(folder, failed) ? "is not a folder" : "is not there");
    }
    std::vector<fs::path> outputs;
    for (const std::string& input : inputs) {
        outputs.push_back(folder / fs::path(input).filename());
    }
    return planner.toPaths(outputs);
}

void removeAbandonedFiles(const std::vector<Result<Target>>& targets)
{
    std::set<fs::path> folders;
    for (const Result<Target>& target : targets) {
        if (target && !target->path.empty()) {
            const fs::path folder = fs::path(target->path).parent_path();
            folders.insert(folder.empty() ? "." : folder);
        }
    }
    for (const fs::path& folder : folders) {
        karvel::io::removeAbandoned(folder);
    }
}

} // namespace vantora
