// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QJsonObject>
#include <QObject>
#include <QString>
#include <QTimer>

#include <optional>

namespace tallyforge {

class App;

/// Answers the commands of other programs that ask the hosted server for more than the live values:
/// "status", "devices" and "use". A program that sends "use" in bursts gets each answer, but starts
/// no more than twenty routes a second, unless it asks for the status in between; the last one
/// counts. Main thread.
class ProgramCommands final : public QObject
{
    Q_OBJECT

public:
    /// app outlives it.
    explicit ProgramCommands(App &app);

    /// The reply to a request; an unknown command gives the error "unknown_op".
    [[nodiscard]] QJsonObject answer(const QString &op, const QJsonObject &request);
    /// What "status" tells now, even if a choice waits.
    [[nodiscard]] QJsonObject state() const;
    /// Forgets a choice that still waits, because the user has chosen since.
    void forgetChoice() { m_waiting.reset(); }

private:
    [[nodiscard]] QJsonObject status();
    [[nodiscard]] QJsonObject devices() const;
    [[nodiscard]] QJsonObject use(const QString &id);
    void follow(const QString &id);
    void followWaiting();
    // No program can choose a session: the user has done so after a choice that waits.
    [[nodiscard]] bool isSessionFollowed() const;

    App &m_app;
    QTimer m_pause;                   // until the next route may be started
    std::optional<QString> m_waiting; // the device of the last "use" that came in the pause
};

} // namespace tallyforge
