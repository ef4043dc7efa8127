// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/widgets/Question.h"

#include <QMessageBox>

using namespace Qt::StringLiterals;

namespace tallyforge {

void askToConfirm(QWidget *parent, const QString &title, const QString &text,
                  const std::function<void()> &yes)
{
    auto *box = new QMessageBox(QMessageBox::Question, title, text,
                                QMessageBox::Yes | QMessageBox::No, parent);
    box->setObjectName(u"tallyforgeQuestion"_s);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setTextFormat(Qt::PlainText);
    box->setDefaultButton(QMessageBox::No);
    box->setEscapeButton(QMessageBox::No);
    QObject::connect(box, &QMessageBox::finished, parent, [yes](int button) {
        if (button == QMessageBox::Yes) {
            yes();
        }
    });
    box->open();
}

} // namespace tallyforge
