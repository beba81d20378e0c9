#include "VantoraHost/core/outputs/OutputPlan.h"

#include "KarvelPDFLibrary/io/Durability.h"
#include "KarvelPDFLibrary/io/TemporaryFile.h"
#include "VantoraApp/FileNames.h"
#include "VantoraHost/core/FileIdentity.h"
#include "VantoraHost/core/outputs/Backup.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <set>
#include <system_error>
#include <unordered_map>

namespace vantora {

namespace fs = std::filesystem;
using karvel::io::folderOf;

namespace {

using Planned = std::vector<Result<Target>>;

Target fileTarget(const fs::path& name, const fs::path& path, bool replace)
{
    Target target;
    target.name = name;
    target.path = path;
    target.replace = replace;
    return target;
}

/// The path, or the first copy of it that isn't taken: only its last part is numbered.
fs::path freeName(const fs::path& path, const std::function<bool(const fs::path&)>& isTaken,
                  qint64 first = 1)
{
    const auto candidate = [&](const QString& name) {
        return path.parent_path() / name.toLatin1().toStdString(); // each character is one byte
    };
    const std::string name = path.filename();
    return candidate(FirstFreeCopyName(
        QString::fromLatin1(name.data(), static_cast<int>(name.size())),
        [&](const QString& tried) { return isTaken(candidate(tried)); }, first));
}

/// Decides the targets of one run; `inputs` are known by what they are, not by their names.
class Planner {
public:
    Planner(const std::vector<Input>& inputs, TakenName taken) : inputs(inputs), taken(taken)
    {
        for (std::size_t i = 0; i < inputs.size(); ++i) {
            if (inputs[i].path == standardStream) {
                continue;
            }
            if (const auto identity = identityOf(inputs[i].path)) {
                inputOf.emplace(*identity, i);
            }
        }
    }

    /// `outputOf` says where an input's output is to be; `root` is a folder below which folders may
    /// be made, empty for none.
    Planned toPaths(const std::function<fs::path(std::size_t)>& outputOf, const fs::path& root)
    {
        Planned planned;
        planned.reserve(inputs.size());
        for (std::size_t i = 0; i < inputs.size(); ++i) {
            const fs::path output =
                taken == TakenName::Number ? numbered(outputOf(i)) : outputOf(i);
            planned.push_back(inputs[i].leftAlone ? Result<Target>(Target())
                                                  : targetFor(inputs[i].path, output, root));
            const bool known = planned[i] && !inputs[i].leftAlone;
            const fs::path file = known ? fs::path(planned[i]->path) : output;
            const auto [first, isNew] = writerOf.emplace(file.lexically_normal(), i);
            if (!isNew) {
                refuseBoth(planned, first->second, i,
                           "would be written to " + output.string() + ", too");
            }
        }
        return planned;
    }

    Planned inPlace(bool backup)
    {
        Planned planned;
        planned.reserve(inputs.size());
        for (std::size_t i = 0; i < inputs.size(); ++i) {
            planned.push_back(replacementOf(inputs[i].path, backup));
            const auto identity = identityOf(inputs[i].path);
            const auto first = identity ? inputOf.find(*identity) : inputOf.end();
            if (first != inputOf.end() && first->second != i) {
                refuseBoth(planned, first->second, i, "is the same file");
            }
        }
        return planned;
    }

private:
    /// A name that neither a file nor an earlier input of this run has.
    fs::path numbered(const fs::path& output)
    {
        qint64& number = copiesOf[output.lexically_normal()];
        return freeName(
            output,
            [&](const fs::path& path) {
                const bool isTaken = isThere(path) || writerOf.count(path.lexically_normal()) != 0;
                number += isTaken ? 1 : 0;
                return isTaken;
            },
            std::max<qint64>(1, number));
    }

    Result<Target> targetFor(const std::string& input, const fs::path& output,
                             const fs::path& root) const
    {
        const std::string name = output.filename();
        const auto folderInTheWay = [&] {
            return fail(Reason::OutputNotAFile, input,
                        "the output " + output.string() + " is a folder");
        };
        if (name.empty() || name == "." || name == "..") {
            return folderInTheWay();
        }
        const fs::path folder = folderOf(output);
        const bool mayBeMade = !root.empty() && folder != root;
        if (!isFolder(folder) && !(mayBeMade && !isThere(folder))) {
            return fail(Reason::OutputFolderMissing, input,
                        "the output folder " + folder.string() + " is not there");
        }
        if (!isThere(output)) {
            Target target = fileTarget(output, output, false);
            target.number = taken == TakenName::Number;
            return target;
        }
        if (isFolder(output)) {
            return folderInTheWay();
        }
        const auto identity = identityOf(output);
        const auto source = identity ? inputOf.find(*identity) : inputOf.end();
        if (source != inputOf.end()) {
            return fail(Reason::OutputIsInput, input,
                        "the output " + output.string() + " is " +
                            (inputs[source->second].path == input
                                 ? "the input itself"
                                 : "the input " + inputs[source->second].path));
        }
        std::error_code failed;
        if (identity && !fs::is_regular_file(output, failed)) {
            return fail(Reason::OutputNotAFile, input,
                        "the output " + output.string() + " is a device or pipe, not a file");
        }
        if (taken != TakenName::Replace) {
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
        target.replaceBackup = taken == TakenName::Replace;
        if (backup) {
            target.backup = target.path + ".bak";
            if (!target.replaceBackup && isThere(target.backup)) {
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
            const std::string& path = inputs[one].path;
            return fail(Reason::OutputClash, path,
                        path == inputs[other].path ? "it is named twice"
                                                   : inputs[other].path + " " + what);
        };
        planned[first] = refusal(first, second);
        planned[second] = refusal(second, first);
    }

    const std::vector<Input>& inputs;
    const TakenName taken;
    std::unordered_map<FileIdentity, std::size_t, FileIdentityHash> inputOf;
    std::unordered_map<std::string, std::size_t> writerOf; ///< by output
    std::unordered_map<std::string, qint64> copiesOf;      ///< taken names tried, by the first one
};

} // namespace

Result<Planned> planOutputs(const std::vector<Input>& inputs, const Destination& destination,
                            TakenName taken)
{
    Planner planner(inputs, taken);
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
        return planner.toPaths([&](std::size_t) { return fs::path(file->path); }, {});
    }
    const auto& named = std::get<ToFolder>(destination);
    const fs::path folder = named.path;
    if (!isFolder(folder)) {
        return fail(Reason::OutputFolderMissing, folder,
                    isThere(folder) ? "is not a folder" : "is not there");
    }
    // Paths are made one at a time: with their parts they take several times what texts do.
    const auto outputOf = [&](std::size_t i) {
        fs::path place = inputs[i].place();
        if (named.name) {
            place.replace_filename(named.name->of(place.filename().string(), i + 1, inputs.size()));
        }
        return folder / place;
    };
    return planner.toPaths(outputOf, folder);
}

void makeFolders(const std::vector<std::string>& inputs, std::vector<Result<Target>>& targets)
{
    std::unordered_map<std::string, std::error_code> made;
    for (std::size_t i = 0; i < targets.size(); ++i) {
        if (!targets[i] || targets[i]->standardOutput || targets[i]->path.empty()) {
            continue;
        }
        const fs::path folder = folderOf(targets[i]->path);
        const auto [found, isNew] = made.emplace(folder, std::error_code());
        if (isNew) {
            fs::create_directories(folder, found->second);
        }
        if (found->second) {
            targets[i] = fail(Reason::OutputNotWritable, inputs[i],
                              "the output folder " + folder.string() +
                                  " can't be made: " + found->second.message());
        }
    }
}

Target underFreeName(Target target)
{
    target.path = freeName(target.path, isThere);
    target.name = target.path;
    return target;
}

void removeAbandonedFiles(const std::vector<Result<Target>>& targets)
{
    std::set<fs::path> folders;
    for (const Result<Target>& target : targets) {
        if (target && !target->path.empty()) {
            folders.insert(folderOf(target->path));
        }
    }
    for (const fs::path& folder : folders) {
        karvel::io::removeAbandoned(folder);
        settleAbandonedBackups(folder);
    }
}

} // namespace vantora
