// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/widgets/Question.h"

#include <QInputDialog>
#include <QMessageBox>

using namespace Qt::StringLiterals;

namespace tallyforge {
namespace {

// The answer may lead to the end of the parent, and so of the box, which must not be in use then.
constexpr auto afterwards = Qt::QueuedConnection;

} // namespace

void askToConfirm(QWidget *parent, const QString &title, const QString &text,
                  const std::function<void()> &yes, Severity severity)
{
    const bool isSevere = severity == Severity::Severe;
    const auto no = isSevere ? QMessageBox::Cancel : QMessageBox::No;
    auto *box = new QMessageBox(isSevere ? QMessageBox::Warning : QMessageBox::Question, title,
                                text, QMessageBox::Yes | no, parent);
    box->setObjectName(u"tallyforgeQuestion"_s);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setTextFormat(Qt::PlainText);
    box->setDefaultButton(no);
    box->setEscapeButton(no);
    QObject::connect(
        box, &QMessageBox::finished, parent,
        [yes](int button) {
            if (button == QMessageBox::Yes) {
                yes();
            }
        },
        afterwards);
    box->open();
}

void askForText(QWidget *parent, const QString &title, const QString &label,
                const std::function<void(const QString &text)> &accepted)
{
    auto *box = new QInputDialog(parent);
    box->setObjectName(u"tallyforgeTextQuestion"_s);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowTitle(title);
    box->setLabelText(label);
    QObject::connect(box, &QInputDialog::textValueSelected, parent, accepted, afterwards);
    box->open();
}

} // namespace tallyforge
