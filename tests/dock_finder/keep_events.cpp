// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// Preloaded into OBS, so that no click, key or exposure gets lost. Before OBS draws its preview, its
// graphics thread takes all events from the X connection that it shares with Qt and throws them away.
// It gets those that Qt's own thread has not taken yet: few on an idle computer, many on a busy one.

#include <dlfcn.h>

#include <cstring>

extern "C" __attribute__((visibility("default"))) void *xcb_poll_for_event(void *connection)
{
    Dl_info caller{};
    if (dladdr(__builtin_return_address(0), &caller) != 0 && std::strstr(caller.dli_fname, "libobs-opengl")) {
        return nullptr;
    }
    using Poll = void *(*)(void *);
    static const auto poll = reinterpret_cast<Poll>(dlsym(RTLD_NEXT, "xcb_poll_for_event"));
    return poll ? poll(connection) : nullptr;
}
