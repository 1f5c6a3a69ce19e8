// SPDX-License-Identifier: MIT
#include "display/view_switch.h"

#include "core/setting_reader.h"

#include <QActionGroup>
#include <QEvent>
#include <QVBoxLayout>

#include <algorithm>

namespace calvorn {

namespace {

constexpr int kMarkerView = 0;
constexpr int kTableView = 1;
constexpr int kFirstParallelPortView = 2;
constexpr int kLeastTableWidth = 360; // logical pixels, next to the markers
constexpr SettingKey kViewHeight{"View", "Height", "0"};

// Disables the current view's button, and shows its caption in bold.
void markChosen(QPushButton *button, bool chosen)
{
    button->setEnabled(!chosen);
    QFont font = button->font();
    font.setBold(chosen);
    button->setFont(font);
    QPalette colours = button->palette();
    colours.setColor(QPalette::Disabled, QPalette::ButtonText, colours.color(QPalette::Active, QPalette::ButtonText));
    button->setPalette(colours);
}

} // namespace

ViewSwitch::ViewSwitch(WindowSettings &settings, MarkerPanel &markers, QWidget *table, QWidget *aux1, QWidget *aux2,
                       ErrorBoundary &boundary, QWidget *parent)
    : QWidget(parent)
    , m_settings(settings)
    , m_markers(markers)
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    auto *row = new QHBoxLayout;
    row->setSpacing(2);
    m_buttonRow = row;
    column->addLayout(row);
    auto *views = new QHBoxLayout;
    column->addLayout(views, 1);
    m_stack = new QStackedLayout;
    views->addLayout(m_stack, 1);
    m_beside = new QFrame(this);
    m_beside->setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
    (new QVBoxLayout(m_beside))->setContentsMargins(0, 0, 0, 0);
    // Let the window become narrower than the markers.
    m_beside->setMinimumWidth(1);
    m_beside->hide();
    views->addWidget(m_beside);
    const std::array<QString, kViews> captions{tr("&Marker"), tr("&Table"), tr("Aux &1"), tr("Aux &2")};
    const std::array<QWidget *, kViews> contents{&markers, table, aux1, aux2};
    // Create the buttons first, so that the Tab key visits them before the view.
    for (int index = 0; index < kViews; ++index)
        makeButton(index, captions[static_cast<std::size_t>(index)], boundary);
    for (int index = 0; index < kViews; ++index)
        makeFrame(index, contents[static_cast<std::size_t>(index)]);
    auto *group = new QActionGroup(this);
    for (QAction *action : m_actions)
        group->addAction(action);
    row->addStretch(1);
}

void ViewSwitch::makeButton(int index, const QString &caption, ErrorBoundary &boundary)
{
    const auto i = static_cast<std::size_t>(index);
    const QString plain = QString(caption).remove(u'&');
    auto *button = new QPushButton(caption, this);
    button->setObjectName(QStringLiteral("cmdView_%1").arg(index));
    button->setToolTip(tr("Show the view \"%1\"").arg(plain));
    button->setAccessibleName(tr("View %1").arg(plain));
    button->setAutoDefault(false);
    // Reserve space for the bold caption of the current view.
    QFont bold = button->font();
    bold.setBold(true);
    button->setMinimumWidth(button->sizeHint().width() + QFontMetrics(bold).horizontalAdvance(plain) -
                            button->fontMetrics().horizontalAdvance(plain));
    m_buttonRow->addWidget(button);
    boundary.connect(button, &QPushButton::clicked, this, "cmdView_Click", [this, index] { cmdView_Click(index); });
    m_buttons[i] = button;

    auto *action = new QAction(caption, this);
    action->setObjectName(QStringLiteral("mnuView_%1").arg(index));
    action->setToolTip(button->toolTip());
    action->setCheckable(true);
    boundary.connect(action, &QAction::triggered, this, "mnuView_Click", [this, index] { mnuView_Click(index); });
    m_actions[i] = action;
}

void ViewSwitch::makeFrame(int index, QWidget *content)
{
    const auto i = static_cast<std::size_t>(index);
    auto *frame = new QFrame(this);
    frame->setObjectName(QStringLiteral("frameView_%1").arg(index));
    frame->setAccessibleName(m_buttons[i]->accessibleName());
    frame->setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
    auto *inside = new QVBoxLayout(frame);
    inside->setContentsMargins(0, 0, 0, 0);
    inside->addWidget(content);
    m_stack->addWidget(frame);
    m_frames[i] = frame;
}

void ViewSwitch::setBetween(QWidget *widget)
{
    delete m_buttonRow->takeAt(kViews); // the stretch
    m_buttonRow->insertWidget(kViews, widget, 1);
}

void ViewSwitch::selectView(int index)
{
    EntryBox::commitPending();
    const int views = m_parallelPortViews ? kViews : kFirstParallelPortView;
    const bool isView = index >= 0 && index < views;
    const int shown = isView ? index : 0;
    for (QPushButton *button : m_buttons)
        markChosen(button, false);
    m_stack->setCurrentIndex(shown);
    m_actions[static_cast<std::size_t>(shown)]->setChecked(true);
    markChosen(m_buttons[static_cast<std::size_t>(shown)], true);
    // Do not overwrite an invalid view number, or one for another interface, until the user chooses a view.
    if (isView)
        m_settings.markerIndex = static_cast<std::int16_t>(shown);
    placeMarkers();
    m_markers.aggiornaLblMarkerX();
    m_markers.aggiornaLblMarkerY();
}

void ViewSwitch::setGivenHeight(int height)
{
    m_givenHeight = std::max(0, height);
    updateGeometry();
    placeMarkers();
}

void ViewSwitch::restoreHeight(const QString &settingsFile)
{
    SettingReader reader(settingsFile, SettingReader::Defaults::KeepOut);
    std::int16_t height = 0;
    reader.read(height, kViewHeight);
    setGivenHeight(height);
}

bool ViewSwitch::saveHeight(const QString &settingsFile) const
{
    SettingReader reader(settingsFile, SettingReader::Defaults::KeepOut);
    std::int16_t before = 0;
    reader.read(before, kViewHeight);
    return before == m_givenHeight ||
           writeProfileString(settingsFile, QString::fromLatin1(kViewHeight.section),
                              QString::fromLatin1(kViewHeight.name), QString::number(m_givenHeight));
}

QSize ViewSwitch::sizeHint() const
{
    const QSize needed = QWidget::sizeHint();
    const int most = parentWidget() ? parentWidget()->height() / 2 : m_givenHeight;
    return {needed.width(),
            m_givenHeight > 0 ? std::max(minimumSizeHint().height(), std::min(m_givenHeight, most)) : needed.height()};
}

// Monitors the parent's height, because the views may use at most half of it.
bool ViewSwitch::event(QEvent *event)
{
    if (event->type() == QEvent::ParentAboutToChange && parentWidget())
        parentWidget()->removeEventFilter(this);
    else if (event->type() == QEvent::ParentChange && parentWidget())
        parentWidget()->installEventFilter(this);
    else if (event->type() == QEvent::Resize)
        placeMarkers();
    return QWidget::event(event);
}

bool ViewSwitch::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize && m_givenHeight > 0)
        updateGeometry();
    return QWidget::eventFilter(watched, event);
}

bool ViewSwitch::isHigherThanNeeded() const
{
    return m_givenHeight > 0 && sizeHint().height() > QWidget::sizeHint().height();
}

void ViewSwitch::placeMarkers()
{
    const int wanted = m_markers.minimumSizeHint().width() + kLeastTableWidth;
    const bool beside = isHigherThanNeeded() && m_stack->currentIndex() == kTableView && width() >= wanted;
    QWidget *home = beside ? m_beside : m_frames[kMarkerView];
    if (m_markers.parentWidget() != home)
        home->layout()->addWidget(&m_markers);
    m_markers.show();
    m_beside->setVisible(beside);
}

void ViewSwitch::setOutputViews(bool available)
{
    m_parallelPortViews = available;
    for (std::size_t i = kFirstParallelPortView; i < kViews; ++i) {
        m_buttons[i]->setVisible(available);
        m_actions[i]->setVisible(available);
    }
    if (!available && m_stack->currentIndex() >= kFirstParallelPortView)
        selectView(0);
}

} // namespace calvorn
