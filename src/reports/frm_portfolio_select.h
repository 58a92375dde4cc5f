#pragma once

/// Asks which accounts a performance report takes, and goes on to the report's options.
///
/// A click on an account, or the space bar, checks or clears it; that is stored at once and holds
/// for the next report too.

#include "program/form.h"

class QListWidget;
class QListWidgetItem;

class frmPortfolioSelect : public Form
{
public:
    explicit frmPortfolioSelect(Program &program);
    void Load() override;

private:
    void BuildControls();
    void lstPortfolioNames_Click(QListWidgetItem *item);
    void StoreSelection(QListWidgetItem *item);
    void cmdOK_Click();

    QListWidget *lstPortfolioNames;
    bool m_isToggled = false; ///< the press of the mouse under way has changed its item
};
