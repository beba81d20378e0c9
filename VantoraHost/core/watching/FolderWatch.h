#pragma once

#include "VantoraHost/core/watching/Arrivals.h"
#include "VantoraHost/core/watching/FolderEvents.h"
#include "VantoraHost/core/watching/WatchedFolder.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace vantora {

/// A whole document in a watched folder.
struct WatchedDocument {
    std::string path;
    std::string name;
    std::size_t folder = 0; ///< its place among the watched ones
    FileVersion version;
};

struct WatchSettings {
    std::chrono::seconds settle{2};           ///< how long a document must stay the same
    std::optional<std::chrono::seconds> poll; ///< how often folders are listed; none: only shared
                                              ///< ones are, and the system tells of the others
    bool once = false;                        ///< end with what is there
};

/// What a watch asks and tells.
struct WatchHooks {
    std::function<bool()> stopped;
    std::function<bool(const WatchedDocument&)> isDone;
    /// A folder is there again, in whatever state.
    std::function<void(const WatchedFolder&)> cameBack;
    /// Something that a person may want to know, a sentence about a folder.
    std::function<void(const std::string& folder, const std::string& sentence)> note;
};

/// Waits for documents in folders, as the system tells of them, and by listing the folders where it
/// doesn't: at first, when too much happened at once, on file systems that are shared, and when a
/// folder that was gone is there again. Nothing runs while nothing happens.
class FolderWatch {
public:
    using Time = Arrivals::Time;

    /// Begins to watch; what comes from now on isn't missed.
    FolderWatch(std::vector<WatchedFolder> folders, const WatchSettings& settings,
                WatchHooks hooks);

    /// Waits for documents that are whole, and returns at most so many, none of them before a time.
    /// Returns none when it was asked to stop, or nothing is left to wait for.
    std::vector<WatchedDocument> next(std::size_t most, Time notBefore = {});

    /// A document that was handed out is to be looked at again, from a time on.
    void again(const WatchedDocument& document, Time due);

    /// The folder of a document; null while it isn't there.
    const WatchedFolder* folder(std::size_t place) const;

    /// Whether the system tells of a folder's documents, so that it need not be listed.
    bool isTold(std::size_t place) const { return folders_[place].events.has_value(); }

    static constexpr std::chrono::seconds sharedPoll{5};

private:
    struct Watched {
        explicit Watched(WatchedFolder opened, Arrivals waiting)
            : path(opened.path()), folder(std::move(opened)), arrivals(std::move(waiting))
        {
        }
        std::string path;
        std::optional<WatchedFolder> folder; ///< none while it isn't there
        std::optional<int> events;           ///< none where it has to be listed
        std::optional<int> eventsAbove;      ///< of the folder that it is in
        Arrivals arrivals;
        bool toList = true;
        bool maybeLost = false;
        Time nextList;
        Time nextCheck; ///< whether it is there
    };

    Time::duration pollOf(const Watched& watched) const;
    void begin(Watched& watched);
    void lose(Watched& watched);
    void checkPresence(Watched& watched);
    void hear(const FolderEvent& event, Watched& watched, Time now);
    void hearEvents();
    static bool isToList(const Watched& watched);
    void listFolders();
    std::vector<WatchedDocument> takeWhole(std::size_t most);
    bool nothingLeft() const;
    Time nextDue(Time notBefore) const;
    void sleepUntil(Time due);

    const WatchSettings settings_;
    const WatchHooks hooks_;
    FolderEvents events_;
    std::vector<Watched> folders_;
    std::size_t turn_ = 0; ///< the folder that is asked first
};

} // namespace vantora
