// SPDX-License-Identifier: MIT
// Tests that, for a detector without a law, the files and the picture are identical to those in the "linear" folder,
// which the last version without detector laws wrote.
#include "tests/support/sweep_tool.h"

#include "core/configuration.h"

#include <QImage>

using namespace calvorn;
using calvorn::test::Tool;

namespace {

// The prepared settings for this interface, with the simulated board at full speed.
QByteArray settings(int interfaceType)
{
    const test::ProgramFolder scratch({}, test::ProgramFolder::preparedSettings());
    scratch.set("Config", "Interface", QString::number(interfaceType));
    scratch.set("Simulator", "Pace", QStringLiteral("none"));
    return test::contents(scratch.iniPath());
}

QString before(const QString &name)
{
    return QStringLiteral(CALVORN_SOURCE_DIR "/tests/tools/linear/") + name;
}

} // namespace

class TestLinearDetector : public QObject
{
    Q_OBJECT

private slots:
    void theFileIsAsItWas_data();
    void theFileIsAsItWas();
    void thePictureIsAsItWas();
};

void TestLinearDetector::theFileIsAsItWas_data()
{
    QTest::addColumn<int>("interfaceType");
    QTest::addColumn<QString>("scale");
    QTest::addColumn<QString>("name");
    QTest::newRow("PIC, volts") << int{kInterfacePic} << "0"
                                << "pic-volts.csv";
    QTest::newRow("PIC, dB") << int{kInterfacePic} << "2"
                             << "pic-db.csv";
    QTest::newRow("parallel port, volts") << int{kInterfaceLpt} << "0"
                                          << "lpt-volts.csv";
    QTest::newRow("parallel port, dB") << int{kInterfaceLpt} << "2"
                                       << "lpt-db.csv";
    QTest::newRow("MiniVNA, volts") << int{kInterfaceVna} << "0"
                                    << "vna-volts.csv";
    QTest::newRow("MiniVNA, dB") << int{kInterfaceVna} << "2"
                                 << "vna-db.csv";
}

void TestLinearDetector::theFileIsAsItWas()
{
    QFETCH(int, interfaceType);
    QFETCH(QString, scale);
    QFETCH(QString, name);
    const QByteArray file = settings(interfaceType);
    Tool tool(file);
    QCOMPARE(tool.run({QStringLiteral("--scale"), scale, QStringLiteral("--output"), QStringLiteral("sweep.csv")}), 0);
    const QByteArray made = test::contents(tool.inFolder("sweep.csv"));
    QCOMPARE(made.count('\n'), 401);
    QCOMPARE(made, test::contents(before(name)));
    QCOMPARE(test::contents(tool.folder.iniPath()), file);
}

// Compares the text-free part of the picture: grid and curve.
void TestLinearDetector::thePictureIsAsItWas()
{
    Tool tool(settings(kInterfaceLpt));
    QCOMPARE(tool.run("--scale 2 --picture sweep.png"), 0);
    const QImage whole(tool.inFolder("sweep.png"));
    QCOMPARE(whole.size(), QSize(1200, 800));
    const QImage former(before(QStringLiteral("lpt-db.png")));
    QCOMPARE(former.size(), QSize(970, 477));
    QCOMPARE(whole.copy(QRect(QPoint(190, 113), former.size())).convertToFormat(QImage::Format_RGB32),
             former.convertToFormat(QImage::Format_RGB32));
}

QTEST_GUILESS_MAIN(TestLinearDetector)
#include "test_linear_detector.moc"
