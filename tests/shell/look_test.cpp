/// How the screens look: each fits on a small desktop and shows its texts in full, at the usual size
/// of letters and at a large one, and what the program colours itself can be read in light and dark.

#include "keyboard_run.h"
#include "platform/widgets/colors.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>

#include <functional>

namespace
{

constexpr QSize smallDesktop(1280, 800);
constexpr QSize windowFrame(12, 36); // a generous one

/// Letters of another size while it lives.
class LettersOf
{
public:
    explicit LettersOf(int points) : m_before(QApplication::font())
    {
        QFont font = m_before;
        font.setPointSize(points);
        QApplication::setFont(font);
    }
    ~LettersOf() { QApplication::setFont(m_before); }
    LettersOf(const LettersOf &) = delete;
    LettersOf &operator=(const LettersOf &) = delete;

private:
    QFont m_before;
};

/// A desktop with these colours while it lives.
class PaletteOf
{
public:
    PaletteOf(const QColor &window, const QColor &base, const QColor &text)
        : m_before(QApplication::palette())
    {
        QPalette palette(window);
        palette.setColor(QPalette::Base, base);
        palette.setColor(QPalette::Text, text);
        palette.setColor(QPalette::WindowText, text);
        QApplication::setPalette(palette);
        QCoreApplication::processEvents();
    }
    ~PaletteOf() { QApplication::setPalette(m_before); }
    PaletteOf(const PaletteOf &) = delete;
    PaletteOf &operator=(const PaletteOf &) = delete;

private:
    QPalette m_before;
};

/// What has a caption or a value whose length is known beforehand.
bool HasFixedText(const QWidget &widget)
{
    if (qobject_cast<const QComboBox *>(&widget) || widget.parentWidget()->inherits("QTabBar") ||
        widget.objectName().startsWith(QLatin1String("qt_")))
        return false; // cut off a long name, with an ellipsis
    return qobject_cast<const QLabel *>(&widget) ||
           qobject_cast<const QAbstractButton *>(&widget) ||
           qobject_cast<const QAbstractSpinBox *>(&widget) ||
           qobject_cast<const QGroupBox *>(&widget) || qobject_cast<const QTabBar *>(&widget);
}

QSize NeededBy(const QWidget &widget)
{
    const QSize needed = widget.minimumSizeHint();
    const auto *button = qobject_cast<const QPushButton *>(&widget);
    if (!button)
        return needed;
    constexpr int edges = 8; // a style gives more to a short caption, for the row of buttons
    const QString caption = button->text().remove(QLatin1Char('&'));
    return {button->fontMetrics().horizontalAdvance(caption) + edges, needed.height()};
}

QString TextOf(const QWidget &widget)
{
    const QVariant text = widget.property("text");
    return text.isValid() ? text.toString() : widget.objectName();
}

class Look : public Keyboard
{
protected:
    /// Calls `look` with every screen at the size in which it comes up.
    void ForEveryScreen(const std::function<void(Form &)> &look)
    {
        int looked = 0;
        for (const QString &screen : Screens()) {
            const QPointer<Form> form = Loaded(screen);
            if (!form || form->Where() == Placement::Hidden)
                continue;
            SCOPED_TRACE(qPrintable(screen));
            form->ensurePolished();
            form->resize(form->sizeHint());
            form->grab(); // lays out what is not shown
            look(*form);
            ++looked;
        }
        EXPECT_GT(looked, 24);
    }
    static void ExpectWholeTexts(const Form &form)
    {
        for (const QWidget *widget : form.findChildren<QWidget *>()) {
            if (!widget->isVisibleTo(&form) || !HasFixedText(*widget))
                continue;
            const QSize needed = NeededBy(*widget);
            EXPECT_GE(widget->width(), needed.width()) << qPrintable(TextOf(*widget));
            EXPECT_GE(widget->height(), needed.height()) << qPrintable(TextOf(*widget));
            const auto *label = qobject_cast<const QLabel *>(widget);
            if (label && label->wordWrap()) {
                EXPECT_GE(label->height(), label->heightForWidth(label->width()))
                    << qPrintable(label->text());
            }
        }
    }
    /// Pages that lie behind others get a size when they come to the front.
    void ExpectWholeTextsOnEveryScreen()
    {
        ForEveryScreen([](Form &form) {
            ExpectWholeTexts(form);
            for (QTabWidget *tabs : form.findChildren<QTabWidget *>())
                for (int page = 1; page < tabs->count(); ++page) {
                    tabs->setCurrentIndex(page);
                    form.grab();
                    ExpectWholeTexts(form);
                }
        });
    }
    void ExpectEveryScreenToFit()
    {
        ForEveryScreen([](const Form &form) {
            const QSize needed = form.sizeHint() + windowFrame;
            EXPECT_LE(needed.width(), smallDesktop.width());
            EXPECT_LE(needed.height(), smallDesktop.height());
        });
    }
    double ContrastOfPanel(int panel)
    {
        const auto *label =
            run.App().MainWindow().findChild<QLabel *>(QStringLiteral("MDIStatusBar%1").arg(panel));
        const QPalette &palette = label->palette();
        const auto group = label->isEnabled() ? QPalette::Active : QPalette::Disabled;
        return Contrast(palette.color(group, QPalette::Window),
                        palette.color(group, QPalette::WindowText));
    }
};

} // namespace

TEST_F(Look, ShowsTheTextsOfEveryScreenInFull)
{
    ExpectWholeTextsOnEveryScreen();
}

TEST_F(Look, ShowsTheTextsOfEveryScreenInFullInLargeLetters)
{
    const LettersOf large(13);
    ExpectWholeTextsOnEveryScreen();
}

TEST_F(Look, FitsEveryScreenOnASmallDesktop)
{
    ExpectEveryScreenToFit();
}

TEST_F(Look, FitsEveryScreenOnASmallDesktopInLargeLetters)
{
    const LettersOf large(13);
    ExpectEveryScreenToFit();
}

TEST_F(Look, CutsNoDateOffWhereThreeScreensStandSideBySide)
{
    constexpr int third = 410;
    for (const char *name : {"frmHistoryList", "frmDailyProfitLoss", "frmHistoricalPriceList"}) {
        Form *form = Loaded(QString::fromUtf8(name));
        ASSERT_TRUE(form) << name;
        form->resize(third, 600);
        form->grab();
        for (const char *picker : {"dtpFrom", "dtpTo"}) {
            const auto *field = form->findChild<QWidget *>(QString::fromUtf8(picker));
            ASSERT_TRUE(field) << picker;
            EXPECT_GE(field->width(), field->minimumSizeHint().width()) << name;
            EXPECT_LE(field->mapTo(form, field->rect().bottomRight()).x(), third) << name;
        }
    }
}

TEST_F(Look, LetsWhatIsSwitchedOffBeReadInTheStatusBar)
{
    run.State().services.status.Post(QString());
    const struct
    {
        const char *name;
        QColor window, base, text;
    } desktops[] = {{"light", QColor(239, 239, 239), Qt::white, Qt::black},
                    {"dark", QColor(53, 53, 53), QColor(35, 35, 35), Qt::white}};
    for (const auto &[name, window, base, text] : desktops) {
        const PaletteOf desktop(window, base, text);
        for (const int panel : {1, 2, 3, 5})
            EXPECT_GE(ContrastOfPanel(panel), 4.5) << name << ", panel " << panel;
        EXPECT_LT(ContrastOfPanel(5), ContrastOfPanel(1)) << name; // fainter, all the same
    }
}

TEST_F(Look, ShowsTheFinePictureOfTheConnectionNoHigherThanALine)
{
    QImage fine(64, 64, QImage::Format_RGB32);
    fine.fill(Qt::darkGreen);
    ASSERT_TRUE(fine.save(folder.File(QStringLiteral("ConnError.bmp"))));
    run.State().priceUpdate.ConnectionState = 4;
    run.State().services.status.Post(QString());
    const auto *picture =
        run.App().MainWindow().findChild<QLabel *>(QStringLiteral("MDIStatusBar4"));
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->pixmap().deviceIndependentSize().toSize(), QSize(16, 16));
    EXPECT_EQ(picture->size(), QSize(16, 16));
}
