#include "VantoraHost/core/outputs/OutputPlan.h"

#include "KarvelPDFLibrary/io/Durability.h"
#include "KarvelPDFLibrary/io/TemporaryFile.h"
#include "VantoraApp/FileNames.h"
#include "VantoraHost/core/FileIdentity.h"
#include "VantoraHost/core/outputs/Backup.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <system_error>
#include <unordered_map>
#include <unordered_set>

namespace vantora {

namespace fs = std::filesystem;
using karvel::io::folderOf;

namespace {

using Planned = std::vector<Result<Target>>;

// One text for paths that differ only in needless parts. Few have any, and taking a path to its
// parts costs several times what looking for them does.
std::string normal(const std::string& path)
{
    const bool hasNeedlessParts =
        path.rfind('.', 0) == 0 || path.find("/.") != path.npos || path.find("//") != path.npos;
    return hasNeedlessParts ? fs::path(path).lexically_normal().string() : path;
}

std::string nameIn(const std::string& path)
{
    return path.substr(path.rfind('/') + 1);
}

Target fileTarget(const std::string& name, const std::string& path, bool replace)
{
    Target target;
    target.name = name;
    target.path = path;
    target.replace = replace;
    return target;
}

/// The path, or the first copy of it that isn't taken: only its last part is numbered.
std::string freeName(const std::string& path,
                     const std::function<bool(const std::string&)>& isTaken, qint64 first = 1)
{
    const std::string name = nameIn(path);
    const std::string folder = path.substr(0, path.size() - name.size());
    const auto candidate = [&](const QString& copy) {
        return folder + copy.toLatin1().toStdString(); // each character is one byte
    };
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
    Planned toPaths(const std::function<std::string(std::size_t)>& outputOf,
                    const std::string& root)
    {
        Planned planned;
        planned.reserve(inputs.size());
        for (std::size_t i = 0; i < inputs.size(); ++i) {
            const std::string output =
                taken == TakenName::Number ? numbered(outputOf(i)) : outputOf(i);
            planned.push_back(inputs[i].leftAlone ? Result<Target>(Target())
                                                  : targetFor(inputs[i].path, output, root));
            const bool known = planned[i] && !inputs[i].leftAlone;
            const auto [first, isNew] =
                writerOf.emplace(normal(known ? planned[i]->path : output), i);
            if (!isNew) {
                refuseBoth(planned, first->second, i, "would be written to " + output + ", too");
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
    std::string numbered(const std::string& output)
    {
        qint64& number = copiesOf[normal(output)];
        return freeName(
            output,
            [&](const std::string& path) {
                const bool isTaken = isThere(path) || writerOf.count(normal(path)) != 0;
                number += isTaken ? 1 : 0;
                return isTaken;
            },
            std::max<qint64>(1, number));
    }

    Result<Target> targetFor(const std::string& input, const std::string& output,
                             const std::string& root)
    {
        const std::string name = nameIn(output);
        const auto folderInTheWay = [&] {
            return fail(Reason::OutputNotAFile, input, "the output " + output + " is a folder");
        };
        if (name.empty() || name == "." || name == "..") {
            return folderInTheWay();
        }
        const std::string folder = folderOf(output);
        const bool mayBeMade = !root.empty() && folder != root;
        if (!isKnownFolder(folder) && !(mayBeMade && !isThere(folder))) {
            return fail(Reason::OutputFolderMissing, input,
                        "the output folder " + folder + " is not there");
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
                        "the output " + output + " is " +
                            (inputs[source->second].path == input
                                 ? "the input itself"
                                 : "the input " + inputs[source->second].path));
        }
        std::error_code failed;
        if (identity && !fs::is_regular_file(output, failed)) {
            return fail(Reason::OutputNotAFile, input,
                        "the output " + output + " is a device or pipe, not a file");
        }
        if (taken != TakenName::Replace) {
            return fail(Reason::OutputExists, input, "the output " + output + " exists already");
        }
        const fs::path behindLinks = fs::canonical(output, failed);
        return fileTarget(output, failed ? output : behindLinks.string(), true);
    }

    bool isKnownFolder(const std::string& folder)
    {
        return folders.count(folder) != 0 || (isFolder(folder) && folders.insert(folder).second);
    }

    Result<Target> replacementOf(const std::string& input, bool backup) const
    {
        std::error_code failed;
        const fs::path file = fs::canonical(input, failed);
        // Opening the input will say what is wrong with one that isn't there.
        Target target = fileTarget(input, failed ? input : file.string(), true);
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
    std::unordered_set<std::string> folders;               ///< that are there
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
        return planner.toPaths([&](std::size_t) { return file->path; }, {});
    }
    const auto& named = std::get<ToFolder>(destination);
    if (!isFolder(named.path)) {
        return fail(Reason::OutputFolderMissing, named.path,
                    isThere(named.path) ? "is not a folder" : "is not there");
    }
    const std::string folder = named.path + (named.path.back() == '/' ? "" : "/");
    const auto outputOf = [&](std::size_t i) {
        const std::string place(inputs[i].place());
        const std::string name = nameIn(place);
        return folder + place.substr(0, place.size() - name.size()) +
               (named.name ? named.name->of(name, i + 1, inputs.size()) : name);
    };
    return planner.toPaths(outputOf, folderOf(folder + "x"));
}

void makeFolders(const std::vector<std::string>& inputs, std::vector<Result<Target>>& targets)
{
    std::unordered_map<std::string, std::error_code> made;
    for (std::size_t i = 0; i < targets.size(); ++i) {
        if (!targets[i] || targets[i]->standardOutput || targets[i]->path.empty()) {
            continue;
        }
        const std::string folder = folderOf(targets[i]->path);
        const auto [found, isNew] = made.emplace(folder, std::error_code());
        if (isNew) {
            fs::create_directories(folder, found->second);
        }
        if (found->second) {
            targets[i] =
                fail(Reason::OutputNotWritable, inputs[i],
                     "the output folder " + folder + " can't be made: " + found->second.message());
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
    std::unordered_set<std::string> folders;
    for (const Result<Target>& target : targets) {
        if (target && !target->path.empty()) {
            folders.insert(folderOf(target->path));
        }
    }
    for (const std::string& folder : folders) {
        karvel::io::removeAbandoned(folder);
        settleAbandonedBackups(folder);
    }
}

} // namespace vantora
