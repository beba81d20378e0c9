#include "VantoraHost/core/watching/FolderWatch.h"

#include "VantoraHost/core/IsoTime.h"

#include <poll.h>
#include <signal.h>

#include <algorithm>

namespace vantora {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

namespace {

// How often a folder that is gone is looked for.
constexpr auto pauseBeforeReturn = 2s;
// How often it is made sure that a folder's path still leads to it, beside what the system tells:
// of a file system that was mounted over it nobody does.
constexpr auto pauseBetweenChecks = 30s;
// A folder that could not be listed, or had too many documents for one list.
constexpr auto pauseBeforeNextList = 1s;

std::string pathIn(const std::string& folder, const std::string& name)
{
    return folder + (folder.back() == '/' ? "" : "/") + name;
}

} // namespace

FolderWatch::FolderWatch(std::vector<WatchedFolder> folders, const WatchSettings& settings,
                         WatchHooks hooks)
    : settings_(settings), hooks_(std::move(hooks))
{
    folders_.reserve(folders.size());
    for (WatchedFolder& folder : folders) {
        // The clock of another machine is not to be relied on.
        const bool ageTells = !folder.isShared();
        folders_.emplace_back(std::move(folder), Arrivals(settings_.settle, ageTells));
        begin(folders_.back());
    }
}

const WatchedFolder* FolderWatch::folder(std::size_t place) const
{
    const auto& folder = folders_[place].folder;
    return folder ? &*folder : nullptr;
}

FolderWatch::Time::duration FolderWatch::pollOf(const Watched& watched) const
{
    if (settings_.poll) {
        return *settings_.poll;
    }
    return watched.events ? Time::duration::max() : Time::duration(sharedPoll);
}

void FolderWatch::begin(Watched& watched)
{
    watched.events =
        settings_.poll || watched.folder->isShared() ? std::nullopt : events_.add(*watched.folder);
    watched.eventsAbove = events_.addAbove(watched.path);
    watched.toList = true;
    watched.maybeLost = false;
    watched.nextCheck = Clock::now() + pauseBetweenChecks;
}

void FolderWatch::lose(Watched& watched)
{
    if (watched.events) {
        events_.remove(*watched.events);
        watched.events.reset();
    }
    watched.folder.reset();
    watched.arrivals.clear();
    hooks_.note(watched.path, "is not there any more; it is waited for");
}

// Notices when a folder is gone, another one, or back.
void FolderWatch::checkPresence(Watched& watched)
{
    const auto now = Clock::now();
    if (watched.folder && (watched.maybeLost || watched.nextCheck <= now)) {
        watched.maybeLost = false;
        watched.nextCheck = now + std::min<Time::duration>(pauseBetweenChecks, pollOf(watched));
        if (!watched.folder->isThere()) {
            lose(watched);
            watched.nextCheck = now;
        }
    }
    if (!watched.folder && watched.nextCheck <= now) {
        watched.nextCheck = now + pauseBeforeReturn;
        if (auto opened = WatchedFolder::open(watched.path)) {
            watched.folder.emplace(std::move(*opened));
            begin(watched);
            hooks_.cameBack(*watched.folder);
            hooks_.note(watched.path, "is there again");
        }
    }
}

void FolderWatch::hear(const FolderEvent& event, Watched& watched, Time now)
{
    using Kind = FolderEvent::Kind;
    if (event.kind == Kind::Missed) {
        watched.toList = true;
        watched.nextList = now;
        watched.maybeLost = true;
    }
    if (watched.eventsAbove == event.folder && event.name == karvel::io::nameIn(watched.path)) {
        watched.maybeLost = true;
        watched.nextCheck = now;
    }
    if (!watched.folder || watched.events != event.folder) {
        return;
    }
    if (event.kind == Kind::Lost) {
        watched.maybeLost = true;
    } else if (event.kind != Kind::Removed && isDocumentName(event.name)) {
        const bool hasPlace = watched.arrivals.notice(
            event.name, event.kind == Kind::Whole ? Noticed::Whole : Noticed::Seen, now);
        watched.toList = watched.toList || !hasPlace;
    }
}

void FolderWatch::hearEvents()
{
    const auto now = Clock::now();
    for (const FolderEvent& event : events_.read()) {
        for (Watched& watched : folders_) {
            hear(event, watched, now);
        }
    }
}

// Not while so many wait that a list would find no places.
bool FolderWatch::isToList(const Watched& watched)
{
    return watched.folder && (watched.toList || !watched.events) &&
           watched.arrivals.size() <= Arrivals::mostWaiting / 2;
}

void FolderWatch::listFolders()
{
    const auto now = Clock::now();
    for (std::size_t place = 0; place < folders_.size(); ++place) {
        Watched& watched = folders_[place];
        if (!isToList(watched) || watched.nextList > now) {
            continue;
        }
        bool isWhole = true;
        const int failed =
            watched.folder->list([&](const std::string& name, const FileVersion& version) {
                if (!hooks_.isDone({pathIn(watched.path, name), name, place, version})) {
                    isWhole = watched.arrivals.notice(name, Noticed::Seen, now);
                }
                return isWhole;
            });
        watched.toList = failed != 0 || !isWhole;
        watched.maybeLost = watched.maybeLost || failed != 0;
        watched.nextList = watched.toList || pollOf(watched) == Time::duration::max()
                               ? now + pauseBeforeNextList
                               : now + pollOf(watched);
    }
}

std::vector<WatchedDocument> FolderWatch::takeWhole(std::size_t most)
{
    std::vector<WatchedDocument> taken;
    for (std::size_t i = 0; i < folders_.size() && taken.size() < most; ++i) {
        const std::size_t place = (turn_ + i) % folders_.size();
        Watched& watched = folders_[place];
        if (!watched.folder) {
            continue;
        }
        const auto documentOf = [&](const Arrival& arrival) {
            return WatchedDocument{pathIn(watched.path, arrival.name), arrival.name, place,
                                   arrival.version};
        };
        const Arrivals::Eyes eyes = {
            Clock::now(), nanosecondsNow(),
            [&](const std::string& name) { return watched.folder->lookAt(name); },
            [&](const Arrival& arrival) { return hooks_.isDone(documentOf(arrival)); }};
        for (const Arrival& arrival : watched.arrivals.take(eyes, most - taken.size())) {
            taken.push_back(documentOf(arrival));
        }
    }
    turn_ = (turn_ + 1) % folders_.size();
    return taken;
}

// What grows or is being written is left to the next time.
bool FolderWatch::nothingLeft() const
{
    return settings_.once &&
           std::all_of(folders_.begin(), folders_.end(), [](const Watched& watched) {
               return !watched.folder || (!watched.toList && watched.arrivals.onlyGrowing());
           });
}

FolderWatch::Time FolderWatch::nextDue(Time notBefore) const
{
    Time due = Time::max();
    for (const Watched& watched : folders_) {
        due = std::min(due, watched.nextCheck);
        if (const auto look = watched.arrivals.nextLook(); watched.folder && look) {
            due = std::min(due, std::max(*look, notBefore));
        }
        if (isToList(watched)) {
            due = std::min(due, watched.nextList);
        }
    }
    return due;
}

// A signal that asks to stop ends it, whenever it comes: it is only let in while this sleeps.
void FolderWatch::sleepUntil(Time due)
{
    sigset_t asking;
    sigset_t before;
    sigemptyset(&asking);
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        sigaddset(&asking, number);
    }
    pthread_sigmask(SIG_BLOCK, &asking, &before);
    const auto left = std::max<Time::duration>(due - Clock::now(), 0s);
    if (!hooks_.stopped() && left > 0s) {
        const auto nanoseconds = std::chrono::duration_cast<std::chrono::nanoseconds>(left).count();
        const timespec timeout = {nanoseconds / 1'000'000'000, nanoseconds % 1'000'000'000};
        pollfd told = {events_.descriptor(), POLLIN, 0};
        ::ppoll(&told, 1, &timeout, &before);
    }
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

std::vector<WatchedDocument> FolderWatch::next(std::size_t most, Time notBefore)
{
    while (!hooks_.stopped()) {
        hearEvents();
        for (Watched& watched : folders_) {
            checkPresence(watched);
        }
        listFolders();
        if (Clock::now() >= notBefore) {
            std::vector<WatchedDocument> whole = takeWhole(most);
            if (!whole.empty()) {
                return whole;
            }
            if (nothingLeft()) {
                break;
            }
        }
        sleepUntil(nextDue(notBefore));
    }
    return {};
}

void FolderWatch::again(const WatchedDocument& document, Time due)
{
    Watched& watched = folders_[document.folder];
    if (!watched.folder) {
        return; // it will be listed
    }
    const bool hasPlace = watched.arrivals.notice(document.name, Noticed::Seen, due);
    watched.toList = watched.toList || !hasPlace;
}

} // namespace vantora
