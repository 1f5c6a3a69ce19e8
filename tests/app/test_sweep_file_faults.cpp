// SPDX-License-Identifier: MIT
// Invalid or unusual sweep files, and paths that cannot be written.
#include "tests/support/full_disk.h"
#include "tests/support/null_device.h"
#include "tests/support/resident_memory.h"
#include "tests/support/sweep_file_bench.h"
#include "tests/support/walk_numbers.h"

#include <QDir>
#include <QListWidget>
#include <QSignalSpy>

#include <sys/stat.h>
#include <unistd.h>

using namespace calvorn;
using calvorn::test::rowsFromTo;
using calvorn::test::wholeFile;
using Bench = calvorn::test::SweepFileBench;

namespace {

constexpr qint64 kHundredMegabytes = 100'000'000;
constexpr uid_t kNobody = 65534;

// The state that a rejected import must not change.
struct Shown
{
    QStringList texts;
    QPolygonF curve;
    std::int32_t start;
    std::int32_t stop;

    explicit Shown(const Bench &bench)
        : curve(bench.find<SweepGraph>("picSweep")->curve())
        , start(bench.configuration.startFreq)
        , stop(bench.configuration.stopFreq)
    {
        for (const char *box : {"txtStart", "txtStop", "txtStep", "txtM1X", "txtM1Y", "txtM2X", "txtM2Y"})
            texts.append(bench.text(box));
        for (const char *label : {"lblStart", "lblCentro", "lblStop"})
            texts.append(bench.label(label));
    }
    bool operator==(const Shown &) const = default;
};

QString lastLogLine(const Bench &bench)
{
    const auto *log = bench.find<QListWidget>("lstLOG");
    return log->count() == 0 ? QString() : log->item(log->count() - 1)->text();
}

QByteArray crossed(QByteArray text, const QByteArray &from, const QByteArray &to)
{
    return text.replace(from, to);
}

QByteArray utf16(const QByteArray &text)
{
    QByteArray wide("\xFF\xFE", 2);
    for (const char c : text)
        wide.append(c).append('\0');
    return wide;
}

// Makes a folder read-only for this process during its lifetime, even if the tests run as root.
class ReadOnlyFolder
{
public:
    explicit ReadOnlyFolder(const QString &path)
        : m_path(path.toLocal8Bit())
    {
        chmod(m_path.constData(), 0555);
        if (geteuid() == 0)
            m_changed = seteuid(kNobody) == 0;
    }
    ~ReadOnlyFolder()
    {
        if (m_changed && seteuid(0) != 0)
            qFatal("cannot become root again");
        chmod(m_path.constData(), 0755);
    }
    bool holds() const { return access(m_path.constData(), F_OK) == 0 && geteuid() != 0; }

private:
    QByteArray m_path;
    bool m_changed = false;
};

// Creates an object of this kind; returns false if only root is allowed to.
bool makeThing(const QByteArray &kind, const QString &path)
{
    const QByteArray name = path.toLocal8Bit();
    if (kind == "pipe")
        return mkfifo(name.constData(), 0600) == 0;
    if (kind == "folder")
        return QDir().mkdir(path);
    if (kind == "device")
        return mknod(name.constData(), S_IFCHR | 0600, makedev(1, 3)) == 0;
    if (kind == "socket")
        return mknod(name.constData(), S_IFSOCK | 0600, 0) == 0;
    if (kind == "link to a device")
        return QFile::link(test::nullDevice(QFileInfo(path).path()), path);
    const QString target = path + QStringLiteral(".pipe");
    return makeThing("pipe", target) && QFile::link(target, path);
}

} // namespace

class TestSweepFileFaults : public QObject
{
    Q_OBJECT

private:
    test::FakeServerControl m_server;

    void exportFails(Bench &bench, const QByteArray &before, const QString &path) const;

private slots:
    void brokenFilesEndSilently_data();
    void brokenFilesEndSilently();
    void oddFilesAreRead_data();
    void oddFilesAreRead();
    void aHundredMegabytesOnOneLine_data();
    void aHundredMegabytesOnOneLine();
    void aPipeIsNotWaitedFor();
    void whatIsNoFileIsNotReplaced_data();
    void whatIsNoFileIsNotReplaced();
    void aLinkToAFileIsFollowed();
    void aFullDisk();
    void aReadOnlyFolder();
    void aVanishedFolder();
    void aPictureOnAFullDisk();
};

void TestSweepFileFaults::brokenFilesEndSilently_data()
{
    QTest::addColumn<QByteArray>("content");
    const QByteArray good = wholeFile(rowsFromTo(1, 400));
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("header only") << wholeFile({});
    QTest::newRow("one line without an end") << QByteArray("1,2000000,5,12");
    QTest::newRow("too few lines") << wholeFile(rowsFromTo(1, 399));
    QByteArray many = wholeFile({});
    for (int i = 0; i < 10000; ++i)
        many += QByteArray::number(1 + i % 399) + ",2000000,5,12\r\n";
    QTest::newRow("10,000 lines without row 400") << many;
    QTest::newRow("row -1") << wholeFile({-1, 400});
    QTest::newRow("row 401") << wholeFile({401});
    QTest::newRow("row 32768") << wholeFile({32768});
    QTest::newRow("row 65536") << wholeFile({65536});
    QTest::newRow("row 65937, which is 401 in 16 bits") << wholeFile({65937});
    QTest::newRow("no number") << wholeFile({1}) + "2,x,3,4\r\n";
    QTest::newRow("an empty field") << wholeFile({1}) + "2,,3,4\r\n";
    QTest::newRow("three fields") << wholeFile({1}) + "2,2000000,3\r\n400,2000000,5\r\n";
    QTest::newRow("a number too large") << wholeFile({1}) + "2,1e400,3,4\r\n";
    QTest::newRow("not a number at all") << wholeFile({1}) + "2,nan,3,4\r\n400,inf,3,4\r\n";
    QTest::newRow("a frequency beyond 32 bits") << crossed(good, "1,2001000,1,2\r\n", "1,99999999999,1,2\r\n");
    QTest::newRow("a last frequency beyond 32 bits")
        << crossed(good, "400,2400000,400,976\r\n", "400,1e300,400,976\r\n");
    QTest::newRow("a range beyond 32 bits")
        << crossed(crossed(good, "1,2001000,1,2\r\n", "1,-2000000000,1,2\r\n"), "400,2400000,", "400,2000000000,");
    QTest::newRow("NUL bytes") << QByteArray(4096, '\0');
    QTest::newRow("NUL in a number") << wholeFile({1}) + QByteArrayLiteral("2,20\0000,3,4\r\n");
    QTest::newRow("Latin-1") << QByteArray("\"\xE9\",\"\xE8\",c,d\r\n\xB5,1,2,3\r\n");
    QTest::newRow("UTF-8 digits") << wholeFile({1}) + "2,\u0662\u0660,3,4\r\n";
    QTest::newRow("UTF-16") << utf16(good);
    QTest::newRow("a quote that never closes") << wholeFile({1}) + "2,\"2000000,3,4\r\n" + good;
    QTest::newRow("only quotes") << QByteArray(100000, '"');
    QTest::newRow("only commas") << QByteArray(100000, ',');
    QTest::newRow("only line ends") << QByteArray(100000, '\n');
}

void TestSweepFileFaults::brokenFilesEndSilently()
{
    QFETCH(QByteArray, content);
    for (const QLocale &locale : {QLocale::c(), QLocale(QLocale::Italian, QLocale::Italy)}) {
        QLocale::setDefault(locale);
        Bench bench;
        const Shown before(bench);
        const QString header = bench.table()->text(0, 0);
        const QSignalSpy changed(bench.table(), &SweepTable::dataChanged);
        bench.writeFile(content);
        // If the whole file was read, the program may still ask about the calibration.
        bench.desktop.answers.enqueue(kBoxCancel);
        bench.trigger("mnuOpenCSV");
        QVERIFY(Shown(bench) == before);
        QCOMPARE(bench.table()->text(0, 0), header);
        // The data read before the error is shown.
        QVERIFY(!changed.isEmpty());
        QVERIFY2(lastLogLine(bench).startsWith(QStringLiteral("Import: ")), qPrintable(lastLogLine(bench)));
        for (const auto &box : bench.desktop.boxes)
            QCOMPARE(box.title, bench.desktop.fileChoice);
    }
    QLocale::setDefault(QLocale::c());
}

void TestSweepFileFaults::oddFilesAreRead_data()
{
    QTest::addColumn<QByteArray>("content");
    const QByteArray good = wholeFile(rowsFromTo(1, 400));
    QTest::newRow("only LF") << crossed(good, "\r\n", "\n");
    QTest::newRow("only CR") << crossed(good, "\r\n", "\r");
    QTest::newRow("no line end at the end") << good.chopped(2);
    QTest::newRow("blanks around the fields") << crossed(good, ",", " ,\t");
    QTest::newRow("numbers in quotes") << crossed(good, "7,2007000,", "\"7\",\"2007000\",");
    QTest::newRow("with a byte order mark") << QByteArray("\xEF\xBB\xBF") + good;
    QTest::newRow("UTF-8 in the header") << crossed(good, "Frequency", "Fréquence µ");
    QTest::newRow("Latin-1 in the header") << crossed(good, "Frequency", "Fr\xE9quence");
    QTest::newRow("an unbalanced quote after a field") << crossed(good, "\"Frequency\"", "\"Frequency\"x\"");
    QTest::newRow("more after row 400") << good + good + QByteArray(1000, '\0');
    QByteArray many = wholeFile({});
    for (int i = 0; i < 9600; ++i)
        many += QByteArray::number(1 + i % 399) + ",1,1,1\r\n";
    QTest::newRow("10,000 lines") << many + good.mid(wholeFile({}).size());
}

void TestSweepFileFaults::oddFilesAreRead()
{
    QFETCH(QByteArray, content);
    Bench bench;
    bench.writeFile(content);
    bench.trigger("mnuOpenCSV");
    QVERIFY2(bench.desktop.boxes.isEmpty(), qPrintable(bench.desktop.lastText()));
    for (int row = 1; row <= 400; ++row) {
        QCOMPARE(bench.table()->text(row, 2), QString::number(row));
        QCOMPARE(bench.table()->text(row, 0), test::shownHertz(2000000 + row * 1000));
    }
    QCOMPARE(bench.configuration.startFreq, 2001000);
    QCOMPARE(bench.configuration.stopFreq, 2400000);
}

void TestSweepFileFaults::aHundredMegabytesOnOneLine_data()
{
    QTest::addColumn<QByteArray>("start");
    QTest::addColumn<QByteArray>("piece"); // repeated
    QTest::newRow("digits") << QByteArray() << QByteArray("7");
    QTest::newRow("fields") << QByteArray() << QByteArray("1,2,3,4,");
    QTest::newRow("blanks") << QByteArray() << QByteArray(" ");
    QTest::newRow("commas") << QByteArray() << QByteArray(",");
    QTest::newRow("in quotes") << QByteArray("\"") << QByteArray("7");
    QTest::newRow("after a quote") << QByteArray("\"a\"") << QByteArray("7");
    QTest::newRow("NUL bytes") << QByteArray() << QByteArray(1, '\0');
}

void TestSweepFileFaults::aHundredMegabytesOnOneLine()
{
    QFETCH(QByteArray, start);
    QFETCH(QByteArray, piece);
    Bench bench;
    {
        QFile file(bench.desktop.fileChoice);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(start);
        const QByteArray block = piece.repeated(static_cast<qsizetype>(1'000'000 / piece.size()));
        while (file.size() < kHundredMegabytes)
            QCOMPARE(file.write(block), block.size());
    }
    const Shown before(bench);
    const qint64 highest = test::memoryKilobytes(getpid(), "VmHWM");
    bench.trigger("mnuOpenCSV");
    const qint64 growth = test::memoryKilobytes(getpid(), "VmHWM") - highest;
    QVERIFY(highest > 0);
    QVERIFY2(growth < 4000, qPrintable(QString::number(growth) + QStringLiteral(" kB")));
    QVERIFY(Shown(bench) == before);
    QVERIFY(bench.desktop.boxes.isEmpty());
    QVERIFY(lastLogLine(bench).startsWith(QStringLiteral("Import: ")));
}

void TestSweepFileFaults::aPipeIsNotWaitedFor()
{
    Bench bench;
    QCOMPARE(mkfifo(bench.desktop.fileChoice.toLocal8Bit().constData(), 0600), 0);
    const Shown before(bench);
    bench.trigger("mnuOpenCSV");
    QVERIFY(Shown(bench) == before);
    QVERIFY(lastLogLine(bench).startsWith(QStringLiteral("Import: ")));
    bench.desktop.fileChoice = bench.folder.path();
    bench.trigger("mnuOpenCSV");
    QVERIFY(Shown(bench) == before);
}

// The old file is unchanged, no other file is left beside it, no box was shown, and the log contains the reason.
void TestSweepFileFaults::exportFails(Bench &bench, const QByteArray &before, const QString &path) const
{
    QCOMPARE(bench.file(), before);
    const QDir folder = QFileInfo(path).dir();
    QCOMPARE(folder.exists() ? folder.entryList(QDir::Files | QDir::Hidden) : QStringList(QStringLiteral("sweep.csv")),
             QStringList(QStringLiteral("sweep.csv")));
    QVERIFY2(bench.desktop.boxes.isEmpty(), qPrintable(bench.desktop.lastText()));
    QCOMPARE(bench.desktop.beeps, 0);
    QVERIFY2(lastLogLine(bench).startsWith(QStringLiteral("Export: ")), qPrintable(lastLogLine(bench)));
    QVERIFY2(lastLogLine(bench).contains(path), qPrintable(lastLogLine(bench)));
}

void TestSweepFileFaults::whatIsNoFileIsNotReplaced_data()
{
    QTest::addColumn<QByteArray>("kind");
    for (const char *kind : {"pipe", "folder", "link to a device", "link to a pipe", "socket"})
        QTest::newRow(kind) << QByteArray(kind);
    // Only if a device can be created; otherwise the "link to a device" row uses one of the system's devices.
    const QTemporaryDir folder;
    if (test::nullDevice(folder.path()).startsWith(folder.path()))
        QTest::newRow("device") << QByteArray("device");
}

void TestSweepFileFaults::whatIsNoFileIsNotReplaced()
{
    QFETCH(QByteArray, kind);
    const QTemporaryDir folder;
    const auto modeOf = [](const QString &path, bool follow) {
        struct stat state = {};
        const QByteArray name = path.toLocal8Bit();
        return (follow ? stat(name.constData(), &state) : lstat(name.constData(), &state)) == 0 ? state.st_mode : 0U;
    };
    const QList<std::pair<const char *, const char *>> writers{{"mnuSaveCSV", "sweep.csv"},
                                                               {"mnuSavePicture", "sweep.png"},
                                                               {"mnuSavePicture", "sweep.svg"},
                                                               {"mnuSaveLog", "log.txt"}};
    for (const auto &[action, name] : writers) {
        Bench bench;
        const QString path = folder.filePath(QString::fromLatin1(name));
        QVERIFY(makeThing(kind, path));
        const mode_t before = modeOf(path, false);
        const mode_t behind = modeOf(path, true);
        const QStringList files = QDir(folder.path()).entryList(QDir::AllEntries | QDir::System | QDir::Hidden);
        bench.desktop.fileChoice = path;
        bench.trigger(action);
        QCOMPARE(modeOf(path, false), before);
        QCOMPARE(modeOf(path, true), behind);
        QCOMPARE(QDir(folder.path()).entryList(QDir::AllEntries | QDir::System | QDir::Hidden), files);
        // An export error appears in the log, the other errors in a box.
        const bool isExport = QByteArray(action) == "mnuSaveCSV";
        QCOMPARE(bench.desktop.boxes.size(), isExport ? 0 : 1);
        const QString told = isExport ? lastLogLine(bench) : bench.desktop.lastText();
        QVERIFY2(told.contains(path + QStringLiteral(": it is not a file")), qPrintable(told));
    }
}

void TestSweepFileFaults::aLinkToAFileIsFollowed()
{
    Bench bench;
    const QTemporaryDir folder;
    const QString target = folder.filePath(QStringLiteral("target.csv"));
    bench.desktop.fileChoice = target;
    bench.trigger("mnuSaveCSV");
    const QByteArray first = bench.file();
    const QString link = folder.filePath(QStringLiteral("sweep.csv"));
    QVERIFY(QFile::link(target, link));
    bench.deliver(2);
    bench.desktop.fileChoice = link;
    bench.trigger("mnuSaveCSV");
    QVERIFY(QFileInfo(link).isSymLink());
    QVERIFY(bench.file() != first);
    QVERIFY(bench.file().startsWith("\"Sample N\""));
    QVERIFY(!QFileInfo(target).isSymLink());
}

void TestSweepFileFaults::aFullDisk()
{
    Bench bench;
    const QTemporaryDir folder;
    bench.desktop.fileChoice = folder.filePath(QStringLiteral("sweep.csv"));
    bench.trigger("mnuSaveCSV");
    const QByteArray before = bench.file();
    QVERIFY(before.size() > 4096);
    bench.deliver(2);
    {
        const test::FullDisk full(4096);
        bench.trigger("mnuSaveCSV");
    }
    exportFails(bench, before, bench.desktop.fileChoice);
    bench.trigger("mnuSaveCSV");
    QVERIFY2(bench.file() != before, "the export fails despite free space");
}

void TestSweepFileFaults::aReadOnlyFolder()
{
    Bench bench;
    const QTemporaryDir folder;
    bench.desktop.fileChoice = folder.filePath(QStringLiteral("sweep.csv"));
    bench.trigger("mnuSaveCSV");
    const QByteArray before = bench.file();
    bench.deliver(2);
    {
        const ReadOnlyFolder readOnly(folder.path());
        QVERIFY(readOnly.holds());
        bench.trigger("mnuSaveCSV");
    }
    exportFails(bench, before, bench.desktop.fileChoice);
}

void TestSweepFileFaults::aVanishedFolder()
{
    Bench bench;
    QTemporaryDir folder;
    bench.desktop.fileChoice = folder.filePath(QStringLiteral("sweep.csv"));
    bench.trigger("mnuSaveCSV");
    QVERIFY(folder.remove());
    bench.trigger("mnuSaveCSV");
    exportFails(bench, "(no file)", bench.desktop.fileChoice);
    // The dialog still suggests the missing folder, and then shows another one.
    QCOMPARE(bench.desktop.suggestions.last(), folder.path());
}

void TestSweepFileFaults::aPictureOnAFullDisk()
{
    Bench bench;
    bench.desktop.fileChoice = bench.folder.path() + QStringLiteral("/sweep.svg");
    bench.trigger("mnuSavePicture");
    const QByteArray before = bench.file();
    QVERIFY(before.size() > 4096);
    QSignalSpy drawn(&bench.find<SweepGraph>("picSweep")->redraws(), &RedrawTimer::fired);
    bench.deliver(2);
    QVERIFY(drawn.wait());
    {
        const test::FullDisk full(4096);
        bench.trigger("mnuSavePicture");
    }
    QCOMPARE(bench.file(), before);
    QCOMPARE(bench.desktop.boxes.size(), 1);
    QVERIFY(bench.desktop.lastText().contains(QStringLiteral("sweep.svg")));
}

QTEST_MAIN(TestSweepFileFaults)
#include "test_sweep_file_faults.moc"
