/// Grid colours on a desktop that turns dark and light.

#include "program/desktop_colors.h"

#include "platform/widgets/colors.h"
#include "shell/shell_run.h"

#include <gtest/gtest.h>

namespace
{

constexpr QRgb white = 0xFFFFFFFF;
constexpr QRgb night = 0xFF232323;
constexpr double peach = 0xC0E0FF; // the user's

struct Notes
{
    TestAppFolder folder;
    SettingsStore store{folder.SettingsFile()};
    Settings settings;
};

} // namespace

TEST(FollowDesktopColor, TurnsTheColorsThatNobodyChose)
{
    Notes notes;
    notes.settings.DTDataGridColor = ValueOfColor(white);
    notes.settings.THDataGridColor = peach;
    notes.settings.PPDataGridColor = 0;
    FollowDesktopColor(notes.settings, notes.store, white);
    EXPECT_EQ(notes.settings.DTDataGridColor, ValueOfColor(white));
    FollowDesktopColor(notes.settings, notes.store, night);
    EXPECT_EQ(notes.settings.DTDataGridColor, ValueOfColor(night));
    EXPECT_EQ(notes.settings.THDataGridColor, peach);
    EXPECT_EQ(notes.settings.PPDataGridColor, 0); // not taken yet
    FollowDesktopColor(notes.settings, notes.store, white);
    EXPECT_EQ(notes.settings.DTDataGridColor, ValueOfColor(white));
}

TEST(FollowDesktopColor, LeavesAllColorsWhileTheDesktopIsTheSame)
{
    Notes notes;
    notes.settings.DPAllRowColor = ValueOfColor(night);
    FollowDesktopColor(notes.settings, notes.store, night);
    FollowDesktopColor(notes.settings, notes.store, night);
    EXPECT_EQ(notes.settings.DPAllRowColor, ValueOfColor(night));
}

TEST(FollowDesktopColor, ChangesNothingOnADesktopItHasNotSeenBefore)
{
    Notes notes;
    notes.settings.HPDataGridColor = ValueOfColor(white);
    FollowDesktopColor(notes.settings, notes.store, night);
    EXPECT_EQ(notes.settings.HPDataGridColor, ValueOfColor(white));
    notes.store.SaveSetting(QStringLiteral("Desktop"), QStringLiteral("ListColor"),
                            QStringLiteral("no colour"));
    FollowDesktopColor(notes.settings, notes.store, white);
    EXPECT_EQ(notes.settings.HPDataGridColor, ValueOfColor(white));
}
