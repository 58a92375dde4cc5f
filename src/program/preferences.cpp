#include "program/preferences.h"

namespace
{

/// Runs one pass over the settings; its failure is shown and ends the program.
template <class Pass>
void OrEnd(Program &program, const QString &firstLine, Pass pass)
{
    try {
        pass();
    } catch (const RuntimeError &error) {
        program.services.dialogs.MsgBox(
            firstLine + QStringLiteral("\nthe application will be terminated\n") +
                ErrorLines(error),
            Box::Stop, EditorTitle());
        program.services.lifetime.End();
    }
}

} // namespace

QString LoadSettings(Program &program)
{
    QStringList unreadable;
    const Services &services = program.services;
    OrEnd(program, QStringLiteral("An error has occured obtaining information from the Registry "),
          [&] {
              program.settings =
                  LoadSettings(services.settingsStore, services.formats, services.appPath,
                               services.clock.Today(), &unreadable);
          });
    if (services.settingsStore.HasUnreadableLines())
        unreadable << QStringLiteral("a line of the file");
    return unreadable.isEmpty()
               ? QString()
               : QStringLiteral("Settings that cannot be read have their default: %1.")
                     .arg(unreadable.join(QLatin1String(", ")));
}

void SaveSettings(Program &program)
{
    const Services &services = program.services;
    OrEnd(program, QStringLiteral("An error has occured saving information to the Registry "),
          [&] { SaveSettings(services.settingsStore, services.formats, program.settings); });
}
