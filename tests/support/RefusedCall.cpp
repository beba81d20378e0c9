#include "tests/support/RefusedCall.h"

#include <array>
#include <cstddef>
#include <gtest/gtest.h>
#include <iostream>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace support {

void refuseCall(int call, int error)
{
    const auto number = static_cast<unsigned int>(call);
    const auto answer = SECCOMP_RET_ERRNO | static_cast<unsigned int>(error);
    std::array<sock_filter, 4> program = {{
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, number, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, answer),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    }};
    const sock_fprog filter = {program.size(), program.data()};
    ASSERT_EQ(prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0), 0);
    ASSERT_EQ(prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter), 0);
}

void inAnotherProcess(const std::function<void()>& work)
{
    std::cout.flush();
    const pid_t child = fork();
    if (child == 0) {
        work();
        std::cout.flush();
        _exit(testing::Test::HasFailure() ? 1 : 0);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0) << "what failed is said above";
}

} // namespace support
