// SPDX-License-Identifier: MIT
#pragma once

#include "controls/frequency_readouts.h"
#include "core/error_boundary.h"
#include "core/messages.h"
#include "display/marker_panel.h"
#include "display/sweep_graph.h"

#include <QAction>
#include <QObject>

class QPrinter;

namespace calvorn {

class SweepPicture;

// The components that supply the contents of a picture.
struct SweepPictureComponents
{
    const Configuration &configuration;
    const SweepGraph &graph;
    const MarkerPanel &markers;
    const FrequencyReadouts &readouts;
};

// The File menu commands that create a picture of the sweep: save, copy and print. A failure is shown in a box and
// leaves an existing file unchanged.
class SweepPictures : public QObject
{
    Q_OBJECT

public:
    SweepPictures(const SweepPictureComponents &components, Messages &messages, ErrorBoundary &boundary,
                  QObject *parent = nullptr);

    // In the order of the menu.
    QList<QAction *> actions() const { return {m_save, m_copy, m_print}; }

    void mnuSavePicture_Click();
    void mnuCopyPicture_Click();
    void mnuPrint_Click();

    // Throws RuntimeError(File) if the picture cannot be written.
    void savePicture(const QString &path) const;
    QByteArray pictureAsPng() const;

    // Ensures that Ctrl+C in the window's lists still copies their text.
    void keepTextCopyIn(const QWidget &window);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QAction *makeAction(const char *name, const QString &caption, const QKeySequence &shortcut, const QString &help);
    SweepPicture picture() const;
    QString sweepName() const;
    void printPdf(const QPrinter &printer);
    [[noreturn]] void refuse(const QString &name, const QString &reason) const;

    SweepPictureComponents m_components;
    Messages &m_messages;
    QAction *m_save;
    QAction *m_copy;
    QAction *m_print;
    QString m_lastFile; // suggested in the next file dialog
};

} // namespace calvorn
