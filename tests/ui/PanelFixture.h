// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "core/SettingsStore.h"
#include "device/DeviceSession.h"
#include "tests/support/ScriptedLink.h"
#include "tests/support/SkippedTime.h"
#include "ui/manager/DeviceManager.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QJsonDocument>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

namespace tallyforge::test {

inline constexpr auto error = QLatin1StringView("color: #d9534f;");

inline QJsonObject json(const QByteArray &text)
{
    return QJsonDocument::fromJson(text).object();
}

/// A panel in view, over a session with a scripted device.
class PanelFixture
{
protected:
    ScriptedDevice m_device;
    std::unique_ptr<DeviceSession> m_session;
    std::unique_ptr<QWidget> m_panel;
    SettingsStore m_settings;

    /// Opens a session with a device that lets it in and describes itself like this.
    void begin(const QByteArray &status = "{}")
    {
        m_device = {};
        m_device.tell({"getStatus " + status});
        m_session = std::make_unique<DeviceSession>(new ScriptedLink(m_device), nullptr);
        m_session->start({QStringLiteral("quietmoose")});
        QCOMPARE(m_session->state(), DeviceSession::State::Ready);
        m_device.script.clear();
        m_device.requests.clear();
    }
    template <class Panel> Panel *show() { return own(std::make_unique<Panel>(m_session.get(), nullptr)); }
    DeviceManager *showManager() { return own(std::make_unique<DeviceManager>(m_session.get(), m_settings, nullptr)); }
    template <class Panel> Panel *own(std::unique_ptr<Panel> panel)
    {
        Panel *shown = panel.get();
        m_panel = std::move(panel);
        m_panel->show();
        return shown;
    }
    template <class Widget = QWidget> Widget *find(const QString &name)
    {
        return m_panel->findChild<Widget *>(QStringLiteral("tallyforge") + name);
    }
    QString text(const QString &name) { return find(name)->property("text").toString(); }
    QString box(const QString &name) { return find<QPlainTextEdit>(name)->toPlainText(); }
    void press(const QString &name) { find<QAbstractButton>(name)->click(); }
    // What the message line says; an error begins with "!".
    QString message()
    {
        const QList<QLabel *> lines = m_panel->findChildren<QLabel *>(QStringLiteral("tallyforgeMessage"));
        for (const QLabel *line : lines) {
            if (line->isVisible()) {
                return (line->styleSheet() == error ? QStringLiteral("!") : QString()) + line->text();
            }
        }
        return {};
    }
    void confirm(QMessageBox::StandardButton answer, const QString &title)
    {
        auto *question = find<QMessageBox>(QStringLiteral("Question"));
        QVERIFY(question && question->isVisible());
        QCOMPARE(question->windowTitle(), title);
        QVERIFY(question->button(QMessageBox::Yes) != question->defaultButton());
        QCOMPARE(question->escapeButton(), question->defaultButton());
        question->button(answer)->click();
        QTRY_VERIFY(!find<QMessageBox>(QStringLiteral("Question")));
    }
    void pick(const QString &name, const QString &item)
    {
        auto *combo = find<QComboBox>(name);
        combo->setCurrentText(item);
        Q_EMIT combo->activated(combo->currentIndex());
    }
    QStringList items(const QString &name)
    {
        QStringList all;
        for (int i = 0; i < find<QComboBox>(name)->count(); ++i) {
            all.append(find<QComboBox>(name)->itemText(i));
        }
        return all;
    }
};

} // namespace tallyforge::test
