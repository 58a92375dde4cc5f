#pragma once

/// The carrier of the price update: a form that is never shown. It is loaded to switch the update on
/// and unloaded to switch it off. The Connect button of the toolbar shows which it is.

#include "marketdata/price_cycle.h"
#include "program/form.h"

class frmInternetTran : public Form
{
public:
    explicit frmInternetTran(Program &program);

    void Load() override;
    void OnUnload() override;

private:
    std::shared_ptr<PriceCycle> m_cycle; ///< lives on until a cycle that runs has left
};
