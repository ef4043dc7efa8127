// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/account/ScoreboardForm.h"

#include "device/ControllerCatalog.h"
#include "ui/widgets/ElidingComboBox.h"

#include <QFormLayout>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace tallyforge {

ScoreboardForm::ScoreboardForm(QWidget *parent)
    : QWidget(parent)
{
    auto *rows = new QFormLayout(this);
    rows->setContentsMargins({});
    rows->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    rows->setRowWrapPolicy(QFormLayout::WrapLongRows);
    m_manufacturer = addBox(rows, u"tallyforgeMaker"_s, tr("Manufacturer"));
    m_model = addBox(rows, u"tallyforgeModel"_s, tr("Model"));
    m_sport = addBox(rows, u"tallyforgeSport"_s, tr("Sport"));
    m_inputType = addBox(rows, u"tallyforgeInput"_s, tr("Input type"));
    const auto &catalog = controllerCatalog();
    for (auto family = catalog.begin(); family != catalog.end(); ++family) {
        m_manufacturer->addItem(family->label, family.key());
    }
    connect(m_manufacturer, &QComboBox::currentIndexChanged, this,
            &ScoreboardForm::onManufacturerChanged);
    onManufacturerChanged();
}

QComboBox *ScoreboardForm::addBox(QFormLayout *rows, const QString &name, const QString &label)
{
    auto *box = new ElidingComboBox(this);
    box->setObjectName(name);
    box->setAccessibleName(label);
    rows->addRow(label, box);
    return box;
}

void ScoreboardForm::onManufacturerChanged()
{
    for (QComboBox *box : {m_model, m_sport, m_inputType}) {
        box->clear();
    }
    const auto family = controllerCatalog().constFind(m_manufacturer->currentData().toString());
    if (family == controllerCatalog().constEnd()) {
        return;
    }
    m_model->addItems(family->models);
    const QStringList sports = family->sports.isEmpty() ? allSports() : family->sports;
    for (const QString &sport : sports) {
        m_sport->addItem(sportLabel(sport), sport);
    }
    for (const QString &type : family->inputTypes) {
        m_inputType->addItem(inputTypeLabel(type), type);
    }
}

QJsonObject ScoreboardForm::config() const
{
    return {{u"manufacturer"_s, m_manufacturer->currentData().toString()},
            {u"model"_s, m_model->currentText()},
            {u"sport"_s, m_sport->currentData().toString()},
            {u"input_type"_s, m_inputType->currentData().toString()}};
}

} // namespace tallyforge
