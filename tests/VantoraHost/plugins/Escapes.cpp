#include "Escapes.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <linux/filter.h>
#include <sched.h>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <sys/ipc.h>
#include <sys/mman.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/shm.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <map>

namespace escapes {

namespace {

std::string ofParent(const char* file)
{
    return "/proc/" + std::to_string(::getppid()) + "/" + file;
}

bool opens(const std::string& path, int flags)
{
    return ::open(path.c_str(), flags | O_CLOEXEC, 0666) >= 0;
}

// The calls may be those that the C library of the tests is too old for.
constexpr long pidfdOpen = 434;
constexpr long pidfdGetFd = 438;
constexpr long pidfdSendSignal = 424;
constexpr long ioUringSetup = 425;

bool typesOnTheTerminal()
{
    for (const int terminal : {STDERR_FILENO, ::open("/dev/tty", O_RDWR | O_CLOEXEC)}) {
        if (::ioctl(terminal, TIOCSTI, "#") == 0) {
            return true;
        }
    }
    return false;
}

bool queuesASignal(long call)
{
    siginfo_t info = {};
    info.si_code = SI_QUEUE;
    const pid_t parent = ::getppid();
    return call == SYS_rt_sigqueueinfo ? ::syscall(call, parent, SIGURG, &info) == 0
                                       : ::syscall(call, parent, parent, SIGURG, &info) == 0;
}

bool getsASignalSent()
{
    int ends[2];
    return ::pipe(ends) == 0 && ::fcntl(ends[0], F_SETOWN, ::getppid()) == 0 &&
           ::fcntl(ends[0], F_SETSIG, SIGURG) == 0;
}

int theParent()
{
    return static_cast<int>(::syscall(pidfdOpen, ::getppid(), 0));
}

bool changesTheParentsLimits()
{
    struct rlimit limit = {};
    return ::prlimit(::getppid(), RLIMIT_NOFILE, nullptr, &limit) == 0;
}

bool readsTheParentsMemory()
{
    char byte = 0;
    iovec here = {&byte, 1};
    iovec there = {&byte, 1};
    return ::process_vm_readv(::getppid(), &here, 1, &there, 1, 0) >= 0 || errno == EFAULT;
}

bool writesTheParentsMemory()
{
    char byte = 0;
    iovec here = {&byte, 1};
    iovec there = {&byte, 1};
    return ::process_vm_writev(::getppid(), &here, 1, &there, 1, 0) >= 0 || errno == EFAULT;
}

bool startsAProcess()
{
    const pid_t child = ::fork();
    if (child == 0) {
        ::_exit(0);
    }
    return child > 0;
}

bool startsAProgram()
{
    char name[] = "true";
    char* arguments[] = {name, nullptr};
    char* environment[] = {nullptr};
    ::execve("/bin/true", arguments, environment);
    return false; // nobody is there to say so after it succeeded; the worker's end tells
}

bool connectsToAService()
{
    const int service = ::socket(AF_UNIX, SOCK_STREAM, 0);
    return service >= 0;
}

bool loadsAFilter()
{
    sock_filter code[] = {{BPF_RET | BPF_K, 0, 0, 0x7fff0000}};
    const sock_fprog program = {1, code};
    return ::prctl(PR_SET_SECCOMP, 2, &program) == 0;
}

bool makesALinkToTheFile(const Aim& aim)
{
    const std::string link = aim.outputFolder + "/link";
    return ::link(aim.foreignFile.c_str(), link.c_str()) == 0;
}

using Way = bool (*)(const Aim&);

const std::map<std::string, Way>& ways()
{
    static const std::map<std::string, Way> all = {
        // the user's terminal
        {"type on the terminal", [](const Aim&) { return typesOnTheTerminal(); }},
        {"open the terminal", [](const Aim&) { return opens("/dev/tty", O_RDWR); }},
        {"be near the terminal", [](const Aim&) { return ::isatty(STDERR_FILENO) == 1; }},
        // the run
        {"read the run's memory", [](const Aim&) { return opens(ofParent("mem"), O_RDONLY); }},
        {"write the run's memory", [](const Aim&) { return opens(ofParent("mem"), O_RDWR); }},
        {"read the run's environment",
         [](const Aim&) { return opens(ofParent("environ"), O_RDONLY); }},
        {"read the run's memory at once", [](const Aim&) { return readsTheParentsMemory(); }},
        {"write the run's memory at once", [](const Aim&) { return writesTheParentsMemory(); }},
        {"trace the run",
         [](const Aim&) { return ::ptrace(PTRACE_SEIZE, ::getppid(), nullptr, nullptr) == 0; }},
        {"send a signal", [](const Aim&) { return ::kill(::getppid(), 0) == 0; }},
        {"send a signal to everybody", [](const Aim&) { return ::kill(-1, 0) == 0; }},
        {"send a signal to a thread",
         [](const Aim&) { return ::syscall(SYS_tgkill, ::getppid(), ::getppid(), 0) == 0; }},
        {"send a signal with data", [](const Aim&) { return queuesASignal(SYS_rt_sigqueueinfo); }},
        {"send a thread a signal with data",
         [](const Aim&) { return queuesASignal(SYS_rt_tgsigqueueinfo); }},
        {"have a signal sent", [](const Aim&) { return getsASignalSent(); }},
        {"take a descriptor of the run's",
         [](const Aim&) { return ::syscall(pidfdGetFd, theParent(), STDOUT_FILENO, 0) >= 0; }},
        {"signal the run's process",
         [](const Aim&) { return ::syscall(pidfdSendSignal, theParent(), 0, nullptr, 0) == 0; }},
        {"look at the run's limits", [](const Aim&) { return changesTheParentsLimits(); }},
        {"change the run's priority",
         [](const Aim&) {
             return ::setpriority(PRIO_PROCESS, static_cast<id_t>(::getppid()), 10) == 0;
         }},
        {"outlive the run", [](const Aim&) { return ::prctl(PR_SET_PDEATHSIG, 0) == 0; }},
        {"leave a core dump", [](const Aim&) { return ::prctl(PR_SET_DUMPABLE, 1) == 0; }},
        {"change the filter", [](const Aim&) { return loadsAFilter(); }},
        // other processes and the network
        {"start a process", [](const Aim&) { return startsAProcess(); }},
        {"start a program", [](const Aim&) { return startsAProgram(); }},
        {"reach the network", [](const Aim&) { return ::socket(AF_INET, SOCK_STREAM, 0) >= 0; }},
        {"reach a service", [](const Aim&) { return connectsToAService(); }},
        {"share memory", [](const Aim&) { return ::shmget(IPC_PRIVATE, 4096, 0600) >= 0; }},
        {"have work done outside the filter",
         [](const Aim&) {
             char parameters[256] = {};
             return ::syscall(ioUringSetup, 1, parameters) >= 0;
         }},
        {"watch files", [](const Aim&) { return ::inotify_init1(IN_CLOEXEC) >= 0; }},
        // the system
        {"mount",
         [](const Aim& aim) {
             return ::mount("tmpfs", aim.foreignFolder.c_str(), "tmpfs", 0, "size=4k") == 0;
         }},
        {"get a name space", [](const Aim&) { return ::unshare(CLONE_NEWUSER) == 0; }},
        {"change the root",
         [](const Aim& aim) { return ::chroot(aim.foreignFolder.c_str()) == 0; }},
        {"keep a key",
         [](const Aim&) { return ::syscall(SYS_add_key, "user", "k", "v", 1, -3) >= 0; }},
        {"load code into the system",
         [](const Aim&) { return ::syscall(SYS_bpf, 0, nullptr, 0) >= 0 || errno != EPERM; }},
        // files
        {"read a file", [](const Aim& aim) { return opens(aim.foreignFile, O_RDONLY); }},
        {"write a file", [](const Aim& aim) { return opens(aim.foreignFile, O_WRONLY); }},
        {"cut a file off",
         [](const Aim& aim) { return ::truncate(aim.foreignFile.c_str(), 0) == 0; }},
        {"make a file",
         [](const Aim& aim) { return opens(aim.foreignFolder + "/new", O_WRONLY | O_CREAT); }},
        {"make a folder",
         [](const Aim& aim) { return ::mkdir((aim.foreignFolder + "/new").c_str(), 0777) == 0; }},
        {"list a folder", [](const Aim& aim) { return opens(aim.foreignFolder, O_DIRECTORY); }},
        {"remove a file", [](const Aim& aim) { return ::unlink(aim.foreignFile.c_str()) == 0; }},
        {"remove a folder", [](const Aim& aim) { return ::rmdir(aim.foreignFolder.c_str()) == 0; }},
        {"move a file",
         [](const Aim& aim) {
             return ::rename(aim.foreignFile.c_str(), (aim.outputFolder + "/moved").c_str()) == 0;
         }},
        {"link to a file", [](const Aim& aim) { return makesALinkToTheFile(aim); }},
        {"leave a symbolic link",
         [](const Aim& aim) {
             return ::symlink(aim.foreignFile.c_str(), (aim.outputFolder + "/link").c_str()) == 0;
         }},
        {"change a file's mode",
         [](const Aim& aim) { return ::chmod(aim.foreignFile.c_str(), 0777) == 0; }},
        {"change a file's attributes",
         [](const Aim& aim) {
             return ::setxattr(aim.foreignFile.c_str(), "user.x", "y", 1, 0) == 0;
         }},
        {"leave a pipe",
         [](const Aim& aim) { return ::mkfifo((aim.outputFolder + "/pipe").c_str(), 0666) == 0; }},
    };
    return all;
}

} // namespace

std::vector<std::string> names()
{
    std::vector<std::string> found;
    for (const auto& [name, way] : ways()) {
        found.push_back(name);
    }
    return found;
}

bool leadsOut(const std::string& name, const Aim& aim)
{
    const auto way = ways().find(name);
    return way != ways().end() && way->second(aim);
}

} // namespace escapes
