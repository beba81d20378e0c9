#include "VantoraHost/core/workers/Confinement.h"

#include <sched.h>
#include <seccomp.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <fstream>

namespace vantora {

namespace {

constexpr int refusedCalls[] = {
    // the network
    SCMP_SYS(socket), SCMP_SYS(socketpair), SCMP_SYS(connect), SCMP_SYS(bind), SCMP_SYS(listen),
    SCMP_SYS(accept), SCMP_SYS(accept4), SCMP_SYS(sendto), SCMP_SYS(sendmsg), SCMP_SYS(sendmmsg),
    SCMP_SYS(io_uring_setup),
    // processes
    SCMP_SYS(fork), SCMP_SYS(vfork), SCMP_SYS(execve), SCMP_SYS(execveat), SCMP_SYS(kill),
    SCMP_SYS(tkill), SCMP_SYS(pidfd_send_signal), SCMP_SYS(ptrace), SCMP_SYS(process_vm_readv),
    SCMP_SYS(process_vm_writev), SCMP_SYS(setns), SCMP_SYS(unshare),
    // the system
    SCMP_SYS(mount), SCMP_SYS(umount2), SCMP_SYS(pivot_root), SCMP_SYS(chroot), SCMP_SYS(bpf),
    SCMP_SYS(perf_event_open), SCMP_SYS(userfaultfd), SCMP_SYS(init_module), SCMP_SYS(finit_module),
    SCMP_SYS(delete_module), SCMP_SYS(kexec_load), SCMP_SYS(keyctl), SCMP_SYS(add_key),
    SCMP_SYS(request_key), SCMP_SYS(reboot)};

void filterSystemCalls()
{
    scmp_filter_ctx filter = seccomp_init(SCMP_ACT_ALLOW);
    if (!filter) {
        return;
    }
    for (const int call : refusedCalls) {
        seccomp_rule_add(filter, SCMP_ACT_ERRNO(EPERM), call, 0);
    }
    // A new thread is no new process. The newer call passes its flags in memory, where a filter
    // can't look; the C library takes the older one where the system doesn't know the newer.
    seccomp_rule_add(filter, SCMP_ACT_ERRNO(EPERM), SCMP_SYS(clone), 1,
                     SCMP_A0(SCMP_CMP_MASKED_EQ, CLONE_THREAD, 0));
    seccomp_rule_add(filter, SCMP_ACT_ERRNO(ENOSYS), SCMP_SYS(clone3), 0);
    // abort() sends a signal to this process, which is all that signals are needed for.
    seccomp_rule_add(filter, SCMP_ACT_ERRNO(EPERM), SCMP_SYS(tgkill), 1,
                     SCMP_A0(SCMP_CMP_NE, static_cast<scmp_datum_t>(getpid())));
    seccomp_load(filter);
    seccomp_release(filter);
}

// Private memory, as a heap is: documents that are mapped from their files don't count.
void limitMemory([[maybe_unused]] std::uint64_t bytes)
{
#ifndef __SANITIZE_ADDRESS__ // which reserves terabytes
    const struct rlimit limit = {bytes, bytes};
    setrlimit(RLIMIT_DATA, &limit);
#endif
}

std::uint64_t numberIn(const char* file)
{
    std::uint64_t number = 0;
    std::ifstream(file) >> number; // stays 0 for "max", which is no number
    return number;
}

} // namespace

void giveUpPrivileges()
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    const struct rlimit noCore = {0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
    prctl(PR_SET_DUMPABLE, 0);
}

void confine(std::uint64_t memoryLimit)
{
    if (memoryLimit > 0) {
        limitMemory(memoryLimit);
    }
    filterSystemCalls();
}

std::uint64_t availableMemory()
{
    const std::uint64_t machine = static_cast<std::uint64_t>(sysconf(_SC_PHYS_PAGES)) *
                                  static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
    std::uint64_t least = machine;
    // What a container may use, in the two versions of control groups.
    for (const char* file :
         {"/sys/fs/cgroup/memory.max", "/sys/fs/cgroup/memory/memory.limit_in_bytes"}) {
        if (const std::uint64_t bytes = numberIn(file); bytes > 0) {
            least = std::min(least, bytes);
        }
    }
    return least;
}

} // namespace vantora
