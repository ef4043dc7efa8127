// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "sources/TextTemplate.h"

#include <QTest>

using namespace tallyforge;
using namespace Qt::StringLiterals;

class TestTextTemplate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void expand_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("result");
        QTest::newRow("two fields") << u"{home} - {away}"_s << u"<home> - <away>"_s;
        QTest::newRow("unknown vanishes") << u"[{none}]"_s << u"[]"_s;
        QTest::newRow("no placeholder") << u"Final"_s << u"Final"_s;
        QTest::newRow("empty") << QString() << QString();
        QTest::newRow("lone braces") << u"{ } {a"_s << u"{ } {a"_s;
        QTest::newRow("other characters in braces") << u"{a b}{ä}{}"_s << u"{a b}{ä}{}"_s;
        QTest::newRow("inner of doubled braces") << u"{{a}}"_s << u"{<a>}"_s;
        QTest::newRow("neighbours and lines") << u"{a}{b_2}\n{C}"_s << u"<a><b_2>\n<C>"_s;
        QTest::newRow("a value isn't expanded again") << u"{loop}"_s << u"{a}"_s;
    }
    void expand()
    {
        QFETCH(QString, text);
        QTEST(
            expandTemplate(text,
                           [](const QString &name) {
                               return name == u"none"_s ? QString() : name == u"loop"_s ? u"{a}"_s : u'<' + name + u'>';
                           }),
            "result");
    }
};

QTEST_GUILESS_MAIN(TestTextTemplate)
#include "tst_text_template.moc"
