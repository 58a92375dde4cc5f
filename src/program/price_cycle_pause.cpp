#include "program/price_cycle_pause.h"

#include <utility>

namespace
{

const QString PriceCycle = QStringLiteral("frmInternetTran");

} // namespace

void PriceCyclePause::Suspend(Program &program)
{
    if (!program.priceUpdate.PriceUpdateActive)
        return;
    program.services.status.Post(
        QStringLiteral("Current price update option temporarily disabled!"));
    program.screens.Unload(PriceCycle);
    program.priceUpdate.Pause = this;
    PriceCycleSuspended = true;
}

void PriceCyclePause::Resume(Program &program)
{
    PriceUpdateState &prices = program.priceUpdate;
    const bool isMine = prices.Pause == this;
    if (isMine)
        prices.Pause = nullptr;
    // The user may have switched the prices on meanwhile, which is what this screen would do.
    const bool isOn = std::exchange(PriceCycleSuspended, false) && prices.PriceUpdateActive;
    if ((!isMine && !isOn) || program.run.ProgramClosing) {
        program.services.status.Post(QString());
        return;
    }
    program.screens.Load(PriceCycle);
    program.services.status.Post(QStringLiteral("Enabling the current price update option"));
}

void SwitchPricesOff(Program &program)
{
    program.priceUpdate.Pause = nullptr;
    program.screens.Unload(PriceCycle);
}
