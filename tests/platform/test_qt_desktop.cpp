// SPDX-License-Identifier: MIT
#include "platform/qt_desktop.h"

#include <QAbstractPrintDialog>
#include <QApplication>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QLineEdit>
#include <QPrinter>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <functional>

using namespace calvorn;

namespace {

// Answers the next dialog of this type as soon as it opens.
template <typename Dialog>
void answer(const std::function<void(Dialog &)> &how)
{
    auto *watch = new QTimer(qApp);
    QObject::connect(watch, &QTimer::timeout, watch, [watch, how] {
        auto *dialog = qobject_cast<Dialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        watch->deleteLater();
        how(*dialog);
    });
    watch->start(20);
}

void typeName(QFileDialog &dialog, const QString &name)
{
    auto *box = dialog.findChild<QLineEdit *>();
    box->setText(name);
    QTest::keyClick(box, Qt::Key_Return);
}

} // namespace

class TestQtDesktop : public QObject
{
    Q_OBJECT

private:
    QtDesktop m_desktop;
    QTemporaryDir m_folder;
    const QString m_filters = QStringLiteral("PNG picture (*.png);;SVG drawing (*.svg)");

    QString inFolder(const char *name) const { return m_folder.filePath(QString::fromLatin1(name)); }

private slots:
    void initTestCase()
    {
        // The test cannot answer native dialogs.
        QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    }

    void sleepingBlocksWithoutWindowMessages()
    {
        QtDesktop desktop;
        bool delivered = false;
        QTimer::singleShot(0, qApp, [&] { delivered = true; });
        QElapsedTimer clock;
        clock.start();
        desktop.sleep(100);
        QVERIFY(clock.elapsed() >= 100);
        QVERIFY(!delivered);
        QTRY_VERIFY(delivered);
    }

    void aNewNameGetsTheExtensionOfTheFilter()
    {
        answer<QFileDialog>([](QFileDialog &dialog) { typeName(dialog, QStringLiteral("curve")); });
        QCOMPARE(m_desktop.chooseFileToSave(m_filters, m_folder.path()), inFolder("curve.png"));
        answer<QFileDialog>([this](QFileDialog &dialog) {
            dialog.selectNameFilter(m_filters.section(QStringLiteral(";;"), 1));
            emit dialog.filterSelected(dialog.selectedNameFilter());
            typeName(dialog, QStringLiteral("curve"));
        });
        QCOMPARE(m_desktop.chooseFileToSave(m_filters, m_folder.path()), inFolder("curve.svg"));
    }

    void aNameWithAnExtensionKeepsIt()
    {
        answer<QFileDialog>([](QFileDialog &dialog) { typeName(dialog, QStringLiteral("curve.svg")); });
        QCOMPARE(m_desktop.chooseFileToSave(m_filters, m_folder.path()), inFolder("curve.svg"));
    }

    void aSweepFileIsNamedAsItWasTyped()
    {
        answer<QFileDialog>([](QFileDialog &dialog) { typeName(dialog, QStringLiteral("curve")); });
        QCOMPARE(m_desktop.chooseFileToSave(QStringLiteral("Sweep files (*.csv)"), m_folder.path()), inFolder("curve"));
    }

    void theLastFileIsSuggested()
    {
        QString suggested;
        answer<QFileDialog>([&suggested](QFileDialog &dialog) {
            suggested = dialog.findChild<QLineEdit *>()->text();
            dialog.reject();
        });
        QCOMPARE(m_desktop.chooseFileToSave(m_filters, inFolder("before.png")), QString());
        QCOMPARE(suggested, QStringLiteral("before.png"));
    }

    void aRefusedPrintDialogChoosesNothing()
    {
        QPrinter printer;
        answer<QAbstractPrintDialog>([](QAbstractPrintDialog &dialog) { dialog.reject(); });
        QVERIFY(!m_desktop.choosePrinter(printer));
    }
};

QTEST_MAIN(TestQtDesktop)
#include "test_qt_desktop.moc"
