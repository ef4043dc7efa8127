// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// A device's settings, over a scripted one.

#include "device/DeviceSession.h"
#include "tests/support/ScriptedLink.h"
#include "tests/support/SkippedTime.h"
#include "ui/manager/SettingsPanel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>

using namespace tallyforge;
using namespace tallyforge::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class TestSettingsPanel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
};

QTEST_MAIN(TestSettingsPanel)
#include "tst_settings_panel.moc"
