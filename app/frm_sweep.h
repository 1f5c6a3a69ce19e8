// SPDX-License-Identifier: MIT
#pragma once

#include "app/board_menus.h"
#include "app/driver_events.h"
#include "app/set_up_menu.h"
#include "app/sweep_files.h"
#include "app/sweep_pictures.h"
#include "app/sweep_station.h"
#include "controls/aux_output.h"
#include "controls/frequency_readouts.h"
#include "controls/level_page.h"
#include "controls/range_entry.h"
#include "controls/span_commands.h"
#include "controls/sweep_controls.h"
#include "controls/test_panel.h"
#include "display/graph_panel.h"
#include "display/marker_panel.h"
#include "display/scale_control.h"
#include "display/table_view.h"
#include "display/view_switch.h"
#include "measure/measure_dock.h"
#include "widgets/status_line.h"

#include <QMainWindow>

#include <functional>
#include <memory>

class QVBoxLayout;

namespace calvorn {

class ControlPlace;
class FrmAbout;
class FrmPreferences;
class HelpDesk;
class RemoteControl;

// The main window: composes the components and defines the order of start-up and shutdown.
class FrmSweep : public QMainWindow
{
    Q_OBJECT

public:
    // The station must outlive the window.
    explicit FrmSweep(SweepStation &station);
    ~FrmSweep() override;

    // Loads the settings, prepares every component, shows the window and starts the hardware. Returns false if the
    // program must end.
    bool start();

    // Ends the program as if the window were closed, from any state: closes all open boxes and dialogs, and shows no
    // more.
    void end();

protected:
    // Closing the window always ends the program.
    void closeEvent(QCloseEvent *event) override;

private:
    void compose();
    void fitControlColumn();
    void fitGraph();
    void composeGraphColumn(QVBoxLayout *column);
    void composeControlColumn(QVBoxLayout *column);
    void connectComponents();
    void connectSpans();
    QWidget *makeLevelPage();
    void composeStatusLine();
    void showMarks();
    void startRemoteControl();
    void buildMenus();
    bool loadSettings();
    void showFaults(const QStringList &faults);
    void prepareDisplay();
    void prepare(const char *step, const std::function<void()> &procedure);
    void restoreMarkers();
    void prepareInterface();
    void connectHardware();
    void shutDown();
    void saveWhatChanged();
    void endAtOnce();
    void releaseHardware();
    void mnuAbout_Click();
    void mnuPreferences_Click();
    void showCursorLines(bool visible);

    SweepStation &m_station;
    Configuration &m_configuration;
    Instrument &m_instrument;
    SweepTable &m_table;
    QVector<ProfileEntry> m_unreadable; // entries left unchanged in the file at shutdown
    int m_leastControlColumn = 0;       // width, logical pixels
    bool m_preparedSoFar = true;
    bool m_isPrepared = false; // whether everything that a shutdown saves has been loaded
    bool m_closed = false;

    FrequencyReadouts *m_readouts = nullptr;
    GraphPanel *m_graphPanel = nullptr;
    MarkerPanel *m_markerPanel = nullptr;
    SweepTableView *m_tableView = nullptr;
    AuxOutput *m_aux1 = nullptr;
    AuxOutput *m_aux2 = nullptr;
    ViewSwitch *m_views = nullptr;
    StatusLine *m_status = nullptr;
    BoardMenus *m_boards = nullptr;
    ScaleControl *m_scales = nullptr;
    RangeEntry *m_range = nullptr;
    SpanCommands *m_spans = nullptr;
    SweepControls *m_controls = nullptr;
    TestPanel *m_testPanel = nullptr;
    MeasureDock *m_measure = nullptr;
    LevelPage *m_level = nullptr; // null until the panel is first opened
    std::unique_ptr<ControlPlace> m_controlPlace;
    DriverEvents *m_events = nullptr;
    SweepFiles *m_files = nullptr;
    SweepPictures *m_pictures = nullptr;
    SetUpMenu *m_setUp = nullptr;
    QMenu *m_setUpMenu = nullptr;
    FrmAbout *m_about = nullptr;
    FrmPreferences *m_preferences = nullptr;
    HelpDesk *m_help = nullptr;
    std::unique_ptr<RemoteControl> m_remote; // destroyed before the components that it uses
};

} // namespace calvorn
