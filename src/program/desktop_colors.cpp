#include "program/desktop_colors.h"

#include "platform/widgets/colors.h"

namespace
{

const QString Section = QStringLiteral("Desktop");
const QString Key = QStringLiteral("ListColor");

} // namespace

void FollowDesktopColor(Settings &settings, SettingsStore &store, QRgb desktop)
{
    const QColor before(store.GetSetting(Section, Key, QString()));
    store.SaveSetting(Section, Key, QColor(desktop).name());
    if (!before.isValid() || before.rgb() == QColor(desktop).rgb())
        return;
    for (double *color :
         {&settings.DTDataGridColor, &settings.DTTotalGridColor, &settings.DPAllRowColor,
          &settings.THDataGridColor, &settings.HPDataGridColor, &settings.PPDataGridColor,
          &settings.QSDataGridColor})
        if (*color != 0 && ColorOfValue(*color) == before.rgb())
            *color = ValueOfColor(desktop);
}
