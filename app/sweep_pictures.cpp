// SPDX-License-Identifier: MIT
#include "app/sweep_pictures.h"

#include "core/runtime_error.h"
#include "core/whole_file.h"
#include "display/plot/sweep_picture.h"

#include <QAbstractItemView>
#include <QBuffer>
#include <QClipboard>
#include <QDate>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPrinter>

namespace calvorn {

SweepPictures::SweepPictures(const SweepPictureComponents &components, Messages &messages, ErrorBoundary &boundary,
                             QObject *parent)
    : QObject(parent)
    , m_components(components)
    , m_messages(messages)
    , m_save(makeAction("mnuSavePicture", tr("Save pict&ure…"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S),
                        tr("Save the graph with its read-outs as PNG or SVG")))
    , m_copy(makeAction("mnuCopyPicture", tr("&Copy picture"), QKeySequence::Copy,
                        tr("Copy the graph with its read-outs to the clipboard")))
    , m_print(makeAction("mnuPrint", tr("&Print…"), QKeySequence::Print,
                         tr("Print the graph with its read-outs, or create a PDF file")))
{
    boundary.connect(m_save, &QAction::triggered, this, "mnuSavePicture_Click", [this] { mnuSavePicture_Click(); });
    boundary.connect(m_copy, &QAction::triggered, this, "mnuCopyPicture_Click", [this] { mnuCopyPicture_Click(); });
    boundary.connect(m_print, &QAction::triggered, this, "mnuPrint_Click", [this] { mnuPrint_Click(); });
}

QAction *SweepPictures::makeAction(const char *name, const QString &caption, const QKeySequence &shortcut,
                                   const QString &help)
{
    auto *action = new QAction(caption, this);
    action->setObjectName(QString::fromLatin1(name));
    action->setShortcut(shortcut);
    action->setToolTip(help);
    return action;
}

SweepPicture SweepPictures::picture() const
{
    const FrequencyReadouts &shown = m_components.readouts;
    return {m_components.configuration,
            m_components.graph.model(),
            {shown.startText(), shown.centreText(), shown.stopText(), m_components.markers.texts(),
             QDateTime::currentDateTime()}};
}

// "sweep 2026-11-22 1000000-14965000 Hz"
QString SweepPictures::sweepName() const
{
    const Configuration &c = m_components.configuration;
    return tr("sweep") + QDate::currentDate().toString(QStringLiteral(" yyyy-MM-dd ")) +
           QStringLiteral("%1-%2 Hz").arg(c.startFreq).arg(c.stopFreq);
}

void SweepPictures::mnuSavePicture_Click()
{
    const QString suggested = m_lastFile.isEmpty() ? sweepName() + QStringLiteral(".png") : m_lastFile;
    const QString path =
        m_messages.desktop().chooseFileToSave(tr("PNG picture (*.png);;SVG drawing (*.svg)"), suggested);
    if (path.isEmpty())
        return;
    savePicture(path);
    m_lastFile = path;
}

void SweepPictures::savePicture(const QString &path) const
{
    picture().save(path);
}

QByteArray SweepPictures::pictureAsPng() const
{
    return picture().asPng();
}

void SweepPictures::mnuCopyPicture_Click()
{
    QGuiApplication::clipboard()->setImage(picture().image());
}

void SweepPictures::mnuPrint_Click()
{
    QPrinter printer(QPrinter::HighResolution);
    // The print dialog derives the PDF file name from this.
    printer.setDocName(sweepName());
    printer.setPageOrientation(QPageLayout::Landscape);
    if (!m_messages.desktop().choosePrinter(printer))
        return;
    if (printer.outputFormat() == QPrinter::PdfFormat)
        printPdf(printer);
    else if (!picture().paintPage(printer))
        refuse(printer.printerName(), tr("the printer did not accept the page"));
}

// Renders in memory first, so that the file is replaced as a whole.
void SweepPictures::printPdf(const QPrinter &printer)
{
    QByteArray pdf;
    QBuffer buffer(&pdf);
    buffer.open(QIODevice::WriteOnly);
    if (!picture().paintPdf(buffer, printer.pageLayout()))
        refuse(printer.outputFileName(), tr("the page cannot be laid out"));
    writeWholeFile(printer.outputFileName(), pdf);
}

void SweepPictures::refuse(const QString &name, const QString &reason) const
{
    throw RuntimeError(RuntimeError::Kind::File, name + QStringLiteral(": ") + reason);
}

void SweepPictures::keepTextCopyIn(const QWidget &window)
{
    for (QAbstractItemView *view : window.findChildren<QAbstractItemView *>())
        view->installEventFilter(this);
}

bool SweepPictures::eventFilter(QObject *watched, QEvent *event)
{
    // Accepting the event here sends the key to the view rather than to the menu.
    if (event->type() == QEvent::ShortcutOverride && static_cast<QKeyEvent *>(event)->matches(QKeySequence::Copy))
        event->accept();
    return QObject::eventFilter(watched, event);
}

} // namespace calvorn
