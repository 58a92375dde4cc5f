#include "aids/about_texts.h"

#include "store/settings.h"

QString VersionLine()
{
    return QStringLiteral("Version ") + ProgramVersion().Dotted();
}

QString DescriptionText()
{
    return QStringLiteral("An application designed for active traders. "
                          "With functionalities in charting, Excel interfaces and reporting "
                          "capabilities for year-end tax purposes.");
}
