// File bytes to editor text and back: which line ending a file is given, and which characters an
// encoding can hold.
#include "editor/TextFileCodec.h"

#include <QtTest/QtTest>

using LineEnding = TextFileFormat::LineEnding;
Q_DECLARE_METATYPE(TextFileFormat::LineEnding)

class TestTextFileCodec : public QObject
{
    Q_OBJECT

private slots:
    void dominantLineEnding_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<LineEnding>("ending");
        QTest::addColumn<bool>("mixed");
        QTest::newRow("none") << QByteArray("one line") << LineEnding::LF << false;
        QTest::newRow("lf") << QByteArray("a\nb\n") << LineEnding::LF << false;
        QTest::newRow("crlf") << QByteArray("a\r\nb\r\n") << LineEnding::CRLF << false;
        QTest::newRow("cr") << QByteArray("a\rb\r") << LineEnding::CR << false;
        QTest::newRow("crlf over lf") << QByteArray("a\r\nb\r\nc\n") << LineEnding::CRLF << true;
        QTest::newRow("tie of lf and crlf goes to lf") << QByteArray("a\r\nb\n") << LineEnding::LF << true;
        QTest::newRow("tie of crlf and cr goes to crlf") << QByteArray("a\r\nb\rc") << LineEnding::CRLF << true;
        QTest::newRow("tie of lf and cr goes to lf") << QByteArray("a\rb\n") << LineEnding::LF << true;
        QTest::newRow("cr over both") << QByteArray("a\rb\rc\r\nd\n") << LineEnding::CR << true;
    }

    void dominantLineEnding()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(LineEnding, ending);
        QFETCH(bool, mixed);
        TextFileFormat format;
        const QString text = TextFileCodec::Decode(bytes, format);
        QVERIFY(!text.contains(QLatin1Char('\r')));
        QCOMPARE(format.lineEnding, ending);
        QCOMPARE(format.mixedLineEndings, mixed);
    }

    void latin1HoldsItsWholeRange_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("lossless");
        QTest::newRow("ascii") << QStringLiteral("abc") << true;
        QTest::newRow("last latin-1 character") << QStringLiteral("caf\u00e9 \u00ff") << true;
        QTest::newRow("first beyond") << QStringLiteral("\u0100") << false;
        QTest::newRow("euro sign") << QStringLiteral("5 \u20ac") << false;
    }

    void latin1HoldsItsWholeRange()
    {
        QFETCH(QString, text);
        QFETCH(bool, lossless);
        TextFileFormat format;
        format.encoding = TextFileFormat::Encoding::Latin1;
        bool held = !lossless;
        const QByteArray bytes = TextFileCodec::Encode(text, format, &held);
        QCOMPARE(held, lossless);
        if (lossless)
            QCOMPARE(QString::fromLatin1(bytes), text);
    }
};

QTEST_MAIN(TestTextFileCodec)
#include "tst_TextFileCodec.moc"
