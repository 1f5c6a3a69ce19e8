// SPDX-License-Identifier: MIT
#pragma once

#include "setup/set_up_page.h"

#include <QDialog>
#include <QPushButton>

#include <array>

namespace calvorn {

class InterfacePage;

// Information that the caller supplies when opening the configuration.
struct SetUpOpening
{
    // There are no settings yet, so the dialog suggests the prepared simulated board.
    bool firstStart = false;
    // The key of an unknown device that the caller has just reported; the dialog does not report it again.
    std::optional<SettingKey> reportedDevice;
};

// The hardware configuration: five pages that edit one set of working copies. Only "Apply" writes the file; exec() then
// returns Accepted and the program must exit, because the new configuration is read at the next start.
class FrmSetUp : public QDialog
{
    Q_OBJECT

public:
    // configuration: supplies the path of the settings file.
    FrmSetUp(const Configuration &configuration, Messages &messages, ErrorBoundary &boundary,
             QWidget *parent = nullptr);

    // Takes effect the next time the dialog opens.
    void setOpening(const SetUpOpening &opening) { m_opening = opening; }

protected:
    // Reads the file again whenever the dialog opens.
    void showEvent(QShowEvent *event) override;

private:
    static constexpr std::size_t kPages = 5;
    enum PageIndex : std::size_t { Interface, Dds, Adc, Aux, Port };

    void buildPages(const SetUpContext &context);
    QLayout *buildPageButtons();
    QLayout *buildButtons();
    void load();
    void frameInvisibili();
    void showPage(std::size_t page);
    void enablePageButtons(bool enabled);
    void interfaceChosen();
    void cmdApply_Click();

    const Configuration &m_configuration;
    Messages &m_messages;
    ErrorBoundary &m_boundary;
    SetUpOpening m_opening;
    SetUpValues m_values;
    std::array<SetUpPage *, kPages> m_pages{};
    std::array<QPushButton *, kPages> m_pageButtons{};
    QPushButton *m_apply = nullptr;
};

} // namespace calvorn
