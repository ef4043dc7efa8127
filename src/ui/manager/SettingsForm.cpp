// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/manager/SettingsForm.h"

#include "ui/manager/HexField.h"
#include "ui/widgets/PassingWheel.h"
#include "ui/widgets/WrappingButton.h"

#include <QFormLayout>
#include <QMetaProperty>
#include <QSpinBox>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

QVariant valueOf(const QWidget *input)
{
    return input->metaObject()->userProperty().read(input);
}

void write(QWidget *input, const QVariant &value)
{
    input->metaObject()->userProperty().write(input, value);
}

// Leaves an input alone that shows the value already: its text and cursor stay.
void setValue(QWidget *input, const QVariant &value)
{
    if (valueOf(input) != value) {
        write(input, value);
    }
}

QVariant read(const QJsonValue &told, const QVariant &fallback)
{
    switch (fallback.typeId()) {
    case QMetaType::Bool:
        return told.toBool(fallback.toBool());
    case QMetaType::Int:
        return told.toInt(fallback.toInt());
    default:
        return told.toString(fallback.toString());
    }
}

} // namespace

SettingsForm::SettingsForm(QWidget *parent)
    : QWidget(parent)
    , m_rows(new QFormLayout(this))
{
    m_rows->setContentsMargins({});
    m_rows->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    m_rows->setRowWrapPolicy(QFormLayout::WrapLongRows);
}

QString SettingsForm::inputName(QLatin1StringView key)
{
    return "tallyforgeSetting_"_L1 + key;
}

void SettingsForm::addRow(const QString &label, QWidget *input)
{
    input->setAccessibleName(label); // a placeholder only explains
    m_rows->addRow(label, input);
}

QCheckBox *SettingsForm::addCheck(QLatin1StringView key, const QString &text, bool fallback)
{
    auto *box = new WrappingCheckBox(text, this);
    box->setObjectName(inputName(key));
    m_rows->addRow(box);
    bind(key, box, fallback);
    return box;
}

QSpinBox *SettingsForm::addNumber(QLatin1StringView key, const QString &label, Range range,
                                  int fallback)
{
    auto *box = new PassingWheel<QSpinBox>(this);
    box->setObjectName(inputName(key));
    box->setRange(range.least, range.most);
    addRow(label, box);
    bind(key, box, fallback);
    return box;
}

void SettingsForm::addText(QLatin1StringView key, const QString &label, const QString &placeholder)
{
    auto *field = new TextField(inputName(key), placeholder, this);
    addRow(label, field);
    bind(key, field, QString());
}

void SettingsForm::addHex(QLatin1StringView key, const QString &label, const QString &placeholder,
                          int unchanged, int digits)
{
    auto *field = new HexField(inputName(key), placeholder, unchanged, digits, this);
    addRow(label, field);
    bind(key, field, unchanged);
}

void SettingsForm::bind(QLatin1StringView key, QWidget *input, const QVariant &fallback)
{
    setValue(input, fallback);
    m_inputs.append({key, input, fallback, fallback, fallback});
}

void SettingsForm::load(const QJsonObject &settings, Edits edits)
{
    for (Input &input : m_inputs) {
        const QVariant told = read(settings.value(input.key), input.fallback);
        if (edits == Edits::Keep && valueOf(input.widget) != input.known) {
            input.known = told;
        } else {
            setValue(input.widget, told);
            input.known = valueOf(input.widget); // which has a range
        }
    }
}

QJsonObject SettingsForm::values() const
{
    QJsonObject values;
    for (const Input &input : m_inputs) {
        const QVariant value = valueOf(input.widget);
        values.insert(input.key, value.typeId() == QMetaType::QString
                                     ? QJsonValue(value.toString().trimmed())
                                     : QJsonValue::fromVariant(value));
    }
    return values;
}

void SettingsForm::markSent()
{
    for (Input &input : m_inputs) {
        input.sent = valueOf(input.widget);
    }
}

void SettingsForm::markSaved()
{
    for (Input &input : m_inputs) {
        input.known = input.sent;
        if (input.sent.typeId() == QMetaType::Int && valueOf(input.widget) == input.sent) {
            write(input.widget, input.sent); // the device's number, however it was typed
        }
    }
}

} // namespace tallyforge
