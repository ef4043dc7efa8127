// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/manager/ControllerGroup.h"

#include "ui/manager/SettingsForm.h"
#include "ui/widgets/ElidingComboBox.h"

#include <QFormLayout>
#include <QSet>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr std::array keys{"manufacturer"_L1, "model"_L1, "sport"_L1, "input_type"_L1};

// All values of a key, sorted, of those controllers that have the values of filters. A controller
// without the key can't be chosen.
QStringList valuesOf(QLatin1StringView key, const QJsonArray &controllers,
                     const QJsonObject &filters)
{
    QSet<QString> values;
    for (const QJsonValueConstRef controller : controllers) {
        const QString value = controller[key].toString();
        bool fits = !value.isEmpty();
        for (auto filter = filters.begin(); fits && filter != filters.end(); ++filter) {
            fits = controller[filter.key()] == filter.value();
        }
        if (fits) {
            values.insert(value);
        }
    }
    QStringList sorted = values.values();
    sorted.sort();
    return sorted;
}

// The same choice is left alone, because the user may have its list open.
void offer(QComboBox *box, const QStringList &texts)
{
    QStringList present;
    for (int i = 0; i < box->count(); ++i) {
        present.append(box->itemText(i));
    }
    if (present != texts) {
        box->clear();
        box->addItems(texts);
    }
}

QJsonObject choiceIn(const QJsonObject &settings)
{
    QJsonObject choice;
    for (const QLatin1StringView key : keys) {
        choice.insert(key, settings.value(key).toString());
    }
    return choice;
}

} // namespace

ControllerGroup::ControllerGroup(QWidget *parent)
    : Group(tr("Scoreboard"), parent)
{
    setObjectName(u"tallyforgeSettingsScoreboard"_s);
    addBoxes();
}

void ControllerGroup::addBoxes()
{
    const std::array labels{tr("Maker"), tr("Model"), tr("Sport"), tr("Connection")};
    auto *rows = new QFormLayout;
    rows->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    column()->addLayout(rows);
    for (std::size_t i = 0; i < m_boxes.size(); ++i) {
        auto *box = new ElidingComboBox(this);
        box->setObjectName(SettingsForm::inputName(keys.at(i)));
        box->setAccessibleName(labels.at(i));
        rows->addRow(labels.at(i), box);
        m_boxes.at(i) = box;
        connect(box, &QComboBox::activated, this, [this, i] { onActivated(i); });
    }
}

void ControllerGroup::load(const QJsonArray &controllers, const QJsonObject &config)
{
    m_controllers = controllers;
    m_device = choiceIn(config);
    fill(0, m_edited.value_or(m_device));
}

// From this box down.
void ControllerGroup::fill(std::size_t first, const QJsonObject &preferred)
{
    QJsonObject filters;
    for (std::size_t i = 0; i < m_boxes.size(); ++i) {
        QComboBox *box = m_boxes.at(i);
        const QLatin1StringView key = keys.at(i);
        if (i >= first) {
            offer(box, valuesOf(key, m_controllers, filters));
            const int place = box->findText(preferred.value(key).toString(),
                                            Qt::MatchExactly | Qt::MatchCaseSensitive);
            box->setCurrentIndex(std::max(place, box->count() > 0 ? 0 : -1));
        }
        filters.insert(key, box->currentText());
    }
}

void ControllerGroup::onActivated(std::size_t box)
{
    fill(box + 1, {});
    const QJsonObject chosen = choice();
    m_edited = chosen == m_device ? std::nullopt : std::optional(chosen);
    Q_EMIT picked();
}

QJsonObject ControllerGroup::choice() const
{
    QJsonObject choice;
    for (std::size_t i = 0; i < m_boxes.size(); ++i) {
        choice.insert(keys.at(i), m_boxes.at(i)->currentText());
    }
    return choice;
}

bool ControllerGroup::isComplete() const
{
    return std::ranges::none_of(m_boxes,
                                [](const QComboBox *box) { return box->currentText().isEmpty(); });
}

QString ControllerGroup::maker() const
{
    return m_boxes.front()->currentText();
}

QString ControllerGroup::connection() const
{
    return m_boxes.back()->currentText();
}

void ControllerGroup::markSaved(const QJsonObject &settings)
{
    m_device = choiceIn(settings);
    if (choice() == m_device) {
        m_edited.reset();
    }
}

} // namespace tallyforge
