// SPDX-License-Identifier: MIT
#include "platform/qt_desktop.h"

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QRegularExpression>
#include <QThread>
#include <QTimer>

namespace calvorn {

namespace {

QMessageBox::Icon toQt(BoxIcon icon)
{
    switch (icon) {
    case BoxIcon::Information:
        return QMessageBox::Information;
    case BoxIcon::Warning:
        return QMessageBox::Warning;
    case BoxIcon::Critical:
        return QMessageBox::Critical;
    case BoxIcon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

// Returns the parent for dialogs: the active window or, if that is an auxiliary window such as the manual, its parent
// window.
QWidget *ownerOfDialogs()
{
    QWidget *window = QApplication::activeWindow();
    while (window && !window->isModal() && window->parentWidget())
        window = window->parentWidget()->window();
    return window;
}

// Under Wayland, Qt proposes a folder without a file name for a PDF file.
void proposeFileName(const QPrintDialog &dialog, const QPrinter &printer)
{
    auto *path = dialog.findChild<QLineEdit *>(QStringLiteral("filename"));
    if (path && path->text().endsWith(u'/'))
        path->setText(path->text() + printer.docName() + QStringLiteral(".pdf"));
}

} // namespace

QtDesktop::QtDesktop()
{
    m_clock.start();
}

std::int16_t QtDesktop::messageBox(BoxIcon icon, BoxButtons buttons, const QString &text, const QString &title)
{
    QMessageBox box(ownerOfDialogs());
    box.setObjectName(QStringLiteral("messageBox"));
    box.setIcon(toQt(icon));
    box.setWindowTitle(title);
    box.setTextFormat(Qt::PlainText);
    // The messages use single carriage returns as line separators.
    box.setText(QString(text).replace(u'\r', u'\n'));
    box.setStandardButtons(buttons == BoxButtons::Ok ? QMessageBox::Ok : QMessageBox::Ok | QMessageBox::Cancel);
    box.setDefaultButton(QMessageBox::Ok);
    return box.exec() == QMessageBox::Ok || buttons == BoxButtons::Ok ? kBoxOk : kBoxCancel;
}

QString QtDesktop::chooseFileToOpen(const QString &filter, const QString &suggested)
{
    return QFileDialog::getOpenFileName(ownerOfDialogs(), QString(), suggested, filter);
}

QString QtDesktop::chooseFileToSave(const QString &filter, const QString &suggested)
{
    const QStringList filters = filter.split(QStringLiteral(";;"));
    if (filters.size() == 1)
        return QFileDialog::getSaveFileName(ownerOfDialogs(), QString(), suggested, filter);
    QFileDialog dialog(ownerOfDialogs(), QString(), suggested);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilters(filters);
    const auto follow = [&dialog](const QString &chosen) {
        static const QRegularExpression extension(QStringLiteral("\\*\\.(\\w+)"));
        dialog.setDefaultSuffix(extension.match(chosen).captured(1));
    };
    follow(filters.first());
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, follow);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

bool QtDesktop::choosePrinter(QPrinter &printer)
{
    QPrintDialog dialog(&printer, ownerOfDialogs());
    proposeFileName(dialog, printer);
    return dialog.exec() == QDialog::Accepted;
}

void QtDesktop::beep()
{
    QApplication::beep();
}

std::uint32_t QtDesktop::tickCount()
{
    return static_cast<std::uint32_t>(m_clock.elapsed());
}

void QtDesktop::sleep(int milliseconds)
{
    QThread::msleep(static_cast<unsigned long>(milliseconds));
}

void QtDesktop::pumpMessages(int milliseconds)
{
    // Without the timer, the wait could last forever.
    QTimer wake;
    wake.setSingleShot(true);
    wake.start(milliseconds);
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

} // namespace calvorn
