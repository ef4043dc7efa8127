// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "platform/OpenFiles.h"

#include <sys/resource.h>

namespace tallyforge::platform {

// The system always gives the lowest number that is free.
bool isNearlyTheLast(qintptr descriptor)
{
    constexpr rlim_t reserve = 64; // for recordings, sources and whatever else OBS opens
    rlimit limit{};
    return getrlimit(RLIMIT_NOFILE, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY &&
           static_cast<rlim_t>(descriptor) + reserve >= limit.rlim_cur;
}

} // namespace tallyforge::platform
