#pragma once

#include "KarvelPDFLibrary/io/FileDescriptor.h"
#include "VantoraHost/core/Error.h"

#include <sys/types.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vantora {

/// The commands of the program that make it a worker: one that works on documents, one that makes
/// pictures of pages, and one that draws certificates.
inline constexpr char workerCommand[] = "worker";
inline constexpr char picturesCommand[] = "pictures";
inline constexpr char certificatesCommand[] = "certificates";

/// How a process ended.
struct ProcessEnd {
    int signal = 0; ///< which ended it; 0 for none
    int status = 0; ///< with which it ended by itself

    /// Such as "Segmentation fault" or "exit status 3".
    std::string text() const;

    /// Whether it broke down over its own work, rather than being ended by somebody.
    bool isCrash() const;
};

/// What became of listening to a worker.
enum class Heard {
    Answers,  ///< maybe none
    End,      ///< the worker has closed its side
    Nonsense, ///< a line or message longer than any answer
};

/// A worker process and what goes to it and comes from it, in lines or in messages (MessageFrames);
/// neither sending nor receiving waits. It is killed at the end of this object.
class WorkerProcess {
public:
    /// Starts "PROGRAM COMMAND". It does not hear the signals that a terminal sends to a run.
    static Result<std::unique_ptr<WorkerProcess>> start(const std::filesystem::path& program,
                                                        const char* command = workerCommand);

    /// Starts a copy of this process that does `work`, which is given the descriptors of its orders
    /// and answers. The copy keeps `kept` open, beside these.
    static Result<std::unique_ptr<WorkerProcess>>
    copy(std::vector<int> kept, const std::function<int(int orders, int answers)>& work);

    WorkerProcess(const WorkerProcess&) = delete;
    WorkerProcess& operator=(const WorkerProcess&) = delete;
    ~WorkerProcess();

    /// Adds to what the worker is to get.
    void send(std::string_view bytes);

    /// Lets the worker's orders end after what was sent.
    void closeOrders();

    /// To be waited for until it can be written to; -1 when there is nothing to be written.
    int ordersToWrite() const { return unsent_.empty() ? -1 : orders_.get(); }

    /// To be waited for until it can be read from.
    int answersToRead() const { return answers_.get(); }

    /// Writes as much as the worker takes.
    void writeOrders();

    /// Adds lines that have come; there may be more.
    Heard readLines(std::vector<std::string>& lines);

    /// Adds messages that have come; there may be more.
    Heard readMessages(std::vector<std::string>& messages);

    /// Adds bytes that have come, whatever they are; there may be more.
    Heard readBytes(std::string& bytes) const;

    void signal(int number) const;

    /// Ends the process.
    ProcessEnd end();

private:
    WorkerProcess(pid_t process, karvel::io::FileDescriptor orders,
                  karvel::io::FileDescriptor answers)
        : process_(process), orders_(std::move(orders)), answers_(std::move(answers))
    {
    }

    pid_t process_;
    karvel::io::FileDescriptor orders_;
    karvel::io::FileDescriptor answers_;
    std::string unsent_;
    std::string received_;
    bool closing_ = false;
};

} // namespace vantora
