// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "plugin/App.h"
#include "plugin/Translation.h"
#include "tests/support/FakeModule.h"

#include <QTemporaryDir>
#include <QTest>
#include <QTranslator>

using namespace tallyforge;
using namespace Qt::StringLiterals;

class TestTranslation : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

    static QString whySignedOut()
    {
        QString why;
        App::get()->refreshOutputs([&why](bool, const QString &error) { why = error; });
        return why;
    }

private Q_SLOTS:
    void initTestCase()
    {
        test::setConfigFolder(m_dir.path());
        App::init(u"https://127.0.0.1:9"_s);
    }
    void cleanupTestCase() { App::shutdown(); }

    void textsFollowTheLocale_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<bool>("german");
        QTest::newRow("translated") << u"de-DE"_s << true;
        QTest::newRow("another country of the language") << u"de-AT"_s << true;
        QTest::newRow("the sources' own") << u"en-US"_s << false;
        QTest::newRow("not translated") << u"fr-FR"_s << false;
        QTest::newRow("none") << QString() << false;
        QTest::newRow("nonsense") << u"../de"_s << false;
    }
    void textsFollowTheLocale()
    {
        QFETCH(const QString, locale);
        QFETCH(const bool, german);
        const QString english = u"Sign in from the Tallyforge dock to see your graphics."_s;
        const auto translation = installTranslation(locale, QStringLiteral(TALLYFORGE_TRANSLATIONS));
        QCOMPARE(translation != nullptr, german);
        QCOMPARE(whySignedOut(),
                 german ? u"Melden Sie sich im Tallyforge-Dock an, um Ihre Grafiken zu sehen."_s : english);
    }
    void textsAreEnglishAgainAfterwards()
    {
        installTranslation(u"de-DE"_s, QStringLiteral(TALLYFORGE_TRANSLATIONS)).reset();
        QVERIFY(whySignedOut().startsWith(u"Sign in"));
    }
};

QTEST_GUILESS_MAIN(TestTranslation)
#include "tst_translation.moc"
