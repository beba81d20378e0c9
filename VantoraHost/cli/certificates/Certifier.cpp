#include "VantoraHost/cli/certificates/Certifier.h"

#include "VantoraHost/core/IsoTime.h"
#include "VantoraHost/core/outputs/TextFile.h"

#include <poll.h>

#include <chrono>

namespace vantora::cli {

namespace {

// Longer than the slowest machine takes to load the libraries and draw some pages.
constexpr std::chrono::seconds longest{60};

bool isPlain(const std::string& word)
{
    return !word.empty() && word.find_first_not_of("abcdefghijklmnopqrstuvwxyz"
                                                   "ABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                                   "0123456789-_./,:=+@%") == std::string::npos;
}

} // namespace

std::string commandText(const std::vector<std::string>& arguments)
{
    constexpr std::size_t longestCommand = 2000;
    std::string text = "vantora";
    for (const std::string& argument : arguments) {
        if (text.size() > longestCommand) {
            return text + " ...";
        }
        text += ' ';
        if (isPlain(argument)) {
            text += argument;
            continue;
        }
        text += '\'';
        for (const char letter : argument) {
            text += letter == '\'' ? std::string("'\\''") : std::string(1, letter);
        }
        text += '\'';
    }
    return text;
}

Outcome Certifier::certify(const DocumentReport& report, const Target& target)
{
    const std::string toTheSecond = isoTime(nanosecondsNow()).substr(0, 19) + 'Z';
    const Result<std::string> pdf = drawn({report, command_, toTheSecond});
    if (!pdf) {
        process_.reset(); // the next one gets a fresh one
        return fail(pdf.error().reason, report.input,
                    "has no certificate, but is done: " + pdf.error().sentence);
    }
    const Outcome written = writePrivateFile(target, folders_, *pdf);
    return written ? written
                   : fail(written.error().reason, report.input,
                          "has no certificate, but is done: " + written.error().sentence);
}

Result<std::string> Certifier::drawn(const CertifiedRemoval& removal)
{
    if (!process_) {
        auto started = WorkerProcess::start(program_, certificatesCommand);
        if (!started) {
            return tl::unexpected<Error>(std::move(started.error()));
        }
        process_ = std::move(*started);
    }
    process_->send(certificateOrder(removal) + '\n');
    const Result<std::string> line = nextLine();
    return line ? certificateAnswerOf(*line) : line;
}

Result<std::string> Certifier::nextLine()
{
    const auto end = std::chrono::steady_clock::now() + longest;
    std::vector<std::string> lines;
    for (;;) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
            end - std::chrono::steady_clock::now());
        pollfd waits[] = {{process_->answersToRead(), POLLIN, 0},
                          {process_->ordersToWrite(), POLLOUT, 0}};
        if (left.count() <= 0 ||
            (::poll(waits, 2, static_cast<int>(left.count())) < 0 && errno != EINTR)) {
            return fail(Reason::TimedOut, {}, "drawing it took too long");
        }
        process_->writeOrders();
        const Heard heard = process_->readLines(lines);
        if (!lines.empty()) {
            return std::move(lines.front());
        }
        if (heard != Heard::Answers) {
            return fail(Reason::Crashed, {},
                        "the process that draws it ended: " + process_->end().text());
        }
    }
}

} // namespace vantora::cli
