/// The screen on paper: the four captures, the preview, and the page.

#include "platform/widgets/print_preview.h"
#include "program/print_screen.h"
#include "shell/shell_run.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QMenuBar>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QScreen>
#include <QTemporaryDir>

namespace
{

class PrintScreen : public testing::Test
{
protected:
    PrintScreen()
    {
        run.SetOption("ShowTipOfDay", "0").SetOption("DailyTracker", "0");
        run.SetOption("WebPriceUpdate", "0");
        run.State().services.printPicture = [this](const QImage &picture) { prints << picture; };
        run.App().Launch();
    }
    frmMDIMain &Window() { return run.App().MainWindow(); }
    /// The only picture printed so far.
    QImage Printed() { return prints.size() == 1 ? prints.first() : QImage(); }

    TestAppFolder folder;
    ShellRun run{folder};
    QList<QImage> prints;
};

/// A wide picture, red on the left, blue on the right.
QImage TwoColours()
{
    QImage picture(200, 100, QImage::Format_RGB32);
    picture.fill(Qt::red);
    for (int y = 0; y < 100; ++y)
        for (int x = 100; x < 200; ++x)
            picture.setPixelColor(x, y, Qt::blue);
    return picture;
}

/// Qt warns of a printer that can't begin, which a failed test would follow.
class WithoutWarnings
{
public:
    WithoutWarnings()
        : m_before(
              qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {}))
    {}
    ~WithoutWarnings() { qInstallMessageHandler(m_before); }

private:
    QtMessageHandler m_before;
};

/// Runs `act` once a modal dialog of this class is up.
template <class Dialog>
void WhenUp(const std::function<void(Dialog &)> &act)
{
    auto *watch = new QTimer(qApp);
    QObject::connect(watch, &QTimer::timeout, watch, [act, watch] {
        if (auto *dialog = qobject_cast<Dialog *>(QApplication::activeModalWidget())) {
            watch->stop();
            watch->deleteLater();
            act(*dialog);
        }
    });
    watch->start(0);
}

/// Presses the Print button of the preview that comes up, and accepts the dialog behind it, for the
/// file `pdf`; `accepted` runs before anything is printed.
void PrintPreviewTo(
    const QString &pdf, const std::function<void()> &accepted = [] {})
{
    WhenUp<QPrintPreviewDialog>([](QPrintPreviewDialog &preview) {
        for (QAction *action : preview.findChildren<QAction *>())
            if (action->text() == "Print")
                action->trigger();
    });
    WhenUp<QPrintDialog>([pdf, accepted](QPrintDialog &print) {
        auto *name = print.findChild<QLineEdit *>("filename");
        ASSERT_NE(name, nullptr);
        name->setText(pdf);
        print.accept();
        accepted();
    });
}

} // namespace

TEST_F(PrintScreen, PrintsTheWholeScreen)
{
    run.Choose("mnuFLSCScreen");
    EXPECT_EQ(Printed().size(), Window().screen()->size());
    EXPECT_EQ(run.boxes.Texts(), QStringList());
}

TEST_F(PrintScreen, PrintsTheMainWindow)
{
    run.Choose("mnuFLSCForm");
    EXPECT_EQ(Printed().size(), Window().size());
    EXPECT_EQ(Printed(), Window().grab().toImage());
}

TEST_F(PrintScreen, PrintsTheInsideOfTheMainWindowWithoutItsMenuBar)
{
    run.Choose("mnuFLSCClient");
    const int bar = Window().menuBar()->height();
    ASSERT_GT(bar, 0);
    EXPECT_EQ(Printed().size(), Window().size() - QSize(0, bar));
    EXPECT_EQ(Printed(),
              Window().grab().toImage().copy(0, bar, Window().width(), Window().height() - bar));
}

TEST_F(PrintScreen, PrintsTheActiveWindowFourSecondsBehindItsBox)
{
    const QDateTime start = run.clock.Now();
    run.boxes.OnBox = [&](const auto &) {
        EXPECT_EQ(run.clock.Now(), start);
        EXPECT_TRUE(prints.isEmpty());
    };
    run.Choose("mnuFLSCActive");
    ASSERT_EQ(run.boxes.boxes.size(), 1u);
    EXPECT_EQ(run.boxes.boxes[0].text, "Four seconds after you close this dialog box\n"
                                       "the active window will be captured and printed.\n"
                                       "Click on any window to make it the active window.");
    EXPECT_EQ(run.boxes.boxes[0].title, "Print Editor");
    EXPECT_EQ(start.secsTo(run.clock.Now()), 4);
    EXPECT_EQ(Printed(), Window().grab().toImage());
}

TEST_F(PrintScreen, PrintsTheWindowThatTheUserChoseInTheFourSeconds)
{
    const auto choice = run.clock.CreateTimer([&] { run.App().Host().Show("frmAbout"); });
    choice->SetInterval(std::chrono::seconds(3));
    run.boxes.OnBox = [&](const auto &) { choice->SetEnabled(true); };
    run.Choose("mnuFLSCActive");
    choice->SetEnabled(false);
    Form *chosen = run.App().Host().Find("frmAbout");
    ASSERT_NE(chosen, nullptr);
    EXPECT_EQ(Printed().size(), chosen->size());
    EXPECT_LT(Printed().width(), Window().width());
}

TEST_F(PrintScreen, PrintsTheScreenWhenTheUserChoseAnotherProgram)
{
    Window().hide();
    ASSERT_EQ(QApplication::activeWindow(), nullptr);
    EXPECT_EQ(CaptureActiveWindow(Window()).size(), Window().screen()->size());
}

TEST_F(PrintScreen, PutsAWindowOutsideTheMainWindowOnTheWholeScreenToo)
{
    run.App().Host().Show("frmAbout");
    Form *about = run.App().Host().Find("frmAbout");
    const QImage picture = CaptureScreen(Window());
    EXPECT_EQ(picture.copy(about->geometry()),
              about->grab().toImage().convertToFormat(picture.format()));
}

TEST_F(PrintScreen, CountsAsAnActionOfTheUser)
{
    run.State().run.IdleMinutes = 7;
    run.Choose("mnuFLSCForm");
    EXPECT_EQ(run.State().run.IdleMinutes, 0);
}

TEST_F(PrintScreen, ShowsWhatThePrinterRefused)
{
    run.State().services.printPicture = [](const QImage &) { throw RuntimeError::Printer(); };
    run.Choose("mnuFLSCForm");
    EXPECT_EQ(run.boxes.Texts(), QStringList("Error number 482\nDescription: Printer error"));
    EXPECT_FALSE(run.App().Ended());
}

TEST_F(PrintScreen, RefusesAPictureOfNothing)
{
    EXPECT_THROW(PrintPicture(run.State(), QImage()), RuntimeError);
    EXPECT_TRUE(prints.isEmpty());
}

TEST_F(PrintScreen, EndsWithTheProgramWhenTheUserLeavesInTheFourSeconds)
{
    const auto leave = run.clock.CreateTimer([&] { run.App().Exit(); });
    leave->SetInterval(std::chrono::seconds(2));
    run.boxes.OnBox = [&](const auto &) { leave->SetEnabled(true); };
    run.Choose("mnuFLSCActive");
    leave->SetEnabled(false);
    EXPECT_TRUE(run.App().Ended());
    EXPECT_TRUE(prints.isEmpty());
}

TEST(PrintPictureToFitPage, FillsTheWidthFromTheTopLeftCorner)
{
    QPrinter printer(QPrinter::ScreenResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    const TestAppFolder folder;
    printer.setOutputFileName(folder.File("screen.pdf"));
    EXPECT_TRUE(PrintPictureToFitPage(printer, TwoColours()));
    QFile pdf(folder.File("screen.pdf"));
    ASSERT_TRUE(pdf.open(QIODevice::ReadOnly));
    EXPECT_TRUE(pdf.readAll().startsWith("%PDF-"));
}

TEST(PrintPictureToFitPage, TellsOfAFileThatCannotBeWritten)
{
    const WithoutWarnings quiet;
    QPrinter printer(QPrinter::ScreenResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName("/nowhere/at/all/screen.pdf");
    EXPECT_FALSE(PrintPictureToFitPage(printer, TwoColours()));
}

TEST(PrintPreview, SavesThePictureAsPdfWithoutAnyPrinter)
{
    const TestAppFolder folder;
    PrintPreviewTo(folder.File("screen.pdf"));
    PreviewPicture(TwoColours());
    QFile pdf(folder.File("screen.pdf"));
    ASSERT_TRUE(pdf.open(QIODevice::ReadOnly));
    EXPECT_TRUE(pdf.readAll().startsWith("%PDF-"));
}

TEST(PrintPreview, LaysAWidePictureOnAPageOfItsShape)
{
    const auto shown = [](const QSize &size) {
        QPageLayout::Orientation orientation = QPageLayout::Portrait;
        WhenUp<QPrintPreviewDialog>([&](QPrintPreviewDialog &preview) {
            orientation = preview.printer()->pageLayout().orientation();
            preview.reject();
        });
        PreviewPicture(QImage(size, QImage::Format_RGB32));
        return orientation;
    };
    EXPECT_EQ(shown({200, 100}), QPageLayout::Landscape);
    EXPECT_EQ(shown({100, 200}), QPageLayout::Portrait);
}

TEST(PrintPreview, PrintsByTheKeyThatPrintsAWindow)
{
    QStringList keys;
    WhenUp<QPrintPreviewDialog>([&](QPrintPreviewDialog &preview) {
        for (const QAction *action : preview.findChildren<QAction *>())
            if (action->text() == "Print")
                keys << action->shortcut().toString();
        preview.reject();
    });
    PreviewPicture(TwoColours());
    EXPECT_EQ(keys, QStringList("Ctrl+P"));
}

TEST(PrintPreview, ThrowsWhatThePrinterRefused)
{
    const WithoutWarnings quiet;
    QTemporaryDir folder;
    PrintPreviewTo(folder.filePath("screen.pdf"), [&] { folder.remove(); });
    EXPECT_THROW(PreviewPicture(TwoColours()), RuntimeError);
}
