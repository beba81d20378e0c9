#include "VantoraHost/core/watching/FolderEvents.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cstring>

namespace vantora {

namespace {

constexpr std::uint32_t whole = IN_CLOSE_WRITE | IN_MOVED_TO;
constexpr std::uint32_t removed = IN_DELETE | IN_MOVED_FROM;
constexpr std::uint32_t lost = IN_DELETE_SELF | IN_MOVE_SELF | IN_UNMOUNT | IN_IGNORED;

// Some more than the system's queue holds; who makes more and more of them isn't listened to for
// ever.
constexpr int mostPieces = 16;

FolderEvent eventOf(const inotify_event& told, const char* name)
{
    FolderEvent event;
    event.folder = told.wd;
    event.kind = (told.mask & IN_Q_OVERFLOW) != 0 ? FolderEvent::Kind::Missed
                 : (told.mask & lost) != 0        ? FolderEvent::Kind::Lost
                 : (told.mask & removed) != 0     ? FolderEvent::Kind::Removed
                 : (told.mask & whole) != 0       ? FolderEvent::Kind::Whole
                                                  : FolderEvent::Kind::Appeared;
    if (told.len > 0) {
        event.name.assign(name, ::strnlen(name, told.len));
    }
    return event;
}

} // namespace

FolderEvents::FolderEvents() : inotify_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {}

std::optional<int> FolderEvents::add(const WatchedFolder& folder)
{
    // By its descriptor, so that it is this very folder.
    return watch(karvel::io::pathOf(folder.folder().descriptor()),
                 whole | IN_CREATE | IN_DELETE_SELF | IN_MOVE_SELF);
}

std::optional<int> FolderEvents::addAbove(const std::string& folder)
{
    return watch(karvel::io::folderOf(folder), removed | IN_CREATE | IN_MOVED_TO);
}

// One folder may be watched for both.
std::optional<int> FolderEvents::watch(const std::string& path, std::uint32_t what)
{
    const int watch = inotify_ ? ::inotify_add_watch(inotify_.get(), path.c_str(),
                                                     what | IN_MASK_ADD | IN_EXCL_UNLINK)
                               : -1;
    return watch >= 0 ? std::optional<int>(watch) : std::nullopt;
}

void FolderEvents::remove(int folder)
{
    ::inotify_rm_watch(inotify_.get(), folder);
}

std::vector<FolderEvent> FolderEvents::read()
{
    std::vector<FolderEvent> events;
    std::array<char, 64 * 1024> buffer;
    for (int piece = 0; inotify_ && piece < mostPieces; ++piece) {
        const ssize_t length = ::read(inotify_.get(), buffer.data(), buffer.size());
        if (length <= 0) {
            break;
        }
        for (std::size_t at = 0; at < static_cast<std::size_t>(length);) {
            inotify_event told = {};
            std::memcpy(&told, buffer.data() + at, sizeof told);
            events.push_back(eventOf(told, buffer.data() + at + sizeof told));
            at += sizeof told + told.len;
        }
    }
    return events;
}

} // namespace vantora
