#pragma once

/// Message boxes and the common dialogs for files, folders and colours.
///
///     dialogs.MsgBox("Is this OK?", Box::YesNo + Box::Question, "Quillon Editor") == Answer::Yes
///
/// Nothing else in the program opens a box, so that a script can answer and record each of them.

#include <QString>

#include <cstdint>
#include <optional>

enum class Answer
{
    Ok = 1,
    Cancel = 2,
    Abort = 3,
    Retry = 4,
    Ignore = 5,
    Yes = 6,
    No = 7
};

/// The buttons value of a box: one of each group, added.
namespace Box
{
constexpr int Ok = 0;
constexpr int OkCancel = 1;
constexpr int YesNoCancel = 3;
constexpr int YesNo = 4;
constexpr int RetryCancel = 5;
constexpr int ButtonsMask = 7;

constexpr int Stop = 16;
constexpr int Question = 32;
constexpr int Exclamation = 48;
constexpr int Information = 64;
constexpr int IconMask = 112;

constexpr int SecondDefault = 256; ///< the second button is the default
} // namespace Box

struct FileRequest
{
    enum class Kind
    {
        Open,
        Save
    };
    Kind kind = Kind::Open;
    QString title;
    QString filter;  ///< "Tracker Databases (*.mdb)|*.mdb"
    QString initial; ///< folder and pattern or name shown first
};

/// A colour as 0xRRGGBB.
using Rgb = std::uint32_t;

class Dialogs
{
public:
    virtual ~Dialogs() = default;

    virtual Answer MsgBox(const QString &text, int buttonsValue, const QString &title) = 0;
    /// Nothing when the user cancels.
    virtual std::optional<QString> PickFile(const FileRequest &request) = 0;
    virtual std::optional<QString> PickFolder(const QString &title, const QString &initial) = 0;
    virtual std::optional<Rgb> PickColor(Rgb initial) = 0;
};
