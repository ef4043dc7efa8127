// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/manager/ControllerPanel.h"

#include "device/ControllerCatalog.h"
#include "device/DeviceSession.h"
#include "ui/widgets/ElidingComboBox.h"
#include "ui/widgets/MessageLine.h"
#include "ui/widgets/ScrolledColumn.h"
#include "ui/widgets/WrappingButton.h"

#include <QFormLayout>
#include <QMap>
#include <QSet>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tallyforge {

ControllerPanel::ControllerPanel(DeviceSession *session, QWidget *parent)
    : PanelBase(session, parent)
{
    setObjectName(u"tallyforgeController"_s);
    QVBoxLayout *column = scrolledColumn(this);
    QWidget *page = column->parentWidget();
    auto *intro = new ThemedLabel(page);
    intro->setText(
        tr("Pick the scoreboard this device is connected to. Each choice narrows the next."));
    column->addWidget(intro);

    auto *rows = new QFormLayout;
    column->addLayout(rows);
    rows->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    rows->setRowWrapPolicy(QFormLayout::WrapLongRows);
    const auto addBox = [rows, page](const QString &name, const QString &label) {
        auto *box = new ElidingComboBox(page);
        box->setObjectName(name);
        box->setAccessibleName(label);
        rows->addRow(label, box);
        return box;
    };
    m_makerBox = addBox(u"tallyforgeMaker"_s, tr("Manufacturer"));
    m_modelBox = addBox(u"tallyforgeModel"_s, tr("Model"));
    m_sportBox = addBox(u"tallyforgeSport"_s, tr("Sport"));
    m_inputBox = addBox(u"tallyforgeInput"_s, tr("Input type"));

    m_saveButton = new WrappingButton(tr("Save scoreboard"), page);
    m_saveButton->setObjectName(u"tallyforgeSaveController"_s);
    m_saveButton->setDefault(true);
    column->addWidget(m_saveButton);
    column->addWidget(messageLine());
    column->addStretch(1);

    connect(m_makerBox, &QComboBox::activated, this, [this] { fillModels({}); });
    connect(m_modelBox, &QComboBox::activated, this, [this] { fillSports({}); });
    connect(m_sportBox, &QComboBox::activated, this, [this] { fillInputs({}); });
    connect(m_saveButton, &QPushButton::clicked, this, &ControllerPanel::save);
}

void ControllerPanel::refresh()
{
    load();
}

void ControllerPanel::load()
{
    if (!session()) {
        return;
    }
    setMessage(tr("Loading the list…"), false);
    for (QComboBox *box : {m_makerBox, m_modelBox, m_sportBox, m_inputBox}) {
        box->clear();
    }
    m_saveButton->setEnabled(false);
    session()->listControllers([self = QPointer(this)](bool ok,
                                                       const QList<ControllerChoice> &choices,
                                                       const QString &error) {
        if (self) {
            self->onList(ok, choices, error);
        }
    });
}

void ControllerPanel::onList(bool ok, const QList<ControllerChoice> &choices, const QString &error)
{
    if (!ok) {
        setMessage(error, true);
        return;
    }
    m_choices = choices;
    fillMakers({});
    m_saveButton->setEnabled(!m_choices.isEmpty());
    setMessage(m_choices.isEmpty() ? tr("The device did not list its scoreboards.") : QString(),
               false);
    if (session()) {
        session()->getControllerConfig(
            [self = QPointer(this)](bool got, const QJsonObject &config, const QString &) {
                if (self && got) {
                    self->onConfig(config);
                }
            });
    }
}

void ControllerPanel::onConfig(const QJsonObject &config)
{
    const auto saved = ControllerChoice::fromJson(config);
    if (m_choices.contains(saved)) {
        fillMakers(saved);
        setMessage(tr("Currently set to this scoreboard."), false);
    }
}

void ControllerPanel::fillBox(QComboBox *box, QString ControllerChoice::*key, const Filter &filter,
                              const Text &labelOf, const QString &wanted)
{
    QSet<QString> keys;
    for (const ControllerChoice &choice : std::as_const(m_choices)) {
        if (!(choice.*key).isEmpty() && filter(choice)) {
            keys.insert(choice.*key);
        }
    }
    QMap<std::pair<QString, QString>, QString> sorted; // by label, then by key: labels may be alike
    for (const QString &each : std::as_const(keys)) {
        sorted.insert({labelOf(each).toLower(), each}, each);
    }
    box->clear();
    for (const QString &each : std::as_const(sorted)) {
        box->addItem(labelOf(each), each);
    }
    if (const int index =
            box->findData(wanted, Qt::UserRole, Qt::MatchExactly | Qt::MatchCaseSensitive);
        index >= 0) {
        box->setCurrentIndex(index);
    }
}

void ControllerPanel::fillMakers(const ControllerChoice &wanted)
{
    fillBox(
        m_makerBox, &ControllerChoice::manufacturer, [](const ControllerChoice &) { return true; },
        manufacturerLabel, wanted.manufacturer);
    fillModels(wanted);
}

void ControllerPanel::fillModels(const ControllerChoice &wanted)
{
    const auto fits = [now = picked()](const ControllerChoice &choice) {
        return choice.manufacturer == now.manufacturer;
    };
    fillBox(
        m_modelBox, &ControllerChoice::model, fits, [](const QString &key) { return key; },
        wanted.model);
    fillSports(wanted);
}

void ControllerPanel::fillSports(const ControllerChoice &wanted)
{
    const auto fits = [now = picked()](const ControllerChoice &choice) {
        return choice.manufacturer == now.manufacturer && choice.model == now.model;
    };
    fillBox(m_sportBox, &ControllerChoice::sport, fits, sportLabel, wanted.sport);
    fillInputs(wanted);
}

void ControllerPanel::fillInputs(const ControllerChoice &wanted)
{
    const auto fits = [now = picked()](const ControllerChoice &choice) {
        return choice.manufacturer == now.manufacturer && choice.model == now.model &&
               choice.sport == now.sport;
    };
    fillBox(m_inputBox, &ControllerChoice::inputType, fits, inputTypeLabel, wanted.inputType);
}

ControllerChoice ControllerPanel::picked() const
{
    return {m_makerBox->currentData().toString(), m_modelBox->currentData().toString(),
            m_sportBox->currentData().toString(), m_inputBox->currentData().toString()};
}

void ControllerPanel::save()
{
    const ControllerChoice choice = picked();
    if (!session() || choice.manufacturer.isEmpty() || choice.model.isEmpty() ||
        choice.sport.isEmpty() || choice.inputType.isEmpty()) {
        tell(tr("Choose the manufacturer, model, sport and input type first."), true);
        return;
    }
    tell(tr("Saving…"), false);
    m_saveButton->setEnabled(false);
    session()->setController(choice, [self = QPointer(this)](bool ok, const QString &error) {
        if (!self) {
            return;
        }
        self->m_saveButton->setEnabled(true);
        self->tell(ok ? tr("Saved.") : error, !ok);
        if (ok) {
            Q_EMIT self->saved();
        }
    });
}

} // namespace tallyforge
