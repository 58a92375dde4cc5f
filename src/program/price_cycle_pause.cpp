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
    PriceCycleSuspended = true;
}

void PriceCyclePause::Resume(Program &program)
{
    if (!std::exchange(PriceCycleSuspended, false) || program.run.ProgramClosing) {
        program.services.status.Post(QString());
        return;
    }
    program.screens.Load(PriceCycle);
    program.services.status.Post(QStringLiteral("Enabling the current price update option"));
}
