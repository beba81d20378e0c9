#include "VantoraHost/core/outputs/OutputPlan.h"

#include "KarvelPDFLibrary/io/TemporaryFile.h"
#include "VantoraApp/environment/FileNames.h"
#include "VantoraHost/core/FileIdentity.h"
#include "VantoraHost/core/outputs/Backup.h"
#include "VantoraHost/core/outputs/StatusesAhead.h"
#include "VantoraHost/core/outputs/TargetFolder.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <filesystem>
#include <functional>
#include <system_error>
#include <unordered_map>
#include <unordered_set>

namespace vantora {

namespace fs = std::filesystem;
using karvel::io::folderOf;
using karvel::io::nameIn;

namespace {

using Planned = std::vector<Result<Target>>;

std::string withSlash(const std::string& folder)
{
    return folder + (folder.back() == '/' ? "" : "/");
}

Target fileTarget(const std::string& name, const std::string& path)
{
    Target target;
    target.name = name;
    target.path = path;
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
    Planner(const std::vector<Input>& inputs, TakenName taken) : inputs_(inputs), taken_(taken)
    {
        found_.reserve(inputs.size());
        inputOf_.reserve(inputs.size());
        StatusesAhead statuses(
            inputs.size(),
            [&](std::size_t i) {
                return inputs[i].path == standardStream ? std::string() : inputs[i].path;
            },
            Links::Follow);
        for (std::size_t i = 0; i < inputs.size(); ++i) {
            const auto status = statuses.next().status;
            found_.push_back(status ? std::optional(karvel::io::versionOf(*status)) : std::nullopt);
            if (status) {
                inputOf_.emplace(identityOf(*status), i);
            }
        }
    }

    /// `outputOf` says where an input's output is to be; `root` is what paths into a folder that
    /// was named begin with, below which folders may be made; empty for none.
    Planned toPaths(const std::function<std::string(std::size_t)>& outputOf,
                    const std::string& root)
    {
        Planned planned;
        planned.reserve(inputs_.size());
        writerOf_.reserve(inputs_.size());
        StatusesAhead there(inputs_.size(), outputOf, Links::Keep);
        for (std::size_t i = 0; i < inputs_.size(); ++i) {
            const LookedAt looked = taken_ == TakenName::Number
                                        ? lookAt(numbered(outputOf(i)), Links::Keep)
                                        : there.next();
            const std::string& output = looked.path;
            planned.push_back(inputs_[i].leftAlone ? Result<Target>(Target())
                                                   : targetFor(inputs_[i].path, looked, root));
            noteSize(planned, i);
            const bool known = planned[i] && !inputs_[i].leftAlone;
            const auto [first, isNew] =
                writerOf_.emplace(normalPath(known ? planned[i]->path : output), i);
            if (!isNew) {
                refuseBoth(planned, first->second, i, "would be written to " + output + ", too");
            }
        }
        return planned;
    }

    Planned inPlace(bool backup)
    {
        Planned planned;
        planned.reserve(inputs_.size());
        for (std::size_t i = 0; i < inputs_.size(); ++i) {
            planned.push_back(replacementOf(inputs_[i].path, backup));
            noteSize(planned, i);
            const auto first =
                found_[i] ? inputOf_.find({found_[i]->device, found_[i]->inode}) : inputOf_.end();
            if (first != inputOf_.end() && first->second != i) {
                refuseBoth(planned, first->second, i, "is the same file");
            }
        }
        return planned;
    }

private:
    void noteSize(Planned& planned, std::size_t input) const
    {
        if (planned[input] && found_[input]) {
            planned[input]->inputSize = static_cast<std::uint64_t>(found_[input]->size);
        }
    }

    /// A name that neither a file nor an earlier input of this run has.
    std::string numbered(const std::string& output)
    {
        qint64& number = copiesOf_[normalPath(output)];
        return freeName(
            output,
            [&](const std::string& path) {
                const bool isTaken = isThere(path) || writerOf_.count(normalPath(path)) != 0;
                number += isTaken ? 1 : 0;
                return isTaken;
            },
            std::max<qint64>(1, number));
    }

    Result<Target> targetFor(const std::string& input, const LookedAt& output,
                             const std::string& root)
    {
        Result<Target> target = targetAt(input, output.path, root, output.status);
        if (target) {
            target->below = root.empty() ? target->below : root.size();
            target->root = rootOf(rootPathOf(*target));
        }
        return target;
    }

    Result<Target> targetAt(const std::string& input, const std::string& output,
                            const std::string& root, const std::optional<struct stat>& there)
    {
        const std::string name = nameIn(output);
        const auto folderInTheWay = [&] {
            return fail(Reason::OutputNotAFile, input, "the output " + output + " is a folder");
        };
        if (name.empty() || name == "." || name == "..") {
            return folderInTheWay();
        }
        if (const Outcome usable = folderIsUsable(folderOf(output), root); !usable) {
            Error error = usable.error();
            error.file = input;
            return tl::unexpected<Error>(std::move(error));
        }
        if (!there) {
            Target target = fileTarget(output, output);
            target.number = taken_ == TakenName::Number;
            return target;
        }
        // In a folder that was named a link is replaced itself, so that it can't lead out; a file
        // that was named is followed to where it leads.
        const bool isLink = S_ISLNK(there->st_mode);
        const auto file = !isLink ? there : root.empty() ? statusOf(output) : std::nullopt;
        if (file && S_ISDIR(file->st_mode)) {
            return folderInTheWay();
        }
        const auto source = file ? inputOf_.find(identityOf(*file)) : inputOf_.end();
        if (source != inputOf_.end()) {
            return fail(Reason::OutputIsInput, input,
                        "the output " + output + " is " +
                            (inputs_[source->second].path == input
                                 ? "the input itself"
                                 : "the input " + inputs_[source->second].path));
        }
        if (file && !S_ISREG(file->st_mode)) {
            return fail(Reason::OutputNotAFile, input,
                        "the output " + output + " is a device or pipe, not a file");
        }
        if (taken_ != TakenName::Replace) {
            return fail(Reason::OutputExists, input, "the output " + output + " exists already");
        }
        Target target = fileTarget(output, output);
        target.replaced = karvel::io::versionOf(*there);
        std::error_code failed;
        const fs::path behindLinks = root.empty() ? fs::canonical(output, failed) : fs::path();
        if (root.empty() && !failed) {
            target.path = behindLinks.string();
            target.replaced = versionAt(target.path);
        }
        return target;
    }

    Outcome folderIsUsable(const std::string& folder, const std::string& root)
    {
        if (folders_.count(folder) != 0) {
            return {};
        }
        if (root.size() > folder.size()) { // the named one itself, which is there
            return {};
        }
        int failed = isFolder(folder) ? 0 : ENOENT;
        if (!root.empty()) {
            const auto named = Folder::open(root);
            const auto opened = named ? (*named)->below(folder.substr(root.size()), Missing::Refuse)
                                      : tl::unexpected<int>(named.error());
            failed = opened ? 0 : opened.error();
        }
        if (failed == ELOOP) {
            return folderBehindLink(folder);
        }
        const bool mayBeMade = !root.empty() && failed == ENOENT;
        if (failed != 0 && !mayBeMade) {
            return fail(Reason::OutputFolderMissing, {},
                        "the output folder " + folder + " is not there");
        }
        folders_.insert(folder);
        return {};
    }

    std::optional<FileIdentity> rootOf(const std::string& folder)
    {
        const auto [found, isNew] = roots_.try_emplace(folder);
        if (isNew) {
            found->second = identityOf(folder);
        }
        return found->second;
    }

    Result<Target> replacementOf(const std::string& input, bool backup)
    {
        std::error_code failed;
        const fs::path file = fs::canonical(input, failed);
        // Opening the input will say what is wrong with one that isn't there.
        Target target = fileTarget(input, failed ? input : file.string());
        target.inPlace = true;
        target.root = rootOf(rootPathOf(target));
        if (!backup) {
            return target;
        }
        target.backup = backupOf(target.path);
        if (isThere(target.backup)) {
            const auto identity = identityOf(target.backup);
            const auto original = identityOf(target.path);
            if (identity && !(identity == original) && inputOf_.count(*identity) != 0) {
                return fail(Reason::OutputIsInput, input,
                            "the backup " + target.backup + " is itself an input");
            }
            const auto folder = Folder::open(folderOf(target.path));
            if (!folder || !holdsOriginal(**folder, nameIn(target.path), nameIn(target.backup))) {
                return fail(Reason::BackupExists, input,
                            "the backup " + target.backup + " exists already");
            }
        }
        return target;
    }

    void refuseBoth(Planned& planned, std::size_t first, std::size_t second,
                    const std::string& what) const
    {
        const auto refusal = [&](std::size_t one, std::size_t other) {
            const std::string& path = inputs_[one].path;
            return fail(Reason::OutputClash, path,
                        path == inputs_[other].path ? "it is named twice"
                                                    : inputs_[other].path + " " + what);
        };
        planned[first] = refusal(first, second);
        planned[second] = refusal(second, first);
    }

    const std::vector<Input>& inputs_;
    const TakenName taken_;
    std::vector<std::optional<FileVersion>> found_; ///< the inputs as they are
    std::unordered_map<FileIdentity, std::size_t, FileIdentityHash> inputOf_;
    std::unordered_map<std::string, std::size_t> writerOf_; ///< by output
    std::unordered_map<std::string, qint64> copiesOf_;      ///< taken names tried, by the first one
    std::unordered_set<std::string> folders_;               ///< that are there or can be made
    std::unordered_map<std::string, std::optional<FileIdentity>> roots_;
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
    const PlannedNames names(inputs, destination);
    const auto outputOf = [&names](std::size_t i) { return names.of(i); };
    const auto& named = std::get<ToFolder>(destination);
    if (!isFolder(named.path)) {
        return fail(Reason::OutputFolderMissing, named.path,
                    isThere(named.path) ? "is not a folder" : "is not there");
    }
    return planner.toPaths(outputOf, withSlash(named.path));
}

std::string PlannedNames::of(std::size_t input) const
{
    if (std::holds_alternative<ToStandardOutput>(destination_)) {
        return standardStream;
    }
    if (const auto* file = std::get_if<ToFile>(&destination_)) {
        return file->path;
    }
    if (std::holds_alternative<InPlace>(destination_)) {
        return inputs_[input].path;
    }
    const auto& named = std::get<ToFolder>(destination_);
    const std::string place(inputs_[input].place());
    const std::string name = nameIn(place);
    return withSlash(named.path) + place.substr(0, place.size() - name.size()) +
           (named.name ? named.name->of(name, input + 1, inputs_.size()) : name);
}

bool mayBeNamed(const std::string& output, const std::string& planned, TakenName taken)
{
    if (output == planned) {
        return true;
    }
    const std::size_t number = output.rfind(" (") + 2;
    qint64 copy = 0;
    const bool isNumbered =
        number >= 2 &&
        std::from_chars(output.data() + number, output.data() + output.size(), copy).ec ==
            std::errc();
    return taken == TakenName::Number && isNumbered && copy > 0 &&
           output == freeName(
                         planned, [&](const std::string& path) { return path == planned; }, copy);
}

Outcome keepsApart(const std::string& file, const std::vector<Input>& inputs,
                   const std::vector<Result<Target>>& targets)
{
    const auto identity = identityOf(file);
    const auto folder = identityOf(folderOf(file));
    const auto isPlaceOf = [&](const std::string& path) {
        return !path.empty() && nameIn(path) == nameIn(file) &&
               (folder ? folder == identityOf(folderOf(path))
                       : normalPath(path) == normalPath(file));
    };
    for (std::size_t i = 0; i < inputs.size(); ++i) {
        const bool isInput = identity && identity == identityOf(inputs[i].path);
        const bool isOutput =
            targets[i] && (isPlaceOf(targets[i]->path) || isPlaceOf(targets[i]->backup));
        if (isInput || isOutput) {
            return fail(Reason::ReportMisplaced, file,
                        isInput ? "is an input of this run"
                                : "is where the output for " + inputs[i].path + " goes");
        }
    }
    return {};
}

void makeFolders(const std::vector<std::string>& inputs, std::vector<Result<Target>>& targets)
{
    std::unordered_map<std::string, std::optional<Error>> made;
    for (std::size_t i = 0; i < targets.size(); ++i) {
        if (!targets[i] || targets[i]->standardOutput || targets[i]->path.empty() ||
            targets[i]->inPlace) {
            continue;
        }
        const auto [found, isNew] = made.emplace(folderOf(targets[i]->path), std::nullopt);
        if (isNew) {
            if (auto folder = folderOf(*targets[i], Missing::Make); !folder) {
                found->second = std::move(folder.error());
            }
        }
        if (found->second) {
            Error error = *found->second;
            error.file = inputs[i];
            targets[i] = tl::unexpected<Error>(std::move(error));
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
        if (!target || target->path.empty() || !folders.insert(folderOf(target->path)).second) {
            continue;
        }
        if (const auto folder = folderOf(*target)) {
            karvel::io::removeAbandoned(**folder);
        }
    }
}

} // namespace vantora
