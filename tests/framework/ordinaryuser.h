#pragma once
#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>

/// Removes the right of this process to ignore file permissions, so that they also apply to root. False if that fails.
inline bool becomeOrdinaryUser()
{
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct data[2]{};
    if (syscall(SYS_capget, &header, data) != 0)
        return false;
    const unsigned int rights = 1U << CAP_DAC_OVERRIDE | 1U << CAP_DAC_READ_SEARCH;
    data[0].effective &= ~rights;
    data[0].permitted &= ~rights;
    data[0].inheritable &= ~rights;
    return syscall(SYS_capset, &header, data) == 0;
}
