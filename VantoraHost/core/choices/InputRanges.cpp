#include "VantoraHost/core/choices/InputRanges.h"

#include "KarvelPDFLibrary/io/FileDescriptor.h"
#include "VantoraHost/core/DescriptorText.h"
#include "VantoraHost/core/Target.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <unordered_map>
#include <unordered_set>

namespace vantora {

namespace fs = std::filesystem;

namespace {

tl::unexpected<Error> unreadable(const std::string& path, int why)
{
    return fail(why == ENOENT ? Reason::InputMissing : Reason::InputUnreadable, path,
                "the list of ranges can't be read: " + systemMessage(why));
}

tl::unexpected<Error> wrongLine(const RangesList& list, const DocumentRange& at,
                                const std::string& what)
{
    return fail(Reason::BadRanges, list.file,
                "line " + std::to_string(at.line) + " names \"" + at.path + "\", " + what);
}

// Some more than a list may have, where there is more.
Result<std::string> readSome(const std::string& file, int descriptor,
                             const std::function<bool()>& cancelled)
{
    auto text = textOf(descriptor, longestRangesText, cancelled);
    if (text) {
        return std::move(*text);
    }
    return text.error() == EINTR ? Result<std::string>(fail(Reason::Interrupted, {}, "interrupted"))
                                 : Result<std::string>(unreadable(file, text.error()));
}

Result<RangesList> listOf(const std::string& file, std::string folder,
                          const Result<std::string>& text)
{
    if (!text) {
        return tl::unexpected<Error>(text.error());
    }
    auto ranges = documentRangesOf(*text);
    if (!ranges) {
        return fail(Reason::BadRanges, file, std::move(ranges.error()));
    }
    return RangesList{file, std::move(folder), std::move(*ranges)};
}

std::string joined(const std::string& folder, const std::string& path)
{
    return folder.empty() || path.front() == '/' ? path : folder + '/' + path;
}

/// One text for paths that lead to the same name in the same folder.
class Places {
public:
    std::string of(const std::string& path)
    {
        const std::size_t slash = path.rfind('/');
        return slash == std::string::npos
                   ? realFolder(".") + '/' + path
                   : realFolder(path.substr(0, slash + 1)) + path.substr(slash);
    }

private:
    const std::string& realFolder(const std::string& folder)
    {
        const auto [known, isNew] = known_.try_emplace(folder);
        if (isNew) {
            std::error_code failed;
            known->second = fs::canonical(folder, failed).string();
            if (failed) {
                known->second = fs::absolute(folder, failed).lexically_normal().string();
            }
        }
        return known->second;
    }

    std::unordered_map<std::string, std::string> known_;
};

/// The places that a list names, with the ranges that stand there; "-" is standard input.
class NamedPlaces {
public:
    static Result<NamedPlaces> of(const RangesList& list)
    {
        NamedPlaces named;
        for (const DocumentRange& one : list.ranges) {
            const auto [first, isNew] =
                named.ranges_.emplace(named.placeOf(joined(list.folder, one.path), one.path), &one);
            if (!isNew) {
                return wrongLine(
                    list, one, "which line " + std::to_string(first->second->line) + " names, too");
            }
        }
        return named;
    }

    const DocumentRange* find(const std::string& input)
    {
        const auto found = ranges_.find(placeOf(input, input));
        return found == ranges_.end() ? nullptr : found->second;
    }

private:
    std::string placeOf(const std::string& path, const std::string& named)
    {
        return named == standardStream ? named : places_.of(path);
    }

    Places places_;
    std::unordered_map<std::string, const DocumentRange*> ranges_;
};

} // namespace

Result<RangesList> readRangesList(const std::string& path, const std::function<bool()>& cancelled)
{
    const karvel::io::FileDescriptor file(::open(path.c_str(), O_RDONLY | O_NOCTTY | O_CLOEXEC));
    struct stat status = {};
    if (!file || ::fstat(file.get(), &status) != 0) {
        return unreadable(path, errno);
    }
    return listOf(path, S_ISREG(status.st_mode) ? fs::path(path).parent_path().string() : "",
                  readSome(path, file.get(), cancelled));
}

Result<RangesList> readRangesList(int standardInput, const std::function<bool()>& cancelled)
{
    return listOf(standardStream, {}, readSome(standardStream, standardInput, cancelled));
}

Result<std::vector<Input>> inputsOf(const RangesList& list)
{
    if (const auto named = NamedPlaces::of(list); !named) {
        return tl::unexpected<Error>(named.error());
    }
    std::vector<Input> inputs;
    inputs.reserve(list.ranges.size());
    for (const DocumentRange& one : list.ranges) {
        if (one.path == standardStream) {
            return wrongLine(list, one, "which is standard input and no file");
        }
        Input input = inputNamed(joined(list.folder, one.path));
        struct stat status = {};
        if (::stat(input.path.c_str(), &status) != 0) {
            return wrongLine(list, one,
                             errno == ENOENT ? "which is not there"
                                             : "which can't be looked at: " + systemMessage(errno));
        }
        if (S_ISDIR(status.st_mode)) {
            return wrongLine(list, one, "which is a folder");
        }
        input.range = one.range;
        inputs.push_back(std::move(input));
    }
    return inputs;
}

Outcome assignRanges(const RangesList& list, std::vector<Input>& inputs)
{
    auto named = NamedPlaces::of(list);
    if (!named) {
        return tl::unexpected<Error>(std::move(named.error()));
    }
    std::unordered_set<const DocumentRange*> found;
    for (Input& input : inputs) {
        if (const DocumentRange* range = named->find(input.path)) {
            input.range = range->range;
            found.insert(range);
        }
    }
    for (const DocumentRange& one : list.ranges) {
        if (found.count(&one) == 0) {
            return wrongLine(list, one, "which is none of the inputs");
        }
    }
    return {};
}

} // namespace vantora
