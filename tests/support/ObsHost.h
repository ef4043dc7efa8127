// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QByteArray>
#include <QTemporaryDir>

#include <obs.h>

#include <atomic>
#include <functional>
#include <mutex>

namespace tallyforge::test {

/// The real libobs in this process, drawing 640 by 360 at 60 frames a second, with OBS's own text
/// source loaded. Needs an X display. One at a time.
class ObsHost
{
public:
    /// A finished frame, 32 bits a pixel; called on libobs's video thread.
    using FrameCallback = std::function<void(const QByteArray &pixels)>;

    ObsHost();
    ~ObsHost();
    ObsHost(const ObsHost &) = delete;
    ObsHost &operator=(const ObsHost &) = delete;

    /// Whether all of it came up.
    [[nodiscard]] bool isUp() const { return m_up; }
    /// Loads one more of OBS's modules; data is its folder, or null.
    static bool load(const char *file, const char *data = nullptr);
    /// Makes a source the whole picture; null for none.
    static void show(obs_source_t *source) { obs_set_output_source(0, source); }
    /// The picture, once every earlier change has been drawn.
    [[nodiscard]] QByteArray settledPicture();
    void setFrameCallback(const FrameCallback &callback);

    /// Ends libobs and gives the number of its memory blocks that were never freed.
    static long shutdown();

private:
    static void onRendered(void *param);
    static void onFrame(void *param, video_data *frame);

    QTemporaryDir m_config; // of the modules that are loaded
    bool m_up = false;
    std::atomic<int> m_rendered = 0;
    std::atomic<uint64_t> m_renderTime = 0; // of the newest rendered frame
    std::atomic<uint64_t> m_frameTime = 0;  // of the newest frame that was handed over
    std::mutex m_mutex;                     // guards the members below
    QByteArray m_picture;
    FrameCallback m_callback;
};

} // namespace tallyforge::test
