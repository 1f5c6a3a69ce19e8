// SPDX-License-Identifier: MIT
#include "app/frm_sweep.h"

#include "app/axis_menus.h"
#include "app/control_place.h"
#include "app/frm_about.h"
#include "app/frm_preferences.h"
#include "app/help_desk.h"
#include "app/remote_control.h"
#include "display/height_handle.h"
#include "display/span_mouse.h"
#include "instrument/aux_hardware.h"
#include "setup/prepared_settings.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QMenuBar>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>
#include <array>

namespace calvorn {

namespace {

constexpr QSize kStartSize(800, 600); // pixels
constexpr int kTitleBarHeight = 40;   // pixels, added by a window manager
constexpr int kControlColumnWidth = 186;
// The width left beside the graph and the markers on a screen 1024 pixels wide, with the largest common font.
constexpr int kWidestControlColumn = 225;

} // namespace

FrmSweep::FrmSweep(SweepStation &station)
    : m_station(station)
    , m_configuration(station.configuration)
    , m_instrument(station.instrument)
    , m_table(station.instrument.table())
{
    setObjectName(QStringLiteral("frmSweep"));
    m_help = new HelpDesk(station.folders.manualFile(), station.messages, station.boundary, this);
    compose();
    buildMenus();
    connectComponents();
    connectSpans();
    m_remote = std::make_unique<RemoteControl>(
        WindowComponents{m_configuration, m_instrument, m_station.unattended, m_station.markers, m_station.generator,
                         *m_range, *m_controls, *m_scales, *m_graphPanel, *m_markerPanel, m_measure->measurement(),
                         *m_aux1, *m_aux2, *m_files, *m_pictures},
        m_station.log);
    connect(m_remote.get(), &RemoteControl::stateChanged, this, &FrmSweep::showMarks);
}

FrmSweep::~FrmSweep() = default;

void FrmSweep::compose()
{
    auto *central = new QWidget(this);
    auto *columns = new QHBoxLayout(central);
    columns->setContentsMargins(6, 2, 6, 4);
    columns->setSpacing(6);
    auto *left = new QVBoxLayout;
    auto *controls = new QWidget(central);
    auto *right = new QVBoxLayout(controls);
    right->setContentsMargins(0, 0, 0, 0);
    columns->addLayout(left, 1);
    columns->addWidget(controls);
    composeControlColumn(right);
    composeGraphColumn(left);
    setCentralWidget(central);
    m_measure = new MeasureDock(m_configuration, m_table, *m_graphPanel, *m_markerPanel, m_station.desktop,
                                m_station.boundary, this);
    m_measure->setFurtherPage(tr("Level"), [this] { return makeLevelPage(); });
    addDockWidget(Qt::RightDockWidgetArea, m_measure);
    m_controlPlace = std::make_unique<ControlPlace>(*this, *columns, *controls, *m_measure);
    connect(m_controlPlace.get(), &ControlPlace::moved, this, &FrmSweep::fitControlColumn);
}

void FrmSweep::composeControlColumn(QVBoxLayout *column)
{
    m_readouts = new FrequencyReadouts(this);
    m_range = new RangeEntry(m_configuration, m_table, *m_readouts, m_station.messages, m_station.boundary, this);
    m_controls = new SweepControls(m_configuration, m_instrument, m_station.messages, m_station.log, m_station.clock,
                                   m_station.boundary, this);
    auto *exit = new QPushButton(tr("EXIT"), this);
    exit->setObjectName(QStringLiteral("cmdExit"));
    exit->setToolTip(tr("Save the settings and close the program"));
    exit->setMinimumHeight(36);
    m_controls->addButton(exit);
    connect(exit, &QPushButton::clicked, this, &QWidget::close);

    m_testPanel = new TestPanel(m_configuration, m_table, m_station.messages, m_station.log, m_station.boundary, this);
    m_events = new DriverEvents(m_station.messages, m_station.log, m_station.boundary, *m_controls, m_instrument,
                                *m_testPanel, this);

    column->addWidget(m_range);
    column->addWidget(m_controls);
    column->addWidget(m_testPanel, 1);
    column->addStretch();
}

// Makes the column wide enough for its texts in the desktop's font. Hidden widgets are ignored.
void FrmSweep::fitControlColumn()
{
    const std::array<QWidget *, 3> widgets{m_range, m_controls, m_testPanel};
    int width = std::clamp(m_controls->widthOfLines(), kControlColumnWidth, kWidestControlColumn);
    for (const QWidget *widget : widgets)
        if (!widget->isHidden())
            width = std::max(width, widget->minimumSizeHint().width());
    for (QWidget *widget : widgets)
        widget->setFixedWidth(std::max({width, m_leastControlColumn, m_controlPlace->leastWidth()}));
    // Lay out immediately, so that the graph is in place for the first paint event.
    for (const QWidget *parent = m_range->parentWidget(); parent != this; parent = parent->parentWidget())
        if (parent->layout())
            parent->layout()->activate();
}

void FrmSweep::composeGraphColumn(QVBoxLayout *column)
{
    m_graphPanel =
        new GraphPanel(m_configuration, m_table, m_station.markers, m_station.desktop, m_station.boundary, this);
    m_graphPanel->setFooter(m_readouts);
    m_markerPanel = new MarkerPanel(m_configuration, m_table, m_station.markers, m_graphPanel->graph(),
                                    m_station.desktop, m_station.boundary);
    m_tableView = new SweepTableView(m_configuration, m_table);

    const AuxHardware hardware = auxHardwareOf([this] { return m_instrument.driver(); }, m_station.log);
    m_aux1 = new AuxOutput(1, m_configuration.aux1, m_configuration, hardware, m_station.boundary);
    m_aux2 = new AuxOutput(2, m_configuration.aux2, m_configuration, hardware, m_station.boundary);
    m_views = new ViewSwitch(m_station.window, *m_markerPanel, m_tableView, m_aux1, m_aux2, m_station.boundary, this);
    m_views->addBesideButtons(m_range->sampleCountLabel());
    m_files =
        new SweepFiles({m_configuration, m_table, *m_range, *m_readouts}, m_station.messages, m_station.log, this);
    m_pictures = new SweepPictures({m_configuration, m_graphPanel->graph(), *m_markerPanel, *m_readouts},
                                   m_station.messages, m_station.boundary, this);
    m_setUp = new SetUpMenu(
        {m_configuration, m_instrument, *m_events, m_station.messages, m_station.log, m_station.boundary}, this);
    m_scales = new ScaleControl(m_configuration, m_table, *m_graphPanel, *m_markerPanel, m_station.boundary, this);
    composeStatusLine();
    m_spans = new SpanCommands(m_configuration, *m_range, m_station.desktop, m_station.boundary, this);

    column->addWidget(m_graphPanel, 1);
    column->addWidget(m_views);
    const auto *handle = new HeightHandle(*m_graphPanel, *m_views);
    connect(handle, &HeightHandle::heightWanted, m_views, &ViewSwitch::setGivenHeight);
}

QWidget *FrmSweep::makeLevelPage()
{
    m_level = new LevelPage(m_configuration, m_instrument, m_station.generator, m_station.messages, m_station.boundary);
    m_level->restore(m_configuration.iniPath);
    connect(m_controls, &SweepControls::parked, m_level, &LevelPage::generatorParked);
    return m_level;
}

void FrmSweep::composeStatusLine()
{
    m_status = new StatusLine(this);
    m_status->setObjectName(QStringLiteral("lblStatus"));
    m_status->setAccessibleName(tr("Last message"));
    m_views->setBetween(m_status);
    connect(m_events, &DriverEvents::reported, m_status, &StatusLine::showMessage);
    connect(m_files, &SweepFiles::reported, m_status, &StatusLine::showMessage);
    m_boards = new BoardMenus(m_configuration, m_instrument, m_station.boundary, this);
    connect(m_boards, &BoardMenus::reported, m_status, &StatusLine::showMessage);
    connect(&m_table, &SweepTable::changed, this, [this] { showMarks(); });
}

// Shows the remote-control state and the number of samples clamped because they are outside the detector's law.
void FrmSweep::showMarks()
{
    const bool isLinear = lawInForce(m_configuration).kind == DetectorLaw::Kind::Linear;
    const int beyond = isLinear ? 0 : m_table.sweep().samplesBeyondDetector();
    QStringList marks;
    if (m_remote && !m_remote->state().isEmpty())
        marks.append(m_remote->state());
    if (beyond > 0)
        marks.append(tr("%1 of %2 samples are outside the detector's calibrated range").arg(beyond).arg(kSweepPoints));
    m_status->setMark(marks.join(QStringLiteral(" · ")));
}

// Starts remote control if the user has switched it on.
void FrmSweep::startRemoteControl()
{
    const QString refusal = m_remote->follow(RemoteControl::choiceIn(m_configuration.iniPath));
    if (!refusal.isEmpty())
        m_status->showMessage(refusal);
}

void FrmSweep::connectComponents()
{
    connect(&m_instrument.conversion(), &SampleConversion::sampleReceived, m_testPanel, &TestPanel::echoSample);
    connect(&m_instrument.conversion(), &SampleConversion::vectorStored, m_controls, &SweepControls::aggiornaTimer);
    connect(m_range, &RangeEntry::rangeChanged, m_controls, &SweepControls::restartTimerUpdateSweep);
    connect(m_markerPanel, &MarkerPanel::startCopied, m_range, &RangeEntry::setStart);
    connect(m_markerPanel, &MarkerPanel::stopCopied, m_range, &RangeEntry::setStop);
    m_controls->setHooks({[this] { m_range->aggiornaLblFrequenza(); }, [this] { m_markerPanel->aggiornaLblMarkerX(); },
                          [this] {
                              // If no box was changed, keep the samples of the last sweep.
                              if (!m_range->isPlanStale())
                                  return;
                              m_range->aggiornaLblFrequenza();
                              m_markerPanel->aggiornaLblMarkerX();
                          }});
    m_station.boundary.connect(m_testPanel, &TestPanel::forcedStop, m_controls, "cmdSwStop_Click",
                               [this] { m_controls->cmdSwStop_Click(); });
    m_testPanel->setHooks({[this] { m_graphPanel->drawScreen(); }, [this] { m_range->aggiornaLblFrequenza(); },
                           [this] { m_markerPanel->aggiornaLblMarkerX(); },
                           [this] { m_markerPanel->aggiornaLblMarkerY(); }});
    // Commands that change the configuration need an idle generator.
    connect(m_controls, &SweepControls::idleCommandsEnabled, this, [this](bool enabled) {
        m_setUpMenu->menuAction()->setEnabled(enabled);
        // Disable each entry, too: the menu may be open when a client starts a sweep.
        for (QAction *action : m_setUpMenu->actions())
            action->setEnabled(enabled);
        m_files->exportAction()->setEnabled(enabled);
        m_files->importAction()->setEnabled(enabled);
        m_boards->setIdle(enabled);
    });
    connect(m_events, &DriverEvents::cancelled, this, &QWidget::close);
    connect(m_setUp, &SetUpMenu::configured, this, &FrmSweep::endAtOnce);
}

void FrmSweep::connectSpans()
{
    const auto *mouse = new SpanMouse(m_graphPanel->graph());
    m_station.boundary.connect(mouse, &SpanMouse::zoomed, m_spans, "zoomed",
                               [this](double around, int notches) { m_spans->zoom(around, notches); });
    m_station.boundary.connect(mouse, &SpanMouse::spanDragged, m_spans, "spanDragged",
                               [this](double left, double right) { m_spans->take(left, right); });
    new AxisMenus({*m_graphPanel, *m_readouts, *m_scales, *m_spans, *m_markerPanel}, m_station.boundary, this);
}

void FrmSweep::buildMenus()
{
    // The window has no status bar, so menu entries show their help as tool tips.
    const auto addMenu = [this](const QString &title) {
        QMenu *menu = menuBar()->addMenu(title);
        menu->setToolTipsVisible(true);
        return menu;
    };
    QMenu *file = addMenu(tr("&File"));
    file->addActions({m_files->exportAction(), m_files->importAction()});
    file->addSeparator();
    file->addActions(m_pictures->actions());
    m_pictures->keepTextCopyIn(*this);
    file->addSeparator();
    QAction *exit = file->addAction(tr("E&xit"), this, &QWidget::close);
    exit->setObjectName(QStringLiteral("mnuExit"));
    exit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));

    QMenu *view = addMenu(tr("&View"));
    view->addActions(m_views->actions());
    m_boards->addTo(*view);
    view->addSeparator();
    view->addAction(m_measure->action());
    addMenu(tr("S&cale"))->addActions(m_scales->actions());
    QMenu *sweep = addMenu(tr("S&weep"));
    sweep->addAction(m_controls->singleAction());
    sweep->addSeparator();
    sweep->addActions(m_spans->actions());

    m_setUpMenu = addMenu(tr("&SetUp"));
    m_setUpMenu->menuAction()->setObjectName(QStringLiteral("mnuSetUp"));
    m_setUpMenu->addActions(m_setUp->actions());
    m_setUpMenu->addSeparator();
    QAction *preferences = m_setUpMenu->addAction(tr("&Preferences"));
    preferences->setObjectName(QStringLiteral("mnuPreferences"));
    m_station.boundary.connect(preferences, &QAction::triggered, this, "mnuPreferences_Click",
                               [this] { mnuPreferences_Click(); });

    QMenu *help = addMenu(tr("&Help"));
    help->addActions(m_help->actions());
    help->addSeparator();
    QAction *about = help->addAction(tr("&About"));
    about->setObjectName(QStringLiteral("mnuAbout"));
    m_station.boundary.connect(about, &QAction::triggered, this, "mnuAbout_Click", [this] { mnuAbout_Click(); });
}

void FrmSweep::mnuAbout_Click()
{
    if (!m_about)
        m_about = new FrmAbout(m_configuration, this);
    m_about->exec();
}

void FrmSweep::mnuPreferences_Click()
{
    if (!m_preferences) {
        m_preferences = new FrmPreferences(m_configuration, m_remote.get(), this);
        connect(m_preferences, &FrmPreferences::cursorChosen, this, &FrmSweep::showCursorLines);
    }
    m_preferences->exec();
}

void FrmSweep::showCursorLines(bool visible)
{
    for (const GraphItem line : {GraphItem::CursorH, GraphItem::CursorV})
        m_station.markers.setVisible(line, visible);
}

// Gives the graph its preferred initial size if the screen has room for the window. Surplus space widens the control
// column and the space above the graph, but never enlarges the window.
void FrmSweep::fitGraph()
{
    const QSize surplus =
        (m_graphPanel->graph().size() - m_graphPanel->graph().sizeHint()).boundedTo(size() - minimumSizeHint());
    if (surplus.width() > 0)
        m_leastControlColumn = m_range->width() + surplus.width();
    if (surplus.height() > 0)
        m_graphPanel->widenTop(surplus.height());
    fitControlColumn();
}

bool FrmSweep::start()
{
    // Launch the server first, so that it starts up while the window is being prepared.
    m_instrument.launchServer();
    setWindowTitle(QString::fromLatin1(kApplicationTitle));
    const QSize free = screen()->availableSize() - QSize(0, kTitleBarHeight);
    resize(kStartSize.boundedTo(free));
    if (!loadSettings())
        return false;
    m_range->showRange();
    m_testPanel->setVisible(m_configuration.logDebug);
    fitControlColumn();
    prepareDisplay();
    prepare("restoreMarkers", [this] { restoreMarkers(); });
    prepare("restoreMeasure", [this] { m_measure->restore(); });
    prepare("restoreHeight", [this] { m_views->restoreHeight(m_configuration.iniPath); });
    prepare("prepareInterface", [this] { prepareInterface(); });
    prepare("selectView", [this] { m_views->selectView(m_station.window.markerIndex); });
    // The user may have ended the program in a box shown during start-up.
    if (m_closed)
        return false;
    m_markerPanel->save(m_station.window);
    m_unreadable = m_station.loader.unreadableEntries();
    m_isPrepared = true;
    m_controls->focusStart();
    show();
    m_measure->showRestored();
    fitGraph();
    showFaults(m_station.loader.faults());
    if (!m_closed)
        connectHardware();
    if (!m_closed)
        startRemoteControl();
    return !m_closed;
}

bool FrmSweep::loadSettings()
{
    // If the dialog writes a configuration, the program ends; otherwise it continues with the defaults.
    const bool noSettings = isFirstStart(m_configuration.iniPath);
    m_station.loader.refused = [this](const QString &reason) {
        m_station.messages.warn(tr("The settings file %1 is not used: %2.").arg(m_configuration.iniPath, reason));
    };
    m_station.loader.firstRun = [this, noSettings] {
        const bool isWritten = m_setUp->configureAtFirstStart(noSettings);
        // Start-up must also stop if a signal closed the dialog.
        return !isWritten && !m_closed;
    };
    const LoadOutcome outcome = m_station.loader.load();
    if (m_closed)
        return false;
    if (outcome == LoadOutcome::UnknownDdsDevice)
        m_station.messages.beepAndWarn(m_configuration.ddsDevice + tr(" : Unknow DDSdevice.") + u'\r' +
                                       tr("Supported DDS generators are: AD9850, AD9851, AD9951"));
    else if (outcome == LoadOutcome::UnknownAdcDevice)
        m_station.messages.beepAndWarn(m_configuration.adcDevice + tr(" : Unknow ADCdevice.") + u'\r' +
                                       tr("Supported ADC are: 8bit, 10bit"));
    if (outcome == LoadOutcome::UnknownDdsDevice || outcome == LoadOutcome::UnknownAdcDevice)
        m_setUp->configure({false, outcome == LoadOutcome::UnknownDdsDevice ? kDdsDevice : kAdcDevice});
    return outcome == LoadOutcome::Loaded;
}

void FrmSweep::showFaults(const QStringList &faults)
{
    if (!faults.isEmpty())
        m_station.messages.warn(tr("Some settings could not be read.") + u'\r' + faults.join(u'\r'));
}

void FrmSweep::prepareDisplay()
{
    showCursorLines(m_configuration.cursorMode != 0);
    m_graphPanel->axis().showFullScale();
    m_graphPanel->graph().inizializzaGraph();
    prepare("aggiornaLblFrequenza", [this] { m_range->aggiornaLblFrequenza(); });
    prepare("aggiornaScala", [this] { m_scales->aggiornaScala(m_configuration.scaleType); });
}

// Runs each step separately, so that a failed plan does not affect the scale or the markers. Shows only the first
// error, because it is the cause of the later ones.
void FrmSweep::prepare(const char *step, const std::function<void()> &procedure)
{
    if (m_preparedSoFar)
        m_preparedSoFar = m_station.boundary.run(step, procedure);
    else
        m_station.boundary.runAfterFailure(step, procedure);
}

void FrmSweep::restoreMarkers()
{
    m_station.loader.loadMarkers();
    m_markerPanel->restore(m_station.window);
}

void FrmSweep::prepareInterface()
{
    const AcquisitionDriver *driver = m_instrument.makeDriver() ? m_instrument.driver() : nullptr;
    const bool hasOutputs = driver && driver->kind().hasOutputs;
    m_controls->showSpeed(driver && driver->kind().hasSpeeds);
    m_views->setOutputViews(hasOutputs);
    if (hasOutputs) {
        m_aux1->setUp();
        m_aux2->setUp();
    }
}

void FrmSweep::connectHardware()
{
    AcquisitionDriver *driver = m_instrument.driver();
    if (!driver)
        return;
    setWindowTitle(driver->caption());
    m_boards->followDriver();
    m_testPanel->setDriver(driver);
    fitControlColumn();
    m_setUp->setDriver(driver);
    m_events->connectDriver();
    m_station.boundary.run("startUp", [this] { m_instrument.connectHardware(); });
}

void FrmSweep::closeEvent(QCloseEvent *event)
{
    if (!m_closed)
        shutDown();
    event->accept();
    QCoreApplication::quit();
}

void FrmSweep::end()
{
    // From here on, all event loops exit, including those of boxes and dialogs.
    QCoreApplication::exit();
    // When a calibration closes, it restores the values that it has changed temporarily.
    while (QWidget *dialog = QApplication::activeModalWidget())
        if (!dialog->close())
            break;
    close();
}

void FrmSweep::shutDown()
{
    m_closed = true;
    m_remote->close();
    EntryBox::commitPending();
    m_controls->abandonWaiting();
    // Nothing was read from a rejected file, so saving would replace its contents with defaults.
    if (m_isPrepared && !m_station.loader.wasRefused())
        saveWhatChanged();
    releaseHardware();
}

void FrmSweep::saveWhatChanged()
{
    m_markerPanel->save(m_station.window);
    const bool saved = saveSettings(m_configuration, m_station.window, m_unreadable);
    const bool viewSaved = m_views->saveHeight(m_configuration.iniPath);
    const bool levelSaved = !m_level || m_level->save(m_configuration.iniPath);
    if (!m_measure->save() || !viewSaved || !levelSaved || !saved)
        m_station.log.writeLog(tr("The settings could not be saved in %1").arg(m_configuration.iniPath));
}

// Does not save: the file has just been written, and saving would restore the previous values.
void FrmSweep::endAtOnce()
{
    m_closed = true;
    m_remote->close();
    m_controls->abandonWaiting();
    releaseHardware();
    hide();
    QCoreApplication::quit();
}

void FrmSweep::releaseHardware()
{
    if (m_level)
        m_level->shutDown();
    m_station.boundary.run("shutDown", [this] { m_instrument.shutDown(); });
    m_instrument.server().stop();
    m_help->closeAll();
}

} // namespace calvorn
