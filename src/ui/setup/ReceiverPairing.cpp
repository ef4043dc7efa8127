// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/setup/ReceiverPairing.h"

#include "device/DeviceSession.h"
#include "device/usb/UsbLink.h"
#include "ui/setup/HeldSession.h"
#include "ui/setup/ReceiverPage.h"

#include <QPointer>

#include <utility>

namespace tallyforge {

namespace {

constexpr int sameChannel = 0;

UsbLink *usbLinkOf(const HeldSession &held)
{
    return held.get() == nullptr ? nullptr : qobject_cast<UsbLink *>(held.get()->link());
}

} // namespace

ReceiverPairing::ReceiverPairing(const HeldSession &held, ReceiverPage *page)
    : QObject(page)
    , m_held(held)
    , m_page(page)
{
    connect(page, &ReceiverPage::newKeyRequested, this, [this] { pair({}, true); });
    connect(page, &ReceiverPage::keyEntered, this,
            [this](const QString &key) { pair(key, false); });
}

void ReceiverPairing::follow()
{
    m_newKey.clear();
    m_followed.next();
    disconnect(m_reports); // the session before may go on elsewhere
    if (const UsbLink *link = usbLinkOf(m_held)) {
        if (std::exchange(m_address, link->address()) != link->address()) {
            m_page->clear();
        }
        m_reports = connect(link, &UsbLink::receiverUpdated, this, &ReceiverPairing::refresh);
    }
    refresh();
}

void ReceiverPairing::refresh()
{
    if (UsbLink *link = usbLinkOf(m_held)) {
        m_page->showReceiver(link);
    }
}

void ReceiverPairing::pair(const QString &key, bool generate)
{
    UsbLink *link = usbLinkOf(m_held);
    if (link == nullptr) {
        return;
    }
    m_page->showSending();
    link->receiverSet(key, generate, sameChannel,
                      m_followed.guard([this, asked = QPointer(link)](
                                           bool ok, const QString &newKey, const QString &error) {
                          if (!asked || asked != usbLinkOf(m_held)) {
                              return;
                          }
                          if (ok) {
                              m_newKey = newKey;
                              m_page->showPaired(newKey);
                          } else {
                              m_page->showRefusal(error);
                          }
                      }));
}

} // namespace tallyforge
