// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QStringList>
#include <QWidget>

#include <obs-frontend-api.h>

#include <memory>

namespace tallyforge::test {

/// OBS's window as the plug-in sees it; it stands before the real front end's functions.
struct FakeFrontend
{
    bool up = true;
    bool streaming = false;
    bool recording = false;
    obs_source_t *scene = nullptr; // the current one, not owned
    QStringList opened;            // the sources whose properties were opened
    std::unique_ptr<QWidget> dock;
    QString dockId;
    obs_frontend_event_cb onEvent = nullptr;
    int callsWhenDown = 0; // for each of which the real one logs an error
};

FakeFrontend &frontend();

} // namespace tallyforge::test
