// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/widgets/PageBuilders.h"

#include "ui/widgets/ReadOnlyBox.h"
#include "ui/widgets/TextField.h"
#include "ui/widgets/ThemedLabel.h"
#include "ui/widgets/WrappingButton.h"

#include <QBoxLayout>
#include <QKeyEvent>

namespace tallyforge {

namespace {

template <class Widget> Widget *add(QBoxLayout *to, const QString &name, Widget *widget)
{
    widget->setObjectName(name);
    to->addWidget(widget);
    return widget;
}

/// The field's child. It takes the key, because a window would press its default button as well.
class ReturnKey final : public QObject
{
public:
    ReturnKey(QLineEdit *field, QPushButton *button)
        : QObject(field)
        , m_button(button)
    {
        field->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::KeyPress) {
            const auto *press = static_cast<const QKeyEvent *>(event);
            if (press->key() == Qt::Key_Return || press->key() == Qt::Key_Enter) {
                if (!press->isAutoRepeat()) {
                    m_button->click();
                }
                return true;
            }
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QPushButton *const m_button;
};

} // namespace

ThemedLabel *addHeading(QBoxLayout *to, const QString &text)
{
    auto *heading = new ThemedLabel(to->parentWidget());
    heading->setText(text);
    makeBold(heading);
    to->addWidget(heading);
    return heading;
}

ThemedLabel *addText(QBoxLayout *to, const QString &name, const QString &text)
{
    auto *label = add(to, name, new ThemedLabel(to->parentWidget()));
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setText(text);
    return label;
}

QPushButton *addButton(QBoxLayout *to, const QString &name, const QString &text)
{
    return add(to, name, new WrappingButton(text, to->parentWidget()));
}

TextField *addField(QBoxLayout *to, const QString &name, const QString &placeholder)
{
    auto *field = new TextField(name, placeholder, to->parentWidget());
    to->addWidget(field);
    return field;
}

ReadOnlyBox *addReadOnlyBox(QBoxLayout *to, const QString &name, const QString &title, int height)
{
    return add(to, name, new ReadOnlyBox(title, height, to->parentWidget()));
}

void pressOnReturn(QLineEdit *field, QPushButton *button)
{
    new ReturnKey(field, button);
}

} // namespace tallyforge
