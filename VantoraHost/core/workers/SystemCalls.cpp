#include "VantoraHost/core/workers/SystemCalls.h"

#include <fcntl.h>
#include <linux/fs.h>
#include <sched.h>
#include <seccomp.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <asm/termbits.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>

namespace vantora {

namespace {

constexpr int allowedCalls[] = {
    // open files
    SCMP_SYS(read), SCMP_SYS(readv), SCMP_SYS(pread64), SCMP_SYS(preadv), SCMP_SYS(preadv2),
    SCMP_SYS(write), SCMP_SYS(writev), SCMP_SYS(pwrite64), SCMP_SYS(pwritev), SCMP_SYS(pwritev2),
    SCMP_SYS(lseek), SCMP_SYS(_llseek), SCMP_SYS(close), SCMP_SYS(close_range), SCMP_SYS(dup),
    SCMP_SYS(dup2), SCMP_SYS(dup3), SCMP_SYS(pipe), SCMP_SYS(pipe2), SCMP_SYS(eventfd2),
    SCMP_SYS(poll), SCMP_SYS(ppoll), SCMP_SYS(select), SCMP_SYS(pselect6), SCMP_SYS(epoll_create1),
    SCMP_SYS(epoll_ctl), SCMP_SYS(epoll_wait), SCMP_SYS(epoll_pwait), SCMP_SYS(fstat),
    SCMP_SYS(fstat64), SCMP_SYS(fstatfs), SCMP_SYS(fstatfs64), SCMP_SYS(ftruncate),
    SCMP_SYS(ftruncate64), SCMP_SYS(fallocate), SCMP_SYS(fadvise64), SCMP_SYS(readahead),
    SCMP_SYS(fsync), SCMP_SYS(fdatasync), SCMP_SYS(syncfs), SCMP_SYS(sync_file_range),
    SCMP_SYS(copy_file_range), SCMP_SYS(sendfile), SCMP_SYS(sendfile64), SCMP_SYS(flock),
    SCMP_SYS(fchmod), SCMP_SYS(fchown), SCMP_SYS(fgetxattr), SCMP_SYS(flistxattr),
    SCMP_SYS(fsetxattr), SCMP_SYS(fremovexattr), SCMP_SYS(getdents), SCMP_SYS(getdents64),
    // files by name, as far as the rules for files allow
    SCMP_SYS(open), SCMP_SYS(openat), SCMP_SYS(openat2), SCMP_SYS(creat), SCMP_SYS(stat),
    SCMP_SYS(lstat), SCMP_SYS(stat64), SCMP_SYS(lstat64), SCMP_SYS(newfstatat), SCMP_SYS(fstatat64),
    SCMP_SYS(statx), SCMP_SYS(statfs), SCMP_SYS(statfs64), SCMP_SYS(access), SCMP_SYS(faccessat),
    SCMP_SYS(faccessat2), SCMP_SYS(readlink), SCMP_SYS(readlinkat), SCMP_SYS(getcwd),
    SCMP_SYS(getxattr), SCMP_SYS(lgetxattr), SCMP_SYS(listxattr), SCMP_SYS(llistxattr),
    SCMP_SYS(rename), SCMP_SYS(renameat), SCMP_SYS(renameat2), SCMP_SYS(link), SCMP_SYS(linkat),
    SCMP_SYS(unlink), SCMP_SYS(unlinkat), SCMP_SYS(mkdir), SCMP_SYS(mkdirat), SCMP_SYS(rmdir),
    SCMP_SYS(umask),
    // memory
    SCMP_SYS(brk), SCMP_SYS(mmap), SCMP_SYS(mmap2), SCMP_SYS(munmap), SCMP_SYS(mremap),
    SCMP_SYS(mprotect), SCMP_SYS(madvise), SCMP_SYS(msync), SCMP_SYS(mincore), SCMP_SYS(mlock),
    SCMP_SYS(munlock), SCMP_SYS(membarrier),
    // threads and this process
    SCMP_SYS(futex), SCMP_SYS(futex_waitv), SCMP_SYS(set_robust_list), SCMP_SYS(get_robust_list),
    SCMP_SYS(rseq), SCMP_SYS(set_tid_address), SCMP_SYS(arch_prctl), SCMP_SYS(gettid),
    SCMP_SYS(getpid), SCMP_SYS(getppid), SCMP_SYS(getpgrp), SCMP_SYS(getuid), SCMP_SYS(geteuid),
    SCMP_SYS(getgid), SCMP_SYS(getegid), SCMP_SYS(getresuid), SCMP_SYS(getresgid),
    SCMP_SYS(getgroups), SCMP_SYS(capget), SCMP_SYS(sched_yield), SCMP_SYS(sched_getaffinity),
    SCMP_SYS(sched_getparam), SCMP_SYS(sched_getscheduler), SCMP_SYS(sched_get_priority_max),
    SCMP_SYS(sched_get_priority_min), SCMP_SYS(getcpu), SCMP_SYS(exit), SCMP_SYS(exit_group),
    SCMP_SYS(getrlimit), SCMP_SYS(ugetrlimit), SCMP_SYS(getrusage), SCMP_SYS(times),
    // signals that it gets
    SCMP_SYS(rt_sigaction), SCMP_SYS(rt_sigprocmask), SCMP_SYS(rt_sigreturn),
    SCMP_SYS(rt_sigpending), SCMP_SYS(rt_sigsuspend), SCMP_SYS(rt_sigtimedwait),
    SCMP_SYS(sigaltstack), SCMP_SYS(pause), SCMP_SYS(restart_syscall),
    // the time and the machine
    SCMP_SYS(clock_gettime), SCMP_SYS(clock_gettime64), SCMP_SYS(clock_getres),
    SCMP_SYS(gettimeofday), SCMP_SYS(time), SCMP_SYS(nanosleep), SCMP_SYS(clock_nanosleep),
    SCMP_SYS(clock_nanosleep_time64), SCMP_SYS(getrandom), SCMP_SYS(uname), SCMP_SYS(sysinfo)};

// Not those that type for the user (TIOCSTI), or send signals when there is something to read.
constexpr unsigned allowedControls[] = {TCGETS,   TIOCGWINSZ, FIONREAD, FIOCLEX,
                                        FIONCLEX, FIONBIO,    FICLONE,  FICLONERANGE};

// Not F_SETOWN and F_SETSIG, by which the system sends any signal to another process.
constexpr int allowedFileCommands[] = {F_DUPFD,  F_DUPFD_CLOEXEC, F_GETFD,     F_SETFD,
                                       F_GETFL,  F_SETFL,         F_GETLK,     F_SETLK,
                                       F_SETLKW, F_OFD_GETLK,     F_OFD_SETLK, F_OFD_SETLKW};

// Not PR_SET_DUMPABLE, PR_SET_PDEATHSIG and the like.
constexpr int allowedProcessControls[] = {PR_SET_NAME, PR_GET_NAME, PR_GET_DUMPABLE,
                                          PR_GET_NO_NEW_PRIVS, PR_SET_VMA};

} // namespace

/// A filter that is being made; a call or argument that this architecture doesn't know is left out.
class SystemCallFilter::Rules {
public:
    Rules() : filter_(seccomp_init(SCMP_ACT_KILL_PROCESS)) {}
    ~Rules()
    {
        if (filter_) {
            seccomp_release(filter_);
        }
    }
    Rules(const Rules&) = delete;
    Rules& operator=(const Rules&) = delete;

    void allow(int call) { seccomp_rule_add(filter_, SCMP_ACT_ALLOW, call, 0); }

    template <class Value, std::size_t count>
    void allowWith(int call, unsigned argument, const Value (&values)[count])
    {
        for (const Value value : values) {
            const scmp_arg_cmp same = {argument, SCMP_CMP_EQ, static_cast<scmp_datum_t>(value), 0};
            seccomp_rule_add_array(filter_, SCMP_ACT_ALLOW, call, 1, &same);
        }
    }

    template <class... Conditions>
    void add(std::uint32_t action, int call, Conditions... conditions)
    {
        seccomp_rule_add(filter_, action, call, sizeof...(conditions), conditions...);
    }

    void load()
    {
        seccomp_attr_set(filter_, SCMP_FLTATR_ACT_BADARCH, SCMP_ACT_KILL_PROCESS);
        seccomp_attr_set(filter_, SCMP_FLTATR_CTL_OPTIMIZE, 2); // a tree instead of a chain
        seccomp_load(filter_);
    }

    void addThreads();

private:
    scmp_filter_ctx filter_;
};

void SystemCallFilter::Rules::addThreads()
{
    // A new thread is no new process. The newer call passes its flags in memory, where a filter
    // can't look; the C library takes the older one where the system doesn't know the newer.
    constexpr scmp_datum_t namespaces = CLONE_NEWNS | CLONE_NEWCGROUP | CLONE_NEWUTS |
                                        CLONE_NEWIPC | CLONE_NEWUSER | CLONE_NEWPID | CLONE_NEWNET;
    add(SCMP_ACT_ALLOW, SCMP_SYS(clone),
        SCMP_A0(SCMP_CMP_MASKED_EQ, CLONE_THREAD | namespaces, CLONE_THREAD));
    add(SCMP_ACT_ERRNO(ENOSYS), SCMP_SYS(clone3));
#ifdef VANTORA_SANITIZED
    // Its reports go without the names that another program would add.
    add(SCMP_ACT_ERRNO(EPERM), SCMP_SYS(clone), SCMP_A0(SCMP_CMP_MASKED_EQ, CLONE_THREAD, 0));
#endif
}

SystemCallFilter::SystemCallFilter() : rules_(std::make_unique<Rules>())
{
    for (const int call : allowedCalls) {
        rules_->allow(call);
    }
    rules_->allowWith(SCMP_SYS(ioctl), 1, allowedControls);
    rules_->allowWith(SCMP_SYS(fcntl), 1, allowedFileCommands);
    rules_->allowWith(SCMP_SYS(fcntl64), 1, allowedFileCommands);
    rules_->allowWith(SCMP_SYS(prctl), 0, allowedProcessControls);
    rules_->addThreads();
    // abort() sends a signal to this process, which is all that signals are needed for.
    rules_->add(SCMP_ACT_ALLOW, SCMP_SYS(tgkill),
                SCMP_A0(SCMP_CMP_EQ, static_cast<scmp_datum_t>(getpid()), 0));
    // Asking for this process's limits, and setting the times of open files.
    rules_->add(SCMP_ACT_ALLOW, SCMP_SYS(prlimit64), SCMP_A0(SCMP_CMP_EQ, 0, 0),
                SCMP_A2(SCMP_CMP_EQ, 0, 0));
    rules_->add(SCMP_ACT_ALLOW, SCMP_SYS(utimensat), SCMP_A1(SCMP_CMP_EQ, 0, 0));
    // Who the user is may be asked of a service, and without it of a file.
    rules_->add(SCMP_ACT_ERRNO(EPERM), SCMP_SYS(socket));
}

SystemCallFilter::~SystemCallFilter() = default;

void SystemCallFilter::enforce()
{
    rules_->load();
}

} // namespace vantora
