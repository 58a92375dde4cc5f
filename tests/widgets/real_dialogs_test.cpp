#include "platform/widgets/real_dialogs.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QTimer>
#include <QWindow>

namespace
{

/// The window that the dialog which `ask` brings up belongs to; the dialog is cancelled.
const QWindow *OwnerOf(const std::function<void(RealDialogs &)> &ask)
{
    const QWindow *owner = nullptr;
    QTimer::singleShot(0, [&owner] {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        owner = dialog->windowHandle()->transientParent();
        EXPECT_EQ(dialog->windowFlags().testFlag(Qt::WindowStaysOnTopHint), owner != nullptr);
        dialog->reject();
    });
    RealDialogs dialogs;
    ask(dialogs);
    return owner;
}

const std::function<void(RealDialogs &)> everyDialog[] = {
    [](RealDialogs &dialogs) { dialogs.MsgBox("Continue?", Box::YesNo, "Wizard"); },
    [](RealDialogs &dialogs) {
        FileRequest request;
        request.kind = FileRequest::Kind::Open;
        request.initial = "/tmp/a.mdb";
        EXPECT_EQ(dialogs.PickFile(request), std::nullopt);
    },
    [](RealDialogs &dialogs) { EXPECT_EQ(dialogs.PickFolder("Backup", "/"), std::nullopt); },
    [](RealDialogs &dialogs) { EXPECT_EQ(dialogs.PickColor(0xFFFF00), std::nullopt); },
};

} // namespace

TEST(RealDialogs, AreNotHiddenByAWindowThatStaysOnTop)
{
    QWidget entry(nullptr, Qt::Dialog | Qt::WindowStaysOnTopHint);
    for (const auto &ask : everyDialog) {
        entry.show();
        EXPECT_EQ(OwnerOf(ask), entry.windowHandle());
        entry.hide();
        EXPECT_EQ(OwnerOf(ask), nullptr);
    }
}
