#pragma once

#include "VantoraHost/core/pictures/PictureMessages.h"
#include "VantoraHost/core/workers/WorkerProcess.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace vantora {

/// How pictures are made.
struct PictureSettings {
    std::filesystem::path program;        ///< which is started with the argument "pictures"
    std::filesystem::path library;        ///< the PDF library's file
    std::size_t workers = 2;              ///< at most so many processes, at least 1
    std::uint64_t memoryLimit = 1U << 30; ///< bytes that each may use; 0 for no limit
    std::chrono::seconds timeout{20};     ///< the longest that one answer may take; 0 for no limit
    std::function<std::chrono::steady_clock::time_point()> now =
        std::chrono::steady_clock::now; ///< the time that the limit goes by
};

/// Documents are called by numbers that the caller gives.
using PicturedDocument = std::uint64_t;

/// What is wanted of a document: its page count, or something of its pages.
struct PictureWish {
    PicturedDocument document = 0;
    std::optional<PictureTask> task; ///< none for the page count

    bool operator==(const PictureWish& other) const
    {
        return document == other.document && task == other.task;
    }
};

/// What became of a wish.
struct PictureAnswer {
    PictureWish wish;
    Result<std::variant<PictureOpened, ShownPages, PagePicture>> what;
    bool ofDocument = false; ///< whether an error is one of the document, not of the page
};

/// Pictures and facts of pages, from confined processes that keep one document each open. One that
/// crashes, hangs or wants too much memory costs what it was at, which is answered with the reason,
/// and a fresh one takes over; where it did not get as far as opening its document, that costs the
/// document. Not for several threads at a time. Whoever has a pool ignores SIGPIPE.
class PicturePool {
public:
    explicit PicturePool(PictureSettings settings);
    ~PicturePool();

    /// Names a document, or says that it is another from now on.
    void open(PicturedDocument document, std::string input, std::string password);

    /// Forgets a document; nothing is answered any more that was wished of it.
    void close(PicturedDocument document);

    /// Takes the place of all wishes that there are; the first is done first. What is being made is
    /// finished and answered, wished or not, unless it takes long and keeps others waiting.
    void wish(std::vector<PictureWish> wishes);

    /// Waits until there are answers, or the descriptor `wake` can be read from.
    std::vector<PictureAnswer> wait(int wake);

private:
    struct Document {
        std::string input;
        std::string password;
        std::optional<Error> failure; ///< why it can't be opened
    };
    /// A process with its document.
    struct Worker {
        std::unique_ptr<WorkerProcess> process;
        PicturedDocument document = 0;
        std::optional<int> pages;                      ///< once it has opened its document
        std::optional<PictureTask> task;               ///< what it is at
        std::chrono::steady_clock::time_point since{}; ///< when it began with that
        std::string received;
        std::optional<PagePicture> picture; ///< whose pixels are coming

        bool isIdle() const { return pages && !task; }
    };

    void dispatch();
    bool serve(const PictureWish& wish, std::map<PicturedDocument, int>& starting);
    bool start(const PictureWish& wish);
    bool makeRoom(PicturedDocument document);
    bool isWished(const Worker& worker) const;
    void hear(Worker& worker);
    bool takeAnswer(Worker& worker);
    bool takeLine(Worker& worker, std::string_view line);
    void bury(Worker& worker, bool timedOut, bool senseless);
    void answer(PictureWish wish, decltype(PictureAnswer::what) what, bool ofDocument = false);
    void finish(Worker& worker, decltype(PictureAnswer::what) what);
    void failDocument(PicturedDocument document, Error error);
    void endOverdue();
    std::vector<int> pollOnce(int wake);

    const PictureSettings settings_;
    std::map<PicturedDocument, Document> documents_;
    std::deque<PictureWish> wishes_;
    std::vector<PictureWish> allWished_; ///< as last given, also those that are being done
    std::vector<std::unique_ptr<Worker>> workers_; ///< the least recently used first
    std::vector<PictureAnswer> answers_;
};

} // namespace vantora
