// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "tests/dock_finder/Heard.h"

#include <QApplication>
#include <QKeyEvent>

using namespace Qt::StringLiterals;

namespace tallyforge::test {

namespace {

bool isModifier(const QKeyEvent &event)
{
    return event.key() >= Qt::Key_Shift && event.key() <= Qt::Key_Alt;
}

} // namespace

void Heard::take(QObject *receiver, const QEvent &event)
{
    if (receiver->isWindowType()) { // first, and once for each event
        const QEvent::Type type = event.type();
        m_clicks += int(type == QEvent::MouseButtonRelease);
        m_wheels += int(type == QEvent::Wheel);
        // A shortcut's key comes as nothing else.
        m_keys += int(type == QEvent::ShortcutOverride && !isModifier(static_cast<const QKeyEvent &>(event)));
        if (type == QEvent::MouseButtonPress) {
            m_pressed = {};
        }
    } else if (event.type() == QEvent::MouseButtonPress || event.type() == QEvent::MouseButtonDblClick) {
        for (auto *widget = qobject_cast<QWidget *>(receiver); widget; widget = widget->parentWidget()) {
            m_pressed.append(idOf(widget));
        }
    }
}

QJsonObject Heard::told() const
{
    return {{u"clicks"_s, m_clicks},
            {u"wheels"_s, m_wheels},
            {u"keys"_s, m_keys},
            {u"pressed"_s, m_pressed},
            {u"active"_s, QApplication::activeWindow() != nullptr}};
}

} // namespace tallyforge::test
