// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "tests/support/ObsHost.h"

#include <QCoreApplication>
#include <QThread>

#include <obs-nix-platform.h>

#include <X11/Xlib.h>

namespace tallyforge::test {

namespace {

constexpr uint32_t width = 640;
constexpr uint32_t height = 360;

bool resetVideo()
{
    obs_video_info video{};
    video.graphics_module = "libobs-opengl";
    video.fps_num = 60;
    video.fps_den = 1;
    video.base_width = video.output_width = width;
    video.base_height = video.output_height = height;
    video.output_format = VIDEO_FORMAT_BGRA;
    video.gpu_conversion = true;
    video.colorspace = VIDEO_CS_SRGB;
    video.range = VIDEO_RANGE_FULL;
    return obs_reset_video(&video) == OBS_VIDEO_SUCCESS;
}

// No test listens, but without sound libobs doesn't wait for sources that are still to be destroyed.
bool resetAudio()
{
    const obs_audio_info audio{48000, SPEAKERS_STEREO};
    return obs_reset_audio(&audio);
}

constexpr const char *textSourceFile = "/usr/lib/" TALLYFORGE_MULTIARCH "/obs-plugins/text-freetype2.so";
constexpr const char *textSourceData = "/usr/share/obs/obs-plugins/text-freetype2";

} // namespace

ObsHost::ObsHost()
{
    obs_set_nix_platform(OBS_NIX_PLATFORM_X11_EGL);
    obs_set_nix_platform_display(XOpenDisplay(nullptr));
    m_up = obs_startup("en-US", m_config.path().toUtf8().constData(), nullptr) && resetVideo() && resetAudio() &&
           load(textSourceFile, textSourceData);
    if (m_up) {
        obs_add_main_rendered_callback(onRendered, this);
        obs_add_raw_video_callback(nullptr, onFrame, this);
    }
}

ObsHost::~ObsHost()
{
    obs_remove_raw_video_callback(onFrame, this);
    obs_remove_main_rendered_callback(onRendered, this);
    show(nullptr);
    // A released source may still hold others, which libobs must not meet at its end.
    while (obs_wait_for_destroy_queue()) {
    }
}

bool ObsHost::load(const char *file, const char *data)
{
    obs_module_t *module = nullptr;
    return obs_open_module(&module, file, data) == MODULE_SUCCESS && obs_init_module(module);
}

long ObsHost::shutdown()
{
    obs_shutdown();
    return bnum_allocs();
}

QByteArray ObsHost::settledPicture()
{
    const auto waitFor = [](const auto &condition) {
        while (!condition()) {
            QCoreApplication::processEvents();
            QThread::usleep(500);
        }
    };
    // The frame under way may have begun before, and a change that its tick finds is drawn in the next.
    // A frame that came late is handed over again, with the times of those that it stands for.
    waitFor([this, wanted = m_rendered + 3] { return m_rendered >= wanted; });
    waitFor([this, time = m_renderTime.load()] { return m_frameTime >= time; });
    const std::lock_guard lock(m_mutex);
    return m_picture;
}

void ObsHost::setFrameCallback(const FrameCallback &callback)
{
    const std::lock_guard lock(m_mutex);
    m_callback = callback;
}

void ObsHost::onRendered(void *param)
{
    auto *host = static_cast<ObsHost *>(param);
    host->m_renderTime = obs_get_video_frame_time();
    ++host->m_rendered;
}

void ObsHost::onFrame(void *param, video_data *frame)
{
    auto *host = static_cast<ObsHost *>(param);
    const std::lock_guard lock(host->m_mutex);
    host->m_picture =
        QByteArray(reinterpret_cast<const char *>(frame->data[0]), qsizetype(frame->linesize[0]) * height);
    if (host->m_callback) {
        host->m_callback(host->m_picture);
    }
    host->m_frameTime = frame->timestamp;
}

} // namespace tallyforge::test
