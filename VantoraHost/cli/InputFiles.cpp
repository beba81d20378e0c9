#include "VantoraHost/cli/InputFiles.h"

#include "VantoraHost/core/OutputPlan.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace vantora::cli {

namespace {

// Reads to the end; an errno value when that failed.
tl::expected<std::string, int> readAll(int descriptor, const std::function<bool()>& interrupted)
{
    constexpr std::size_t piece = 1 << 20;
    std::string bytes;
    std::size_t length = 0;
    for (;;) {
        if (bytes.size() - length < piece) {
            bytes.resize(bytes.size() * 2 + piece);
        }
        const ssize_t got = ::read(descriptor, bytes.data() + length, bytes.size() - length);
        if (got > 0) {
            length += static_cast<std::size_t>(got);
        } else if (got == 0) {
            bytes.resize(length);
            return bytes;
        } else if (errno != EINTR || interrupted()) {
            return tl::unexpected<int>(errno);
        }
    }
}

Result<std::string> readFile(const std::string& path, const std::string& what)
{
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    auto content =
        descriptor < 0 ? tl::unexpected<int>(errno) : readAll(descriptor, [] { return false; });
    if (descriptor >= 0) {
        ::close(descriptor);
    }
    if (!content) {
        return fail(content.error() == ENOENT ? Reason::InputMissing : Reason::InputUnreadable,
                    path, what + " can't be read: " + systemMessage(content.error()));
    }
    return std::move(*content);
}

} // namespace

Result<std::string> readStandardInput(const Streams& streams)
{
    auto bytes = readAll(streams.in, streams.interrupted);
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
    for (std::size_t start = 0; start < content->size();) {
        const std::size_t end = std::min(content->find('\n', start), content->size());
        std::string line = content->substr(start, end - start);
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        if (!line.empty()) { // the empty password is tried anyway
            passwords.push_back(std::move(line));
        }
        start = end + 1;
    }
    return passwords;
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
