#include "VantoraHost/cli/console/InputFiles.h"

#include "VantoraHost/cli/console/Messages.h"
#include "VantoraHost/core/DescriptorText.h"
#include "VantoraHost/core/Target.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <limits>

namespace vantora::cli {

namespace {

constexpr std::size_t anyLength = std::numeric_limits<std::size_t>::max();

Result<std::string> readFile(const std::string& path, const std::string& what)
{
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    auto content = descriptor < 0 ? tl::unexpected<int>(errno) : textOf(descriptor, anyLength);
    if (descriptor >= 0) {
        ::close(descriptor);
    }
    if (!content) {
        return fail(content.error() == ENOENT ? Reason::InputMissing : Reason::InputUnreadable,
                    path, what + " can't be read: " + systemMessage(content.error()));
    }
    return std::move(*content);
}

/// The parts of a text that the separator ends, without empty ones. Lines may have a carriage
/// return at their end.
std::vector<std::string> partsOf(const std::string& text, char separator)
{
    std::vector<std::string> parts;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find(separator, start), text.size());
        std::string part = text.substr(start, end - start);
        if (separator == '\n' && !part.empty() && part.back() == '\r') {
            part.pop_back();
        }
        if (!part.empty()) {
            parts.push_back(std::move(part));
        }
        start = end + 1;
    }
    return parts;
}

/// The file names that a list names, one a line or each ended by a zero byte; "-" is the list on
/// standard input. A name "-" in it is that of a file. Fails when it names none.
Result<std::vector<std::string>> readFileList(const std::string& path, bool endedByNull,
                                              const Streams& streams)
{
    const Result<std::string> content =
        path == standardStream ? readStandardInput(streams) : readFile(path, "the list of inputs");
    if (!content) {
        return tl::unexpected<Error>(content.error());
    }
    std::vector<std::string> names = partsOf(*content, endedByNull ? '\0' : '\n');
    if (names.empty()) {
        return fail(Reason::InputMissing, path, "the list of inputs names no file");
    }
    for (std::string& name : names) {
        name = name == standardStream ? "./-" : name;
    }
    return names;
}

} // namespace

Result<std::string> readStandardInput(const Streams& streams)
{
    auto bytes = textOf(streams.in, anyLength, streams.interrupted);
    if (streams.interrupted()) {
        return fail(Reason::Interrupted, standardStream, "interrupted");
    }
    if (!bytes) {
        return fail(Reason::InputUnreadable, standardStream, systemMessage(bytes.error()));
    }
    return std::move(*bytes);
}

Result<std::vector<std::string>> readPasswords(const std::string& path)
{
    std::vector<std::string> passwords;
    if (path.empty()) {
        return passwords;
    }
    const Result<std::string> content = readFile(path, "the password file");
    if (!content) {
        return tl::unexpected<Error>(content.error());
    }
    for (std::string& line : partsOf(*content, '\n')) { // the empty password is tried anyway
        passwords.push_back(std::move(line));
    }
    return passwords;
}

Result<std::vector<Input>> inputsNamed(InputNames named, const std::string& outputs, bool quiet,
                                       const Streams& streams)
{
    if (!named.filesFrom.empty()) {
        auto listed = readFileList(named.filesFrom, named.endedByNull, streams);
        if (!listed) {
            return tl::unexpected<Error>(std::move(listed.error()));
        }
        std::move(listed->begin(), listed->end(), std::back_inserter(named.names));
    }
    std::vector<Input> inputs;
    for (std::string& name : named.names) {
        if (!named.recursive || name == standardStream || !isFolder(name)) {
            inputs.push_back(inputNamed(std::move(name)));
            continue;
        }
        Result<std::vector<Input>> found = inputsBelow(name, outputs);
        if (!found) {
            return tl::unexpected<Error>(std::move(found.error()));
        }
        if (found->empty() && !quiet) {
            printWarning(streams, name, "the folder holds no PDF file (a name that ends in .pdf)");
        }
        std::move(found->begin(), found->end(), std::back_inserter(inputs));
    }
    return inputs;
}

Result<std::string> valueOrFileContent(const std::string& value)
{
    if (value.empty() || value.front() != '@') {
        return value;
    }
    Result<std::string> content = readFile(value.substr(1), "the file with the range");
    if (content) {
        constexpr char space[] = " \t\r\n";
        content->erase(content->find_last_not_of(space) + 1);
        content->erase(0, content->find_first_not_of(space));
    }
    return content;
}

} // namespace vantora::cli
