#pragma once

#include "VantoraHost/core/watching/WatchedFolder.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace vantora {

/// A document that is whole, as far as anybody can tell.
struct Arrival {
    std::string name;
    FileVersion version;
};

/// How a name came to be noticed.
enum class Noticed {
    Seen,  ///< it is there
    Whole, ///< it was closed after writing, or moved there
};

/// The documents of one folder that have been noticed and not been handed on yet: each waits until
/// nobody writes to it and it has stayed as it is for a while.
class Arrivals {
public:
    using Time = std::chrono::steady_clock::time_point;
    using Duration = std::chrono::steady_clock::duration;

    /// `settle` is how long a document must stay the same. `ageTells` says that the clock of the
    /// file system is this machine's, so that it need not be watched for so long if it has been the
    /// same before.
    Arrivals(Duration settle, bool ageTells) : settle_(settle), ageTells_(ageTells) {}

    /// A name to look at, from `due` on. Returns false when so many wait that it has no place.
    bool notice(const std::string& name, Noticed how, Time due);

    /// What looks at documents, tells time and says which of them have been done.
    struct Eyes {
        Time now;
        std::int64_t date; ///< the same time in nanoseconds since 1970
        std::function<std::optional<Sighting>(const std::string& name)> lookAt;
        std::function<bool(const Arrival&)> isDone;
    };

    /// Looks at those that are due, and takes out at most so many that are whole, in the order in
    /// which they were noticed. What is gone or done is forgotten.
    std::vector<Arrival> take(const Eyes& eyes, std::size_t most);

    /// When the next one is to be looked at; none when none waits.
    std::optional<Time> nextLook() const;

    std::size_t size() const { return waiting_.size(); }

    /// Whether all that wait have been seen to grow, or to be written to.
    bool onlyGrowing() const;

    void clear();

    static constexpr std::size_t mostWaiting = 10'000;

private:
    struct Waiting {
        std::string name;
        Noticed how = Noticed::Seen;
        std::optional<FileVersion> last; ///< as it was when it was last looked at
        Time since;                      ///< it has been like that from then on
        Time due;
        Duration pause{0}; ///< until the next look at one that is being written
        bool grows = false;
    };
    enum class Verdict { Wait, Whole, Forget };

    Verdict judge(Waiting& one, const Eyes& eyes) const;

    const Duration settle_;
    const bool ageTells_;
    std::uint64_t nextNumber_ = 0;
    std::map<std::uint64_t, Waiting> waiting_; ///< in the order in which they came
    std::unordered_map<std::string, std::uint64_t> numbers_;
};

} // namespace vantora
