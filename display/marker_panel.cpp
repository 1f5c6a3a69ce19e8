// SPDX-License-Identifier: MIT
#include "display/marker_panel.h"

#include "core/checked_arithmetic.h"
#include "core/number_text.h"
#include "core/scale_type.h"

#include <QApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>

#include <algorithm>
#include <cmath>
#include <utility>

namespace calvorn {

namespace {

constexpr double kDragDistance = 3.0; // logical pixels
constexpr int kWidest = 760;          // logical pixels

// A position on the left edge belongs to row 1.
int rowAt(double x)
{
    return std::max(1, roundToInteger<std::int32_t>(x));
}

} // namespace

MarkerPanel::MarkerPanel(Configuration &configuration, const SweepTable &table, Markers &markers, SweepGraph &graph,
                         Desktop &desktop, ErrorBoundary &boundary, QWidget *parent)
    : QWidget(parent)
    , m_configuration(configuration)
    , m_table(table)
    , m_markers(markers)
    , m_graph(graph)
    , m_desktop(desktop)
{
    makeBoxes();
    layOut();
    connectBoxes(boundary);
}

EntryBox *MarkerPanel::makeBox(const char *name, const QString &toolTip, const QString &accessibleName)
{
    auto *box = new EntryBox(this);
    box->setObjectName(QString::fromLatin1(name));
    box->setToolTip(toolTip);
    box->setAccessibleName(accessibleName);
    box->setText(QStringLiteral("0"));
    return box;
}

ReadOut *MarkerPanel::makeReadout(const char *name, const QString &toolTip, const QString &accessibleName)
{
    auto *readOut = new ReadOut(this);
    readOut->setObjectName(QString::fromLatin1(name));
    readOut->setToolTip(toolTip);
    readOut->setAccessibleName(accessibleName);
    readOut->setText(QStringLiteral("0"));
    return readOut;
}

void MarkerPanel::makeBoxes()
{
    m_m1x = makeBox("txtM1X", tr("Enter freq in Hz or ClickLeft the graph"), tr("Frequency of M1 in Hz"));
    m_m2x = makeBox("txtM2X", tr("Enter freq in Hz or ClickRight the graph"), tr("Frequency of M2 in Hz"));
    m_m3y = makeBox("txtM3Y", tr("Enter volt/dB or SHIFT+ ClickLeft the graph"), tr("Amplitude of M3"));
    m_m4y = makeBox("txtM4Y", tr("Enter volt/dB or SHIFT ClickRight the graph"), tr("Amplitude of M4"));
    m_m1y = makeReadout("txtM1Y", tr("Amplitude of the curve at M1"), tr("Amplitude at M1"));
    m_m2y = makeReadout("txtM2Y", tr("Amplitude of the curve at M2"), tr("Amplitude at M2"));
    m_m2m1 = makeReadout("txtM2M1", tr("Distance of M1 and M2 in Hz"), tr("M2 - M1 in Hz"));
    m_m4m3 = makeReadout("txtM4M3", tr("Difference of M4 and M3"), tr("M4 - M3"));
    m_x = makeReadout("txtX", tr("Frequency under the mouse in Hz"), tr("Frequency under the mouse"));
    m_y = makeReadout("txtY", tr("Amplitude under the mouse"), tr("Amplitude under the mouse"));
    clearCursorReadout();
    const auto makeButton = [this](const char *name, const QString &text, const QString &toolTip) {
        auto *button = new QPushButton(text, this);
        button->setObjectName(QString::fromLatin1(name));
        button->setToolTip(toolTip);
        button->setAutoDefault(false);
        return button;
    };
    m_copyM1 = makeButton("cmdCopyM1", tr("M1 -> Start"), tr("Sweep from the frequency of M1"));
    m_copyM2 = makeButton("cmdCopyM2", tr("M2 -> Stop"), tr("Sweep up to the frequency of M2"));
    m_unit = new QLabel(tr("Volt"), this);
    m_unit->setObjectName(QStringLiteral("Label15"));
    m_unit->setToolTip(tr("Unit of the amplitudes"));
    m_unit->setAccessibleName(tr("Unit of the amplitudes"));
}

// Three rows: frequency markers on the left, amplitude markers in the middle, the cursor on the right.
void MarkerPanel::layOut()
{
    // Keep the boxes together in a wide window.
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    auto *inside = new QWidget(this);
    row->addWidget(inside, 1);
    row->addStretch();
    auto *grid = new QGridLayout(inside);
    grid->setContentsMargins(6, 2, 6, 2);
    grid->setHorizontalSpacing(4);
    grid->setVerticalSpacing(2);
    const auto caption = [this](const QString &text, const QString &name) {
        auto *label = new QLabel(text, this);
        label->setObjectName(name);
        return label;
    };
    const auto centred = Qt::AlignHCenter | Qt::AlignVCenter;
    grid->addWidget(caption(tr("Hz"), QStringLiteral("lblHertz")), 0, 1, centred);
    grid->addWidget(m_unit, 0, 2, centred);
    addPair(grid, 1, 0, tr("M1"), m_m1x, m_m1y);
    addPair(grid, 2, 0, tr("M2"), m_m2x, m_m2y);
    addPair(grid, 3, 0, tr("M2 - M1"), m_m2m1, nullptr);
    addPair(grid, 1, 4, tr("M3"), nullptr, m_m3y);
    addPair(grid, 2, 4, tr("M4"), nullptr, m_m4y);
    addPair(grid, 3, 4, tr("M4 - M3"), nullptr, m_m4m3);
    addPair(grid, 1, 8, tr("Cursor"), m_x, nullptr);
    addPair(grid, 2, 8, QString(), m_y, nullptr);
    auto *copies = new QHBoxLayout;
    copies->setSpacing(4);
    copies->addWidget(m_copyM1);
    copies->addWidget(m_copyM2);
    grid->addLayout(copies, 3, 7, 1, 3);
    grid->setColumnMinimumWidth(3, 10);
    grid->setColumnMinimumWidth(7, 10);
    for (const int column : {1, 9})
        grid->setColumnStretch(column, 3);
    for (const int column : {2, 6})
        grid->setColumnStretch(column, 2);
    grid->setRowStretch(4, 1);
    inside->setMaximumWidth(std::max(kWidest, inside->minimumSizeHint().width()));
}

void MarkerPanel::addPair(QGridLayout *grid, int row, int column, const QString &caption, QWidget *first,
                          QWidget *second)
{
    auto *label = new QLabel(caption, this);
    label->setBuddy(first ? first : second);
    grid->addWidget(label, row, column, Qt::AlignRight | Qt::AlignVCenter);
    if (first) {
        first->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("888,888,888")) + 14);
        grid->addWidget(first, row, column + 1);
    }
    if (second) {
        second->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("-888.8")) + 14);
        grid->addWidget(second, row, column + 2);
    }
}

void MarkerPanel::connectBoxes(ErrorBoundary &boundary)
{
    boundary.connect(m_m1x, &EntryBox::gotFocus, this, "txtM1X_GotFocus", [this] { txtM1X_GotFocus(); });
    boundary.connect(m_m2x, &EntryBox::gotFocus, this, "txtM2X_GotFocus", [this] { txtM2X_GotFocus(); });
    boundary.connect(m_m1x, &EntryBox::lostFocus, this, "txtM1X_LostFocus", [this] { txtM1X_LostFocus(); });
    boundary.connect(m_m2x, &EntryBox::lostFocus, this, "txtM2X_LostFocus", [this] { txtM2X_LostFocus(); });
    boundary.connect(m_m3y, &EntryBox::lostFocus, this, "txtM3Y_LostFocus", [this] { txtM3Y_LostFocus(); });
    boundary.connect(m_m4y, &EntryBox::lostFocus, this, "txtM4Y_LostFocus", [this] { txtM4Y_LostFocus(); });
    boundary.connect(&m_graph.redraws(), &RedrawTimer::fired, this, "timerGrafico_Timer",
                     [this] { aggiornaAmpiezzaX(); });
    boundary.connect(&m_graph, &SweepGraph::mousePressed, this, "picSweep_MouseDown",
                     [this](Qt::MouseButton button, Qt::KeyboardModifiers modifiers, double x, double y) {
                         picSweep_MouseDown(button, modifiers, x, y);
                     });
    boundary.connect(&m_graph, &SweepGraph::mouseReleased, this, "picSweep_MouseUp",
                     [this](Qt::MouseButton button, Qt::KeyboardModifiers modifiers, double x, double y) {
                         picSweep_MouseUp(button, modifiers, x, y);
                     });
    boundary.connect(m_copyM1, &QPushButton::clicked, this, "cmdCopyM1_Click", [this] { cmdCopyM1_Click(); });
    boundary.connect(m_copyM2, &QPushButton::clicked, this, "cmdCopyM2_Click", [this] { cmdCopyM2_Click(); });
    boundary.connect(&m_graph, &SweepGraph::mouseMoved, this, "picSweep_MouseMove",
                     [this](double x, double y) { picSweep_MouseMove(x, y); });
    connect(&m_table, &SweepTable::changed, this, &MarkerPanel::followTable);
}

// Ignores measured sweeps: their frequencies have not changed, and the redraw timer updates their amplitudes.
void MarkerPanel::followTable()
{
    if (m_table.origin() == SweepOrigin::Measured)
        return;
    try {
        aggiornaLblMarkerX();
    } catch (const RuntimeError &) {
        // The frequencies cannot be read or subtracted, so there is no difference to show.
        m_m2m1->clear();
    }
}

EntryBox *MarkerPanel::boxOf(GraphItem marker) const
{
    switch (marker) {
    case GraphItem::M1:
        return m_m1x;
    case GraphItem::M2:
        return m_m2x;
    case GraphItem::M3:
        return m_m3y;
    default:
        return m_m4y;
    }
}

bool MarkerPanel::isLinear() const
{
    return isLinearScale(m_configuration.scaleType);
}

const QString &MarkerPanel::cellUnder(GraphItem item, SweepTable::Column column) const
{
    return m_table.text(m_markers.row(item), column);
}

bool MarkerPanel::restoreFrequency(GraphItem marker)
{
    EntryBox *box = boxOf(marker);
    if (rowOfEntry(m_table, box->text()))
        return false;
    box->setText(cellUnder(marker, SweepTable::FrequencyColumn));
    return true;
}

void MarkerPanel::aggiornaPosMarkerX(GraphItem marker)
{
    restoreFrequency(marker);
    m_markers.move(marker, rowOfFrequency(m_table, NumberText().toInt32(boxOf(marker)->text())));
}

void MarkerPanel::aggiornaLblMarkerX()
{
    if (!m_m1x->isBeingTyped())
        m_m1x->setText(cellUnder(GraphItem::M1, SweepTable::FrequencyColumn));
    if (!m_m2x->isBeingTyped())
        m_m2x->setText(cellUnder(GraphItem::M2, SweepTable::FrequencyColumn));
    aggiornaAmpiezzaX();
    showCursor();
    m_m2m1->setText(frequencyDifference(m_table, m_markers.set()));
}

bool MarkerPanel::restoreAmplitude(GraphItem marker)
{
    if (amplitudeOfEntry(boxOf(marker)->text()))
        return false;
    boxOf(marker)->setText(markerText(isLinear(), m_markers.position(marker)));
    return true;
}

double MarkerPanel::amplitude(GraphItem marker)
{
    restoreAmplitude(marker);
    return amplitudeOfEntry(boxOf(marker)->text()).value_or(0.0);
}

void MarkerPanel::enterFrequencyOf(GraphItem marker, double hertz)
{
    const Sweep::Column &rows = m_table.numbers(SweepTable::FrequencyColumn);
    const auto nearest =
        std::ranges::min_element(rows, {}, [hertz](double frequency) { return std::abs(frequency - hertz); });
    // Move by row instead of setting the box, which selects the first row not below its frequency: in a falling sweep,
    // that is a different row.
    m_markers.move(marker, static_cast<double>(nearest - rows.begin() + 1));
    aggiornaLblMarkerX();
}

void MarkerPanel::aggiornaPosMarkerY(GraphItem marker)
{
    m_markers.move(marker, amplitude(marker));
}

void MarkerPanel::aggiornaLblMarkerY()
{
    const auto shown = [this](GraphItem marker) { return shownAmplitude(isLinear(), m_markers.position(marker)); };
    showAmplitudes(isLinear(), shown(GraphItem::M3), shown(GraphItem::M4));
}

void MarkerPanel::showAmplitudes(bool linear, double m3, double m4)
{
    const AmplitudeTexts texts = amplitudeTexts(linear, m3, m4);
    m_m4m3->setText(texts.m4m3);
    m_m3y->setText(texts.m3y);
    m_m4y->setText(texts.m4y);
}

void MarkerPanel::enterFrequency(EntryBox *box)
{
    const NumberText numbers;
    if (numbers.isNumeric(box->text()))
        box->setText(numbers.generalNumber(box->text()));
}

void MarkerPanel::leaveFrequency(GraphItem marker)
{
    if (restoreFrequency(marker))
        m_desktop.beep();
    // Entering and leaving a box unchanged must not move its marker, even if its text would select a different row.
    if (NumberText().toDouble(boxOf(marker)->text()) != frequencyUnder(marker))
        aggiornaPosMarkerX(marker);
    aggiornaLblMarkerX();
}

void MarkerPanel::leaveAmplitude(GraphItem marker)
{
    if (restoreAmplitude(marker))
        m_desktop.beep();
    boxOf(marker)->setText(markerText(isLinear(), amplitude(marker)));
    aggiornaPosMarkerY(marker);
    aggiornaLblMarkerY();
}

void MarkerPanel::aggiornaAmpiezzaX()
{
    m_m1y->setText(cellUnder(GraphItem::M1, SweepTable::AmplitudeColumn));
    m_m2y->setText(cellUnder(GraphItem::M2, SweepTable::AmplitudeColumn));
}

// A grabbed line follows the mouse; releasing the button places it, as a click would.
void MarkerPanel::picSweep_MouseDown(Qt::MouseButton button, Qt::KeyboardModifiers modifiers, double x, double y)
{
    m_grabbed.reset();
    m_dragging = m_dragCancelled = false;
    m_grabbedAt = {x, y};
    if (button == Qt::LeftButton && !modifiers.testFlag(Qt::ShiftModifier))
        m_grabbed = m_graph.markerNear(x, y);
    if (!m_grabbed)
        return;
    const GraphLine line = m_graph.line(*m_grabbed);
    m_grabbedFrom = isVertical(*m_grabbed) ? line.x1 : line.y1;
    qApp->installEventFilter(this);
}

bool MarkerPanel::eventFilter(QObject *watched, QEvent *event)
{
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if (!isKey || static_cast<QKeyEvent *>(event)->key() != Qt::Key_Escape || !m_grabbed || !m_dragging)
        return QWidget::eventFilter(watched, event);
    cancelDrag();
    return true;
}

void MarkerPanel::cancelDrag()
{
    const GraphItem marker = *std::exchange(m_grabbed, std::nullopt);
    m_dragCancelled = true;
    putMarker(marker, m_grabbedFrom, m_grabbedFrom);
}

void MarkerPanel::picSweep_MouseUp(Qt::MouseButton button, Qt::KeyboardModifiers modifiers, double x, double y)
{
    const std::optional<GraphItem> grabbed = std::exchange(m_grabbed, std::nullopt);
    qApp->removeEventFilter(this);
    if (std::exchange(m_dragCancelled, false))
        return;
    if (button != Qt::LeftButton && button != Qt::RightButton)
        return;
    const bool left = button == Qt::LeftButton;
    if (grabbed && m_dragging && left) {
        putMarker(*grabbed, x, y);
    } else if (!modifiers.testFlag(Qt::ShiftModifier)) {
        putMarker(left ? GraphItem::M1 : GraphItem::M2, x, y);
    } else {
        // The user aims with the horizontal line of the floating cross, if it is shown.
        const double height = m_configuration.cursorMode != 0 ? m_graph.line(GraphItem::CursorH).y1 : y;
        putMarker(left ? GraphItem::M3 : GraphItem::M4, x, height);
    }
}

void MarkerPanel::putMarker(GraphItem marker, double x, double y)
{
    if (marker == GraphItem::M1 || marker == GraphItem::M2) {
        m_markers.move(marker, rowAt(x));
        aggiornaLblMarkerX();
        return;
    }
    // Place the line at the value that its box shows, rounded to the box's precision.
    m_graph.moveLine(marker, insideAtPrecisionOfBox(y));
    aggiornaLblMarkerY();
    aggiornaPosMarkerY(marker);
}

// Limits a position inside the plot so that it is still inside when rounded to the precision of its box.
double MarkerPanel::insideAtPrecisionOfBox(double y) const
{
    const GraphCoordinates &coordinates = m_graph.coordinates();
    const auto [low, high] = std::minmax({coordinates.top(), coordinates.bottom()});
    const double unit = isLinear() ? 1.0 : 100.0; // 0.001 V, 0.1 dB
    const double lowest = std::ceil(low / unit) * unit;
    const double highest = std::floor(high / unit) * unit;
    return y < low || y > high || lowest > highest ? y : std::clamp(y, lowest, highest);
}

void MarkerPanel::cmdCopyM1_Click()
{
    m_m1x->commit();
    const NumberText numbers;
    emit startCopied(numbers.toInt32(numbers.generalNumber(m_m1x->text())));
}

void MarkerPanel::cmdCopyM2_Click()
{
    m_m2x->commit();
    const NumberText numbers;
    emit stopCopied(numbers.toInt32(numbers.generalNumber(m_m2x->text())));
}

// The floating cross follows the curve; without it, the read-out shows the mouse position itself.
void MarkerPanel::picSweep_MouseMove(double x, double y)
{
    if (m_grabbed) {
        // A slight movement near a line is still a click.
        m_dragging = m_dragging || m_graph.pixelsBetween(m_grabbedAt, {x, y}) > kDragDistance;
        if (m_dragging)
            putMarker(*m_grabbed, x, y);
    }
    m_cursor = QPointF(x, y);
    if (m_configuration.cursorMode != 0)
        m_markers.move(GraphItem::CursorV, rowAt(x));
    showCursor();
}

// Shows the current values of the table cells under the cursor.
void MarkerPanel::showCursor()
{
    const int row = m_cursor ? rowAt(m_cursor->x()) : m_markers.row(GraphItem::CursorV);
    const double cell = m_table.numbers(SweepTable::AmplitudeColumn)[static_cast<std::size_t>(row - 1)];
    const double onCurve = Sweep::isNumber(cell) ? cell : 0.0;
    const bool rides = m_configuration.cursorMode != 0;
    if (rides)
        m_markers.move(GraphItem::CursorH, onCurve);
    if (!m_cursor)
        return;
    const double amplitude = rides ? onCurve : m_graph.coordinates().amplitudeOfY(m_cursor->y());
    m_x->setText(m_table.text(row, SweepTable::FrequencyColumn));
    m_y->setText(markerText(isLinear(), amplitude));
}

void MarkerPanel::clearCursorReadout()
{
    m_cursor.reset();
    m_y->clear();
    m_x->clear();
}

void MarkerPanel::setUnit(const QString &unit)
{
    m_unit->setText(unit);
}

MarkerTexts MarkerPanel::texts() const
{
    return {m_m1x->text(),  m_m1y->text(), m_m2x->text(), m_m2y->text(),
            m_m2m1->text(), m_m3y->text(), m_m4y->text(), m_m4m3->text()};
}

void MarkerPanel::restore(const WindowSettings &settings)
{
    m_m3y->setText(settings.marker3);
    m_m4y->setText(settings.marker4);
    aggiornaPosMarkerY(GraphItem::M3);
    aggiornaPosMarkerY(GraphItem::M4);
    m_m1x->setText(settings.marker1);
    m_m2x->setText(settings.marker2);
    aggiornaPosMarkerX(GraphItem::M1);
    aggiornaPosMarkerX(GraphItem::M2);
}

void MarkerPanel::save(WindowSettings &settings) const
{
    settings.marker1 = m_m1x->text();
    settings.marker2 = m_m2x->text();
    settings.marker3 = m_m3y->text();
    settings.marker4 = m_m4y->text();
}

} // namespace calvorn
