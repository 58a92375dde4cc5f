#include "datamaker/unattended.h"

#include "base/runtime_error.h"

Answer UnattendedDialogs::MsgBox(const QString &text, int buttonsValue, const QString &)
{
    const int icon = buttonsValue & Box::IconMask;
    if (icon == Box::Stop || icon == Box::Exclamation)
        throw RuntimeError(RuntimeError::InvalidArgumentNumber, text);
    return (buttonsValue & Box::ButtonsMask) == Box::YesNo ? Answer::Yes : Answer::Ok;
}

std::optional<QString> UnattendedDialogs::PickFile(const FileRequest &)
{
    return std::nullopt;
}

std::optional<QString> UnattendedDialogs::PickFolder(const QString &, const QString &)
{
    return std::nullopt;
}

std::optional<Rgb> UnattendedDialogs::PickColor(Rgb)
{
    return std::nullopt;
}
