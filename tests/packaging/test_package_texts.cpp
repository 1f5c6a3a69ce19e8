// SPDX-License-Identifier: MIT
#include <QDir>
#include <QFile>
#include <QImage>
#include <QTest>
#include <QXmlStreamReader>

namespace {

QByteArray ofProject(const char *name)
{
    QFile file(QStringLiteral(CALVORN_SOURCE_DIR "/") + QString::fromLatin1(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

} // namespace

class TestPackageTexts : public QObject
{
    Q_OBJECT

private slots:
    void allNameTheSameVersion();
    void theIconHasEverySize_data();
    void theIconHasEverySize();
};

void TestPackageTexts::allNameTheSameVersion()
{
    const QByteArray version(CALVORN_VERSION);
    QVERIFY(ofProject("packaging/debian/changelog").startsWith("calvorn (" + version + "-"));
    QXmlStreamReader metainfo(ofProject("packaging/org.calvorn.Calvorn.metainfo.xml"));
    while (!metainfo.atEnd() && !(metainfo.readNextStartElement() && metainfo.name() == u"release")) {
    }
    QCOMPARE(metainfo.attributes().value(QLatin1String("version")).toUtf8(), version);
    QVERIFY(ofProject("CHANGELOG.md").contains("\n## " + version));
    const QByteArray series = version.left(version.lastIndexOf('.'));
    for (const char *page : {"docs/man/Calvorn.1", "docs/man/calvorn-sweep.1"})
        QVERIFY2(ofProject(page).contains("\"Calvorn " + series + "\""), page);
    for (const char *page : {"README.md", "packaging/README.md"}) {
        const QByteArray text = ofProject(page);
        QVERIFY2(text.contains("calvorn_" + version + "-1_amd64.deb"), page);
        QVERIFY2(text.contains("calvorn-" + version + "-linux-x86_64.tar.gz"), page);
    }
}

void TestPackageTexts::theIconHasEverySize_data()
{
    QTest::addColumn<int>("pixels");
    for (const int pixels : {16, 22, 24, 32, 48, 64, 128, 256, 512})
        QTest::addRow("%d", pixels) << pixels;
}

// Each icon has transparent corners and, in its middle third, the curve's yellow.
void TestPackageTexts::theIconHasEverySize()
{
    QFETCH(int, pixels);
    const QImage icon(QDir(QStringLiteral(CALVORN_ICONS)).filePath(QStringLiteral("%1.png").arg(pixels)));
    QCOMPARE(icon.size(), QSize(pixels, pixels));
    QVERIFY(qAlpha(icon.pixel(0, 0)) < 128);
    QVERIFY(qAlpha(icon.pixel(pixels - 1, pixels - 1)) < 128);
    int yellow = 0;
    for (int y = 0; y < pixels; ++y)
        for (int x = pixels / 3; x < 2 * pixels / 3; ++x) {
            const QRgb colour = icon.pixel(x, y);
            if (qRed(colour) > 200 && qGreen(colour) > 200 && qBlue(colour) < 90)
                ++yellow;
        }
    QVERIFY2(yellow > pixels * pixels / 60, qPrintable(QString::number(yellow)));
}

QTEST_GUILESS_MAIN(TestPackageTexts)
#include "test_package_texts.moc"
