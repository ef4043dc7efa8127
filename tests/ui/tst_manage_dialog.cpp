// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// The dialog about a device of the account, on the real portal client.

#include "device/ControllerCatalog.h"
#include "plugin/App.h"
#include "tests/support/FakeModule.h"
#include "tests/support/HttpStub.h"
#include "ui/account/ManageDialog.h"

#include <QComboBox>
#include <QJsonDocument>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

using namespace tallyforge;
using namespace tallyforge::test;
using namespace Qt::StringLiterals;

class TestManageDialog : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    std::unique_ptr<HttpStub> m_portal;
    HttpReply m_reply; // to what is asked about the device
    QPointer<ManageDialog> m_dialog;

    template <class Widget> Widget *find(const QString &name)
    {
        return m_dialog->findChild<Widget *>(u"tallyforge"_s + name);
    }
    // The message, with "!" before an error.
    QString message()
    {
        auto *line = find<QLabel>(u"ManageMessage"_s);
        return (line->styleSheet() == "color: #d9534f;"_L1 ? u"!"_s : QString()) + line->text();
    }
    bool isIdle()
    {
        const QList<QPushButton *> buttons = m_dialog->findChildren<QPushButton *>();
        const auto on = std::count_if(buttons.begin(), buttons.end(),
                                      [this](auto *each) { return each->window() == m_dialog && each->isEnabled(); });
        return on == 4;
    }
    // Presses a button and agrees to what it asks; the message in the meantime.
    QString begin(const QString &button)
    {
        find<QPushButton>(button)->click();
        if (auto *question = find<QMessageBox>(u"Question"_s)) {
            question->button(QMessageBox::Yes)->click();
            question->setObjectName(QString()); // it goes later
            QCoreApplication::sendPostedEvents();
        }
        return message();
    }

private Q_SLOTS:
    void init()
    {
        setConfigFolder(m_dir.path());
        m_portal = std::make_unique<HttpStub>();
        m_portal->answer = [this](const HttpRequest &request) {
            return request.path.startsWith("/devices/") ? m_reply : HttpReply{200, R"({"user":{"email":"e"}})"};
        };
        App::init(m_portal->url());
        App::get()->portal().restoreSession({});
        QTRY_VERIFY(App::get()->portal().signedIn());
        m_dialog = new ManageDialog(*App::get(), u"D 1"_s, nullptr);
        m_dialog->show();
    }
    void cleanup()
    {
        delete m_dialog;
        App::shutdown();
    }

    void actions_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<QString>("busy");
        QTest::addColumn<QByteArray>("request");
        QTest::addColumn<QString>("shown"); // the message and the output
        const auto row = [](const char *name, const QString &button, const QByteArray &reply, const QString &busy,
                            const QByteArray &request, const QString &shown) {
            QTest::newRow(name) << button << reply << busy << request << shown;
        };
        const QByteArray command = "POST /devices/D%201/cmd/%1 {\"args\":{}}";
        const auto sent = [command](const char *word) { return QByteArray(command).replace("%1", word); };
        row("status", u"CheckStatus"_s, R"({"data":{"b":true,"a":1.5,"n":{"x":1},"l":[1],"z":"t"}})",
            u"Asking the device…"_s, sent("get_status"), u"Status received.|a: 1.5\nb: true\nz: t"_s);
        row("nested status", u"CheckStatus"_s, R"({"data":{"n":{"x":1}}})", u"Asking the device…"_s, sent("get_status"),
            u"Status received.|The device answered."_s);
        row("update", u"CheckFirmware"_s, R"({"data":{"version":"2"}})", u"Checking for a firmware update…"_s,
            sent("ota_check"), u"Update check finished.|{\n    \"version\": \"2\"\n}\n"_s);
        row("restart", u"RestartManaged"_s, "{}", u"Restarting…"_s, sent("reboot"), u"Restart sent.|"_s);
        row("restart, offline", u"RestartManaged"_s, R"({"queued":true})", u"Restarting…"_s, sent("reboot"),
            u"The device is offline; it will restart when it reconnects.|"_s);
        row("scoreboard", u"ChangeScoreboard"_s, "{}", u"Sending to the device…"_s, "POST /devices/D%201/config ",
            u"The device accepted the new scoreboard.|"_s);
    }
    void actions()
    {
        QFETCH(QString, button);
        QFETCH(QByteArray, reply);
        QCOMPARE(message(), u"These actions reach the device through your Tallyforge account, so it must be online."_s);
        m_reply = {504, R"({"error":"device_offline"})"};
        QTEST(begin(button), "busy");
        QVERIFY(!isIdle());
        QTRY_VERIFY(isIdle());
        QVERIFY(message().startsWith(u'!'));
        m_reply = {200, reply};
        QTEST(begin(button), "busy");
        QTRY_VERIFY(isIdle());
        QFETCH(QString, shown);
        QTRY_COMPARE(message() + u'|' + find<QPlainTextEdit>(u"ManageOutput"_s)->toPlainText(), shown);
        const HttpRequest last = m_portal->requests.last();
        QFETCH(QByteArray, request);
        QVERIFY2((last.verb + ' ' + last.path + ' ' + last.body).startsWith(request), last.path + last.body);

        m_reply = {200, "{}", "", HttpReply::How::Hang}; // and the dialog is closed meanwhile
        const auto requests = m_portal->requests.size();
        begin(button);
        QTRY_COMPARE(m_portal->requests.size(), requests + 1);
        m_dialog->close();
        QTRY_VERIFY(!m_dialog);
        m_portal->release(reply);
        bool isDone = false;
        App::get()->portal().listDevices([&](const PortalResult &) { isDone = true; });
        QTRY_VERIFY(isDone);
    }

    void refusedQuestion()
    {
        const auto requests = m_portal->requests.size();
        find<QPushButton>(u"RestartManaged"_s)->click();
        auto *question = find<QMessageBox>(u"Question"_s);
        QCOMPARE(question->text(), u"Restart D 1 now? Live scores pause for about a minute."_s);
        QTest::keyClick(question, Qt::Key_Return);
        QCoreApplication::sendPostedEvents();
        QVERIFY(isIdle() && m_portal->requests.size() == requests);
    }

    void scoreboards()
    {
        m_reply = {200, "{}"};
        auto *makers = find<QComboBox>(u"Maker"_s);
        for (int i = 0; i < makers->count(); ++i) {
            makers->setCurrentIndex(i);
            const ControllerFamily family = controllerCatalog().value(makers->itemData(i).toString());
            QCOMPARE(makers->currentText(), family.label);
            QCOMPARE(find<QComboBox>(u"Model"_s)->count(), family.models.size());
            QCOMPARE(find<QComboBox>(u"Input"_s)->count(), family.inputTypes.size());
            auto *sports = find<QComboBox>(u"Sport"_s);
            QCOMPARE(sports->count(), (family.sports.isEmpty() ? allSports() : family.sports).size());
            sports->setCurrentIndex(sports->count() - 1);
            begin(u"ChangeScoreboard"_s);
            QTRY_VERIFY(isIdle());
            const auto config = QJsonDocument::fromJson(m_portal->requests.last().body)["config"_L1].toObject();
            QCOMPARE(config, (QJsonObject{{u"manufacturer"_s, makers->itemData(i).toString()},
                                          {u"model"_s, family.models.first()},
                                          {u"sport"_s, sports->currentData().toString()},
                                          {u"input_type"_s, family.inputTypes.first()}}));
        }
    }
};

QTEST_MAIN(TestManageDialog)
#include "tst_manage_dialog.moc"
